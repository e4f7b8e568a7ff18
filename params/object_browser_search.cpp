// The search of the dictionary browser, and the lines that tell about it and about the double
// click.
#include <fmt/format.h>

#include "params/object_browser.h"

namespace servo::params {

namespace {

using base::Text;

constexpr Text kNoMatch{"没有找到", "No match"};
constexpr Text kAddTo{"双击将对象添加到：{}", "Double click adds the object to: {}"};
constexpr Text kAddToPage{"页面", "the page"};
constexpr Text kAdd{"添加", "Add"};
constexpr Text kAssign{"选用", "Assign"};
constexpr Text kToChannel{"双击将对象分配给示波器通道 {}",
                          "Double click assigns the object to scope channel {}"};
constexpr Text kToTrigger{"双击将对象设为示波器的触发源",
                          "Double click makes the object the scope's trigger source"};
constexpr Text kNoNumber{"此对象不是数值，不能用于示波器",
                         "This object is no number: the scope can't record it"};

}  // namespace

// While typing, the row is shown that the button would find. search_row stays where it is, so that
// the button then finds that row, as if nothing had been shown, and the one below it when it is
// pressed again. A text that is found nowhere leaves the selection as it was before the typing: the
// first letters of it, which are found somewhere, must not have moved it.
void ObjectBrowser::Text2_Change(std::string_view text) {
    if (text == text2_) return;
    text2_ = text;
    if (text2_.empty()) {
        typing_.reset();
    } else {
        if (!typing_) typing_ = Typing{selected_row_, shown_};
        show_typed();
    }
    tell_search();
}

void ObjectBrowser::show_typed() {
    const Typing typing = *typing_;
    const int from = search_row > 0 && search_row < list_rows() ? search_row : 1;
    if (const int row = search_.next(text2_, from); row != 0) {
        select(row, Scroll::kToTop);
    } else if (typing.from_row == 0) {
        if (selected_row_ != 0) show_missing(typing.from_object);
    } else if (typing.from_row != selected_row_) {
        select(typing.from_row, Scroll::kNone);
    }
    typing_ = typing;  // every other way of selecting a row ends the typing
}

void ObjectBrowser::Command1_Click() {
    if (search_row <= 0 || search_row >= list_rows()) search_row = 1;
    if (const int row = search_.next(text2_, search_row); row != 0) {
        found(row);
    } else {
        tell_search();  // once round: search_row is where it was, and the selection stays
    }
}

void ObjectBrowser::find_next() {
    if (const int row = search_.next(text2_, selected_row_); row != 0) found(row);
}

void ObjectBrowser::find_previous() {
    if (const int row = search_.previous(text2_, selected_row_); row != 0) found(row);
}

void ObjectBrowser::found(int row) {
    search_row = row;
    select(row, Scroll::kToTop);
}

void ObjectBrowser::tell_search() {
    std::string note;
    search_failed_ = false;
    if (!text2_.empty()) {
        const ListSearch::Place place = search_.place(text2_, selected_row_);
        search_failed_ = place.count == 0;
        const bool chinese = language() == base::Language::kChinese;
        if (search_failed_) {
            note = kNoMatch.in(language());
        } else if (place.position == 0) {
            note = chinese ? fmt::format("共 {} 个", place.count)
                           : fmt::format("{} found", place.count);
        } else {
            note = chinese ? fmt::format("第 {} 个，共 {} 个", place.position, place.count)
                           : fmt::format("{} of {}", place.position, place.count);
        }
    }
    if (note == search_note_) return;
    search_note_ = std::move(note);
    if (observer_ != nullptr) observer_->search_changed();
}

BrowserAim ObjectBrowser::aim() const {
    const base::Language in = language();
    if (mode == kAdding && popup_page_ != nullptr) {
        const std::string_view caption = popup_caption_.in(in);
        return {
            fmt::format(fmt::runtime(kAddTo.in(in)), caption.empty() ? kAddToPage.in(in) : caption),
            kAdd, selected_row_ != 0};
    }
    if (!is_channel_mode()) return {};
    const std::string type = dictionary::strip_blanks(dictionary_.get_record(shown_).type);
    if (selected_row_ != 0 && dictionary::decoder_size(type) == 0)
        return {std::string(kNoNumber.in(in)), kAssign, false};
    if (mode == kLastChannel) return {std::string(kToTrigger.in(in)), kAssign, selected_row_ != 0};
    return {fmt::format(fmt::runtime(kToChannel.in(in)), mode - kFirstChannel + 1), kAssign,
            selected_row_ != 0};
}

}  // namespace servo::params
