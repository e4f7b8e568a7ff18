// Files in the shell: the project commands, the recent files, and files that are dropped onto the
// main window.
#pragma once

#include <QObject>
#include <QStringList>

#include "app/file_kinds.h"
#include "app/project.h"
#include "app/recent_files.h"
#include "app/shell_access.h"

class QMenu;
class QMimeData;

namespace servo::app {

class ShellFiles final : public QObject {
    Q_OBJECT

  public:
    // All of it outlives the object. The menu is filled with the recent files.
    ShellFiles(Workstation& workstation, DialogSwitch& dialogs, QMenu& recent_menu,
               QObject* parent = nullptr);

    void new1();
    void open1();
    void save1();

    // What was used last, most recent first (UTF-8 paths).
    const std::vector<std::string>& recent() const { return recent_.paths(); }
    void set_recent(const std::vector<std::string>& paths);

    // Whether one of the dragged files would be opened.
    bool accepts(const QMimeData& dragged) const;
    // Opens those that are ours, and says why another was not.
    void open_dropped(const QMimeData& dropped);

    void apply_language();

  private:
    void open_project(const std::string& path);
    void open_recording(const std::string& path);
    void open_image(const std::string& path);
    void open_response(const std::string& path);
    void open_table(const std::string& path);
    void open_configuration(const std::string& path);
    void open_template(const std::string& path);
    void used(const ProjectResult& result);
    void fill_menu();

    Workstation& workstation_;
    DialogSwitch& dialogs_;
    QMenu& menu_;
    Project project_;
    RecentFiles recent_;
    FileOpeners openers_;
};

}  // namespace servo::app
