#include "console/entry_texts.h"

#include <gtest/gtest.h>

#include "common/text.h"
#include "support/virtual_host.h"

namespace {

using testing_support::ScriptedBoxes;

AddressBook BookOf(const std::vector<std::string>& names) {
    AddressBook book;
    for (const std::string& name : names) {
        ClientRadio entry;
        entry.Name = name;
        book.Entries.Append(entry);
    }
    return book;
}

TEST(EntryTextsTest, ShowTwoDigitsForEachByte) {
    const AddressTexts texts = TextsOf(0x7F, {0x00, 0xA0, 0x96, 0x1F, 0x2E, 0x3D});
    EXPECT_EQ(texts.Channel, "7F");
    EXPECT_EQ(texts.Mac[1], "A0");
    EXPECT_EQ(texts.Mac[5], "3D");
}

TEST(EntryTextsTest, AreReadBack) {
    ClientRadio entry;
    ReadAddress({"1a", {"00", "a0", "96", "1F", "2e", "G1"}}, entry);
    EXPECT_EQ(entry.Channel, 0x1A);
    EXPECT_EQ(entry.Mac, (MacAddress{0x00, 0xA0, 0x96, 0x1F, 0x2E, 0x00}));
}

TEST(EntryTextsTest, WizardOffersChannelAndPrefixOfTheLastEntry) {
    AddressBook book;
    book.LastChannel = 0x21;
    book.LastMacPrefix = {0x00, 0xA0, 0x96};
    const AddressTexts offered = OfferedAddress(book);
    EXPECT_EQ(offered.Channel, "21");
    EXPECT_EQ(offered.Mac, (std::array<std::string, 6>{"00", "A0", "96", "00", "00", "00"}));
}

TEST(KeptNameTest, LosesBlanksAtItsEndsAndLineBreaks) {
    EXPECT_EQ(KeptName("  Pump 3  "), "Pump 3");
    EXPECT_EQ(KeptName("Pump\r\n3"), "Pump  3");
    EXPECT_EQ(KeptName("\nPump 3\r\n"), "Pump 3");
    EXPECT_EQ(KeptName("Gr\xC3\xBC\xC3\x9F"), "Gr\xC3\xBC\xC3\x9F");
    EXPECT_EQ(KeptName("   "), "");
}

TEST(KeptNameTest, KeepsTabsAndOtherControlCharacters) {
    EXPECT_EQ(KeptName("Pump\t3"), "Pump\t3");
    EXPECT_EQ(KeptName("\tPump 3\x07\t"), "\tPump 3\x07\t");
}

TEST(ValidateNewNameTest, EmptyNameIsMissing) {
    ScriptedBoxes boxes;
    EXPECT_FALSE(ValidateNewName(BookOf({}), "   ", ToLower, boxes));
    ASSERT_EQ(boxes.Shown.size(), 1U);
    EXPECT_EQ(boxes.Shown[0].Title, "Missing Client Name");
    EXPECT_EQ(boxes.Shown[0].Text, "You need to enter a name for this client radio.");
    EXPECT_EQ(boxes.Shown[0].Icon, BoxIcon::Information);
    EXPECT_EQ(boxes.Shown[0].Buttons, BoxButtons::Ok);
}

TEST(ValidateNewNameTest, NameOfAnotherEntryIsTakenInEitherCase) {
    ScriptedBoxes boxes;
    EXPECT_FALSE(ValidateNewName(BookOf({"Pump 3"}), " pUMP 3 ", ToLower, boxes));
    ASSERT_EQ(boxes.Shown.size(), 1U);
    EXPECT_EQ(boxes.Shown[0].Title, "Name not Unique");
    EXPECT_EQ(boxes.Shown[0].Text,
              "A Client Radio already is configured with the same name.\nYou need to enter a "
              "unique name.");
    EXPECT_EQ(boxes.Shown[0].Icon, BoxIcon::Information);
    EXPECT_EQ(boxes.Shown[0].Buttons, BoxButtons::Ok);
}

TEST(ValidateNewNameTest, LettersOfBothNamesAreFoldedAsToldByTheCaller) {
    const LowerCase foldsUmlaut = [](const std::string& text) {
        return text == "\xC3\x84" ? std::string("\xC3\xA4") : text;
    };
    ScriptedBoxes boxes;
    EXPECT_FALSE(ValidateNewName(BookOf({"\xC3\xA4"}), "\xC3\x84", foldsUmlaut, boxes));
    EXPECT_FALSE(ValidateNewName(BookOf({"\xC3\x84"}), "\xC3\xA4", foldsUmlaut, boxes));
    EXPECT_EQ(boxes.Shown.size(), 2U);
}

TEST(ValidateNewNameTest, EachMatchIsTold) {
    ScriptedBoxes boxes;
    EXPECT_FALSE(ValidateNewName(BookOf({"A", "B", "a"}), "a", ToLower, boxes));
    EXPECT_EQ(boxes.Shown.size(), 2U);
}

TEST(ValidateNewNameTest, EmptyNameIsComparedAllTheSame) {
    ScriptedBoxes boxes;
    EXPECT_FALSE(ValidateNewName(BookOf({""}), "", ToLower, boxes));
    ASSERT_EQ(boxes.Shown.size(), 2U);
    EXPECT_EQ(boxes.Shown[0].Title, "Missing Client Name");
    EXPECT_EQ(boxes.Shown[1].Title, "Name not Unique");
}

TEST(ValidateNewNameTest, NewNameIsAccepted) {
    ScriptedBoxes boxes;
    EXPECT_TRUE(ValidateNewName(BookOf({"Pump 3"}), "Pump 33", ToLower, boxes));
    EXPECT_TRUE(boxes.Shown.empty());
}

TEST(EntryWithAddressTest, ChannelAndAllSixBytesDecide) {
    AddressBook book = BookOf({"A", "B"});
    book.Entries[2].Channel = 0x10;
    book.Entries[2].Mac = {1, 2, 3, 4, 5, 6};
    ClientRadio wanted = book.Entries[2];
    EXPECT_EQ(EntryWithAddress(book, wanted), 2);
    wanted.Mac[0] = 9;
    EXPECT_EQ(EntryWithAddress(book, wanted), std::nullopt);
    wanted = book.Entries[2];
    wanted.Channel = 0x11;
    EXPECT_EQ(EntryWithAddress(book, wanted), std::nullopt);
}

}  // namespace
