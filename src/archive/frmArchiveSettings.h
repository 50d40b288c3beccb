#ifndef ORVIA_ARCHIVE_FRM_ARCHIVE_SETTINGS_H
#define ORVIA_ARCHIVE_FRM_ARCHIVE_SETTINGS_H

#include <QDialog>
#include <QTimer>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "archive/archive_sharing.h"

class QBoxLayout;
class QCheckBox;
class QComboBox;
class QGridLayout;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;

/// What the window of the archive's settings works with. The host has a shared archive.
struct ArchiveSettingsWork {
    ArchiveSharing& sharing;
    const Host& outside;
};

/// The window in which the archive is shared with other consoles, over a server. It stands beside
/// the other windows, and never waits for the server.
class frmArchiveSettings final : public QDialog {
    Q_OBJECT

 public:
    frmArchiveSettings(const ArchiveSettingsWork& work, QWidget* parent);

    /// Opens the window on what is kept; one that is open comes to the front as it is.
    void ShowOrRaise();
    /// Closes the window at the end of the program.
    void Unload();

    /// Escape acts as "Cancel".
    void reject() override { close(); }

 protected:
    void closeEvent(QCloseEvent* event) override;

 private:
    void BuildHead(QBoxLayout& column);
    void BuildServer(QBoxLayout& column);
    void BuildFields(QGridLayout& grid);
    void BuildPassword(QGridLayout& grid);
    void BuildTest(QGridLayout& grid);
    void BuildHandOver(QBoxLayout& column);
    void BuildButtons(QBoxLayout& column);
    void OrderTabs();
    void FitScreen();

    void ShowKept();
    void ShowStates();
    void Refresh();
    [[nodiscard]] std::optional<SharingChoice> Chosen();
    void Accept();
    void Test();
    void HandOverAgain();
    void AskForPassword(const ServerPlace& place, const std::function<void(std::string)>& then);
    void KeepPassword(const SharingChoice& choice);
    void Finish(const SharingChoice& choice);
    void Tell(const std::string& text);
    void StopWaiting();

    const ArchiveSettingsWork work_;
    QTimer refresh_;
    bool unloaded_ = false;
    bool trying_ = false;   ///< a test runs
    bool keeping_ = false;  ///< the keyring takes the password
    // An answer of the keyring to a window that no longer waits for it is nobody's.
    std::shared_ptr<int> question_;

    QCheckBox* chkShare_ = nullptr;
    QLabel* lblWhyNot_ = nullptr;
    QGroupBox* grpServer_ = nullptr;
    QLineEdit* txtServer_ = nullptr;
    QLineEdit* txtPort_ = nullptr;
    QLineEdit* txtDatabase_ = nullptr;
    QLineEdit* txtUser_ = nullptr;
    QComboBox* cmbPassword_ = nullptr;
    QLineEdit* txtPassword_ = nullptr;
    QComboBox* cmbTls_ = nullptr;
    QPushButton* cmdTest_ = nullptr;
    QLabel* lblTest_ = nullptr;
    QLabel* lblHandOver_ = nullptr;
    QPushButton* cmdAgain_ = nullptr;
    QLabel* lblState_ = nullptr;
    QPushButton* cmdOK_ = nullptr;
    QPushButton* cmdCancel_ = nullptr;
};

#endif  // ORVIA_ARCHIVE_FRM_ARCHIVE_SETTINGS_H
