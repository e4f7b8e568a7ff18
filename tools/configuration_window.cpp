#include "tools/configuration_window.h"

#include <QEvent>
#include <QKeyEvent>
#include <QVBoxLayout>

#include "tools/configuration_grid_view.h"
#include "tools/configuration_report_widget.h"
#include "tools/configuration_tab_widget.h"
#include "tools/form_controls_view.h"

namespace servo::tools {

namespace {
constexpr std::string_view kTabs = "写入驱动器/Write to Drive|从驱动器读出/Read from Drive";
constexpr int kMargin = 6;
}  // namespace

ConfigurationWindow::ConfigurationWindow(ImExport& form, QWidget* parent)
    : QWidget(parent), form_(form) {
    setObjectName(QStringLiteral("imexport"));
    halves_ = new QSplitter(Qt::Vertical, this);
    halves_->setChildrenCollapsible(false);
    SSTab1_ = new QTabWidget(halves_);
    SSTab1_->setObjectName(QStringLiteral("SSTab1"));
    form::set_pair(SSTab1_, kTabs);
    write_ = new ConfigurationTabWidget(form_, ConfigurationSide::kWrite, SSTab1_);
    read_ = new ConfigurationTabWidget(form_, ConfigurationSide::kRead, SSTab1_);
    SSTab1_->addTab(write_, QString());
    SSTab1_->addTab(read_, QString());
    report_ = new ConfigurationReportWidget(form_, halves_);
    report_->hide();
    halves_->addWidget(SSTab1_);
    halves_->addWidget(report_);
    halves_->setStretchFactor(0, 3);
    halves_->setStretchFactor(1, 2);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    layout->addWidget(halves_);

    Timer1_.setObjectName(QStringLiteral("Timer1"));
    Timer1_.setInterval(ImExport::kLockMilliseconds);
    connect(&Timer1_, &QTimer::timeout, this, [this] { form_.Timer1_Timer(); });
    connect(SSTab1_, &QTabWidget::currentChanged, this, [this](int tab) {
        form_.show_side(tab == 0 ? ConfigurationSide::kWrite : ConfigurationSide::kRead);
    });
    form_.changed = [this] { refresh(); };
    form_.row_changed = [this](std::size_t row) { refresh_row(row); };
    apply_language();
}

ConfigurationWindow::~ConfigurationWindow() {
    form_.changed = {};
    form_.row_changed = {};
}

void ConfigurationWindow::refresh() {
    if (form_.locked() && !Timer1_.isActive()) Timer1_.start();
    if (!form_.locked()) Timer1_.stop();
    SSTab1_->setCurrentIndex(form_.side() == ConfigurationSide::kWrite ? 0 : 1);
    write_->refresh();
    read_->refresh();
    refresh_report();
}

// Every few milliseconds while a job runs.
void ConfigurationWindow::refresh_row(std::size_t row) {
    if (!isVisible()) return;
    if (form_.job().surveying())
        write_->refresh_controls();
    else
        (form_.job().writing() ? write_ : read_)->refresh_row(static_cast<int>(row));
}

void ConfigurationWindow::refresh_report() {
    const bool wanted = form_.finding().has_value();
    if (wanted) report_->refresh();
    if (wanted == !report_->isHidden()) return;
    const bool had_focus = report_->isAncestorOf(focusWidget());
    report_->setVisible(wanted);
    halves_->refresh();  // or the table would have its room a moment later than its text
    if (!wanted && had_focus) SSTab1_->setFocus();
}

void ConfigurationWindow::changeEvent(QEvent* event) {
    if (event->type() == QEvent::LanguageChange) apply_language();
    QWidget::changeEvent(event);
}

void ConfigurationWindow::apply_language() {
    const base::Language language = form_.language();
    form::apply_pairs(*this, language);
    const QStringList tabs = form::qt(kTabs).split(u'|');
    for (int tab = 0; tab < SSTab1_->count(); ++tab)
        SSTab1_->setTabText(tab, form::half_of(tabs.at(tab), language));
    write_->apply_language(language);
    read_->apply_language(language);
    refresh();
}

void ConfigurationWindow::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    refresh();
}

// Esc puts the table below the tabs away.
void ConfigurationWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && form_.finding())
        form_.close_report();
    else
        QWidget::keyPressEvent(event);
}

}  // namespace servo::tools
