#include "platform/qt/qt_port_inquiry.h"

#include <dirent.h>
#include <fcntl.h>
#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFileInfo>
#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fstream>
#include <iterator>
#include <memory>
#include <utility>

#include "common/number_text.h"
#include "common/path_text.h"
#include "common/text.h"
#include "platform/qt/port_devices.h"
#include "platform/qt/text_qt.h"

QtPortInquiry::QtPortInquiry(QString portsFolder, InquiryPlaces places)
    : portsFolder_(std::move(portsFolder)), places_(std::move(places)) {}

int OwnerOfLock(const std::string& contents) {
    std::int32_t process = 0;
    const std::string line = contents.substr(0, contents.find('\n'));
    if (TextToLong(Trim(line), process)) {
        return std::max(process, 0);
    }
    if (contents.size() == sizeof process) {
        std::memcpy(&process, contents.data(), sizeof process);
        return std::max(process, 0);
    }
    return 0;
}

namespace {

/// Programs that are named of one device: a shell in a terminal has many children.
constexpr std::size_t MostUsers = 3;

std::string Contents(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// ----- programs

PortUser UserOf(const std::string& processes, int process) {
    const std::string name = Contents(processes + "/" + IntegerToText(process) + "/comm");
    return {process, name.substr(0, name.find('\n'))};
}

bool Runs(int process) {
    return process > 0 && (::kill(process, 0) == 0 || errno == EPERM);
}

/// Names of what lies in a folder; none if it may not be read.
std::vector<std::string> NamesIn(const std::string& folder) {
    std::vector<std::string> names;
    const std::unique_ptr<DIR, int (*)(DIR*)> opened(::opendir(folder.c_str()), ::closedir);
    while (opened != nullptr) {
        const dirent* entry = ::readdir(opened.get());
        if (entry == nullptr) {
            break;
        }
        names.emplace_back(entry->d_name);
    }
    return names;
}

/// The device behind an open file of a program; nothing if it is no device that takes characters.
std::optional<dev_t> DeviceBehind(const std::string& openFile) {
    constexpr std::string_view Devices = "/dev/";
    std::array<char, Devices.size()> begin{};
    const ssize_t length = ::readlink(openFile.c_str(), begin.data(), begin.size());
    if (length != static_cast<ssize_t>(begin.size()) ||
        std::string_view(begin.data(), begin.size()) != Devices) {
        return std::nullopt;
    }
    struct stat found {};
    const bool known = ::stat(openFile.c_str(), &found) == 0 && S_ISCHR(found.st_mode);
    return known ? std::optional(found.st_rdev) : std::nullopt;
}

/// Calls `visit` with the number of each other program and with each device that it has open.
template <typename Visit>
void ForEachOpenDevice(const std::string& processes, const Visit& visit) {
    for (const std::string& name : NamesIn(processes)) {
        std::int32_t process = 0;
        if (!TextToLong(name, process) || process == ::getpid()) {
            continue;
        }
        const std::string folder = processes + "/" + name + "/fd";
        for (const std::string& file : NamesIn(folder)) {
            if (const auto device = DeviceBehind(folder + "/" + file)) {
                visit(process, *device);
            }
        }
    }
}

std::vector<PortUser> UsersOf(const std::string& processes, dev_t device) {
    std::vector<PortUser> users;
    ForEachOpenDevice(processes, [&](int process, dev_t open) {
        const bool told = !users.empty() && users.back().Process == process;
        if (open == device && !told && users.size() < MostUsers) {
            users.push_back(UserOf(processes, process));
        }
    });
    return users;
}

// ----- locks

/// The lock of a device: a file named for it, a slash in its name turned.
std::optional<PortLock> LockOf(const InquiryPlaces& places, const std::string& device) {
    constexpr std::string_view Devices = "/dev/";
    std::string name = device.starts_with(Devices) ? device.substr(Devices.size()) : device;
    std::replace(name.begin(), name.end(), '/', '_');
    for (const std::string& folder : places.Locks) {
        const std::string file = JoinPath(folder, "LCK.." + name);
        if (IsRegularFile(file)) {
            const int process = OwnerOfLock(Contents(file));
            return PortLock{file, UserOf(places.Processes, process), Runs(process)};
        }
    }
    return std::nullopt;
}

// ----- the operator

std::string GroupName(gid_t group) {
    const struct group* entry = ::getgrgid(group);
    return entry == nullptr ? IntegerToText(static_cast<std::int64_t>(group)) : entry->gr_name;
}

bool IsMember(const passwd& account, gid_t group) {
    constexpr int MostGroups = 1024;
    std::vector<gid_t> groups(MostGroups);
    int count = MostGroups;
    if (::getgrouplist(account.pw_name, account.pw_gid, groups.data(), &count) < 0) {
        return false;
    }
    const auto end = groups.begin() + count;
    return std::find(groups.begin(), end, group) != end;
}

PortRights RightsTo(const std::string& device, const struct stat& found) {
    PortRights rights;
    rights.MayOpen = ::faccessat(AT_FDCWD, device.c_str(), R_OK | W_OK, AT_EACCESS) == 0;
    const passwd* account = ::getpwuid(::geteuid());
    rights.Operator = account == nullptr ? "" : account->pw_name;
    constexpr mode_t Both = S_IRGRP | S_IWGRP;
    if ((found.st_mode & Both) == Both && found.st_gid != 0) {
        rights.Group = GroupName(found.st_gid);
        rights.InGroup = account != nullptr && IsMember(*account, found.st_gid);
    }
    return rights;
}

/// Looks whether the device lets anybody in, and lets go of it at once.
void TryDevice(const std::string& device, PortCondition& condition) {
    const int handle = ::open(device.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (handle < 0) {
        condition.Busy = errno == EBUSY;
        return;
    }
    condition.IsSerial = ::isatty(handle) == 1;
    ::close(handle);
}

/// Whether somebody else has it by what is known so far: then it is not touched any more.
bool IsTaken(const PortCondition& condition) {
    return !condition.Users.empty() || condition.Lock.has_value();
}

}  // namespace

PortCondition QtPortInquiry::ConditionOf(int number) {
    PortCondition condition;
    condition.Device = FromQt(DeviceOfPort(number, portsFolder_));
    struct stat found {};
    condition.Exists = ::stat(condition.Device.c_str(), &found) == 0;
    condition.IsSerial = condition.Exists && S_ISCHR(found.st_mode);
    if (!condition.IsSerial) {
        return condition;
    }
    condition.Rights = RightsTo(condition.Device, found);
    condition.Users = UsersOf(places_.Processes, found.st_rdev);
    condition.Lock = LockOf(places_, condition.Device);
    if (condition.Rights.MayOpen && !IsTaken(condition)) {
        TryDevice(condition.Device, condition);
    }
    return condition;
}

std::map<int, PortUser> QtPortInquiry::UsedPorts() {
    std::map<int, PortUser> used;
    std::multimap<dev_t, int> numbers;
    for (int number = FirstPort; number <= LastPort; ++number) {
        const std::string device = FromQt(DeviceOfPort(number, portsFolder_));
        struct stat found {};
        if (::stat(device.c_str(), &found) != 0 || !S_ISCHR(found.st_mode)) {
            continue;
        }
        numbers.emplace(found.st_rdev, number);
        const auto lock = LockOf(places_, device);
        if (lock && lock->OwnerRuns && lock->Owner.Process != ::getpid()) {
            used.emplace(number, lock->Owner);
        }
    }
    ForEachOpenDevice(places_.Processes, [&](int process, dev_t device) {
        const auto [first, last] = numbers.equal_range(device);
        for (auto at = first; at != last; ++at) {
            if (!used.contains(at->second)) {
                used.emplace(at->second, UserOf(places_.Processes, process));
            }
        }
    });
    return used;
}
