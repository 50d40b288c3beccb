#include <QApplication>
#include <QEvent>

#include "app/frmMain.h"
#include "app/shared_state.h"
#include "archive/sharing_worker.h"
#include "platform/qt/qt_host.h"
#include "platform/qt/qt_sharing_stores.h"

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Orvia"));
    QtHost host;
    SharingWorker sharing(SharingStoresFor(ArchiveFile()));
    host.Services().Shared = &sharing;
    SharedState state(host.Services());
    frmMain window(state);
    window.Load(QApplication::arguments().contains(QLatin1String(AtStartArgument)));
    const int result = state.LinkRecord.ShuttingDown == False ? QApplication::exec() : 0;
    // Windows closed at the end are let go here; the event loop that would do it has ended.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return result;
}
