#include "trace/trace_store.h"

#include <algorithm>

// Both rings are set aside untouched: a page of memory counts from its first use on.
TraceStore::TraceStore(std::size_t entries, std::size_t bytes)
    : entries_(std::max<std::size_t>(entries, 1)),
      bytes_(std::max(bytes, 2 * MostOfOne)),
      arena_(std::make_unique_for_overwrite<std::uint8_t[]>(bytes_)) {
    records_.reserve(entries_);
}

TraceEntry TraceStore::At(std::uint64_t number) const {
    const TraceRecord& record = records_[Place(number)];
    const std::span all(arena_.get() + record.Start % bytes_,
                        std::size_t{record.Sent} + record.Taken + record.Thrown);
    return {record, all.first(record.Sent), all.subspan(record.Sent, record.Taken),
            all.last(record.Thrown)};
}

std::size_t TraceStore::Size() const {
    return bytes_ + records_.capacity() * sizeof(TraceRecord);
}

TraceRecord& TraceStore::Newest() {
    ++changes_;
    return records_[Place(end_ - 1)];
}

/// An entry's bytes lie in one piece, so the rest of the ring is passed over where the longest
/// entry would not fit. What the new one may overwrite goes.
void TraceStore::MakeRoom() {
    const std::size_t left = bytes_ - head_ % bytes_;
    if (left < MostOfOne) {
        head_ += left;
    }
    if (end_ - first_ == entries_) {
        ++first_;
    }
    while (first_ < end_ && records_[Place(first_)].Start + bytes_ < head_ + MostOfOne) {
        ++first_;
    }
}

std::uint16_t TraceStore::Append(std::span<const std::uint8_t> bytes) {
    const std::size_t used = head_ - records_[Place(end_ - 1)].Start;
    const std::span kept = bytes.first(std::min(bytes.size(), MostOfOne - used));
    std::copy(kept.begin(), kept.end(), arena_.get() + head_ % bytes_);
    head_ += kept.size();
    return static_cast<std::uint16_t>(kept.size());
}

void TraceStore::Begin(TraceRecord record, std::span<const std::uint8_t> sent) {
    MakeRoom();
    record.Start = head_;
    const std::size_t place = Place(end_);
    if (place == records_.size()) {
        records_.push_back(record);
    } else {
        records_[place] = record;
    }
    ++end_;
    ++changes_;
    records_[place].Sent = Append(sent);
}

void TraceStore::Receive(std::span<const std::uint8_t> bytes, bool thrown) {
    TraceRecord& record = Newest();
    const std::uint16_t kept = Append(bytes);
    std::uint16_t& count = thrown ? record.Thrown : record.Taken;
    count = static_cast<std::uint16_t>(count + kept);
    record.NotKept += static_cast<std::uint32_t>(bytes.size() - kept);
}
