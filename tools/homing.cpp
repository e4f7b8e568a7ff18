#include "tools/homing.h"

#include <algorithm>

#include "base/file.h"
#include "base/gbk.h"
#include "base/number.h"
#include "params/codec.h"
#include "params/formula.h"
#include "params/page_loader.h"
#include "tools/homing_rows.h"

namespace servo::tools {

using namespace homing;

namespace {

constexpr dictionary::WireKey kMethodKey = 0x60980001;
constexpr std::uint8_t kByte = 1;
constexpr std::uint8_t kLong = 4;

constexpr char32_t kBackspace = 8;
constexpr char32_t kEnter = 13;
constexpr char32_t kEscape = 27;

constexpr base::Text kWrongInput{"错误的输入!", "Wrong Input"};
constexpr base::Text kDescription{"描述:\r\n", "Description:\r\n"};

bool is_digit(char32_t key) {
    return key >= U'0' && key <= U'9';
}

// The first bytes of every JPEG file. What is no picture is not shown, and the old one stays.
bool is_picture(std::string_view bytes) {
    return bytes.starts_with("\xFF\xD8\xFF");
}

std::optional<std::string> file_below(const std::filesystem::path& folder,
                                      const std::string& name) {
    return base::read_file(base::find_in(folder, std::string(kHomingPictures) + name));
}

}  // namespace

std::string_view homing_unit(HomingEntry entry) {
    return rule(entry).unit;
}

Homing2::Homing2(HomingServices services) : PollWindow("Homing2"), services_(std::move(services)) {}

bool Homing2::load(const std::filesystem::path& folder) {
    folder_ = folder;
    rows_.clear();
    const auto keys = params::load_page_keys(folder, kHomingFile);
    if (!keys) return false;
    for (const dictionary::Identity key : *keys)
        if (rows_.size() < kRows) rows_.push_back({key, {}});
    return true;
}

// --- the method

void Homing2::Option1_Click(int index) {
    data_.choices.Option1_Click(index);
    method_chosen();
}

void Homing2::click(HomingChoice choice) {
    data_.choices.click(choice);
    method_chosen();
}

void Homing2::method_chosen() {
    const int method = Get_Home_Method(data_.choices);
    data_.Text1 = std::to_string(method);
    show_method(method, HomingOrigin::kChosen);
    changed();
}

void Homing2::type_Text1(std::string text) {
    data_.Text1 = std::move(text);
    changed();
}

bool Homing2::Text1_KeyPress(char32_t key) {
    if (key == kEnter) {
        enter_method();
        return true;
    }
    return !is_digit(key) && key != kBackspace && key != U'-';
}

void Homing2::enter_method() {
    const double number = base::leading_number(data_.Text1);
    if (is_typed_method(number)) {
        show_method(static_cast<int>(number), HomingOrigin::kTyped);
    } else {
        services_.notice.show(base::kNoticeTitle.in(language()), kWrongInput.in(language()));
        data_.Text1.clear();
    }
    changed();
}

// Whatever stands in the box goes out, an empty one as 0; only Enter in it asks for a method.
void Homing2::Command1_Click() {
    const auto method = params::commit_value(base::leading_number(data_.Text1));
    if (method) services_.write(kMethodKey, *method);
}

void Homing2::show_method(int method, HomingOrigin origin) {
    shown_.emplace(method, origin);
    show_picture(method);
    show_description(method, origin);
}

void Homing2::show_picture(int method) {
    const auto file = homing_picture_file(method, language());
    if (!file) {
        data_.Image1.clear();
        picture_.clear();
        return;
    }
    auto bytes = file_below(folder_, *file);
    if (!bytes || !is_picture(*bytes)) return;
    data_.Image1 = *file;
    picture_ = std::move(*bytes);
}

void Homing2::show_description(int method, HomingOrigin origin) {
    data_.RichTextBox1 = kDescription.in(language());
    const auto file = homing_description_file(method, origin, language());
    if (!file) return;
    if (const auto bytes = file_below(folder_, *file))
        data_.RichTextBox1 += base::gbk_to_utf8(*bytes);
}

void Homing2::language_changed() {
    if (shown_) show_method(shown_->first, shown_->second);
    changed();
}

// --- values of the drive

void Homing2::type(HomingEntry entry, std::string text) {
    data_.entries[place(entry)] = std::move(text);
    entries_[place(entry)].typed = true;
    changed();
}

bool Homing2::KeyPress(HomingEntry entry, char32_t key) {
    if (key == kEnter) {
        commit(entry);
        return true;
    }
    if (key == kEscape) {
        Entry& held = entries_[place(entry)];
        data_.entries[place(entry)] = held.drive_text;
        held.typed = false;
        changed();
        if (observer_ != nullptr) observer_->focus_moved();
        return true;
    }
    return !is_digit(key) && key != kBackspace && key != U'-' && key != U'.';
}

void Homing2::enter(HomingEntry entry) {
    entries_[place(entry)].focus = true;
}

void Homing2::leave(HomingEntry entry) {
    Entry& held = entries_[place(entry)];
    held.focus = false;
    held.typed = false;
}

// A value out of range is not written; the focus goes all the same, so that the poll brings the
// drive's own value back into the box.
void Homing2::commit(HomingEntry entry) {
    const EntryRule& rules = rule(entry);
    const auto raw = params::text_to_value(data_.entries[place(entry)], rules.unit_word(),
                                           rules.inverse, services_.operands);
    if (!raw) return;
    if (const auto value = params::commit_value(*raw)) write_row(rules.row, kLong, *value);
    leave(entry);
    changed();
    if (observer_ != nullptr) observer_->focus_moved();
}

void Homing2::write_row(std::size_t row, std::uint8_t size, std::int32_t value) {
    if (row >= rows_.size() || rows_[row].key == 0) return;
    services_.write(static_cast<dictionary::WireKey>(rows_[row].key) << 8 | size, value);
}

void Homing2::Check4_Click() {
    data_.Check4 = !data_.Check4;
    write_row(kCheck4Row, kByte, data_.Check4 ? 1 : 0);
    changed();
}

void Homing2::list_Click(HomingList list, int index) {
    if (index < 0 || index >= kHomingListSizes[place(list)]) return;
    data_.lists[place(list)] = index;
    write_row(kListRows[place(list)], kByte, index);
    changed();
}

void Homing2::changed() {
    if (observer_ != nullptr) observer_->controls_changed();
}

}  // namespace servo::tools
