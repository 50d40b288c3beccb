#include "history/record_time.h"

#include <algorithm>

#include "logger/date_text.h"

namespace {

/// Length of " hh:mm:ss"; no field of a packed time has a third digit.
constexpr std::size_t ClockLength = 9;

char* WriteTwoDigits(char* out, char before, int value) {
    out[0] = before;
    out[1] = static_cast<char>('0' + value / 10);
    out[2] = static_cast<char>('0' + value % 10);
    return out + 3;
}

}  // namespace

std::string RecordTimeTexts::TextOf(const Packed& time) {
    std::string text(RoomFor(time), ' ');
    text.resize(static_cast<std::size_t>(Write(text.data(), time) - text.data()));
    return text;
}

std::size_t RecordTimeTexts::RoomFor(const Packed& time) {
    return DateOf(time).size() + ClockLength;
}

char* RecordTimeTexts::Write(char* out, const Packed& time) {
    const std::string& date = DateOf(time);
    const cmd::PackedTime fields = cmd::DecodePackedTime(time);
    out = std::copy(date.begin(), date.end(), out);
    out = WriteTwoDigits(out, ' ', fields.Hour);
    out = WriteTwoDigits(out, ':', fields.Minute);
    return WriteTwoDigits(out, ':', fields.Second);
}

const std::string& RecordTimeTexts::DateOf(const Packed& time) {
    const int day = time[2] >> 1 | time[3] << 7;
    if (day != lastDay_) {
        auto known = dates_.find(day);
        if (known == dates_.end()) {
            const cmd::PackedTime fields = cmd::DecodePackedTime(time);
            known =
                dates_
                    .emplace(day, cmd::ShortDateText(clock_, fields.Year, fields.Month, fields.Day))
                    .first;
        }
        lastDay_ = day;
        lastDate_ = &known->second;
    }
    return *lastDate_;
}
