#ifndef ORVIA_SIMULATOR_TRACE_H
#define ORVIA_SIMULATOR_TRACE_H

#include <string>

#include "simulator/network.h"

namespace simulator {

/// An exchange in one line of words: when, who, what was asked, what went back, what went wrong.
/// "    12.004125  Tank North: 08 read 242 bytes at 8 -> FA, frame of 245".
[[nodiscard]] std::string TraceLine(const Exchange& exchange);

/// The request alone: "08 read 242 bytes at 8".
[[nodiscard]] std::string RequestText(const Exchange& exchange);

/// What went back: "FA, frame of 245", or "nothing".
[[nodiscard]] std::string ReplyText(const Exchange& exchange);

}  // namespace simulator

#endif  // ORVIA_SIMULATOR_TRACE_H
