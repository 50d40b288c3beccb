#include "platform/line_settings.h"

#include <gtest/gtest.h>

#include "common/fault.h"

namespace {

TEST(LineSettings, ReadsAllFourParts) {
    const LineSettings settings = ReadLineSettings("38400,N,8,1");
    EXPECT_EQ(settings.BaudRate, 38400);
    EXPECT_EQ(settings.Parity, LineParity::None);
    EXPECT_EQ(settings.DataBits, 8);
    EXPECT_EQ(settings.StopBits, LineStopBits::One);
}

TEST(LineSettings, ReadsParityInEitherCase) {
    EXPECT_EQ(ReadLineSettings("9600,e,7,2").Parity, LineParity::Even);
    EXPECT_EQ(ReadLineSettings("9600,O,7,2").Parity, LineParity::Odd);
    EXPECT_EQ(ReadLineSettings("9600,M,7,2").Parity, LineParity::Mark);
    EXPECT_EQ(ReadLineSettings("9600,s,7,2").Parity, LineParity::Space);
}

TEST(LineSettings, ReadsDataAndStopBits) {
    EXPECT_EQ(ReadLineSettings("9600,N,5,1.5").DataBits, 5);
    EXPECT_EQ(ReadLineSettings("9600,N,5,1.5").StopBits, LineStopBits::OneAndHalf);
    EXPECT_EQ(ReadLineSettings("9600,N,7,2").StopBits, LineStopBits::Two);
}

TEST(LineSettings, TakesAnyBaudRate) {
    EXPECT_EQ(ReadLineSettings("12345,N,8,1").BaudRate, 12345);
    EXPECT_EQ(ReadLineSettings("921600,N,8,1").BaudRate, 921600);
}

TEST(LineSettings, FaultsOnAnythingElse) {
    for (const char* text : {"", ",,,", "x,N,8,1", "0,N,8,1", "-1,N,8,1", "99999999999,N,8,1",
                             "9600,X,8,1", "9600,N,4,1", "9600,N,8,0", "9600,N,8", "9600;N;8;1"}) {
        EXPECT_THROW(static_cast<void>(ReadLineSettings(text)), Fault) << text;
    }
}

}  // namespace
