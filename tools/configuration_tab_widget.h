// One tab of the configuration window: the grid of one side, what it stands at, and its commands.
#pragma once

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QWidget>
#include <functional>
#include <string_view>
#include <vector>

#include "tools/configuration.h"

namespace servo::tools {

class ConfigurationTable;
class PathLabel;

class ConfigurationTabWidget final : public QWidget {
    Q_OBJECT

  public:
    // The form outlives the tab.
    ConfigurationTabWidget(ImExport& form, ConfigurationSide side, QWidget* parent);

    // Everything.
    void refresh();
    // A row of this side has got its result.
    void refresh_row(int row);
    // Label, bar, note and enabled states alone.
    void refresh_controls();
    void apply_language(base::Language language);
    ConfigurationTable& grid() { return *grid_; }

  private:
    QPushButton* command(const char* name, std::string_view pair, std::string_view tip,
                         std::function<void()> click);
    void make_write_commands();
    void make_read_commands();
    void make_grid();
    void lay_out();
    bool busy() const;
    bool has_failures() const;

    ImExport& form_;
    ConfigurationSide side_;
    ConfigurationTable* grid_ = nullptr;
    PathLabel* path_ = nullptr;       // Label2, Label8: path, then result
    QLabel* file_ = nullptr;          // LabelE, LabelF: the file name, while the path is not shown
    QProgressBar* bar_ = nullptr;     // ProgressBar1, ProgressBar2
    QLabel* note_ = nullptr;          // LabelA, LabelB: the same in words
    QPushButton* choose_ = nullptr;   // Command1, Command8: choose the file
    QPushButton* start_ = nullptr;    // Command2 write, Command7 read
    QPushButton* stop_ = nullptr;     // CommandA, CommandF
    QPushButton* failed_ = nullptr;   // CommandE, CommandH: the failed rows
    std::vector<QPushButton*> told_;  // locked by a job until Timer1 has seen its end
    std::vector<QPushButton*> additions_;  // not while something runs
    std::vector<QPushButton*> groups_;     // the first of each group of commands
    bool was_busy_ = false;
};

}  // namespace servo::tools
