#include <random>

#include "archive/hand_over_bench.h"
#include "archive/stumbling_store.h"

namespace testing_support {
namespace {

/// Archives of two computers and, on any kind of store, the one that they share.
class HandOverTest : public StoreTest {
 protected:
    HandOverTest() {
        for (SqliteBench& bench_ : benches_) {
            locals.push_back(bench_.NewStore());
            locals.back()->Open();
        }
    }

    [[nodiscard]] ArchiveStore& Local(std::size_t number = 0) { return *locals[number]; }
    /// The shared archive's rows of the first logger.
    [[nodiscard]] WholeLogger Shared() {
        const auto all = Whole(*store);
        const auto found = all.find(MacOf(1));
        return found == all.end() ? WholeLogger() : found->second;
    }
    [[nodiscard]] std::int64_t Owed(std::size_t number = 0) {
        return Local(number).CountOwed(store->Identity());
    }
    std::vector<std::unique_ptr<ArchiveStore>> locals;
    int faults = 0;

 private:
    std::array<SqliteBench, 3> benches_;
};

[[nodiscard]] std::vector<HistoryRecord> Records(std::uint32_t from, std::uint32_t to) {
    std::vector<HistoryRecord> records;
    for (std::uint32_t time = from; time < to; ++time) {
        records.push_back(RecordAt(time));
    }
    return records;
}

TEST_P(HandOverTest, AnUploadIsThereWithAllThatIsKnownOfIt) {
    FileUpload(Local(), {.Begin = 1000, .Records = Records(1, 30), .Name = "Hill", .Image = 5});
    HandOverAll(Local(), *store, 7);
    EXPECT_EQ(Whole(*store), Whole(Local()));
    EXPECT_EQ(Shared().Records.size(), 29U);
    EXPECT_EQ(Owed(), 0);
    EXPECT_EQ(store->UploadsOf(store->Loggers().at(0).Id).at(0).Origin,
              Local().Identity() + "/00:13:A2:40:5F:01/1000");
}

TEST_P(HandOverTest, HandedOverTwiceItIsThereOnce) {
    FileUpload(Local(), {.Begin = 1000, .Records = Records(1, 30)});
    HandOverAll(Local(), *store, 7);
    const auto before = Whole(*store);
    HandOver hand(Local(), *store, 7);
    EXPECT_FALSE(hand.Portion());
    hand.Again();
    EXPECT_EQ(hand.Waiting(), 1);
    HandOverAll(Local(), *store, 11);
    EXPECT_EQ(Whole(*store), before);
    EXPECT_EQ(Owed(), 0);
}

TEST_P(HandOverTest, APortionIsBoundedAndTheRestFollows) {
    FileUpload(Local(), {.Begin = 1000, .Records = Records(1, 30)});
    HandOver hand(Local(), *store, 10);
    EXPECT_TRUE(hand.Portion());
    EXPECT_EQ(Shared().Count, 10);
    EXPECT_EQ(Shared().Uploads.size(), 1U);
    EXPECT_EQ(std::get<1>(Shared().Uploads.at(0)), std::nullopt);
    EXPECT_EQ(hand.Waiting(), 1);
    EXPECT_TRUE(hand.Portion());
    EXPECT_TRUE(hand.Portion());
    EXPECT_FALSE(hand.Portion());
    EXPECT_EQ(Shared().Count, 29);
    EXPECT_NE(std::get<1>(Shared().Uploads.at(0)), std::nullopt);
}

TEST_P(HandOverTest, AnUploadIsHandedOverAsItGrows) {
    RunningUpload upload(Local(), {.Begin = 1000, .Records = Records(1, 30)});
    upload.File(10);
    HandOver hand(Local(), *store, 4);
    while (hand.Portion()) {
    }
    EXPECT_EQ(Shared().Count, 10);
    EXPECT_EQ(std::get<1>(Shared().Uploads.at(0)), std::nullopt);
    upload.File(10);
    EXPECT_TRUE(hand.Portion());
    upload.File(10);  // while it is in hand
    upload.End();
    while (hand.Portion()) {
    }
    EXPECT_EQ(Whole(*store), Whole(Local()));
    EXPECT_EQ(Owed(), 0);
}

TEST_P(HandOverTest, AKilledUploadIsHandedOverWithoutAnEnd) {
    FileUpload(Local(), {.Begin = 1000, .Records = Records(1, 30), .Killed = true});
    HandOverAll(Local(), *store);
    EXPECT_EQ(std::get<1>(Shared().Uploads.at(0)), std::nullopt);
    EXPECT_EQ(Shared().Count, 29);
    EXPECT_EQ(Owed(), 0);
}

TEST_P(HandOverTest, AnUploadWithoutRecordsIsHandedOver) {
    FileUpload(Local(), {.Begin = 1000});
    HandOverAll(Local(), *store);
    EXPECT_EQ(Whole(*store), Whole(Local()));
    EXPECT_EQ(Shared().Uploads.size(), 1U);
}

TEST_P(HandOverTest, ALaterOneIsThereFirstAndTheEarlierOneTakesItsPlace) {
    FileUpload(Local(0), {.Begin = 1000, .Records = Records(1, 20), .Name = "Old"});
    FileUpload(Local(1), {.Begin = 2000, .Records = Records(10, 30), .Name = "New"});
    HandOverAll(Local(1), *store, 3);
    HandOverAll(Local(0), *store, 3);
    const WholeLogger whole = Shared();
    ASSERT_EQ(whole.Records.size(), 29U);
    EXPECT_EQ(std::get<3>(whole.Records[18]), 1000);
    EXPECT_EQ(std::get<3>(whole.Records[19]), 2000);
    EXPECT_EQ(whole.Name, "New");
}

TEST_P(HandOverTest, ABeginThatAnotherHasMovesByAThousandth) {
    for (const std::size_t number : {0U, 1U, 2U}) {
        const auto first = static_cast<std::uint32_t>(10 * number + 1);
        FileUpload(Local(number), {.Begin = 1000, .Records = Records(first, first + 10)});
        HandOverAll(Local(number), *store);
    }
    const WholeLogger whole = Shared();
    ASSERT_EQ(whole.Uploads.size(), 3U);
    EXPECT_EQ(std::get<0>(whole.Uploads[1]), 1001);
    EXPECT_EQ(std::get<0>(whole.Uploads[2]), 1002);
    EXPECT_EQ(whole.Count, 30);
    HandOver(Local(1), *store).Again();
    HandOverAll(Local(1), *store);
    EXPECT_EQ(Shared(), whole);
}

TEST_P(HandOverTest, AnotherServerGetsAllOfIt) {
    FileUpload(Local(), {.Begin = 1000, .Records = Records(1, 30)});
    HandOverAll(Local(), *store);
    EXPECT_EQ(Local().CountOwed(Local(2).Identity()), 1);
    HandOverAll(Local(), Local(2));
    EXPECT_EQ(Whole(Local(2)), Whole(*store));
    EXPECT_EQ(Owed(), 0);
}

TEST_P(HandOverTest, WhatCameFromElsewhereKeepsItsOrigin) {
    FileUpload(Local(0), {.Begin = 1000, .Records = Records(1, 30)});
    HandOverAll(Local(0), Local(1));
    HandOverAll(Local(1), *store);
    const auto before = Whole(*store);
    HandOverAll(Local(0), *store);
    EXPECT_EQ(Whole(*store), before);
}

TEST_P(HandOverTest, ALoggerDeletedHereMeanwhileIsLeftAsItIs) {
    FileUpload(Local(), {.Begin = 1000, .Records = Records(1, 30)});
    HandOver hand(Local(), *store, 10);
    ASSERT_TRUE(hand.Portion());
    DeleteLogger(Local(), Local().Loggers().at(0).Id);
    EXPECT_THROW(static_cast<void>(hand.Portion()), ArchiveFault);
    EXPECT_FALSE(hand.Portion());
    EXPECT_EQ(hand.Waiting(), 0);
    EXPECT_EQ(Shared().Count, 10);
}

/// Its number is used again by no other; a note of it would stay for ever.
TEST_P(HandOverTest, OfALoggerDeletedHereNothingIsNoted) {
    FileUpload(Local(), {.Begin = 1000, .Records = Records(1, 5)});
    StumblingStore here(Local());
    StumblingStore there(*store);
    HandOver hand(here, there, 10);
    int notes = 0;
    here.Stumble = [&](const std::string& call, StumblingStore::When) {
        notes += call == "NoteHandedOver" ? 1 : 0;
    };
    there.Stumble = [this](const std::string& call, StumblingStore::When when) {
        if (call == "Commit" && when == StumblingStore::When::Behind) {
            DeleteLogger(Local(), Local().Loggers().at(0).Id);
        }
    };
    EXPECT_TRUE(hand.Portion());
    EXPECT_EQ(Shared().Count, 4);
    EXPECT_EQ(notes, 0);
    EXPECT_FALSE(hand.Portion());
}

TEST_P(HandOverTest, ALoggerDeletedThereMeanwhileIsMadeAnew) {
    FileUpload(Local(), {.Begin = 1000, .Records = Records(1, 30)});
    HandOver hand(Local(), *store, 10);
    ASSERT_TRUE(hand.Portion());
    DeleteLogger(*store, store->Loggers().at(0).Id);
    EXPECT_THROW(static_cast<void>(hand.Portion()), ArchiveFault);
    while (hand.Waiting() > 0) {
        static_cast<void>(hand.Portion());
    }
    EXPECT_EQ(Whole(*store), Whole(Local()));
}

TEST_P(HandOverTest, ALoggerDeletedThereBehindItDoesNotComeBack) {
    FileUpload(Local(), {.Begin = 1000, .Records = Records(1, 30)});
    HandOverAll(Local(), *store);
    DeleteLogger(*store, store->Loggers().at(0).Id);
    HandOverAll(Local(), *store);
    EXPECT_TRUE(store->Loggers().empty());
    FileUpload(Local(), {.Begin = 2000, .Records = Records(25, 40)});
    HandOverAll(Local(), *store);
    EXPECT_EQ(Shared().Count, 10);
}

/// One that is refused does not keep the others back.
TEST_P(HandOverTest, WhatIsRefusedStandsAsideUntilTheRestIsThere) {
    FileUpload(Local(), {.Radio = MacOf(1), .Begin = 1000, .Records = Records(1, 30)});
    FileUpload(Local(), {.Radio = MacOf(2), .Begin = 2000, .Records = Records(1, 30)});
    StumblingStore shared(*store);
    HandOver hand(Local(), shared, 10);
    bool first = true;
    shared.Stumble = [&](const std::string& call, StumblingStore::When when) {
        if (call == "FindLogger" && when == StumblingStore::When::Before && first) {
            throw ArchiveFault(ArchiveTrouble::Other, "refused");
        }
    };
    EXPECT_THROW(static_cast<void>(hand.Portion()), ArchiveFault);
    first = false;
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(hand.Portion());
    }
    EXPECT_EQ(hand.Waiting(), 1);
    EXPECT_EQ(Whole(*store).count(MacOf(2)), 1U);
    EXPECT_FALSE(hand.Portion());
    EXPECT_TRUE(hand.Portion());
    EXPECT_EQ(Whole(*store).count(MacOf(1)), 1U);
}

// ----- whatever happens

/// Uploads of some loggers by three consoles, which overlap, repeat records, and lose some.
class History {
 public:
    explicit History(std::mt19937& random) : random_(random) {
        const int count = Pick(3, 14);
        for (int i = 0; i < count; ++i) {
            PlannedUpload upload{.Radio = MacOf(Pick(1, 2)), .Begin = 1000 + 10 * i};
            upload.Name = "Site " + std::to_string(Pick(1, 3));
            upload.Image = static_cast<std::uint8_t>(Pick(1, 2));
            upload.Killed = Pick(1, 5) == 1;
            const int records = Pick(0, 40);
            auto time = static_cast<std::uint32_t>(Pick(1, 30));
            for (int record = 0; record < records; ++record) {
                // Clocks stand, go on, and are set back.
                const int step = Pick(0, 9);
                time = step < 4 ? time : step < 9 ? time + 1 : 1 + time / 2;
                upload.Records.push_back(RecordAt(time, static_cast<std::uint16_t>(Pick(0, 1))));
            }
            Uploads.push_back(upload);
            Consoles.push_back(static_cast<std::size_t>(Pick(0, 2)));
        }
    }
    [[nodiscard]] int Pick(int from, int to) {
        return std::uniform_int_distribution<int>(from, to)(random_);
    }

    std::vector<PlannedUpload> Uploads;  ///< by their begin
    std::vector<std::size_t> Consoles;   ///< that made them

 private:
    std::mt19937& random_;
};

constexpr int Histories = 25;

TEST_P(HandOverTest, InAnyOrderItIsAsIfAllHadBeenFiledThere) {
    for (int seed = 1; seed <= bench->CasesOf(Histories); ++seed) {
        std::mt19937 random(static_cast<unsigned>(seed));
        History history(random);
        std::array<SqliteBench, 3> computers;
        std::vector<std::unique_ptr<ArchiveStore>> stores;
        for (SqliteBench& computer : computers) {
            stores.push_back(computer.NewStore());
            stores.back()->Open();
        }
        SqliteBench direct;
        const auto reference = direct.NewStore();
        reference->Open();
        const auto sharedBench = GetParam().Make();
        const auto shared = sharedBench->NewStore();
        shared->Open();
        std::vector<std::unique_ptr<HandOver>> hands;
        for (const auto& local : stores) {
            hands.push_back(std::make_unique<HandOver>(*local, *shared, history.Pick(1, 15)));
        }
        const auto some = [&] {
            for (int turns = history.Pick(0, 12); turns > 0; --turns) {
                static_cast<void>(hands[static_cast<std::size_t>(history.Pick(0, 2))]->Portion());
            }
        };
        for (std::size_t i = 0; i < history.Uploads.size(); ++i) {
            FileUpload(*reference, history.Uploads[i]);
            RunningUpload upload(*stores[history.Consoles[i]], history.Uploads[i]);
            while (upload.File(static_cast<std::size_t>(history.Pick(1, 20)))) {
                some();
            }
            upload.End();
            some();
        }
        for (const std::size_t last : {2U, 0U, 1U}) {
            while (hands[last]->Portion()) {
            }
        }
        ASSERT_EQ(Whole(*shared), Whole(*reference)) << "seed " << seed;
    }
}

/// Whatever stumbles, before it is done or behind it, at any call here or there.
TEST_P(HandOverTest, WhateverGoesWrongItIsThereOnce) {
    for (int seed = 1; seed <= bench->CasesOf(Histories); ++seed) {
        std::mt19937 random(static_cast<unsigned>(seed));
        History history(random);
        SqliteBench computer;
        const auto local = computer.NewStore();
        local->Open();
        const auto sharedBench = GetParam().Make();
        const auto shared = sharedBench->NewStore();
        shared->Open();
        StumblingStore here(*local);
        StumblingStore there(*shared);
        HandOver hand(here, there, history.Pick(4, 15));
        const std::string target = hand.Target();
        const auto stumble = [&](const char*, StumblingStore::When) {
            if (history.Pick(1, 60) == 1) {
                constexpr std::array Kinds = {ArchiveTrouble::Away, ArchiveTrouble::Locked,
                                              ArchiveTrouble::Full, ArchiveTrouble::Other};
                throw ArchiveFault(Kinds[static_cast<std::size_t>(history.Pick(0, 3))], "");
            }
        };
        here.Stumble = stumble;
        there.Stumble = stumble;
        const auto some = [&](int turns) {
            for (; turns > 0 && local->CountOwed(target) > 0; --turns) {
                try {
                    static_cast<void>(hand.Portion());
                } catch (const ArchiveFault&) {
                    ++faults;
                }
            }
        };
        for (const PlannedUpload& plan : history.Uploads) {
            RunningUpload upload(*local, plan);
            while (upload.File(static_cast<std::size_t>(history.Pick(1, 20)))) {
                some(history.Pick(0, 6));
            }
            upload.End();
        }
        some(2000);
        here.Stumble = nullptr;
        there.Stumble = nullptr;
        ASSERT_EQ(local->CountOwed(shared->Identity()), 0) << "seed " << seed;
        ASSERT_EQ(Whole(*shared), Whole(*local)) << "seed " << seed;
    }
    EXPECT_GT(faults, bench->CasesOf(Histories));
}

ORVIA_FOR_ALL_STORES(HandOverTest);

}  // namespace
}  // namespace testing_support
