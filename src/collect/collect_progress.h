#ifndef ORVIA_COLLECT_COLLECT_PROGRESS_H
#define ORVIA_COLLECT_COLLECT_PROGRESS_H

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>

/// How far the logger in hand is. It goes by ticks and not by the clock, which may be set
/// meanwhile.
class CollectProgress {
 public:
    /// A logger is taken in hand.
    void Begin(const std::string& name);
    /// So many records are expected of it, or more than was said.
    void Expect(std::int64_t records);
    /// So many have come.
    void Came(std::int64_t records) { came_ = records; }
    /// It is done with.
    void End();

    /// A tick of the console.
    void Tick();

    /// "Site 3: 4120 of 10000 records, 131 a second, 0:45 left"; empty while none is in hand.
    [[nodiscard]] std::string Text() const;

 private:
    /// Records a second over the last seconds; 0 while it cannot be told.
    [[nodiscard]] double Rate() const;

    std::string name_;
    bool runs_ = false;
    bool expects_ = false;
    std::int64_t expected_ = 0;
    std::int64_t came_ = 0;
    std::deque<std::int64_t> before_;  ///< what had come at each of the last ticks, oldest first
};

#endif  // ORVIA_COLLECT_COLLECT_PROGRESS_H
