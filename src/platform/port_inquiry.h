#ifndef ORVIA_PLATFORM_PORT_INQUIRY_H
#define ORVIA_PLATFORM_PORT_INQUIRY_H

#include <map>
#include <optional>
#include <string>
#include <vector>

/// A program that has a port, as far as the system tells.
struct PortUser {
    int Process = 0;           ///< its number; 0 if the system does not say
    std::string Program = {};  ///< its name; empty likewise

    friend bool operator==(const PortUser&, const PortUser&) = default;
};

/// Whether the operator may open a device, and who may.
struct PortRights {
    bool MayOpen = true;
    std::string Operator = {};  ///< name of the account
    std::string Group = {};     ///< the group whose members may; empty if none may
    /// The operator is a member of it: a session that began before that does not know.
    bool InGroup = false;
};

/// A file by which programs tell each other that a port is taken.
struct PortLock {
    std::string File = {};
    PortUser Owner = {};
    bool OwnerRuns = false;
};

/// What the system tells of a port that would not open.
struct PortCondition {
    std::string Device = {};  ///< path of the device; empty where a port has no other name
    bool Exists = true;
    bool IsSerial = true;  ///< it is a device that takes characters, and not a file or a folder
    PortRights Rights = {};
    std::vector<PortUser> Users = {};
    std::optional<PortLock> Lock = {};
    bool Busy = false;  ///< it lets nobody else in, whoever has it
};

/// Asks the system about serial ports. Nothing here opens a port for use, waits or faults; what the
/// system does not tell stays as it is made.
class PortInquiry {
 public:
    virtual ~PortInquiry() = default;

    /// What there is to say of port `number`, 1 to 16.
    [[nodiscard]] virtual PortCondition ConditionOf(int number) = 0;
    /// The ports that other programs have, by number.
    [[nodiscard]] virtual std::map<int, PortUser> UsedPorts() = 0;
};

#endif  // ORVIA_PLATFORM_PORT_INQUIRY_H
