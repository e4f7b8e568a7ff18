#include "tools/position_flow_widget.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>
#include <algorithm>
#include <cmath>

#include "params/grid_model_view.h"
#include "params/ui_palette.h"
#include "tools/form_controls_view.h"
#include "tools/position_palette_view.h"

namespace servo::tools {

namespace {

namespace palette = position_palette;

constexpr int kBoxCharacters = 21;
constexpr int kPadding = 8;
constexpr double kRadius = 5;
constexpr double kHead = 7;  // length of an arrow's head
constexpr int kStopWidth = 5;

QRectF rect_of(const PictureRect& rect) {
    return {std::round(rect.x) + 0.5, std::round(rect.y) + 0.5, std::round(rect.width),
            std::round(rect.height)};
}

QPointF point_of(PicturePoint point) {
    return {std::round(point.x) + 0.5, std::round(point.y) + 0.5};
}

FlowSizes sizes_for(const QFontMetrics& metrics) {
    FlowSizes sizes;
    sizes.box_width = metrics.averageCharWidth() * kBoxCharacters + 2 * kPadding;
    sizes.box_height = metrics.lineSpacing() * static_cast<int>(kFlowLines) + 2 * kPadding - 4;
    sizes.heading = metrics.lineSpacing() * 1.6;
    return sizes;
}

QString in(base::Language language, base::Text text) {
    return form::qt(text.in(language));
}

}  // namespace

PositionFlowWidget::PositionFlowWidget(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("PictureA"));
    setFocusPolicy(Qt::StrongFocus);
    setAutoFillBackground(true);
    QPalette colours = QWidget::palette();
    colours.setColor(QPalette::Window, QColor(palette::kPaper));
    setPalette(colours);
}

void PositionFlowWidget::show_flow(const PosFlow::Picture& picture, base::Language language) {
    program_ = picture.program;
    flow_ = picture.flow;
    language_ = language;
    setAccessibleName(in(language, {"流程图", "Picture of the flow"}));
    setAccessibleDescription(form::qt(flow_summary(flow_, language)));
    arrange();
}

void PositionFlowWidget::show_steps(int selected, int running) {
    if (selected == selected_ && running == running_) return;
    selected_ = selected;
    running_ = running;
    update();
}

void PositionFlowWidget::arrange() {
    picture_ = flow_picture(program_, flow_, width(), sizes_for(fontMetrics()), language_);
    setMinimumHeight(static_cast<int>(std::ceil(picture_.height)));
    setMinimumWidth(static_cast<int>(sizes_for(fontMetrics()).box_width * 2));
    update();
}

QSize PositionFlowWidget::sizeHint() const {
    return {600, static_cast<int>(std::ceil(picture_.height))};
}

void PositionFlowWidget::resizeEvent(QResizeEvent*) {
    arrange();
}

void PositionFlowWidget::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange) arrange();
}

// --- Events

void PositionFlowWidget::mousePressEvent(QMouseEvent* event) {
    const int step = picture_.step_at({event->position().x(), event->position().y()});
    if (event->button() == Qt::LeftButton && step >= 0) Q_EMIT step_picked(step);
}

void PositionFlowWidget::pick_neighbour(int steps) {
    if (picture_.boxes.empty()) return;
    const auto at = std::ranges::find(picture_.boxes, selected_, &FlowBox::step);
    const int last = static_cast<int>(picture_.boxes.size()) - 1;
    const int from =
        at == picture_.boxes.end() ? -steps : static_cast<int>(at - picture_.boxes.begin());
    const int to = std::clamp(from + steps, 0, last);
    Q_EMIT step_picked(picture_.boxes.at(static_cast<std::size_t>(to)).step);
}

void PositionFlowWidget::keyPressEvent(QKeyEvent* event) {
    const int key = event->key();
    if (key == Qt::Key_Right || key == Qt::Key_Down)
        pick_neighbour(1);
    else if (key == Qt::Key_Left || key == Qt::Key_Up)
        pick_neighbour(-1);
    else
        QWidget::keyPressEvent(event);
}

bool PositionFlowWidget::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QWidget::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const int step = picture_.step_at(
        {static_cast<double>(help->pos().x()), static_cast<double>(help->pos().y())});
    const auto box = std::ranges::find(picture_.boxes, step, &FlowBox::step);
    QString text;
    if (box != picture_.boxes.end())
        for (const std::string& line : box->lines)
            if (!line.empty()) text += form::qt(line) + QLatin1String("   ");
    QToolTip::showText(help->globalPos(), params::plain_tool_tip(text.trimmed()), this);
    return true;
}

// --- Painting

void PositionFlowWidget::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    for (const FlowArrow& arrow : picture_.arrows)
        paint_arrow(painter, arrow);
    painter.setPen(QColor(params::palette::kWarningText));
    QFont bold = font();
    bold.setBold(true);
    for (const FlowHeading& heading : picture_.headings) {
        painter.setFont(bold);
        painter.drawText(point_of(heading.at), form::qt(heading.text));
    }
    for (const FlowBox& box : picture_.boxes)
        paint_box(painter, box);
}

void PositionFlowWidget::paint_arrow(QPainter& painter, const FlowArrow& arrow) const {
    const QColor colour(arrow.kind == ArrowKind::kNext ? palette::kArrow : palette::kBackArrow);
    QPolygonF line;
    for (const PicturePoint& point : arrow.points)
        line << point_of(point);
    if (line.size() < 2) return;
    const QPointF head = line.back();
    const QPointF before = line.at(line.size() - 2);
    const QLineF last(before, head);
    if (last.length() == 0) return;
    const QPointF along = (head - before) / last.length();
    const QPointF across(-along.y(), along.x());
    line.back() = head - along * (kHead - 1);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(colour, 1.6, arrow.interrupts ? Qt::DashLine : Qt::SolidLine));
    painter.drawPolyline(line);
    const QPointF base = head - along * kHead;
    painter.setPen(QPen(colour, 1));
    painter.setBrush(arrow.interrupts ? QBrush(QColor(palette::kPaper)) : QBrush(colour));
    painter.drawPolygon(
        QPolygonF({head, base + across * (kHead / 2), base - across * (kHead / 2)}));
}

void PositionFlowWidget::paint_box(QPainter& painter, const FlowBox& box) const {
    const QRectF rect = rect_of(box.rect);
    const bool runs = box.step == running_;
    QColor fill(box.reached ? palette::kBox : palette::kUnreached);
    if (runs) fill = QColor(palette::kRunning);
    const bool picked = box.step == selected_;
    const QColor edge(box.empty ? params::palette::kWarningText
                      : runs    ? palette::kRunningEdge
                                : palette::kBoxEdge);
    const bool dashed = box.empty || !box.reached;
    painter.setBrush(fill);
    painter.setPen(QPen(edge, runs ? 2.5 : 1.2, dashed ? Qt::DashLine : Qt::SolidLine));
    painter.drawRoundedRect(rect, kRadius, kRadius);
    if (picked) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(QColor(params::palette::kAccent), 2.5));
        painter.drawRoundedRect(rect.adjusted(-3, -3, 3, 3), kRadius + 2, kRadius + 2);
    }
    if (box.stops && !box.empty) {  // a wall behind which nothing comes
        painter.fillRect(QRectF(rect.right() + 3, rect.top() + 6, kStopWidth, rect.height() - 12),
                         QColor(palette::kBoxEdge));
    }
    if (box.start) {  // a wedge in the left edge
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(params::palette::kAccent));
        const double middle = rect.center().y();
        painter.drawPolygon(QPolygonF({{rect.left() - 12, middle - 9},
                                       {rect.left() - 2, middle},
                                       {rect.left() - 12, middle + 9}}));
    }
    paint_box_texts(painter, box, rect);
}

void PositionFlowWidget::paint_box_texts(QPainter& painter, const FlowBox& box,
                                         const QRectF& rect) const {
    const QFontMetrics metrics(font());
    const double line = metrics.lineSpacing();
    QRectF place(rect.left() + kPadding, rect.top() + kPadding - 3, rect.width() - 2 * kPadding,
                 line);
    QFont bold = font();
    bold.setBold(true);
    painter.setFont(bold);
    painter.setPen(QColor(params::palette::kText));
    painter.drawText(place, Qt::AlignLeft | Qt::AlignVCenter, form::qt(box.lines[0]));
    paint_tag(painter, box, place);
    painter.setFont(font());
    for (std::size_t i = 1; i < box.lines.size(); ++i) {
        place.translate(0, line);
        painter.setPen(QColor(i + 1 == box.lines.size() ? params::palette::kMutedText
                                                        : params::palette::kText));
        painter.drawText(place, Qt::AlignLeft | Qt::AlignVCenter,
                         metrics.elidedText(form::qt(box.lines[i]), Qt::ElideRight,
                                            static_cast<int>(place.width())));
    }
}

void PositionFlowWidget::paint_tag(QPainter& painter, const FlowBox& box,
                                   const QRectF& rect) const {
    const bool runs = box.step == running_;
    const QString text = runs ? in(language_, {"▶ 当前", "▶ current"}) : form::qt(box.tag);
    if (text.isEmpty()) return;
    painter.setFont(font());
    painter.setPen(QColor(runs        ? palette::kRunningEdge
                          : box.empty ? params::palette::kWarningText
                                      : params::palette::kMutedText));
    painter.drawText(rect, Qt::AlignRight | Qt::AlignVCenter, text);
}

}  // namespace servo::tools
