#ifndef ORVIA_TRACE_SUPPORT_REPORT_H
#define ORVIA_TRACE_SUPPORT_REPORT_H

#include <string>
#include <string_view>
#include <vector>

#include "common/zip_file.h"
#include "platform/host.h"
#include "records/address_book.h"
#include "records/settings.h"
#include "trace/link_recorder.h"

// What support needs to see of a console, as an archive of texts. docs/trace.md tells what goes in.

/// What a report is made from.
struct SupportSource {
    std::string Version;  ///< of the console
    std::string System;   ///< and of what it runs on
    LocalTime Made;
    const Settings& SettingsRecord;
    const AddressBook& Book;
    const LinkRecorder& Recorder;
    std::string Log;  ///< of the last walk over all client windows; empty if there is none
};

/// The trace goes in from its newest exchange back, until its text is so long.
inline constexpr std::size_t MostTraceText = 8'000'000;

/// The files of a report. Without `names` loggers are numbered as they stand in the book, files
/// have no names, and the trace goes without its bytes: loggers tell their names in them.
[[nodiscard]] std::vector<ZipEntry> SupportReport(const SupportSource& source, bool names);

/// A path without the folders above its last part: ".../site.obk", or ".../(name).obk" without
/// `names`.
[[nodiscard]] std::string ShortPath(std::string_view path, bool names);

/// The text with each logger of the book that it names turned to "Logger 3". A name counts where
/// neither a letter nor a digit stands right before or behind it.
[[nodiscard]] std::string WithoutNames(std::string_view text, const AddressBook& book);

#endif  // ORVIA_TRACE_SUPPORT_REPORT_H
