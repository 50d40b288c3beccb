#ifndef ORVIA_TRACE_TRACE_STORE_H
#define ORVIA_TRACE_TRACE_STORE_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <tuple>
#include <vector>

#include "records/link_listener.h"

/// What an entry of the trace is about.
enum class TraceEvent : std::uint8_t {
    Exchange,     ///< a request and what came in answer
    Unasked,      ///< bytes that came before anything was asked
    PortOpened,   ///< the bytes sent are the port's name and settings
    PortRefused,  ///< the same; those received are the reason
    PortClosed,
    PortLost  ///< its device is gone
};

/// A logger as the server radio is told of it.
struct TraceAddress {
    std::uint8_t Channel = 0;
    RadioAddress Mac = {};

    bool operator==(const TraceAddress&) const = default;
    bool operator<(const TraceAddress& other) const {
        return std::tie(Channel, Mac) < std::tie(other.Channel, other.Mac);
    }
};

/// One entry, of a fixed size; its bytes are elsewhere.
struct TraceRecord {
    std::uint64_t Start = 0;        ///< place of its bytes, counted from the very first ever kept
    std::int64_t Time = 0;          ///< local, in milliseconds since the year 2000 began
    std::int32_t AnswerAfter = -1;  ///< milliseconds to the first byte taken; -1 if none was
    std::uint32_t NotKept = 0;      ///< bytes received beyond those that are kept
    std::uint16_t Sent = 0;         ///< bytes kept; they come first
    std::uint16_t Taken = 0;        ///< bytes received that were looked at; they come next
    std::uint16_t Thrown = 0;       ///< bytes received that were thrown away; they come last
    std::int16_t Ticks = 0;         ///< how long a missing byte was awaited
    TraceEvent Event = TraceEvent::Exchange;
    LinkFinding Finding = LinkFinding::None;
    std::uint8_t Try = 1;
    std::uint8_t Tries = 1;
    std::uint8_t Channel = 0;
    RadioAddress Mac = {};

    /// The logger, of a request to one.
    [[nodiscard]] TraceAddress Address() const { return {Channel, Mac}; }
};
static_assert(sizeof(TraceRecord) == 40);

/// An entry with its bytes, as long as it is kept.
struct TraceEntry {
    const TraceRecord& Record;
    std::span<const std::uint8_t> Sent;
    std::span<const std::uint8_t> Taken;
    std::span<const std::uint8_t> Thrown;
};

/// The last entries of the trace, in memory set aside once and touched as it fills: a ring of
/// records and a ring of bytes. The oldest go when either is full. Entries are numbered from 1 in
/// the order in which they began, and keep their number.
class TraceStore {
 public:
    static constexpr std::size_t MostEntries = 100'000;
    static constexpr std::size_t MostBytes = 34'000'000;
    /// Bytes kept of one entry at most: more than the longest frame each way.
    static constexpr std::size_t MostOfOne = 2048;

    /// Room for so many entries, and for their bytes.
    explicit TraceStore(std::size_t entries = MostEntries, std::size_t bytes = MostBytes);

    /// Number of the oldest entry; equals End() when there is none.
    [[nodiscard]] std::uint64_t First() const { return first_; }
    /// Number that the next entry will have.
    [[nodiscard]] std::uint64_t End() const { return end_; }
    [[nodiscard]] bool Holds(std::uint64_t number) const {
        return number >= first_ && number < end_;
    }
    /// The entry of that number, which is held.
    [[nodiscard]] TraceEntry At(std::uint64_t number) const;
    /// Goes up with whatever changes.
    [[nodiscard]] std::uint64_t Changes() const { return changes_; }
    /// Memory set aside.
    [[nodiscard]] std::size_t Size() const;

    /// Begins an entry with the bytes sent; `record` tells all but its bytes.
    void Begin(TraceRecord record, std::span<const std::uint8_t> sent);
    /// Adds received bytes to the newest entry, of which there is one.
    void Receive(std::span<const std::uint8_t> bytes, bool thrown);
    /// The newest entry, to be changed; its sizes are not.
    [[nodiscard]] TraceRecord& Newest();

 private:
    [[nodiscard]] std::size_t Place(std::uint64_t number) const { return (number - 1) % entries_; }
    void MakeRoom();
    [[nodiscard]] std::uint16_t Append(std::span<const std::uint8_t> bytes);

    std::size_t entries_;
    std::size_t bytes_;
    std::vector<TraceRecord> records_;
    std::unique_ptr<std::uint8_t[]> arena_;
    std::uint64_t first_ = 1;
    std::uint64_t end_ = 1;
    std::uint64_t head_ = 0;  ///< place behind the last byte kept
    std::uint64_t changes_ = 0;
};

#endif  // ORVIA_TRACE_TRACE_STORE_H
