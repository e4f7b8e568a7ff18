#include "params/tabbed_page_window.h"

#include <QKeyEvent>
#include <QTabBar>
#include <QVBoxLayout>

#include "params/ui_palette.h"

namespace servo::params {

namespace {

constexpr int kMargin = 8;
constexpr int kFirstWidth = 980;  // in which the longest names of a PDO's objects can be read
constexpr int kHintLines = 1;
constexpr int kHintSlack = 2;   // between the line heights of two fonts
constexpr int kFirstRows = 14;  // seen at first: a PDO with its eight mapping entries

}  // namespace

TabbedPageWindow::TabbedPageWindow(TabbedPage& page, QWidget* parent)
    : QWidget(parent), page_(page), SSTab1_(this), LabelA_(this), watch_(*this, [this] {
          page_.active_grid().hide_editors();
      }) {
    setObjectName(QString::fromStdString(page.name()));
    SSTab1_.setObjectName(QStringLiteral("SSTab1"));
    SSTab1_.setDocumentMode(true);
    SSTab1_.tabBar()->setDrawBase(false);
    QStringList captions;
    for (int tab = 0; tab < kTabs; ++tab) {
        add_tab(tab);
        captions << SSTab1_.tabText(tab);
    }
    SSTab1_.setProperty("Tag", captions.join(QLatin1Char('|')));
    SSTab1_.setCurrentIndex(page_.SSTab1_Tab());
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    layout->addWidget(&SSTab1_, 1);
    make_hint();
    layout->addWidget(&LabelA_);
    setFocusProxy(grids_.at(static_cast<std::size_t>(page_.SSTab1_Tab())));
    connect(&SSTab1_, &QTabWidget::currentChanged, this, &TabbedPageWindow::tab_changed);
}

void TabbedPageWindow::add_tab(int tab) {
    auto* const view = new PageGridView(page_.grid(tab), &SSTab1_, QStringLiteral("(%1)").arg(tab));
    grids_.at(static_cast<std::size_t>(tab)) = view;
    view->table().setup_grid();  // of the tabs behind too, which get their size when shown
    SSTab1_.addTab(view, QString::fromStdString(page_.tab_caption(tab)));
    connect(view, &PageGridView::popup_asked, this, &TabbedPageWindow::popup_asked);
}

void TabbedPageWindow::make_hint() {
    LabelA_.setObjectName(QStringLiteral("LabelA"));
    LabelA_.setProperty("Tag", QStringLiteral("-"));
    LabelA_.setTextFormat(Qt::PlainText);
    LabelA_.setWordWrap(true);
    LabelA_.setAlignment(Qt::AlignLeft | Qt::AlignTop);
    QPalette colours = LabelA_.palette();
    colours.setColor(QPalette::WindowText, QColor(palette::kMutedText));
    LabelA_.setPalette(colours);
    show_hint();
}

// One line in both languages, so that all rows still fit at first; more where the window is narrow.
void TabbedPageWindow::show_hint() {
    const std::string_view hint = page_.mapping_hint();
    LabelA_.setText(QString::fromUtf8(hint.data(), static_cast<qsizetype>(hint.size())));
    LabelA_.setMinimumHeight(kHintLines * LabelA_.fontMetrics().lineSpacing() + kHintSlack);
}

void TabbedPageWindow::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange) show_hint();
}

void TabbedPageWindow::tab_changed(int tab) {
    page_.select_tab(tab);
    setFocusProxy(grids_.at(static_cast<std::size_t>(tab)));
}

QSize TabbedPageWindow::sizeHint() const {
    const int grid = grids_.front()->height_for_rows(kFirstRows + 1);
    const int hint = LabelA_.minimumHeight() + layout()->spacing();
    return {kFirstWidth, grid + SSTab1_.tabBar()->sizeHint().height() + hint + 2 * kMargin};
}

// Ctrl+PageUp and Ctrl+PageDown go round the tabs from wherever the focus is in the window.
void TabbedPageWindow::keyPressEvent(QKeyEvent* event) {
    const bool up = event->key() == Qt::Key_PageUp;
    if (event->modifiers() != Qt::ControlModifier || (!up && event->key() != Qt::Key_PageDown)) {
        QWidget::keyPressEvent(event);
        return;
    }
    const int step = up ? kTabs - 1 : 1;
    SSTab1_.setCurrentIndex((SSTab1_.currentIndex() + step) % kTabs);
    SSTab1_.currentWidget()->setFocus(Qt::OtherFocusReason);
}

}  // namespace servo::params
