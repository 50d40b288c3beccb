#include "archive/archive_sharing.h"

#include <gtest/gtest.h>

#include "support/fake_shared_archive.h"
#include "support/virtual_host.h"

namespace testing_support {
namespace {

/// A console that has shared its archive before, unless told otherwise.
class ArchiveSharingTest : public ::testing::Test {
 protected:
    ArchiveSharingTest() {
        outside.Shared = &shared;
        outside.Passwords = &keeper;
        // It is only looked whether there is one.
        outside.Archive = reinterpret_cast<ArchiveStore*>(this);
        KeepSharing(choice, host.Store);
        keeper.Passwords["crew@db:5432/orvia"] = "secret";
    }
    void Begin() {
        sharing.Begin();
        keeper.Answer();
    }
    /// What stands in the status line behind a tick.
    std::string Told() {
        static_cast<void>(sharing.Tick());
        return status.Text();
    }

    VirtualHost host;
    FakeSharedArchive shared;
    FakeKeeper keeper;
    Host outside = host.AsHost("/program");
    OperationStatus status{host.Clock};
    SharingChoice choice{.On = true,
                         .Place = {.Server = "db", .Database = "orvia", .User = "crew"}};
    ArchiveSharing sharing{outside, status};
};

TEST_F(ArchiveSharingTest, BeginsWithThePasswordOfTheKeyring) {
    sharing.Begin();
    EXPECT_TRUE(shared.Shared.empty());
    keeper.Answer();
    ASSERT_EQ(shared.Shared.size(), 1U);
    EXPECT_EQ(shared.Shared[0].Password, "secret");
    EXPECT_EQ(shared.Shared[0].Place, choice.Place);
}

TEST_F(ArchiveSharingTest, WithoutTheKeyringTheFileIsLeftToHaveIt) {
    choice.Keyring = false;
    KeepSharing(choice, host.Store);
    sharing.Begin();
    ASSERT_EQ(shared.Shared.size(), 1U);
    EXPECT_EQ(shared.Shared[0].Password, "");
    EXPECT_TRUE(keeper.Questions.empty());
}

TEST_F(ArchiveSharingTest, AKeyringThatDoesNotAnswerIsTold) {
    keeper.Trouble = "no daemon";
    Begin();
    ASSERT_EQ(shared.Shared.size(), 1U);
    EXPECT_EQ(shared.Shared[0].Password, "");
    EXPECT_NE(sharing.StateText().find("no daemon"), std::string::npos);
}

TEST_F(ArchiveSharingTest, WhatIsOffAsksNobody) {
    choice.On = false;
    KeepSharing(choice, host.Store);
    Begin();
    EXPECT_TRUE(shared.Shared.empty());
    EXPECT_FALSE(sharing.IsOn());
    sharing.Filed();
    EXPECT_EQ(shared.Looks, 0);
}

TEST_F(ArchiveSharingTest, AnAnswerToAnEarlierChoiceIsNobodys) {
    sharing.Begin();
    SharingChoice other = choice;
    other.Place.Server = "other";
    sharing.Choose(other, "typed");
    keeper.Answer();
    ASSERT_EQ(shared.Shared.size(), 1U);
    EXPECT_EQ(shared.Shared[0].Place.Server, "other");
    EXPECT_EQ(shared.Shared[0].Password, "typed");
}

TEST_F(ArchiveSharingTest, ThePasswordNeverComesIntoTheSettings) {
    Begin();
    choice.Place.User = "other";
    sharing.Choose(choice, "very secret");
    shared.Now = {.State = SharingState::Away, .Words = "refused"};
    Told();
    ASSERT_FALSE(host.Store.Values.empty());
    for (const auto& [key, value] : host.Store.Values) {
        EXPECT_EQ(value.find("secret"), std::string::npos) << key;
    }
}

TEST_F(ArchiveSharingTest, SwitchedOffItCeases) {
    Begin();
    choice.On = false;
    sharing.Choose(choice, std::nullopt);
    EXPECT_EQ(shared.Ceased, 1);
    EXPECT_FALSE(ReadSharing(host.Store).On);
}

TEST_F(ArchiveSharingTest, WhatIsFiledIsLookedFor) {
    Begin();
    sharing.Filed();
    EXPECT_EQ(shared.Looks, 1);
}

TEST_F(ArchiveSharingTest, TheServerGoingAndComingBackIsToldOnceEach) {
    Begin();
    shared.Now = {.State = SharingState::Done, .Waiting = 0};
    EXPECT_EQ(Told(), "");
    shared.Now = {.State = SharingState::Away, .Waiting = 2, .Kind = ArchiveTrouble::Away};
    EXPECT_NE(Told().find("The shared archive cannot be reached"), std::string::npos);
    EXPECT_TRUE(status.Failed());
    status.Came("Something else");
    shared.Now.Waiting = 3;
    EXPECT_NE(Told().find("Something else"), std::string::npos);
    shared.Now = {.State = SharingState::Waits, .Waiting = 3};
    EXPECT_NE(Told().find("The shared archive is back: 3 uploads to be handed over"),
              std::string::npos);
    EXPECT_FALSE(status.Failed());
    status.Came("Something else");
    shared.Now = {.State = SharingState::Done, .Waiting = 0};
    EXPECT_NE(Told().find("Something else"), std::string::npos);
}

TEST_F(ArchiveSharingTest, ALineWaitsForTheOperationThatStandsThere) {
    Begin();
    status.Doing("Reading");
    shared.Now = {.State = SharingState::Away, .Kind = ArchiveTrouble::Away};
    EXPECT_EQ(Told(), "Reading...");
    status.Came("Read");
    EXPECT_NE(Told().find("cannot be reached"), std::string::npos);
}

TEST_F(ArchiveSharingTest, WhoIsNotLetInIsToldSo) {
    Begin();
    shared.Now = {.State = SharingState::Away, .Kind = ArchiveTrouble::Refused};
    EXPECT_NE(Told().find("does not let this user in"), std::string::npos);
    EXPECT_TRUE(status.Failed());
}

TEST_F(ArchiveSharingTest, WhoMayOnlyReadIsToldOnce) {
    Begin();
    shared.Now = {.State = SharingState::ReadOnly, .Waiting = 2};
    EXPECT_NE(Told().find("may only read"), std::string::npos);
    EXPECT_TRUE(status.Failed());
    status.Came("Something else");
    EXPECT_NE(Told().find("Something else"), std::string::npos);
}

TEST_F(ArchiveSharingTest, TheStateTellsSinceWhenTheServerIsAway) {
    Begin();
    shared.Now = {.State = SharingState::Away, .Waiting = 1, .Words = "no route"};
    Told();
    const std::string text = sharing.StateText();
    EXPECT_NE(text.find("since"), std::string::npos) << text;
    EXPECT_NE(text.find("no route"), std::string::npos) << text;
    EXPECT_NE(text.find("1 upload waits"), std::string::npos) << text;
}

TEST_F(ArchiveSharingTest, TheArchiveIsKnownAgainInTheNextRun) {
    Begin();
    shared.Now = {.State = SharingState::Done, .Waiting = 0, .Identity = "abc"};
    Told();
    ArchiveSharing next(outside, status);
    next.Begin();
    keeper.Answer();
    EXPECT_EQ(shared.Shared.back().Identity, "abc");
    SharingChoice other = choice;
    other.Place.Database = "other";
    next.Choose(other, "");
    EXPECT_EQ(shared.Shared.back().Identity, "");
}

TEST_F(ArchiveSharingTest, WithoutTheDriverNothingIsShared) {
    shared.Missing = "no driver";
    Begin();
    EXPECT_FALSE(sharing.IsOn());
    EXPECT_TRUE(shared.Shared.empty());
    EXPECT_EQ(sharing.StateText(), "The archive is not shared.");
}

TEST_F(ArchiveSharingTest, WithoutASharedArchiveNothingHappens) {
    outside.Shared = nullptr;
    Begin();
    EXPECT_FALSE(sharing.IsOn());
    EXPECT_EQ(Told(), "");
    sharing.Filed();
}

}  // namespace
}  // namespace testing_support
