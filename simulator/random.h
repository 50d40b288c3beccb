#ifndef ORVIA_SIMULATOR_RANDOM_H
#define ORVIA_SIMULATOR_RANDOM_H

#include <cstdint>

namespace simulator {

/// A well-mixed number from `seed` and `index` (the finalizer of SplitMix64, Steele and others,
/// 2014): the same pair gives the same number on every machine.
[[nodiscard]] inline std::uint64_t Mixed(std::uint64_t seed, std::uint64_t index) {
    std::uint64_t z = seed + (index + 1) * 0x9E3779B97F4A7C15ULL;
    z = (z ^ z >> 30) * 0xBF58476D1CE4E5B9ULL;
    z = (z ^ z >> 27) * 0x94D049BB133111EBULL;
    return z ^ z >> 31;
}

/// The same as a number from 0 to just below 1.
[[nodiscard]] inline double MixedFraction(std::uint64_t seed, std::uint64_t index) {
    return static_cast<double>(Mixed(seed, index) >> 11) * 0x1.0p-53;
}

}  // namespace simulator

#endif  // ORVIA_SIMULATOR_RANDOM_H
