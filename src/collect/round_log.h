#ifndef ORVIA_COLLECT_ROUND_LOG_H
#define ORVIA_COLLECT_ROUND_LOG_H

#include <cstdint>
#include <deque>
#include <string>

#include "platform/archive_store.h"
#include "platform/host.h"

/// The log of rounds that run by themselves: each line with date and time, kept in the archive. One
/// that the archive does not take at the moment is held until it does.
class RoundLog {
 public:
    RoundLog(ArchiveStore& store, const SystemClock& clock) : store_(store), clock_(clock) {}

    /// A round begins.
    void Begin();
    /// Adds to the log of the round; a new line begins with date and time.
    void Append(const std::string& text);
    /// How many loggers had their turn, and of how many all came.
    void Count(std::int64_t loggers, std::int64_t done);
    /// The round is over.
    void End(const std::string& digest);

    /// Brings what is not kept yet into the archive, if that takes it.
    void Keep();
    /// Whether something is not kept yet.
    [[nodiscard]] bool Owes() const { return !owed_.empty(); }

    /// The newest round; empty before the first of this run.
    [[nodiscard]] const std::string& Text() const { return newest_.Log; }

 private:
    struct Owed {
        int Number = 0;  ///< of the round, from 1
        ArchiveRound Round;
    };

    void Changed();

    ArchiveStore& store_;
    const SystemClock& clock_;
    ArchiveRound newest_;
    int number_ = 0;  ///< of the newest round
    bool lineBegins_ = true;
    std::deque<Owed> owed_;  ///< the oldest first; the last may be the one that runs
};

#endif  // ORVIA_COLLECT_ROUND_LOG_H
