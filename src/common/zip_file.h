#ifndef ORVIA_COMMON_ZIP_FILE_H
#define ORVIA_COMMON_ZIP_FILE_H

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

// Archives in the zip format, as far as a report needs it: every file is stored as it is, none is
// compressed, encrypted or a folder, and all of it stays below 4 GB.

/// A file of an archive. A slash in its name parts folders.
struct ZipEntry {
    std::string Name;  ///< in UTF-8
    std::string Contents;
};

/// A moment as an archive keeps it: years from 1980 to 2107, every second second.
struct ZipTime {
    int Year = 1980;
    int Month = 1;
    int Day = 1;
    int Hour = 0;
    int Minute = 0;
    int Second = 0;
};

/// Checksum of an archive's file: CRC-32, the polynomial 04C11DB7 with bits reversed.
[[nodiscard]] std::uint32_t ZipCrc(std::string_view bytes);

/// The bytes of an archive with these files, all of that moment.
[[nodiscard]] std::string ZipOf(std::span<const ZipEntry> entries, const ZipTime& time);

#endif  // ORVIA_COMMON_ZIP_FILE_H
