#include "scope/reference_panel_widget.h"

#include <QGridLayout>

namespace servo::scope {

namespace {

constexpr base::Text kShow{"显示参考记录", "Show the reference recording"};
constexpr base::Text kRemove{"移除参考记录", "Remove the reference recording"};

}  // namespace

ReferencePanelWidget::ReferencePanelWidget(PanelContext context, QWidget* parent)
    : QWidget(parent), context_(std::move(context)) {
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(kGap);
    grid->setVerticalSpacing(0);
    grid->addWidget(make_heading(this, "LabelV", {"参考记录", "References"}), 0, 0, 1, 2);
    none_ = make_caption(this, "LabelW", {"还没有保留的记录", "None kept yet"});
    make_quiet(none_);
    grid->addWidget(none_, 1, 0, 1, 2);
    for (std::size_t place = 0; place < lines_.size(); ++place) {
        Line& line = lines_.at(place);
        const int number = static_cast<int>(place);
        line.shown = make_check(this, numbered("CheckR", number), {});
        line.remove = make_row_tool(this, numbered("CommandR", number), "remove");
        connect(line.shown, &QCheckBox::clicked, this, [this, place](bool on) {
            context_.scope.references().kept.at(place).shown = on;
            context_.acted();
        });
        connect(line.remove, &QToolButton::clicked, this, [this, place] {
            context_.scope.references().remove(place);
            context_.acted();
        });
        texts_.add(line.remove, kRemove);
        grid->addWidget(line.shown, number + 2, 0);
        grid->addWidget(line.remove, number + 2, 1);
    }
    grid->setColumnStretch(0, 1);
    grid->setRowStretch(static_cast<int>(lines_.size()) + 2, 1);
}

void ReferencePanelWidget::refresh() {
    const auto& kept = context_.scope.references().kept;
    none_->setVisible(kept.empty());
    for (std::size_t place = 0; place < lines_.size(); ++place) {
        const Line& line = lines_.at(place);
        const bool taken = place < kept.size();
        line.shown->setVisible(taken);
        line.remove->setVisible(taken);
        if (!taken) continue;
        if (const QString name = to_qt(kept.at(place).name); line.shown->text() != name)
            line.shown->setText(name);
        show_check(line.shown, kept.at(place).shown);
    }
}

void ReferencePanelWidget::apply_language(base::Language language) {
    texts_.apply(language);
    for (const Line& line : lines_)
        line.shown->setToolTip(to_qt(kShow.in(language)));
}

}  // namespace servo::scope
