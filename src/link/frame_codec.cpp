#include "link/frame_codec.h"

#include <array>

#include "common/fault.h"

namespace comm {

namespace {

constexpr std::uint16_t Polynomial = 0xA001;
constexpr std::size_t CrcSize = 2;
constexpr std::size_t Slices = 4;

using CrcTable = std::array<std::uint16_t, 256>;

/// Table k advances the CRC of a byte by k further zero bytes, so that four bytes go at a time.
constexpr std::array<CrcTable, Slices> MakeCrcTables() {
    std::array<CrcTable, Slices> tables{};
    for (std::size_t byte = 0; byte < 256; ++byte) {
        auto crc = static_cast<std::uint16_t>(byte);
        for (int bit = 0; bit < 8; ++bit) {
            crc = static_cast<std::uint16_t>((crc >> 1) ^ ((crc & 1) != 0 ? Polynomial : 0));
        }
        tables[0][byte] = crc;
    }
    for (std::size_t slice = 1; slice < Slices; ++slice) {
        for (std::size_t byte = 0; byte < 256; ++byte) {
            const std::uint16_t crc = tables[slice - 1][byte];
            tables[slice][byte] = static_cast<std::uint16_t>((crc >> 8) ^ tables[0][crc & 0xFF]);
        }
    }
    return tables;
}

constexpr std::array<CrcTable, Slices> CrcTables = MakeCrcTables();

std::uint16_t Crc(std::span<const std::uint8_t> bytes) {
    std::uint16_t crc = 0;
    std::size_t i = 0;
    for (; i + Slices <= bytes.size(); i += Slices) {
        crc = static_cast<std::uint16_t>(CrcTables[3][(crc ^ bytes[i]) & 0xFF] ^
                                         CrcTables[2][(crc >> 8) ^ bytes[i + 1]] ^
                                         CrcTables[1][bytes[i + 2]] ^ CrcTables[0][bytes[i + 3]]);
    }
    for (; i < bytes.size(); ++i) {
        crc = static_cast<std::uint16_t>((crc >> 8) ^ CrcTables[0][(crc ^ bytes[i]) & 0xFF]);
    }
    return crc;
}

bool NeedsEscape(std::uint8_t byte) {
    return byte >= FrameStart && byte <= EscapeMark;
}

std::uint8_t* PutEscaped(std::uint8_t* out, std::uint8_t byte) {
    if (NeedsEscape(byte)) {
        *out++ = EscapeMark;
        byte = static_cast<std::uint8_t>(byte - FrameStart);
    }
    *out++ = byte;
    return out;
}

}  // namespace

std::uint16_t FrameCrc(std::span<const std::uint8_t> buffer, int first, int last) {
    if (first > last) {
        return 0;
    }
    if (first < 0 || last >= static_cast<int>(buffer.size())) {
        throw Fault("range outside the buffer");
    }
    return Crc(
        buffer.subspan(static_cast<std::size_t>(first),
                       static_cast<std::size_t>(last) + 1 - static_cast<std::size_t>(first)));
}

Bytes EncodeFrame(std::span<const std::uint8_t> payload) {
    if (payload.size() > MostPayload) {
        throw Fault("payload too long for a frame");
    }
    const std::uint16_t crc = Crc(payload);
    // Start, length and end byte, and every other byte as a pair: the most that can come out.
    Bytes frame(3 + 2 * (payload.size() + CrcSize));
    std::uint8_t* out = frame.data();
    *out++ = FrameStart;
    *out++ = static_cast<std::uint8_t>(payload.size() + CrcSize);
    for (const std::uint8_t byte : payload) {
        out = PutEscaped(out, byte);
    }
    out = PutEscaped(out, static_cast<std::uint8_t>(crc & 0xFF));
    out = PutEscaped(out, static_cast<std::uint8_t>(crc >> 8));
    *out++ = FrameEnd;
    frame.resize(static_cast<std::size_t>(out - frame.data()));
    if (frame.size() > MostFrame) {
        throw Fault("frame too long for the transmit buffer");
    }
    return frame;
}

FrameDecoder::Progress FrameDecoder::Take(std::uint8_t byte) {
    switch (stage_) {
        case Stage::Length:
            return TakeLength(byte);
        case Stage::End:
            return TakeEnd(byte);
        default:
            return TakeBody(byte);
    }
}

std::size_t FrameDecoder::StillMissing() const {
    const std::size_t body = payload_.size() + CrcSize - taken_;
    switch (stage_) {
        case Stage::Length:
            return 1 + body + 1;
        case Stage::End:
            return 1;
        default:
            return body + 1;
    }
}

FrameDecoder::Progress FrameDecoder::TakeLength(std::uint8_t byte) {
    stage_ = Stage::Body;
    return byte == payload_.size() + CrcSize ? Progress::More : Refuse(Flaw::Length);
}

FrameDecoder::Progress FrameDecoder::TakeBody(std::uint8_t byte) {
    if (stage_ == Stage::Escaped) {
        if (byte > EscapeMark - FrameStart) {
            return Refuse(Flaw::Escape);
        }
        stage_ = Stage::Body;
        Store(static_cast<std::uint8_t>(byte + FrameStart));
    } else if (byte == EscapeMark) {
        stage_ = Stage::Escaped;
    } else {
        Store(byte);
    }
    return Progress::More;
}

void FrameDecoder::Store(std::uint8_t byte) {
    if (taken_ < payload_.size()) {
        payload_[taken_] = byte;
    } else if (taken_ == payload_.size()) {
        crc_ = byte;
    } else {
        crc_ = static_cast<std::uint16_t>(crc_ | byte << 8);
        stage_ = Stage::End;
    }
    ++taken_;
}

FrameDecoder::Progress FrameDecoder::TakeEnd(std::uint8_t byte) {
    if (byte != FrameEnd) {
        return Refuse(Flaw::End);
    }
    return Crc(payload_) == crc_ ? Progress::Good : Refuse(Flaw::Crc);
}

FrameDecoder::Progress FrameDecoder::Refuse(Flaw flaw) {
    flaw_ = flaw;
    return Progress::Bad;
}

}  // namespace comm
