#include "params/object_browser_window.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSplitter>
#include <QTextEdit>
#include <QVBoxLayout>

#include "params/qt_text_view.h"
#include "params/ui_palette.h"

namespace servo::params {

namespace {

constexpr int kMargin = 8;
constexpr QSize kFirstSize{1040, 640};
constexpr int kListWidth = 656;
constexpr int kBoxPadding = 6;
constexpr int kNoteGap = 16;

constexpr base::Text kPlaceholder{"索引、子索引或名称", "Index, sub-index or name"};
constexpr base::Text kSearchName{"搜索对象", "Search for an object"};
constexpr base::Text kListName{"对象列表", "List of objects"};
constexpr base::Text kLiveName{"对象的值", "Value of the object"};
constexpr base::Text kSearchTip{"下一个匹配（回车）", "Next match (Enter)"};
constexpr base::Text kBoxTip{"F3 下一个，Shift+F3 上一个", "F3 next, Shift+F3 previous"};
// The widest that the line beside the box has to say.
constexpr base::Text kWidestNote{"第 0000 个，共 0000 个", "0000 of 0000"};

void set_colour(QWidget* widget, QPalette::ColorRole role, std::uint32_t colour) {
    QPalette colours = widget->palette();
    colours.setColor(role, QColor(colour));
    widget->setPalette(colours);
}

// A line whose text may hold a "/" that is no separator of languages.
QLabel* text_line(const char* name, QWidget* parent) {
    auto* label = new QLabel(parent);
    label->setObjectName(QLatin1String(name));
    label->setTextFormat(Qt::PlainText);
    label->setProperty("Tag", QStringLiteral("-"));
    return label;
}

// A tinted bar with a thin frame.
class NoticeBar final : public QFrame {
  public:
    explicit NoticeBar(QWidget* parent) : QFrame(parent) {
        setFrameShape(QFrame::Box);
        setFrameShadow(QFrame::Plain);
        setAutoFillBackground(true);
        set_colour(this, QPalette::Window, palette::kNotice);
        set_colour(this, QPalette::WindowText, palette::kNoticeFrame);
    }
};

}  // namespace

ObjectBrowserWindow::ObjectBrowserWindow(ObjectBrowser& browser, QWidget* parent)
    : QWidget(parent),
      browser_(browser),
      Text2_(new QLineEdit(this)),
      Command1_(new QPushButton(this)),
      list_(browser, this),
      aim_button_(new QPushButton(this)),
      live_(browser.grid(), this),
      watch_(*this, [this] { live_.hide_editors(); }),
      details_(this) {
    setObjectName(QStringLiteral("ObjectDictionay"));
    setProperty("Tag", QStringLiteral("对象字典/Object Dictionary"));
    make_aim_bar();
    lay_out();
    connect_controls();
    browser_.set_observer(this);
    list_changed();
    object_shown(true);
    search_changed();
    aim_changed();
}

ObjectBrowserWindow::~ObjectBrowserWindow() {
    browser_.set_observer(nullptr);
}

QSize ObjectBrowserWindow::sizeHint() const {
    return kFirstSize;
}

void ObjectBrowserWindow::make_aim_bar() {
    aim_bar_ = new NoticeBar(this);
    aim_text_ = text_line("LabelN", aim_bar_);
    aim_text_->setWordWrap(true);
    set_colour(aim_text_, QPalette::WindowText, palette::kText);
    aim_button_->setObjectName(QStringLiteral("CommandA"));
    aim_button_->setProperty("Tag", QStringLiteral("-"));
    aim_button_->setAutoDefault(true);
    auto* layout = new QHBoxLayout(aim_bar_);
    layout->setContentsMargins(kMargin, kMargin / 2, kMargin / 2, kMargin / 2);
    layout->setSpacing(kMargin);
    layout->addWidget(aim_text_, 1);
    layout->addWidget(aim_button_);
}

QWidget* ObjectBrowserWindow::make_list_side() {
    auto* side = new QWidget(this);
    Text2_->setObjectName(QStringLiteral("Text2"));
    Text2_->setClearButtonEnabled(true);
    Text2_->setTextMargins(kBoxPadding, 0, 0, 0);
    note_ = text_line("LabelM", side);
    note_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    Command1_->setObjectName(QStringLiteral("Command1"));
    Command1_->setProperty("Tag", QStringLiteral("搜索/Search"));
    Command1_->setText(QStringLiteral("Search"));
    Command1_->setAutoDefault(true);
    auto* search = new QHBoxLayout;
    search->setSpacing(kMargin);
    search->addWidget(Text2_, 1);
    search->addWidget(note_);
    search->addWidget(Command1_);
    auto* layout = new QVBoxLayout(side);
    layout->setContentsMargins(0, 0, kMargin / 2, 0);
    layout->setSpacing(kMargin);
    layout->addLayout(search);
    layout->addWidget(&list_, 1);
    return side;
}

void ObjectBrowserWindow::lay_out() {
    live_.setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    details_.setContentsMargins(kMargin / 2, 0, 0, 0);
    auto* splitter = new QSplitter(Qt::Horizontal, this);
    splitter->setChildrenCollapsible(false);
    splitter->addWidget(make_list_side());
    splitter->addWidget(&details_);
    splitter->setStretchFactor(0, 3);
    splitter->setStretchFactor(1, 2);
    splitter->setSizes({kListWidth, kFirstSize.width() - kListWidth});
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    layout->setSpacing(kMargin);
    layout->addWidget(aim_bar_);
    layout->addWidget(&live_);
    layout->addWidget(splitter, 1);
}

void ObjectBrowserWindow::connect_controls() {
    connect(Text2_, &QLineEdit::textChanged, this,
            [this](const QString& text) { browser_.Text2_Change(text.toStdString()); });
    connect(Text2_, &QLineEdit::returnPressed, this, [this] { browser_.Command1_Click(); });
    connect(Command1_, &QPushButton::clicked, this, [this] { browser_.Command1_Click(); });
    connect(aim_button_, &QPushButton::clicked, this,
            [this] { browser_.double_click(browser_.selected_row()); });
}

void ObjectBrowserWindow::list_changed() {
    const base::Language language = browser_.language();
    Text2_->setPlaceholderText(to_qt(kPlaceholder.in(language)));
    Text2_->setAccessibleName(to_qt(kSearchName.in(language)));
    Text2_->setToolTip(to_qt(kBoxTip.in(language)));
    Command1_->setToolTip(to_qt(kSearchTip.in(language)));
    note_->setMinimumWidth(note_->fontMetrics().horizontalAdvance(to_qt(kWidestNote.in(language))) +
                           kNoteGap);
    list_.setAccessibleName(to_qt(kListName.in(language)));
    live_.table().setAccessibleName(to_qt(kLiveName.in(language)));
    details_.apply_language(language);
    list_.setMinimumWidth(list_.readable_width());
    list_.list_changed();
}

void ObjectBrowserWindow::object_shown(bool to_top) {
    list_.show_selection(to_top);
    details_.show_object(browser_);
}

void ObjectBrowserWindow::search_changed() {
    note_->setText(to_qt(browser_.search_note()));
    const std::uint32_t colour =
        browser_.search_failed() ? palette::kWarningText : palette::kMutedText;
    set_colour(note_, QPalette::WindowText, colour);
    set_colour(Text2_, QPalette::Text,
               browser_.search_failed() ? palette::kWarningText : palette::kText);
    Text2_->setAccessibleDescription(note_->text());
}

void ObjectBrowserWindow::aim_changed() {
    const BrowserAim aim = browser_.aim();
    aim_bar_->setVisible(!aim.text.empty());
    aim_text_->setText(to_qt(aim.text));
    aim_button_->setText(to_qt(aim.button.in(browser_.language())));
    aim_button_->setEnabled(aim.possible);
}

// Whoever opens the browser looks for something.
void ObjectBrowserWindow::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (event->spontaneous()) return;
    Text2_->setFocus(Qt::OtherFocusReason);
    Text2_->selectAll();
}

// What the control with the focus has no use for comes here.
void ObjectBrowserWindow::keyPressEvent(QKeyEvent* event) {
    const Qt::KeyboardModifiers held = event->modifiers() & ~Qt::KeypadModifier;
    const bool from_box = Text2_->hasFocus() && held == Qt::NoModifier;
    if (function_key(event->key(), held)) return;
    // The list can be walked through while the text is typed.
    if (from_box && list_.move_key(event->key())) return;
    QWidget::keyPressEvent(event);
}

bool ObjectBrowserWindow::function_key(int key, Qt::KeyboardModifiers held) {
    if (key == Qt::Key_F3 && held == Qt::NoModifier) {
        browser_.find_next();
    } else if (key == Qt::Key_F3 && held == Qt::ShiftModifier) {
        browser_.find_previous();
    } else if (key == Qt::Key_F && held == Qt::ControlModifier) {
        Text2_->setFocus(Qt::ShortcutFocusReason);
        Text2_->selectAll();
    } else if (key == Qt::Key_Escape && held == Qt::NoModifier) {
        if (browser_.hide) browser_.hide();
    } else {
        return false;
    }
    return true;
}

}  // namespace servo::params
