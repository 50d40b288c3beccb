// The main window shares the archive.
#include <QAction>
#include <QLabel>
#include <QTemporaryDir>

#include "app/frmMain_fixture.h"
#include "archive/frmArchiveSettings.h"
#include "platform/qt/sql_archive.h"
#include "platform/qt/text_qt.h"
#include "support/fake_shared_archive.h"

namespace testing_support {
namespace {

struct SomeShared {
    QTemporaryDir Folder;
    SqlArchive Archive{{.File = Folder.filePath(QStringLiteral("archive.sqlite"))}};
    FakeSharedArchive Shared;
    FakeKeeper Keeper;
};

class MainWindowSharing : protected SomeShared, public MainWindowTest {
 protected:
    MainWindowSharing() : MainWindowTest(&Archive, &Shared, &Keeper) {}

    void KeepShared() {
        KeepSharing({.On = true, .Place = {.Server = "db"}, .Keyring = false}, host_.Virtual.Store);
    }
    [[nodiscard]] bool Tells(const std::string& text) {
        return host_.RunUntil([&] {
            return FromQt(Find<QLabel>("lblStatus").text()).find(text) != std::string::npos;
        });
    }
};

TEST_F(MainWindowSharing, TheMenuOpensTheSettingsAndTheEndClosesThem) {
    StartConnected();
    EXPECT_TRUE(Shared.Shared.empty());
    Find<QAction>("mnuArchiveSettings").trigger();
    auto& form = Find<frmArchiveSettings>("frmArchiveSettings");
    EXPECT_TRUE(form.isVisible());
    window_->close();
    EXPECT_FALSE(form.isVisible());
    EXPECT_TRUE(boxes_.Shown.empty());
}

TEST_F(MainWindowTest, WithoutASharedArchiveThereAreNoSettingsOfIt) {
    EXPECT_FALSE(Find<QAction>("mnuArchiveSettings").isEnabled());
}

TEST_F(MainWindowSharing, WhatWasSharedIsSharedFromTheStart) {
    KeepShared();
    StartConnected();
    ASSERT_EQ(Shared.Shared.size(), 1U);
    EXPECT_EQ(Shared.Shared[0].Place.Server, "db");
}

TEST_F(MainWindowSharing, TheServerGoingAndComingBackIsALineAndNoBox) {
    KeepShared();
    StartConnected();
    Shared.Now = {.State = SharingState::Away, .Waiting = 1, .Kind = ArchiveTrouble::Away};
    EXPECT_TRUE(Tells("The shared archive cannot be reached"));
    Shared.Now = {.State = SharingState::Done, .Waiting = 0};
    EXPECT_TRUE(Tells("The shared archive is back"));
    EXPECT_TRUE(boxes_.Shown.empty());
}

TEST_F(MainWindowSharing, EachPortionThatIsFiledIsLookedFor) {
    KeepShared();
    StartConnected();
    UploadStart start;
    start.Name = "Site";
    state_.Filer->Began(start);
    EXPECT_GT(Shared.Looks, 0);
    const int before = Shared.Looks;
    state_.Filer->Ended(UploadOutcome::Complete);
    EXPECT_GT(Shared.Looks, before);
}

}  // namespace
}  // namespace testing_support
