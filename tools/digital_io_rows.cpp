#include "tools/digital_io_rows.h"

#include <algorithm>
#include <string>

#include "base/number.h"

namespace servo::tools {

namespace {

constexpr std::array<std::string_view, kIoRows> kTags{
    "OD:201003:OD", "OD:201004:OD", "OD:201005:OD", "OD:201006:OD",
    "OD:201007:OD", "OD:201008:OD", "OD:201009:OD", "OD:20101D:OD",
    "OD:20100F:OD", "OD:201010:OD", "OD:201011:OD", "OD:201012:OD",
    "OD:201013:OD", "OD:20101E:OD", "OD:20101F:OD", ""};
constexpr std::size_t kDigitsAt = 3;
constexpr std::size_t kDigits = 6;

struct ColumnObject {
    link::WireKey key;
    IoSide side;
    IoColumn column;
};

// The last two of the outputs stand in the other order than those of the inputs. That is how the
// drive numbers them.
constexpr std::array kColumnObjects{
    ColumnObject{0x20100102, IoSide::kInput, IoColumn::kSimulate},
    ColumnObject{0x20100202, IoSide::kInput, IoColumn::kPolarity},
    ColumnObject{0x20100A02, IoSide::kInput, IoColumn::kInternal},
    ColumnObject{0x20100B02, IoSide::kInput, IoColumn::kReal},
    ColumnObject{0x20100D02, IoSide::kOutput, IoColumn::kSimulate},
    ColumnObject{0x20100E02, IoSide::kOutput, IoColumn::kPolarity},
    ColumnObject{0x20101502, IoSide::kOutput, IoColumn::kInternal},
    ColumnObject{0x20101402, IoSide::kOutput, IoColumn::kReal},
};

}  // namespace

std::string_view tag_of(int row) {
    if (row < 0 || row >= kIoRows) return {};
    return kTags[static_cast<std::size_t>(row)];
}

link::WireKey key_of_tag(std::string_view tag) {
    const std::string_view digits =
        tag.size() > kDigitsAt ? tag.substr(kDigitsAt, kDigits) : std::string_view();
    const double number = base::leading_number("&H" + std::string(digits) + "02");
    return static_cast<link::WireKey>(static_cast<std::int64_t>(number));
}

std::optional<IoStates> states_of(link::Identity object) {
    const auto* found = std::ranges::find(kColumnObjects, object, [](const ColumnObject& entry) {
        return dictionary::identity_of(entry.key);
    });
    if (found == kColumnObjects.end()) return std::nullopt;
    return IoStates{found->side, found->column};
}

std::optional<int> row_of(link::Identity object) {
    for (int row = 0; row < kPinlessRow; ++row)
        if (dictionary::identity_of(key_of_tag(tag_of(row))) == object) return row;
    return std::nullopt;
}

link::WireKey column_key(IoSide side, IoColumn column) {
    for (const ColumnObject& entry : kColumnObjects)
        if (entry.side == side && entry.column == column) return entry.key;
    return 0;
}

std::string_view frame_caption(IoSide side) {
    return side == IoSide::kInput ? "数字输入/Digital Input" : "数字输出/Digital Output";
}

std::string_view column_caption(IoSide side, IoColumn column) {
    const bool input = side == IoSide::kInput;
    switch (column) {
        case IoColumn::kPolarity:
            return "电平/Polarity";
        case IoColumn::kInternal:
            return input ? "有效输入/Internal" : "系统输出/Internal";
        case IoColumn::kSimulate:
            return "仿真/Simulate";
        case IoColumn::kReal:
            return input ? "实际输入/Real" : "有效输出/Real";
    }
    return {};
}

base::Text pin_word(IoSide side) {
    if (side == IoSide::kInput) return {"输入", "Input"};
    return {"输出", "Output"};
}

}  // namespace servo::tools
