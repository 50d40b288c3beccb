#ifndef ORVIA_CLIENT_CLIENT_MODEL_H
#define ORVIA_CLIENT_CLIENT_MODEL_H

#include <cstdint>
#include <string>
#include <vector>

#include "client/bars.h"
#include "client/client_context.h"
#include "client/client_panel.h"
#include "client/client_record.h"
#include "client/client_surface.h"
#include "records/quiet_boxes.h"

/// One logger's window without its widgets: what it knows, what it shows and what it does. After
/// Unload everything still works on the record, and nothing is asked of the surface any more.
class ClientModel {
 public:
    ClientModel(ClientContext& context, ClientSurface& surface);

    /// Counts the window in and lays it out in the medium mode.
    void Load();
    /// Takes the number of its radio. With the first one comes the view that the window of that
    /// radio last had.
    void TakeClientIndex(std::int16_t number);

    /// The state of the window; `ClientIndex` is set from outside.
    ClientRecord Record;
    /// What the window shows, or showed when it was unloaded.
    [[nodiscard]] const ClientPanel& Panel() const { return panel_; }

    // Called by the operations on the logger; each is told at ClientWindow.
    void ResetDisplay();
    [[nodiscard]] bool GetStatus();
    [[nodiscard]] std::int32_t NumSamples() const;
    void ClientSetGlobalState();
    void ClientGetGlobalState();
    void ClientSetNumChannels();
    [[nodiscard]] bool GetTime();
    [[nodiscard]] bool ResetPulseAccs();
    [[nodiscard]] bool GetSettings();
    void SetDP();
    [[nodiscard]] double CalculateFlow(double level, double& velocity) const;
    void CalculateFlowVelPrecision();
    void UpdateFlowModeDisplay();

    // Events of the window.
    /// One of the five picture buttons.
    void ChooseDisplay(std::int16_t displayMode);
    /// The window's size changed, not to minimized.
    void Resize();
    /// The window itself was painted.
    void Paint();
    /// A tick of its timer: the rectangles to fill, none if nothing changed.
    [[nodiscard]] std::vector<BarFill> Tick();
    /// A press of the right button: shows the menu of the main window, once the window is active.
    void ShowClientPopup();
    /// Takes the window out of slot, book and list. Does nothing the second time.
    void Unload();

 private:
    void ArrangeDisplay();
    void CheckFlowDisplay();
    void KeepDisplay();
    [[nodiscard]] bool WaitUntilActive();
    [[nodiscard]] bool IsOnlyActive() const;
    void Show();

    ClientContext& context_;
    ClientSurface& surface_;
    ClientPanel panel_;
    Flag unloaded_ = False;
    QuietBoxes boxes_;  ///< silent once the window is unloaded: nobody is left to read them
};

#endif  // ORVIA_CLIENT_CLIENT_MODEL_H
