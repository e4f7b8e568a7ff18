// The window `modbus`: the objects with a Modbus address, with a box that finds rows while one
// types.
#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QWidget>

#include "base/language.h"
#include "params/modbus_grid_view.h"
#include "params/modbus_table.h"

namespace servo::params {

class ModbusWindow final : public QWidget {
    Q_OBJECT

  public:
    // Dictionary and language (the current one) outlive the window.
    ModbusWindow(const dictionary::Store& dictionary, const base::Language& language,
                 QWidget* parent = nullptr);

    // The rows of the dictionary as it is now; to be called when it has been loaded.
    void reload();

    QSize sizeHint() const override;

  protected:
    void changeEvent(QEvent* event) override;

  private:
    void connect_controls();
    void find(const QString& text);
    void leave_box();
    void show_texts();
    bool eventFilter(QObject* watched, QEvent* event) override;

    const base::Language& language_;
    ModbusTable table_;
    ModbusModel model_;
    ModbusGrid MSHFlexGrid1_;  // the list
    QLabel LabelA_;            // in front of the box
    QLineEdit TextA_;          // what to find
    QLabel LabelB_;            // how many rows
};

}  // namespace servo::params
