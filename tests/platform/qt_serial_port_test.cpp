#include "platform/qt/qt_serial_port.h"

#include <cerrno>
#include <chrono>
#include <ctime>

#include "common/fault.h"
#include "support/qt/serial_bench.h"

#ifndef _WIN32

namespace {

using SerialPortTest = SerialBench;

TEST_F(SerialPortTest, StartsClosedAndEmpty) {
    EXPECT_FALSE(port.PortOpen());
    EXPECT_EQ(port.InBufferCount(), 0);
    EXPECT_EQ(port.CommPort(), 1);
    EXPECT_TRUE(port.Input(0).empty());
}

TEST_F(SerialPortTest, KeepsNumberAndSettings) {
    port.SetCommPort(12);
    port.SetSettings("115200,E,7,2");
    EXPECT_EQ(port.CommPort(), 12);
    EXPECT_EQ(port.Settings(), "115200,E,7,2");
}

TEST_F(SerialPortTest, RefusesNumbersThatAreNoPort) {
    EXPECT_THROW(port.SetCommPort(0), Fault);
    EXPECT_THROW(port.SetCommPort(17), Fault);
    EXPECT_EQ(port.CommPort(), 1);
}

TEST_F(SerialPortTest, RefusesSettingsThatAreNone) {
    const std::string before = port.Settings();
    for (const char* text : {"", "abc,N,8,1", "0,N,8,1", "-9600,N,8,1", "38400,X,8,1",
                             "38400,N,9,1", "38400,N,8,3", "38400,N,8", "38400,N,8,1,1"}) {
        EXPECT_THROW(port.SetSettings(text), Fault) << text;
    }
    EXPECT_EQ(port.Settings(), before);
}

TEST_F(SerialPortTest, NeitherNumberNorSettingsOfAnOpenPortChange) {
    Open();
    EXPECT_THROW(port.SetCommPort(2), Fault);
    EXPECT_THROW(port.SetSettings("9600,N,8,1"), Fault);
    EXPECT_EQ(port.Settings(), "38400,N,8,1");
    EXPECT_TRUE(port.PortOpen());
}

TEST_F(SerialPortTest, OpensClosesAndOpensAgain) {
    for (int i = 0; i < 3; ++i) {
        Open();
        EXPECT_TRUE(port.PortOpen());
        Arrive({1, 2, 3});
        port.SetPortOpen(false);
        EXPECT_FALSE(port.PortOpen());
        EXPECT_EQ(port.InBufferCount(), 0);
    }
}

/// More than a slow line brings in many seconds.
constexpr int Many = 1000000;

/// A port whose bytes come one by one. They have to be quick, so a busy machine is given more than
/// one chance.
class SlowPortTest : public SerialPortTest {
 protected:
    void SetUp() override {
        Open();
        for (int chance = 0; chance < 200 && !Rests(); ++chance) {
            port.Expect(1);
            static_cast<void>(port.Input(0));
        }
        ASSERT_EQ(port.InBufferCount(), 0) << "each byte is told of";
    }
    /// Whether byte 9, which is on its way then, is not told of.
    bool Rests() {
        Arrive({1});
        Arrive({1});
        static_cast<void>(port.Input(0));
        port.Expect(Many);
        far.Send({9});
        bool later = false;
        const Later look(20, [&later] { later = true; });
        return RunEventsUntil([&later] { return later; }) && port.InBufferCount() == 0;
    }
};

TEST_F(SlowPortTest, BytesThatAreExpectedTogetherAreNotToldOfOneByOne) {
    ASSERT_EQ(far.Send({2, 3}), 2U);
    port.Expect(1);
    EXPECT_EQ(port.Input(0), (Bytes{9, 2, 3}));
    Arrive({5});
}

TEST_F(SlowPortTest, BytesThatAreExpectedAreTakenWhenTheirTimeHasPassed) {
    constexpr int SomeMilliseconds = 12;
    port.Expect(1);
    static_cast<void>(port.Input(0));
    Arrive({1});
    Arrive({1});
    static_cast<void>(port.Input(0));
    port.Expect(SomeMilliseconds);
    ASSERT_EQ(far.Send({2, 3, 4}), 3U);
    ASSERT_TRUE(RunEventsUntil([this] { return port.InBufferCount() == 3; }));
    EXPECT_EQ(port.Input(0), (Bytes{2, 3, 4}));
    Arrive({5});
}

TEST_F(SerialPortTest, BytesThatComeInPacksAreToldOfAtOnce) {
    Open();
    Arrive({1, 2, 3, 4});
    port.Expect(Many);
    Arrive({5, 6, 7, 8});
}

TEST_F(SlowPortTest, ATickTakesWhatIsThereOfBytesThatAreExpected) {
    port.LookForHangUp();
    EXPECT_EQ(port.Input(0), Bytes{9});
}

TEST_F(SlowPortTest, NothingIsExpectedOfAPortThatIsOpenedAgain) {
    port.SetPortOpen(false);
    Open();
    Arrive({2, 3, 4});
}

TEST_F(SlowPortTest, ADeviceThatGoesWhileBytesAreExpectedClosesThePort) {
    far.HangUp();
    port.LookForHangUp();
    EXPECT_TRUE(ClosesItself());
}

TEST_F(SerialPortTest, OpensAtAnyBaudRate) {
    for (const char* settings : {"9600,N,8,1", "28800,N,8,1", "57600,N,8,1", "115200,N,8,1"}) {
        port.SetSettings(settings);
        port.SetPortOpen(true);
        EXPECT_TRUE(port.PortOpen()) << settings;
        port.SetPortOpen(false);
    }
}

TEST_F(SerialPortTest, SaysWhatAPortThatDoesNotExistLacks) {
    Wire(3, QStringLiteral("/dev/no-such-device"));
    port.SetCommPort(3);
    try {
        port.SetPortOpen(true);
        FAIL() << "opened a device that does not exist";
    } catch (const Fault& fault) {
        const std::string text = fault.what();
        EXPECT_NE(text.find("COM3"), std::string::npos) << text;
        EXPECT_NE(text.find("/dev/no-such-device"), std::string::npos) << text;
        EXPECT_NE(text.find("No such file"), std::string::npos) << text;
    }
    EXPECT_FALSE(port.PortOpen());
}

TEST_F(SerialPortTest, AFileIsNoPort) {
    QFile file(QDir(folder.path()).filePath(QStringLiteral("plain")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    Wire(2, file.fileName());
    port.SetCommPort(2);
    EXPECT_THROW(port.SetPortOpen(true), Fault);
    EXPECT_FALSE(port.PortOpen());
}

TEST_F(SerialPortTest, AnotherPortCanOpenAfterOneThatFailed) {
    Wire(3, QStringLiteral("/dev/no-such-device"));
    port.SetCommPort(3);
    EXPECT_THROW(port.SetPortOpen(true), Fault);
    Open();
    Arrive({9});
    EXPECT_EQ(port.Input(0), Bytes{9});
}

TEST_F(SerialPortTest, OneDeviceOpensOnce) {
    Open();
    QtSerialPort second(folder.path());
    second.SetCommPort(1);
    EXPECT_THROW(second.SetPortOpen(true), Fault);
    port.SetPortOpen(false);
    second.SetPortOpen(true);
    EXPECT_TRUE(second.PortOpen());
}

TEST_F(SerialPortTest, OneDeviceOpensOnceUnderTwoNames) {
    const QString alias = QDir(folder.path()).filePath(QStringLiteral("by-id"));
    ASSERT_TRUE(QFile::link(far.Device(), alias));
    Wire(2, alias);
    Open();
    QtSerialPort second(folder.path());
    second.SetCommPort(2);
    EXPECT_THROW(second.SetPortOpen(true), Fault);
}

TEST_F(SerialPortTest, DtrOfADeviceWithoutThatLineIsNoFault) {
    port.SetDTREnable(true);
    Open();
    port.SetDTREnable(true);
    port.SetDTREnable(false);
    QCoreApplication::processEvents();
    EXPECT_TRUE(port.PortOpen());
    Arrive({5});
}

TEST_F(SerialPortTest, TakesOneByteOrAllThatWait) {
    Open();
    Arrive({10, 20, 30, 40});
    EXPECT_EQ(port.Input(1), Bytes{10});
    EXPECT_EQ(port.InBufferCount(), 3);
    EXPECT_EQ(port.Input(2), (Bytes{20, 30}));
    EXPECT_EQ(port.Input(0), Bytes{40});
    EXPECT_TRUE(port.Input(1).empty());
    EXPECT_TRUE(port.Input(0).empty());
}

TEST_F(SerialPortTest, BytesOfEveryValueComeUnchanged) {
    Open();
    Bytes all(256);
    for (std::size_t i = 0; i < all.size(); ++i) {
        all[i] = static_cast<std::uint8_t>(i);
    }
    Arrive(all);
    EXPECT_EQ(port.Input(0), all);
}

TEST_F(SerialPortTest, BytesOfEveryValueGoUnchanged) {
    Open();
    Bytes all(256);
    for (std::size_t i = 0; i < all.size(); ++i) {
        all[i] = static_cast<std::uint8_t>(i);
    }
    port.Output(all);
    Bytes arrived;
    EXPECT_TRUE(RunEventsUntil([&] {
        const Bytes more = far.Receive();
        arrived.insert(arrived.end(), more.begin(), more.end());
        return arrived.size() >= all.size();
    }));
    EXPECT_EQ(arrived, all);
}

TEST_F(SerialPortTest, LongInputComesWhole) {
    Open();
    const Bytes sent = PatternOf(300'000);
    std::size_t position = 0;
    Bytes received;
    EXPECT_TRUE(RunEventsUntil([&] {
        const std::size_t end = std::min(position + 2000, sent.size());
        position += far.Send(Bytes(sent.begin() + static_cast<std::ptrdiff_t>(position),
                                   sent.begin() + static_cast<std::ptrdiff_t>(end)));
        const Bytes more = port.Input(0);
        received.insert(received.end(), more.begin(), more.end());
        return received.size() >= sent.size();
    }));
    EXPECT_EQ(received, sent);
}

TEST_F(SerialPortTest, LongOutputGoesWholeWithoutWaiting) {
    Open();
    const Bytes sent = PatternOf(300'000);
    const auto start = std::chrono::steady_clock::now();
    port.Output(std::span(sent).first(100'000));
    port.Output(std::span(sent).subspan(100'000));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1));
    Bytes arrived;
    EXPECT_TRUE(RunEventsUntil([&] {
        const Bytes more = far.Receive();
        arrived.insert(arrived.end(), more.begin(), more.end());
        return arrived.size() >= sent.size();
    }));
    EXPECT_EQ(arrived, sent);
    EXPECT_TRUE(port.PortOpen());
}

TEST_F(SerialPortTest, SmallReadsOfALongInputAreCheap) {
    Open();
    const std::size_t total = 200'000;
    std::size_t sent = 0;
    ASSERT_TRUE(RunEventsUntil([&] {
        sent += far.Send(Bytes(std::min<std::size_t>(2000, total - sent), 0x55));
        return port.InBufferCount() == static_cast<int>(total);
    }));
    const std::clock_t start = std::clock();
    for (std::size_t i = 0; i < total; ++i) {
        ASSERT_EQ(port.Input(1).size(), 1U);
    }
    // Moving what is left at every read would be 20 gigabytes of copying.
    EXPECT_LT(std::clock() - start, CLOCKS_PER_SEC);
    EXPECT_EQ(port.InBufferCount(), 0);
}

TEST_F(SerialPortTest, OutputOfAClosedPortIsDiscarded) {
    port.Output(Bytes{1, 2, 3});
    Open();
    port.Output(Bytes{4});
    Bytes arrived;
    EXPECT_TRUE(RunEventsUntil([&] {
        arrived = far.Receive();
        return !arrived.empty();
    }));
    EXPECT_EQ(arrived, Bytes{4});
}

TEST_F(SerialPortTest, BytesWrittenJustBeforeClosingStillGo) {
    Open();
    port.Output(Bytes{0x2B, 0x2B, 0x2B});
    port.SetPortOpen(false);
    EXPECT_EQ(far.Receive(), (Bytes{0x2B, 0x2B, 0x2B}));
}

TEST_F(SerialPortTest, PurgeThrowsAwayWhatWaits) {
    Open();
    Arrive({1, 2, 3});
    port.ClearInBuffer();
    EXPECT_EQ(port.InBufferCount(), 0);
    Arrive({4});
    EXPECT_EQ(port.Input(0), Bytes{4});
}

TEST_F(SerialPortTest, PurgeThrowsAwayWhatTheSystemStillHolds) {
    Open();
    ASSERT_EQ(far.Send({1, 2, 3}), 3U);
    port.ClearInBuffer();
    Arrive({4});
    EXPECT_EQ(port.Input(0), Bytes{4});
}

// The system has told that bytes are there, and before they are read another handler purges them.
TEST_F(SerialPortTest, PurgeBetweenNoticeAndReadLeavesThePortListening) {
    Open();
    for (int i = 0; i < 40; ++i) {
        bool purged = false;
        const Posted purge([&] {
            port.ClearInBuffer();
            purged = true;
        });
        ASSERT_EQ(far.Send({1, 2, 3}), 3U);
        ASSERT_TRUE(RunEventsUntil([&] { return purged; }));
        ASSERT_TRUE(port.PortOpen());
        port.ClearInBuffer();
        Arrive({static_cast<std::uint8_t>(i)});
        ASSERT_EQ(port.Input(0), Bytes{static_cast<std::uint8_t>(i)});
    }
}

// An empty read is reported by whatever error the system last met; by some of them QSerialPort
// would stop listening.
TEST_F(SerialPortTest, PurgeAfterAnyEarlierErrorLeavesThePortListening) {
    Open();
    for (const int earlier : {EAGAIN, EIO, EACCES, ENODEV, ENOENT, EBADF}) {
        bool purged = false;
        const Posted purge([&] {
            port.ClearInBuffer();
            purged = true;
            errno = earlier;
        });
        ASSERT_EQ(far.Send({1, 2, 3}), 3U);
        ASSERT_TRUE(RunEventsUntil([&] { return purged; }));
        port.ClearInBuffer();
        Arrive({7});
        ASSERT_EQ(port.Input(0), Bytes{7}) << earlier;
    }
}

TEST_F(SerialPortTest, InputBeyondTheBufferIsLostAndThePortStays) {
    Open();
    std::size_t sent = 0;
    const std::size_t total = QtSerialPort::MaxWaiting + 5000;
    ASSERT_TRUE(RunEventsUntil([&] {
        sent += far.Send(Bytes(std::min<std::size_t>(4000, total - sent), 0x55));
        return sent == total && port.InBufferCount() == static_cast<int>(QtSerialPort::MaxWaiting);
    }));
    EXPECT_EQ(port.Input(0).size(), QtSerialPort::MaxWaiting);
    EXPECT_TRUE(port.PortOpen());
}

}  // namespace

#endif
