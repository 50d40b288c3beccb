// The archive's file in every state that it can be found in.

#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <initializer_list>
#include <string>
#include <vector>

#include "archive/filing_bench.h"
#include "archive/other_process.h"
#include "archive/store_fixture.h"
#include "support/small_disk.h"

namespace testing_support {
namespace {

/// While it lives, the test has no more rights than any user.
class PlainUser {
 public:
    PlainUser() { EXPECT_TRUE(::geteuid() != 0 || ::seteuid(Nobody) == 0); }
    ~PlainUser() { EXPECT_EQ(::seteuid(before_), 0); }
    PlainUser(const PlainUser&) = delete;
    PlainUser& operator=(const PlainUser&) = delete;

 private:
    static constexpr uid_t Nobody = 65'534;
    const uid_t before_ = ::geteuid();
};

class TroubleTest : public testing::Test {
 protected:
    /// An upload; the boxes that it showed beside the told ones.
    [[nodiscard]] std::vector<BoxContent> Upload(std::uint32_t records = 100) {
        return Upload(*store, records);
    }
    [[nodiscard]] static std::vector<BoxContent> Upload(ArchiveStore& archive,
                                                        std::uint32_t records) {
        FilingBench filing(SiteWithHistory(records), &archive);
        filing.Run();
        EXPECT_EQ(filing.bench.Store().HistoryCount(), static_cast<std::int32_t>(records));
        EXPECT_EQ(filing.bench.FirstWrong(), -1);
        EXPECT_EQ(filing.Viewers, 1);
        return filing.bench.Boxes();
    }

    /// An upload that is there as ever, with one box that says `words`.
    void ExpectTold(const std::string& words, std::uint32_t records = 100) {
        const auto boxes = Upload(records);
        ASSERT_EQ(boxes.size(), 1U);
        EXPECT_EQ(boxes[0].Title, "Archive");
        EXPECT_NE(boxes[0].Text.find(words), std::string::npos) << boxes[0].Text;
        EXPECT_NE(boxes[0].Text.find("archive.sqlite"), std::string::npos) << boxes[0].Text;
    }

    [[nodiscard]] QByteArray Contents() const {
        QFile in(bench.File());
        return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray();
    }
    void Put(const QByteArray& contents) const {
        QDir().mkpath(QFileInfo(bench.File()).path());
        QFile out(bench.File());
        ASSERT_TRUE(out.open(QIODevice::WriteOnly | QIODevice::Truncate));
        out.write(contents);
    }
    void ExpectToldAndLeftAlone(const QByteArray& contents, const std::string& words) {
        Put(contents);
        ExpectTold(words);
        EXPECT_EQ(Contents(), contents);
    }

    /// A whole archive of some size, closed.
    void MakeArchive() {
        EXPECT_TRUE(Upload(1000).empty());
        store->Close();
    }
    [[nodiscard]] std::int64_t RecordsKept() {
        const auto other = bench.NewStore();
        other->Open();
        const auto loggers = other->Loggers();
        return loggers.empty() ? 0 : loggers[0].Records;
    }

    /// A statement of someone else's program.
    void Run(const char* statement) const {
        QSqlDatabase database = ConnectSql(bench.File(), 0, SqlOpening::New);
        RunSql(database, statement);
        DisconnectSql(database);
    }

    [[nodiscard]] std::unique_ptr<SqlArchive> WithSchema(SchemaSteps steps) const {
        return std::make_unique<SqlArchive>(
            SqlArchiveOptions{.File = bench.File(), .Schema = steps});
    }

    SqliteBench bench;
    std::unique_ptr<ArchiveStore> store = bench.NewStore();
};

TEST_F(TroubleTest, TheFirstUploadMakesTheFolderAndTheFile) {
    EXPECT_FALSE(QFile::exists(QFileInfo(bench.File()).path()));
    EXPECT_TRUE(Upload().empty());
    EXPECT_TRUE(Contents().startsWith("SQLite format 3"));
    EXPECT_EQ(QDir(QFileInfo(bench.File()).path())
                  .entryList(QDir::Files)
                  .filter(QStringLiteral(".new"))
                  .size(),
              0);
}

TEST_F(TroubleTest, AFolderThatCannotBeMadeIsTold) {
    QFile file(QFileInfo(bench.File()).path());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ExpectTold("its folder cannot be used");
}

TEST_F(TroubleTest, AReadOnlyFolderIsTold) {
    const QByteArray folder = QFileInfo(bench.File()).path().toUtf8();
    QDir().mkpath(QString::fromUtf8(folder));
    ASSERT_EQ(::chmod(bench.Folder().toUtf8().constData(), 0755), 0);
    ASSERT_EQ(::chmod(folder.constData(), 0555), 0);
    {
        const PlainUser user;
        ExpectTold("its folder cannot be used");
    }
    EXPECT_TRUE(Contents().isEmpty());
}

TEST_F(TroubleTest, AnArchiveThatMayNotBeWrittenIsTold) {
    MakeArchive();
    const QByteArray before = Contents();
    ASSERT_EQ(::chmod(bench.Folder().toUtf8().constData(), 0755), 0);
    ASSERT_EQ(::chmod(QFileInfo(bench.File()).path().toUtf8().constData(), 0555), 0);
    ASSERT_EQ(::chmod(bench.File().toUtf8().constData(), 0444), 0);
    {
        const PlainUser user;
        ExpectTold("may not be written");
    }
    EXPECT_EQ(Contents(), before);
}

TEST_F(TroubleTest, AForeignFileIsToldAndLeftAlone) {
    ExpectToldAndLeftAlone("Dear diary,\n", "is not an archive");
    ExpectToldAndLeftAlone(QByteArray(100'000, 'x'), "is not an archive");
}

TEST_F(TroubleTest, AForeignDatabaseIsToldAndLeftAlone) {
    QDir().mkpath(QFileInfo(bench.File()).path());
    Run("CREATE TABLE songs(name TEXT)");
    ExpectToldAndLeftAlone(Contents(), "is not an archive");
}

TEST_F(TroubleTest, AFolderInItsPlaceIsTold) {
    QDir().mkpath(bench.File());
    ExpectTold("is not an archive");
}

TEST_F(TroubleTest, ACutFileIsToldAndLeftAlone) {
    MakeArchive();
    const QByteArray whole = Contents();
    for (const qsizetype size : {qsizetype{0}, qsizetype{10}, qsizetype{99}, qsizetype{4096},
                                 whole.size() / 2, whole.size() - 1}) {
        ExpectToldAndLeftAlone(whole.left(size), "damaged");
    }
    Put(whole);
    EXPECT_TRUE(Upload().empty());
}

/// The header of such a file is whole; what is wrong shows when it is worked on.
TEST_F(TroubleTest, ATornFileIsTold) {
    MakeArchive();
    const QByteArray whole = Contents();
    QByteArray torn = whole;
    for (qsizetype page = 4096; page + 4096 <= torn.size(); page += 4096) {
        torn.replace(page, 4096, QByteArray(4096, '\x5A'));
    }
    Put(torn);
    ExpectTold("damaged");
}

TEST_F(TroubleTest, ANewerArchiveIsToldAndLeftAlone) {
    MakeArchive();
    Run("PRAGMA user_version=99");
    ExpectToldAndLeftAlone(Contents(), "newer version");
}

constexpr const char* AddNote = "ALTER TABLE loggers ADD COLUMN note TEXT;\n";

/// The steps of today, and further ones.
std::vector<const char*> SchemaWith(std::initializer_list<const char*> further) {
    std::vector<const char*> steps(ArchiveSchema().begin(), ArchiveSchema().end());
    steps.insert(steps.end(), further);
    return steps;
}

TEST_F(TroubleTest, AnArchiveOfEachVersionBeforeIsBroughtUpWithWhatItHolds) {
    std::string lastName;
    for (std::size_t version = 1; version < ArchiveSchema().size(); ++version) {
        {
            const auto old = WithSchema(ArchiveSchema().first(version));
            old->Open();
        }
        Run("INSERT INTO loggers(id, mac, name, records, uploads, revision) "
            "VALUES(7, '00:13:A2:40:5F:01', 'Weir', 1, 1, 1)");
        Run("INSERT INTO uploads(id, logger, begun, firmware, name, settings, said, received) "
            "VALUES(3, 7, 1000, 21, 'Weir', 0, 1, 1)");
        Run("INSERT INTO records VALUES(7, 1, 5, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 3)");
        store->Open();
        EXPECT_EQ(store->Loggers().at(0).Name, "Weir");
        ASSERT_EQ(store->UploadsOwed("another", 10).size(), 1U) << version;
        EXPECT_EQ(store->UploadsOf(7).at(0).Origin, "");
        EXPECT_TRUE(store->Rounds(1).empty());
        EXPECT_EQ(store->Identity().size(), 32U);
        EXPECT_NE(store->Identity(), lastName) << "two archives of one name";
        lastName = store->Identity();
        store->Close();
        QFile::remove(bench.File());
    }
}

TEST_F(TroubleTest, AnOlderArchiveIsBroughtUpInPlace) {
    MakeArchive();
    const auto later = SchemaWith({AddNote});
    const auto newer = WithSchema(later);
    EXPECT_TRUE(Upload(*newer, 1000).empty());
    EXPECT_EQ(newer->Loggers().at(0).Records, 1000);
    EXPECT_EQ(newer->Loggers().at(0).Uploads, 2);
    newer->Close();
    ExpectTold("newer version");
}

TEST_F(TroubleTest, AMigrationThatFailsLeavesTheOlderArchiveAsItWas) {
    MakeArchive();
    const auto later = SchemaWith({AddNote, "NO SUCH WORD;\n"});
    EXPECT_THROW(WithSchema(later)->Open(), ArchiveFault);
    EXPECT_TRUE(Upload(1000).empty());
    EXPECT_EQ(RecordsKept(), 1000);
    store->Close();
    const auto mended = SchemaWith({AddNote});
    WithSchema(mended)->Open();
}

/// The hand-over opens and closes the archive on its own, again and again, beside the console.
TEST_F(TroubleTest, WhatASecondStoreClosesNoOtherProcessTakesForUnused) {
    MakeArchive();
    store->Open();
    const auto second = bench.NewStore();
    second->Open();
    second->Close();
    OtherProcess other({ORVIA_KILLED_CONSOLE, bench.File().toStdString(), "20", "0"});
    EXPECT_NE(other.Output().find("done"), std::string::npos);
    EXPECT_TRUE(QFile::exists(bench.File() + QStringLiteral("-wal"))) << "the log is gone";
    EXPECT_TRUE(Upload(1500).empty());
    const auto uploads = store->Loggers().at(0).Uploads;
    store.reset();
    const auto later = bench.NewStore();
    later->Open();
    EXPECT_EQ(later->Loggers().at(0).Uploads, uploads);
}

TEST_F(TroubleTest, AFullDiskIsToldAndWhatWasFiledIsThere) {
    constexpr rlim_t Room = 200'000;
    EXPECT_TRUE(Upload(20).empty());
    {
        const SmallDisk disk(Room);
        ExpectTold("disk is full", 6000);
    }
    const auto kept = RecordsKept();
    EXPECT_GT(kept, 20);
    EXPECT_LT(kept, 6000);
    EXPECT_TRUE(store->Check([] {}).empty());
    EXPECT_TRUE(Upload(6000).empty());
    EXPECT_EQ(RecordsKept(), 6000);
}

TEST_F(TroubleTest, AnotherProcessThatHoldsItIsTold) {
    MakeArchive();
    OtherProcess other({ORVIA_KILLED_CONSOLE, bench.File().toStdString(), "hold"});
    other.AwaitOutput();
    ExpectTold("another program holds it");
    EXPECT_TRUE(other.Kill());
    EXPECT_TRUE(Upload(1000).empty());
    EXPECT_EQ(RecordsKept(), 1000);
}

TEST_F(TroubleTest, ABackUpIsAWholeArchiveTakenWhileItIsInUse) {
    const std::string copy = bench.Folder().toStdString() + "/copy 'of' it.sqlite";
    EXPECT_TRUE(Upload(1000).empty());
    store->BackUp(copy, [] {});
    SqlArchive restored({.File = QString::fromStdString(copy)});
    restored.Open();
    EXPECT_EQ(restored.Loggers(), store->Loggers());
    EXPECT_EQ(ReadSeries(restored, 1).Records.size(), 1000U);
    EXPECT_TRUE(restored.Check([] {}).empty());
    EXPECT_THROW(store->BackUp(copy, [] {}), ArchiveFault);
    EXPECT_TRUE(QFile::exists(QString::fromStdString(copy)));
}

TEST_F(TroubleTest, ACheckTellsWhatDoesNotHoldTogether) {
    EXPECT_TRUE(Upload(1000).empty());
    EXPECT_TRUE(store->Check([] {}).empty());
    Run("DELETE FROM records WHERE place IN (SELECT max(place) FROM records)");
    EXPECT_EQ(store->Check([] {}).size(), 1U);
    Run("UPDATE records SET upload = 77");
    EXPECT_EQ(store->Check([] {}).size(), 2U);
}

TEST_F(TroubleTest, AStoreThatIsNotOpenFaults) {
    EXPECT_THROW(static_cast<void>(store->Loggers()), ArchiveFault);
    store->Rollback();
    store->Close();
}

}  // namespace
}  // namespace testing_support
