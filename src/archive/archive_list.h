#ifndef ORVIA_ARCHIVE_ARCHIVE_LIST_H
#define ORVIA_ARCHIVE_ARCHIVE_LIST_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "archive/archive_reader.h"
#include "platform/host.h"

// What the lists of the archive's window show, as texts, and how their rows are ordered.

/// A logger of the list.
struct LoggerLine {
    LoggerSummary Summary;
    std::optional<std::int64_t> Gaps;  ///< nothing until they have been counted
};

enum class LoggerColumn { Name, Mac, First, Last, Records, Gaps, Uploads, Size };
inline constexpr int LoggerColumns = 8;

[[nodiscard]] std::string_view HeadingOf(LoggerColumn column);
/// Gaps that are not counted yet are "...".
[[nodiscard]] std::string TextOf(const LoggerLine& line, LoggerColumn column,
                                 const SystemClock& clock);
/// Whether one stands before the other, ascending; alike ones by name, then by address.
[[nodiscard]] bool StandsBefore(const LoggerLine& one, const LoggerLine& other,
                                LoggerColumn column);
/// Whether name or address has the text in it; capitals do not matter.
[[nodiscard]] bool Matches(const LoggerLine& line, std::string_view text);

/// A name as it is shown: in one line, and not all of a very long one.
[[nodiscard]] std::string LoggerLabel(std::string_view name);

/// An upload of the list, its times by the local clock.
struct UploadLine {
    ArchiveUpload Upload;
    LocalTime Begin;
    std::optional<LocalTime> End;
    bool Runs = false;
};

enum class UploadColumn { Begin, End, Outcome, Received, Said, Firmware };
inline constexpr int UploadColumns = 6;

[[nodiscard]] std::string_view HeadingOf(UploadColumn column);
/// One without an end that does not run was killed.
[[nodiscard]] std::string TextOf(const UploadLine& line, UploadColumn column,
                                 const SystemClock& clock);

/// "512 bytes", "1.5 KB", "20.0 MB", "3.2 GB".
[[nodiscard]] std::string SizeText(std::int64_t bytes);

#endif  // ORVIA_ARCHIVE_ARCHIVE_LIST_H
