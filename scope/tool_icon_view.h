// The oscilloscope's pictures, drawn from its resources at the size that is asked for.
#pragma once

#include <QIcon>
#include <QIconEngine>
#include <QString>

namespace servo::scope {

class ToolIcon final : public QIconEngine {
  public:
    explicit ToolIcon(QString file) : file_(std::move(file)) {}

    void paint(QPainter* painter, const QRect& place, QIcon::Mode mode,
               QIcon::State state) override;
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override;
    bool isNull() override { return false; }
    QString key() const override { return QStringLiteral("servo-scope"); }
    QIconEngine* clone() const override { return new ToolIcon(*this); }

  private:
    QString file_;
};

// By its file's name without the suffix ("zoom_in").
QIcon tool_icon(const char* name);

}  // namespace servo::scope
