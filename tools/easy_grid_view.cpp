#include "tools/easy_grid_view.h"

#include <QHeaderView>

#include "tools/easy.h"
#include "tools/form_controls_view.h"

namespace servo::tools {

namespace {

constexpr int kPinWidth = 80;
constexpr int kFunctionWidth = 170;

}  // namespace

int EasyPinModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : easy::kPins;
}

int EasyPinModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(easy::kColumns.size());
}

QVariant EasyPinModel::data(const QModelIndex& index, int role) const {
    if (role != Qt::DisplayRole || !index.isValid() || index.column() != 0) return {};
    return form::qt(easy::pin_text(index.row()));
}

QVariant EasyPinModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole || orientation != Qt::Horizontal) return {};
    return form::qt(easy::kColumns.at(static_cast<std::size_t>(section)));
}

EasyGrid::EasyGrid(QWidget* parent) : RowTable(parent) {
    setObjectName(QStringLiteral("MSHFlexGrid1"));
    setModel(&model_);
    setShowGrid(true);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    horizontalHeader()->setSectionsClickable(false);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->resizeSection(0, kPinWidth);
    horizontalHeader()->setStretchLastSection(true);
}

QSize EasyGrid::sizeHint() const {
    const int rows = model_.rowCount() * verticalHeader()->defaultSectionSize();
    return {kPinWidth + kFunctionWidth,
            rows + horizontalHeader()->sizeHint().height() + 2 * frameWidth()};
}

}  // namespace servo::tools
