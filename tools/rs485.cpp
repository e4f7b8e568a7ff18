#include "tools/rs485.h"

#include <algorithm>
#include <cmath>

#include "params/page_loader.h"

namespace servo::tools {

namespace {

constexpr std::array<std::string_view, 4> kRates{"9600", "19200", "38400", "115200"};
constexpr std::array<int, 4> kRateValues{1080, 540, 270, 90};
constexpr std::array<std::string_view, 1> kDataBits{"8"};
constexpr std::array<std::string_view, 1> kParities{"NONE"};
constexpr std::array<std::string_view, 2> kStopBits{"1", "2"};
constexpr std::array<int, 2> kStopBitValues{8, 9};
constexpr std::array<std::string_view, 2> kProtocols{"MODBUS", "QRL RS232"};
constexpr std::array<int, 2> kProtocolValues{0, 1};

const std::array<SerialList, 5> kLists{{
    {"Combo1", {"波特率", "Baud rate"}, kRates, 0x2FE20002, kRateValues},
    {"Combo2", {"数据位", "Data bits"}, kDataBits, 0, {}},
    {"Combo3", {"奇偶校验", "Parity"}, kParities, 0, {}},
    {"Combo4", {"停止位", "Stop bits"}, kStopBits, 0x65100E02, kStopBitValues},
    {"Combo5", {"协议", "Protocol"}, kProtocols, 0x65100C01, kProtocolValues},
}};

// Which list an entry of the page file belongs to.
constexpr std::array<std::size_t, Rs485::kEntries> kListOfEntry{0, 3, 4};

const SerialList& list_of(int entry) {
    return kLists[kListOfEntry.at(static_cast<std::size_t>(entry))];
}

constexpr std::string_view kPageFile = "\\sys\\RS485.ini";

}  // namespace

std::span<const SerialList> serial_lists() {
    return kLists;
}

bool Rs485::load(const std::filesystem::path& folder) {
    const auto keys = params::load_page_keys(folder, kPageFile);
    if (!keys) return false;
    objects_.clear();
    for (const link::Identity key : *keys)
        objects_.push_back({key, dictionary::trim_tail(dictionary_.get_record(key).type)});
    return true;
}

link::Identity Rs485::get_ods(int row) const {
    return objects_.at(static_cast<std::size_t>(row)).identity;
}

std::string_view Rs485::get_odtype(int row) const {
    return objects_.at(static_cast<std::size_t>(row)).type;
}

// The file may list more objects than the window has lists; a value that is none of a list's
// changes nothing.
void Rs485::set_ods(int row, double value) {
    if (row < 0 || row >= kEntries) return;
    const auto values = list_of(row).values;
    const auto found =
        std::ranges::find_if(values, [value](int item) { return std::abs(value - item) < 0.5; });
    if (found == values.end()) return;
    int& selection = selections_[static_cast<std::size_t>(row)];
    const int position = static_cast<int>(found - values.begin());
    if (selection == position) return;
    selection = position;
    if (changed) changed();
}

void Rs485::pick(int entry, int list_index) {
    const SerialList& list = list_of(entry);
    if (list_index < 0 || list_index >= static_cast<int>(list.values.size())) return;
    selections_[static_cast<std::size_t>(entry)] = list_index;
    engine_.sendata2(list.key, list.values[static_cast<std::size_t>(list_index)], 0);
}

}  // namespace servo::tools
