#ifndef ORVIA_TRACE_REQUEST_WORDS_H
#define ORVIA_TRACE_REQUEST_WORDS_H

#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "common/bytes.h"

// Bytes of frames and of the server radio's commands, in words.

/// Two hexadecimal digits.
[[nodiscard]] std::string HexText(std::uint8_t byte);
/// The bytes in hexadecimal, with `mark` between them.
[[nodiscard]] std::string HexText(std::span<const std::uint8_t> bytes, char mark = ' ');

/// The payload of the first frame in the bytes, whatever its length; nothing if it is not good.
[[nodiscard]] std::optional<Bytes> PayloadIn(std::span<const std::uint8_t> bytes);

/// Whether the bytes are a command for the server radio.
[[nodiscard]] bool IsRadioRequest(std::span<const std::uint8_t> bytes);
[[nodiscard]] std::string RadioRequestWords(std::span<const std::uint8_t> request);
/// What the radio's answer to `request` says, if it is of the right form.
[[nodiscard]] std::string RadioAnswerWords(std::span<const std::uint8_t> request,
                                           std::span<const std::uint8_t> answer);

/// What a payload asks of a logger.
[[nodiscard]] std::string LoggerRequestWords(std::span<const std::uint8_t> payload);

/// What came of a request behind its acknowledge.
struct LoggerAnswer {
    std::string Words;  ///< empty if nothing came
    std::string Fault;  ///< what is wrong in good bytes
};
[[nodiscard]] LoggerAnswer ReadAnswer(std::span<const std::uint8_t> payload,
                                      std::span<const std::uint8_t> bytes);

#endif  // ORVIA_TRACE_REQUEST_WORDS_H
