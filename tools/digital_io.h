// The form `DigitalIO` without its window: what the controls hold, what a click does. Who shows it
// passes clicks in and observes.
//
// The drive's answers come with lane 1 of the status lanes, in every turn of the poller's wheel and
// whether the form is shown or not. A change raises the engine's io_refresh, so the block is read
// once more at once.
#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "base/language.h"
#include "base/notice.h"
#include "link/engine.h"
#include "link/listeners.h"
#include "link/window.h"
#include "tools/digital_io_data.h"

namespace servo::tools {

class DigitalIOObserver {
  public:
    DigitalIOObserver() = default;
    DigitalIOObserver(const DigitalIOObserver&) = delete;
    DigitalIOObserver& operator=(const DigitalIOObserver&) = delete;
    virtual ~DigitalIOObserver() = default;

    // After any change. Calls come from clicks and from ticks, up to one for each answer of the
    // block: a window may gather them.
    virtual void controls_changed() = 0;
};

// References outlive the form.
struct DigitalIOServices {
    link::Engine& engine;
    base::Notice& notice;
    const base::Language& language;
    // Every form of the program is unloaded, and the program ends.
    std::function<void()> unload_all;
};

class DigitalIO final : public link::Window, private link::StatusListener {
  public:
    explicit DigitalIO(DigitalIOServices services);
    ~DigitalIO() override;

    void set_observer(DigitalIOObserver* observer) { observer_ = observer; }  // may be null

    const DigitalIOData& data() const { return data_; }
    base::Language language() const { return services_.language; }

    // Reads the list of functions from the program's folder. A list that is not right ends the
    // program: false, and the user has been told. (Of an empty file he is told nothing.)
    bool Form_Load(const std::filesystem::path& folder);

    // What other parts of the program ask of the lists. Groups count from 0.
    int getubouddin(int group) const { return data_.list.inputs.entries_of(group); }
    int getubouddout(int group) const { return data_.list.outputs.entries_of(group); }
    int getcboxgroupsdin(int group) const { return data_.list.inputs.last_of(group); }
    int getcboxgroupsdout(int group) const { return data_.list.outputs.last_of(group); }
    // The code of an entry: by its place in the list, or by group and place in it. 0 when there is
    // no such entry.
    std::uint16_t getcheckboxdinvalue(int index) const;
    std::uint16_t getcheckboxdoutvalue(int index) const;
    std::uint16_t getcheckboxdinvalue1(int group, int place) const;
    std::uint16_t getcheckboxdoutvalue1(int group, int place) const;

    // The names of a row's functions in the current language.
    std::string Text1(int row) const;

    // --- Clicks. A row that has no pin is passed over.
    void Command1_Click(int row);  // opens the row's chooser, or closes it
    void Command2_Click();         // OK of the inputs' chooser
    void Command3_Click();         // X of the inputs' chooser
    void Command4_Click();         // X of the outputs' chooser
    void Command5_Click();         // OK of the outputs' chooser
    void Command6_Click(int row);  // clears the row
    void Command7_Click();         // clears all inputs
    void Command8_Click();         // clears all outputs
    void Check1_Click(int row);    // polarity
    void Check3_Click(int row);    // simulation
    void Image1_Click(IoSide side);
    void Image3_Click(IoSide side);
    void checkboxdin_Click(int index);
    void checkboxdout_Click(int index);
    void Timer1_Timer();

    // --- Additions
    // No pin is forced any more, inputs and outputs.
    void end_simulation();
    // What OK would write.
    Encoded chosen() const;
    // How old the states on screen are; nothing before the first answer.
    std::optional<std::chrono::seconds> age() const;
    // Changes told now come from the line and not from a click.
    bool in_tick() const { return services_.engine.state.timer1_in != 0; }
    // What is sent reaches the drive: the link is open, and no firmware transfer has it.
    bool can_write() const;

  private:
    void lane1_answer(link::Identity object, const link::Payload& payload) override;
    void link_changed(bool open) override;

    void accept(IoSide side);
    void close_chooser();
    void clear_row(int row);
    void click_box(int row, IoColumn column);
    void flip_column(IoSide side, IoColumn column);
    void write_column(IoSide side, IoColumn column, const IoBoxes& boxes);
    void click_tick(IoSide side, int index);
    void changed();

    DigitalIOServices services_;
    DigitalIOData data_;
    DigitalIOObserver* observer_ = nullptr;
};

}  // namespace servo::tools
