#ifndef ORVIA_PLATFORM_WIN_WIN_REGISTRY_H
#define ORVIA_PLATFORM_WIN_WIN_REGISTRY_H

#include "platform/host.h"

/// The system's registry, its branch of the local machine.
class WinRegistry final : public Registry {
 public:
    [[nodiscard]] std::int32_t PlatformId() const override;
    [[nodiscard]] std::optional<Key> OpenKey(const std::string& path) override;
    [[nodiscard]] std::optional<std::string> EnumKey(Key key, int index) override;
    [[nodiscard]] std::optional<std::string> QueryText(Key key, const std::string& name) override;
    void CloseKey(Key key) override;
};

#endif  // ORVIA_PLATFORM_WIN_WIN_REGISTRY_H
