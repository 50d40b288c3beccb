// The archive's window where the archive is shared.
#include <QRadioButton>

#include "archive/archive_sharing.h"
#include "archive/frmArchive_fixture.h"
#include "archive/stumbling_store.h"
#include "support/fake_shared_archive.h"
#include "support/qt/desk_look.h"

namespace archive_testing {
namespace {

class SharedArchiveFormTest : public ArchiveFormTest {
 protected:
    SharedArchiveFormTest() {
        outside_.Shared = &shared_;
        Keep("Here 1", 10);
        Keep("Here 2", 10);
    }

    /// Shares an archive with a logger that this computer has not; the server stands so.
    void Share(SharingState state) {
        if (!there_) {
            there_ = std::make_shared<StumblingStore>(std::make_unique<SqlArchive>(
                SqlArchiveOptions{.File = FileName("there/archive.sqlite")}));
            there_->Stumble = [this](const std::string& call, StumblingStore::When when) {
                asked_ += when == StumblingStore::When::Before ? 1 : 0;
                if (trouble_ && call != "Open") {
                    throw ArchiveFault(*trouble_, "told so");
                }
            };
            there_->Open();
            there_->Begin();
            ArchiveLogger logger{.Mac = {1}, .Name = "There", .Uploads = 1};
            there_->AddLogger(logger);
            ArchiveUpload upload{.Logger = logger.Id, .Begin = 1000, .Name = "There"};
            there_->AddUpload(upload);
            there_->Commit();
            shared_.Kept = there_;
        }
        KeepSharing({.On = true, .Place = {.Server = "db"}, .Keyring = false}, host_.Store);
        sharing_.Begin();
        shared_.Now = {.State = state, .Waiting = 0, .Words = "no route to host"};
        static_cast<void>(sharing_.Tick());
    }
    void MakeShared() {
        form_ = std::make_unique<frmArchive>(
            ArchiveWork{.windows = {.outside = outside_, .lastFolder = lastFolder_},
                        .settings = settings_,
                        .sharing = &sharing_},
            nullptr);
        Open();
    }
    [[nodiscard]] bool Shows(const std::vector<std::string>& names) {
        return RunEventsUntil([&] { return Names() == names; });
    }

    FakeSharedArchive shared_;
    OperationStatus status_{host_.Clock};
    ArchiveSharing sharing_{outside_, status_};
    std::shared_ptr<StumblingStore> there_;
    std::optional<ArchiveTrouble> trouble_;
    int asked_ = 0;
    const std::vector<std::string> here_ = {"Here 1", "Here 2"};
};

TEST_F(SharedArchiveFormTest, WithoutSharingThereIsNoChoice) {
    MakeShared();
    EXPECT_FALSE(Control("optShared")->isVisible());
    EXPECT_FALSE(Control("optLocal")->isVisible());
    EXPECT_TRUE(Shows(here_));
}

TEST_F(SharedArchiveFormTest, ShowsTheSharedArchiveAndThisComputersAtAClick) {
    Share(SharingState::Done);
    MakeShared();
    EXPECT_TRUE(Control<QRadioButton>("optShared")->isChecked());
    EXPECT_TRUE(Shows({"There"}));
    Click("optLocal");
    EXPECT_EQ(Names(), here_);
    EXPECT_TRUE(RunEventsUntil([this] { return Cell("lvwLoggers", 0, 5) == "0"; }));
    Click("optShared");
    EXPECT_EQ(Names(), std::vector<std::string>{"There"});
    EXPECT_TRUE(Boxes().empty());
}

TEST_F(SharedArchiveFormTest, AServerThatIsAwayIsNotAskedAndThisComputerIsOneClickAway) {
    Share(SharingState::Away);
    asked_ = 0;
    MakeShared();
    EXPECT_TRUE(Control("lblNotice")->isVisible());
    EXPECT_NE(LabelText("lblNotice").find("cannot be reached since"), std::string::npos);
    EXPECT_NE(LabelText("lblNotice").find("no route to host"), std::string::npos);
    QTest::qWait(60);
    EXPECT_EQ(asked_, 0);
    Click("optLocal");
    EXPECT_EQ(Names(), here_);
    EXPECT_FALSE(Control("lblNotice")->isVisible());
    Click("optShared");
    EXPECT_TRUE(Names().empty());
    shared_.Now.State = SharingState::Done;
    EXPECT_TRUE(Shows({"There"}));
}

TEST_F(SharedArchiveFormTest, AServerLostWhileItIsLookedAtIsToldAndLeftAlone) {
    Share(SharingState::Done);
    MakeShared();
    ASSERT_TRUE(Shows({"There"}));
    trouble_ = ArchiveTrouble::Away;
    ASSERT_TRUE(RunEventsUntil([this] { return shared_.Looks > 0; }));
    EXPECT_TRUE(Control("lblNotice")->isVisible());
    shared_.Now.State = SharingState::Away;
    const int asked = asked_;
    QTest::qWait(100);
    EXPECT_LE(asked_, asked + 1);
    EXPECT_TRUE(Boxes().empty());
    trouble_.reset();
    shared_.Now.State = SharingState::Done;
    EXPECT_TRUE(Shows({"There"}));
}

TEST_F(SharedArchiveFormTest, AServerLostByAPlotIsToldAndItsLoggersGo) {
    Share(SharingState::Done);
    MakeShared();
    ASSERT_TRUE(Shows({"There"}));
    Choose({0});
    trouble_ = ArchiveTrouble::Away;
    Click("cmdPlot");
    ASSERT_EQ(Boxes().size(), 1U);
    EXPECT_NE(Boxes()[0].Text.find("the server cannot be reached"), std::string::npos);
    EXPECT_EQ(shared_.Looks, 1);
    EXPECT_TRUE(RunEventsUntil([this] { return Control("lblNotice")->isVisible(); }));
}

TEST_F(SharedArchiveFormTest, WhoMayOnlyReadIsToldWhyNothingIsDeleted) {
    Share(SharingState::ReadOnly);
    MakeShared();
    ASSERT_TRUE(Shows({"There"}));
    Choose({0});
    Click("cmdDelete");
    ASSERT_EQ(Boxes().size(), 1U);
    EXPECT_NE(Boxes()[0].Text.find("this user may only read it"), std::string::npos);
    EXPECT_EQ(there_->Loggers().size(), 1U);
}

/// That it may only read shows first when it tries to write.
TEST_F(SharedArchiveFormTest, ADeletionThatTheServerRefusesIsTold) {
    Share(SharingState::Done);
    MakeShared();
    ASSERT_TRUE(Shows({"There"}));
    Choose({0});
    host_.Boxes.WhileShown = [this] { trouble_ = ArchiveTrouble::ReadOnly; };
    Click("cmdDelete");
    ASSERT_TRUE(RunEventsUntil([this] { return Boxes().size() == 2; }));
    EXPECT_NE(Boxes()[0].Text.find("the archive that all share"), std::string::npos);
    EXPECT_NE(Boxes()[1].Text.find("this user may only read it"), std::string::npos);
}

TEST_F(SharedArchiveFormTest, ABackUpOfTheSharedArchiveIsLeftToItsServer) {
    Share(SharingState::Done);
    MakeShared();
    ASSERT_TRUE(Shows({"There"}));
    Click("cmdBackUp");
    ASSERT_EQ(Boxes().size(), 1U);
    EXPECT_NE(Boxes()[0].Text.find("pg_dump"), std::string::npos);
    EXPECT_TRUE(host_.Dialogs.Queries.empty());
    Click("optLocal");
    host_.Dialogs.Picks = {FromQt(FileName("copy.sqlite"))};
    Click("cmdBackUp");
    EXPECT_TRUE(RunEventsUntil([this] { return IsIdle(); }));
    EXPECT_EQ(Boxes().size(), 1U);
}

TEST_F(SharedArchiveFormTest, SharingSwitchedOnAndOffIsFollowed) {
    MakeShared();
    ASSERT_TRUE(Shows(here_));
    Share(SharingState::Done);
    EXPECT_TRUE(Shows({"There"}));
    EXPECT_TRUE(Control("optShared")->isVisible());
    sharing_.Choose({.On = false}, std::nullopt);
    EXPECT_TRUE(Shows(here_));
    EXPECT_FALSE(Control("optShared")->isVisible());
}

class SharedArchiveScreens : public SharedArchiveFormTest,
                             public ::testing::WithParamInterface<bool> {
 protected:
    void Picture(const char* name) {
        KeepOnBothScreens(*form_, QStringLiteral("frmArchive-") + QLatin1String(name), GetParam());
    }

 private:
    const DeskColours colours_{GetParam()};
};

TEST_P(SharedArchiveScreens, OfTheChoiceAndAServerThatIsAway) {
    Share(SharingState::Done);
    MakeShared();
    ASSERT_TRUE(Shows({"There"}));
    Picture("shared");
    shared_.Now = {.State = SharingState::Away,
                   .Kind = ArchiveTrouble::Away,
                   .Words = "connection to server at \"db\" failed: Connection refused"};
    static_cast<void>(sharing_.Tick());
    ASSERT_TRUE(RunEventsUntil([this] { return Control("lblNotice")->isVisible(); }));
    Picture("away");
}

INSTANTIATE_TEST_SUITE_P(Palettes, SharedArchiveScreens, ::testing::Bool(),
                         [](const auto& dark) { return dark.param ? "Dark" : "Light"; });

}  // namespace
}  // namespace archive_testing
