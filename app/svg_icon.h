// An icon drawn from a resource at the size that is asked for. Reads nothing until it is painted,
// and needs none of the toolkit's plugins, whose search would hold up the start.
#pragma once

#include <QIconEngine>
#include <QString>
#include <cstdint>

namespace servo::app {

enum class DisabledLook : std::uint8_t { kGrey, kSame };

class SvgIcon final : public QIconEngine {
  public:
    SvgIcon(QString file, DisabledLook disabled) : file_(std::move(file)), disabled_(disabled) {}

    void paint(QPainter* painter, const QRect& place, QIcon::Mode mode,
               QIcon::State state) override;
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override;
    bool isNull() override { return false; }
    QString key() const override { return QStringLiteral("servo-svg"); }
    QIconEngine* clone() const override { return new SvgIcon(*this); }

  private:
    QString file_;
    DisabledLook disabled_;
};

}  // namespace servo::app
