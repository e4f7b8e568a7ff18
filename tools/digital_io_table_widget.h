// The frame of one side of the form `DigitalIO`: a row for each pin.
#pragma once

#include <QGridLayout>
#include <QGroupBox>
#include <QLineEdit>
#include <array>
#include <functional>
#include <vector>

#include "tools/digital_io.h"
#include "tools/digital_io_controls_view.h"

namespace servo::tools {

class DigitalIOTableWidget final : public QGroupBox {
    Q_OBJECT

  public:
    DigitalIOTableWidget(DigitalIO& form, IoSide side, QWidget* parent);

    void refresh();
    void apply_language(base::Language language);
    // Back to the button that opened the chooser.
    void focus_row(int row);
    // From the other frame: the first or last row, at a place of the row.
    void enter(bool from_above, int place);

    // A step of the keyboard that leaves the frame, upwards or downwards.
    std::function<void(bool down, int place)> left;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    // What the keyboard can stand on: one line for the controls of whole columns, then the rows.
    enum Place : std::size_t { kText, kChoose, kClear, kSimulate, kPolarity, kPlaces };
    using Line = std::array<QWidget*, kPlaces>;

    struct Row {
        QLabel* number = nullptr;         // LabelN(i)
        QLineEdit* Text1 = nullptr;       // names of the functions
        QPushButton* Command1 = nullptr;  // opens the chooser
        QPushButton* Command6 = nullptr;  // clears the row
        std::array<LampBox*, 4> Check{};  // polarity, internal, simulate, real
    };

    void make_header();
    void make_row(int pin);
    void make_boxes(Row& row, int pin);
    void connect_row(const Row& row, int pin);
    void watch(const Line& line);
    void refresh_row(int pin, base::Language language);
    bool key(QWidget* control, int key);
    bool step(std::size_t line, std::size_t place, int rows, int places);
    bool focus(std::size_t line, std::size_t place);

    DigitalIO& form_;
    IoSide side_;
    QGridLayout* grid_ = nullptr;
    QPushButton* clear_all_ = nullptr;  // Command7 of the inputs, Command8 of the outputs
    QPushButton* Image1_ = nullptr;     // flips all polarities
    QPushButton* Image3_ = nullptr;     // flips all simulations
    std::vector<Row> rows_;
    std::vector<Line> lines_;
};

}  // namespace servo::tools
