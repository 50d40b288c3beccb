#ifndef ORVIA_COMMON_BYTES_H
#define ORVIA_COMMON_BYTES_H

#include <cstdint>
#include <vector>

/// A byte buffer: counts from 0, and is presized to the exact length expected.
using Bytes = std::vector<std::uint8_t>;

#endif  // ORVIA_COMMON_BYTES_H
