#include "logger/settings_transfer.h"

#include <algorithm>
#include <array>

#include "logger/commands.h"
#include "logger/memory.h"
#include "logger/settings_image.h"

namespace config {

namespace {

constexpr int Tries = 3;

/// Pieces of the image as the logger takes them: its first block in two.
constexpr std::array<ImageBlock, 4> WritePieces{
    {{0, 8, 128}, {128, 136, 114}, {242, 256, 48}, {290, 512, 168}}};

template <typename Attempt>
bool TryThrice(FrameExchange& exchange, Attempt attempt) {
    for (int i = 0; i < Tries; ++i) {
        if (i > 0) {
            exchange.NoteProgress("try", i + 1, Tries);
        }
        if (attempt()) {
            return true;
        }
    }
    return false;
}

bool ReadImage(FrameExchange& exchange, Bytes& image) {
    int number = 0;
    return std::all_of(ImageBlocks.begin(), ImageBlocks.end(), [&](const ImageBlock& block) {
        exchange.NoteProgress("block", ++number, static_cast<int>(ImageBlocks.size()));
        return cmd::ReadLoggerMemory(exchange, image, block.Offset, block.Size, block.Address);
    });
}

bool WriteImage(FrameExchange& exchange, const Bytes& image) {
    int number = 0;
    return std::all_of(WritePieces.begin(), WritePieces.end(), [&](const ImageBlock& piece) {
        exchange.NoteProgress("part", ++number, static_cast<int>(WritePieces.size()));
        std::int32_t address = piece.Address;
        return cmd::WriteLoggerMemory(exchange, image, piece.Offset, piece.Size, address);
    });
}

}  // namespace

bool GetLoggerSettings(FrameExchange& exchange, const SystemClock& clock, LoggerState& state) {
    if (!TryThrice(exchange, [&] { return cmd::GetLoggerVersion(exchange, state); })) {
        return false;
    }
    Bytes image;
    if (!ReadImage(exchange, image) || !DecodeSettingsImage(image, state)) {
        return false;
    }
    state.SettingsImage = image;
    return TryThrice(exchange, [&] { return cmd::GetLoggerStatus(exchange, state); }) &&
           TryThrice(exchange, [&] { return cmd::GetLoggerTime(exchange, clock, state); });
}

bool WriteLoggerSettings(FrameExchange& exchange, const LoggerRecord& global) {
    Bytes image;
    Bytes readBack;
    return EncodeSettingsImage(global, image) && WriteImage(exchange, image) &&
           ReadImage(exchange, readBack) && readBack == image;
}

}  // namespace config
