#ifndef ORVIA_ARCHIVE_FILED_ROWS_H
#define ORVIA_ARCHIVE_FILED_ROWS_H

#include <array>
#include <cstdint>
#include <string>

#include "platform/archive_store.h"

// The rows that an upload hangs on, wherever it comes from. Inside a transaction that writes.

/// The row of the logger with that address; made, under that name, if there is none.
[[nodiscard]] ArchiveLogger LoggerRowOf(ArchiveStore& store, const std::array<std::uint8_t, 6>& mac,
                                        const std::string& name);

/// The settings of a logger that are like these; settings that a logger has had already are not
/// kept twice.
[[nodiscard]] std::int64_t SettingsIdOf(ArchiveStore& store, std::int64_t logger,
                                        ArchiveSettings settings);

#endif  // ORVIA_ARCHIVE_FILED_ROWS_H
