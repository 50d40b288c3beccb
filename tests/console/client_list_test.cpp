#include "console/client_list.h"

#include <gtest/gtest.h>

#include "support/virtual_console.h"

namespace {

using testing_support::BasicSite;
using testing_support::FakeClientWindow;
using testing_support::VirtualConsole;

TEST(ItemAtY, IsTheLastItemWhoseTopIsAtOrAbove) {
    const auto top = [](int number) { return (number - 1) * 20; };
    EXPECT_EQ(ItemAtY(-5, 3, top), 1) << "above every item";
    EXPECT_EQ(ItemAtY(0, 3, top), 1);
    EXPECT_EQ(ItemAtY(19, 3, top), 1);
    EXPECT_EQ(ItemAtY(20, 3, top), 2);
    EXPECT_EQ(ItemAtY(1000, 3, top), 3) << "below them all";
    EXPECT_EQ(ItemAtY(10, 0, top), 0);
}

class ClientList : public ::testing::Test {
 protected:
    ClientList() {
        for (int number = 1; number <= 3; ++number) {
            console_.AddSite(BasicSite(number));
        }
    }

    void Click(int entry) {
        console_.View.Selected = entry;
        OpenOrActivateClient(book_, windows_, console_.View);
    }
    FakeClientWindow& WindowOf(int entry) {
        return dynamic_cast<FakeClientWindow&>(*windows_.At(book_.Entries[entry].WindowIndex));
    }

    VirtualConsole console_;
    AddressBook& book_ = console_.State.Book;
    ClientWindows& windows_ = console_.State.Windows;
};

TEST_F(ClientList, AClickOpensTheClientsWindow) {
    Click(2);
    EXPECT_EQ(windows_.NumClientWindows, 1);
    EXPECT_EQ(book_.Entries[2].WindowIndex, 0);
    EXPECT_EQ(book_.Entries[2].SmallIcon, IconWindowOpen);
    EXPECT_EQ(console_.View.Clients[1].Icon, IconWindowOpen);
    EXPECT_EQ(WindowOf(2).ClientIndex(), 2);
    EXPECT_EQ(WindowOf(2).Caption(), "Site 2");
    EXPECT_EQ(WindowOf(2).Resets, 1);
}

TEST_F(ClientList, ThePicturesAreKnownByTheirNumbers) {
    EXPECT_EQ(console_.View.Clients[0].Icon, 2) << "no window";
    Click(1);
    EXPECT_EQ(console_.View.Clients[0].Icon, 3) << "a window";
    EXPECT_EQ(IconAddressed, 4);
}

TEST_F(ClientList, AClickOnAClientWithANormalWindowBringsItForward) {
    Click(1);
    Click(1);
    EXPECT_EQ(windows_.NumClientWindows, 1);
    EXPECT_EQ(WindowOf(1).Focused, 1);
}

TEST_F(ClientList, AClickOnAClientWithAMinimizedWindowRestoresIt) {
    Click(1);
    WindowOf(1).Minimized = true;
    Click(1);
    EXPECT_FALSE(WindowOf(1).Minimized);
    EXPECT_EQ(WindowOf(1).Focused, 0);
    EXPECT_EQ(windows_.NumClientWindows, 1) << "no second window opens";
}

TEST_F(ClientList, NothingSelectedOrNoEntryBehindItDoesNothing) {
    Click(0);
    Click(4);
    Click(-1);
    EXPECT_EQ(windows_.NumClientWindows, 0);
}

TEST_F(ClientList, AnEmptiedSlotIsUsedAgain) {
    Click(1);
    Click(2);
    WindowOf(1).Unload();
    Click(3);
    EXPECT_EQ(book_.Entries[3].WindowIndex, 0);
    EXPECT_EQ(windows_.UpperBound(), 1);
}

}  // namespace
