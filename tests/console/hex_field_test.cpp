#include "console/hex_field.h"

#include <gtest/gtest.h>

#include <string>

#include "support/virtual_host.h"

namespace {

using testing_support::ScriptedBoxes;

TEST(HexKeyTest, DigitsAndUpperCaseLettersPass) {
    for (const char32_t c : std::u32string(U"0123456789ABCDEF")) {
        EXPECT_EQ(TakesHexKey(c), HexKey::Pass) << static_cast<int>(c);
    }
}

TEST(HexKeyTest, LowerCaseLettersTurnIntoUpperCase) {
    for (char32_t c = U'a'; c <= U'f'; ++c) {
        EXPECT_EQ(TakesHexKey(c), HexKey::Replace);
    }
}

TEST(HexKeyTest, ControlCharactersPass) {
    for (char32_t c = 0; c < U' '; ++c) {
        EXPECT_EQ(TakesHexKey(c), HexKey::Pass);
    }
}

TEST(HexKeyTest, BlankIsSwallowed) {
    EXPECT_EQ(TakesHexKey(U' '), HexKey::Swallow);
}

TEST(HexKeyTest, AnythingElseIsRefused) {
    for (const char32_t c :
         {U'g', U'G', U'/', U':', U'@', U'`', U'-', U'~', U'\u00e4', U'\uff21'}) {
        EXPECT_EQ(TakesHexKey(c), HexKey::Refuse) << static_cast<int>(c);
    }
}

TEST(HexKeyTest, RefusalIsAPlainBoxWithoutATitle) {
    const BoxContent box = HexKeyRefusal();
    EXPECT_EQ(box.Text, "Error: hex numbers can only have digits 0 to 9, or letters A to F");
    EXPECT_EQ(box.Title, "");
    EXPECT_EQ(box.Icon, BoxIcon::None);
    EXPECT_EQ(box.Buttons, BoxButtons::Ok);
}

TEST(ValidateHexFieldTest, SingleDigitGetsItsZero) {
    ScriptedBoxes boxes;
    EXPECT_EQ(ValidateHexField(FirstMacField + 2, "7", boxes), "07");
    EXPECT_EQ(ValidateHexField(ChannelField, " a ", boxes), "0A");
    EXPECT_TRUE(boxes.Shown.empty());
}

TEST(ValidateHexFieldTest, ChannelLiesBetween00And37) {
    ScriptedBoxes boxes;
    EXPECT_EQ(ValidateHexField(ChannelField, "00", boxes), "00");
    EXPECT_EQ(ValidateHexField(ChannelField, "37", boxes), "37");
    EXPECT_TRUE(boxes.Shown.empty());
    EXPECT_FALSE(ValidateHexField(ChannelField, "38", boxes));
    ASSERT_EQ(boxes.Shown.size(), 1U);
    EXPECT_EQ(boxes.Shown[0].Title, "Bad Channel Number");
    EXPECT_EQ(boxes.Shown[0].Text, "Channel number is not a valid hex number between 00 and 37");
    EXPECT_EQ(boxes.Shown[0].Icon, BoxIcon::Exclamation);
    EXPECT_EQ(boxes.Shown[0].Buttons, BoxButtons::Ok);
}

TEST(ValidateHexFieldTest, MacLiesBetween00AndFF) {
    ScriptedBoxes boxes;
    EXPECT_EQ(ValidateHexField(FirstMacField, "ff", boxes), "FF");
    EXPECT_TRUE(boxes.Shown.empty());
    EXPECT_FALSE(ValidateHexField(FirstMacField + 5, "123", boxes));
    ASSERT_EQ(boxes.Shown.size(), 1U);
    EXPECT_EQ(boxes.Shown[0].Title, "Bad MAC Number");
    EXPECT_EQ(boxes.Shown[0].Text, "MAC number is not a valid hex number between 00 and FF");
    EXPECT_EQ(boxes.Shown[0].Icon, BoxIcon::Exclamation);
    EXPECT_EQ(boxes.Shown[0].Buttons, BoxButtons::Ok);
}

TEST(ValidateHexFieldTest, PastedTextWithABlankInsideIsRefused) {
    ScriptedBoxes boxes;
    EXPECT_FALSE(ValidateHexField(ChannelField, "1 2", boxes));
    EXPECT_FALSE(ValidateHexField(ChannelField, "", boxes));
    EXPECT_EQ(boxes.Shown.size(), 2U);
}

TEST(HexFocusTest, FocusArmsAFieldAndSelectsItOnce) {
    HexFocus focus;
    EXPECT_EQ(focus.Armed(), 0);
    EXPECT_TRUE(focus.Gained(ChannelField));
    EXPECT_EQ(focus.Armed(), 1);
    EXPECT_FALSE(focus.Gained(ChannelField)) << "the window was only activated again";
    focus.Lost();
    EXPECT_EQ(focus.Armed(), 0);
    EXPECT_TRUE(focus.Gained(FirstMacField + 3));
    EXPECT_EQ(focus.Armed(), 5);
}

TEST(HexFocusTest, OnlyTheArmedFieldIsComplete) {
    HexFocus focus;
    focus.Gained(FirstMacField);
    EXPECT_FALSE(focus.IsComplete(FirstMacField, 1));
    EXPECT_TRUE(focus.IsComplete(FirstMacField, 2));
    EXPECT_TRUE(focus.IsComplete(FirstMacField, 3));
    EXPECT_FALSE(focus.IsComplete(FirstMacField + 1, 2));
    focus.Disarm();
    EXPECT_FALSE(focus.IsComplete(FirstMacField, 2));
}

TEST(HexFocusTest, ActivationDoesNotArmAFieldThatWasGood) {
    HexFocus focus;
    focus.Gained(FirstMacField);
    focus.Disarm();
    EXPECT_FALSE(focus.Gained(FirstMacField));
    EXPECT_EQ(focus.Armed(), 0);
}

}  // namespace
