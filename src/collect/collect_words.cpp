#include "collect/collect_words.h"

#include "archive/record_moment.h"
#include "common/number_text.h"
#include "common/text.h"

namespace {

/// "1234 of 5000 records, 96 new".
std::string PartText(const CollectedLogger& logger) {
    return IntegerToText(logger.Received) + " of " + CountOfRecords(logger.Said) + ", " +
           IntegerToText(logger.New) + " new";
}

std::string OutcomeText(const CollectedLogger& logger) {
    switch (logger.Outcome) {
        case CollectOutcome::Done:
            return logger.Received == 0 ? "no records"
                                        : CountOfRecords(logger.Received) + ", " +
                                              IntegerToText(logger.New) + " new";
        case CollectOutcome::Full:
            return PartText(logger) + ": one upload takes no more";
        case CollectOutcome::NoEntry:
            return "its radio is not in the address book";
        case CollectOutcome::NotTuned:
            return "the server radio could not be tuned to it";
        case CollectOutcome::NoAnswer:
            return "no answer";
        case CollectOutcome::NoSettings:
            return "its settings could not be read";
        case CollectOutcome::Stopped:
            return "stopped behind " + PartText(logger);
        default:
            return "the upload broke off behind " + PartText(logger);
    }
}

std::string TwoParts(std::int64_t whole, const char* unit, std::int64_t rest,
                     const char* restUnit) {
    return IntegerToText(whole) + " " + unit +
           (rest == 0 ? "" : " " + IntegerToText(rest) + " " + restUnit);
}

}  // namespace

std::string BeginningOfLine(const std::string& name) {
    return "Collecting history from client window " + InOneLine(name) + "...";
}

std::string ResultText(const CollectedLogger& logger) {
    std::string text = logger.IsDone() ? "OK, " : "FAIL, ";
    text += OutcomeText(logger);
    if (logger.NotKept) {
        text += ", not kept: " + InOneLine(*logger.NotKept);
    }
    const std::string clock = ClockText(logger);
    if (!clock.empty()) {
        text += ", " + clock;
    }
    if (logger.ClockSet) {
        text += *logger.ClockSet ? ", clock set" : ", its clock could not be set";
    }
    return text;
}

std::string ClockText(const CollectedLogger& logger) {
    const std::int64_t ahead = logger.ClockAhead.value_or(0);
    if (ahead > ClockTolerance) {
        return "its clock is " + DurationText(ahead) + " ahead";
    }
    return ahead < -ClockTolerance ? "its clock is " + DurationText(-ahead) + " behind"
                                   : std::string();
}

std::string CountOfRecords(std::int64_t count) {
    return IntegerToText(count) + (count == 1 ? " record" : " records");
}

std::string DurationText(std::int64_t seconds) {
    if (seconds < SecondsPerMinute) {
        return IntegerToText(seconds) + " s";
    }
    if (seconds < SecondsPerHour) {
        return TwoParts(seconds / SecondsPerMinute, "min", seconds % SecondsPerMinute, "s");
    }
    if (seconds < SecondsPerDay) {
        return TwoParts(seconds / SecondsPerHour, "h", seconds % SecondsPerHour / SecondsPerMinute,
                        "min");
    }
    return TwoParts(seconds / SecondsPerDay, "d", seconds % SecondsPerDay / SecondsPerHour, "h");
}

std::string InOneLine(const std::string& text) {
    std::string line;
    for (const char character : text) {
        const bool blank = static_cast<unsigned char>(character) <= ' ';
        if (!blank) {
            line += character;
        } else if (!line.empty() && line.back() != ' ') {
            line += ' ';
        }
    }
    return std::string(TrimRight(line));
}
