// Names on a server, which keeps no text that is not UTF-8.

#include <gtest/gtest.h>

#include <QString>
#include <random>

#include "platform/qt/server_dialect.h"
#include "platform/qt/server_text.h"

namespace testing_support {
namespace {

bool IsUtf8WithoutZeros(const std::string& text) {
    // At the very begin a byte order mark would be passed over.
    const auto bytes = QByteArray::fromStdString("a" + text);
    return QString::fromUtf8(bytes).toUtf8() == bytes && !bytes.contains('\0');
}

TEST(ServerTextTest, WhatIsUtf8IsKeptAsItIs) {
    for (const std::string text : {"", "Site 1", "M\xC3\xBChle", "\xE2\x82\xAC", "\xF0\x9F\x92\xA7",
                                   "\xF4\x8F\xBF\xBF", "\xEF\xBF\xBF"}) {
        EXPECT_EQ(ServerText(text), text);
        EXPECT_EQ(TextOfServer(text), text);
    }
}

TEST(ServerTextTest, WhatIsNotComesBackAsItWas) {
    for (const std::string& text :
         {std::string(1, '\0'), std::string("nul\0inside", 10), std::string("\xFF\xFE no UTF-8"),
          std::string("\xC3"), std::string("\xE2\x82"), std::string("\xF0\x9F\x92"),
          std::string("\xC0\x80"), std::string("\xE0\x80\x80"), std::string("\xED\xA0\x80"),
          std::string("\xF4\x90\x80\x80"), std::string("\xF5\x80\x80\x80"),
          std::string("\xF4\x8F\x9C\x80"), std::string("\xF4\x8F\x9F\xBF")}) {
        const std::string kept = ServerText(text);
        EXPECT_NE(kept, text);
        EXPECT_TRUE(IsUtf8WithoutZeros(kept)) << QByteArray::fromStdString(text).toHex().data();
        EXPECT_EQ(TextOfServer(kept), text);
    }
}

TEST(ServerTextTest, EveryRowOfBytesComesBackAsItWas) {
    std::mt19937 random(20261122);
    // Bytes that begin, go on and end characters, and marks.
    const std::string likely("a\0\x80\x9C\x9F\xBF\xC3\xE2\xED\xEF\xF0\xF4\x8F\xF5\xFF", 15);
    for (int one = 0; one < 200'000; ++one) {
        std::string text(random() % 9, ' ');
        for (char& byte : text) {
            byte = random() % 4 == 0 ? static_cast<char>(random()) : likely[random() % 15];
        }
        const std::string kept = ServerText(text);
        ASSERT_TRUE(IsUtf8WithoutZeros(kept)) << QByteArray::fromStdString(text).toHex().data();
        ASSERT_EQ(TextOfServer(kept), text) << QByteArray::fromStdString(text).toHex().data();
    }
}

TEST(ServerTroubleTest, CodesOfTheServerAreToldApart) {
    EXPECT_EQ(TroubleOfState(""), ArchiveTrouble::Away);
    EXPECT_EQ(TroubleOfState("08006"), ArchiveTrouble::Away);
    EXPECT_EQ(TroubleOfState("57P01"), ArchiveTrouble::Away);
    EXPECT_EQ(TroubleOfState("57P03"), ArchiveTrouble::Away);
    EXPECT_EQ(TroubleOfState("57014"), ArchiveTrouble::Locked);
    EXPECT_EQ(TroubleOfState("40P01"), ArchiveTrouble::Locked);
    EXPECT_EQ(TroubleOfState("40001"), ArchiveTrouble::Locked);
    EXPECT_EQ(TroubleOfState("25006"), ArchiveTrouble::ReadOnly);
    EXPECT_EQ(TroubleOfState("53100"), ArchiveTrouble::Full);
    EXPECT_EQ(TroubleOfState("28P01"), ArchiveTrouble::Refused);
    EXPECT_EQ(TroubleOfState("XX001"), ArchiveTrouble::Damaged);
    EXPECT_EQ(TroubleOfState("22012"), ArchiveTrouble::Other);
}

TEST(ServerTroubleTest, RefusalsAreToldFromAServerThatIsAway) {
    EXPECT_EQ(TroubleOfConnecting("FATAL:  password authentication failed for user \"anna\""),
              ArchiveTrouble::Refused);
    EXPECT_EQ(TroubleOfConnecting("fe_sendauth: no password supplied"), ArchiveTrouble::Refused);
    EXPECT_EQ(TroubleOfConnecting("server does not support SSL, but SSL was required"),
              ArchiveTrouble::Refused);
    EXPECT_EQ(TroubleOfConnecting("FATAL:  database \"orvia\" does not exist"),
              ArchiveTrouble::Foreign);
    EXPECT_EQ(TroubleOfConnecting("FATAL:  the database system is starting up"),
              ArchiveTrouble::Away);
    EXPECT_EQ(TroubleOfConnecting("FATAL:  sorry, too many clients already"), ArchiveTrouble::Away);
    EXPECT_EQ(TroubleOfConnecting("Connection refused"), ArchiveTrouble::Away);
}

}  // namespace
}  // namespace testing_support
