// Deleting, backing up and checking, and every way to leave in the middle of it.
#include <QFile>
#include <QFileInfo>

#include "archive/frmArchive_fixture.h"
#include "archive/upload_filer.h"

namespace archive_testing {
namespace {

constexpr int Many = 30'000;

class ArchiveCareTest : public ArchiveFormTest {
 protected:
    std::int64_t Left(std::int64_t id) {
        archive_.Open();
        const auto logger = archive_.LoggerOf(id);
        return logger ? logger->Records : 0;
    }
    /// Has a deletion begin, and waits until some of it is done.
    void DeleteSome(std::int64_t id) {
        Open();
        Click("cmdDelete");
        ASSERT_TRUE(RunEventsUntil([&] { return Left(id) < Many; }));
        ASSERT_GT(Left(id), 0);
    }
    /// Holds the thread of a back-up or check up until it is let go.
    [[nodiscard]] bool HasFinished() {
        return RunEventsUntil([this] { return IsIdle(); });
    }
};

// ----- deleting

TEST_F(ArchiveCareTest, DeletingAsksAndTellsHowMuchGoes) {
    const std::int64_t id = Keep("Pump 1", 30);
    Open();
    host_.Boxes.Answers = {BoxAnswer::No};
    Click("cmdDelete");
    ASSERT_EQ(Boxes().size(), 1U);
    EXPECT_NE(Boxes()[0].Text.find("Pump 1 (00:13:A2:00:00:00)"), std::string::npos);
    EXPECT_NE(Boxes()[0].Text.find("30 records of 1 upload?"), std::string::npos);
    EXPECT_EQ(Boxes()[0].Buttons, BoxButtons::YesNo);
    QTest::qWait(30);
    EXPECT_EQ(Left(id), 30);
    Click("cmdDelete");
    ASSERT_TRUE(RunEventsUntil([this] { return Control("lblNotice")->isVisible(); }));
    EXPECT_EQ(Left(id), 0);
    EXPECT_TRUE(archive_.Loggers().empty());
    EXPECT_EQ(LabelText("lblState"), "Deleted: Pump 1");
    EXPECT_EQ(Boxes().size(), 2U);
}

TEST_F(ArchiveCareTest, ADeletionLeavesTheWindowAliveAndCanBeCancelled) {
    const std::int64_t id = Keep("Pump 1", Many);
    DeleteSome(id);
    EXPECT_TRUE(Control("cmdCancel")->isVisible());
    EXPECT_FALSE(Control("cmdDelete")->isEnabled());
    EXPECT_FALSE(Control("cmdBackUp")->isEnabled());
    EXPECT_TRUE(Control("cmdPlot")->isEnabled());
    Click("cmdCancel");
    ASSERT_TRUE(HasFinished());
    const std::int64_t left = Left(id);
    EXPECT_GT(left, 0);
    EXPECT_EQ(LabelText("lblState"),
              "Deleting was cancelled: " + std::to_string(left) + " records are left.");
    ASSERT_TRUE(RunEventsUntil([&] { return Cell("lvwLoggers", 0, 4) == std::to_string(left); }));
    EXPECT_TRUE(Control("cmdDelete")->isEnabled());
    EXPECT_FALSE(Control("cmdCancel")->isVisible());
}

TEST_F(ArchiveCareTest, AClosedWindowDeletesOnAndTellsWhenItIsOpenedAgain) {
    const std::int64_t id = Keep("Pump 1", Many);
    DeleteSome(id);
    form_->close();
    EXPECT_FALSE(form_->isVisible());
    ASSERT_TRUE(RunEventsUntil([&] { return Left(id) == 0; }));
    Open();
    EXPECT_EQ(LabelText("lblState"), "Deleted: Pump 1");
    EXPECT_TRUE(Control("lblNotice")->isVisible());
}

TEST_F(ArchiveCareTest, TheEndOfTheProgramStopsADeletionBetweenTwoPieces) {
    const std::int64_t id = Keep("Pump 1", Many);
    DeleteSome(id);
    form_->Unload();
    const std::int64_t left = Left(id);
    QTest::qWait(50);
    EXPECT_EQ(Left(id), left);
    form_.reset();
    const auto wrong = archive_.Check([] {});
    EXPECT_TRUE(wrong.empty()) << wrong.front();
}

TEST_F(ArchiveCareTest, TheProgramCanEndWhileItIsAsked) {
    const std::int64_t id = Keep("Pump 1", 30);
    Open();
    host_.Boxes.WhileShown = [this] { form_->Unload(); };
    Click("cmdDelete");
    QTest::qWait(30);
    EXPECT_EQ(Left(id), 30);
    Make();
    Open();
    host_.Dialogs.Picks.push_back(FromQt(FileName("copy.sqlite")));
    host_.Dialogs.WhileShown = [this] { form_->Unload(); };
    Click("cmdBackUp");
    QTest::qWait(30);
    EXPECT_FALSE(QFileInfo::exists(FileName("copy.sqlite")));
}

TEST_F(ArchiveCareTest, WhatWasUploadedMeanwhileIsNotDeleted) {
    const std::int64_t id = Keep("Pump 1", Many);
    DeleteSome(id);
    auto logger = *archive_.LoggerOf(id);
    ++logger.Uploads;
    archive_.UpdateLogger(logger);
    ASSERT_TRUE(HasFinished());
    EXPECT_GT(Left(id), 0);
    ASSERT_EQ(Boxes().size(), 2U);
    EXPECT_NE(Boxes()[1].Text.find("uploaded meanwhile"), std::string::npos);
}

TEST_F(ArchiveCareTest, AnUploadGoesFirst) {
    const std::int64_t id = Keep("Pump 1", 30);
    UploadFiler filer(archive_, host_.Boxes);
    form_ = std::make_unique<frmArchive>(
        ArchiveWork{.windows = {.outside = outside_, .lastFolder = lastFolder_},
                    .settings = settings_,
                    .filer = &filer},
        nullptr);
    UploadStart start;
    start.Mac = {9};
    start.Name = "Other";
    filer.Began(start);
    Open();
    EXPECT_EQ(Cell("lvwUploads", 0, 2), "running");
    Choose({1});
    Click("cmdDelete");
    QTest::qWait(50);
    EXPECT_EQ(Left(id), 30);
    filer.Ended(UploadOutcome::Complete);
    ASSERT_TRUE(HasFinished());
    EXPECT_EQ(Left(id), 0);
    EXPECT_EQ(archive_.Loggers().size(), 1U);
}

// ----- backing up

TEST_F(ArchiveCareTest, ABackUpIsAWholeArchiveAndTakesThePlaceOfAnOlderOne) {
    const std::int64_t id = Keep("Pump 1", 300);
    Open();
    for (int turn = 0; turn < 2; ++turn) {
        host_.Dialogs.Picks.push_back(FromQt(FileName("copy.sqlite")));
        Click("cmdBackUp");
        EXPECT_FALSE(Control("cmdCheck")->isEnabled());
        ASSERT_TRUE(HasFinished());
        EXPECT_EQ(LabelText("lblState"), "Backed up to " + FromQt(FileName("copy.sqlite")));
        SqlArchive copy({.File = FileName("copy.sqlite")});
        copy.Open();
        EXPECT_EQ(copy.LoggerOf(id)->Records, 300 + turn);
        EXPECT_TRUE(copy.Check([] {}).empty() || turn == 1);
        copy.Close();
        auto logger = *archive_.LoggerOf(id);
        ++logger.Records;
        archive_.UpdateLogger(logger);
    }
    EXPECT_TRUE(Boxes().empty());
    ASSERT_EQ(host_.Dialogs.Queries.size(), 2U);
    EXPECT_TRUE(host_.Dialogs.Prompts[0]);
    EXPECT_NE(host_.Dialogs.Queries[0].InitialName.find("archive 2026-11-15.sqlite"),
              std::string::npos);
    EXPECT_FALSE(QFileInfo::exists(FileName("copy.sqlite.new")));
}

TEST_F(ArchiveCareTest, TheArchiveIsNeverOverwrittenByItsOwnBackUp) {
    const std::int64_t id = Keep("Pump 1", 300);
    Open();
    host_.Dialogs.Picks.push_back(archive_.Place());
    Click("cmdBackUp");
    ASSERT_TRUE(HasFinished());
    ASSERT_EQ(Boxes().size(), 1U);
    EXPECT_EQ(Boxes()[0].Text, "That file is the archive itself. Choose another name.");
    EXPECT_EQ(Left(id), 300);
    EXPECT_FALSE(QFileInfo::exists(FileName("data/archive.sqlite.new")));
}

TEST_F(ArchiveCareTest, ABackUpThatFailsIsTold) {
    Keep("Pump 1", 300);
    Open();
    host_.Dialogs.Picks.push_back("/nowhere/at/all.sqlite");
    Click("cmdBackUp");
    ASSERT_TRUE(HasFinished());
    ASSERT_EQ(Boxes().size(), 1U);
    EXPECT_NE(Boxes()[0].Text.find("The archive cannot be used"), std::string::npos);
    EXPECT_TRUE(Control("cmdBackUp")->isEnabled());
}

TEST_F(ArchiveCareTest, AWindowThatGoesInTheMiddleOfABackUpFinishesIt) {
    const std::int64_t id = Keep("Pump 1", Many);
    Open();
    host_.Dialogs.Picks.push_back(FromQt(FileName("copy.sqlite")));
    Click("cmdBackUp");
    form_->Unload();
    form_.reset();
    SqlArchive copy({.File = FileName("copy.sqlite")});
    copy.Open();
    EXPECT_EQ(copy.LoggerOf(id)->Records, Many);
    EXPECT_TRUE(Boxes().empty());
}

TEST_F(ArchiveCareTest, WhatIsFiledDuringABackUpIsKept) {
    Keep("Pump 1", Many);
    Open();
    host_.Dialogs.Picks.push_back(FromQt(FileName("copy.sqlite")));
    Click("cmdBackUp");
    const std::int64_t id = Keep("Pump 2", 100);
    ASSERT_TRUE(HasFinished());
    EXPECT_EQ(Left(id), 100);
    EXPECT_TRUE(archive_.Check([] {}).empty());
    EXPECT_TRUE(Boxes().empty());
}

// ----- checking

TEST_F(ArchiveCareTest, ACheckTellsThatAllIsWell) {
    Keep("Pump 1", 300);
    Open();
    Click("cmdCheck");
    EXPECT_TRUE(Control("ProgressBar")->isVisible());
    EXPECT_EQ(LabelText("lblState"), "Checking...");
    ASSERT_TRUE(HasFinished());
    EXPECT_EQ(LabelText("lblState"), "Checked: the archive holds together.");
    EXPECT_TRUE(Boxes().empty());
}

TEST_F(ArchiveCareTest, ACheckTellsWhatIsWrong) {
    const std::int64_t id = Keep("Pump 1", 300);
    auto logger = *archive_.LoggerOf(id);
    logger.Records = 7;
    archive_.UpdateLogger(logger);
    Open();
    Click("cmdCheck");
    ASSERT_TRUE(HasFinished());
    ASSERT_EQ(Boxes().size(), 1U);
    EXPECT_NE(Boxes()[0].Text.find("does not hold together"), std::string::npos);
    EXPECT_NE(Boxes()[0].Text.find("wrong count of records: 00:13:A2"), std::string::npos);
}

}  // namespace
}  // namespace archive_testing
