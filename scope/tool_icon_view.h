// The oscilloscope's pictures, drawn from its resources at the size that is asked for.
#pragma once

#include <QIcon>
#include <QString>

#include "params/drawn_icon_view.h"

namespace servo::scope {

class ToolIcon final : public params::DrawnIcon {
  public:
    explicit ToolIcon(QString file) : file_(std::move(file)) {}

    void paint(QPainter* painter, const QRect& place, QIcon::Mode mode,
               QIcon::State state) override;
    QString key() const override { return QStringLiteral("servo-scope"); }
    QIconEngine* clone() const override { return new ToolIcon(*this); }

  private:
    QString file_;
};

// By its file's name without the suffix ("zoom_in").
QIcon tool_icon(const char* name);

}  // namespace servo::scope
