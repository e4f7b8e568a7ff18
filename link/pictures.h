// The pictures of toolbar buttons 4 and 5, by name: the state of the link and of the drive.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace servo::link {

inline constexpr std::string_view kCommpic = "Commpic";            // link closed
inline constexpr std::string_view kCommOKpic = "CommOKpic";        // link open
inline constexpr std::string_view kCommerrorpic = "Commerrorpic";  // closed by a time-out
inline constexpr std::string_view kErrorgray = "errorgray";        // link closed
inline constexpr std::string_view kErrorgreen = "errorgreen";      // fault word 1 is 0
inline constexpr std::string_view kErrorred = "errorred";          // fault word 1 is not 0

class Pictures {
  public:
    const std::string& button4() const { return button4_; }
    const std::string& button5() const { return button5_; }

    void set_button4(std::string_view name) {
        button4_ = name;
        written(4);
    }
    void set_button5(std::string_view name) {
        button5_ = name;
        written(5);
    }

    // Called after each write with the number of the button, 4 or 5.
    std::function<void(int button)> observer;

  private:
    void written(int button) const {
        if (observer) observer(button);
    }

    std::string button4_{kCommpic};
    std::string button5_{kErrorgray};
};

}  // namespace servo::link
