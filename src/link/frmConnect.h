#ifndef ORVIA_LINK_FRM_CONNECT_H
#define ORVIA_LINK_FRM_CONNECT_H

#include <QDialog>

#include "link/connecting.h"

class QLabel;

/// The dialog in which the operator connects to the server radio.
class frmConnect final : public QDialog {
 public:
    /// Shows the settings of `state`; `view` is the main window, which follows a connect.
    /// Edits `settings`, which are those of `radio` too, and lists the ports of `host`.
    frmConnect(const comm::LinkContext& radio, Settings& settings, const Host& host,
               QWidget* parent);

    /// Escape and the close box act as the cancel button.
    void reject() override;

 private:
    void BuildLabels();
    void BuildButtons();
    void ShowLabels(int breaks);
    void ChangeSettings();
    void Connect();

    const comm::LinkContext radio_;
    Settings& settings_;
    const Host& host_;
    comm::ConnectDialog dialog_;
    QLabel* lblPort_ = nullptr;
    QLabel* lblBaudRate_ = nullptr;
    QLabel* lblAutoDisconnect_ = nullptr;
    QLabel* lblAddressBook_ = nullptr;
};

#endif  // ORVIA_LINK_FRM_CONNECT_H
