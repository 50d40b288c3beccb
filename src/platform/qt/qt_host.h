#ifndef ORVIA_PLATFORM_QT_QT_HOST_H
#define ORVIA_PLATFORM_QT_QT_HOST_H

#include "platform/host.h"
#include "platform/qt/qt_bell.h"
#include "platform/qt/qt_command_runner.h"
#include "platform/qt/qt_event_pump.h"
#include "platform/qt/qt_file_dialogs.h"
#include "platform/qt/qt_help_viewer.h"
#include "platform/qt/qt_message_boxes.h"
#include "platform/qt/qt_password_keeper.h"
#include "platform/qt/qt_session_start.h"
#include "platform/qt/qt_settings_store.h"
#include "platform/qt/qt_system_clock.h"
#include "platform/qt/sql_archive.h"
#ifdef _WIN32
#include "platform/win/win_port_inquiry.h"
#include "platform/win/win_registry.h"
#include "platform/win/win_serial_port.h"
#else
#include "platform/qt/qt_port_inquiry.h"
#include "platform/qt/qt_ports.h"
#include "platform/qt/qt_serial_port.h"
#endif

/// The host of the running program. Needs the application object, and goes before it.
class QtHost final {
 public:
    QtHost();
    QtHost(const QtHost&) = delete;
    QtHost& operator=(const QtHost&) = delete;

    [[nodiscard]] Host& Services() { return host_; }

 private:
    QtSettingsStore store_;
#ifdef _WIN32
    WinSerialPort port_;
    WinRegistry localMachine_;
    WinPortInquiry inquiry_;
#else
    QtSerialPort port_;
    PortsRegistry localMachine_;
    QtPortInquiry inquiry_;
#endif
    QtEventPump pump_;
    QtMessageBoxes boxes_;
    QtFileDialogs dialogs_;
    QtSystemClock clock_;
    QtHelpViewer help_;
    QtBell sound_;
    SqlArchive archive_;
    QtCommandRunner commands_;
    QtSessionStart atStart_;
    QtPasswordKeeper passwords_;
    Host host_;
};

/// The user's own folder for what the program finds and keeps; it may be missing.
[[nodiscard]] QString UserFolder();

/// Whether a file can be made in the folder.
[[nodiscard]] bool FolderTakesFiles(const QString& folder);

/// Where the user's files go instead of the program's folder: the documents, or the home of a user
/// who has none. Empty if the program's folder takes files.
[[nodiscard]] std::string SaveFolderFor(const QString& programFolder);

/// The file that the archive of this user lies in; its folder may be missing.
[[nodiscard]] QString ArchiveFile();

/// A folder in the system's separators without one at its end; a root keeps none.
[[nodiscard]] std::string FolderWithoutSeparator(const QString& folder);

#endif  // ORVIA_PLATFORM_QT_QT_HOST_H
