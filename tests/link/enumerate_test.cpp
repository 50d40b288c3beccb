#include "link/enumerate.h"

#include <gtest/gtest.h>

#include <random>

#include "support/virtual_host.h"

namespace {

using Enumerate::PortList;
using testing_support::MemoryRegistry;

const std::string UsbRoot = "SYSTEM\\CurrentControlSet\\Enum\\FTDIBUS";
const std::string ClassRoot = "SYSTEM\\CurrentControlSet\\Control\\Class";

std::vector<std::string> EntriesOf(const PortList& list) {
    return {list.begin(), list.end()};
}

class EnumerateTest : public ::testing::Test {
 protected:
    void AddUsb(const std::string& bus, const std::string& name, const std::string& port) {
        const std::string device = UsbRoot + "\\" + bus + "\\0000";
        registry.Set(device, "FriendlyName", name);
        registry.Set(device + "\\Device Parameters", "PortName", port);
    }

    std::vector<std::string> Listed() {
        PortList list;
        Enumerate::EnumerateSerialPorts(registry, list);
        EXPECT_TRUE(registry.Open.empty()) << "a key was left open";
        return EntriesOf(list);
    }

    MemoryRegistry registry;
};

using Entries = std::vector<std::string>;

TEST_F(EnumerateTest, MissingRootLeavesTheListEmpty) {
    PortList list;
    list.Append("left from before");
    Enumerate::EnumerateSerialPorts(registry, list);
    EXPECT_EQ(list.UpperBound(), 0);
    EXPECT_EQ(list[0], "");
}

TEST_F(EnumerateTest, UsbPortIsListedWithoutThePortInItsName) {
    AddUsb("VID_0403", "USB Serial Port (COM5)", "com5");
    EXPECT_EQ(Listed(), Entries{"COM5 - USB Serial Port"});
}

TEST_F(EnumerateTest, NameThatBeginsWithThePortIsKept) {
    AddUsb("VID_0403", "(COM5) adapter", "COM5");
    EXPECT_EQ(Listed(), Entries{"COM5 - (COM5) adapter"});
}

TEST_F(EnumerateTest, UsbPortWithoutNameOrPortIsLeftOut) {
    registry.Set(UsbRoot + "\\A\\0", "FriendlyName", "No port");
    registry.Set(UsbRoot + "\\B\\0\\Device Parameters", "PortName", "COM6");
    EXPECT_EQ(Listed(), Entries{});
}

TEST_F(EnumerateTest, AllDevicesOfAllBusesAreWalked) {
    AddUsb("A", "First", "COM5");
    AddUsb("B", "Second", "COM6");
    registry.Set(UsbRoot + "\\B\\0001", "FriendlyName", "Third");
    registry.Set(UsbRoot + "\\B\\0001\\Device Parameters", "PortName", "COM7");
    EXPECT_EQ(Listed(), (Entries{"COM5 - First", "COM6 - Second", "COM7 - Third"}));
}

TEST_F(EnumerateTest, KeyThatWillNotOpenIsSkipped) {
    AddUsb("A", "First", "COM5");
    AddUsb("B", "Second", "COM6");
    registry.Locked.insert(UsbRoot + "\\A");
    EXPECT_EQ(Listed(), Entries{"COM6 - Second"});
}

TEST_F(EnumerateTest, OlderFamilyKeepsBothValuesInTheDevice) {
    registry.Family = 1;
    registry.Set("Enum\\FTDIBUS\\A\\0", "FriendlyName", "Old port (COM3)");
    registry.Set("Enum\\FTDIBUS\\A\\0", "PortName", "COM3");
    registry.Set(ClassRoot + "\\M", "Class", "Modem");
    registry.Set(ClassRoot + "\\M\\0", "AttachedTo", "COM4");
    EXPECT_EQ(Listed(), Entries{"COM3 - Old port"});
    EXPECT_EQ(Enumerate::GetPlatformId(registry), 1);
}

TEST_F(EnumerateTest, TheFamilyOfNtIsTheSecond) {
    registry.Family = 2;
    AddUsb("A", "Port", "COM5");
    EXPECT_EQ(Listed(), Entries{"COM5 - Port"});
}

TEST_F(EnumerateTest, ModemsFollowTheUsbPorts) {
    AddUsb("A", "Port", "COM5");
    registry.Set(ClassRoot + "\\M", "Class", "modems and more");
    registry.Set(ClassRoot + "\\M\\0", "AttachedTo", " com4 ");
    registry.Set(ClassRoot + "\\M\\0", "FriendlyName", " Field Modem ");
    EXPECT_EQ(Listed(), (Entries{"COM5 - Port", "COM4 - Field Modem"}));
}

TEST_F(EnumerateTest, ModemIsListedThoughItsValuesCannotBeRead) {
    registry.Set(ClassRoot + "\\M", "Class", "MODEM");
    registry.Set(ClassRoot + "\\M\\0", "Other", "x");
    EXPECT_EQ(Listed(), Entries{" - "});
}

TEST_F(EnumerateTest, ClassThatIsNoModemIsPassedOver) {
    registry.Set(ClassRoot + "\\M", "Class", "Mode");
    registry.Set(ClassRoot + "\\M\\0", "AttachedTo", "COM4");
    registry.Set(ClassRoot + "\\N\\0", "AttachedTo", "COM4");
    EXPECT_EQ(Listed(), Entries{});
}

TEST_F(EnumerateTest, ValuesEndAtTheirFirstZero) {
    AddUsb("A", std::string("Port\0rest\0", 10), std::string("COM5\0", 5));
    EXPECT_EQ(Listed(), Entries{"COM5 - Port"});
}

TEST_F(EnumerateTest, ValueLongerThanTheBufferCannotBeRead) {
    AddUsb("A", std::string(Registry::BufferLength + 1, 'x'), "COM5");
    AddUsb("B", std::string(Registry::BufferLength, 'x'), "COM6");
    EXPECT_EQ(Listed(), Entries{"COM6 - " + std::string(Registry::BufferLength, 'x')});
}

TEST_F(EnumerateTest, AnyContentDoesNoHarm) {
    std::mt19937 random(20);
    const auto text = [&random] {
        std::string made(random() % 300, ' ');
        for (char& c : made) {
            c = static_cast<char>(random());
        }
        return made;
    };
    for (int i = 0; i < 200; ++i) {
        const std::string device = UsbRoot + "\\" + std::to_string(i) + "\\" + std::to_string(i);
        registry.Set(device, "FriendlyName", text());
        registry.Set(device + "\\Device Parameters", "PortName", text());
        const std::string modems = ClassRoot + "\\" + std::to_string(i);
        registry.Set(modems, "Class", i % 2 == 0 ? "MODEM" : text());
        registry.Set(modems + "\\" + text(), "AttachedTo", text());
    }
    PortList list;
    Enumerate::EnumerateSerialPorts(registry, list);
    EXPECT_GE(list.UpperBound(), 100);
    EXPECT_EQ(Enumerate::OfferedPorts(list).UpperBound(), 16);
}

TEST(AddPortEntryTest, PortIsInUpperCaseAndTheNameAsItIs) {
    PortList list;
    Enumerate::AddPortEntry(list, "com12", "Name");
    Enumerate::AddPortEntry(list, "COM1", "");
    EXPECT_EQ(EntriesOf(list), (Entries{"COM12 - Name", "COM1 - "}));
}

TEST(TrimNullsTest, TakesTheLeftPartUpToItsFirstZero) {
    EXPECT_EQ(Enumerate::TrimNulls("abcdef", 3), "abc");
    EXPECT_EQ(Enumerate::TrimNulls(std::string("ab\0cd\0", 6), 6), "ab");
    EXPECT_EQ(Enumerate::TrimNulls(std::string("ab\0cd", 5), 2), "ab");
    EXPECT_EQ(Enumerate::TrimNulls("abc", 10), "abc");
    EXPECT_EQ(Enumerate::TrimNulls("abc", 0), "");
    EXPECT_EQ(Enumerate::TrimNulls(std::string(1, '\0'), 1), "");
}

TEST(ExtractPortTest, KeepsWhatStandsBeforeTheFirstBlank) {
    EXPECT_EQ(Enumerate::ExtractPort("COM5 - USB Serial Port"), "COM5");
    EXPECT_EQ(Enumerate::ExtractPort("  com7  "), "COM7");
    EXPECT_EQ(Enumerate::ExtractPort("COM16"), "COM16");
    EXPECT_EQ(Enumerate::ExtractPort(""), "");
}

TEST(OfferedPortsTest, AreCom1ToCom16) {
    const PortList offered = Enumerate::OfferedPorts({});
    ASSERT_EQ(offered.UpperBound(), 16);
    EXPECT_EQ(offered[1], "COM1");
    EXPECT_EQ(offered[16], "COM16");
}

TEST(OfferedPortsTest, EnumeratedPortNumbered20IsNotOffered) {
    PortList found;
    found.Append("COM20 - Far away");
    for (const std::string& entry : Enumerate::OfferedPorts(found)) {
        EXPECT_EQ(entry.find("Far away"), std::string::npos);
    }
}

TEST(OfferedPortsTest, FirstOfTwoDevicesForOnePortIsOffered) {
    PortList found;
    found.Append("COM11 - Eleven");
    found.Append("COM1 - First");
    found.Append("COM1 - Second");
    const PortList offered = Enumerate::OfferedPorts(found);
    EXPECT_EQ(offered[1], "COM1 - First");
    EXPECT_EQ(offered[11], "COM11 - Eleven");
}

TEST(OfferedPortsTest, PortWithAnEmptyNameShowsItsHyphen) {
    PortList found;
    found.Append("COM2 - ");
    EXPECT_EQ(Enumerate::OfferedPorts(found)[2], "COM2 - ");
}

}  // namespace
