#ifndef ORVIA_PLATFORM_QT_QT_PORT_INQUIRY_H
#define ORVIA_PLATFORM_QT_QT_PORT_INQUIRY_H

#include <QString>
#include <string>
#include <vector>

#include "platform/port_inquiry.h"

/// Where a system of the Unix family tells of programs and of locks.
struct InquiryPlaces {
    std::string Processes = "/proc";
    /// Folders in which a port may be locked, the usual one first.
    std::vector<std::string> Locks = {"/var/lock",       "/run/lock", "/etc/locks",
                                      "/var/spool/lock", "/tmp",      "/var/tmp"};
};

/// Asks the system. What it says of programs of other accounts is little: their locks, and that a
/// device is taken.
class QtPortInquiry final : public PortInquiry {
 public:
    /// `portsFolder` may hold symbolic links "COM1" to "COM16" to devices.
    explicit QtPortInquiry(QString portsFolder, InquiryPlaces places = {});

    [[nodiscard]] PortCondition ConditionOf(int number) override;
    [[nodiscard]] std::map<int, PortUser> UsedPorts() override;

 private:
    QString portsFolder_;
    InquiryPlaces places_;
};

/// Process number in the text of a lock: digits on its first line, or four bytes of binary; 0 if
/// there is neither.
[[nodiscard]] int OwnerOfLock(const std::string& contents);

#endif  // ORVIA_PLATFORM_QT_QT_PORT_INQUIRY_H
