// The status bar: state of the link, port, what the link carries, and in the middle the hint of the
// menu item or button under the mouse. Cells keep their width while their numbers change.
#pragma once

#include <QStatusBar>
#include <QString>

#include "app/strip_texts.h"

class QFrame;
class QHBoxLayout;
class QLabel;

namespace servo::app {

class StatusStrip final : public QStatusBar {
    Q_OBJECT

  public:
    // Without its texts, which come with the language: to measure them takes time at the start.
    explicit StatusStrip(QWidget* parent);

    void apply_language(base::Language language);
    void show_figures(const LinkFigures& figures);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    QLabel* add_cell(QHBoxLayout& row, const char* name, Qt::Alignment alignment);
    QFrame* add_line(QHBoxLayout& row);
    void fit_cells();
    void fit_room();
    void show_hint(const QString& hint);
    void show_texts();

    QWidget* cells_ = nullptr;
    QLabel* picture_ = nullptr;  // the state, by shape
    QLabel* state_ = nullptr;
    QLabel* port_ = nullptr;
    QFrame* port_line_ = nullptr;  // behind it
    QLabel* hint_ = nullptr;
    QLabel* objects_ = nullptr;
    QLabel* misses_ = nullptr;
    QLabel* load_ = nullptr;
    QString shown_picture_;
    LinkFigures figures_;
    base::Language language_ = base::Language::kEnglish;
};

}  // namespace servo::app
