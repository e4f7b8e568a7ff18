#include "tools/rs485_window.h"

#include <QEvent>
#include <QGridLayout>
#include <QVBoxLayout>

namespace servo::tools {

using namespace form;

namespace {

constexpr int kListWidth = 160;
constexpr int kWidth = 460;
constexpr int kNoteLines = 8;  // of all notes

}  // namespace

Rs485Window::Rs485Window(Rs485& form, QWidget* parent) : QWidget(parent), form_(form) {
    setObjectName(QStringLiteral("RS485"));
    setProperty("Tag", qt(kRs485Caption));
    make_lists();
    lay_out();
    gather_.setSingleShot(true);
    gather_.setInterval(kGatherMs);
    connect(&gather_, &QTimer::timeout, this, &Rs485Window::refresh_now);
    form_.changed = [this] {
        if (isVisible() && !gather_.isActive()) gather_.start();
    };
    apply_language();
}

Rs485Window::~Rs485Window() {
    form_.changed = nullptr;
}

void Rs485Window::make_lists() {
    for (std::size_t i = 0; i < lists_.size(); ++i) {
        const SerialList& list = serial_lists()[i];
        labels_[i] = make_label(this, QStringLiteral("Label") + QChar('A' + static_cast<int>(i)),
                                list.label);
        lists_[i] = new ListBox(this, qt(list.control));
        for (const std::string_view item : list.items)
            lists_[i]->addItem(qt(item));
        lists_[i]->setFixedWidth(kListWidth);
        labels_[i]->setBuddy(lists_[i]);
    }
    for (int entry = 0; entry < Rs485::kEntries; ++entry) {
        ListBox* list = lists_[Rs485::list_of_entry(entry)];
        list->setCurrentIndex(-1);
        // Only a user's pick, one of what is selected already too.
        connect(list, &QComboBox::activated, this, [this, entry](int index) {
            form_.pick(entry, index);
            refresh_now();
        });
    }
    for (std::size_t i = 0; i < notes_.size(); ++i)
        notes_[i] = make_text(this, QStringLiteral("Label") + QChar('F' + static_cast<int>(i)));
}

void Rs485Window::lay_out() {
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(2 * kGap);
    grid->setVerticalSpacing(kGap);
    for (std::size_t i = 0; i < lists_.size(); ++i) {
        grid->addWidget(labels_[i], static_cast<int>(i), 0);
        grid->addWidget(lists_[i], static_cast<int>(i), 1);
    }
    grid->setColumnStretch(2, 1);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(2 * kGap, 2 * kGap, 2 * kGap, 2 * kGap);
    layout->setSpacing(kGap);
    layout->addLayout(grid);
    layout->addSpacing(kGap);
    auto* told = new QWidget(this);
    auto* column = new QVBoxLayout(told);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(kGap);
    for (QLabel* note : notes_)
        column->addWidget(note);
    column->addStretch();
    // All of them have room, so that the frame around the window has no need to grow.
    told->setMinimumHeight(kNoteLines * fontMetrics().lineSpacing() + kMostNotes * kGap);
    layout->addWidget(told, 1);
    setMinimumWidth(kWidth);
}

QSize Rs485Window::sizeHint() const {
    return {kWidth, layout()->totalHeightForWidth(kWidth)};
}

void Rs485Window::refresh_now() {
    gather_.stop();
    for (int entry = 0; entry < Rs485::kEntries; ++entry)
        lists_[Rs485::list_of_entry(entry)]->setCurrentIndex(form_.selection(entry));
    const auto notes = form_.notes();
    for (std::size_t i = 0; i < notes_.size(); ++i) {
        const bool told = i < notes.size();
        show_text(notes_[i], told ? std::string_view(notes[i].text) : std::string_view());
        set_weight(notes_[i], told && notes[i].warning ? Weight::kWarning : Weight::kQuiet);
    }
}

void Rs485Window::changeEvent(QEvent* event) {
    if (event->type() == QEvent::LanguageChange) apply_language();
    QWidget::changeEvent(event);
}

void Rs485Window::apply_language() {
    setWindowTitle(half_of(kRs485Caption.substr(0, kRs485Caption.size() - 1), form_.language()));
    refresh_now();
}

void Rs485Window::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    refresh_now();
}

}  // namespace servo::tools
