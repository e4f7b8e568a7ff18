// Below the tabs: the differences, the dry run or the failed rows that were asked for last.
#pragma once

#include <QLabel>
#include <QPushButton>
#include <QWidget>

#include "tools/configuration.h"

namespace servo::tools {

class ConfigurationTable;
class PathLabel;

class ConfigurationReportWidget final : public QWidget {
    Q_OBJECT

  public:
    // The form outlives the panel.
    ConfigurationReportWidget(ImExport& form, QWidget* parent);

    void refresh();

  private:
    void lay_out();

    ImExport& form_;
    ConfigurationReport report_;
    PathLabel* title_ = nullptr;          // LabelC
    QLabel* summary_ = nullptr;           // LabelD
    QPushButton* save_ = nullptr;         // CommandI
    QPushButton* close_ = nullptr;        // CommandJ
    ConfigurationTable* grid_ = nullptr;  // MSHFlexGridC
};

}  // namespace servo::tools
