#include "link/enumerate.h"

#include <algorithm>
#include <functional>
#include <optional>

#include "common/number_text.h"
#include "common/text.h"

namespace Enumerate {

namespace {

constexpr std::string_view EntryMark = " - ";
constexpr int OfferedCount = 16;

/// An open key of the registry, closed again whatever happens.
class OpenedKey {
 public:
    OpenedKey(Registry& registry, const std::string& path)
        : registry_(registry), key_(registry.OpenKey(path)) {}
    ~OpenedKey() {
        if (key_) {
            registry_.CloseKey(*key_);
        }
    }
    OpenedKey(const OpenedKey&) = delete;
    OpenedKey& operator=(const OpenedKey&) = delete;

    /// The value without closing zeros; nothing if it cannot be read.
    [[nodiscard]] std::optional<std::string> Text(const std::string& name) const {
        return Trimmed(key_ ? registry_.QueryText(*key_, name) : std::nullopt);
    }

    [[nodiscard]] std::optional<std::string> SubKey(int index) const {
        return Trimmed(key_ ? registry_.EnumKey(*key_, index) : std::nullopt);
    }

 private:
    static std::optional<std::string> Trimmed(const std::optional<std::string>& text) {
        return text ? std::optional(TrimNulls(*text, static_cast<int>(text->size())))
                    : std::nullopt;
    }

    Registry& registry_;
    std::optional<Registry::Key> key_;
};

/// Calls `visit` with the path of each subkey.
void ForEachSubKey(Registry& registry, const std::string& path,
                   const std::function<void(const std::string&)>& visit) {
    const OpenedKey key(registry, path);
    for (int index = 0;; ++index) {
        const std::optional<std::string> name = key.SubKey(index);
        if (!name) {
            return;
        }
        visit(path + "\\" + *name);
    }
}

/// A device's name without the port that some drivers put behind it.
std::string DeviceName(std::string_view friendlyName) {
    const std::size_t port = friendlyName.find("(COM");
    const bool named = port != std::string_view::npos && port > 0;
    return std::string(Trim(named ? friendlyName.substr(0, port) : friendlyName));
}

void AddUsbPort(Registry& registry, const std::string& device, PortList& list) {
    const bool isNt = GetPlatformId(registry) == PlatformNt;
    const auto name = OpenedKey(registry, device).Text("FriendlyName");
    const auto port =
        OpenedKey(registry, isNt ? device + "\\Device Parameters" : device).Text("PortName");
    if (name && port) {
        AddPortEntry(list, *port, DeviceName(*name));
    }
}

/// A modem is listed even if one of its values cannot be read.
void AddModem(Registry& registry, const std::string& modem, PortList& list) {
    const OpenedKey key(registry, modem);
    const std::string port = ToUpper(key.Text("AttachedTo").value_or(""));
    AddPortEntry(list, Trim(port), Trim(key.Text("FriendlyName").value_or("")));
}

void AddModemsOfClass(Registry& registry, const std::string& path, PortList& list) {
    constexpr std::string_view ModemClass = "MODEM";
    const std::string name = OpenedKey(registry, path).Text("Class").value_or("");
    if (ToUpper(name).starts_with(ModemClass)) {
        ForEachSubKey(registry, path,
                      [&](const std::string& modem) { AddModem(registry, modem, list); });
    }
}

std::string OfferOf(const PortList& found, const std::string& port) {
    const std::string beginning = port + std::string(EntryMark);
    const auto entry = std::find_if(
        found.begin(), found.end(),
        [&beginning](const std::string& candidate) { return candidate.starts_with(beginning); });
    return entry == found.end() ? port : *entry;
}

}  // namespace

std::int32_t GetPlatformId(const Registry& registry) {
    return registry.PlatformId();
}

void EnumerateSerialPorts(Registry& registry, PortList& list) {
    list.Reset();
    const bool isNt = GetPlatformId(registry) == PlatformNt;
    const std::string root = isNt ? "SYSTEM\\CurrentControlSet\\Enum\\FTDIBUS" : "Enum\\FTDIBUS";
    ForEachSubKey(registry, root, [&](const std::string& bus) {
        ForEachSubKey(registry, bus,
                      [&](const std::string& device) { AddUsbPort(registry, device, list); });
    });
    if (isNt) {
        ForEachSubKey(registry, "SYSTEM\\CurrentControlSet\\Control\\Class",
                      [&](const std::string& path) { AddModemsOfClass(registry, path, list); });
    }
}

void AddPortEntry(PortList& list, std::string_view port, std::string_view name) {
    list.Append(ToUpper(port) + std::string(EntryMark) + std::string(name));
}

std::string TrimNulls(std::string_view text, int length) {
    const std::string_view taken = text.substr(0, static_cast<std::size_t>(std::max(length, 0)));
    return std::string(taken.substr(0, taken.find('\0')));
}

std::string ExtractPort(std::string_view item) {
    const std::string_view trimmed = Trim(item);
    return ToUpper(trimmed.substr(0, trimmed.find(' ')));
}

PortList OfferedPorts(const PortList& found) {
    PortList offered;
    for (int number = 1; number <= OfferedCount; ++number) {
        offered.Append(OfferOf(found, "COM" + IntegerToText(number)));
    }
    return offered;
}

}  // namespace Enumerate
