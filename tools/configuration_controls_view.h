// What the configuration window is made of beside its grids.
#pragma once

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>
#include <string_view>

#include "base/language.h"
#include "tools/configuration_notes.h"

namespace servo::tools {

// One line that gives way: what does not fit is cut, in the middle as suits a path unless told
// otherwise, and stands in its tip.
class PathLabel final : public QLabel {
    Q_OBJECT

  public:
    PathLabel(const char* name, QWidget* parent);

    void show_text(std::string_view text);
    void cut_at(Qt::TextElideMode place) { cut_ = place; }
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    Qt::TextElideMode cut_ = Qt::ElideMiddle;
};

// `pair`: "中文/English"; the tip likewise, and the spoken name.
QPushButton* configuration_command(QWidget* parent, const char* name, std::string_view pair,
                                   std::string_view tip = {});
QLabel* configuration_label(QWidget* parent, const char* name);
QProgressBar* configuration_bar(QWidget* parent, const char* name);

// A button whose caption the language pass gives by a rule of its own. Until that has come by, it
// has the designed one; afterwards the window leaves it alone.
void show_designed_caption(QPushButton* button, std::string_view pair, base::Language language);

void show_note(QLabel* label, const ConfigurationNote& note);
void add_divider(QVBoxLayout* layout, QWidget* parent);

}  // namespace servo::tools
