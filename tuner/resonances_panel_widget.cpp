#include "tuner/resonances_panel_widget.h"

#include <fmt/format.h>

#include <QSignalBlocker>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "base/number.h"

namespace servo::tuner {

namespace {

constexpr int kModelSlots = 4;  // those that take part in the simulated loop
constexpr int kLeastRows = 2;
constexpr base::Text kResonance{"谐振", "resonance"};
constexpr base::Text kAntiResonance{"反谐振", "anti-resonance"};
constexpr base::Text kNone{"没有测得谐振。", "No resonance in the measurement."};
constexpr base::Text kAnti{"反谐振不需要陷波器。", "An anti-resonance needs no notch."};

std::string one_decimal(double value) {
    return base::format_fixed(value, 1);
}

std::string row_text(const Resonance& each, base::Language language) {
    const bool up = each.kind == ResonanceKind::kResonance;
    return fmt::format("{} Hz   {}{} dB   {}", one_decimal(each.frequency),
                       each.height > 0.0 ? "+" : "", one_decimal(each.height),
                       (up ? kResonance : kAntiResonance).in(language));
}

std::string proposal_text(const NotchProposal& notch, base::Language language) {
    const std::string frequency = base::format_up_to(notch.frequency, 1);
    const std::string width = base::format_up_to(notch.width, 1);
    const std::string depth = base::format_up_to(notch.depth, 1);
    return language == base::Language::kChinese
               ? fmt::format("{} Hz，宽 {} Hz，深 {} dB", frequency, width, depth)
               : fmt::format("{} Hz, width {} Hz, depth {} dB", frequency, width, depth);
}

std::string apply_text(int slot, base::Language language) {
    const bool chinese = language == base::Language::kChinese;
    if (slot < 0) return chinese ? "滤波器 1 至 4 都已使用" : "Filters 1 to 4 are all in use";
    return chinese ? fmt::format("填入滤波器 {}", slot + 1)
                   : fmt::format("Put into filter {}", slot + 1);
}

}  // namespace

ResonancesPanelWidget::ResonancesPanelWidget(PanelContext context, QWidget* parent)
    : QWidget(parent), context_(std::move(context)) {
    list_ = named(new QListWidget(this), "ListResonances");
    list_->setUniformItemSizes(true);
    list_->setMinimumHeight(list_->fontMetrics().height() * kLeastRows + kGap);
    list_->setMinimumWidth(0);
    connect(list_, &QListWidget::currentRowChanged, this, [this] { refresh(); });
    connect(list_, &QListWidget::itemActivated, this, [this] { apply(); });
    proposal_ = make_value(this, "LabelProposal");
    apply_ = make_command(this, "CommandNotch", {"填入滤波器", "Put into a filter"});
    apply_->setProperty("Tag", QStringLiteral("-"));  // its caption tells the slot
    connect(apply_, &QPushButton::clicked, this, [this] { apply(); });
    texts_.add(list_, {"测得的谐振", "Resonances of the measurement"});
    texts_.add(apply_, {"填入空闲的滤波器", "Put into a free filter"},
               {"把建议的陷波器填入第一个空闲的滤波器；随后按仿真",
                "Puts the proposed notch into the first free filter; then simulate"});
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(kGap, kGap / 2, kGap, kGap / 2);
    layout->setSpacing(kGap / 2);
    layout->addWidget(list_, 1);
    layout->addWidget(proposal_);
    layout->addWidget(apply_);
}

void ResonancesPanelWidget::show_resonances(std::vector<Resonance> resonances) {
    resonances_ = std::move(resonances);
    fill();
    const Resonance* top = highest(resonances_);
    list_->setCurrentRow(top != nullptr ? static_cast<int>(top - resonances_.data()) : 0);
    refresh();
}

void ResonancesPanelWidget::fill() {
    const QSignalBlocker not_the_user(list_);
    const int row = list_->currentRow();
    list_->clear();
    for (const Resonance& each : resonances_)
        list_->addItem(to_qt(row_text(each, context_.tuner.language())));
    list_->setCurrentRow(std::min(row, list_->count() - 1));
}

std::optional<NotchProposal> ResonancesPanelWidget::proposal() const {
    const int row = list_->currentRow();
    if (row < 0 || row >= static_cast<int>(resonances_.size())) return std::nullopt;
    return propose_notch(resonances_[static_cast<std::size_t>(row)]);
}

int ResonancesPanelWidget::free_slot() const {
    const auto& slots = context_.tuner.data().slots;
    for (int i = 0; i < kModelSlots; ++i)
        if (!slots.at(static_cast<std::size_t>(i)).use) return i;
    return -1;
}

void ResonancesPanelWidget::apply() {
    const auto notch = proposal();
    if (!notch || free_slot() < 0) return;
    context_.tuner.apply_notch(notch->frequency, notch->width, notch->depth, notch->damping);
    context_.acted();
}

void ResonancesPanelWidget::refresh() {
    const base::Language language = context_.tuner.language();
    const auto notch = proposal();
    const int slot = free_slot();
    if (notch)
        show_text(proposal_, proposal_text(*notch, language));
    else
        show_text(proposal_, (resonances_.empty() ? kNone : kAnti).in(language));
    if (const QString caption = to_qt(apply_text(slot, language)); apply_->text() != caption)
        apply_->setText(caption);
    show_enabled(apply_, notch && slot >= 0);
}

void ResonancesPanelWidget::apply_language(base::Language language) {
    texts_.apply(language);
    fill();
    refresh();
}

}  // namespace servo::tuner
