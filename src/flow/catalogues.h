#ifndef ORVIA_FLOW_CATALOGUES_H
#define ORVIA_FLOW_CATALOGUES_H

#include <cstdint>
#include <functional>
#include <istream>
#include <string>
#include <string_view>

#include "common/numbered_array.h"

/// One record of a catalogue of primary devices.
struct FlowDeviceEntry {
    std::string Tag;           ///< upper case, at most 8 characters; the key kept in the logger
    std::string Name;          ///< shown in lists and in the client window
    std::int16_t IsTable = 0;  ///< 0 equation, 1 table
    std::string TableFile;     ///< table entries only: path as written
    double EqOffset = 0;       ///< equation entries only: A of Q = C (H + A)^B, feet and cfs
    double EqExponent = 0;     ///< B
    double EqMultiplier = 0;   ///< C
};

using FlowDeviceList = NumberedArray<FlowDeviceEntry>;

/// The devices that this installation knows, read once at the start.
struct Catalogues {
    FlowDeviceList FlumeList;
    FlowDeviceList WeirList;
};

/// Largest catalogue that is read, in bytes; a larger file counts as missing. A catalogue of
/// every device ever standardised is a thousandth of it.
inline constexpr std::uintmax_t LargestCatalogue = std::uintmax_t{4} * 1024 * 1024;

namespace config {

/// Reads a catalogue file into `list`, lines that do not fit passed over; a missing file leaves
/// it empty, and so does one that is no regular file or larger than LargestCatalogue. A number
/// that no double holds ends the reading with the entries so far. `appPath` is what relative
/// table files stand against. docs/flow-devices.md describes the format.
void ReadFlowDeviceList(std::string_view path, std::string_view appPath, FlowDeviceList& list);

/// Adds the entries of a catalogue of the user's own, whose relative table files stand against
/// `folder`. An entry whose tag `list` has already is passed over: a logger programmed with that
/// tag keeps its device. A missing file changes nothing.
void AddFlowDeviceList(std::string_view path, std::string_view folder, FlowDeviceList& list);

/// Whether the table file of that path, as written in a catalogue, can be read.
using TableProof = std::function<bool(std::string_view path)>;

/// The same for an open text, of which `limit` bytes are read at most.
void ReadFlowDeviceList(std::istream& input, std::uintmax_t limit, const TableProof& proof,
                        FlowDeviceList& list);

}  // namespace config

#endif  // ORVIA_FLOW_CATALOGUES_H
