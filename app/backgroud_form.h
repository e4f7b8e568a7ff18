// `Backgroudform`: the surface behind the windows with the product's picture in its middle, whose
// size goes in four steps with the width of the frame. While no window is open, the first steps
// stand below it.
#pragma once

#include <QMdiArea>
#include <QPixmap>

#include "app/first_steps.h"
#include "app/shell_layout.h"
#include "base/language.h"
#include "dictionary/store.h"

namespace servo::app {

class BackgroudForm final : public QMdiArea {
    Q_OBJECT

  public:
    explicit BackgroudForm(QWidget* parent);

    void show_picture(dictionary::Variant variant);

    // The first steps depend on both.
    void apply_language(base::Language language);
    void show_link(bool open);

    // The places of minimised windows, see icon_places().
    void arrange_icons();

    // For tests: the class of the picture that is shown now, and whether the first steps are.
    int size_class() const;
    bool shows_first_steps() const;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    const QPixmap& picture_for(int size_class);
    BackgroundPlaces places() const;
    FirstSteps steps() const;
    Size steps_size() const;
    void draw_steps(QPainter& painter, const QRect& box) const;
    bool any_window() const;

    QString name_;
    dictionary::Variant variant_ = dictionary::Variant::kAllItems;
    base::Language language_ = base::Language::kEnglish;
    bool link_open_ = false;
    QPixmap picture_;
    int size_class_ = -1;
};

}  // namespace servo::app
