#include "collect/digest.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "collect/collect_words.h"
#include "collect/plan_settings.h"
#include "common/number_text.h"

namespace {

/// Gaps of one logger that are told one by one.
constexpr std::size_t MostGaps = 3;

class Digest {
 public:
    Digest(const DigestLimits& limits, std::vector<std::string>& lines)
        : limits_(limits), lines_(lines) {}

    void Take(const CollectedLogger& logger) {
        name_ = InOneLine(logger.Name);
        if (!logger.IsDone()) {
            Add(FailureText(logger));
        }
        const std::string clock = ClockText(logger);
        if (!clock.empty() && !logger.ClockSet.value_or(false)) {
            Add(clock);
        }
        TakeMemory(logger.Findings);
        TakeValues(logger);
        TakeGaps(logger.Findings);
    }

 private:
    void Add(const std::string& what) { lines_.push_back(name_ + ": " + what); }

    static std::string FailureText(const CollectedLogger& logger) {
        constexpr std::string_view Failed = "FAIL, ";
        CollectedLogger alone = logger;
        alone.ClockAhead.reset();
        alone.ClockSet.reset();
        return ResultText(alone).substr(Failed.size());
    }

    void TakeMemory(const LoggerFindings& findings) {
        const std::int64_t room = limits_.MemoryRecords;
        constexpr int WholePercent = 100;
        if (room <= 0 || findings.InMemory * WholePercent <= room * limits_.MemoryPercent) {
            return;
        }
        const std::int64_t percent =
            std::min<std::int64_t>(findings.InMemory * WholePercent / room, WholePercent);
        Add("its memory is " + IntegerToText(percent) + " % full" + WrapText(findings, room));
    }

    static std::string WrapText(const LoggerFindings& findings, std::int64_t room) {
        const std::int64_t left = room - findings.InMemory;
        const std::string then =
            findings.WrapsAround ? "the oldest records are lost" : "nothing more is recorded";
        if (left <= 0) {
            return ", and " + then;
        }
        if (!findings.RecordsADay || !findings.NewestMoment) {
            return "";
        }
        const double seconds = static_cast<double>(left) / *findings.RecordsADay * SecondsPerDay;
        if (seconds > static_cast<double>(LatestMoment - *findings.NewestMoment)) {
            return "";
        }
        const Moment when = *findings.NewestMoment + static_cast<Moment>(std::floor(seconds));
        return ", and at the present rate " + then + " from " + MomentText(when) + " on";
    }

    void TakeValues(const CollectedLogger& logger) {
        for (const FoundValue& value : logger.Findings.Newest) {
            const auto lowest = limits_.LowestValues.find({logger.Mac, value.Channel});
            if (lowest == limits_.LowestValues.end() || value.Value >= lowest->second) {
                continue;
            }
            Add("channel " + IntegerToText(value.Channel) + " is at " +
                FormatFixed(value.Value, value.Places) + " " + InOneLine(value.Unit) + ", below " +
                DoubleToText(lowest->second));
        }
    }

    void TakeGaps(const LoggerFindings& findings) {
        const std::size_t gaps = findings.Gaps.size();
        for (std::size_t i = 0; i < std::min(gaps, MostGaps); ++i) {
            Add("no records from " + MomentText(findings.Gaps[i].From) + " to " +
                MomentText(findings.Gaps[i].To));
        }
        if (gaps > MostGaps) {
            Add("further gaps: " + IntegerToText(static_cast<std::int64_t>(gaps - MostGaps)));
        }
    }

    const DigestLimits& limits_;
    std::vector<std::string>& lines_;
    std::string name_;
};

}  // namespace

std::vector<std::string> DigestLines(const std::vector<CollectedLogger>& round,
                                     const DigestLimits& limits) {
    std::vector<std::string> lines;
    Digest digest(limits, lines);
    for (const CollectedLogger& logger : round) {
        digest.Take(logger);
    }
    return lines;
}

std::string DigestText(const std::vector<CollectedLogger>& round, const DigestLimits& limits) {
    std::string text;
    for (const std::string& line : DigestLines(round, limits)) {
        text += line + "\n";
    }
    return text;
}
