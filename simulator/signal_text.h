#ifndef ORVIA_SIMULATOR_SIGNAL_TEXT_H
#define ORVIA_SIMULATOR_SIGNAL_TEXT_H

#include <cstdint>
#include <string>
#include <string_view>

#include "simulator/signal.h"

namespace simulator {

/// A signal from its text, a kind and its numbers in any order: "level base=1.2 storm=2". Numbers
/// that are not given take their usual values; `noise` is a number of every kind.
struct SignalReading {
    SignalPtr Signal;  ///< null if the text is wrong
    std::string What;  ///< what is wrong with it
};

/// `weatherSeed` fixes the storms, `noiseSeed` the noise.
[[nodiscard]] SignalReading ParseSignal(std::string_view text, std::uint64_t weatherSeed,
                                        std::uint64_t noiseSeed);

}  // namespace simulator

#endif  // ORVIA_SIMULATOR_SIGNAL_TEXT_H
