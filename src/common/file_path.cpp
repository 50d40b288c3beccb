#include "common/file_path.h"

#include <algorithm>
#include <array>
#include <string>

#include "common/path_text.h"
#include "common/text.h"

std::filesystem::path FilePath(std::string_view path) {
    const std::string native = NativePath(path);
    return std::u8string(native.begin(), native.end());
}

namespace {

constexpr std::array<std::string_view, 6> Devices = {"CON", "PRN",    "AUX",
                                                     "NUL", "CONIN$", "CONOUT$"};
constexpr std::array<std::string_view, 2> NumberedDevices = {"COM", "LPT"};

/// One of the digits that stand behind a device, the three small raised ones among them.
bool IsDeviceNumber(std::string_view text) {
    constexpr std::array<std::string_view, 3> Raised = {"\xC2\xB9", "\xC2\xB2", "\xC2\xB3"};
    return (text.size() == 1 && text[0] >= '0' && text[0] <= '9') ||
           std::find(Raised.begin(), Raised.end(), text) != Raised.end();
}

/// The name as the system looks at it: without what follows a point, and blanks before that.
std::string_view WithoutExtension(std::string_view name) {
    name = name.substr(0, name.find_first_of(".:"));
    const std::size_t last = name.find_last_not_of(' ');
    return name.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

}  // namespace

bool NamesDevice(std::string_view path) {
    // Below this lies nothing but devices.
    if (path.starts_with("\\\\.\\") || path.starts_with("//./")) {
        return true;
    }
    const std::string name = ToUpper(WithoutExtension(BehindLastSeparator(path)));
    if (std::find(Devices.begin(), Devices.end(), name) != Devices.end()) {
        return true;
    }
    return std::any_of(NumberedDevices.begin(), NumberedDevices.end(), [&](std::string_view kind) {
        return name.starts_with(kind) && IsDeviceNumber(std::string_view(name).substr(kind.size()));
    });
}
