// Fills a menu with the project files that were used last.
#pragma once

#include <QMenu>
#include <QObject>
#include <functional>
#include <vector>

#include "app/recent_files.h"

namespace servo::app {

class RecentMenu final : public QObject {
    Q_OBJECT

  public:
    // `list` is asked each time before the menu opens, since files come and go; both outlive this.
    RecentMenu(QMenu& menu, std::function<std::vector<RecentEntry>()> list);

    // Title and last entry; also hides the menu while the list is empty. Call it again when the
    // list has changed.
    void apply(base::Language language);

  Q_SIGNALS:
    void chosen(const QString& path);
    void clear_asked();

  private:
    void fill();

    QMenu& menu_;
    std::function<std::vector<RecentEntry>()> list_;
    base::Language language_ = base::Language::kEnglish;
};

}  // namespace servo::app
