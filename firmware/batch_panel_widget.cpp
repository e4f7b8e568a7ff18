#include "firmware/batch_panel_widget.h"

#include <QSignalBlocker>
#include <algorithm>
#include <array>

namespace servo::firmware {

namespace {

constexpr int kPathRow = 8;
constexpr int kBoxCharacters = 24;

// Wide enough for a barcode. One that takes no entry does not look as if it did.
void shape(KeyBox& box) {
    box.setMinimumWidth(box.fontMetrics().averageCharWidth() * kBoxCharacters);
    QPalette colours = box.palette();
    colours.setColor(QPalette::Disabled, QPalette::Base,
                     colours.color(QPalette::Active, QPalette::Window));
    box.setPalette(colours);
}

}  // namespace

BatchPanelWidget::BatchPanelWidget(PanelContext context, QWidget* parent)
    : QWidget(parent), context_(std::move(context)) {
    make_controls();
    connect_controls();
    lay_out();
}

void BatchPanelWidget::make_controls() {
    Check1_ = named(new QCheckBox(this), "Check1");
    const auto texts = control_texts();
    const auto text = std::ranges::find(texts, std::string_view("Check1"), &ControlText::control);
    Check1_->setText(to_qt(text->text));
    Check1_->setProperty("Tag", to_qt(text->text));
    Command5_ = make_command(this, "Command5");
    Label13_ = make_value(this, "Label13");
    make_quiet(Label13_);
    Text3_ = named(new KeyBox(this), "Text3");
    Text4_ = named(new KeyBox(this), "Text4");
    for (KeyBox* box : {Text3_, Text4_})
        shape(*box);
    Label8_ = make_value(this, "Label8");
    Label10_ = make_value(this, "Label10");
    Label12_ = make_value(this, "Label12");
    Label15_ = make_value(this, "Label15");
    texts_.add(Check1_, {"批量下载", "Download a lot"},
               {"操作员的标记，不影响下载", "A mark for the operator; it changes nothing"});
    texts_.add(Command5_, {"选择批量文件", "Choose the batch file"},
               {"选择批量文件（*.ini）", "Choose the batch file (*.ini)"});
    texts_.add(Text3_, {"产品名称", "Product name"},
               {"扫描或输入产品名称，回车确认", "Scan or type the product's name, then Enter"});
    texts_.add(Text4_, {"产品条码", "Product barcode"},
               {"扫描条码；回车后条码相符即开始下载",
                "Scan the barcode; at Enter a fitting one starts the download"});
}

// The form hears of a key before the box takes it, and of the text behind it.
void BatchPanelWidget::connect_controls() {
    connect(Check1_, &QCheckBox::clicked, this, [this] {
        context_.form.Check1_Click();
        context_.acted();
    });
    connect(Command5_, &QPushButton::clicked, this, [this] {
        context_.form.Command5_Click();
        context_.acted();
        if (Text3_->isEnabled() && !context_.form.data().Ini_File_Path1.empty())
            Text3_->setFocus(Qt::OtherFocusReason);
    });
    connect(Text3_, &QLineEdit::textEdited, this,
            [this](const QString& text) { context_.form.type_Text3(text.toStdString()); });
    connect(Text4_, &QLineEdit::textEdited, this,
            [this](const QString& text) { context_.form.type_Text4(text.toStdString()); });
    Text3_->pressed = [this](char32_t key) {
        if (!context_.form.Text3_KeyPress(key)) return false;
        context_.acted();
        follow_focus();
        return true;
    };
    Text4_->pressed = [this](char32_t key) {
        if (!context_.form.Text4_KeyPress(key)) return false;
        context_.acted();
        // The next scan takes the place of this one.
        Text4_->selectAll();
        return true;
    };
}

void BatchPanelWidget::follow_focus() {
    const std::string& wanted = context_.form.data().focus;
    for (KeyBox* box : {Text3_, Text4_})
        if (box->objectName().toStdString() == wanted) {
            box->setFocus(Qt::OtherFocusReason);
            box->selectAll();
        }
}

void BatchPanelWidget::lay_out() {
    grid_ = new QGridLayout(this);
    grid_->setContentsMargins(0, 0, 0, 0);
    grid_->setHorizontalSpacing(kGap);
    grid_->setVerticalSpacing(kGap);
    grid_->addWidget(make_heading(this, "LabelI", {"批量生产", "Production batch"}), 0, 0);
    grid_->addWidget(Check1_, 0, 1, Qt::AlignRight);
    grid_->addWidget(Command5_, 1, 0);
    grid_->addWidget(Label13_, 1, 1);
    struct Row {
        const char* caption;
        QWidget* value;
    };
    const std::array rows{Row{"Label5", Text3_},    Row{"Label7", Text4_},
                          Row{"Label6", Label8_},   Row{"Label9", Label10_},
                          Row{"Label11", Label12_}, Row{"Label14", Label15_}};
    int row = 2;
    for (const Row& each : rows) {
        grid_->addWidget(make_label(this, each.caption), row, 0);
        grid_->addWidget(each.value, row++, 1);
    }
    grid_->setRowMinimumHeight(0, kHeadingHeight);
    grid_->setColumnStretch(1, 1);
}

void BatchPanelWidget::take_path(QLabel* path) {
    grid_->addWidget(path, kPathRow, 0, 1, 2);
    path->show();  // it has a new parent
}

void BatchPanelWidget::refresh() {
    const DownloadData& held = context_.form.data();
    Text3_->setEnabled(held.Text3_enabled);
    Text4_->setEnabled(held.Text4_enabled);
    show_line(Text3_, held.Text3);
    show_line(Text4_, held.Text4);
    show_text(Label13_, held.Label13);
    show_text(Label8_, held.Label8);
    show_text(Label10_, held.Label10);
    show_text(Label12_, held.Label12);
    show_text(Label15_, held.Label15);
    const QSignalBlocker not_the_user(Check1_);
    Check1_->setChecked(held.Check1);
}

void BatchPanelWidget::apply_language(base::Language language) {
    texts_.apply(language);
}

}  // namespace servo::firmware
