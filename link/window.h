// What the engine needs of windows.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "link/frame.h"

namespace servo::link {

// An entry of `all_windows`.
class Window {
  public:
    explicit Window(std::string name) : name_(std::move(name)) {}
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;
    virtual ~Window() = default;

    const std::string& name() const { return name_; }

    // Kept by whoever shows the window.
    bool visible() const { return visible_; }
    virtual void set_visible(bool visible) { visible_ = visible; }

    int meindex = -1;        // position in all_windows
    bool must_fresh = true;  // every row is to be read, the read-once ones too

  private:
    std::string name_;
    bool visible_ = false;
};

// A row of a grid page as the poller sees it. Views stay valid until the page changes.
struct PollRow {
    std::string_view number;  // column 0; a "*" at its end marks a read-once row
    std::string_view index;   // column 1, hexadecimal
    std::string_view type;    // column 2, short type name
    std::string_view value;   // column 4
};

// An entry of `poll_windows`. Grid pages answer the row calls, custom windows the four told names.
class PollWindow : public Window {
  public:
    using Window::Window;

    virtual bool custom() const = 0;

    // Grid page. Row 0 is the header, so a page of ten rows has rows() == 10 and objects in 1 to 9.
    virtual int rows() const { return 0; }
    virtual PollRow row(int) const { return {}; }
    // The answer to a row, as a number by the size code of the decoder: the page shows it in its
    // unit.
    virtual void set_value(int /*row*/, double /*value*/, int /*size_code*/) {}
    // Text as it stands: "?????", or the characters of a string so far (code-page bytes).
    virtual void set_text(int /*row*/, std::string_view /*text*/) {}

    // Custom window. Rows number from 0 to get_ODS_Num(), both included.
    virtual int get_ODS_Num() const { return -1; }
    virtual Identity get_ods(int /*row*/) const { return 0; }
    virtual std::string_view get_odtype(int /*row*/) const { return {}; }
    virtual void set_ods(int /*row*/, double /*value*/) {}
};

}  // namespace servo::link
