#ifndef ORVIA_LINK_ENUMERATE_H
#define ORVIA_LINK_ENUMERATE_H

#include <cstdint>
#include <string>
#include <string_view>

#include "common/numbered_array.h"
#include "platform/host.h"

/// The list of the serial ports and modems that the system knows.
namespace Enumerate {

/// Entries "COM5 - USB Serial Port", numbered from 1.
using PortList = NumberedArray<std::string>;

/// Family of the operating system, as PlatformNt.
[[nodiscard]] std::int32_t GetPlatformId(const Registry& registry);

/// Lists USB serial ports, and on the NT family modems behind them. What cannot be read is left
/// out.
void EnumerateSerialPorts(Registry& registry, PortList& list);

/// Adds the port's name in upper case, " - " and `name`.
void AddPortEntry(PortList& list, std::string_view port, std::string_view name);

/// The first `length` characters of the text, up to the first 0 among them.
[[nodiscard]] std::string TrimNulls(std::string_view text, int length);

/// The port's name in an entry, in upper case: what stands before its first blank.
[[nodiscard]] std::string ExtractPort(std::string_view item);

/// Ports that the operator is offered: COM1 to COM16 in turn, each by the first entry of `found`
/// for it, else by its name alone.
[[nodiscard]] PortList OfferedPorts(const PortList& found);

}  // namespace Enumerate

#endif  // ORVIA_LINK_ENUMERATE_H
