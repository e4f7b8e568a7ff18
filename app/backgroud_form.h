// `Backgroudform`: the surface behind the windows with the product's picture in its middle. The
// picture's size goes in four steps with the width of the frame.
#pragma once

#include <QMdiArea>
#include <QPixmap>

#include "dictionary/store.h"

namespace servo::app {

class BackgroudForm final : public QMdiArea {
    Q_OBJECT

  public:
    explicit BackgroudForm(QWidget* parent);

    void show_picture(dictionary::Variant variant);

    // The places of minimised windows, see icon_places().
    void arrange_icons();

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    const QPixmap& picture_for(int size_class);

    QString name_;
    QPixmap picture_;
    int size_class_ = -1;
};

}  // namespace servo::app
