#ifndef ORVIA_CONSOLE_FRM_SIGNAL_LEVEL_H
#define ORVIA_CONSOLE_FRM_SIGNAL_LEVEL_H

#include <QDialog>

#include "console/signal_monitor.h"

class QGridLayout;
class QLabel;
class QProgressBar;
class QPushButton;
class frmSignalTrail;

/// The window that watches how strongly a client radio is received.
class frmSignalLevel final : public QDialog, private SignalView {
    Q_OBJECT

 public:
    frmSignalLevel(const OperationContext& context, Bell& sound, std::int16_t clientIndex,
                   QWidget* parent);

    /// Shows the radio `ClientIndex` of the monitor.
    void DisplayClient();

    /// Escape acts as the exit button.
    void reject() override;

 protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

 private:
    void EnableNext(bool enable) override;
    void ShowRadio(const RadioTexts& texts) override;
    void ShowLevel(const std::string& text, int barLength) override;
    void KeepReading(const SignalTrail::Reading& reading) override;
    void HideMonitor() override { hide(); }

    [[nodiscard]] QLabel* AddValue(QGridLayout& rows, const QString& name, const QString& caption,
                                   const QString& meaning);
    void BuildRadio();
    void BuildBar();
    void BuildButtons();

    const OperationContext& context_;
    SignalMonitor monitor_;
    QLabel* lblClientName_ = nullptr;
    QLabel* lblMacAddress_ = nullptr;
    QLabel* lblChannel_ = nullptr;
    QLabel* lblDBm_ = nullptr;
    QProgressBar* barSignalLevel_ = nullptr;
    QPushButton* cmdNext_ = nullptr;
    frmSignalTrail* trail_ = nullptr;
};

/// Shows the monitor over the main window.
class SignalForms final : public SignalMonitorDialog {
 public:
    SignalForms(QWidget& main, Bell& sound) : main_(main), sound_(sound) {}
    void ShowMonitor(const OperationContext& context, std::int16_t clientIndex) override;

 private:
    QWidget& main_;
    Bell& sound_;
};

#endif  // ORVIA_CONSOLE_FRM_SIGNAL_LEVEL_H
