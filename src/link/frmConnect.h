#ifndef ORVIA_LINK_FRM_CONNECT_H
#define ORVIA_LINK_FRM_CONNECT_H

#include <QDialog>

#include "app/main_view.h"
#include "app/shared_state.h"
#include "link/connecting.h"

class QLabel;
class QPushButton;

/// The dialog in which the operator connects to the server radio.
class frmConnect final : public QDialog {
 public:
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
    QPushButton* cmdConnect_ = nullptr;
    QPushButton* cmdCancel_ = nullptr;
};

#endif  // ORVIA_LINK_FRM_CONNECT_H
