#ifndef ORVIA_LOGGER_DATA_POINT_H
#define ORVIA_LOGGER_DATA_POINT_H

#include <array>
#include <cstdint>
#include <string>

inline constexpr int AnalogChannels = 8;
inline constexpr int PulseChannels = 2;
inline constexpr int AllChannels = AnalogChannels + PulseChannels;

/// Raw count that marks a channel without a reading.
inline constexpr std::int32_t NoReading = -1;

/// One sample of a logger.
struct DataPoint {
    std::string Time;                                ///< the logger's time, empty without a sample
    std::array<std::int32_t, AllChannels> Raw = {};  ///< 0 to 7 analog, 8 and 9 pulse

    /// Puts the marks of a logger that had no sample: all channels -1, no time.
    void MarkNoSample() {
        Time.clear();
        Raw.fill(NoReading);
    }
};

#endif  // ORVIA_LOGGER_DATA_POINT_H
