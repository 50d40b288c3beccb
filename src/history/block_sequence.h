#ifndef ORVIA_HISTORY_BLOCK_SEQUENCE_H
#define ORVIA_HISTORY_BLOCK_SEQUENCE_H

#include <cstdint>
#include <span>

#include "common/bytes.h"
#include "history/history_store.h"

/// What is asked of the logger: the second byte of the request.
enum class BlockRequest : std::uint8_t { First = 0, Next = 1, Repeat = 2 };

/// What a block is that came in.
enum class BlockKind {
    New,    ///< the block asked for
    Again,  ///< the last block once more: the request for the next one had not arrived
    Stale   ///< an answer to a request long given up, or one that nothing vouches for
};

/// Keeps the blocks of an upload in order over a link that loses requests and answers, and brings
/// some late. Blocks have no numbers; the logger steps on with each request for the next one that
/// reaches it. So it is asked for the next block only when its last one seems to be stored.
///
/// Each request given up may have left an answer on its way, which can come in the place of a later
/// one, its acknowledge in the place of a later one too. Such copies are counted. While there may
/// be one, a block that is stored already is taken for it and asked for again; each one that comes
/// leaves one less to come, so that a history which repeats itself, as behind a clock set back,
/// costs some requests and no records.
///
/// While there is none, the acknowledge of a request for the next block tells that the logger has
/// stepped on: what comes then is the next block, even if it is like the one before. Without that
/// acknowledge the last block once more says that it has not.
class BlockSequence {
 public:
    /// What to ask for next.
    [[nodiscard]] BlockRequest Wanted() const { return wanted_; }

    /// Notes that the wanted block was asked for, and whether the logger acknowledged that.
    void Asked(bool acknowledged);

    /// Notes that no good block came of it.
    void Failed();

    /// Judges a block that came of it. `stored` are the records so far, `block` holds `count` more
    /// of `channels` channels. After New and Again the next block is wanted, and New is taken as
    /// stored; after Stale the same one is.
    [[nodiscard]] BlockKind Judge(std::span<const std::uint8_t> block, int count, int channels,
                                  std::span<const HistoryRecord> stored);

 private:
    [[nodiscard]] BlockKind KindOfLastBlock();
    void TakeAsLast(std::span<const std::uint8_t> block);

    BlockRequest wanted_ = BlockRequest::First;
    bool begun_ = false;    ///< a request for the first block was acknowledged
    Bytes last_;            ///< the last block stored, empty before the first
    int asked_ = 0;         ///< requests since it was stored
    bool stepped_ = false;  ///< the logger is known to have stepped on since then
    int copies_ = 0;        ///< copies of the last block that may still be on their way
    int copiesAtNext_ = 0;  ///< the same when the next block was last asked for
    int cameAgain_ = 0;     ///< times that it came since then
    int olderCopies_ = 0;   ///< copies of blocks before it that may still be on their way
};

#endif  // ORVIA_HISTORY_BLOCK_SEQUENCE_H
