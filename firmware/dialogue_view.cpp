#include "firmware/dialogue_view.h"

#include <QFontDatabase>
#include <QScrollBar>
#include <QTextCursor>
#include <QVBoxLayout>
#include <algorithm>

namespace servo::firmware {

namespace {
constexpr int kLines = 9;
constexpr int kMostLines = 20000;
}  // namespace

DialogueView::DialogueView(PanelContext context, QWidget* parent)
    : QWidget(parent), context_(std::move(context)) {
    text_ = named(new QPlainTextEdit(this), "TextA");
    text_->setReadOnly(true);
    text_->setUndoRedoEnabled(false);
    text_->setLineWrapMode(QPlainTextEdit::NoWrap);
    text_->setMaximumBlockCount(kMostLines);
    text_->setMinimumHeight(text_->fontMetrics().lineSpacing() * kLines);
    save_ = make_command(this, "CommandC", {"保存...", "Save..."});
    texts_.add(text_, {"通讯记录", "Line dialogue"});
    texts_.add(save_, {"保存通讯记录", "Save the line dialogue"},
               {"把完整的通讯记录存为文本文件", "Saves the whole dialogue as a text file"});
    connect(save_, &QPushButton::clicked, this, &DialogueView::save_asked);

    auto* head = new QHBoxLayout;
    head->addWidget(make_heading(this, "LabelM", {"通讯记录", "Line dialogue"}), 1);
    head->addWidget(save_);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(kGap);
    layout->addLayout(head);
    layout->addWidget(text_, 1);
}

// The last line may have grown, and is written again. Whoever has scrolled up stays there.
void DialogueView::refresh() {
    const DialogueLog& log = context_.form.transfer().dialogue();
    save_->setEnabled(!log.entries().empty());
    if (seen_ == log.changes()) return;
    seen_ = log.changes();
    if (shown_transfer_ != log.transfers()) {
        shown_transfer_ = log.transfers();
        shown_ = 0;
        text_->clear();
    }
    QScrollBar* bar = text_->verticalScrollBar();
    const bool at_end = bar->value() == bar->maximum();
    QTextCursor cursor(text_->document());
    cursor.movePosition(QTextCursor::End);
    if (shown_ > 0) {
        cursor.select(QTextCursor::BlockUnderCursor);
        cursor.removeSelectedText();
        --shown_;
    }
    const std::size_t total = log.dropped() + log.entries().size();
    for (std::size_t i = std::max(shown_, log.dropped()); i < total; ++i) {
        if (!text_->document()->isEmpty()) cursor.insertBlock();
        cursor.insertText(to_qt(shown_entry(log.entries()[i - log.dropped()])));
    }
    shown_ = total;
    if (!at_end) return;
    text_->moveCursor(QTextCursor::End);
    text_->moveCursor(QTextCursor::StartOfLine);
    bar->setValue(bar->maximum());
}

void DialogueView::apply_language(base::Language language) {
    texts_.apply(language);
}

}  // namespace servo::firmware
