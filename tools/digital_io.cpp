#include "tools/digital_io.h"

#include <algorithm>
#include <utility>

#include "params/page_loader.h"

namespace servo::tools {

namespace {

// In English whatever the language is: it comes at the start, before any choice.
constexpr std::string_view kListTitle = "Notice";
constexpr std::string_view kListNotRight = "DigitIOSettings.ini is not right";
constexpr base::Text kRefusedTitle{"提示", "Notice"};
constexpr base::Text kRefused{"错误的设置!", "Can't configure like this!"};

constexpr int kWordSize = 2;  // every object of the block has 16 bits

std::uint16_t code_at(const IoFunctions& functions, int index) {
    return index >= 0 && index < functions.count() ? functions.at(index).code : std::uint16_t{0};
}

std::uint16_t code_in(const IoFunctions& functions, int group, int place) {
    if (place < 0 || place >= functions.entries_of(group)) return 0;
    return functions.at(functions.last_of(group - 1) + 1 + place).code;
}

}  // namespace

DigitalIO::DigitalIO(DigitalIOServices services)
    : Window("DigitalIO"), services_(std::move(services)) {
    services_.engine.add_listener(*this);
}

DigitalIO::~DigitalIO() {
    services_.engine.remove_listener(*this);
}

void DigitalIO::changed() {
    if (observer_ != nullptr) observer_->controls_changed();
}

bool DigitalIO::Form_Load(const std::filesystem::path& folder) {
    data_.list = load_function_list(folder);
    data_.checkboxdin.assign(static_cast<std::size_t>(data_.list.inputs.count()), false);
    data_.checkboxdout.assign(static_cast<std::size_t>(data_.list.outputs.count()), false);
    changed();
    switch (data_.list.state) {
        case ListState::kRead:
            return true;
        case ListState::kEmpty:
            break;
        case ListState::kNotRight:
            services_.notice.show(kListTitle, kListNotRight);
            break;
        case ListState::kMissing:
            services_.notice.show(kListTitle, params::missing_file_text(kFunctionListFile));
            break;
    }
    if (services_.unload_all) services_.unload_all();
    return false;
}

std::uint16_t DigitalIO::getcheckboxdinvalue(int index) const {
    return code_at(data_.list.inputs, index);
}

std::uint16_t DigitalIO::getcheckboxdoutvalue(int index) const {
    return code_at(data_.list.outputs, index);
}

std::uint16_t DigitalIO::getcheckboxdinvalue1(int group, int place) const {
    return code_in(data_.list.inputs, group, place);
}

std::uint16_t DigitalIO::getcheckboxdoutvalue1(int group, int place) const {
    return code_in(data_.list.outputs, group, place);
}

std::string DigitalIO::Text1(int row) const {
    if (!is_pin(row)) return {};
    return data_.functions(side_of(row)).names(data_.value(row), services_.language);
}

// --- The chooser

void DigitalIO::Command1_Click(int row) {
    if (!is_pin(row)) return;
    if (data_.open_row == row) {
        close_chooser();
        return;
    }
    // One chooser at a time: an OK of the other side's would write to this row.
    const IoSide side = side_of(row);
    data_.open_row = row;
    data_.ticks(side) = data_.functions(side).decode(data_.value(row));
    data_.Timer1_enabled = true;
    data_.Timer1_ticks = 0;
    changed();
}

void DigitalIO::close_chooser() {
    data_.open_row.reset();
    changed();
}

void DigitalIO::Command2_Click() {
    accept(IoSide::kInput);
}

void DigitalIO::Command5_Click() {
    accept(IoSide::kOutput);
}

void DigitalIO::Command3_Click() {
    if (data_.open_row && side_of(*data_.open_row) == IoSide::kInput) close_chooser();
}

void DigitalIO::Command4_Click() {
    if (data_.open_row && side_of(*data_.open_row) == IoSide::kOutput) close_chooser();
}

Encoded DigitalIO::chosen() const {
    if (!data_.open_row) return {};
    const IoSide side = side_of(*data_.open_row);
    return data_.functions(side).encode(data_.ticks(side));
}

void DigitalIO::accept(IoSide side) {
    if (!data_.open_row || side_of(*data_.open_row) != side) return;
    const Encoded wanted = chosen();
    if (wanted.groups > 1) {
        services_.notice.show(kRefusedTitle.in(services_.language),
                              kRefused.in(services_.language));
        return;
    }
    const int row = *data_.open_row;
    services_.engine.sendata2(key_of_tag(tag_of(row)), wanted.value, 0);
    data_.rows[static_cast<std::size_t>(row)].waiting = can_write();
    services_.engine.request_io_refresh();
    close_chooser();
}

void DigitalIO::checkboxdin_Click(int index) {
    click_tick(IoSide::kInput, index);
}

void DigitalIO::checkboxdout_Click(int index) {
    click_tick(IoSide::kOutput, index);
}

void DigitalIO::click_tick(IoSide side, int index) {
    std::vector<bool>& ticks = data_.ticks(side);
    if (index < 0 || static_cast<std::size_t>(index) >= ticks.size()) return;
    ticks[static_cast<std::size_t>(index)] = !ticks[static_cast<std::size_t>(index)];
    changed();
}

void DigitalIO::Timer1_Timer() {
    if (!data_.Timer1_enabled) return;
    ++data_.Timer1_ticks;
    data_.picture = data_.Timer1_ticks % 2 == 1 ? kBlinkGrey : kBlinkBlue;
    if (data_.Timer1_ticks >= kBlinkTicks) data_.Timer1_enabled = false;
    changed();
}

// --- Clearing

void DigitalIO::clear_row(int row) {
    services_.engine.sendata2(key_of_tag(tag_of(row)), 0, 0);
    data_.rows[static_cast<std::size_t>(row)].waiting = can_write() && is_pin(row);
}

// Asks for no further reading: the next turn of the wheel shows it.
void DigitalIO::Command6_Click(int row) {
    if (!is_pin(row)) return;
    clear_row(row);
    changed();
}

void DigitalIO::Command7_Click() {
    for (int row = 0; row < kInputPins; ++row)
        clear_row(row);
    services_.engine.request_io_refresh();
    changed();
}

// Begins with the row that has no tag, so its first write carries the key value 2. Drives refuse
// it, and it has always been sent: whoever compares recordings of the line expects it there.
void DigitalIO::Command8_Click() {
    for (int row = kPinlessRow; row >= kInputPins; --row)
        clear_row(row);
    services_.engine.request_io_refresh();
    changed();
}

// --- Polarity and simulation

void DigitalIO::Check1_Click(int row) {
    click_box(row, IoColumn::kPolarity);
}

void DigitalIO::Check3_Click(int row) {
    click_box(row, IoColumn::kSimulate);
}

void DigitalIO::Image1_Click(IoSide side) {
    flip_column(side, IoColumn::kPolarity);
}

void DigitalIO::Image3_Click(IoSide side) {
    flip_column(side, IoColumn::kSimulate);
}

void DigitalIO::click_box(int row, IoColumn column) {
    if (row < 0 || row >= kIoRows) return;
    IoBoxes boxes = data_.column(side_of(row), column).boxes;
    bool& clicked = boxes[static_cast<std::size_t>(row % kBits)];
    clicked = !clicked;
    write_column(side_of(row), column, boxes);
}

void DigitalIO::flip_column(IoSide side, IoColumn column) {
    IoBoxes boxes = data_.column(side, column).boxes;
    for (bool& box : boxes)
        box = !box;
    write_column(side, column, boxes);
}

void DigitalIO::end_simulation() {
    for (const IoSide side : kIoSides)
        if (const IoBoxes& forced = data_.column(side, IoColumn::kSimulate).boxes;
            std::ranges::find(forced, true) != forced.end())
            write_column(side, IoColumn::kSimulate, {});
}

void DigitalIO::write_column(IoSide side, IoColumn column, const IoBoxes& boxes) {
    link::Engine& engine = services_.engine;
    if (engine.state.status_lane != 2) {
        engine.state.sub_Pointer = 0;
        engine.state.status_lane = 0;
        engine.clear_in();
    }
    std::int32_t byte = 0;
    for (int bit = 0; bit < kBits; ++bit)
        if (boxes[static_cast<std::size_t>(bit)]) byte |= 1 << bit;
    engine.sendata2(column_key(side, column), byte, 0);
    engine.request_io_refresh();
    // The boxes keep what was written until the drive says what it has: a second click in between
    // must not take the first one back. What could not be sent changes nothing on screen.
    if (can_write()) data_.column(side, column).boxes = boxes;
    changed();
}

bool DigitalIO::can_write() const {
    return data_.link_open && services_.engine.state.download_active != 1;
}

// --- What the drive says

void DigitalIO::lane1_answer(link::Identity object, const link::Payload& payload) {
    const auto value = static_cast<std::uint16_t>(link::reply_value(payload, kWordSize));
    if (const auto states = states_of(object)) {
        IoColumnState& column = data_.column(states->side, states->column);
        for (int bit = 0; bit < kBits; ++bit)
            column.boxes[static_cast<std::size_t>(bit)] = (value >> bit & 1) != 0;
        column.seen = true;
        column.fresh = true;
    } else if (const auto row = row_of(object)) {
        data_.value(*row) = value;
        data_.rows[static_cast<std::size_t>(*row)] = {.seen = true, .fresh = true};
    } else {
        return;  // an error mask, or the input filter
    }
    data_.last_answer = services_.engine.clock().now();
    data_.link_open = true;  // of two channels, one may have been closed meanwhile
    changed();
}

void DigitalIO::link_changed(bool open) {
    data_.link_open = open;
    for (IoRowState& row : data_.rows) {
        row.fresh = false;
        row.waiting = false;
    }
    for (auto& side : data_.columns)
        for (IoColumnState& column : side)
            column.fresh = false;
    changed();
}

std::optional<std::chrono::seconds> DigitalIO::age() const {
    if (!data_.last_answer) return std::nullopt;
    return std::chrono::duration_cast<std::chrono::seconds>(services_.engine.clock().now() -
                                                            *data_.last_answer);
}

}  // namespace servo::tools
