#include "scope/tool_row_widget.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QMenu>
#include <QMouseEvent>

#include "params/ui_palette.h"
#include "scope/number_label_widget.h"
#include "scope/tool_icon_view.h"

namespace servo::scope {

namespace {

struct CursorTool {
    const char* image;
    const char* label;
    const char* text;
    const char* icon;
    base::Text name;
    const char* key;
};

constexpr std::array<CursorTool, kCursors> kCursorTools{{
    {"Image1", "LabelX1", "X1", "cursor_x", {"游标 X1", "Cursor X1"}, "1"},
    {"Image2", "LabelX2", "X2", "cursor_x", {"游标 X2", "Cursor X2"}, "2"},
    {"Image3", "LabelY1", "Y1", "cursor_y", {"游标 Y1", "Cursor Y1"}, "3"},
    {"Image4", "LabelY2", "Y2", "cursor_y", {"游标 Y2", "Cursor Y2"}, "4"},
}};

struct PanelTool {
    const char* name;
    const char* icon;
    base::Text text;
    const char* key;
};

// In the order of AnalysisPanel.
constexpr std::array<PanelTool, kAnalysisPanels> kPanelTools{{
    {"CommandE", "statistics", {"可见窗口的统计", "Statistics of the visible window"}, "S"},
    {"CommandF", "spectrum", {"可见窗口的频谱", "Spectrum of the visible window"}, "P"},
    {"CommandG", "references", {"参考记录", "Reference recordings"}, "G"},
}};

struct PictureKind {
    const char* suffix;
    const char* label;
};

constexpr std::array<PictureKind, 3> kPictureKinds{
    {{"png", "PNG"}, {"svg", "SVG"}, {"pdf", "PDF"}}};

void add_divider(QHBoxLayout& row, QWidget* parent) {
    auto* line = new QFrame(parent);
    line->setFrameShape(QFrame::VLine);
    line->setFrameShadow(QFrame::Plain);
    QPalette colours = line->palette();
    colours.setColor(QPalette::WindowText, QColor(params::palette::kFrame));
    line->setPalette(colours);
    row.addSpacing(kGap / 2);
    row.addWidget(line);
    row.addSpacing(kGap / 2);
}

}  // namespace

ToolRowWidget::ToolRowWidget(PanelContext context, ToolRowEvents events, QWidget* parent)
    : QWidget(parent), context_(std::move(context)), events_(std::move(events)) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    make_zoom(*row);
    add_divider(*row, this);
    make_cursors(*row);
    add_divider(*row, this);
    make_panels(*row);
    add_divider(*row, this);
    make_files(*row);
}

QToolButton* ToolRowWidget::tool(const char* name, const char* icon,
                                 const std::function<void()>& run, base::Text text,
                                 const char* key) {
    QToolButton* button = make_tool(this, name, icon);
    connect(button, &QToolButton::clicked, this, [this, run] {
        if (run) run();
        context_.acted();
    });
    texts_.add(button, text, {}, key);
    return button;
}

void ToolRowWidget::make_zoom(QHBoxLayout& row) {
    zoom_in_ = tool("CommandA", "zoom_in", events_.zoom_in, {"放大", "Zoom in"}, "+");
    zoom_out_ = tool("CommandB", "zoom_out", events_.zoom_out, {"缩小", "Zoom out"}, "-");
    zoom_all_ =
        tool("CommandC", "zoom_all", events_.zoom_all, {"显示整个记录", "Whole recording"}, "0");
    fit_ = tool("CommandD", "fit_curves", events_.fit_curves,
                {"自动选择所有曲线的刻度", "Fit all curves in height"}, "F");
    Image8_ = tool(
        "Image8", "hand", [this] { context_.scope.Image8_Click(); },
        {"手形工具：拖动以平移", "Hand tool: drag to pan"}, "H");
    Image8_->setCheckable(true);
    set_picture(Image8_, "Image8");
    for (QToolButton* button : {zoom_in_, zoom_out_, zoom_all_, fit_, Image8_})
        row.addWidget(button);
}

void ToolRowWidget::make_cursors(QHBoxLayout& row) {
    for (std::size_t i = 0; i < kCursors; ++i) {
        const CursorTool& cursor = kCursorTools.at(i);
        const auto which = static_cast<Cursor>(i);
        QToolButton* button = tool(
            cursor.image, cursor.icon, [this, which] { context_.scope.click_cursor(which); },
            cursor.name, cursor.key);
        button->setCheckable(true);
        set_picture(button, "off");
        auto* label = named(new QLabel(QLatin1String(cursor.text), this), cursor.label);
        label->setProperty("Tag", QStringLiteral("-"));
        make_quiet(label);
        label->installEventFilter(this);
        cursors_.at(i) = button;
        cursor_names_.at(i) = label;
        if (i > 0) row.addSpacing(kGap / 2);
        row.addWidget(button);
        row.addSpacing(kGap / 4);
        row.addWidget(label);
    }
}

// A click on its name is a click on the button.
bool ToolRowWidget::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonPress &&
        static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton)
        for (std::size_t i = 0; i < kCursors; ++i)
            if (watched == cursor_names_.at(i)) {
                cursors_.at(i)->click();
                return true;
            }
    return QWidget::eventFilter(watched, event);
}

void ToolRowWidget::toggle_panel(AnalysisPanel panel) {
    panels_.at(static_cast<std::size_t>(panel))->toggle();
}

void ToolRowWidget::make_panels(QHBoxLayout& row) {
    for (std::size_t i = 0; i < kAnalysisPanels; ++i) {
        const PanelTool& shown = kPanelTools.at(i);
        const auto panel = static_cast<AnalysisPanel>(i);
        QToolButton* button = make_tool(this, shown.name, shown.icon);
        button->setCheckable(true);
        connect(button, &QToolButton::toggled, this,
                [this, panel](bool on) { events_.show_panel(panel, on); });
        texts_.add(button, shown.text, {}, shown.key);
        panels_.at(i) = button;
        row.addWidget(button);
    }
    keep_ = tool("CommandH", "keep", events_.keep_reference,
                 {"保留当前记录作为参考", "Keep this recording as a reference"}, "R");
    row.addWidget(keep_);
}

void ToolRowWidget::make_files(QHBoxLayout& row) {
    picture_ = make_tool(this, "CommandI", "picture");
    picture_->setPopupMode(QToolButton::InstantPopup);
    picture_menu_ = new QMenu(picture_);
    for (const PictureKind& kind : kPictureKinds)
        picture_menu_
            ->addAction(QLatin1String(kind.label), this,
                        [this, kind] { events_.save_picture(kind.suffix); })
            ->setObjectName(QLatin1String(kind.label));
    picture_->setMenu(picture_menu_);
    texts_.add(picture_, {"保存图片", "Save the picture"}, {}, "Ctrl+Shift+P");
    table_ = make_tool(this, "CommandJ", "table");
    // No act of its own: that would take the note away again.
    connect(table_, &QToolButton::clicked, this, [this] { events_.save_table(); });
    texts_.add(table_, {"把数据保存为 CSV", "Save the data as CSV"}, {}, "Ctrl+Shift+D");
    table_->setShortcut(QKeySequence(QStringLiteral("Ctrl+Shift+D")));
    picture_->setShortcut(QKeySequence(QStringLiteral("Ctrl+Shift+P")));
    row.addWidget(picture_);
    row.addWidget(table_);
    note_ = named(new QLabel(this), "LabelT");
    note_->setProperty("Tag", QStringLiteral("-"));
    note_->setTextFormat(Qt::PlainText);
    note_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    make_quiet(note_);
    row.addSpacing(kGap);
    row.addWidget(note_, 1);
    QPushButton* importing = make_command(this, "Command13", {"导入", "Import"});
    QPushButton* exporting = make_command(this, "Command8", {"导出", "Export"});
    importing->setIcon(tool_icon("import"));
    exporting->setIcon(tool_icon("export"));
    connect(importing, &QPushButton::clicked, this, [this] { events_.import_file(); });
    connect(exporting, &QPushButton::clicked, this, [this] { events_.export_file(); });
    texts_.add(importing, {"导入", "Import"}, {"打开 .scope 文件", "Opens a .scope file"});
    texts_.add(exporting, {"导出", "Export"},
               {"把记录保存为 .scope 文件", "Saves the recording as a .scope file"});
    row.addWidget(importing);
    row.addSpacing(kGap);
    row.addWidget(exporting);
}

void ToolRowWidget::refresh() {
    const ScopeData& held = context_.scope.data();
    const bool drawn = held.dataValid;
    zoom_in_->setEnabled(drawn && held.zoomDepth + 1 < kZoomLevels);
    zoom_out_->setEnabled(drawn && held.zoomDepth > 0);
    zoom_all_->setEnabled(drawn && held.zoomDepth > 0);
    for (QToolButton* button : {fit_, keep_, picture_, table_})
        button->setEnabled(drawn);
    show_check(Image8_, held.handTool);
    if (const char* picture = held.handTool ? "Image9" : "Image8";
        Image8_->property(kPictureProperty).toString() != QLatin1String(picture)) {
        set_picture(Image8_, picture);
        Image8_->setIcon(tool_icon(held.handTool ? "hand_on" : "hand"));
    }
    for (std::size_t i = 0; i < kCursors; ++i) {
        const bool on = held.cursors.at(i).on;
        show_check(cursors_.at(i), on);
        set_picture(cursors_.at(i), on ? "on" : "off");
    }
}

void ToolRowWidget::show_picked(Cursor x, Cursor y) {
    for (std::size_t i = 0; i < kCursors; ++i) {
        const auto cursor = static_cast<Cursor>(i);
        QLabel* label = cursor_names_.at(i);
        const bool picked = context_.scope.data().cursors.at(i).on && (cursor == x || cursor == y);
        if (QFont font = label->font(); font.underline() != picked) {
            font.setUnderline(picked);
            label->setFont(font);
        }
    }
}

void ToolRowWidget::apply_language(base::Language language) {
    texts_.apply(language);
}

void ToolRowWidget::show_note(const QString& text) {
    note_->setText(note_->fontMetrics().elidedText(text, Qt::ElideMiddle, note_->width()));
    note_->setToolTip(text);
}

}  // namespace servo::scope
