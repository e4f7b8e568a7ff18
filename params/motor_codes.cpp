#include "params/motor_codes.h"

#include "base/file.h"
#include "base/gbk.h"

namespace servo::params {

std::optional<std::string> load_motor_codes(const std::filesystem::path& folder) {
    const auto bytes = base::read_file(base::find_in(folder, kMotorCodesFile));
    if (!bytes) return std::nullopt;
    return base::gbk_to_utf8(*bytes);
}

}  // namespace servo::params
