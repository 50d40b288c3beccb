#include "logger/bcd.h"

#include "common/fault.h"

namespace cmd {

std::uint8_t ToBcd(int value) {
    if (value < 0 || value > 159) {
        throw Fault("value does not fit two BCD digits");
    }
    return static_cast<std::uint8_t>(value / 10 * 16 + value % 10);
}

int FromBcd(std::uint8_t byte) {
    return (byte >> 4) * 10 + (byte & 0x0F);
}

std::string BcdToText(std::uint8_t byte) {
    const auto digit = [](int nibble) { return static_cast<char>('0' + nibble); };
    return {digit(byte >> 4), digit(byte & 0x0F)};
}

}  // namespace cmd
