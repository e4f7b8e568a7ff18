#include "app/mdi_form1.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QGuiApplication>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QMimeData>
#include <QScreen>

#include "app/backgroud_form.h"
#include "app/desk_keeper.h"
#include "app/form1_window.h"
#include "app/keys_window.h"
#include "app/menu_table.h"
#include "app/popup_menu.h"
#include "app/shell_commands.h"
#include "app/shell_files.h"
#include "app/shell_menus.h"
#include "app/shell_tools.h"
#include "app/shell_windows.h"
#include "app/status_strip.h"
#include "app/style.h"
#include "app/window_host.h"
#include "app/window_list.h"

namespace servo::app {

namespace {

constexpr int kArrangeMilliseconds = 1000;
constexpr int kMeterMilliseconds = 500;
constexpr QSize kFirstSize{1280, 800};
constexpr int kTitleBar = 40;

QSize first_window_size() {
    const QScreen* screen = QGuiApplication::primaryScreen();
    // Without a display there is a screen in name only, and pictures want their full size.
    if (screen == nullptr || QGuiApplication::platformName() == QStringLiteral("offscreen"))
        return kFirstSize;
    return kFirstSize.boundedTo(screen->availableSize() - QSize(0, kTitleBar));
}

}  // namespace

MDIForm1::MDIForm1(Workstation& workstation, DialogSwitch& dialogs)
    : workstation_(workstation), dialogs_(dialogs) {
    setObjectName(QStringLiteral("MDIForm1"));
    setWindowIcon(picture(QStringLiteral("program")));
    resize(first_window_size());
    background_ = new BackgroudForm(this);
    setCentralWidget(background_);
    menus_ = new ShellMenus(menuBar());
    tools_ = new ShellTools(this);
    addToolBar(tools_);
    xpop_ = new PopupMenu(this);
    host_ = new WindowHost(background_);
    files_ = new ShellFiles(workstation_, dialogs_, *menus_->recent_menu(), this);
    commands_ = new ShellCommands({workstation_, *files_, *host_, *background_, *xpop_}, this);
    add_windows();
    windows_ = new WindowList(*menus_, *host_, this);
    strip_ = new StatusStrip(this);
    setStatusBar(strip_);
    setAcceptDrops(true);
    connect_shell();
    connect_link();
    workstation_.screen = this;
}

MDIForm1::~MDIForm1() {
    workstation_.screen = nullptr;
    workstation_.communication.observer = {};
    workstation_.engine.pictures.observer = {};
}

void MDIForm1::add_windows() {
    const auto popup = [this](link::Window& window, params::PageGrid& grid, const QPoint& place) {
        commands_->show_popup(window, grid, place);
    };
    const auto close = [this](const QString& name) { close_window_by_name(name); };
    const auto pick_object = [this](int channel) { object_button_click(workstation_, channel); };
    add_shell_windows(
        *host_, workstation_,
        {.popup = popup, .close = close, .pick_object = pick_object, .dialogs = dialogs_});
    add_key_list(*host_, workstation_);
}

void MDIForm1::connect_shell() {
    connect(menus_, &ShellMenus::chosen, commands_, &ShellCommands::run_menu);
    connect(tools_, &ShellTools::chosen, commands_, &ShellCommands::run_tool);
    connect(xpop_, &PopupMenu::chosen, commands_, &ShellCommands::run_popup);
    connect(host_, &WindowHost::close_asked, commands_, &ShellCommands::close_window_by_name);
    connect(menus_, &ShellMenus::keys_asked, host_, [this] { host_->show(kKeyListWindow); });
    connect(menus_, &ShellMenus::journal_asked, commands_,
            [this] { commands_->open_window(QLatin1String(kJournalWindow)); });
    Timer2_.setInterval(kArrangeMilliseconds);
    connect(&Timer2_, &QTimer::timeout, background_, &BackgroudForm::arrange_icons);
    Timer2_.start();
}

void MDIForm1::connect_link() {
    workstation_.communication.observer = [this] { follow_communication(); };
    workstation_.engine.pictures.observer = [this](int) { show_pictures(); };
    show_pictures();
    meter_timer_.setInterval(kMeterMilliseconds);
    connect(&meter_timer_, &QTimer::timeout, this, &MDIForm1::show_figures);
    meter_timer_.start();
}

void MDIForm1::show_figures() {
    const link::Engine& engine = workstation_.engine;
    meter_.take(workstation_.clock.now(), engine.counters,
                link_place(workstation_.communication, engine.pictures.button4()));
    strip_->show_figures(meter_.figures());
}

void MDIForm1::use_desk(DeskKeeper& desk) {
    desk_ = &desk;
    desk.restore(*this, *host_);
    files_->set_recent(desk.recent());
}

// The dialog shows itself after a time-out and when the toolbar's button finds no known port.
void MDIForm1::follow_communication() {
    link::Window* form1 = workstation_.find_window("Form1");
    const bool visible = workstation_.communication.state().dialog_visible;
    if (visible != form1->visible()) {
        form1->set_visible(visible);
        if (visible)
            host_->show("Form1");
        else
            host_->hide("Form1");
    }
    if (auto* dialog = static_cast<Form1Window*>(host_->made("Form1"))) dialog->refresh();
    background_->show_link(workstation_.communication.link_open());
    show_figures();
}

void MDIForm1::show_pictures() {
    const link::Pictures& pictures = workstation_.engine.pictures;
    tools_->set_picture(to_qt(kLinkTool), to_qt(pictures.button4()));
    tools_->set_picture(to_qt(kFaultTool), to_qt(pictures.button5()));
}

void MDIForm1::show_background() {
    background_->show_picture(workstation_.Tavro_Nevra_Other_mode);
}

void MDIForm1::apply_variant() {
    setWindowTitle(to_qt(main_title(workstation_.Tavro_Nevra_Other_mode)));
    menus_->apply(workstation_.language, workstation_.Tavro_Nevra_Other_mode);
}

void MDIForm1::show_window(link::Window& window) {
    // The dialog's own state says whether it is visible; the engine's way to it goes there.
    if (window.name() == "Form1") workstation_.communication.show_dialog();
    host_->show(window.name());
}

void MDIForm1::hide_window(link::Window& window) {
    if (window.name() == "Form1") workstation_.communication.close_box();
    host_->hide(window.name());
}

void MDIForm1::apply_language() {
    const base::Language language = workstation_.language;
    const dictionary::Variant variant = workstation_.Tavro_Nevra_Other_mode;
    toolkit_texts_.apply(language);
    menus_->apply(language, variant);
    xpop_->apply(language, variant);
    tools_->apply(language, variant);
    background_->apply_language(language);
    files_->apply_language();
    windows_->apply(language, variant);
    strip_->apply_language(language);
    host_->apply_language(language, variant);
}

void MDIForm1::unload_all() {
    if (unloaded_) return;
    unloaded_ = true;
    Timer2_.stop();
    meter_timer_.stop();
    if (desk_ != nullptr) {
        desk_->recent() = files_->recent();
        desk_->save(*this, *host_);
    }
    for (link::Window* window : workstation_.engine.all_windows)
        if (window != nullptr) host_->hide(window->name());
    host_->hide(kJournalWindow);
    hide();
    Q_EMIT unloaded();
}

std::string MDIForm1::active_window() const {
    for (const OpenWindow& window : host_->open_windows())
        if (window.active) return window.name;
    return {};
}

bool MDIForm1::has_window(const QString& name) const {
    const link::Window* window = workstation_.find_window(from_qt(name));
    return window != nullptr && host_->has(window->name());
}

QWidget* MDIForm1::window_widget(const QString& name) {
    const link::Window* window = workstation_.find_window(from_qt(name));
    return window == nullptr ? nullptr : host_->widget(window->name());
}

QAction* MDIForm1::menu_item(const QString& item) {
    return menus_->action(item);
}

QStringList MDIForm1::menu_items() const {
    QStringList items;
    for (const MenuItem& item : menu_table())
        items << to_qt(item.item);
    return items;
}

QAction* MDIForm1::tool(const QString& key) {
    return tools_->tool(key);
}

QStringList MDIForm1::tools() const {
    QStringList keys;
    for (const ToolItem& item : tool_table())
        keys << to_qt(item.key);
    return keys;
}

QString MDIForm1::tool_picture(const QString& key) const {
    return tools_->picture_of(key);
}

QMenu* MDIForm1::open_popup() {
    if (xpop_->isVisible()) return xpop_;
    return qobject_cast<QMenu*>(QApplication::activePopupWidget());  // a button's
}

bool MDIForm1::open_window(const QString& name) {
    return commands_->open_window(name);
}

bool MDIForm1::close_window_by_name(const QString& name) {
    return commands_->close_window_by_name(name);
}

void MDIForm1::quit_program() {
    quit(workstation_);
}

void MDIForm1::closeEvent(QCloseEvent* event) {
    event->accept();
    quit(workstation_);
}

void MDIForm1::dragEnterEvent(QDragEnterEvent* event) {
    if (files_->accepts(*event->mimeData())) event->acceptProposedAction();
}

void MDIForm1::dropEvent(QDropEvent* event) {
    event->acceptProposedAction();
    files_->open_dropped(*event->mimeData());
}

}  // namespace servo::app
