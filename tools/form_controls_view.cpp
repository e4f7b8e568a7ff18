#include "tools/form_controls_view.h"

#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>

#include "params/ui_palette.h"

namespace servo::tools::form {

namespace {

namespace palette = params::palette;
using params::controls::kNoPair;
using params::controls::kTag;

constexpr const char* kTip = "Tip";  // property of a control: its tool tip's pair

constexpr int kLeastScrolled = 300;  // pixels

// The English half until the first walk through the window's texts.
template <typename Control>
Control* tagged(Control* control, const QString& name, std::string_view pair) {
    control->setObjectName(name);
    control->setProperty(kTag, pair.empty() ? QString(QLatin1String(kNoPair)) : qt(pair));
    return control;
}

QString english(std::string_view pair) {
    return half_of(pair, base::Language::kEnglish);
}

}  // namespace

QString array_name(const char* control, int index) {
    return QStringLiteral("%1(%2)").arg(QLatin1String(control)).arg(index);
}

QString half_of(std::string_view pair, base::Language language) {
    const std::size_t slash = pair.find('/');
    if (slash == std::string_view::npos) return qt(pair);
    if (language == base::Language::kChinese) return qt(pair.substr(0, slash));
    const std::string_view rest = pair.substr(slash + 1);
    return qt(rest.substr(0, rest.find('/')));
}

QString half_of(const QString& pair, base::Language language) {
    return half_of(std::string_view(pair.toStdString()), language);
}

QString plain_tip(std::string_view text) {
    QString tip = qt(text);
    if (!Qt::mightBeRichText(tip)) return tip;
    return QStringLiteral("<qt>%1</qt>")
        .arg(tip.toHtmlEscaped().replace(QLatin1Char('\n'), QLatin1String("<br>")));
}

QLabel* make_label(QWidget* parent, const QString& name, std::string_view pair) {
    auto* label = tagged(new QLabel(english(pair), parent), name, pair);
    label->setTextFormat(Qt::PlainText);
    return label;
}

QLabel* make_text(QWidget* parent, const QString& name, std::string_view pair) {
    QLabel* label = make_label(parent, name, pair);
    if (pair == "-") label->clear();
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

QLabel* make_value(QWidget* parent, const QString& name, std::string_view text) {
    QLabel* label = make_label(parent, name, {});
    label->setText(qt(text));
    return label;
}

QRadioButton* make_option(QWidget* parent, const QString& name, std::string_view pair) {
    return tagged(new QRadioButton(english(pair), parent), name, pair);
}

QCheckBox* make_check(QWidget* parent, const QString& name, std::string_view pair) {
    return tagged(new QCheckBox(english(pair), parent), name, pair);
}

QPushButton* make_command(QWidget* parent, const QString& name, std::string_view pair) {
    auto* button = tagged(new QPushButton(english(pair), parent), name, pair);
    button->setAutoDefault(true);
    return button;
}

QGroupBox* make_frame(QWidget* parent, const QString& name, std::string_view pair) {
    return tagged(new QGroupBox(english(pair), parent), name, pair);
}

void set_weight(QLabel* label, Weight weight) {
    std::uint32_t colour = palette::kText;
    switch (weight) {
        case Weight::kPlain:
            break;
        case Weight::kQuiet:
            colour = palette::kMutedText;
            break;
        case Weight::kWarning:
            colour = palette::kWarningText;
            break;
    }
    QPalette colours = label->palette();
    if (colours.color(QPalette::WindowText) == QColor(colour)) return;
    colours.setColor(QPalette::WindowText, QColor(colour));
    label->setPalette(colours);
}

void set_bold(QWidget* control, bool bold) {
    QFont font = control->font();
    if (font.bold() == bold) return;
    font.setBold(bold);
    control->setFont(font);
}

void set_pair(QWidget* control, std::string_view pair) {
    control->setProperty(kTag, qt(pair));
}

void set_tip_pair(QWidget* control, std::string_view pair) {
    control->setProperty(kTip, qt(pair));
}

void apply_pairs(QWidget& root, base::Language language) {
    for (auto* control : root.findChildren<QWidget*>()) {
        if (const QString pair = control->property(kTag).toString();
            pair.contains(QLatin1Char('/'))) {
            const QString text = half_of(pair, language);
            if (auto* label = qobject_cast<QLabel*>(control)) label->setText(text);
            if (auto* button = qobject_cast<QPushButton*>(control)) button->setText(text);
            if (auto* frame = qobject_cast<QGroupBox*>(control)) frame->setTitle(text);
        }
        const QString tip = half_of(control->property(kTip).toString(), language);
        if (tip.isEmpty()) continue;
        control->setToolTip(tip);
        control->setAccessibleName(tip);
    }
}

// --- ListBox

ListBox::ListBox(QWidget* parent, const QString& name) : QComboBox(parent) {
    setObjectName(name);
}

void ListBox::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

// --- ScrolledForm

ScrolledForm::ScrolledForm(QWidget* controls, QWidget* parent) : QScrollArea(parent) {
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWidgetResizable(true);
    setFocusPolicy(Qt::NoFocus);
    setWidget(controls);
    controls->installEventFilter(this);
}

QSize ScrolledForm::sizeHint() const {
    const int width = minimumSizeHint().width();
    const int wrapped = widget()->heightForWidth(width);  // -1 where nothing wraps
    return {width, std::max(widget()->sizeHint().height(), wrapped)};
}

// The bar stands beside the controls, not over them.
QSize ScrolledForm::minimumSizeHint() const {
    const bool bar = height() < widget()->minimumSizeHint().height();
    return {
        widget()->minimumSizeHint().width() + (bar ? verticalScrollBar()->sizeHint().width() : 0),
        kLeastScrolled};
}

// The bar comes or goes with the height.
void ScrolledForm::resizeEvent(QResizeEvent* event) {
    QScrollArea::resizeEvent(event);
    updateGeometry();
}

// Another language makes other sizes.
bool ScrolledForm::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::LayoutRequest) updateGeometry();
    return QScrollArea::eventFilter(watched, event);
}

}  // namespace servo::tools::form
