// The font of the application, larger for a while: as a user has set it.
#pragma once

#include <QApplication>
#include <QFont>

namespace servo::app::test {

class LargerFont {
  public:
    explicit LargerFont(qreal factor) : before_(QApplication::font()) {
        QFont larger = before_;
        larger.setPointSizeF(before_.pointSizeF() * factor);
        QApplication::setFont(larger);
    }
    ~LargerFont() { QApplication::setFont(before_); }
    LargerFont(const LargerFont&) = delete;
    LargerFont& operator=(const LargerFont&) = delete;

  private:
    QFont before_;
};

}  // namespace servo::app::test
