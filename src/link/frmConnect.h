#ifndef ORVIA_LINK_FRM_CONNECT_H
#define ORVIA_LINK_FRM_CONNECT_H

#include <QDialog>

#include "app/shared_state.h"
#include "link/connecting.h"
#include "records/main_view.h"

class QLabel;

/// The dialog in which the operator connects to the server radio.
class frmConnect final : public QDialog {
 public:
    /// Shows the settings of `state`; `view` is the main window, which follows a connect.
    frmConnect(SharedState& state, MainView& view, QWidget* parent);

    /// Escape and the close box act as the cancel button.
    void reject() override;

 private:
    void BuildLabels();
    void BuildButtons();
    void ShowLabels(int breaks);
    void ChangeSettings();
    void Connect();

    SharedState& state_;
    MainView& view_;
    comm::ConnectDialog dialog_;
    QLabel* lblPort_ = nullptr;
    QLabel* lblBaudRate_ = nullptr;
    QLabel* lblAutoDisconnect_ = nullptr;
    QLabel* lblAddressBook_ = nullptr;
};

#endif  // ORVIA_LINK_FRM_CONNECT_H
