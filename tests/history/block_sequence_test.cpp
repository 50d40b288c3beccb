#include "history/block_sequence.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <map>
#include <string>
#include <vector>

namespace {

constexpr int Channels = 1;
constexpr int RecordsPerBlock = 40;  // they fill it to its last byte
constexpr std::size_t BlockSize = 241;

enum class Lost { Request, Answer, Reply };

/// A logger with a block for each letter, a capital one differing from the small one in its last
/// record alone, asked until it has sent them all, over a link that loses
/// what it is told to.
class Uploaded {
 public:
    /// `lost` tells what befalls a request, by its number from 0.
    Uploaded(const std::string& blocks, const std::map<int, Lost>& lost) : blocks_(blocks) {
        for (int request = 0; Taken.size() < blocks.size() && request < MostRequests; ++request) {
            const auto fault = lost.find(request);
            fault == lost.end() ? Exchange() : Exchange(fault->second);
        }
    }

    std::string Taken;     ///< letters of the blocks stored
    std::string Requests;  ///< what was asked for

 private:
    static constexpr int MostRequests = 60;

    void Exchange() {
        Note();
        const Bytes block = Answer();
        sequence_.Asked(true);
        const char letter = blocks_.at(at_);
        if (sequence_.Judge(block, RecordsPerBlock, Channels, store_.Records()) == BlockKind::New) {
            for (int i = 0; i < RecordsPerBlock; ++i) {
                store_.Append(ReadRecord(block, 1 + i * RecordSize(Channels), Channels));
            }
            Taken += letter;
        }
    }

    void Exchange(Lost fault) {
        Note();
        if (fault != Lost::Request) {
            static_cast<void>(Answer());
        }
        sequence_.Asked(fault == Lost::Reply);
        sequence_.Failed();
    }

    void Note() { Requests += static_cast<char>('0' + static_cast<int>(sequence_.Wanted())); }

    /// Does what is asked for and gives the block.
    Bytes Answer() {
        if (sequence_.Wanted() == BlockRequest::First) {
            at_ = 0;
        } else if (sequence_.Wanted() == BlockRequest::Next) {
            ++at_;
        }
        Bytes block(BlockSize, 0xFF);
        block[0] = RecordsPerBlock;
        const char letter = blocks_.at(at_);
        std::fill(block.begin() + 1, block.end(), static_cast<std::uint8_t>(std::tolower(letter)));
        std::fill(block.end() - RecordSize(Channels), block.end(),
                  static_cast<std::uint8_t>(letter));
        return block;
    }

    std::string blocks_;
    std::size_t at_ = 0;
    HistoryStore store_;
    BlockSequence sequence_;
};

TEST(BlockSequence, AsksForOneBlockBehindTheOther) {
    const Uploaded upload("ABCD", {});
    EXPECT_EQ(upload.Requests, "0111");
    EXPECT_EQ(upload.Taken, "ABCD");
}

TEST(BlockSequence, LostReplyIsAskedForAgain) {
    const Uploaded upload("ABCD", {{1, Lost::Reply}});
    EXPECT_EQ(upload.Requests, "01211");
    EXPECT_EQ(upload.Taken, "ABCD");
}

TEST(BlockSequence, LastBlockBehindALostRequestCountsAsASuccess) {
    const Uploaded upload("ABCD", {{1, Lost::Request}});
    EXPECT_EQ(upload.Requests, "012111") << "the repeat brings A; then B is asked for once more";
    EXPECT_EQ(upload.Taken, "ABCD");
}

TEST(BlockSequence, BlockOfAnUploadBeforeIsNotTakenForTheFirst) {
    const Uploaded upload("ABCD", {{0, Lost::Request}});
    EXPECT_EQ(upload.Requests, "020111");
    EXPECT_EQ(upload.Taken, "ABCD");
}

TEST(BlockSequence, BlocksThatAreAlikeAreAllStored) {
    EXPECT_EQ(Uploaded("AAAA", {}).Taken, "AAAA");
}

TEST(BlockSequence, BlockLikeTheOneBeforeIsStoredThoughItsReplyWasLost) {
    const Uploaded upload("AABC", {{1, Lost::Reply}});
    EXPECT_EQ(upload.Requests, "01211");
    EXPECT_EQ(upload.Taken, "AABC") << "the acknowledge told that the logger had stepped on";
}

TEST(BlockSequence, HistoryThatRepeatsItselfComesWholeThoughAReplyWasLost) {
    for (int request = 0; request < 4; ++request) {
        const Uploaded upload("ABCABCABCD", {{request, Lost::Reply}});
        EXPECT_EQ(upload.Taken, "ABCABCABCD") << request;
        EXPECT_LE(upload.Requests.size(), 20U) << upload.Requests;
    }
}

TEST(BlockSequence, BlockThatDiffersFromAnOlderOneInItsLastRecordIsNoCopy) {
    for (int request = 0; request < 4; ++request) {
        for (const Lost lost : {Lost::Request, Lost::Answer, Lost::Reply}) {
            const std::map<int, Lost> twice = {{request, lost}, {request + 1, lost}};
            const Uploaded upload("abAdB", twice);
            EXPECT_EQ(upload.Taken, "abAdB");
            EXPECT_EQ(upload.Requests, Uploaded("abcde", twice).Requests);
        }
    }
}

TEST(BlockSequence, NoMoreThanFiveCopiesAreExpected) {
    std::map<int, Lost> lost;
    for (int request = 1; request < 10; ++request) {
        lost[request] = Lost::Request;
    }
    lost[11] = Lost::Request;
    const Uploaded upload("AB", lost);
    EXPECT_EQ(upload.Requests,
              "01"
              "222222222"
              "1"
              "222222"
              "1")
        << "eight repeats were lost, and the ninth came; of the next six five may be copies";
    EXPECT_EQ(upload.Taken, "AB");
}

TEST(BlockSequence, EveryLossOfTwoRequestsInARowLosesNothing) {
    for (int request = 0; request < 4; ++request) {
        for (const Lost first : {Lost::Request, Lost::Answer, Lost::Reply}) {
            for (const Lost second : {Lost::Request, Lost::Answer, Lost::Reply}) {
                const Uploaded upload("ABCDE", {{request, first}, {request + 1, second}});
                EXPECT_EQ(upload.Taken, "ABCDE") << upload.Requests;
            }
        }
    }
}

}  // namespace
