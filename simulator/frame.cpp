#include "simulator/frame.h"

#include <algorithm>

namespace simulator {

namespace {

constexpr std::size_t CrcSize = 2;
constexpr std::uint8_t HighestEscaped = FrameEscape - FrameStart;

void AppendEscaped(Bytes& wire, std::uint8_t byte) {
    if (byte >= FrameStart && byte <= FrameEscape) {
        wire.push_back(FrameEscape);
        wire.push_back(static_cast<std::uint8_t>(byte - FrameStart));
    } else {
        wire.push_back(byte);
    }
}

}  // namespace

std::uint16_t Crc16(std::span<const std::uint8_t> bytes) {
    unsigned crc = 0;
    for (const std::uint8_t byte : bytes) {
        crc ^= byte;
        for (int bit = 0; bit < 8; ++bit) {
            crc = (crc & 1U) != 0 ? (crc >> 1) ^ 0xA001U : crc >> 1;
        }
    }
    return static_cast<std::uint16_t>(crc);
}

Bytes EncodeFrame(std::span<const std::uint8_t> payload) {
    payload = payload.first(std::min(payload.size(), LargestPayload));
    const std::uint16_t crc = Crc16(payload);
    Bytes wire;
    wire.reserve(payload.size() + payload.size() / 8 + 8);
    wire.push_back(FrameStart);
    wire.push_back(static_cast<std::uint8_t>(payload.size() + CrcSize));
    for (const std::uint8_t byte : payload) {
        AppendEscaped(wire, byte);
    }
    AppendEscaped(wire, static_cast<std::uint8_t>(crc & 0xFF));
    AppendEscaped(wire, static_cast<std::uint8_t>(crc >> 8));
    wire.push_back(FrameEnd);
    return wire;
}

FrameReader::Outcome FrameReader::Take(std::uint8_t byte) {
    if (state_ == State::Length) {
        return TakeLength(byte);
    }
    if (byte == FrameStart) {
        const bool cutShort = InsideFrame();
        state_ = State::Length;
        return cutShort ? Outcome::Bad : Outcome::None;
    }
    if (state_ == State::Hunt) {
        return Outcome::None;
    }
    return state_ == State::End ? TakeEnd(byte) : TakeBody(byte);
}

FrameReader::Outcome FrameReader::TakeLength(std::uint8_t byte) {
    if (byte <= CrcSize) {
        return Drop();
    }
    length_ = byte;
    payload_.clear();
    state_ = State::Body;
    return Outcome::None;
}

FrameReader::Outcome FrameReader::TakeBody(std::uint8_t byte) {
    if (state_ == State::Escaped) {
        if (byte > HighestEscaped) {
            return Drop();
        }
        byte = static_cast<std::uint8_t>(byte + FrameStart);
        state_ = State::Body;
    } else if (byte == FrameEscape) {
        state_ = State::Escaped;
        return Outcome::None;
    } else if (byte > FrameStart && byte < FrameEscape) {
        return Drop();
    }
    payload_.push_back(byte);
    if (payload_.size() == length_) {
        state_ = State::End;
    }
    return Outcome::None;
}

FrameReader::Outcome FrameReader::TakeEnd(std::uint8_t byte) {
    state_ = State::Hunt;
    const std::uint16_t sent = GetU16(payload_, length_ - CrcSize);
    payload_.resize(length_ - CrcSize);
    const bool good = byte == FrameEnd && Crc16(payload_) == sent;
    return good ? Outcome::Good : Outcome::Bad;
}

FrameReader::Outcome FrameReader::Drop() {
    state_ = State::Hunt;
    return Outcome::Bad;
}

}  // namespace simulator
