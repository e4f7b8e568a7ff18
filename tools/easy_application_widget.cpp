#include "tools/easy_application_widget.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace servo::tools {

using namespace form;

namespace {

QVBoxLayout* column_in(QGroupBox* frame) {
    auto* column = new QVBoxLayout(frame);
    column->setContentsMargins(kGap, kGap / 2, kGap, kGap / 2);
    column->setSpacing(kGap / 2);
    return column;
}

}  // namespace

EasyApplicationWidget::EasyApplicationWidget(QWidget* parent) : QGroupBox(parent) {
    setObjectName(QStringLiteral("Frame5"));
    setProperty("Tag", qt("应用相关设置/Application Settings"));
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(kGap, kGap / 2, kGap, kGap / 2);
    row->setSpacing(kGap);
    row->addWidget(make_application());
    row->addWidget(make_load());
    row->addWidget(make_others(), 1);
}

QGroupBox* EasyApplicationWidget::make_application() {
    QGroupBox* frame = make_frame(this, QStringLiteral("Frame7"), "应用类型/Application type");
    QVBoxLayout* column = column_in(frame);
    column->addWidget(make_option(frame, QStringLiteral("Option8"), "点到点/P2P"));
    column->addWidget(make_option(frame, QStringLiteral("Option7"), "CNC"));
    // Three parts are three languages to the walk through a window's texts, so English shows the
    // second; the tip has the whole.
    QRadioButton* follower = make_option(frame, QStringLiteral("Option4"), "主从跟随/Master/Slave");
    tips_.add(follower, {"主从跟随", "Master/Slave"});
    column->addWidget(follower);
    column->addStretch();
    return frame;
}

QGroupBox* EasyApplicationWidget::make_others() {
    QGroupBox* frame = make_frame(this, QStringLiteral("Frame8"), "其它/Others");
    QVBoxLayout* column = column_in(frame);
    column->addWidget(
        make_check(frame, QStringLiteral("Check3"), "故障输出极性取反/Fault output pin polarity"));
    column->addWidget(
        make_check(frame, QStringLiteral("Check2"), "去除限位开关功能/Remove limit function"));
    column->addStretch();
    return frame;
}

QGroupBox* EasyApplicationWidget::make_load() {
    QGroupBox* frame = make_frame(this, QStringLiteral("Frame6"), "负载类型/Load type");
    QVBoxLayout* column = column_in(frame);
    column->addWidget(make_option(frame, QStringLiteral("Option3"), "空载/Noload"));
    column->addWidget(make_option(frame, QStringLiteral("Option6"), "丝杠/Ballscrew"));
    column->addWidget(make_option(frame, QStringLiteral("Option5"), "皮带/Belt"));
    column->addStretch();
    return frame;
}

}  // namespace servo::tools
