#include "app/frame_style.h"

#include <QFontMetrics>
#include <QPainter>
#include <QStyleOption>
#include <array>

#include "app/palette.h"
#include "app/style.h"

namespace servo::app {

namespace {

constexpr int kTitlePadding = 6;  // above and below the text
constexpr int kTextGap = 8;
constexpr int kMenuAir = 4;
constexpr int kPlateRadius = 4;
constexpr qreal kStroke = 1.6;
constexpr qreal kGlyph = 9;     // width of a button's drawing
constexpr qreal kBehind = 2.5;  // how far the second window looks out

struct TitleColours {
    QColor bar;
    QColor text;
    QColor hover;
};

TitleColours title_colours(const QStyle::State& state) {
    if (state.testFlag(QStyle::State_Active))
        return {palette::kTitle, palette::kTitleText, palette::kTitleHover};
    return {palette::kQuietTitle, palette::kQuietTitleText, palette::kQuietTitleHover};
}

void draw_glyph(QPainter& painter, QStyle::SubControl button, const QRectF& box) {
    const QPointF middle = box.center();
    const QRectF glyph(middle.x() - kGlyph / 2, middle.y() - kGlyph / 2, kGlyph, kGlyph);
    if (button == QStyle::SC_TitleBarCloseButton) {
        painter.drawLine(glyph.topLeft(), glyph.bottomRight());
        painter.drawLine(glyph.topRight(), glyph.bottomLeft());
    } else if (button == QStyle::SC_TitleBarMaxButton) {
        painter.drawRect(glyph);
    } else if (button == QStyle::SC_TitleBarMinButton) {
        painter.drawLine(glyph.bottomLeft(), glyph.bottomRight());
    } else {  // back to the normal size: two windows
        const std::array behind{glyph.topLeft() + QPointF(kBehind, 0), glyph.topRight(),
                                glyph.bottomRight() - QPointF(0, kBehind)};
        painter.drawRect(glyph.adjusted(0, kBehind, -kBehind, 0));
        painter.drawPolyline(behind.data(), static_cast<int>(behind.size()));
    }
}

// Which of the two a window shows hangs on its state, as Fusion has it.
bool shows(const QStyleOptionTitleBar& bar, QStyle::SubControl button) {
    const bool small = (bar.titleBarState & Qt::WindowMinimized) != 0;
    const bool large = (bar.titleBarState & Qt::WindowMaximized) != 0;
    const auto has = [&bar](Qt::WindowType flag) { return bar.titleBarFlags.testFlag(flag); };
    if (button == QStyle::SC_TitleBarCloseButton) return has(Qt::WindowSystemMenuHint);
    if (button == QStyle::SC_TitleBarMinButton) return has(Qt::WindowMinimizeButtonHint) && !small;
    if (button == QStyle::SC_TitleBarMaxButton) return has(Qt::WindowMaximizeButtonHint) && !large;
    return (has(Qt::WindowMinimizeButtonHint) && small) ||
           (has(Qt::WindowMaximizeButtonHint) && large);
}

void draw_button(const QStyle& style, const QStyleOptionTitleBar& bar, QStyle::SubControl button,
                 QPainter& painter, const QWidget* widget) {
    const QRect box = style.subControlRect(QStyle::CC_TitleBar, &bar, button, widget);
    if (!shows(bar, button) || !box.isValid()) return;
    const TitleColours colours = title_colours(
        bar.titleBarState & Qt::WindowActive ? QStyle::State_Active : QStyle::State_None);
    const bool hot = bar.activeSubControls == button && bar.state.testFlag(QStyle::State_MouseOver);
    const bool close = button == QStyle::SC_TitleBarCloseButton;
    QColor stroke = colours.text;
    if (hot) {
        if (close) stroke = QColor(palette::kTitleText);
        painter.setPen(Qt::NoPen);
        painter.setBrush(close ? QColor(palette::kCloseHover) : colours.hover);
        painter.drawRoundedRect(box, 3, 3);
    }
    painter.setPen(QPen(stroke, kStroke, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    draw_glyph(painter, button, QRectF(box));
}

void draw_title(const QStyle& style, const QStyleOptionTitleBar& bar, QPainter& painter,
                const QWidget* widget) {
    const TitleColours colours = title_colours(
        bar.titleBarState & Qt::WindowActive ? QStyle::State_Active : QStyle::State_None);
    painter.fillRect(bar.rect, colours.bar);
    const QRect sign =
        style.subControlRect(QStyle::CC_TitleBar, &bar, QStyle::SC_TitleBarSysMenu, widget);
    if (!bar.icon.isNull() && bar.titleBarFlags.testFlag(Qt::WindowSystemMenuHint)) {
        // The pictures have dark strokes.
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(palette::kBase));
        painter.drawRoundedRect(sign, kPlateRadius, kPlateRadius);
        bar.icon.paint(&painter, sign.adjusted(1, 1, -1, -1));
    }
    QRect place = style.subControlRect(QStyle::CC_TitleBar, &bar, QStyle::SC_TitleBarLabel, widget);
    place.setLeft(std::max(place.left(), sign.right() + kTextGap));
    painter.setPen(colours.text);
    const QString text = painter.fontMetrics().elidedText(bar.text, Qt::ElideRight, place.width());
    painter.drawText(place, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, text);
}

}  // namespace

FrameStyle::FrameStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

void FrameStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                    QPainter* painter, const QWidget* widget) const {
    const auto* bar = qstyleoption_cast<const QStyleOptionTitleBar*>(option);
    if (control != CC_TitleBar || bar == nullptr) {
        QProxyStyle::drawComplexControl(control, option, painter, widget);
        return;
    }
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    draw_title(*this, *bar, *painter, widget);
    for (const SubControl button : {SC_TitleBarMinButton, SC_TitleBarMaxButton,
                                    SC_TitleBarNormalButton, SC_TitleBarCloseButton})
        draw_button(*this, *bar, button, *painter, widget);
    painter->restore();
}

void FrameStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                               QPainter* painter, const QWidget* widget) const {
    // The frame of a window inside of the main window. It is active when its title is.
    if (element == PE_FrameWindow) {
        const bool active = option->state.testFlag(State_Active);
        painter->save();
        painter->setPen(QColor(active ? palette::kTitle : palette::kDivider));
        painter->setBrush(Qt::NoBrush);
        painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
        painter->restore();
        return;
    }
    // Cells of the status bar are divided by lines of their own.
    if (element == PE_FrameStatusBarItem) return;
    QProxyStyle::drawPrimitive(element, option, painter, widget);
}

// A menu that is too long for the screen scrolls; a second column would be cut at its keys.
int FrameStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                          QStyleHintReturn* data) const {
    if (hint == SH_Menu_Scrollable) return 1;
    return QProxyStyle::styleHint(hint, option, widget, data);
}

QSize FrameStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                                   const QWidget* widget) const {
    QSize wanted = QProxyStyle::sizeFromContents(type, option, size, widget);
    const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
    if (type == CT_MenuItem && item != nullptr &&
        item->menuItemType != QStyleOptionMenuItem::Separator)
        wanted.rheight() += kMenuAir;
    return wanted;
}

QIcon FrameStyle::standardIcon(StandardPixmap icon, const QStyleOption* option,
                               const QWidget* widget) const {
    if (icon == SP_ToolBarHorizontalExtensionButton) return picture(QStringLiteral("morepic"));
    return QProxyStyle::standardIcon(icon, option, widget);
}

int FrameStyle::pixelMetric(PixelMetric metric, const QStyleOption* option,
                            const QWidget* widget) const {
    if (metric == PM_TitleBarHeight) {
        const QFontMetrics font = widget == nullptr ? QFontMetrics(QFont()) : widget->fontMetrics();
        return font.height() + 2 * kTitlePadding;
    }
    return QProxyStyle::pixelMetric(metric, option, widget);
}

}  // namespace servo::app
