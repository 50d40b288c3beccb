#include "history/history_store.h"

#include <algorithm>

#include "common/fault.h"

HistoryRecord ReadRecord(std::span<const std::uint8_t> block, int first, int channels) {
    const auto bytes = cmd::RecordBytes(block, first, channels);
    HistoryRecord record;
    std::copy_n(bytes.begin(), record.Time.size(), record.Time.begin());
    for (int i = 0; i < channels; ++i) {
        record.Raw[static_cast<std::size_t>(i)] = cmd::CountOf(bytes, i);
    }
    return record;
}

void HistoryStore::Append(const HistoryRecord& record) {
    if (IsFull()) {
        throw Fault("history store is full");
    }
    records_.push_back(record);
}
