#ifndef ORVIA_ARCHIVE_SHARING_ROUNDS_H
#define ORVIA_ARCHIVE_SHARING_ROUNDS_H

#include <chrono>
#include <cstdint>
#include <exception>
#include <memory>
#include <optional>
#include <string>

#include "archive/hand_over.h"
#include "platform/sharing_stores.h"

/// How long the hand-over rests.
struct SharingPauses {
    std::chrono::milliseconds First{5'000};     ///< behind the first failure
    std::chrono::milliseconds Longest{60'000};  ///< each further one doubles it, up to this
    /// While all is there: then it looks whether the server still is, and whether another console
    /// has filed something.
    std::chrono::milliseconds Idle{30'000};
    /// The end of the program waits no longer for a server that keeps a call.
    std::chrono::milliseconds End{3'000};
};

/// What went wrong with an archive.
struct SharingTrouble {
    ArchiveTrouble Kind = ArchiveTrouble::Other;
    std::string Words;
};

/// Calls `act`; what went wrong, if something did.
template <typename Act>
[[nodiscard]] std::optional<SharingTrouble> TroubleIn(Act act) {
    try {
        act();
    } catch (const ArchiveFault& fault) {
        return SharingTrouble{fault.Kind(), fault.what()};
    } catch (const std::exception& fault) {
        return SharingTrouble{ArchiveTrouble::Other, fault.what()};
    }
    return std::nullopt;
}

/// A server, and the password to it.
struct SharingTarget {
    ServerPlace Place;
    std::string Password;
};

/// Rounds of the hand-over to one server: each goes on until nothing is left that the server takes.
/// Behind a round that failed all is begun anew, with new connections and behind a pause that
/// grows. All of it on one thread.
class SharingRounds {
 public:
    using Instant = std::chrono::steady_clock::time_point;

    /// What came of a turn.
    struct Result {
        bool Asked = false;    ///< the server was asked, which is not so within a pause
        bool More = false;     ///< the round goes on
        bool Reached = false;  ///< the server answers
        std::string Identity = {};
        std::optional<std::int64_t> Waiting = {};
        std::optional<SharingTrouble> Wrong = {};  ///< in this round so far, or in the last one
    };

    SharingRounds(const SharingStores& stores, const SharingPauses& pauses)
        : stores_(stores), pauses_(pauses) {}

    /// Another server from now on.
    void Aim(const SharingTarget& target);
    /// Has all handed over once more as soon as the server answers.
    void Again() { owesAgain_ = true; }
    /// Lets the pause be over.
    void Hurry() { next_ = {}; }
    /// Hands a portion over, or looks whether the server is there. `identity` is that of the
    /// server's archive as far as it is known.
    [[nodiscard]] Result Turn(const std::string& identity);
    /// When the server is asked again.
    [[nodiscard]] Instant Next() const { return next_; }
    /// Ends all connections.
    void Release();

 private:
    void Drop();
    void OpenLocal();
    void Connect(Result& result);
    void HandOverPortion(Result& result);
    void EndRound(Result& result);
    [[nodiscard]] std::optional<std::int64_t> CountWaiting(const std::string& identity);
    [[nodiscard]] bool IsTimeToCount();

    const SharingStores& stores_;
    const SharingPauses pauses_;
    SharingTarget target_;
    std::unique_ptr<ArchiveStore> local_;
    std::unique_ptr<ArchiveStore> server_;
    std::unique_ptr<HandOver> hand_;
    bool owesAgain_ = false;
    bool rests_ = true;                        ///< no round is under way
    std::optional<SharingTrouble> lately_;     ///< what went wrong with an upload of this round
    std::optional<SharingTrouble> lastRound_;  ///< the same of the last one
    std::chrono::milliseconds pause_{0};
    Instant next_;     ///< when the server is asked again
    Instant counted_;  ///< when what waits was counted
};

#endif  // ORVIA_ARCHIVE_SHARING_ROUNDS_H
