#include "archive/quoted_csv.h"

void AddCsvField(std::string_view text, std::string& line) {
    if (text.find_first_of(",\"\r\n") == std::string_view::npos) {
        line += text;
        return;
    }
    line += '"';
    for (const char c : text) {
        line.append(c == '"' ? 2 : 1, c);
    }
    line += '"';
}

void AddCsvLine(std::span<const std::string> fields, std::string& text) {
    bool first = true;
    for (const std::string& field : fields) {
        if (!first) {
            text += ',';
        }
        first = false;
        AddCsvField(field, text);
    }
    text += "\r\n";
}
