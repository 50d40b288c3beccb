#ifndef ORVIA_LOGGER_SETTINGS_IMAGE_H
#define ORVIA_LOGGER_SETTINGS_IMAGE_H

#include <array>
#include <cstdint>

#include "common/bytes.h"
#include "logger/logger_state.h"

namespace config {

/// Size of the image of a logger's settings: three blocks of its memory, one behind another. The
/// map with a worked example is in docs/settings-image.md.
inline constexpr int SettingsImageSize = 458;

/// A piece of the image and the logger memory it stands for.
struct ImageBlock {
    int Offset;            ///< in the image
    std::int32_t Address;  ///< in the logger
    int Size;              ///< bytes
};

inline constexpr std::array<ImageBlock, 3> ImageBlocks{
    {{0, 8, 242}, {242, 256, 48}, {290, 512, 168}}};
static_assert(ImageBlocks[0].Size + ImageBlocks[1].Size + ImageBlocks[2].Size == SettingsImageSize);

/// Encodes the settings of `global` into a new image. False, with the image empty, if a value
/// does not fit its field.
[[nodiscard]] bool EncodeSettingsImage(const LoggerRecord& global, Bytes& image);

/// Decodes an image of the full size into `state`, whose channel counts are known already. What
/// the logger holds out of range is repaired, and flow fields that were never written take their
/// defaults with an empty table. False only for an image of another size.
[[nodiscard]] bool DecodeSettingsImage(const Bytes& image, LoggerState& state);

}  // namespace config

#endif  // ORVIA_LOGGER_SETTINGS_IMAGE_H
