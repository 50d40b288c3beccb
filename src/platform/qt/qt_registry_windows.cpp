#include "platform/qt/qt_registry_windows.h"

#ifdef _WIN32

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <array>

namespace {

using Buffer = std::array<char, Registry::BufferLength>;

HKEY HandleOf(Registry::Key key) {
    return reinterpret_cast<HKEY>(key);
}

}  // namespace

std::int32_t WindowsRegistry::PlatformId() const {
    // Every system that runs this program is of the NT family; the call that once told families
    // apart is on its way out of the system.
    return VER_PLATFORM_WIN32_NT;
}

std::optional<Registry::Key> WindowsRegistry::OpenKey(const std::string& path) {
    HKEY key = nullptr;
    if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) {
        return std::nullopt;
    }
    return reinterpret_cast<Key>(key);
}

std::optional<std::string> WindowsRegistry::EnumKey(Key key, int index) {
    Buffer name{};
    auto length = static_cast<DWORD>(name.size());
    if (RegEnumKeyExA(HandleOf(key), static_cast<DWORD>(index), name.data(), &length, nullptr,
                      nullptr, nullptr, nullptr) != ERROR_SUCCESS) {
        return std::nullopt;
    }
    return std::string(name.data(), length);
}

std::optional<std::string> WindowsRegistry::QueryText(Key key, const std::string& name) {
    Buffer value{};
    auto length = static_cast<DWORD>(value.size());
    DWORD type = REG_NONE;
    const LSTATUS status = RegQueryValueExA(HandleOf(key), name.c_str(), nullptr, &type,
                                            reinterpret_cast<BYTE*>(value.data()), &length);
    const bool isText = type == REG_SZ || type == REG_EXPAND_SZ;
    if (status != ERROR_SUCCESS || !isText) {
        return std::nullopt;
    }
    return std::string(value.data(), length);
}

void WindowsRegistry::CloseKey(Key key) {
    RegCloseKey(HandleOf(key));
}

#endif
