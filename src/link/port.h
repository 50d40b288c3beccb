#ifndef ORVIA_LINK_PORT_H
#define ORVIA_LINK_PORT_H

#include <cstdint>
#include <string>
#include <string_view>

#include "records/link.h"
#include "records/main_view.h"

namespace comm {

/// Ticks that any answer of the server radio may take.
inline constexpr std::int16_t RadioTicks = 5;
/// Ticks from the last exchange to the idle limit: five minutes.
inline constexpr int IdleLimitTicks = 3000;

/// Waits, with events running, until `wanted` bytes are in or `ticks` are over, and renews the
/// idle limit. Zero `wanted` is a pure pause. The first turn never blocks, so zero `ticks` runs
/// events once. Who waits looks at InBufferCount for the outcome.
///
/// It only sets `link.WaitTicks` and looks at it: whoever runs events must call SuperviseTick each
/// 100 ms, which counts it down, and without that a wait for bytes that never come does not end.
/// `link.ShuttingDown` ends a wait for bytes too; a pure pause always takes its time.
///
/// Who can do nothing with fewer than `together` bytes, though a single one ends the wait, is not
/// woken for each of them.
void WaitForBytes(Link& link, std::int16_t ticks, std::int16_t wanted, std::int16_t together = 1);

/// Pauses for `ticks`.
inline void Pause(Link& link, std::int16_t ticks) {
    WaitForBytes(link, ticks, 0);
}

/// The next byte, 0 to 255, or -1 when none came within `ticks`. `together` is how many are still
/// to come at least.
[[nodiscard]] std::int16_t ReadByteWait(Link& link, std::int16_t ticks, std::int16_t together = 1);

/// Sends each character as one byte.
void SendText(Link& link, std::string_view text);

/// The number in a port's name, from its fourth character on; a Fault if none stands there.
[[nodiscard]] int PortNumber(std::string_view portName);

/// Port settings for a baud rate: no parity, 8 data bits, 1 stop bit.
[[nodiscard]] std::string PortSettings(std::string_view baudRate);

/// Opens the port, its input empty. A port that is open already with the same settings stays so,
/// another one is closed first. False if the port cannot be opened.
[[nodiscard]] bool OpenPort(Link& link, MainView& view, int port, const std::string& settings);

/// Closes the port if it is open; never fails. One that lost its device stays so until it is
/// opened.
void ClosePort(Link& link);

/// Whether the device went away under the open port, which nobody has opened again since.
[[nodiscard]] bool DeviceLost(const Link& link);

/// A device that was pulled out has closed its port by itself: between two exchanges the link is
/// then disconnected. True if that was so.
bool NoticeLostDevice(Link& link);

}  // namespace comm

#endif  // ORVIA_LINK_PORT_H
