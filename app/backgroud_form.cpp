#include "app/backgroud_form.h"

#include <QMdiSubWindow>
#include <QPaintEvent>
#include <QPainter>
#include <algorithm>

#include "app/palette.h"
#include "app/style.h"

namespace servo::app {

namespace {

constexpr int kLineGap = 6;

// For what is painted here. Set on the widget, it would reach the windows inside, some of which
// keep the font that they were designed with.
QFont text_font(const QWidget& widget, base::Language language) {
    QFont font = widget.font();
    font.setFamilies(font_families(language));
    return font;
}

QFont title_font(QFont font) {
    font.setBold(true);
    return font;
}

}  // namespace

BackgroudForm::BackgroudForm(QWidget* parent) : QMdiArea(parent) {
    setObjectName(QStringLiteral("Backgroudform"));
    setBackground(Qt::NoBrush);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setOption(QMdiArea::DontMaximizeSubWindowOnActivation);
}

void BackgroudForm::show_picture(dictionary::Variant variant) {
    variant_ = variant;
    name_ = variant == dictionary::Variant::kReduced ? QStringLiteral("background_reduced")
                                                     : QStringLiteral("background_all");
    size_class_ = -1;
    viewport()->update();
}

void BackgroudForm::apply_language(base::Language language) {
    language_ = language;
    viewport()->update();
}

void BackgroudForm::show_link(bool open) {
    if (link_open_ == open) return;
    link_open_ = open;
    viewport()->update();
}

const QPixmap& BackgroudForm::picture_for(int size_class) {
    if (size_class != size_class_) {
        const Size size = background_size(size_class);
        picture_ = picture(name_).pixmap(QSize(size.width, size.height), devicePixelRatioF());
        size_class_ = size_class;
    }
    return picture_;
}

int BackgroudForm::size_class() const {
    return background_class(window()->width());
}

bool BackgroudForm::any_window() const {
    const QList<QMdiSubWindow*> windows = subWindowList();
    return std::ranges::any_of(windows, [](const QMdiSubWindow* window) {
        return !window->isHidden() && !window->isMinimized();
    });
}

FirstSteps BackgroudForm::steps() const {
    return first_steps(language_, variant_, link_open_);
}

Size BackgroudForm::steps_size() const {
    const FirstSteps shown = steps();
    const QFont font = text_font(*this, language_);
    const QFontMetrics text(font);
    int width = QFontMetrics(title_font(font)).horizontalAdvance(to_qt(shown.title));
    for (const std::string_view line : shown.lines)
        width = std::max(width, text.horizontalAdvance(to_qt(line)));
    const int lines = static_cast<int>(shown.lines.size()) + 1;
    return {width, lines * (text.height() + kLineGap)};
}

BackgroundPlaces BackgroudForm::places() const {
    return background_places({viewport()->width(), viewport()->height()},
                             background_size(size_class()), steps_size());
}

bool BackgroudForm::shows_first_steps() const {
    return !any_window() && places().text_fits;
}

void BackgroudForm::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    painter.fillRect(event->rect(), QColor(palette::kWorkspace));
    if (name_.isEmpty()) return;
    const Size size = background_size(size_class());
    const BackgroundPlaces shown = places();
    const QRect place(shown.picture.x, shown.picture.y, size.width, size.height);
    if (event->rect().intersects(place)) painter.drawPixmap(place, picture_for(size_class()));
    if (!shown.text_fits || any_window()) return;
    const Size text = steps_size();
    draw_steps(painter, QRect(shown.text.x, shown.text.y, text.width, text.height));
}

void BackgroudForm::draw_steps(QPainter& painter, const QRect& box) const {
    const FirstSteps shown = steps();
    const QFont font = text_font(*this, language_);
    const int height = QFontMetrics(font).height() + kLineGap;
    painter.setPen(QColor(palette::kText));
    painter.setFont(title_font(font));
    QRect line(box.x(), box.y(), box.width() + 1, height);
    painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter, to_qt(shown.title));
    painter.setPen(QColor(palette::kQuietText));
    painter.setFont(font);
    for (const std::string_view text : shown.lines) {
        line.translate(0, height);
        painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter, to_qt(text));
    }
}

void BackgroudForm::arrange_icons() {
    QList<QMdiSubWindow*> icons;
    for (QMdiSubWindow* window : subWindowList())
        if (window->isMinimized() && !window->isHidden()) icons << window;
    if (icons.isEmpty()) return;
    std::vector<Size> sizes;
    for (const QMdiSubWindow* icon : icons)
        sizes.push_back({icon->width(), icon->height()});
    const auto places = icon_places({viewport()->width(), viewport()->height()}, sizes);
    for (qsizetype i = 0; i < icons.size(); ++i) {
        const Place& place = places.at(static_cast<std::size_t>(i));
        icons.at(i)->move(place.x, place.y);
    }
}

}  // namespace servo::app
