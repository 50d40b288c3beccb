#ifndef ORVIA_CONSOLE_SIGNAL_TRAIL_H
#define ORVIA_CONSOLE_SIGNAL_TRAIL_H

#include <cstdint>
#include <deque>
#include <optional>
#include <string>

/// The levels of the last five minutes, for whoever aims an antenna: how it was when it stood
/// otherwise.
class SignalTrail {
 public:
    static constexpr std::int64_t Length = 300'000;  ///< milliseconds

    struct Reading {
        std::int64_t Time = 0;  ///< milliseconds, from any beginning
        std::optional<int> DBm = {};

        friend bool operator==(const Reading&, const Reading&) = default;
    };

    /// Adds a reading, newer than those before; what is older than the trail's length goes. A clock
    /// that was put back begins a new trail.
    void Add(const Reading& reading);
    void Clear() { readings_.clear(); }

    [[nodiscard]] const std::deque<Reading>& Readings() const { return readings_; }
    /// The strongest reading, the newest among equals; nothing without a level.
    [[nodiscard]] std::optional<Reading> Best() const;
    /// Whether the newest reading is as strong as any of the trail.
    [[nodiscard]] bool NewestIsBest() const;
    /// The best value and its age in words: "Best: -58 DBm, 42 s ago"; "Best: ---" without one.
    [[nodiscard]] std::string BestText() const;

 private:
    std::deque<Reading> readings_;
};

/// Where a reading stands on a picture of the trail, from its upper left corner: 0 to 1 each.
struct TrailPlace {
    double Across = 0;  ///< 1 is the newest
    double Down = 0;    ///< 1 is the weakest end of the bar
};
[[nodiscard]] TrailPlace PlaceOf(const SignalTrail::Reading& reading, std::int64_t newest);

#endif  // ORVIA_CONSOLE_SIGNAL_TRAIL_H
