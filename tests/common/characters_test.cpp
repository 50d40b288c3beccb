#include "common/characters.h"

#include <gtest/gtest.h>

namespace {

constexpr const char* Mixed =
    "a\xC2\xB0\xE2\x82\xAC\xF0\x9F\x93\xA1z";  // of one, two, three, four bytes, and one

TEST(Characters, CountsEachOnceHoweverManyBytesItHas) {
    EXPECT_EQ(CountCharacters(""), 0U);
    EXPECT_EQ(CountCharacters("abc"), 3U);
    EXPECT_EQ(CountCharacters(Mixed), 5U);
    EXPECT_EQ(CountCharacters(std::string_view("a\0b", 3)), 3U);
}

TEST(Characters, CutsBetweenThem) {
    const std::string text = Mixed;
    EXPECT_EQ(CutText(text, 0), "");
    EXPECT_EQ(CutText(text, 1), "a");
    EXPECT_EQ(CutText(text, 2), text.substr(0, 3));
    EXPECT_EQ(CutText(text, 3), text.substr(0, 6));
    EXPECT_EQ(CutText(text, 4), text.substr(0, 10));
    EXPECT_EQ(CutText(text, 5), text);
    EXPECT_EQ(CutText(text, 6), text);
}

TEST(Characters, BecomeTheirLatin1ByteOrABlank) {
    EXPECT_EQ(ToLatin1("Plain ~\x7F\t"), "Plain ~\x7F\t");
    EXPECT_EQ(ToLatin1("\xC2\x80\xC3\xBF"), "\x80\xFF") << "the first and the last of two bytes";
    EXPECT_EQ(ToLatin1("\xC4\x80"), " ") << "the first that has none";
    EXPECT_EQ(ToLatin1(Mixed), "a\xB0  z");
}

// Each of these is so many bytes that belong to no character.
TEST(Characters, AByteThatBelongsToNoneIsOneAndBecomesABlank) {
    for (const std::string_view stray :
         {"\x80", "\xBF\x80", "\xC0\x80", "\xC1\xBF", "\xC2", "\xE2\x82", "\xE0\x9F\xBF",
          "\xED\xA0\x80", "\xED\xBF\xBF", "\xF0\x9F\x93", "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80",
          "\xF7\xBF\xBF\xBF", "\xF8\x88\x80\x80", "\xFF"}) {
        EXPECT_EQ(CountCharacters(stray), stray.size());
        EXPECT_EQ(ToLatin1(stray), std::string(stray.size(), ' '));
        EXPECT_EQ(CutText(stray, 1), stray.substr(0, 1));
        const std::string inside = "\xC2\xB5" + std::string(stray) + "q";
        EXPECT_EQ(ToLatin1(inside), "\xB5" + std::string(stray.size(), ' ') + "q");
    }
}

TEST(Characters, ThoseAtTheEdgesAreWhole) {
    for (const std::string_view edge :
         {"\xC2\x80", "\xDF\xBF", "\xE0\xA0\x80", "\xED\x9F\xBF", "\xEE\x80\x80", "\xEF\xBF\xBF",
          "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF"}) {
        EXPECT_EQ(CountCharacters(edge), 1U);
    }
}

TEST(Characters, ACharacterCutShortByAnotherLeavesThatWhole) {
    EXPECT_EQ(ToLatin1("\xE2\x82\xC2\xB0"), "  \xB0");
    EXPECT_EQ(ToLatin1("\xF0\x9F"
                       "A"),
              "  A");
}

}  // namespace
