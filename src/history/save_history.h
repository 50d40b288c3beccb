#ifndef ORVIA_HISTORY_SAVE_HISTORY_H
#define ORVIA_HISTORY_SAVE_HISTORY_H

#include <cstdint>
#include <optional>
#include <string>

#include "platform/host.h"

// What surrounds the saving of the viewer's rows.

/// Asks where to save a file of the query's name. `lastFolder` is where the question starts, the
/// program's folder if it is empty, and takes the folder chosen. Nothing when cancelled.
[[nodiscard]] std::optional<std::string> AskForFile(FileQuery query, const Host& host,
                                                    std::string& lastFolder);

/// Asks so for the file of rows, under a default name for the logger.
[[nodiscard]] std::optional<std::string> AskForCsvFile(const std::string& loggerName,
                                                       const Host& host, std::string& lastFolder);

/// Largest value of the bar while `rows` rows are saved; its smallest is 1.
[[nodiscard]] std::int32_t SaveBarMaximum(int rows);

// The setting that keeps date and time in one column of the file: empty or "Yes".
[[nodiscard]] bool IsSingleColumn(const std::string& setting);
[[nodiscard]] std::string SingleColumnSetting(bool singleColumn);

#endif  // ORVIA_HISTORY_SAVE_HISTORY_H
