#include "platform/qt/port_devices.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include "common/fault.h"

#ifndef _WIN32

namespace {

struct Expected {
    int Number;
    const char* Device;
};

class PortDevices : public ::testing::TestWithParam<Expected> {};

TEST_P(PortDevices, NumberStandsForItsDevice) {
    const QTemporaryDir empty;
    const QString device = DeviceOfPort(GetParam().Number, empty.path());
    const QString expected = QLatin1String(GetParam().Device);
    const QString canonical = QFileInfo(expected).canonicalFilePath();
    EXPECT_EQ(device, canonical.isEmpty() ? expected : canonical);
}

INSTANTIATE_TEST_SUITE_P(All, PortDevices,
                         ::testing::Values(Expected{1, "/dev/ttyS0"}, Expected{4, "/dev/ttyS3"},
                                           Expected{5, "/dev/ttyUSB0"},
                                           Expected{12, "/dev/ttyUSB7"},
                                           Expected{13, "/dev/ttyACM0"},
                                           Expected{16, "/dev/ttyACM3"}));

class PortLinks : public ::testing::Test {
 protected:
    [[nodiscard]] QString At(const char* name) const {
        return QDir(folder.path()).filePath(QLatin1String(name));
    }

    QTemporaryDir folder;
};

TEST_F(PortLinks, LinkTakesPrecedence) {
    ASSERT_TRUE(QFile::link(QStringLiteral("/dev/null"), At("COM5")));
    EXPECT_EQ(DeviceOfPort(5, folder.path()), QStringLiteral("/dev/null"));
    EXPECT_EQ(DeviceOfPort(6, folder.path()), QStringLiteral("/dev/ttyUSB1"));
}

TEST_F(PortLinks, LinkOfALinkGivesTheDeviceItself) {
    ASSERT_TRUE(QFile::link(QStringLiteral("/dev/null"), At("by-id")));
    ASSERT_TRUE(QFile::link(At("by-id"), At("COM5")));
    EXPECT_EQ(DeviceOfPort(5, folder.path()), QStringLiteral("/dev/null"));
}

TEST_F(PortLinks, LinkToNothingKeepsItsTarget) {
    ASSERT_TRUE(QFile::link(QStringLiteral("/dev/unplugged"), At("COM5")));
    EXPECT_EQ(DeviceOfPort(5, folder.path()), QStringLiteral("/dev/unplugged"));
}

TEST_F(PortLinks, LinkToItselfIsStillAName) {
    ASSERT_TRUE(QFile::link(At("COM5"), At("COM5")));
    EXPECT_EQ(DeviceOfPort(5, folder.path()), At("COM5"));
}

TEST_F(PortLinks, APlainFileIsNoLink) {
    QFile plain(At("COM5"));
    ASSERT_TRUE(plain.open(QIODevice::WriteOnly));
    EXPECT_EQ(DeviceOfPort(5, folder.path()), QStringLiteral("/dev/ttyUSB0"));
}

TEST_F(PortLinks, NumbersOutOfRangeAreFaults) {
    for (const int number : {-1, 0, 17, 100}) {
        EXPECT_THROW(static_cast<void>(DeviceOfPort(number, folder.path())), Fault) << number;
    }
}

}  // namespace

#endif
