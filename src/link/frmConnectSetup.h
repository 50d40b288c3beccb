#ifndef ORVIA_LINK_FRM_CONNECT_SETUP_H
#define ORVIA_LINK_FRM_CONNECT_SETUP_H

#include <QDialog>
#include <QTimer>
#include <string>

#include "link/enumerate.h"
#include "platform/host.h"
#include "records/settings.h"

class QCheckBox;
class QComboBox;
class QGridLayout;
class QLineEdit;

/// The dialog on port, baud rate, idle limit and address book.
class frmConnectSetup final : public QDialog {
    Q_OBJECT

 public:
    /// Edits `settings`, which change with the OK button alone; lists the ports of `host`.
    frmConnectSetup(Settings& settings, const Host& host, QWidget* parent);

 private:
    void BuildCombos(QGridLayout& rows);
    void BuildAddressBook(QGridLayout& rows);
    void BuildButtons();
    void FillIn();
    Enumerate::PortList ListPorts();
    void TellUse();
    void ShowPort(int item, const std::string& entry, const std::string& mark);
    void Browse();
    void TakeOver();

    Settings& settings_;
    const Host& host_;
    bool loading_ = true;
    QTimer follow_;  ///< looks anew for ports while the dialog is open
    QComboBox* cmbPort_ = nullptr;
    QComboBox* cmbBaud_ = nullptr;
    QCheckBox* chkAutoDisconnect_ = nullptr;
    QLineEdit* txtAddressBook_ = nullptr;
};

#endif  // ORVIA_LINK_FRM_CONNECT_SETUP_H
