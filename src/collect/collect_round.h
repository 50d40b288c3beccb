#ifndef ORVIA_COLLECT_COLLECT_ROUND_H
#define ORVIA_COLLECT_COLLECT_ROUND_H

#include <functional>
#include <string>
#include <vector>

#include "collect/collect_logger.h"

/// A walk over loggers that collects from one after the other. Who walks holds the link while a
/// step runs, and may let go of it between two steps.
///
/// Windows are taken in the order of their slots, minimized ones too; those that are opened or
/// closed by then count as they stand when their slot's turn comes. Of the book each entry has its
/// turn once, whatever becomes of its place.
class CollectRound {
 public:
    CollectRound(const CollectContext& context, const CollectChoice& choice,
                 const CollectWatch& watch)
        : context_(context), choice_(choice), watch_(watch) {}

    /// What is told of a logger: the beginning of its line, then the rest.
    using Tell = std::function<void(const std::string& text)>;

    /// Collects from the next logger; false if there was none left.
    [[nodiscard]] bool Step(const Tell& tell);

    /// What came of each, in turn; of one that was tried again, the last try.
    [[nodiscard]] const std::vector<CollectedLogger>& Results() const { return results_; }
    /// Puts those that failed in line once more; false if there are none.
    [[nodiscard]] bool TryFailedAgain();
    /// Loggers that have had their turn in this pass.
    [[nodiscard]] int Visited() const { return visited_; }

 private:
    /// A logger of the book, wherever its entry stands.
    struct Identity {
        std::string Name;
        std::uint8_t Channel = 0;
        MacAddress Mac = {};
        bool operator==(const Identity&) const = default;
    };

    [[nodiscard]] bool StepOnWindows(const Tell& tell);
    [[nodiscard]] bool StepOnBook(const Tell& tell);
    [[nodiscard]] bool StepOnFailed(const Tell& tell);
    void VisitEntry(int number, const Tell& tell);
    void Visit(const Target& target, const Tell& tell);
    void Keep(CollectedLogger result);
    [[nodiscard]] int NextEntry() const;
    [[nodiscard]] int EntryOf(const MacAddress& mac) const;
    [[nodiscard]] int LoggersInAll() const;

    const CollectContext context_;
    const CollectChoice choice_;
    const CollectWatch watch_;
    int slot_ = 0;  ///< the next to look at
    int visited_ = 0;
    std::vector<Identity> done_;  ///< entries of the book that have had their turn
    bool again_ = false;          ///< the pass is over those that failed
    std::vector<MacAddress> failed_;
    std::vector<CollectedLogger> results_;
};

#endif  // ORVIA_COLLECT_COLLECT_ROUND_H
