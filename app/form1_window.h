// `Form1`: the communication dialog. Shows CommunicationState, passes picks and clicks on.
#pragma once

#include <QWidget>
#include <vector>

#include "link/communication.h"

class QComboBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QTabWidget;

namespace servo::app {

class Form1Window final : public QWidget {
    Q_OBJECT

  public:
    Form1Window(link::Communication& communication, const base::Language& language);

    // Puts the state on screen; cheap when nothing has changed.
    void refresh();

  private:
    QWidget* make_serial_tab();
    QWidget* make_can_tab();
    void connect_serial_tab();
    void connect_can_tab();
    void set_tab_order();
    void show_ports(const link::CommunicationState& state);
    void show_device(const link::CommunicationState& state);

    link::Communication& communication_;
    const base::Language& language_;
    QTabWidget* SSTab1_ = nullptr;     // serial line, CAN
    QComboBox* Combo1_ = nullptr;      // serial port
    QLabel* device_ = nullptr;         // the device behind the port's text
    QComboBox* Combo2_ = nullptr;      // rate
    QLineEdit* Text1_ = nullptr;       // communication ID
    QPushButton* Command1_ = nullptr;  // open, close
    QPushButton* Command2_ = nullptr;  // refresh the list
    QComboBox* Combo3_ = nullptr;      // CAN rate
    QLineEdit* Text2_ = nullptr;       // CAN target
    QPushButton* Command3_ = nullptr;  // activate the adapter, close it
    QLabel* Label7_ = nullptr;         // CAN status
    QLabel* port_label_ = nullptr;
    QLabel* baud_label_ = nullptr;
    QLabel* id_label_ = nullptr;
    QLabel* can_baud_label_ = nullptr;
    QLabel* can_target_label_ = nullptr;
};

}  // namespace servo::app
