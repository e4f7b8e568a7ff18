#include "params/object_browser.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <utility>

#include "base/ascii.h"

namespace servo::params {

namespace {

using base::Language;
using base::Text;
using dictionary::Identity;

constexpr Text kHelpTitle{"帮助:", "Help Information of:"};
constexpr Text kMissing{"字典中没有此对象", "The dictionary does not have this object"};
constexpr std::string_view kNoModbus = "....";

// What a text from the dictionary shows: a NUL inside of a field ends it.
std::string until_nul(std::string text) {
    text.resize(std::min(text.find('\0'), text.size()));
    return text;
}

}  // namespace

ObjectBrowser::ObjectBrowser(BrowserServices services)
    : PollWindow("ObjectDictionay"),
      services_(std::move(services)),
      dictionary_(services_.page.dictionary),
      search_(dictionary_),
      grid_(services_.page) {
    grid_.whole_row_colour = true;
}

void ObjectBrowser::set_mode(std::uint8_t new_mode) {
    mode = new_mode;
    if (observer_ != nullptr) observer_->aim_changed();
}

void ObjectBrowser::open_plain() {
    set_mode(kMenuAndHelp);
}

void ObjectBrowser::open_for_adding(PageGrid& page, int row, Text page_caption) {
    popup_page_ = &page;
    popup_row_ = row;
    popup_object_ = row > 0 && row < page.rows() ? page.row(row).identity() : 0;
    popup_caption_ = page_caption;
    set_mode(kAdding);
}

void ObjectBrowser::open_for_help(Identity object) {
    set_mode(kMenuAndHelp);
    if (const auto row = dictionary_.find(object)) {
        select(static_cast<int>(*row) + 1, Scroll::kToTop);
    } else {
        show_missing(object);
    }
}

void ObjectBrowser::open_for_scope(int channel) {
    set_mode(static_cast<std::uint8_t>(kFirstChannel + std::clamp(channel, 0, 4)));
}

int ObjectBrowser::list_rows() const {
    return static_cast<int>(dictionary_.dictionary_rows()) + 1;
}

std::string ObjectBrowser::list_cell(int row, int column) const {
    if (row < 0 || column < 0 || column >= kListColumns) return {};
    if (row == 0) return std::string(list_header(column, language()));
    return dictionary_.dictionary_cell(static_cast<std::size_t>(row - 1),
                                       static_cast<std::size_t>(column));
}

std::string ObjectBrowser::list_text(int row, int column) const {
    return until_nul(list_cell(row, column));
}

void ObjectBrowser::Init_OD_Grid() {
    search_.forget();
    grid_.apply_language();
    if (observer_ != nullptr) observer_->list_changed();
    // The first match counts from the top, so the search begins behind the last row.
    if (const int row = search_.next(text2_, list_rows() - 1); row != 0) {
        found(row);
        return;
    }
    if (selected_row_ >= list_rows()) selected_row_ = 0;
    if (selected_row_ != 0) {
        show_object(Scroll::kNone);
    } else if (shown_ != 0) {
        show_missing(shown_);
    }
    tell_search();
    if (observer_ != nullptr) observer_->aim_changed();
}

void ObjectBrowser::MSHFlexGrid2_Click(int row) {
    if (row > 0 && row < list_rows()) select(row, Scroll::kNone);
}

void ObjectBrowser::move_selection(int rows) {
    if (list_rows() == 1) return;
    select(std::clamp(selected_row_ + rows, 1, list_rows() - 1), Scroll::kNone);
}

void ObjectBrowser::scrolled_to(int top_row) {
    MSHFlexGrid2_Click(top_row);
}

void ObjectBrowser::select(int row, Scroll scroll) {
    typing_.reset();
    selected_row_ = row;
    show_object(scroll);
    tell_search();
    if (observer_ != nullptr) observer_->aim_changed();
}

void ObjectBrowser::show_object(Scroll scroll) {
    const int row = selected_row_;
    const bool chinese = language() == Language::kChinese;
    shown_ = dictionary_.row_identity(static_cast<std::size_t>(row - 1));
    show_live(shown_);
    const std::string name = list_text(row, chinese ? kListNameCh : kListNameEn);
    details_ = {list_text(row, kListIndex),
                list_text(row, kListSub),
                name,
                list_text(row, kListType),
                list_text(row, kListAttribute),
                modbus_text(list_cell(row, kListIndex) + list_cell(row, kListSub))};
    set_help(name, list_text(row, chinese ? kListCommentCh : kListCommentEn));
    if (observer_ != nullptr) observer_->object_shown(scroll == Scroll::kToTop);
}

// A row of a page can hold a key that the dictionary lacks. Showing the last object instead would
// pass its help off as that of the row.
void ObjectBrowser::show_missing(Identity object) {
    typing_.reset();
    selected_row_ = 0;
    shown_ = object;
    show_live(object);
    const std::string key = fmt::format("{:06X}", static_cast<unsigned>(object));
    details_ = {key.substr(0, 4), key.substr(4), {}, {}, {}, modbus_text(key)};
    set_help(key, kMissing.in(language()));
    if (observer_ == nullptr) return;
    observer_->object_shown(false);
    observer_->aim_changed();
}

// A row that shows the object already keeps its value, its unit and an open editor.
void ObjectBrowser::show_live(Identity object) {
    if (grid_.rows() > 1 && grid_.row(1).identity() == object) return;
    std::vector<Row> rows;
    rows.push_back(build_row(dictionary_, object, 0, language()));
    grid_.set_rows(std::move(rows));
}

std::string ObjectBrowser::modbus_text(std::string_view key) const {
    for (const ModbusAddress& entry : services_.modbus_list.addresses)
        if (base::same_name(entry.key, key)) return "0x" + entry.address;
    return std::string(kNoModbus);
}

void ObjectBrowser::set_help(std::string_view name, std::string_view text) {
    help_ = fmt::format("{}{}\n{}", kHelpTitle.in(language()), name, text);
}

void ObjectBrowser::double_click(int row) {
    if (row <= 0 || row >= list_rows()) return;
    const Identity object = dictionary_.row_identity(static_cast<std::size_t>(row - 1));
    if (mode == kAdding) {
        add_to_page(object);
    } else if (is_channel_mode() && !assign_to_scope(object)) {
        return;  // the window stays, so that another object can be picked
    }
    if (hide) hide();
}

void ObjectBrowser::add_to_page(Identity object) {
    if (popup_page_ == nullptr) return;
    int below = popup_row_;
    // The page may have got or lost rows since its menu was open: the place goes with the object.
    const bool still_there = below > 0 && below < popup_page_->rows() &&
                             popup_page_->row(below).identity() == popup_object_;
    if (!still_there && popup_row_ > 0) {
        if (const int row = popup_page_->find_row(popup_object_); row != 0) below = row;
    }
    popup_page_->add_row(object, below);
}

bool ObjectBrowser::assign_to_scope(Identity object) {
    const std::string type = dictionary::strip_blanks(dictionary_.get_record(object).type);
    const int bits = dictionary::decoder_size(type) % 10 * 8;
    if (bits == 0) return false;  // the recorder takes numbers only
    const auto value = static_cast<std::uint32_t>(object) << 8U | static_cast<unsigned>(bits);
    services_.page.sendata2(scope_selector(mode - kFirstChannel, bits),
                            static_cast<std::int32_t>(value));
    return true;
}

dictionary::WireKey scope_selector(int channel, int bits) {
    constexpr std::array<dictionary::WireKey, 5> kNarrow{0x23000104, 0x23000204, 0x23000304,
                                                         0x23000404, 0x23000C04};
    constexpr std::array<dictionary::WireKey, 5> kWide{0x23000504, 0x23000504, 0x23000604,
                                                       0x23000604, 0x23000C04};
    const auto place = static_cast<std::size_t>(std::clamp(channel, 0, 4));
    return bits == 32 ? kWide.at(place) : kNarrow.at(place);
}

}  // namespace servo::params
