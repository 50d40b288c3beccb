#include "platform/win/win_registry.h"

#include <windows.h>

#include <array>

#include "platform/win/win_text.h"

namespace {

using Buffer = std::array<wchar_t, Registry::BufferLength>;

HKEY HandleOf(Registry::Key key) {
    return reinterpret_cast<HKEY>(key);
}

}  // namespace

std::int32_t WinRegistry::PlatformId() const {
    // Every system that runs this program is of the NT family; the call that once told families
    // apart is on its way out of the system.
    return PlatformNt;
}

std::optional<Registry::Key> WinRegistry::OpenKey(const std::string& path) {
    HKEY key = nullptr;
    if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, ToWide(path).c_str(), 0, KEY_READ, &key) !=
        ERROR_SUCCESS) {
        return std::nullopt;
    }
    return reinterpret_cast<Key>(key);
}

std::optional<std::string> WinRegistry::EnumKey(Key key, int index) {
    Buffer name{};
    auto length = static_cast<DWORD>(name.size());
    if (RegEnumKeyExW(HandleOf(key), static_cast<DWORD>(index), name.data(), &length, nullptr,
                      nullptr, nullptr, nullptr) != ERROR_SUCCESS) {
        return std::nullopt;
    }
    return FromWide({name.data(), length});
}

std::optional<std::string> WinRegistry::QueryText(Key key, const std::string& name) {
    Buffer value{};
    auto size = static_cast<DWORD>(sizeof value);
    DWORD type = REG_NONE;
    const LSTATUS status = RegQueryValueExW(HandleOf(key), ToWide(name).c_str(), nullptr, &type,
                                            reinterpret_cast<BYTE*>(value.data()), &size);
    const bool isText = type == REG_SZ || type == REG_EXPAND_SZ;
    if (status != ERROR_SUCCESS || !isText) {
        return std::nullopt;
    }
    return FromWide({value.data(), size / sizeof(wchar_t)});
}

void WinRegistry::CloseKey(Key key) {
    RegCloseKey(HandleOf(key));
}
