#include "platform/device_name.h"

#include <gtest/gtest.h>

namespace {

TEST(DeviceNameTest, IsMakerAndProduct) {
    EXPECT_EQ(DeviceName("Acme", "USB Serial Converter"), "Acme USB Serial Converter");
    EXPECT_EQ(DeviceName(" Acme ", " Converter "), "Acme Converter");
}

TEST(DeviceNameTest, AMakerThatTheProductNamesIsNotToldTwice) {
    EXPECT_EQ(DeviceName("ACME", "Acme Converter"), "Acme Converter");
}

TEST(DeviceNameTest, WithoutRoomForBothTheProductStandsAlone) {
    const std::string product(MostDeviceName - 5, 'p');
    EXPECT_EQ(DeviceName("Acme", product), "Acme " + product);
    EXPECT_EQ(DeviceName("Acme", product + "p"), product + "p");
}

TEST(DeviceNameTest, WhatIsNotNamedIsASerialPort) {
    EXPECT_EQ(DeviceName("", ""), "Serial port");
    EXPECT_EQ(DeviceName("", " "), "Serial port");
    EXPECT_EQ(DeviceName("Acme", ""), "Acme");
    EXPECT_EQ(DeviceName("", "Converter"), "Converter");
}

}  // namespace
