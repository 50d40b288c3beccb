#ifndef ORVIA_TRACE_TRACE_FILTER_H
#define ORVIA_TRACE_TRACE_FILTER_H

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "trace/exchange_words.h"
#include "trace/link_recorder.h"

/// Which entries are wanted; as made, all of them.
struct TraceFilter {
    std::optional<TraceKind> Kind = {};
    std::optional<TraceAddress> Logger = {};
    bool FaultsOnly = false;
};

[[nodiscard]] bool Passes(const TraceEntry& entry, const TraceFilter& filter);

/// A kind that can be asked for, and how a list names it.
struct TraceKindName {
    TraceKind Kind;
    std::string_view Name;
};
[[nodiscard]] std::span<const TraceKindName> TraceKindNames();

/// The entries that a window shows: numbers in order, one for a row. It follows the trace in steps,
/// so that whoever shows rows can say before each what it does to them.
class TraceRows {
 public:
    explicit TraceRows(const TraceStore& store) : store_(store) {}

    /// Starts anew, without a row.
    void SetFilter(const TraceFilter& filter);

    [[nodiscard]] std::size_t Count() const { return numbers_.size(); }
    /// Number of the entry of a row.
    [[nodiscard]] std::uint64_t Number(std::size_t row) const { return numbers_[row]; }

    /// Rows at the top whose entries are no longer kept.
    [[nodiscard]] std::size_t Outdated() const;
    void DropOutdated(std::size_t count);
    /// Whether the last row is of the entry that was the newest: what came since may be in it.
    [[nodiscard]] bool LastMayHaveChanged() const;
    /// Whether that one is wanted no more.
    [[nodiscard]] bool LastFails() const;
    void DropLast() { numbers_.pop_back(); }
    /// What is wanted of the entries since.
    [[nodiscard]] std::vector<std::uint64_t> Fresh() const;
    void Append(const std::vector<std::uint64_t>& numbers);

    /// The next row behind `row` (before it, if not `forward`) whose line or bytes, in whatever
    /// case, hold `text`; goes on at the other end. Nothing if there is none.
    [[nodiscard]] std::optional<std::size_t> Find(const std::string& text,
                                                  std::optional<std::size_t> row, bool forward,
                                                  const LoggerNames& names) const;
    /// Rows as text, each a line, with its bytes below it if wanted.
    [[nodiscard]] std::string Text(const std::vector<std::size_t>& rows, bool hex,
                                   const LoggerNames& names) const;

 private:
    [[nodiscard]] bool Holds(std::size_t row, const std::string& lowered,
                             const LoggerNames& names) const;

    const TraceStore& store_;
    TraceFilter filter_;
    std::deque<std::uint64_t> numbers_;
    std::uint64_t newest_ = 0;  ///< the newest entry at the last look; 0 before the first
};

#endif  // ORVIA_TRACE_TRACE_FILTER_H
