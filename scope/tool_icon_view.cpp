#include "scope/tool_icon_view.h"

#include <QPainter>
#include <QSvgRenderer>

// The pictures are in a static library, whose resources wait to be asked for. (The macro wants a
// function outside of any namespace.)
static void load_scope_pictures() {
    Q_INIT_RESOURCE(scope_icons);
}

namespace servo::scope {

namespace {

constexpr qreal kDisabledOpacity = 0.35;

}  // namespace

void ToolIcon::paint(QPainter* painter, const QRect& place, QIcon::Mode mode, QIcon::State) {
    QSvgRenderer renderer(file_);
    renderer.setAspectRatioMode(Qt::KeepAspectRatio);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    if (mode == QIcon::Disabled) painter->setOpacity(painter->opacity() * kDisabledOpacity);
    renderer.render(painter, QRectF(place));
    painter->restore();
}

QIcon tool_icon(const char* name) {
    static const bool loaded = (load_scope_pictures(), true);
    static_cast<void>(loaded);
    return QIcon(new ToolIcon(QStringLiteral(":/scope/icons/%1.svg").arg(QLatin1String(name))));
}

}  // namespace servo::scope
