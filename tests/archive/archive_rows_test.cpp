#include "archive/archive_rows.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "archive/archive_words.h"
#include "logger/settings_image.h"

namespace {

LoggerState FreshLogger() {
    LoggerState state;
    state.NumAnalogChannels = 3;
    state.NumDigitalChannels = 1;
    state.FirmwareVersion = 21;
    SetDefaultSettings(state);
    // As a console knows it: read from an image, which leaves out what its channels lack.
    Bytes image;
    EXPECT_TRUE(config::EncodeSettingsImage(state, image));
    EXPECT_TRUE(config::DecodeSettingsImage(image, state));
    EXPECT_TRUE(config::EncodeSettingsImage(state, state.SettingsImage));
    return state;
}

TEST(PackedTimeNumber, OrdersAsTimeDoes) {
    const std::array<std::uint8_t, 4> earlier = {0xC0, 0xFF, 0x1C, 0x48};
    const std::array<std::uint8_t, 4> later = {0x00, 0x00, 0x1E, 0x48};
    EXPECT_EQ(TimeNumber(earlier), 0x481CFFC0U);
    EXPECT_LT(TimeNumber(earlier), TimeNumber(later));
    EXPECT_EQ(PackedTimeOf(0x481CFFC0U), earlier);
}

TEST(SettingsRow, KeepsTheImageAsItWasRead) {
    LoggerState logger = FreshLogger();
    // What no field reads, and what a reader repairs, stays too.
    logger.SettingsImage[config::SettingsImageSize - 1] = 0;
    const ArchiveSettings row = SettingsRow(logger, {});
    EXPECT_EQ(row.Image, logger.SettingsImage);
    EXPECT_EQ(SettingsOfRow(row).Logger.SettingsImage, logger.SettingsImage);
}

TEST(SettingsRow, MakesTheImageAnewFromSettingsThatWereChanged) {
    LoggerState logger = FreshLogger();
    logger.LoggerName = "Changed";
    const SeriesSettings back = SettingsOfRow(SettingsRow(logger, {}));
    EXPECT_EQ(back.Logger.LoggerName, "Changed");
}

TEST(SettingsRow, ALoggerWithoutAnImageGetsOne) {
    LoggerState logger = FreshLogger();
    logger.SettingsImage.clear();
    EXPECT_EQ(SettingsRow(logger, {}).Image, FreshLogger().SettingsImage);
}

TEST(SettingsRow, KeepsWhatTheImageDoesNotTell) {
    LoggerState logger = FreshLogger();
    logger.SODAvailable = True;
    logger.FlowDecPlaces = 2;
    logger.VelDecPlaces = 3;
    logger.FlowEqOffset = 0.1;
    logger.FlowEqExponent = 1.5;
    logger.FlowEqMultiplier = 1.0 / 3;
    logger.FlowDeviceName = "Weir \"7\"";
    logger.FlowTable.Append({1, 2});
    const SeriesSettings back = SettingsOfRow(SettingsRow(logger, logger.FlowTable));
    EXPECT_EQ(back.Logger.FirmwareVersion, 21);
    EXPECT_EQ(back.Logger.SODAvailable, True);
    EXPECT_EQ(back.Logger.NumAnalogChannels, 3);
    EXPECT_EQ(back.Logger.NumDigitalChannels, 1);
    EXPECT_EQ(back.Logger.FlowDecPlaces, 2);
    EXPECT_EQ(back.Logger.VelDecPlaces, 3);
    EXPECT_EQ(back.Logger.FlowEqOffset, 0.1);
    EXPECT_EQ(back.Logger.FlowEqExponent, 1.5);
    EXPECT_EQ(back.Logger.FlowEqMultiplier, 1.0 / 3);
    EXPECT_EQ(back.Logger.FlowDeviceName, "Weir \"7\"");
    ASSERT_EQ(back.Table.UpperBound(), 1);
    EXPECT_EQ(back.Table[1].Level, 1);
    EXPECT_EQ(back.Table[1].Flow, 2);
}

TEST(SettingsRow, WhatIsNoNumberIsZero) {
    LoggerState logger = FreshLogger();
    logger.FlowEqOffset = std::nan("");
    logger.FlowTable.Append({std::numeric_limits<double>::infinity(), 1});
    const ArchiveSettings row = SettingsRow(logger, logger.FlowTable);
    EXPECT_EQ(row.EquationOffset, 0);
    EXPECT_EQ(row.Points.at(0).Level, 0);
    EXPECT_EQ(row, SettingsRow(logger, logger.FlowTable));
}

TEST(SettingsOfRow, KeepsWithinTheRangesOfSettings) {
    const ArchiveSettings row{.Id = 0,
                              .Image = {1, 2, 3},
                              .Firmware = -1,
                              .AnalogChannels = 1000,
                              .PulseChannels = -5,
                              .SampleOnDemand = 7,
                              .FlowDecimals = -100'000,
                              .VelocityDecimals = 100'000,
                              .EquationOffset = std::nan(""),
                              .EquationExponent = 0,
                              .EquationMultiplier = 0,
                              .DeviceName = "",
                              .Points = {}};
    const LoggerRecord logger = SettingsOfRow(row).Logger;
    EXPECT_EQ(logger.NumAnalogChannels, 8);
    EXPECT_EQ(logger.NumDigitalChannels, 0);
    EXPECT_EQ(logger.FlowDecPlaces, 0);
    EXPECT_EQ(logger.VelDecPlaces, 6);
    EXPECT_EQ(logger.FlowEqOffset, 0);
    EXPECT_EQ(logger.SampleInterval, "1 day");
}

TEST(TroubleText, TellsWhatHelpsAndWhere) {
    EXPECT_EQ(TroubleText(ArchiveTrouble::Full, "/data/archive.sqlite", "disk I/O error"),
              "The upload was not kept in the archive, or not all of it: the disk is full.\n"
              "Make room on the disk, then upload again.\n"
              "\n"
              "/data/archive.sqlite\n"
              "disk I/O error");
}

}  // namespace
