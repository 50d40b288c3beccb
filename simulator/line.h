#ifndef ORVIA_SIMULATOR_LINE_H
#define ORVIA_SIMULATOR_LINE_H

#include <algorithm>
#include <deque>
#include <optional>

#include "simulator/bytes.h"

namespace simulator {

/// One direction of a serial line: bytes follow one another at the baud rate, ten bits a byte.
/// Byte n of an unbroken stretch arrives n x 10 / baud behind its start, rounded up to whole
/// microseconds, so the rounding does not add up.
class Line {
 public:
    struct Arrival {
        Microseconds Due = 0;
        std::uint8_t Byte = 0;
    };

    /// Puts bytes on the line at `now`, behind those that are still under way. A baud rate of 0
    /// means that they arrive at once.
    void Send(Microseconds now, std::span<const std::uint8_t> bytes, int baud) {
        if (now >= free_) {
            start_ = now;
            sent_ = 0;
        }
        for (const std::uint8_t byte : bytes) {
            ++sent_;
            free_ =
                baud > 0 ? start_ + (sent_ * 10 * Second + baud - 1) / baud : std::max(now, free_);
            bytes_.push_back({free_, byte});
        }
    }

    [[nodiscard]] std::optional<Microseconds> NextDue() const {
        return bytes_.empty() ? std::nullopt : std::optional(bytes_.front().Due);
    }

    /// Takes the first byte off; there must be one.
    Arrival Take() {
        const Arrival first = bytes_.front();
        bytes_.pop_front();
        return first;
    }

 private:
    std::deque<Arrival> bytes_;
    Microseconds start_ = 0;
    Microseconds free_ = 0;
    std::int64_t sent_ = 0;
};

}  // namespace simulator

#endif  // ORVIA_SIMULATOR_LINE_H
