#include "history/block_sequence.h"

#include <algorithm>
#include <vector>

namespace {

/// Requests after which an answer is no longer on its way; a request given up takes from seven
/// tenths of a second.
constexpr int MostCopies = 5;

/// Whether the records of `block` stand among those stored, one behind another.
bool IsStored(std::span<const std::uint8_t> block, int count, int channels,
              std::span<const HistoryRecord> stored) {
    const int size = RecordSize(channels);
    std::vector<HistoryRecord> records;
    for (int at = 1; count > 0 && at + size <= static_cast<int>(block.size()); at += size) {
        records.push_back(ReadRecord(block, at, channels));
        --count;
    }
    return !records.empty() && std::search(stored.begin(), stored.end(), records.begin(),
                                           records.end()) != stored.end();
}

}  // namespace

void BlockSequence::Asked(bool acknowledged) {
    ++asked_;
    if (wanted_ == BlockRequest::First) {
        begun_ = begun_ || acknowledged;
    } else if (wanted_ == BlockRequest::Next) {
        copiesAtNext_ = copies_;
        cameAgain_ = 0;
        stepped_ = acknowledged && copies_ == 0 && olderCopies_ == 0;
    }
}

void BlockSequence::Failed() {
    if (wanted_ == BlockRequest::Repeat && !last_.empty() && !stepped_) {
        copies_ = std::min(copies_ + 1, MostCopies);
    }
    wanted_ = BlockRequest::Repeat;
}

BlockKind BlockSequence::Judge(std::span<const std::uint8_t> block, int count, int channels,
                               std::span<const HistoryRecord> stored) {
    if (!begun_) {
        // The request for the first block may never have arrived. The logger has then repeated
        // the last block of another upload.
        wanted_ = BlockRequest::First;
        return BlockKind::Stale;
    }
    BlockKind kind = BlockKind::New;
    if (!last_.empty() && std::equal(block.begin(), block.end(), last_.begin(), last_.end())) {
        kind = KindOfLastBlock();
    } else if (olderCopies_ > 0 && IsStored(block, count, channels, stored)) {
        --olderCopies_;
        kind = BlockKind::Stale;
    }
    if (kind == BlockKind::New) {
        TakeAsLast(block);
    }
    wanted_ = kind == BlockKind::Stale ? BlockRequest::Repeat : BlockRequest::Next;
    return kind;
}

BlockKind BlockSequence::KindOfLastBlock() {
    if (stepped_) {
        // A logger whose clock stands still sends blocks that are alike.
        return BlockKind::New;
    }
    ++cameAgain_;
    if (wanted_ == BlockRequest::Next) {
        copies_ = std::max(copies_ - 1, 0);
        return BlockKind::Stale;
    }
    return cameAgain_ > copiesAtNext_ ? BlockKind::Again : BlockKind::Stale;
}

void BlockSequence::TakeAsLast(std::span<const std::uint8_t> block) {
    olderCopies_ = std::min(olderCopies_ + copies_, MostCopies);
    copies_ = std::min(asked_ - 1, MostCopies);
    asked_ = 0;
    stepped_ = false;
    last_.assign(block.begin(), block.end());
}
