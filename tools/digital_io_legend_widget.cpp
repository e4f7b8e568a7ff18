#include "tools/digital_io_legend_widget.h"

#include <QGridLayout>
#include <string_view>

#include "tools/digital_io_controls_view.h"

namespace servo::tools {

namespace {

struct Entry {
    const char* picture;  // null: a key or nothing stands there
    std::string_view key;
    std::string_view text;
};

constexpr Entry kEntries[] = {
    {"lamp_on", "", "有效 或 高电平/On, or a high level"},
    {"lamp_off", "", "无效 或 低电平/Off, or a low level"},
    {"box_ticked", "", "电平：高电平有效/Polarity: active when high"},
    {"box_clear", "", "电平：低电平有效（常闭触点）/Polarity: active when low (normally closed)"},
    {"box_forced", "", "仿真：强制有效，忽略端子/Simulate: forced on, whatever the pin says"},
    {"lamp_unknown", "", "尚未读取/Not read yet"},
    {nullptr, "Enter", "选择该行的功能/Choose the functions of the row"},
    {nullptr, "Del", "清除该行的功能/Clear the functions of the row"},
    {nullptr, "← ↑ ↓ →", "移动/Move about"},
};
constexpr int kFirstRow = 2;

}  // namespace

DigitalIOLegendWidget::DigitalIOLegendWidget(QWidget* parent) : QFrame(parent) {
    setObjectName(QStringLiteral("FrameL"));
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(2 * kIoGap, kIoGap, kIoGap, kIoGap);
    grid->setHorizontalSpacing(2 * kIoGap);
    grid->setVerticalSpacing(kIoGap / 2);
    QLabel* head =
        form::make_label(this, QStringLiteral("LabelH"),
                         "单击“>>”为端子选择功能/Click >> to choose the functions of a pin");
    head->setWordWrap(true);
    QFont bold = head->font();
    bold.setBold(true);
    head->setFont(bold);
    grid->addWidget(head, 0, 0, 1, 2);
    grid->setRowMinimumHeight(1, kIoGap);
    int row = kFirstRow;
    for (const Entry& entry : kEntries) {
        auto* sign = new QLabel(form::qt(entry.key), this);
        if (entry.picture != nullptr)
            sign->setPixmap(io_icon(entry.picture).pixmap(kIoLampSize, kIoLampSize));
        sign->setAlignment(Qt::AlignCenter);
        io_quiet(sign, true);
        QLabel* text =
            form::make_label(this, form::array_name("LabelL", row - kFirstRow), entry.text);
        text->setWordWrap(true);
        io_quiet(text, true);
        grid->addWidget(sign, row, 0, Qt::AlignTop);
        grid->addWidget(text, row++, 1);
    }
    grid->setRowStretch(row, 1);
    grid->setColumnStretch(1, 1);
}

}  // namespace servo::tools
