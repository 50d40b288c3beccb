#include "simulator/history.h"

#include <algorithm>

namespace simulator {

namespace {

RecordTimes TimesInRun(const History::Run& run, std::uint32_t index) {
    const CivilSeconds stamp = run.First + run.Interval * static_cast<CivilSeconds>(index);
    return {stamp, static_cast<SiteSeconds>(stamp) - run.Shift};
}

}  // namespace

std::uint32_t History::RecordsOf(const Run& run, CivilSeconds clock) {
    const CivilSeconds last = run.Until ? std::min(clock, *run.Until) : clock;
    return last < run.First ? 0 : static_cast<std::uint32_t>((last - run.First) / run.Interval + 1);
}

void History::Begin(CivilSeconds clock, const Run& run) {
    End(clock);
    open_ = run;
}

void History::End(CivilSeconds clock) {
    if (!open_) {
        return;
    }
    const std::uint32_t records = RecordsOf(*open_, clock);
    if (records > 0) {
        ended_.push_back({*open_, records});
    }
    open_.reset();
}

void History::Clear() {
    ended_.clear();
    open_.reset();
}

std::uint32_t History::Count(CivilSeconds clock) const {
    std::uint32_t count = open_ ? RecordsOf(*open_, clock) : 0;
    for (const Ended& ended : ended_) {
        count += ended.Records;
    }
    return count;
}

RecordTimes History::TimesOf(std::uint32_t index) const {
    for (const Ended& ended : ended_) {
        if (index < ended.Records) {
            return TimesInRun(ended.Of, index);
        }
        index -= ended.Records;
    }
    return open_ ? TimesInRun(*open_, index) : RecordTimes{};
}

}  // namespace simulator
