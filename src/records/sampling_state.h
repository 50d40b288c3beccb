#ifndef ORVIA_RECORDS_SAMPLING_STATE_H
#define ORVIA_RECORDS_SAMPLING_STATE_H

#include <cstdint>

#include "common/flag.h"

// Values of ContinuousMode.
inline constexpr std::int16_t SamplingIdle = 0;
inline constexpr std::int16_t ContinuousFirstRequest = 1;
inline constexpr std::int16_t ContinuousSecondRequest = 2;
inline constexpr std::int16_t ContinuousRead = 3;
inline constexpr std::int16_t AutoUpdateStart = 4;
inline constexpr std::int16_t AutoUpdateFirstPass = 5;
inline constexpr std::int16_t AutoUpdateRunning = 6;

/// Counters and modes of the sampling machines.
struct Sampling {
    std::int16_t SampleTicks = 0;        ///< step counter of the machines
    std::int16_t SingleSampleTicks = 0;  ///< time left for a one-shot sample
    std::int16_t SingleSample = 0;       ///< 0 idle, 1 first request, 2 second request, 3 read
    std::int16_t ContinuousMode = SamplingIdle;
    Flag StopContinuous = False;  ///< asks the running mode to end
    Flag StepRuns = False;  ///< a machine's step is under way, perhaps waiting further up the stack
    std::int16_t ContinuousWindow = 0;  ///< slot of the window sampled continuously
    std::int16_t ContinuousClient = 0;  ///< its number in the book
    float NextAutoUpdate = 0;           ///< seconds since midnight
};

#endif  // ORVIA_RECORDS_SAMPLING_STATE_H
