#ifndef ORVIA_PLATFORM_MOMENTS_H
#define ORVIA_PLATFORM_MOMENTS_H

#include <cstdint>

#include "platform/host.h"

/// Milliseconds from the beginning of the year 2000 to a moment, and back; both local.
[[nodiscard]] std::int64_t ToMilliseconds(const LocalTime& time);
[[nodiscard]] LocalTime FromMilliseconds(std::int64_t milliseconds);

#endif  // ORVIA_PLATFORM_MOMENTS_H
