#include "params/browser_details_view.h"

#include <QGridLayout>
#include <QLabel>
#include <QTextCursor>
#include <QTextEdit>
#include <QVBoxLayout>
#include <utility>

#include "params/qt_text_view.h"
#include "params/ui_palette.h"

namespace servo::params {

namespace {

constexpr int kSpacing = 8;
constexpr int kColumnGap = 16;
constexpr int kSmallestHelp = 216;   // width; the fields above it ask for their own
constexpr double kLineHeight = 125;  // percent

constexpr base::Text kHelp{"帮助", "Help"};
constexpr base::Text kAttributeTip{"R 可读，W 可写；H 或 L：不断读取",
                                   "R: can be read, W: can be written; H or L: read all the time"};

void set_colour(QLabel* label, std::uint32_t colour) {
    QPalette colours = label->palette();
    colours.setColor(QPalette::WindowText, QColor(colour));
    label->setPalette(colours);
}

}  // namespace

BrowserDetails::BrowserDetails(QWidget* parent) : QWidget(parent) {
    auto* form = new QGridLayout;
    form->setHorizontalSpacing(kSpacing);
    form->setVerticalSpacing(kSpacing);
    add_field(*form, kIndexField, QStringLiteral("索引/Index"), 0, 0, 1);
    add_field(*form, kSubField, QStringLiteral("子索引/Sub-index"), 0, 3, 1);
    add_field(*form, kNameField, QStringLiteral("名称/Name"), 1, 0, 4)->setWordWrap(true);
    add_field(*form, kTypeField, QStringLiteral("数据类型/Data type"), 2, 0, 1);
    add_field(*form, kAttributeField, QStringLiteral("属性/Attribute"), 2, 3, 1);
    add_field(*form, kModbusField, QStringLiteral("Modbus"), 3, 0, 4);
    form->setColumnMinimumWidth(2, kColumnGap);
    form->setColumnStretch(1, 3);
    form->setColumnStretch(4, 2);

    RichTextBox1_ = new QTextEdit(this);
    RichTextBox1_->setObjectName(QStringLiteral("RichTextBox1"));
    RichTextBox1_->setReadOnly(true);
    RichTextBox1_->setProperty("Tag", QStringLiteral("-"));
    RichTextBox1_->setAcceptRichText(false);
    RichTextBox1_->setUndoRedoEnabled(false);
    RichTextBox1_->setTabChangesFocus(true);
    RichTextBox1_->setMinimumWidth(kSmallestHelp);
    RichTextBox1_->document()->setDocumentMargin(kSpacing);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(kSpacing);
    layout->addLayout(form);
    layout->addWidget(RichTextBox1_, 1);
}

QLabel* BrowserDetails::add_field(QGridLayout& form, Field field, const QString& tag, int row,
                                  int column, int span) {
    const auto name = [](int place) { return QStringLiteral("Label") + QChar('A' + place); };
    auto* caption = new QLabel(this);
    caption->setObjectName(name(2 * field));
    caption->setProperty("Tag", tag);
    caption->setText(tag.section(QLatin1Char('/'), -1));
    set_colour(caption, palette::kMutedText);
    auto* value = new QLabel(this);
    value->setObjectName(name(2 * field + 1));
    value->setTextFormat(Qt::PlainText);
    value->setTextInteractionFlags(Qt::TextSelectableByMouse);
    // Names hold slashes, which would pass for a pair of texts in two languages.
    value->setProperty("Tag", QStringLiteral("-"));
    set_colour(value, palette::kText);
    QFont bold = value->font();
    bold.setBold(true);
    value->setFont(bold);
    // Only what may be long gives way to a narrow window.
    if (span > 1) value->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    caption->setBuddy(value);  // for screen readers
    form.addWidget(caption, row, column, Qt::AlignTop);
    form.addWidget(value, row, column + 1, 1, span, Qt::AlignTop);
    values_.at(field) = value;
    return value;
}

void BrowserDetails::apply_language(base::Language language) {
    RichTextBox1_->setAccessibleName(to_qt(kHelp.in(language)));
    values_.at(kAttributeField)->setToolTip(to_qt(kAttributeTip.in(language)));
}

void BrowserDetails::show_object(const ObjectBrowser& browser) {
    const ObjectDetails& details = browser.details();
    values_.at(kIndexField)->setText(to_qt(details.index));
    values_.at(kSubField)->setText(to_qt(details.sub));
    values_.at(kNameField)->setText(to_qt(details.name));
    values_.at(kTypeField)->setText(to_qt(details.type));
    values_.at(kAttributeField)->setText(to_qt(details.attribute));
    values_.at(kModbusField)->setText(to_qt(details.modbus));
    show_help(to_qt(browser.help()));
}

// The text stands as it is; only its look tells title and items apart. All in one step, so that it
// is laid out once.
void BrowserDetails::show_help(const QString& text) {
    if (text == help_) return;  // somebody may be reading further down
    help_ = text;
    QTextBlockFormat lines;
    lines.setLineHeight(kLineHeight, QTextBlockFormat::ProportionalHeight);
    const QTextCharFormat plain;
    QTextCharFormat title;
    title.setFontWeight(QFont::Bold);
    QTextCharFormat bar = title;
    bar.setForeground(QColor(palette::kAccent));

    const qsizetype title_end = text.indexOf(QLatin1Char('\n'));
    QTextCursor cursor(RichTextBox1_->document());
    cursor.beginEditBlock();
    cursor.select(QTextCursor::Document);
    cursor.removeSelectedText();
    cursor.setBlockFormat(lines);
    cursor.insertText(text.left(title_end), title);
    cursor.insertText(QStringLiteral("\n"), plain);
    bool first = true;
    for (const QString& item : text.mid(title_end + 1).split(QLatin1Char('|'))) {
        if (!std::exchange(first, false)) cursor.insertText(QStringLiteral("|"), bar);
        cursor.insertText(item, plain);
    }
    cursor.endEditBlock();
    RichTextBox1_->moveCursor(QTextCursor::Start);
}

}  // namespace servo::params
