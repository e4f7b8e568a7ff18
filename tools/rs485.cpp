#include "tools/rs485.h"

#include <fmt/format.h>

#include <algorithm>

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
constexpr int kModbus = 0;  // place in the list

constexpr std::array<SerialList, 5> kLists{{
    {"Combo1", "波特率/Baud rate", kRates, 0x2FE20002, kRateValues},
    {"Combo2", "数据位/Data bits", kDataBits, 0, {}},
    {"Combo3", "奇偶校验/Parity", kParities, 0, {}},
    {"Combo4", "停止位/Stop bits", kStopBits, 0x65100E02, kStopBitValues},
    {"Combo5", "协议/Protocol", kProtocols, 0x65100C01, kProtocolValues},
}};

// Which list an entry of the page file belongs to.
constexpr std::array<std::size_t, Rs485::kEntries> kListOfEntry{0, 3, 4};

const SerialList& list_of(int entry) {
    return kLists[Rs485::list_of_entry(entry)];
}

constexpr std::string_view kPageFile = "\\sys\\RS485.ini";

constexpr base::Text kNotRead{"尚未从驱动器读到全部设置。",
                              "Not all settings have been read from the drive yet."};
constexpr base::Text kModbusCutsOff{
    "选择了 MODBUS：存储并重启后，本软件不能再通过串口连接驱动器。",
    "MODBUS is chosen: once it is stored and the drive restarted, this workstation can no longer "
    "connect over the serial line."};
constexpr base::Text kNewRate{
    "存储并重启后驱动器使用 {} 波特：再次连接前，请在“通信设置”中选择同样的波特率。",
    "Once it is stored and the drive restarted, the drive speaks at {} baud: choose the same rate "
    "in Communication Settings before you connect again."};
constexpr base::Text kStoreIt{
    "选择后立即写入驱动器，但须存储（“初始化/保存/重启”中的“存储控制参数”）并重启驱动器后才生效。",
    "A choice is written at once, but counts only after it has been stored (Init Save Reboot, "
    "Store Control Parameters) and the drive restarted."};

}  // namespace

std::span<const SerialList, 5> serial_lists() {
    return kLists;
}

std::size_t Rs485::list_of_entry(int entry) {
    return kListOfEntry.at(static_cast<std::size_t>(entry));
}

Rs485::Rs485(link::Engine& engine, const dictionary::Store& dictionary,
             const base::Language& language)
    : link::PollWindow("RS485"), engine_(engine), dictionary_(dictionary), language_(language) {
    engine_.add_listener(*this);
}

Rs485::~Rs485() {
    engine_.remove_listener(*this);
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
    return has(row) ? objects_[static_cast<std::size_t>(row)].identity : 0;
}

std::string_view Rs485::get_odtype(int row) const {
    return has(row) ? std::string_view(objects_[static_cast<std::size_t>(row)].type)
                    : std::string_view();
}

// The file may list more objects than the window has lists; a value that is none of a list's
// changes nothing.
void Rs485::set_ods(int row, double value) {
    if (row < 0 || row >= kEntries) return;
    const auto values = list_of(row).values;
    const auto found = std::ranges::find(values, value);
    if (found == values.end()) return;
    int& selection = selections_[static_cast<std::size_t>(row)];
    const int position = static_cast<int>(found - values.begin());
    if (row == kRateEntry && !first_rate_ && !rate_picked_) first_rate_ = position;
    if (selection == position) return;
    selection = position;
    if (changed) changed();
}

void Rs485::pick(int entry, int list_index) {
    const SerialList& list = list_of(entry);
    if (list_index < 0 || list_index >= static_cast<int>(list.values.size())) return;
    selections_[static_cast<std::size_t>(entry)] = list_index;
    if (entry == kRateEntry) rate_picked_ = true;
    engine_.sendata2(list.key, list.values[static_cast<std::size_t>(list_index)], 0);
    if (changed) changed();
}

// By then the workstation speaks at the drive's rate again, or the drive was never restarted.
void Rs485::link_changed(bool open) {
    if (!open) return;
    first_rate_.reset();
    rate_picked_ = false;
    if (changed) changed();
}

std::vector<SerialNote> Rs485::notes() const {
    std::vector<SerialNote> notes;
    if (selection(kProtocolEntry) == kModbus)
        notes.push_back({std::string(kModbusCutsOff.in(language_)), true});
    if (rate_picked_ && selection(kRateEntry) != first_rate_) {
        const auto rate = kRates.at(static_cast<std::size_t>(selection(kRateEntry)));
        notes.push_back({fmt::format(fmt::runtime(kNewRate.in(language_)), rate), true});
    }
    notes.push_back({std::string(kStoreIt.in(language_))});
    if (std::ranges::find(selections_, -1) != selections_.end())
        notes.push_back({std::string(kNotRead.in(language_))});
    return notes;
}

}  // namespace servo::tools
