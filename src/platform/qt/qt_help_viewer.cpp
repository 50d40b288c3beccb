#include "platform/qt/qt_help_viewer.h"

#include <QDesktopServices>
#include <QUrl>

#include "common/path_text.h"
#include "platform/qt/text_qt.h"

void QtHelpViewer::Open(const std::string& path) {
    QDesktopServices::openUrl(QUrl::fromLocalFile(ToQt(NativePath(path))));
}
