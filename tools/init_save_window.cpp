#include "tools/init_save_window.h"

#include <QEvent>
#include <QGridLayout>
#include <QVBoxLayout>
#include <algorithm>

#include "tools/init_save_texts.h"

namespace servo::tools {

using namespace form;

namespace {

constexpr int kWidth = 640;
constexpr int kColumns = 90;  // of characters, where they are larger
constexpr int kSlack = 4;     // between the line heights of both fonts
constexpr int kBarHeight = 6;

using Click = void (InitSave::*)();
constexpr std::array<Click, kInitSaveCommands> kClicks{
    &InitSave::Command1_Click, &InitSave::Command2_Click, &InitSave::Command3_Click,
    &InitSave::Command4_Click, &InitSave::Command5_Click};

}  // namespace

InitSaveWindow::InitSaveWindow(InitSave& form, QWidget* parent) : QWidget(parent), form_(form) {
    setObjectName(QStringLiteral("InitSave"));
    setProperty("Tag", qt(kInitSaveCaption));
    make_commands();
    lay_out();
    Timer1_.setObjectName(QStringLiteral("Timer1"));
    Timer1_.setSingleShot(true);
    Timer1_.setInterval(InitSave::kLockMilliseconds);
    connect(&Timer1_, &QTimer::timeout, this, [this] { form_.Timer1_Timer(); });
    looks_.setInterval(kLookMs);
    connect(&looks_, &QTimer::timeout, this, &InitSaveWindow::look);
    form_.changed = [this] { refresh_now(); };
    apply_language();
}

InitSaveWindow::~InitSaveWindow() {
    form_.changed = nullptr;
}

void InitSaveWindow::make_commands() {
    for (int i = 0; i < kInitSaveCommands; ++i) {
        const auto at = static_cast<std::size_t>(i);
        const InitSaveButton& button = init_save_buttons()[at];
        commands_[at] = make_command(this, qt(button.control), button.caption);
        connect(commands_[at], &QPushButton::clicked, this, [this, i] { click(i); });
        meanings_[at] = make_text(this, QStringLiteral("Label") + QChar('A' + i));
        set_weight(meanings_[at], Weight::kQuiet);
    }
    lock_ = new QProgressBar(this);
    lock_->setObjectName(QStringLiteral("ProgressBarA"));
    lock_->setRange(0, InitSave::kLockMilliseconds);
    lock_->setTextVisible(false);
    lock_->setFixedHeight(kBarHeight);
    QSizePolicy place = lock_->sizePolicy();
    place.setRetainSizeWhenHidden(true);
    lock_->setSizePolicy(place);
    lock_text_ = make_text(this, QStringLiteral("LabelF"));
    note_ = make_text(this, QStringLiteral("LabelG"));
}

void InitSaveWindow::lay_out() {
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(2 * kGap);
    grid->setVerticalSpacing(kGap / 2);
    for (int i = 0; i < kInitSaveCommands; ++i) {
        grid->addWidget(commands_[static_cast<std::size_t>(i)], i, 0, Qt::AlignVCenter);
        grid->addWidget(meanings_[static_cast<std::size_t>(i)], i, 1);
    }
    grid->setColumnStretch(1, 1);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(2 * kGap, 2 * kGap, 2 * kGap, 2 * kGap);
    layout->setSpacing(kGap);
    layout->addLayout(grid);
    layout->addSpacing(kGap);
    layout->addWidget(lock_text_);
    layout->addWidget(lock_);
    layout->addWidget(note_);
    layout->addStretch();
    // What is told of a command moves nothing.
    note_->setMinimumHeight(note_->fontMetrics().lineSpacing() + 2);
}

int InitSaveWindow::least_width() const {
    return std::max(kWidth, kColumns * fontMetrics().averageCharWidth());
}

// As high as its wrapped lines need.
QSize InitSaveWindow::sizeHint() const {
    const int width = std::max(least_width(), layout()->minimumSize().width());
    return {width, layout()->totalHeightForWidth(width)};
}

// What the buttons leave of the window's width.
int InitSaveWindow::meaning_width() const {
    int buttons = 0;
    for (const QPushButton* command : commands_)
        buttons = std::max(buttons, command->sizeHint().width());
    return std::max(width(), least_width()) - buttons - 6 * kGap;
}

// All alike, and another language takes no more room: the frame around the window has no need to
// grow.
void InitSaveWindow::reserve_meanings() {
    const QRect room(0, 0, meaning_width(), 0);
    const QFontMetrics metrics = meanings_[0]->fontMetrics();
    int height = 0;
    for (const InitSaveButton& button : init_save_buttons())
        for (const base::Language language : {base::Language::kChinese, base::Language::kEnglish})
            height = std::max(
                height,
                metrics.boundingRect(room, Qt::TextWordWrap, qt(button.meaning.in(language)))
                    .height());
    for (QLabel* meaning : meanings_)
        meaning->setMinimumHeight(height + kSlack);
    setMinimumWidth(least_width());
}

void InitSaveWindow::click(int command) {
    (form_.*kClicks[static_cast<std::size_t>(command)])();
    if (form_.locked() && !Timer1_.isActive()) Timer1_.start();
    looks_.start();
    refresh_now();
}

void InitSaveWindow::look() {
    form_.look();
    if (!form_.locked() && !form_.restart().watching()) looks_.stop();
    refresh_now();
}

void InitSaveWindow::refresh_now() {
    const bool locked = form_.locked();
    for (QPushButton* command : commands_)
        command->setEnabled(!locked);
    lock_->setValue(static_cast<int>(form_.lock_left().count()));
    lock_->setVisible(locked);
    show_text(lock_text_, lock_text(form_));
    set_weight(lock_text_, locked ? Weight::kPlain : Weight::kQuiet);
    const InitSaveNote note = init_save_note(form_);
    show_text(note_, note.text);
    set_weight(note_, note.warning ? Weight::kWarning : Weight::kPlain);
}

void InitSaveWindow::changeEvent(QEvent* event) {
    if (event->type() == QEvent::LanguageChange) apply_language();
    QWidget::changeEvent(event);
}

void InitSaveWindow::apply_language() {
    const base::Language language = form_.language();
    setWindowTitle(half_of(kInitSaveCaption, language));
    for (std::size_t i = 0; i < meanings_.size(); ++i)
        show_text(meanings_[i], init_save_buttons()[i].meaning.in(language));
    reserve_meanings();
    refresh_now();
}

void InitSaveWindow::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    reserve_meanings();
}

void InitSaveWindow::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    refresh_now();
}

}  // namespace servo::tools
