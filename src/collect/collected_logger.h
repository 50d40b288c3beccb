#ifndef ORVIA_COLLECT_COLLECTED_LOGGER_H
#define ORVIA_COLLECT_COLLECTED_LOGGER_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "collect/logger_findings.h"
#include "records/address_book.h"

/// How far the collection from one logger came.
enum class CollectOutcome {
    Done,        ///< all of its records came
    NoEntry,     ///< its radio is in the address book no longer
    NotTuned,    ///< the server radio could not be tuned to it
    NoAnswer,    ///< it is silent
    NoSettings,  ///< its settings could not be read
    BrokeOff,    ///< the upload ended before its end
    Stopped,     ///< it was ended by the operator, or by the end of the program
    Full         ///< it has more records than one upload takes
};

/// What came of one logger.
struct CollectedLogger {
    std::string Name;
    MacAddress Mac = {};
    CollectOutcome Outcome = CollectOutcome::NoAnswer;
    std::int64_t Said = 0;                        ///< records that the logger said it has
    std::int64_t Received = 0;                    ///< records that came
    std::int64_t New = 0;                         ///< of those, that the archive had not held
    std::optional<std::int64_t> ClockAhead = {};  ///< seconds; nothing if it was not read
    std::optional<bool> ClockSet = {};            ///< whether it could be set, if it was to be
    std::optional<std::string> NotKept = {};      ///< why the archive did not take all of it
    std::vector<std::string> Told = {};           ///< what boxes would have said
    LoggerFindings Findings = {};

    /// Whether nothing of the logger is missing that it was asked for.
    [[nodiscard]] bool IsDone() const {
        return (Outcome == CollectOutcome::Done || Outcome == CollectOutcome::Full) && !NotKept;
    }
};

#endif  // ORVIA_COLLECT_COLLECTED_LOGGER_H
