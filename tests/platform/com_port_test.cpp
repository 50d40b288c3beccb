#include "platform/com_port.h"

#include <gtest/gtest.h>

#include "common/fault.h"

namespace {

TEST(ComPort, OpensByTheNameThatEveryNumberHas) {
    EXPECT_EQ(ComPortPath(1), "\\\\.\\COM1");
    EXPECT_EQ(ComPortPath(10), "\\\\.\\COM10");
    EXPECT_EQ(ComPortPath(16), "\\\\.\\COM16");
    EXPECT_EQ(ComPortName(7), "COM7");
}

TEST(ComPort, FaultsOnANumberThatIsNoPort) {
    EXPECT_THROW(static_cast<void>(ComPortPath(0)), Fault);
    EXPECT_THROW(static_cast<void>(ComPortName(17)), Fault);
}

TEST(ComPort, TellsTheSystemOfALineAtEachRateOfTheRadio) {
    for (const int rate : {9600, 19200, 28800, 38400, 57600, 115200}) {
        const ComLineCodes codes =
            ComLineCodesOf(ReadLineSettings(std::to_string(rate) + ",N,8,1"));
        EXPECT_EQ(codes, (ComLineCodes{static_cast<std::uint32_t>(rate), 8, 0, 0}));
    }
}

TEST(ComPort, TellsTheSystemOfParityAndStopBits) {
    EXPECT_EQ(ComLineCodesOf(ReadLineSettings("9600,O,7,1.5")), (ComLineCodes{9600, 7, 1, 1}));
    EXPECT_EQ(ComLineCodesOf(ReadLineSettings("9600,E,7,2")), (ComLineCodes{9600, 7, 2, 2}));
    EXPECT_EQ(ComLineCodesOf(ReadLineSettings("9600,M,5,1")), (ComLineCodes{9600, 5, 3, 0}));
    EXPECT_EQ(ComLineCodesOf(ReadLineSettings("9600,S,6,1")), (ComLineCodes{9600, 6, 4, 0}));
}

TEST(ComPort, APortWithoutADeviceIsMissing) {
    for (const std::uint32_t error : {2U, 3U, 20U, 31U, 55U, 433U, 1167U}) {
        EXPECT_EQ(ComRefusalOf(error), ComRefusal::Missing) << error;
    }
}

TEST(ComPort, APortThatAnotherProgramHasIsInUse) {
    for (const std::uint32_t error : {5U, 32U, 170U}) {
        EXPECT_EQ(ComRefusalOf(error), ComRefusal::InUse) << error;
    }
}

TEST(ComPort, WhatElseGoesWrongIsNeither) {
    EXPECT_EQ(ComRefusalOf(0), ComRefusal::Other);
    EXPECT_EQ(ComRefusalOf(87), ComRefusal::Other);
}

}  // namespace
