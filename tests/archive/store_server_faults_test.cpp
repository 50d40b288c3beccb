// The shared archive when its connection, a commit, its server or the server's disk fails.

#include "archive/filing_bench.h"
#include "archive/server_fixture.h"

namespace testing_support {
namespace {

using ServerFaultsTest = ServerTest;

// ----- lost connections

TEST_F(ServerFaultsTest, AConnectionThatIsCutIsToldAndOpenConnectsAnew) {
    File(1, 10, 3);
    CutConnections();
    EXPECT_EQ(TroubleOf([&] { static_cast<void>(store->Loggers()); }), ArchiveTrouble::Away);
    EXPECT_FALSE(store->IsOpen());
    EXPECT_EQ(TroubleOf([&] { static_cast<void>(store->Stamp()); }), ArchiveTrouble::Away);
    store->Open();
    EXPECT_EQ(MergeBench(*store).Rows().size(), 3U);
}

TEST_F(ServerFaultsTest, WhatWasBegunOnAConnectionThatIsCutIsTakenBack) {
    File(1, 10, 3);
    {
        const ArchiveTransaction cut(*store, ArchiveTransaction::Kind::Writing);
        ArchiveLogger logger = *store->FindLogger(MergeBench::Mac);
        SeriesMerge merge(*store, 1, 1);
        merge.File(std::vector{IdentityOf(RecordAt(99), 1)}, logger);
        CutConnections();
        EXPECT_EQ(TroubleOf([&] { store->UpdateLogger(logger); }), ArchiveTrouble::Away);
    }
    store->Open();
    File(2, 10, 4);
    ExpectWhole(4);
}

TEST_F(ServerFaultsTest, ACommitThatIsCutIsToldAndMayBeDoneAgain) {
    SeriesMerge merge(*store, MergeBench(*store).Add(1), 1);
    const std::vector<RecordIdentity> records = {IdentityOf(RecordAt(10), 1),
                                                 IdentityOf(RecordAt(20), 1)};
    EXPECT_EQ(TroubleOf([&] {
                  ArchiveTransaction transaction(*store, ArchiveTransaction::Kind::Writing);
                  ArchiveLogger logger = *store->FindLogger(MergeBench::Mac);
                  merge.File(records, logger);
                  store->UpdateLogger(logger);
                  CutConnections();
                  transaction.Commit();
              }),
              ArchiveTrouble::Away);
    merge.Forget();
    store->Open();
    MergeBench(*store).FileIdentities(merge, records);
    ExpectWhole(2);
}

/// The clock that all go by is told without the server too, and goes on.
TEST_F(ServerFaultsTest, TheClockIsTheServersAndNeverFails) {
    const auto own = With([](ServerArchiveOptions& options) { options.Clock = nullptr; });
    own->Open();
    const std::int64_t there =
        bench.Do(QStringLiteral("SELECT (extract(epoch FROM clock_timestamp()) * 1000)::bigint"))
            .toLongLong();
    EXPECT_NEAR(static_cast<double>(own->Now()), static_cast<double>(there), 5000);
    CutConnections();
    EXPECT_EQ(TroubleOf([&] { static_cast<void>(own->Loggers()); }), ArchiveTrouble::Away);
    EXPECT_GE(own->Now(), there - 5000);
}

// ----- commits

TEST_F(ServerFaultsTest, ACommitThatFailsKeepsNothingAndIsTold) {
    File(1, 10, 3);
    bench.Do(
        QStringLiteral("CREATE FUNCTION refuse() RETURNS trigger LANGUAGE plpgsql AS "
                       "$$ BEGIN RAISE 'not today'; END $$"));
    bench.Do(
        QStringLiteral("CREATE CONSTRAINT TRIGGER late AFTER UPDATE ON orvia.loggers "
                       "DEFERRABLE INITIALLY DEFERRED "
                       "FOR EACH ROW EXECUTE FUNCTION refuse()"));
    EXPECT_EQ(TroubleOf([&] { File(2, 10, 9); }), ArchiveTrouble::Other);
    EXPECT_EQ(Count("records"), 3);
    bench.Do(QStringLiteral("DROP TRIGGER late ON orvia.loggers"));
    File(3, 10, 9);
    ExpectWhole(9);
}

/// The server itself would call it a success.
TEST_F(ServerFaultsTest, ACommitBehindAFaultIsNone) {
    ArchiveUpload upload{.Logger = 1, .Begin = 1, .Name = "Site"};
    store->Begin();
    store->AddUpload(upload);
    EXPECT_EQ(TroubleOf([&] { store->AddUpload(upload); }), ArchiveTrouble::Locked);
    EXPECT_THROW(store->Commit(), ArchiveFault);
    EXPECT_EQ(Count("uploads"), 0);
    store->Begin();
    store->AddUpload(upload);
    store->Commit();
    EXPECT_EQ(Count("uploads"), 1);
}

// ----- a server of its own that is stopped, or whose disk is full

class OwnServer {
 protected:
    PostgresServer server;
};

class OwnServerTest : protected OwnServer, public ServerTest {
 protected:
    OwnServerTest() : ServerTest(server) {}

    /// An upload of the whole memory, through the console's dialog; the boxes that it showed.
    [[nodiscard]] std::vector<BoxContent> Upload(std::uint32_t records,
                                                 std::function<void()> meanwhile = nullptr) {
        FilingBench filing(SiteWithHistory(records), store.get());
        if (meanwhile) {
            filing.In(2 * Second, std::move(meanwhile));
        }
        filing.Run();
        EXPECT_EQ(filing.bench.Store().HistoryCount(), static_cast<std::int32_t>(records));
        return filing.bench.Boxes();
    }
    void ExpectTold(const std::vector<BoxContent>& boxes, const std::string& words) {
        ASSERT_EQ(boxes.size(), 1U);
        EXPECT_NE(boxes[0].Text.find(words), std::string::npos) << boxes[0].Text;
    }
};

TEST_F(OwnServerTest, AServerThatIsStoppedInTheMiddleOfAFilingLosesNothingThatWasFiled) {
    for (const auto ending : {PostgresServer::Ending::Orderly, PostgresServer::Ending::Crash}) {
        std::int64_t filed = 0;
        const auto boxes = Upload(4000, [&] {
            filed = Count("records");
            server.Stop(ending);
        });
        ExpectTold(boxes, "server cannot be reached");
        server.Start();
        EXPECT_GT(filed, 0);
        EXPECT_GE(Count("records"), filed);
        EXPECT_LT(filed, 4000);
        EXPECT_TRUE(Upload(4000).empty());
        ExpectWhole(4000);
        store->Open();
        DeleteLogger(*store, store->Loggers().at(0).Id);
    }
}

TEST_F(OwnServerTest, AFullDiskIsToldAndWhatWasFiledIsThere) {
    EXPECT_TRUE(Upload(500).empty());
    server.FillDisk(true);
    const auto boxes = Upload(6000);
    server.FillDisk(false);
    ExpectTold(boxes, "disk is full");
    const std::int64_t kept = Count("records");
    EXPECT_GE(kept, 500);
    EXPECT_LT(kept, 6000);
    EXPECT_TRUE(Upload(6000).empty());
    ExpectWhole(6000);
}

}  // namespace
}  // namespace testing_support
