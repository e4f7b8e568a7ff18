// The journal of writes on screen: a table that is filtered, copied and saved, and the buttons that
// write values back.
#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QWidget>
#include <filesystem>
#include <functional>
#include <optional>
#include <vector>

#include "tools/configuration.h"
#include "tools/form_controls_view.h"
#include "tools/journal_restore.h"

namespace servo::tools {

class ConfigurationTable;

// The path that the user chose; nothing when he cancelled.
using AskJournalFile =
    std::function<std::optional<std::filesystem::path>(const ConfigurationFile&)>;

class JournalWindow final : public QWidget {
    Q_OBJECT

  public:
    // What comes in is gathered for so long.
    static constexpr int kGatherMs = 100;

    // Both outlive the window.
    JournalWindow(WriteJournal& journal, link::Engine& engine, AskJournalFile ask_file,
                  QWidget* parent = nullptr);
    ~JournalWindow() override;

    // Shows what has been gathered.
    void refresh_now();

    QSize sizeHint() const override { return {860, 440}; }

  protected:
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;

  private:
    void make_controls();
    void lay_out();
    void connect_controls();
    void apply_language();
    void refresh_controls();
    const JournalEntry* entry_of(int row) const;  // null for one that has left meanwhile
    // Rows by the numbers of their entries.
    std::vector<std::size_t> selected() const;
    std::vector<std::size_t> selected_or_all() const;
    void select_again(const std::vector<std::size_t>& numbers);
    std::vector<std::size_t> positions(const std::vector<std::size_t>& numbers) const;
    void write_back(const std::vector<std::size_t>& numbers);
    void step();
    void copy() const;
    void save();
    std::string summary() const;

    WriteJournal& journal_;
    JournalRestore restore_;
    AskJournalFile ask_file_;
    // Numbers of the entries that are shown. The oldest may leave before that is seen here.
    std::vector<std::size_t> shown_;
    QLineEdit* filter_ = nullptr;           // Text1
    QLabel* summary_ = nullptr;             // Label1: how many there are
    ConfigurationTable* grid_ = nullptr;    // MSHFlexGrid1
    QLabel* note_ = nullptr;                // Label2: how writing back goes on
    QPushButton* back_selected_ = nullptr;  // Command1
    QPushButton* back_all_ = nullptr;       // Command2
    QPushButton* copy_ = nullptr;           // Command3
    QPushButton* save_ = nullptr;           // Command4
    QPushButton* clear_ = nullptr;          // Command5
    form::Tips tips_;
    QTimer gather_;
    QTimer steps_;
};

}  // namespace servo::tools
