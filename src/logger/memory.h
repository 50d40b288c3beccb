#ifndef ORVIA_LOGGER_MEMORY_H
#define ORVIA_LOGGER_MEMORY_H

#include <cstdint>
#include <span>

#include "common/bytes.h"
#include "logger/frame_exchange.h"

namespace cmd {

/// Reads `count` bytes of logger memory at `address` (24 bits) into `dest` from `start` on, which
/// is enlarged to hold them, keeping its contents. True when a reply echoed the address; a failed
/// read leaves `dest` enlarged but unfilled. Two attempts of three tries each.
[[nodiscard]] bool ReadLoggerMemory(FrameExchange& exchange, Bytes& dest, int start, int count,
                                    std::int32_t address);

/// Writes `count` bytes of `source` from `start` on to `address` (16 bits), three tries. True when
/// the logger acknowledged. Afterwards `address` holds the last address written: the request
/// carries both ends, and the caller's next piece follows on from there.
[[nodiscard]] bool WriteLoggerMemory(FrameExchange& exchange, std::span<const std::uint8_t> source,
                                     int start, int count, std::int32_t& address);

}  // namespace cmd

#endif  // ORVIA_LOGGER_MEMORY_H
