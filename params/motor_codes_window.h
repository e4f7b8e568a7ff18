// The window `Motorcodes`: the table of motor codes as it stands in its file.
#pragma once

#include <QTextEdit>
#include <QWidget>
#include <filesystem>

#include "base/language.h"

namespace servo::params {

class MotorCodesWindow final : public QWidget {
    Q_OBJECT

  public:
    // Reads the file below the program's folder. When it is not there the pane stays without a text
    // and names it, and every opening of the window tries again. `language` is the current one and
    // outlives the window.
    MotorCodesWindow(std::filesystem::path folder, const base::Language& language,
                     QWidget* parent = nullptr);

    QSize sizeHint() const override;

  protected:
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    void load();
    void show_text();
    void name_pane();
    QFont text_font() const;

    std::filesystem::path folder_;
    const base::Language& language_;
    QTextEdit RichTextBox1_;  // the text
    QString text_;
    bool loaded_ = false;
};

}  // namespace servo::params
