#include "history/history_store.h"

#include <algorithm>

#include "common/fault.h"
#include "history/record_time.h"

HistoryRecord ReadRecord(std::span<const std::uint8_t> block, int first, int channels) {
    if (channels < 0 || channels > AllChannels || first < 0 ||
        first + RecordSize(channels) > static_cast<int>(block.size())) {
        throw Fault("record outside the block");
    }
    const auto bytes = block.subspan(static_cast<std::size_t>(first));
    HistoryRecord record;
    std::copy_n(bytes.begin(), record.Time.size(), record.Time.begin());
    for (std::size_t i = 0; i < static_cast<std::size_t>(channels); ++i) {
        const std::size_t at = record.Time.size() + 2 * i;
        record.Raw[i] = static_cast<std::uint16_t>(bytes[at] | bytes[at + 1] << 8);
    }
    return record;
}

void HistoryStore::Append(const HistoryRecord& record) {
    if (IsFull()) {
        throw Fault("history store is full");
    }
    records_.push_back(record);
}

const HistoryRecord& HistoryStore::operator[](std::int32_t number) const {
    if (number < 0 || number >= HistoryCount()) {
        throw Fault("no such history record");
    }
    return records_[static_cast<std::size_t>(number)];
}

DataPoint HistoryStore::PointAt(std::int32_t number, const SystemClock& clock) const {
    const HistoryRecord& record = (*this)[number];
    DataPoint point;
    point.Time = RecordTimeTexts(clock).TextOf(record.Time);
    std::copy(record.Raw.begin(), record.Raw.end(), point.Raw.begin());
    return point;
}
