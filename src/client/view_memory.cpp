#include "client/view_memory.h"

#include <algorithm>
#include <array>
#include <string>

namespace {

const std::string Section = "Views";

/// By display mode.
constexpr std::array<const char*, 5> Names{"small", "medium", "wide", "meter", "flow"};

std::string KeyOf(const MacAddress& radio) {
    constexpr const char* Digits = "0123456789ABCDEF";
    std::string key;
    for (const std::uint8_t byte : radio) {
        key += {Digits[byte / 16], Digits[byte % 16]};
    }
    return key;
}

}  // namespace

void KeepView(SettingsStore& store, const MacAddress& radio, std::int16_t displayMode) {
    store.Write(Section, KeyOf(radio), Names.at(static_cast<std::size_t>(displayMode)));
}

std::optional<std::int16_t> KeptView(const SettingsStore& store, const MacAddress& radio) {
    const auto name = store.Read(Section, KeyOf(radio));
    const auto found = std::find(Names.begin(), Names.end(), name.value_or(""));
    if (found == Names.end()) {
        return std::nullopt;
    }
    return static_cast<std::int16_t>(found - Names.begin());
}
