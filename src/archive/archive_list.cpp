#include "archive/archive_list.h"

#include <array>
#include <compare>

#include "archive/archive_rows.h"
#include "common/mac_text.h"
#include "common/number_text.h"
#include "common/text.h"
#include "console/entry_texts.h"
#include "history/record_time.h"
#include "logger/date_text.h"

namespace {

std::string RecordText(const std::optional<ArchiveRecord>& record, const SystemClock& clock) {
    if (!record) {
        return {};
    }
    const auto time = PackedTimeOf(record->Time);
    RecordTimeTexts texts(clock);
    std::string text(texts.RoomFor(time), ' ');
    text.resize(static_cast<std::size_t>(texts.Write(text.data(), time) - text.data()));
    return text;
}

std::string TimeText(const LocalTime& time, const SystemClock& clock) {
    return cmd::ShortDateText(clock, time.Year, time.Month, time.Day) + " " + TwoDigits(time.Hour) +
           ":" + TwoDigits(time.Minute) + ":" + TwoDigits(time.Second);
}

/// None stands before all.
Moment MomentFor(const std::optional<ArchiveRecord>& record) {
    return record ? MomentOf(PackedTimeOf(record->Time)) : EarliestMoment - 1;
}

std::int64_t KeyOf(const LoggerLine& line, LoggerColumn column) {
    const LoggerSummary& summary = line.Summary;
    switch (column) {
        case LoggerColumn::First:
            return MomentFor(summary.First);
        case LoggerColumn::Last:
            return MomentFor(summary.Last);
        case LoggerColumn::Records:
            return summary.Logger.Records;
        case LoggerColumn::Gaps:
            return line.Gaps.value_or(-1);
        case LoggerColumn::Uploads:
            return summary.Logger.Uploads;
        case LoggerColumn::Size:
            return summary.SizeInBytes;
        default:
            return 0;
    }
}

std::string OutcomeText(const UploadLine& line) {
    if (!line.Upload.Outcome) {
        return line.Runs ? "running" : "killed";
    }
    switch (*line.Upload.Outcome) {
        case ArchiveOutcome::Complete:
            return "complete";
        case ArchiveOutcome::Stopped:
            return "stopped";
        default:
            return "failed";
    }
}

}  // namespace

std::string_view HeadingOf(LoggerColumn column) {
    static constexpr std::array<std::string_view, LoggerColumns> headings = {
        "Logger", "Radio", "First Record", "Last Record", "Records", "Gaps", "Uploads", "Size"};
    return headings[static_cast<std::size_t>(column)];
}

std::string TextOf(const LoggerLine& line, LoggerColumn column, const SystemClock& clock) {
    const LoggerSummary& summary = line.Summary;
    switch (column) {
        case LoggerColumn::Name:
            return LoggerLabel(summary.Logger.Name);
        case LoggerColumn::Mac:
            return MacText(summary.Logger.Mac);
        case LoggerColumn::First:
            return RecordText(summary.First, clock);
        case LoggerColumn::Last:
            return RecordText(summary.Last, clock);
        case LoggerColumn::Gaps:
            return line.Gaps ? IntegerToText(*line.Gaps) : "...";
        case LoggerColumn::Size:
            return SizeText(summary.SizeInBytes);
        default:
            return IntegerToText(KeyOf(line, column));
    }
}

bool StandsBefore(const LoggerLine& one, const LoggerLine& other, LoggerColumn column) {
    const ArchiveLogger& left = one.Summary.Logger;
    const ArchiveLogger& right = other.Summary.Logger;
    auto order = KeyOf(one, column) <=> KeyOf(other, column);
    if (std::is_eq(order) && column != LoggerColumn::Mac) {
        order = ToLower(LoggerLabel(left.Name)) <=> ToLower(LoggerLabel(right.Name));
    }
    return std::is_neq(order) ? std::is_lt(order) : left.Mac < right.Mac;
}

bool Matches(const LoggerLine& line, std::string_view text) {
    const std::string wanted = ToLower(text);
    const ArchiveLogger& logger = line.Summary.Logger;
    return ToLower(logger.Name).find(wanted) != std::string::npos ||
           ToLower(MacText(logger.Mac)).find(wanted) != std::string::npos;
}

std::string LoggerLabel(std::string_view name) {
    return KeptName(ShownName(name));
}

std::string_view HeadingOf(UploadColumn column) {
    static constexpr std::array<std::string_view, UploadColumns> headings = {
        "Begun", "Ended", "Outcome", "Received", "Of", "Firmware"};
    return headings[static_cast<std::size_t>(column)];
}

std::string TextOf(const UploadLine& line, UploadColumn column, const SystemClock& clock) {
    switch (column) {
        case UploadColumn::Begin:
            return TimeText(line.Begin, clock);
        case UploadColumn::End:
            return line.End ? TimeText(*line.End, clock) : std::string();
        case UploadColumn::Outcome:
            return OutcomeText(line);
        case UploadColumn::Received:
            return IntegerToText(line.Upload.Received);
        case UploadColumn::Said:
            return IntegerToText(line.Upload.Said);
        default:
            return IntegerToText(line.Upload.Firmware);
    }
}

std::string SizeText(std::int64_t bytes) {
    constexpr double step = 1024;
    static constexpr std::array<std::string_view, 3> units = {" KB", " MB", " GB"};
    if (bytes < static_cast<std::int64_t>(step)) {
        return IntegerToText(bytes) + " bytes";
    }
    double size = static_cast<double>(bytes) / step;
    std::size_t unit = 0;
    while (size >= step && unit + 1 < units.size()) {
        size /= step;
        ++unit;
    }
    return FormatFixed(size, 1).append(units[unit]);
}
