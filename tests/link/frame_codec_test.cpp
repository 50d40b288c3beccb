#include "link/frame_codec.h"

#include <gtest/gtest.h>

#include <random>
#include <string_view>

#include "common/fault.h"

namespace {

using comm::FrameDecoder;
using Progress = FrameDecoder::Progress;

Bytes BytesOf(std::string_view text) {
    return {text.begin(), text.end()};
}

/// What becomes of a frame's bytes, its start byte first, when `size` payload bytes are expected.
struct Decoded {
    Progress Last = Progress::More;
    Bytes Payload;
    std::size_t Taken = 0;  ///< bytes until the decoder was done
};

Decoded Decode(const Bytes& frame, std::size_t size) {
    Decoded decoded;
    decoded.Payload.resize(size);
    FrameDecoder decoder(decoded.Payload);
    for (std::size_t i = 1; i < frame.size() && decoded.Last == Progress::More; ++i) {
        decoded.Last = decoder.Take(frame[i]);
        decoded.Taken = i + 1;
    }
    return decoded;
}

Bytes RandomPayload(std::mt19937& random, std::size_t size) {
    Bytes payload(size);
    for (std::uint8_t& byte : payload) {
        // Half of them from the range that needs care.
        byte = static_cast<std::uint8_t>(random() % 2 == 0 ? random() : 0xF6 + random() % 10);
    }
    return payload;
}

TEST(FrameCrc, AgreesWithThePublishedCheckValue) {
    EXPECT_EQ(comm::FrameCrc(BytesOf("123456789"), 0, 8), 0xBB3D);  // CRC-16/ARC
}

TEST(FrameCrc, IsZeroForAnEmptyRange) {
    EXPECT_EQ(comm::FrameCrc(BytesOf("abc"), 2, 1), 0);
}

TEST(FrameCrc, CoversTheRangeAlone) {
    EXPECT_EQ(comm::FrameCrc(BytesOf("xx123456789yy"), 2, 10), 0xBB3D);
    EXPECT_THROW(static_cast<void>(comm::FrameCrc(BytesOf("abc"), 0, 3)), Fault);
}

TEST(FrameCrc, AgreesWithTheBitwiseRuleAtEveryLength) {
    std::mt19937 random(3);
    for (std::size_t size = 0; size < 70; ++size) {
        const Bytes bytes = RandomPayload(random, size);
        std::uint16_t crc = 0;
        for (const std::uint8_t byte : bytes) {
            crc = static_cast<std::uint16_t>(crc ^ byte);
            for (int bit = 0; bit < 8; ++bit) {
                crc = static_cast<std::uint16_t>((crc & 1) != 0 ? (crc >> 1) ^ 0xA001 : crc >> 1);
            }
        }
        EXPECT_EQ(comm::FrameCrc(bytes, 0, static_cast<int>(size) - 1), crc);
    }
}

TEST(EncodeFrame, AOneBytePayloadHasLengthThree) {
    // CRC of 0C is 0500: its low byte 00 goes first.
    const Bytes frame = comm::EncodeFrame(Bytes{0x0C});
    EXPECT_EQ(frame, (Bytes{0xF8, 0x03, 0x0C, 0x00, 0x05, 0xF9}));
}

TEST(EncodeFrame, EscapesF8ToFEButNotFF) {
    const Bytes frame = comm::EncodeFrame(Bytes{0xF8, 0xFE, 0xFF, 0xF7});
    const Bytes body(frame.begin() + 1, frame.begin() + 8);
    EXPECT_EQ(body, (Bytes{0x06, 0xFE, 0x00, 0xFE, 0x06, 0xFF, 0xF7}));
}

TEST(EncodeFrame, CrcBytesEscapeLikePayload) {
    std::mt19937 random(5);
    int escaped = 0;
    for (int i = 0; i < 4000; ++i) {
        const Bytes payload{static_cast<std::uint8_t>(random() % 0xF8),
                            static_cast<std::uint8_t>(random() % 0xF8)};
        const std::uint16_t crc = comm::FrameCrc(payload, 0, 1);
        if ((crc & 0xFF) >= 0xF8 && (crc & 0xFF) <= 0xFE) {
            const Bytes frame = comm::EncodeFrame(payload);
            EXPECT_EQ(frame[4], 0xFE);
            EXPECT_EQ(frame[5], (crc & 0xFF) - 0xF8);
            ++escaped;
        }
    }
    EXPECT_GT(escaped, 0);
}

TEST(EncodeFrame, TheLengthByteIsNeverEscaped) {
    const Bytes frame = comm::EncodeFrame(Bytes(0xF9 - 2, 0x11));
    EXPECT_EQ(frame[1], 0xF9);
    EXPECT_EQ(frame[2], 0x11);
    const Decoded decoded = Decode(frame, 0xF9 - 2);
    EXPECT_EQ(decoded.Last, Progress::Good) << "a length of F9 is no end of frame";
}

TEST(EncodeFrame, APayloadOverTheLengthByteIsAFault) {
    EXPECT_NO_THROW(static_cast<void>(comm::EncodeFrame(Bytes(253, 0))));
    EXPECT_THROW(static_cast<void>(comm::EncodeFrame(Bytes(254, 0))), Fault);
}

TEST(EncodeFrame, AFrameOverTheTransmitBufferIsAFault) {
    EXPECT_THROW(static_cast<void>(comm::EncodeFrame(Bytes(253, 0xF8))), Fault);
    EXPECT_NO_THROW(static_cast<void>(comm::EncodeFrame(Bytes(252, 0xF8))));
}

TEST(FrameDecoder, GivesBackWhatWasEncoded) {
    std::mt19937 random(11);
    for (std::size_t size = 0; size <= 250; ++size) {
        const Bytes payload = RandomPayload(random, size);
        const Bytes frame = comm::EncodeFrame(payload);
        const Decoded decoded = Decode(frame, size);
        EXPECT_EQ(decoded.Last, Progress::Good);
        EXPECT_EQ(decoded.Payload, payload);
        EXPECT_EQ(decoded.Taken, frame.size());
    }
}

TEST(FrameDecoder, AReplyOfAnotherLengthFailsAtItsLength) {
    const Bytes frame = comm::EncodeFrame(Bytes{1, 2, 3});
    EXPECT_EQ(Decode(frame, 4).Last, Progress::Bad);
    EXPECT_EQ(Decode(frame, 2).Last, Progress::Bad);
    EXPECT_EQ(Decode(frame, 4).Taken, 2U);
}

TEST(FrameDecoder, CountsTheBytesThatAGoodFrameStillNeeds) {
    // Escapes make more of them, and never fewer.
    for (const Bytes& payload : {Bytes{1, 2, 3}, Bytes{0xF8, 0xFE, 3}, Bytes{}}) {
        const Bytes frame = comm::EncodeFrame(payload);
        Bytes taken(payload.size());
        FrameDecoder decoder(taken);
        const std::size_t escapes = frame.size() - payload.size() - 5;
        EXPECT_EQ(decoder.StillMissing(), frame.size() - 1 - escapes);
        for (std::size_t i = 1; i < frame.size(); ++i) {
            EXPECT_GE(decoder.StillMissing(), 1U);
            EXPECT_LE(decoder.StillMissing(), frame.size() - i);
            static_cast<void>(decoder.Take(frame[i]));
        }
    }
}

TEST(FrameDecoder, FE07Fails) {
    EXPECT_EQ(Decode({0xF8, 0x03, 0xFE, 0x07, 0, 0, 0xF9}, 1).Last, Progress::Bad);
    EXPECT_EQ(Decode({0xF8, 0x03, 0xFE, 0x06}, 1).Last, Progress::More);
}

TEST(FrameDecoder, RawBytesF8ToFDCountAsData) {
    for (int byte = 0xF8; byte <= 0xFD; ++byte) {
        const Bytes payload{static_cast<std::uint8_t>(byte)};
        const std::uint16_t crc = comm::FrameCrc(payload, 0, 0);
        const Bytes frame{0xF8,
                          0x03,
                          payload[0],
                          static_cast<std::uint8_t>(crc & 0xFF),
                          static_cast<std::uint8_t>(crc >> 8),
                          0xF9};
        EXPECT_EQ(Decode(frame, 1).Last, Progress::Good) << byte;
    }
}

TEST(FrameDecoder, AWrongEndByteFails) {
    Bytes frame = comm::EncodeFrame(Bytes{1, 2, 3});
    frame.back() = 0xF8;
    EXPECT_EQ(Decode(frame, 3).Last, Progress::Bad);
}

TEST(FrameDecoder, CorruptionOfAnyByteNeverGivesAnotherPayload) {
    const Bytes payload{0x08, 0xF8, 0x00, 0xFE, 0x10, 0x42};
    const Bytes frame = comm::EncodeFrame(payload);
    for (std::size_t at = 1; at < frame.size(); ++at) {
        for (int mask = 1; mask < 256; ++mask) {
            Bytes damaged = frame;
            damaged[at] = static_cast<std::uint8_t>(damaged[at] ^ mask);
            const Decoded decoded = Decode(damaged, payload.size());
            if (decoded.Last == Progress::Good) {
                EXPECT_EQ(decoded.Payload, payload) << "byte " << at << " mask " << mask;
            }
        }
    }
}

TEST(FrameDecoder, AFrameCutAtAnyLengthIsNotGood) {
    const Bytes frame = comm::EncodeFrame(Bytes{0xF9, 2, 3, 4});
    for (std::size_t length = 1; length < frame.size(); ++length) {
        const Bytes cut(frame.begin(), frame.begin() + static_cast<std::ptrdiff_t>(length));
        EXPECT_EQ(Decode(cut, 4).Last, Progress::More);
    }
}

}  // namespace
