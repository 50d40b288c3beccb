#include "history/csv.h"

#include <algorithm>
#include <cstring>
#include <memory>

#include "common/file_rewrite.h"
#include "common/number_text.h"
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

char* PutRow(char* out, const HistoryTable::Row& row, bool singleColumn) {
    out = CopyTime(out, {row.Texts, row.Lengths[0]}, singleColumn);
    const char* text = row.Texts + row.Lengths[0];
    for (const std::uint16_t cell : row.Lengths.subspan(1)) {
        out = CopyCell(PutMark(out), text, cell);
        text += cell;
    }
    return Copy(out, LineEnd);
}

/// Bytes that the rows take at most in the file, with what is copied behind the last of them.
std::size_t RoomForRows(const HistoryTable& table) {
    // A time in two columns has a mark more.
    const auto marks = static_cast<std::size_t>(table.ColumnCount()) * FieldMark.size();
    const auto rows = static_cast<std::size_t>(table.RowCount());
    return table.TextRoom() + rows * (marks + LineEnd.size()) + HistoryTable::Overread;
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
    FileRewrite file(path);
    if (!file.IsReady()) {
        return false;
    }
    std::string head = contents.TitleLine;
    head += LineEnd;
    head += CsvHeadingLine(contents.Table, contents.SingleColumn);
    head += LineEnd;
    // The whole file at once, since it is written so; nothing of it needs to be zero before.
    const auto text =
        std::make_unique_for_overwrite<char[]>(head.size() + RoomForRows(contents.Table));
    char* end = Copy(text.get(), head);
    for (int row = 0; row < contents.Table.RowCount(); ++row) {
        bar.SetValue(row + 1);
        end = PutRow(end, contents.Table.RowAt(row), contents.SingleColumn);
    }
    return file.Take({text.get(), static_cast<std::size_t>(end - text.get())});
}
