#include "history/history_table.h"

#include <algorithm>
#include <cstring>
#include <numeric>
#include <utility>

#include "common/fault.h"

void HistoryTable::Reset(std::vector<std::string> headings, int rows) {
    headings_ = std::move(headings);
    starts_.clear();
    lengths_.clear();
    starts_.reserve(static_cast<std::size_t>(rows));
    lengths_.reserve(static_cast<std::size_t>(rows) * headings_.size());
    end_ = 0;
}

std::string_view HistoryTable::Text(int row, int column) const {
    const auto [texts, lengths] = RowAt(row);
    const auto before = lengths.first(static_cast<std::size_t>(column));
    return {texts + std::accumulate(before.begin(), before.end(), std::size_t{0}),
            lengths[before.size()]};
}

std::string_view HistoryTable::LongestText(int column) const {
    int longest = 0;
    std::uint16_t length = 0;
    auto at = static_cast<std::size_t>(column);
    for (int row = 0; row < RowCount(); ++row, at += headings_.size()) {
        if (lengths_[at] > length) {
            length = lengths_[at];
            longest = row;
        }
    }
    return length == 0 ? std::string_view() : Text(longest, column);
}

std::size_t HistoryTable::Memory() const {
    return chunks_.size() * ChunkSize + starts_.capacity() * sizeof(starts_[0]) +
           lengths_.capacity() * sizeof(lengths_[0]);
}

char* HistoryTable::BeginRow(std::size_t room) {
    if (room > ChunkSize) {
        throw Fault("row too long");
    }
    if (end_ % ChunkSize + room > ChunkSize) {
        end_ += ChunkSize - end_ % ChunkSize;
    }
    if (end_ / ChunkSize >= chunks_.size()) {
        chunks_.push_back(std::make_unique_for_overwrite<char[]>(ChunkSize + Overread));
    }
    char* const row = At(end_);
    row_ = row;
    cell_ = row;
    const std::size_t cells = starts_.size() * headings_.size();
    lengths_.resize(cells + headings_.size());
    length_ = &lengths_[cells];
    return row;
}

void HistoryTable::AddRow() {
    starts_.push_back(static_cast<std::uint32_t>(end_));
    end_ += static_cast<std::size_t>(cell_ - row_);
}

bool HistoryTable::RowRepeats() const {
    const std::size_t columns = headings_.size();
    const std::uint16_t* lengths = &lengths_[starts_.size() * columns];
    const char* texts = row_ + lengths[0];
    const auto size = static_cast<std::size_t>(cell_ - texts);
    if (starts_.empty()) {
        return size == 0;
    }
    const std::uint16_t* before = lengths - columns;
    return std::equal(lengths + 1, lengths + columns, before + 1) &&
           std::memcmp(texts, At(starts_.back()) + before[0], size) == 0;
}
