#ifndef ORVIA_ARCHIVE_DATE_FORMAT_H
#define ORVIA_ARCHIVE_DATE_FORMAT_H

#include <string>

#include "platform/host.h"

/// How the system writes a date, found out from one that it wrote: "M/d/yy", "dd.MM.yyyy";
/// "yyyy-MM-dd" if there is a letter or a digit of another script in it.
[[nodiscard]] std::string DateFormatOf(const SystemClock& clock);

#endif  // ORVIA_ARCHIVE_DATE_FORMAT_H
