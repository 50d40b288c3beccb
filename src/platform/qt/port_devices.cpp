#include "platform/qt/port_devices.h"

#include <QDir>
#include <QFileInfo>
#include <array>

#include "platform/qt/text_qt.h"

namespace {

struct DeviceFamily {
    int FirstNumber;
    int LastNumber;
    const char* Name;
};

constexpr std::array<DeviceFamily, 3> Families{
    {{1, 4, "/dev/ttyS"}, {5, 12, "/dev/ttyUSB"}, {13, 16, "/dev/ttyACM"}}};

QString FixedDevice(int number) {
    for (const DeviceFamily& family : Families) {
        if (number >= family.FirstNumber && number <= family.LastNumber) {
            return QLatin1String(family.Name) + QString::number(number - family.FirstNumber);
        }
    }
    return {};
}

QString LinkedDevice(const QString& link) {
    const QFileInfo info(link);
    return info.isSymLink() ? info.symLinkTarget() : QString();
}

QString Canonical(const QString& device) {
    const QString path = QFileInfo(device).canonicalFilePath();
    return path.isEmpty() ? device : path;
}

}  // namespace

QString DeviceOfPort(int number, const QString& portsFolder) {
    const QString name = ToQt(ComPortName(number));
    const QString linked = LinkedDevice(QDir(portsFolder).filePath(name));
    return Canonical(linked.isEmpty() ? FixedDevice(number) : linked);
}
