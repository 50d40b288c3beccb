#include "platform/qt/qt_ports.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <algorithm>

#include "link/enumerate.h"
#include "platform/qt/text_qt.h"
#include "support/qt/pseudo_terminal.h"

namespace {

std::vector<std::string> Listed(Registry& registry) {
    Enumerate::PortList list;
    Enumerate::EnumerateSerialPorts(registry, list);
    return {list.begin(), list.end()};
}

TEST(PortsRegistryTest, GivesItsPortsInTheFormOfTheList) {
    PortsRegistry registry([] {
        return std::vector<NamedPort>{{"COM5", "USB Serial Converter (/dev/ttyUSB0)"},
                                      {"COM13", "Radio modem (/dev/ttyACM0)"}};
    });
    EXPECT_EQ(Listed(registry),
              (std::vector<std::string>{"COM5 - USB Serial Converter (/dev/ttyUSB0)",
                                        "COM13 - Radio modem (/dev/ttyACM0)"}));
}

TEST(PortsRegistryTest, LooksAnewEachTime) {
    std::vector<NamedPort> ports;
    PortsRegistry registry([&ports] { return ports; });
    EXPECT_TRUE(Listed(registry).empty());
    ports.push_back({"COM1", "Plugged in"});
    EXPECT_EQ(Listed(registry).size(), 1U);
}

TEST(PortsRegistryTest, KnowsNothingElse) {
    PortsRegistry registry([] { return std::vector<NamedPort>{{"COM1", "One"}}; });
    EXPECT_FALSE(registry.OpenKey("SYSTEM"));
    EXPECT_FALSE(registry.OpenKey("Enum\\FTDIBUS\\Ports\\COM2"));
    const auto root = registry.OpenKey("Enum\\FTDIBUS");
    ASSERT_TRUE(root);
    EXPECT_FALSE(registry.EnumKey(*root, 1));
    EXPECT_FALSE(registry.QueryText(*root, "FriendlyName"));
    const auto port = registry.OpenKey("Enum\\FTDIBUS\\Ports\\COM1");
    ASSERT_TRUE(port);
    EXPECT_FALSE(registry.QueryText(*port, "Class"));
    EXPECT_FALSE(registry.EnumKey(*port, 0));
}

#ifndef _WIN32
class PortsOfSystemTest : public ::testing::Test {
 protected:
    void Wire(int number, const QString& device) const {
        const QString link = QDir(folder.path()).filePath(QStringLiteral("COM%1").arg(number));
        ASSERT_TRUE(QFile::link(device, link));
    }

    /// Names of the ports that this folder's links, and nothing of this machine, stand for.
    [[nodiscard]] std::vector<std::string> NamesBut(const std::vector<NamedPort>& ofMachine) const {
        std::vector<std::string> names;
        for (const NamedPort& port : PortsOfSystem(folder.path())) {
            const auto same = [&port](const NamedPort& other) {
                return other.Port == port.Port && other.FriendlyName == port.FriendlyName;
            };
            if (std::none_of(ofMachine.begin(), ofMachine.end(), same)) {
                names.push_back(port.Port + " - " + port.FriendlyName);
            }
        }
        return names;
    }

    QTemporaryDir folder;
    const std::vector<NamedPort> machine = PortsOfSystem(folder.path());
};

TEST_F(PortsOfSystemTest, LinkedDeviceIsListedWithItsPathInParentheses) {
    const PseudoTerminal far;
    Wire(7, far.Device());
    EXPECT_EQ(NamesBut(machine),
              std::vector<std::string>{"COM7 - Serial port (" + FromQt(far.Device()) + ")"});
}

TEST_F(PortsOfSystemTest, LinkTakesPrecedenceOverTheFixedDevice) {
    const PseudoTerminal far;
    Wire(1, far.Device());
    EXPECT_EQ(NamesBut(machine),
              std::vector<std::string>{"COM1 - Serial port (" + FromQt(far.Device()) + ")"});
}

TEST_F(PortsOfSystemTest, LinkToNothingIsNotListed) {
    Wire(9, QStringLiteral("/nowhere/ttyUSB7"));
    EXPECT_TRUE(NamesBut(machine).empty());
}

TEST_F(PortsOfSystemTest, LinksAboveSixteenAreNotLookedAt) {
    const PseudoTerminal far;
    Wire(17, far.Device());
    EXPECT_TRUE(NamesBut(machine).empty());
}
#endif

}  // namespace
