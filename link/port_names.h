// "COM" and a number for a device path and back. The number follows from the device's name alone,
// so it is the same in every run and needs no file.
//   ttyS0 to ttyS9      COM1 to COM10
//   ttyUSB0 to ttyUSB9  COM11 to COM20
//   ttyACM0 to ttyACM9  COM21 to COM30
//   devices that were named on the command line and have none of these names: COM31, COM32, ...
//   higher numbers and other kinds: beyond COM100, see port_names.cpp
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace servo::link {

class PortNames {
  public:
    // Names a device that enumeration may not find (a pseudo-terminal). Returns its list text.
    std::string give(const std::string& device);
    const std::vector<std::string>& given() const { return given_; }

    std::string text_of(std::string_view device) const;
    // From "COM7" or "Com7", whatever the case: the number behind the first three letters counts.
    std::optional<std::string> device_of(std::string_view text) const;

    // Remembers a device that enumeration found, for the kinds whose number can't be turned back.
    void found(std::string_view device);

  private:
    std::vector<std::string> given_;
    std::vector<std::string> found_;
};

// Number behind the first three letters of a list text; 0 when there is none.
int port_number(std::string_view text);

}  // namespace servo::link
