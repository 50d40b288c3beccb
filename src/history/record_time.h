#ifndef ORVIA_HISTORY_RECORD_TIME_H
#define ORVIA_HISTORY_RECORD_TIME_H

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <unordered_map>

#include "logger/sample_frame.h"
#include "platform/host.h"

/// Texts of packed times. The date is asked of the system once for each day: its formats cost a
/// hundred times what the rest of the text does.
class RecordTimeTexts {
 public:
    using Packed = std::array<std::uint8_t, cmd::PackedTimeSize>;

    explicit RecordTimeTexts(const SystemClock& clock) : clock_(clock) {}

    /// Characters that the text of this time takes.
    [[nodiscard]] std::size_t RoomFor(const Packed& time);
    /// Writes the time as cmd::DecodeRecord gives it, date, blank, hours, minutes and seconds, into
    /// a buffer with that room; returns one past the last character.
    [[nodiscard]] char* Write(char* out, const Packed& time);

 private:
    [[nodiscard]] const std::string& DateOf(const Packed& time);

    const SystemClock& clock_;
    std::unordered_map<int, std::string> dates_;  ///< by day and month of the packed time
    int lastDay_ = -1;                            ///< records of one day stand together
    const std::string* lastDate_ = nullptr;
};

#endif  // ORVIA_HISTORY_RECORD_TIME_H
