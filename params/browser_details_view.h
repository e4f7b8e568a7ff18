// The properties and the help text of the object that the dictionary browser shows.
#pragma once

#include <QWidget>
#include <array>

#include "params/object_browser.h"

class QGridLayout;
class QLabel;
class QTextEdit;

namespace servo::params {

class BrowserDetails final : public QWidget {
    Q_OBJECT

  public:
    explicit BrowserDetails(QWidget* parent);

    void show_object(const ObjectBrowser& browser);
    void apply_language(base::Language language);

  private:
    // In the order of reading. Caption and value of field n are named LabelA and LabelB for n = 0,
    // LabelC and LabelD for n = 1 and so on.
    enum Field : std::uint8_t {
        kIndexField,
        kSubField,
        kNameField,
        kTypeField,
        kAttributeField,
        kModbusField
    };
    static constexpr int kFields = 6;

    QLabel* add_field(QGridLayout& form, Field field, const QString& tag, int row, int column,
                      int span);
    void show_help(const QString& text);

    std::array<QLabel*, kFields> values_{};
    QTextEdit* RichTextBox1_ = nullptr;  // help text
    QString help_;                       // what it shows
};

}  // namespace servo::params
