#ifndef ORVIA_RECORDS_CLIENT_WINDOW_H
#define ORVIA_RECORDS_CLIENT_WINDOW_H

#include <cstdint>
#include <string>

#include "common/flag.h"
#include "logger/logger_state.h"

/// A client window, as the operations and the sampling machines see it.
class ClientWindow {
 public:
    virtual ~ClientWindow() = default;

    /// True while it is the active child of the main window.
    [[nodiscard]] virtual Flag IsActive() const = 0;
    /// Number of its radio in the book.
    [[nodiscard]] virtual std::int16_t ClientIndex() const = 0;
    /// Tells it the number of its radio.
    virtual void SetClientIndex(std::int16_t number) = 0;
    /// True once the last GetSettings read the logger's settings.
    [[nodiscard]] virtual Flag SettingsValid() const = 0;
    /// Title of the window, as it was set.
    [[nodiscard]] virtual std::string Caption() const = 0;
    /// Sets the title; every character of it shows as itself.
    virtual void SetCaption(const std::string& caption) = 0;
    /// What the logger time label shows.
    [[nodiscard]] virtual std::string LoggerTimeCaption() const = 0;

    /// True while only its title is left on the screen.
    [[nodiscard]] virtual bool IsMinimized() const = 0;
    /// Back from minimized to its normal size.
    virtual void RestoreWindow() = 0;
    /// Makes it the active child; the activation arrives as an event.
    virtual void GiveFocus() = 0;
    /// Icon of the window: 3 open, 4 open while the server radio addresses its radio.
    virtual void ShowIcon(std::uint8_t icon) = 0;
    /// Runs the unload steps and takes the window off the screen. The object stays until its last
    /// holder lets go.
    virtual void Unload() = 0;

    /// Blanks every reading and information label; touches no data.
    virtual void ResetDisplay() = 0;
    /// Reads the logger's status and shows what the record holds then; False when it did not
    /// answer.
    [[nodiscard]] virtual bool GetStatus() = 0;
    /// Records in the logger's memory, as last read.
    [[nodiscard]] virtual std::int32_t NumSamples() const = 0;
    /// Makes this logger the current one.
    virtual void ClientSetGlobalState() = 0;
    /// Takes the current logger over as this one.
    virtual void ClientGetGlobalState() = 0;
    /// Hands only the channel counts to the current logger.
    virtual void ClientSetNumChannels() = 0;
    /// Reads and shows the logger's clock; False when it did not answer.
    [[nodiscard]] virtual bool GetTime() = 0;
    /// Sets the logger's pulse counts to 0; False when it did not answer.
    [[nodiscard]] virtual bool ResetPulseAccs() = 0;
    /// Reads identity, settings, status and clock and shows them; False when the logger did not
    /// answer, with every label as it was.
    [[nodiscard]] virtual bool GetSettings() = 0;
    /// Files the newest sample and shows it.
    virtual void SetDP() = 0;
    /// Flow in the logger's units at a level in those of channel 1; `velocity` is filled in
    /// Manning's mode, else 0.
    [[nodiscard]] virtual double CalculateFlow(double level, double& velocity) const = 0;
    /// The points of its flow device, none for one that has no table.
    [[nodiscard]] virtual const FlowTable& FlowPoints() const = 0;
    /// Works out the decimals of flow and velocity from the settings.
    virtual void CalculateFlowVelPrecision() = 0;
    /// Fills the flow parameters in the flow mode, and hides them in any other.
    virtual void UpdateFlowModeDisplay() = 0;
};

#endif  // ORVIA_RECORDS_CLIENT_WINDOW_H
