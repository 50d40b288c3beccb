#ifndef ORVIA_PLATFORM_QT_QT_PORTS_H
#define ORVIA_PLATFORM_QT_QT_PORTS_H

#include <QString>
#include <functional>
#include <string>
#include <vector>

#include "platform/host.h"

/// A serial port that exists.
struct NamedPort {
    std::string Port;          ///< "COM5"
    std::string FriendlyName;  ///< "USB Serial Converter (/dev/ttyUSB0)"
};

/// The ports that stand for a device which exists, in the order of their numbers: by symbolic
/// links in `portsFolder`, else by the fixed names of devices. Each is named by what the system
/// knows of its device.
[[nodiscard]] std::vector<NamedPort> PortsOfSystem(const QString& portsFolder);

/// Stands in for the registry where there is none: a branch that holds nothing but the ports which
/// `look` finds, asked anew whenever its root is opened.
class PortsRegistry final : public Registry {
 public:
    explicit PortsRegistry(std::function<std::vector<NamedPort>()> look);

    [[nodiscard]] std::int32_t PlatformId() const override { return 0; }
    [[nodiscard]] std::optional<Key> OpenKey(const std::string& path) override;
    [[nodiscard]] std::optional<std::string> EnumKey(Key key, int index) override;
    [[nodiscard]] std::optional<std::string> QueryText(Key key, const std::string& name) override;
    void CloseKey(Key key) override;

 private:
    std::function<std::vector<NamedPort>()> look_;
    std::vector<NamedPort> ports_;
};

#endif  // ORVIA_PLATFORM_QT_QT_PORTS_H
