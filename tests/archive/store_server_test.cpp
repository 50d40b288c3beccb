// The shared archive on its server: who is let in, several consoles at once, and its rows.

#include <array>
#include <thread>

#include "archive/server_fixture.h"

namespace testing_support {
namespace {

// ----- who is let in

TEST_F(ServerTest, AWrongPasswordIsRefusedAndTheRightOneIsNot) {
    EXPECT_EQ(TroubleOf([&] { As("guarded", "salami")->Open(); }), ArchiveTrouble::Refused);
    EXPECT_EQ(TroubleOf([&] { As("guarded")->Open(); }), ArchiveTrouble::Refused);
    const auto right = As("guarded", "sesame");
    right->Open();
    EXPECT_TRUE(right->IsOpen());
}

TEST_F(ServerTest, AUserThatIsBarredOrUnknownIsRefused) {
    EXPECT_EQ(TroubleOf([&] { As("barred")->Open(); }), ArchiveTrouble::Refused);
    EXPECT_EQ(TroubleOf([&] { As("nobody's")->Open(); }), ArchiveTrouble::Refused);
}

TEST_F(ServerTest, WordsOfThePlaceAreNoSettings) {
    const auto odd = With([](ServerArchiveOptions& options) {
        options.Place.Database = "x' user='administrator";
        options.Password = "\\' host=elsewhere '";
    });
    EXPECT_EQ(TroubleOf([&] { odd->Open(); }), ArchiveTrouble::Foreign);
}

TEST_F(ServerTest, WhereNoServerIsItIsAway) {
    const auto nowhere = With([](ServerArchiveOptions& options) { options.Place.Server = "/tmp"; });
    EXPECT_EQ(TroubleOf([&] { nowhere->Open(); }), ArchiveTrouble::Away);
    EXPECT_FALSE(nowhere->IsOpen());
}

TEST_F(ServerTest, ADatabaseWithoutAnArchiveIsForeign) {
    const QString empty = bench.Server().NewDatabase({});
    const auto open = [&](const QString& database) {
        return TroubleOf([&] {
            With([&](ServerArchiveOptions& options) {
                options.Place.Database = database.toStdString();
            })->Open();
        });
    };
    EXPECT_EQ(open(empty), ArchiveTrouble::Foreign);
    bench.Server().Drop(empty);
    EXPECT_EQ(open(empty), ArchiveTrouble::Foreign);
}

TEST_F(ServerTest, ANewerArchiveIsToldAndLeftAlone) {
    bench.Do(QStringLiteral("UPDATE orvia.about SET version = 99"));
    const auto other = bench.NewStore();
    EXPECT_EQ(TroubleOf([&] { other->Open(); }), ArchiveTrouble::Newer);
    EXPECT_FALSE(other->IsOpen());
}

TEST_F(ServerTest, WhoMayOnlyReadReadsAllAndWritesNothing) {
    File(1, 10, 3);
    const auto reader = As("reader");
    reader->Open();
    EXPECT_EQ(reader->Identity(), store->Identity());
    EXPECT_EQ(ReadSeries(*reader, reader->Loggers().at(0).Id).Records.size(), 3U);
    EXPECT_EQ(TroubleOf([&] { MergeBench(*reader).File({.Begin = 2, .Records = Records(20, 1)}); }),
              ArchiveTrouble::ReadOnly);
    ArchiveLogger logger{.Mac = {1}, .Name = "New"};
    EXPECT_EQ(TroubleOf([&] { reader->AddLogger(logger); }), ArchiveTrouble::ReadOnly);
    ArchiveRound round;
    EXPECT_EQ(TroubleOf([&] { reader->KeepRound(round); }), ArchiveTrouble::ReadOnly);
    const std::array<ArchiveRecord, 1> records = {ArchiveRecord{.Place = 1}};
    EXPECT_EQ(TroubleOf([&] { reader->AddRecords(1, records); }), ArchiveTrouble::ReadOnly);
    ExpectWhole(3);
}

/// Consoles never need rights to make tables.
TEST_F(ServerTest, WhoFilesMakesNoTablesAndTakesNoneAway) {
    bench.Do(QStringLiteral("SET ROLE console"));
    EXPECT_ANY_THROW(bench.Do(QStringLiteral("CREATE TABLE orvia.songs(name text)")));
    EXPECT_ANY_THROW(bench.Do(QStringLiteral("DROP TABLE orvia.rounds")));
    EXPECT_ANY_THROW(bench.Do(QStringLiteral("TRUNCATE orvia.rounds")));
    EXPECT_ANY_THROW(bench.Do(QStringLiteral("UPDATE orvia.about SET version = 4")));
    EXPECT_ANY_THROW(bench.Do(QStringLiteral("SELECT orvia.add_year(2050)")));
    bench.Do(QStringLiteral("RESET ROLE"));
}

// ----- several at once

TEST_F(ServerTest, WhoFilesOneLoggerKeepsNobodyFromAnother) {
    const auto other = bench.NewStore();
    other->Open();
    ArchiveLogger first{.Mac = {1}, .Name = "First"};
    ArchiveLogger second{.Mac = {2}, .Name = "Second"};
    store->AddLogger(first);
    store->AddLogger(second);
    store->Begin();
    ASSERT_TRUE(store->FindLogger(first.Mac));
    other->Begin();
    EXPECT_EQ(other->LoggerOf(second.Id)->Name, "Second");
    EXPECT_EQ(TroubleOf([&] { static_cast<void>(other->LoggerOf(first.Id)); }),
              ArchiveTrouble::Locked);
    other->Rollback();
    store->Rollback();
    other->Begin();
    EXPECT_EQ(other->FindLogger(first.Mac)->Name, "First");
    other->Commit();
}

TEST_F(ServerTest, ReadingWaitsForNobody) {
    File(1, 10, 3);
    store->Begin();
    static_cast<void>(store->FindLogger(MergeBench::Mac));
    const auto other = bench.NewStore();
    other->Open();
    EXPECT_EQ(ReadSeries(*other, other->FindLogger(MergeBench::Mac)->Id).Records.size(), 3U);
    store->Rollback();
}

TEST_F(ServerTest, TwoThatMeetANewLoggerAtOnceAddItOnce) {
    const auto other = bench.NewStore();
    other->Open();
    store->Begin();
    ASSERT_FALSE(store->FindLogger(MergeBench::Mac));
    other->Begin();
    ASSERT_FALSE(other->FindLogger(MergeBench::Mac));
    ArchiveLogger one{.Mac = MergeBench::Mac, .Name = "Site"};
    ArchiveLogger same = one;
    store->AddLogger(one);
    EXPECT_EQ(TroubleOf([&] { other->AddLogger(same); }), ArchiveTrouble::Locked);
    store->Commit();
    other->Rollback();
    EXPECT_EQ(TroubleOf([&] { other->AddLogger(same); }), ArchiveTrouble::Locked);
    EXPECT_EQ(other->FindLogger(MergeBench::Mac)->Id, one.Id);
}

TEST_F(ServerTest, NoUploadIsHandedOverTwice) {
    ArchiveUpload upload{.Logger = 1, .Begin = 1, .Name = "Site", .Origin = "here/mac/1"};
    store->AddUpload(upload);
    ++upload.Begin;
    EXPECT_EQ(TroubleOf([&] { store->AddUpload(upload); }), ArchiveTrouble::Locked);
    upload.Origin.clear();
    store->AddUpload(upload);
}

/// A statement that takes too long is given up.
TEST_F(ServerTest, AStatementThatTakesTooLongIsGivenUp) {
    const auto hasty = With([](ServerArchiveOptions& options) {
        options.StatementMilliseconds = 50;
        options.LockMilliseconds = 0;  // for ever
    });
    hasty->Open();
    bench.Hold();
    ArchiveLogger logger{.Mac = {1}, .Name = "New"};
    EXPECT_EQ(TroubleOf([&] { hasty->AddLogger(logger); }), ArchiveTrouble::Locked);
    bench.Release();
    hasty->AddLogger(logger);
}

/// Does it until nobody else holds what it needs.
template <typename Act>
void Stubbornly(Act act) {
    while (true) {
        try {
            act();
            return;
        } catch (const ArchiveFault& fault) {
            if (fault.Kind() != ArchiveTrouble::Locked) {
                throw;
            }
        }
    }
}

ArchiveLogger LoggerFor(ArchiveStore& store, const std::array<std::uint8_t, 6>& mac) {
    auto logger = store.FindLogger(mac);
    if (!logger) {
        logger = ArchiveLogger{.Mac = mac, .Name = "Site"};
        store.AddLogger(*logger);
    }
    return *logger;
}

/// Files an upload as a console does that comes back to what it finds locked.
void FileBesideOthers(ArchiveStore& store, const std::array<std::uint8_t, 6>& mac,
                      const HeldUpload& held) {
    constexpr std::size_t portion = 100;
    ArchiveUpload upload{.Begin = held.Begin};
    Stubbornly([&] {
        ArchiveTransaction transaction(store, ArchiveTransaction::Kind::Writing);
        upload.Logger = LoggerFor(store, mac).Id;
        store.AddUpload(upload);
        transaction.Commit();
    });
    SeriesMerge merge(store, upload.Id, held.Begin);
    AlikeCounter alike;
    for (std::size_t first = 0; first < held.Records.size(); first += portion) {
        std::vector<RecordIdentity> pending;
        for (std::size_t i = first; i < std::min(first + portion, held.Records.size()); ++i) {
            pending.push_back(IdentityOf(held.Records[i], alike.Next(held.Records[i])));
        }
        Stubbornly([&] {
            merge.Forget();
            ArchiveTransaction transaction(store, ArchiveTransaction::Kind::Writing);
            ArchiveLogger logger = LoggerFor(store, mac);
            merge.File(pending, logger);
            store.UpdateLogger(logger);
            transaction.Commit();
        });
    }
}

TEST_F(ServerTest, EightConsolesAtOnceLoseNothingAndDoubleNothing) {
    constexpr std::uint32_t Consoles = 8;
    constexpr std::uint32_t Each = 1500;
    constexpr std::uint32_t Shift = 200;
    const auto ownMac = [](std::uint32_t number) {
        return std::array<std::uint8_t, 6>{9, static_cast<std::uint8_t>(number)};
    };
    std::array<std::string, Consoles> faults;
    std::vector<std::thread> threads;
    for (std::uint32_t number = 0; number < Consoles; ++number) {
        threads.emplace_back([&, number] {
            try {
                const auto console = bench.NewStore();
                console->Open();
                FileBesideOthers(*console, ownMac(number),
                                 {.Begin = 1, .Records = Records(0, Each)});
                // Of this one all have read something, and each something else.
                FileBesideOthers(*console, MergeBench::Mac,
                                 {.Begin = 100 + number, .Records = Records(number * Shift, Each)});
            } catch (const std::exception& fault) {
                faults[number] = fault.what();
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(faults, (std::array<std::string, Consoles>()));
    for (std::uint32_t number = 0; number < Consoles; ++number) {
        EXPECT_EQ(store->FindLogger(ownMac(number))->Records, Each);
    }
    const auto rows = MergeBench(*store).Rows();
    ASSERT_EQ(rows.size(), Each + (Consoles - 1) * Shift);
    for (std::uint32_t i = 0; i < rows.size(); ++i) {
        ASSERT_EQ(rows[i].Time, TimeNumber(RecordAt(i).Time));
    }
    ExpectWhole(static_cast<std::int64_t>(Consoles * Each + rows.size()));
}

// ----- rows

TEST_F(ServerTest, RecordsOfAllYearsAndNoneStandInOneSeries) {
    constexpr std::uint32_t monthBits = 22;
    HeldUpload upload{.Begin = 1, .Records = {}};
    for (const std::uint32_t year : {26U, 99U, 0U, 25U, 85U, 27U, 10U}) {
        upload.Records.push_back(RecordAt(0));
        upload.Records.back().Time = PackedTimeOf(year * 12 << monthBits | 1U << 17);
    }
    MergeBench(*store).File(upload);
    const Series series = ReadSeries(*store, 1);
    ASSERT_EQ(series.Records.size(), upload.Records.size());
    for (std::size_t i = 0; i < upload.Records.size(); ++i) {
        EXPECT_EQ(series.Records[i].Record, upload.Records[i]);
    }
    EXPECT_GT(Count("records_other"), 0);
}

TEST_F(ServerTest, AYearThatIsAddedTakesItsRecordsWithIt) {
    HeldUpload upload{.Begin = 1, .Records = {}};
    for (std::uint32_t month = 0; month < 36; ++month) {
        upload.Records.push_back(RecordAt(0));
        upload.Records.back().Time = PackedTimeOf((70 * 12 + month) << 22 | 1U << 17);
    }
    MergeBench(*store).File(upload);
    EXPECT_EQ(Count("records_other"), 36);
    bench.Do(QStringLiteral("SELECT orvia.add_year(2071)"));
    EXPECT_EQ(Count("records_other"), 24);
    EXPECT_EQ(Count("records_2071"), 12);
    MergeBench(*store).File({.Begin = 2, .Records = upload.Records});
    ExpectWhole(36);
}

TEST_F(ServerTest, TheTablesMayBeMadeAgainAndKeepWhatTheyHold) {
    File(1, 10, 3);
    const std::string identity = store->Identity();
    bench.Do(QStringLiteral("REVOKE SELECT ON orvia.loggers FROM orvia_read"));
    bench.Server().MakeTables(bench.Database());
    EXPECT_EQ(store->Identity(), identity);
    const auto reader = As("reader");
    reader->Open();
    EXPECT_EQ(reader->Loggers().size(), 1U);
    ExpectWhole(3);
}

TEST_F(ServerTest, ACheckTellsWhatDoesNotHoldTogether) {
    File(1, 10, 3);
    EXPECT_TRUE(store->Check([] {}).empty());
    bench.Do(
        QStringLiteral("DELETE FROM orvia.records WHERE place IN "
                       "(SELECT max(place) FROM orvia.records)"));
    EXPECT_EQ(store->Check([] {}).size(), 1U);
    bench.Do(QStringLiteral("UPDATE orvia.records SET upload = 77"));
    EXPECT_EQ(store->Check([] {}).size(), 2U);
}

TEST_F(ServerTest, ABackUpIsTheServersOwnConcern) {
    EXPECT_EQ(TroubleOf([&] { store->BackUp("/nowhere/copy", [] {}); }), ArchiveTrouble::Other);
}

TEST_F(ServerTest, TheStampTellsThatAnotherConsoleHasChangedSomething) {
    const std::int64_t before = store->Stamp();
    EXPECT_EQ(store->Stamp(), before);
    const auto other = bench.NewStore();
    other->Open();
    ArchiveLogger logger{.Mac = {1}, .Name = "New"};
    other->AddLogger(logger);
    EXPECT_NE(store->Stamp(), before);
}

}  // namespace
}  // namespace testing_support
