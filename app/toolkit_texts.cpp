#include "app/toolkit_texts.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QLibraryInfo>

namespace servo::app {

namespace {

QString chinese_file() {
    return QLibraryInfo::path(QLibraryInfo::TranslationsPath) + QStringLiteral("/qtbase_zh_CN.qm");
}

}  // namespace

ToolkitTexts::~ToolkitTexts() {
    if (on_) QCoreApplication::removeTranslator(&chinese_);
}

bool ToolkitTexts::installed() {
    return QFileInfo::exists(chinese_file());
}

void ToolkitTexts::apply(base::Language language) {
    const bool wanted = language == base::Language::kChinese;
    if (wanted == on_) return;
    if (!wanted) {
        QCoreApplication::removeTranslator(&chinese_);
        on_ = false;
        return;
    }
    // Most runs never need them, so they are read at the first switch.
    if (chinese_.isEmpty() && !chinese_.load(chinese_file())) return;
    on_ = QCoreApplication::installTranslator(&chinese_);
}

}  // namespace servo::app
