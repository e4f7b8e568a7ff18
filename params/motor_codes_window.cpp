#include "params/motor_codes_window.h"

#include <QEvent>
#include <QFontMetrics>
#include <QScrollBar>
#include <QTextCursor>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "params/motor_codes.h"
#include "params/page_loader.h"
#include "params/qt_text_view.h"
#include "params/ui_palette.h"

namespace servo::params {

namespace {

constexpr int kMargin = 8;
constexpr int kTextMargin = 8;
constexpr int kFirstLines = 36;     // seen at first
constexpr int kFewestColumns = 80;  // of the first width
constexpr int kMostColumns = 140;   // longer lines are scrolled to
constexpr QSize kSmallest{340, 160};

constexpr base::Text kPaneName{"电机代号表", "Table of motor codes"};

}  // namespace

MotorCodesWindow::MotorCodesWindow(std::filesystem::path folder, const base::Language& language,
                                   QWidget* parent)
    : QWidget(parent), folder_(std::move(folder)), language_(language), RichTextBox1_(this) {
    setObjectName(QStringLiteral("Motorcodes"));
    setMinimumSize(kSmallest);
    RichTextBox1_.setObjectName(QStringLiteral("RichTextBox1"));
    RichTextBox1_.setReadOnly(true);
    RichTextBox1_.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    RichTextBox1_.setAcceptRichText(false);
    RichTextBox1_.setUndoRedoEnabled(false);
    RichTextBox1_.setLineWrapMode(QTextEdit::NoWrap);
    RichTextBox1_.setTabChangesFocus(true);
    RichTextBox1_.document()->setDocumentMargin(kTextMargin);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    layout->addWidget(&RichTextBox1_);
    setFocusProxy(&RichTextBox1_);
    name_pane();
    load();
}

void MotorCodesWindow::load() {
    const auto text = load_motor_codes(folder_);
    loaded_ = text.has_value();
    text_ = loaded_ ? to_qt(*text) : QString();
    // Not a part of the text: what a file holds and what the program says stay apart.
    RichTextBox1_.setPlaceholderText(loaded_ ? QString()
                                             : to_qt(missing_file_text(kMotorCodesFile)));
    show_text();
}

// The columns of the table are made with blanks, so the text has a font of one width of its own,
// whatever font the language gives to the control.
QFont MotorCodesWindow::text_font() const {
    QFont font = RichTextBox1_.font();
    font.setFamilies({QStringLiteral("WenQuanYi Micro Hei Mono"),
                      QStringLiteral("Noto Sans Mono CJK SC"), QStringLiteral("NSimSun"),
                      QStringLiteral("DejaVu Sans Mono"), QStringLiteral("monospace")});
    font.setStyleHint(QFont::Monospace);
    font.setFixedPitch(true);
    return font;
}

void MotorCodesWindow::show_text() {
    const int top = RichTextBox1_.verticalScrollBar()->value();
    RichTextBox1_.clear();
    QTextCharFormat format;
    format.setFont(text_font());
    format.setForeground(QColor(palette::kText));
    QTextCursor cursor(RichTextBox1_.document());
    cursor.insertText(text_, format);  // as it stands, never as markup
    RichTextBox1_.moveCursor(QTextCursor::Start);
    RichTextBox1_.verticalScrollBar()->setValue(top);
}

void MotorCodesWindow::name_pane() {
    RichTextBox1_.setAccessibleName(to_qt(kPaneName.in(language_)));
}

QSize MotorCodesWindow::sizeHint() const {
    const QFontMetrics metrics(text_font());
    int width = 0;
    for (const auto& line : text_.split(QLatin1Char('\n')))
        width = std::max(width, metrics.horizontalAdvance(line.trimmed()));
    const int column = metrics.horizontalAdvance(QLatin1Char('0'));
    width = std::clamp(width, kFewestColumns * column, kMostColumns * column);
    const int around = 2 * (kMargin + kTextMargin + RichTextBox1_.frameWidth());
    return {width + around + 2 * RichTextBox1_.verticalScrollBar()->sizeHint().width(),
            kFirstLines * metrics.lineSpacing() + around};
}

void MotorCodesWindow::showEvent(QShowEvent* event) {
    if (!loaded_) load();
    QWidget::showEvent(event);
}

void MotorCodesWindow::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() != QEvent::LanguageChange) return;
    name_pane();
    show_text();
}

}  // namespace servo::params
