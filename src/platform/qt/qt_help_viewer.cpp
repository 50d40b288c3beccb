#include "platform/qt/qt_help_viewer.h"

#include <QDesktopServices>
#ifdef Q_OS_WIN
#include <QProcess>
#endif
#include <QUrl>

#include "common/help_file.h"
#include "common/path_text.h"
#include "platform/qt/text_qt.h"

void QtHelpViewer::Open(const std::string& path) {
    const std::size_t mark = path.rfind(HelpTopicMark);
#ifdef Q_OS_WIN
    if (mark != std::string::npos &&
        QProcess::startDetached(QStringLiteral("hh.exe"), {ToQt(path)})) {
        return;
    }
#endif
    // What a desktop has for a file takes no page of it.
    QDesktopServices::openUrl(QUrl::fromLocalFile(ToQt(NativePath(path.substr(0, mark)))));
}
