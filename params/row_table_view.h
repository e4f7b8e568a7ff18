// What the tables of this program have in common: rows of one height that follows the font, the
// wheel and the scroll bar row by row, Tab leads out, nothing is edited by the toolkit.
#pragma once

#include <QTableView>
#include <optional>

namespace servo::params {

class RowTable : public QTableView {
    Q_OBJECT

  public:
    explicit RowTable(QWidget* parent);

  Q_SIGNALS:
    // The user moved the scroll bar; the row that is at the top now, from 1.
    void scrolled_by_user(int top_row);

  protected:
    void changeEvent(QEvent* event) override;

    // How many of `rows` rows a key goes up (negative) or down; nothing for any other key.
    std::optional<int> row_step(int key, int rows) const;

    // The program itself is about to scroll.
    void scrolls_itself() { user_scrolls_ = false; }

    // In the middle of a table without rows.
    void paint_note(const QString& text);

  private:
    void fit_rows_to_font();
    void watch_scroll_bar();

    bool user_scrolls_ = false;
};

}  // namespace servo::params
