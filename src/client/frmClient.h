#ifndef ORVIA_CLIENT_FRMCLIENT_H
#define ORVIA_CLIENT_FRMCLIENT_H

#include <QMdiSubWindow>
#include <QTimer>
#include <memory>
#include <string>

#include "client/client_context.h"
#include "client/client_model.h"
#include "client/client_surface.h"
#include "client/frmClientControls.h"
#include "records/client_window.h"

/// The child window of one logger. Closing it runs the unload steps and takes it out of the main
/// window; the object lives until its last holder lets go, since a click in a wait can close the
/// very window whose method is waiting.
class frmClient final : public QMdiSubWindow,
                        public ClientWindow,
                        public std::enable_shared_from_this<frmClient>,
                        private ClientSurface {
    Q_OBJECT

 public:
    /// Makes a loaded window; the main window puts it into its area and shows it. Its holders, and
    /// no parent, decide how long it lives.
    [[nodiscard]] static std::shared_ptr<frmClient> Make(ClientContext& context);

    [[nodiscard]] Flag IsActive() const override { return ToFlag(IsActiveChild()); }
    [[nodiscard]] std::int16_t ClientIndex() const override { return model_.Record.ClientIndex; }
    void SetClientIndex(std::int16_t number) override { model_.TakeClientIndex(number); }
    [[nodiscard]] Flag SettingsValid() const override { return model_.Record.SettingsValid; }
    [[nodiscard]] std::string Caption() const override { return caption_; }
    void SetCaption(const std::string& caption) override;
    [[nodiscard]] std::string LoggerTimeCaption() const override;

    [[nodiscard]] bool IsMinimized() const override { return isMinimized(); }
    void RestoreWindow() override { showNormal(); }
    void GiveFocus() override { TakeFocus(); }
    void ShowIcon(std::uint8_t icon) override;
    void Unload() override;

    void ResetDisplay() override { model_.ResetDisplay(); }
    [[nodiscard]] bool GetStatus() override;
    [[nodiscard]] std::int32_t NumSamples() const override { return model_.NumSamples(); }
    void ClientSetGlobalState() override { model_.ClientSetGlobalState(); }
    void ClientGetGlobalState() override { model_.ClientGetGlobalState(); }
    void ClientSetNumChannels() override { model_.ClientSetNumChannels(); }
    [[nodiscard]] bool GetTime() override;
    [[nodiscard]] bool ResetPulseAccs() override;
    [[nodiscard]] bool GetSettings() override;
    void SetDP() override { model_.SetDP(); }
    [[nodiscard]] double CalculateFlow(double level, double& velocity) const override;
    [[nodiscard]] const FlowTable& FlowPoints() const override {
        return model_.Record.LoggerState.FlowTable;
    }
    void CalculateFlowVelPrecision() override { model_.CalculateFlowVelPrecision(); }
    void UpdateFlowModeDisplay() override { model_.UpdateFlowModeDisplay(); }

    /// What the window knows and shows.
    [[nodiscard]] const ClientModel& Model() const { return model_; }

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;

 private:
    explicit frmClient(ClientContext& context);

    void ShowPanel(const ClientPanel& panel) override;
    void RepaintColumns() override { controls_.RepaintColumns(); }
    void TakeFocus() override;
    [[nodiscard]] bool IsActiveChild() const override;

    void PrepareWindow();
    void ConnectButtons();
    void PrepareTimer(int milliseconds);
    void WatchBars();
    void WatchPresses();
    void OnTimer1();
    void OnPaint();
    void ShowClientPopup();
    void FitWindow();

    QWidget* content_;
    frmClientControls controls_;
    ClientModel model_;
    QTimer Timer1_{this};
    std::string caption_;
    bool unloaded_ = false;
    std::shared_ptr<const bool> life_ = std::make_shared<const bool>(true);
};

#endif  // ORVIA_CLIENT_FRMCLIENT_H
