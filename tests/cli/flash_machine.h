// servoctl with the engine in virtual time and a bootloader at the other end of the line.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "../firmware/text_bootloader.h"
#include "base/file.h"
#include "cli/line_machine.h"
#include "firmware/image.h"
#include "support/virtual_bench.h"

namespace servo::cli {

class FlashMachine final : public LineMachine {
  public:
    std::string put_image(const std::string& payload,
                          std::string_view header = "This is ZARN firmware 12AB34CD.") {
        bench.folder.put("a.servo", std::string(header) + "\r\n" + payload + "\r\n");
        return (bench.folder / "a.servo").string();
    }
    static std::string payload(std::size_t characters) { return std::string(characters, '5'); }

    test::TextBootloader drive{bench.time, bench.line};
};

}  // namespace servo::cli
