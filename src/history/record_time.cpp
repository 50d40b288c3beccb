#include "history/record_time.h"

#include <algorithm>

#include "logger/date_text.h"

std::size_t RecordTimeTexts::RoomFor(const Packed& time) {
    return DateOf(time).size() + cmd::RecordClockLength;
}

char* RecordTimeTexts::Write(char* out, const Packed& time) {
    const std::string& date = DateOf(time);
    return cmd::WriteRecordClock(std::copy(date.begin(), date.end(), out),
                                 cmd::DecodePackedTime(time));
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
