#ifndef ORVIA_CONSOLE_SIGNAL_MONITOR_H
#define ORVIA_CONSOLE_SIGNAL_MONITOR_H

#include <cstdint>
#include <optional>
#include <string>

#include "console/logger_operations.h"
#include "console/signal_trail.h"

// Values of MonitorState.
inline constexpr std::int16_t MonitorNotStarted = 0;
inline constexpr std::int16_t MonitorFinished = 1;
inline constexpr std::int16_t MonitorRunning = 2;
inline constexpr std::int16_t MonitorStopAsked = 3;

/// State of the signal monitor. Its buttons talk to its loop through these alone.
struct SignalMonitor {
    std::int16_t ClientIndex = 0;  ///< number in the book of the radio in view
    std::int16_t MonitorState = MonitorNotStarted;
    bool NextRequested = false;  ///< cmdNext was pressed
};

/// What the monitor shows of a radio.
struct RadioTexts {
    std::string Name;
    std::string MacAddress;  ///< "00-A0-96-1F-2E-3D"
    std::string Channel;     ///< two hexadecimal digits
};

/// The window of the monitor, as its loop sees it.
class SignalView {
 public:
    virtual ~SignalView() = default;

    virtual void EnableNext(bool enable) = 0;
    /// Another radio comes into view, without a level yet.
    virtual void ShowRadio(const RadioTexts& texts) = 0;
    /// Shows a level in words and as a bar of that length, 0 to BarMaximum.
    virtual void ShowLevel(const std::string& text, int barLength) = 0;
    /// The same level with its time, for who keeps what came before.
    virtual void KeepReading(const SignalTrail::Reading& reading) { static_cast<void>(reading); }
    virtual void HideMonitor() = 0;
};

/// Brings the radio `ClientIndex` into view; an entry that is gone changes nothing.
void DisplayClient(const AddressBook& book, const SignalMonitor& monitor, SignalView& view);

/// One poll: has the logger send something and asks the server radio how strongly that came in.
/// Nothing if either failed, or the monitor is to stop.
[[nodiscard]] std::optional<int> ReadSignalLevel(const OperationContext& context,
                                                 const SignalMonitor& monitor);

/// Polls without pause until the monitor is to stop, then hides its window. Runs once for a
/// showing.
void RunMonitor(const OperationContext& context, SignalMonitor& monitor, SignalView& view);

/// "Exit". A monitor that does not run hides at once, one that runs at its next test.
void ExitMonitor(SignalMonitor& monitor, SignalView& view);

/// Whether the window may be closed by its frame; a running monitor ends itself instead.
[[nodiscard]] bool MayCloseMonitor(SignalMonitor& monitor);

/// Shows the monitor for a book entry and returns when it is gone.
class SignalMonitorDialog {
 public:
    virtual ~SignalMonitorDialog() = default;

    /// Runs the monitor, the entry `clientIndex` first in view, until it or the program ends.
    virtual void ShowMonitor(const OperationContext& context, std::int16_t clientIndex) = 0;
};

/// "Signal Level": watches the signal of the active window's radio. The link is held throughout.
void ShowSignalLevel(const OperationContext& context, SignalMonitorDialog& dialog);

#endif  // ORVIA_CONSOLE_SIGNAL_MONITOR_H
