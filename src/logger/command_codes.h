#ifndef ORVIA_LOGGER_COMMAND_CODES_H
#define ORVIA_LOGGER_COMMAND_CODES_H

#include <array>
#include <cstddef>
#include <cstdint>

// The commands of a logger on the wire; docs/frames.md tells how they travel.
namespace cmd {

// Codes: the first byte of a request.
inline constexpr std::uint8_t GetTimeCode = 0x00;
inline constexpr std::uint8_t SetTimeCode = 0x01;
inline constexpr std::uint8_t ClearHistoryCode = 0x04;
inline constexpr std::uint8_t WriteMemoryCode = 0x07;
inline constexpr std::uint8_t ReadMemoryCode = 0x08;
inline constexpr std::uint8_t RequestSampleCode = 0x09;
inline constexpr std::uint8_t ReadSampleCode = 0x0A;
inline constexpr std::uint8_t RestartSamplingCode = 0x0B;
inline constexpr std::uint8_t GetStatusCode = 0x0C;
inline constexpr std::uint8_t ResetPulsesCode = 0x0E;
inline constexpr std::uint8_t GetVersionCode = 0x0F;

// Sizes of reply frames, in bytes.
inline constexpr std::size_t TimeReplySize = 7;
inline constexpr std::size_t StatusReplySize = 5;
inline constexpr std::size_t VersionReplySize = 8;
inline constexpr int MemoryEchoSize = 3;  ///< the address, before the memory's bytes

/// How a command that destroys something begins: its code, and two bytes that guard it against a
/// code gone wrong.
[[nodiscard]] constexpr std::array<std::uint8_t, 3> Guarded(std::uint8_t code) {
    return {code, static_cast<std::uint8_t>(0xA0 + code),
            static_cast<std::uint8_t>(code * 16 + 0x0A)};
}

}  // namespace cmd

#endif  // ORVIA_LOGGER_COMMAND_CODES_H
