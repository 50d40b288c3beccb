#include "history/csv.h"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <numeric>

#include "common/number_text.h"
#include "common/path_text.h"
#include "common/text.h"
#include "flow/flow_mode.h"
#include "flow/unit_names.h"

namespace {

constexpr std::string_view LineEnd = "\r\n";
constexpr std::string_view FieldMark = ", ";

bool IsPlain(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == ' ' ||
           c == '-' || c == '+';
}

std::string LengthText(double value, int unit) {
    return DoubleToText(value) + " " + config::LengthUnitName(unit, value != 1);
}

std::string ManningText(const LoggerRecord& logger) {
    return ",Mannings,Roughness= " + DoubleToText(logger.ManningsN) +
           ",Slope= " + DoubleToText(logger.ManningsS) + (logger.ManningsSType == 1 ? " %" : "") +
           ",Diameter= " + LengthText(logger.ManningsD, logger.ManningsDType);
}

std::string DeviceText(const LoggerRecord& logger) {
    switch (logger.FlowMode) {
        case ManningMode:
            return ManningText(logger);
        case FlumeMode:
            return ",Flume=" + logger.FlowDeviceName;
        case WeirMode:
            return ",Weir=" + logger.FlowDeviceName;
        case TableMode:
            return ",Table=" + logger.FlowDeviceName;
        default:
            return {};
    }
}

/// Gathers text and hands it on to a file in large pieces.
class TextWriter {
 public:
    explicit TextWriter(const std::string& path)
        : file_(NativePath(path), std::ios::binary | std::ios::trunc), room_(PieceSize, '\0') {}

    /// Where the next text goes, with room for `size` characters.
    [[nodiscard]] char* Begin(std::size_t size) {
        if (size > room_.size() - used_) {
            Flush();
            room_.resize(std::max(room_.size(), size));
        }
        return room_.data() + used_;
    }
    /// Ends the text that began there.
    void End(const char* end) { used_ = static_cast<std::size_t>(end - room_.data()); }

    void Put(std::string_view text) {
        End(std::copy(text.begin(), text.end(), Begin(text.size())));
    }

    [[nodiscard]] bool IsGood() const { return file_.good(); }

    /// Writes the rest; True if all that was put is in the file.
    [[nodiscard]] bool Close() {
        Flush();
        file_.close();
        return file_.good();
    }

 private:
    static constexpr std::size_t PieceSize = std::size_t{1} << 18U;

    void Flush() {
        file_.write(room_.data(), static_cast<std::streamsize>(used_));
        used_ = 0;
    }

    std::ofstream file_;
    std::string room_;
    std::size_t used_ = 0;
};

char* Copy(char* out, std::string_view text) {
    return std::copy(text.begin(), text.end(), out);
}

char* PutMark(char* out) {
    std::memcpy(out, FieldMark.data(), FieldMark.size());
    return out + FieldMark.size();
}

/// Copies a text of the table. Most are short, and a copy of a fixed size is the fastest.
char* CopyCell(char* out, const char* text, std::size_t length) {
    if (length <= HistoryTable::Overread) {
        std::memcpy(out, text, HistoryTable::Overread);
    } else {
        std::memcpy(out, text, length);
    }
    return out + length;
}

char* CopyTime(char* out, std::string_view time, bool singleColumn) {
    if (singleColumn) {
        return Copy(out, time);
    }
    const std::size_t blank = std::min(time.find(' '), time.size());
    out = PutMark(Copy(out, time.substr(0, blank)));
    return Copy(out, time.substr(std::min(blank + 1, time.size())));
}

void PutRow(TextWriter& file, const HistoryTable::Row& row, bool singleColumn) {
    const std::size_t length =
        std::accumulate(row.Lengths.begin(), row.Lengths.end(), std::size_t{0});
    char* out = file.Begin(length + (row.Lengths.size() + 1) * FieldMark.size() + LineEnd.size() +
                           HistoryTable::Overread);
    out = CopyTime(out, {row.Texts, row.Lengths[0]}, singleColumn);
    const char* text = row.Texts + row.Lengths[0];
    for (const std::uint16_t cell : row.Lengths.subspan(1)) {
        out = CopyCell(PutMark(out), text, cell);
        text += cell;
    }
    file.End(Copy(out, LineEnd));
}

}  // namespace

std::string DefaultCsvName(std::string_view loggerName, const LocalTime& now) {
    std::string name(Trim(loggerName));
    std::erase_if(name, [](char c) { return !IsPlain(c); });
    name = Trim(name);
    if (!name.empty()) {
        name += ' ';
    }
    std::string year = IntegerToText(now.Year);
    year.insert(0, 4 - std::min<std::size_t>(year.size(), 4), '0');
    return name + year + TwoDigits(now.Month) + TwoDigits(now.Day) + "-" + TwoDigits(now.Hour) +
           TwoDigits(now.Minute) + ".csv";
}

std::string CsvTitleLine(const LoggerRecord& logger, bool showFlow, const SystemClock& clock) {
    const LocalTime now = clock.Now();
    std::string line = logger.LoggerName + "," + clock.DateText(now) + "," + clock.TimeText(now);
    if (showFlow && logger.FlowMode != NoFlowMode) {
        line += ",Offset= " + LengthText(logger.LevelOffset, logger.LevelOffsetType);
        line += DeviceText(logger);
    }
    return line;
}

std::string CsvHeadingLine(const HistoryTable& table, bool singleColumn) {
    std::string line = singleColumn ? "Date Time" : "Date, Time";
    for (int column = 1; column < table.ColumnCount(); ++column) {
        line += FieldMark;
        line += table.Heading(column);
    }
    return line;
}

bool WriteCsv(const std::string& path, const CsvContents& contents, ProgressBar& bar) {
    // A pipe or a device would hold the writer up.
    if (!TakesFile(path)) {
        return false;
    }
    TextWriter file(path);
    file.Put(contents.TitleLine);
    file.Put(LineEnd);
    file.Put(CsvHeadingLine(contents.Table, contents.SingleColumn));
    file.Put(LineEnd);
    for (int row = 0; row < contents.Table.RowCount() && file.IsGood(); ++row) {
        bar.SetValue(row + 1);
        PutRow(file, contents.Table.RowAt(row), contents.SingleColumn);
    }
    return file.Close();
}
