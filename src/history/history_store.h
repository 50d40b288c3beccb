#ifndef ORVIA_HISTORY_HISTORY_STORE_H
#define ORVIA_HISTORY_HISTORY_STORE_H

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "logger/data_point.h"
#include "logger/sample_frame.h"

/// A record as the logger keeps it; docs/history.md has the bytes. Half the size of its text alone,
/// and a table of 200,000 is read faster from it than from texts.
struct HistoryRecord {
    std::array<std::uint8_t, cmd::PackedTimeSize> Time = {};  ///< packed
    std::array<std::uint16_t, AllChannels> Raw = {};          ///< unused channels are 0
    bool operator==(const HistoryRecord&) const = default;
};

using cmd::RecordSize;

/// The record at `first` of `block`, of a logger with `channels` (0 to 10) channels. One that runs
/// over the end of the block is a Fault.
[[nodiscard]] HistoryRecord ReadRecord(std::span<const std::uint8_t> block, int first,
                                       int channels);

/// The records of one upload, room for all of them taken once.
class HistoryStore {
 public:
    static constexpr std::int32_t MostRecords = 200'000;

    HistoryStore() { records_.reserve(MostRecords); }

    /// Records held, 0 to MostRecords.
    [[nodiscard]] std::int32_t HistoryCount() const {
        return static_cast<std::int32_t>(records_.size());
    }
    /// Whether no further record fits.
    [[nodiscard]] bool IsFull() const { return HistoryCount() == MostRecords; }
    /// Drops all records; the room stays taken.
    void Clear() { records_.clear(); }

    /// Adds a record; one more than MostRecords is a Fault.
    void Append(const HistoryRecord& record);

    /// All records, in the order in which they came.
    [[nodiscard]] std::span<const HistoryRecord> Records() const { return records_; }

 private:
    std::vector<HistoryRecord> records_;
};

#endif  // ORVIA_HISTORY_HISTORY_STORE_H
