#include "platform/qt/qt_ports.h"

#include <QDir>
#include <QFileInfo>
#include <QMap>
#include <QSerialPortInfo>
#include <algorithm>
#include <utility>

#include "platform/device_name.h"
#include "platform/qt/port_devices.h"
#include "platform/qt/text_qt.h"

namespace {

// The keys of the branch: its root, the one bus below it, and a device for each port.
constexpr Registry::Key RootKey = 1;
constexpr Registry::Key BusKey = 2;
constexpr Registry::Key FirstDeviceKey = 3;

const std::string RootPath = "Enum\\FTDIBUS";
const std::string BusName = "Ports";

using KnownDevices = QMap<QString, std::string>;  // names by canonical path

KnownDevices DevicesOfSystem() {
    KnownDevices devices;
    const auto known = QSerialPortInfo::availablePorts();
    for (const QSerialPortInfo& info : known) {
        devices.insert(QFileInfo(info.systemLocation()).canonicalFilePath(),
                       DeviceName(FromQt(info.manufacturer()), FromQt(info.description())));
    }
    return devices;
}

// The numbered devices of a system without their hardware exist as files all the same: only what
// the system lists, or the user has linked, counts.
bool Exists(const QString& device, const QString& link, const KnownDevices& known) {
    return known.contains(device) || (QFileInfo(link).isSymLink() && QFileInfo::exists(device));
}

}  // namespace

std::vector<NamedPort> PortsOfSystem(const QString& portsFolder) {
    const KnownDevices known = DevicesOfSystem();
    std::vector<NamedPort> ports;
    for (int number = FirstPort; number <= LastPort; ++number) {
        const QString port = QStringLiteral("COM%1").arg(number);
        const QString device = DeviceOfPort(number, portsFolder);
        if (!Exists(device, QDir(portsFolder).filePath(port), known)) {
            continue;
        }
        const std::string name = known.value(device, DeviceName({}, {}));
        ports.push_back({FromQt(port), name + " (" + FromQt(device) + ")"});
    }
    return ports;
}

PortsRegistry::PortsRegistry(std::function<std::vector<NamedPort>()> look)
    : look_(std::move(look)) {}

std::optional<Registry::Key> PortsRegistry::OpenKey(const std::string& path) {
    if (path == RootPath) {
        ports_ = look_();
        return RootKey;
    }
    const std::string bus = RootPath + "\\" + BusName;
    if (path == bus) {
        return BusKey;
    }
    const auto found = std::find_if(ports_.begin(), ports_.end(), [&](const NamedPort& port) {
        return path == bus + "\\" + port.Port;
    });
    return found == ports_.end()
               ? std::nullopt
               : std::optional(FirstDeviceKey + static_cast<Key>(found - ports_.begin()));
}

std::optional<std::string> PortsRegistry::EnumKey(Key key, int index) {
    if (key == RootKey && index == 0) {
        return BusName;
    }
    const auto at = static_cast<std::size_t>(index);
    return key == BusKey && at < ports_.size() ? std::optional(ports_[at].Port) : std::nullopt;
}

std::optional<std::string> PortsRegistry::QueryText(Key key, const std::string& name) {
    const std::size_t at = key - FirstDeviceKey;
    if (key < FirstDeviceKey || at >= ports_.size()) {
        return std::nullopt;
    }
    if (name == "FriendlyName") {
        return ports_[at].FriendlyName;
    }
    return name == "PortName" ? std::optional(ports_[at].Port) : std::nullopt;
}

void PortsRegistry::CloseKey(Key key) {
    static_cast<void>(key);
}
