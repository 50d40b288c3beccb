#ifndef ORVIA_ARCHIVE_QUOTED_CSV_H
#define ORVIA_ARCHIVE_QUOTED_CSV_H

#include <span>
#include <string>
#include <string_view>

// Comma-separated text as RFC 4180 has it, for other programs.

/// Adds a field: between quotes, those inside doubled, if it holds a comma, a quote or a line end.
void AddCsvField(std::string_view text, std::string& line);

/// Adds a line of fields, ended by CR LF.
void AddCsvLine(std::span<const std::string> fields, std::string& text);

#endif  // ORVIA_ARCHIVE_QUOTED_CSV_H
