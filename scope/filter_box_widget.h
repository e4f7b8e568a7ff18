// A number box of the acquisition area: what is typed passes the recorder's key filter, whole
// pastes and input methods too. Enter commits, Esc leaves.
#pragma once

#include <QLineEdit>
#include <functional>
#include <string_view>

namespace servo::scope {

class FilterBox final : public QLineEdit {
    Q_OBJECT

  public:
    FilterBox(std::string_view name, QWidget* parent);

    std::function<void()> left;  // with Esc

    QSize sizeHint() const override;

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

  private:
    void insert_filtered(const QString& text);
    QString without_selection() const;
};

}  // namespace servo::scope
