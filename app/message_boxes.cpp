#include "app/message_boxes.h"

#include <QFileDialog>
#include <QMessageBox>

#include "app/style.h"

namespace servo::app {

base::Answer MessageBoxes::show(std::string_view title, std::string_view text,
                                base::Buttons buttons) {
    QMessageBox box(parent_);
    box.setIcon(QMessageBox::Information);
    box.setWindowTitle(to_qt(title));
    // Texts come from files and from the drive: never as markup.
    box.setTextFormat(Qt::PlainText);
    box.setText(to_qt(text));
    box.setStandardButtons(buttons == base::Buttons::kOk
                               ? QMessageBox::StandardButtons(QMessageBox::Ok)
                               : QMessageBox::Ok | QMessageBox::Cancel);
    return box.exec() == QMessageBox::Ok || buttons == base::Buttons::kOk ? base::Answer::kOk
                                                                          : base::Answer::kCancel;
}

std::optional<std::string> MessageBoxes::ask_file(const FileRequest& request) {
    QFileDialog dialog(parent_, to_qt(request.title));
    const QString suffix = to_qt(request.suffix);
    dialog.setNameFilter(QStringLiteral("%1 (*.%2)").arg(to_qt(request.filter), suffix));
    const bool open = request.kind == FileRequest::Kind::kOpen;
    dialog.setAcceptMode(open ? QFileDialog::AcceptOpen : QFileDialog::AcceptSave);
    dialog.setFileMode(open ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
    dialog.setDefaultSuffix(suffix);
    if (!request.name.empty()) dialog.selectFile(to_qt(request.name));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {};
    return from_qt(dialog.selectedFiles().constFirst());
}

}  // namespace servo::app
