#include "platform/device_name.h"

#include "common/text.h"

std::string DeviceName(const std::string& maker, const std::string& product) {
    const std::string by(Trim(maker));
    const std::string what(Trim(product));
    if (what.empty()) {
        return by.empty() ? "Serial port" : by;
    }
    const bool told = ToLower(what).starts_with(ToLower(by));
    const bool fits = by.size() + 1 + what.size() <= MostDeviceName;
    return told || !fits ? what : by + " " + what;
}
