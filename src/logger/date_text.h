#ifndef ORVIA_LOGGER_DATE_TEXT_H
#define ORVIA_LOGGER_DATE_TEXT_H

#include <string>

#include "platform/host.h"

namespace cmd {

/// The date in the system's own form, a year that stands in four digits at its end shortened to
/// the last two. `year` counts in full.
[[nodiscard]] std::string ShortDateText(const SystemClock& clock, int year, int month, int day);

}  // namespace cmd

#endif  // ORVIA_LOGGER_DATE_TEXT_H
