#include "simulator/frame.h"

#include "simulator/wire.h"

namespace simulator {
namespace {

using Outcome = FrameReader::Outcome;

/// What the last byte brings about.
Outcome Feed(FrameReader& reader, const Bytes& bytes) {
    Outcome last = Outcome::None;
    for (const std::uint8_t byte : bytes) {
        last = reader.Take(byte);
    }
    return last;
}

TEST(SimulatorCrc, HasTheKnownCheckValue) {
    EXPECT_EQ(Crc16(BytesOf("123456789")), 0xBB3D);
}

TEST(SimulatorCrc, OfNothingIsZero) {
    EXPECT_EQ(Crc16({}), 0);
}

TEST(SimulatorFrame, OfStatusRequestIsAsWorkedByHand) {
    EXPECT_EQ(EncodeFrame(Bytes{0x0C}), (Bytes{0xF8, 0x03, 0x0C, 0x00, 0x05, 0xF9}));
}

TEST(SimulatorFrame, EscapesF8ToFEButNotFF) {
    const Bytes wire = EncodeFrame(Bytes{0xF8, 0xFE, 0xFF, 0xF7});
    EXPECT_THAT(Bytes(wire.begin(), wire.begin() + 8),
                testing::ElementsAre(0xF8, 0x06, 0xFE, 0x00, 0xFE, 0x06, 0xFF, 0xF7));
}

TEST(SimulatorFrame, EscapesItsCrc) {
    // Look for a payload whose CRC has a byte from F8 to FE in both halves.
    for (int low = 0; low < 256; ++low) {
        for (int high = 0; high < 256; ++high) {
            const Bytes payload = {static_cast<std::uint8_t>(low), static_cast<std::uint8_t>(high)};
            if (Crc16(payload) != 0xF9FA) {
                continue;
            }
            const Bytes wire = EncodeFrame(payload);
            EXPECT_EQ(Bytes(wire.end() - 5, wire.end()), (Bytes{0xFE, 0x02, 0xFE, 0x01, 0xF9}));
            return;
        }
    }
    FAIL() << "two bytes reach every CRC";
}

TEST(SimulatorFrame, LengthGoesOutRaw) {
    const Bytes wire = EncodeFrame(Bytes(0xF9 - 2, 0x11));
    EXPECT_EQ(wire[1], 0xF9);
    FrameReader reader;
    EXPECT_EQ(Feed(reader, wire), Outcome::Good);
    EXPECT_EQ(reader.Payload().size(), 0xF9U - 2);
}

TEST(SimulatorFrameReader, ReadsWhatWasEncodedOfEveryByteValue) {
    Bytes payload;
    for (int value = 0; value < 256; ++value) {
        payload.assign(5, static_cast<std::uint8_t>(value));
        FrameReader reader;
        ASSERT_EQ(Feed(reader, EncodeFrame(payload)), Outcome::Good) << value;
        EXPECT_EQ(reader.Payload(), payload);
    }
}

TEST(SimulatorFrameReader, AnyOneChangedByteSpoilsTheFrame) {
    const Bytes good = EncodeFrame(Bytes{0x08, 0x08, 0x00, 0x00, 0xF2});
    for (std::size_t i = 0; i < good.size(); ++i) {
        Bytes bad = good;
        bad[i] ^= 0x01;
        FrameReader reader;
        EXPECT_NE(Feed(reader, bad), Outcome::Good) << i;
    }
}

TEST(SimulatorFrameReader, StartInsideFrameBeginsAnother) {
    FrameReader reader;
    EXPECT_EQ(Feed(reader, {0xF8, 0x05, 0x01, 0xF8}), Outcome::Bad);
    EXPECT_EQ(Feed(reader, {0x03, 0x0C, 0x00, 0x05, 0xF9}), Outcome::Good);
    EXPECT_EQ(reader.Payload(), Bytes{0x0C});
}

TEST(SimulatorFrameReader, RefusesRawReservedBytes) {
    for (int byte = 0xF9; byte <= 0xFD; ++byte) {
        FrameReader reader;
        EXPECT_EQ(Feed(reader, {0xF8, 0x05, static_cast<std::uint8_t>(byte)}), Outcome::Bad);
    }
}

TEST(SimulatorFrameReader, RefusesEscapeAbove6) {
    FrameReader reader;
    EXPECT_EQ(Feed(reader, {0xF8, 0x05, 0xFE, 0x07}), Outcome::Bad);
}

TEST(SimulatorFrameReader, RefusesFrameWithoutPayload) {
    FrameReader reader;
    EXPECT_EQ(Feed(reader, {0xF8, 0x02}), Outcome::Bad);
}

TEST(SimulatorFrameReader, SkipsWhatStandsBetweenFrames) {
    FrameReader reader;
    EXPECT_EQ(Feed(reader, {0x00, 0xF9, 0xFA, 0x41, 0xF8, 0x03, 0x0C, 0x00, 0x05, 0xF9}),
              Outcome::Good);
}

}  // namespace
}  // namespace simulator
