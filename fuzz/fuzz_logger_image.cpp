// A settings image of any bytes: it decodes to settings in their ranges, and those encode to an
// image that decodes to them again.

#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "logger/settings_image.h"

namespace {

void Require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

LoggerState Decoded(const Bytes& image, const LoggerState& counts) {
    LoggerState state = counts;
    Require(config::DecodeSettingsImage(image, state));
    return state;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 3) {
        return 0;
    }
    LoggerState counts;
    counts.NumAnalogChannels = static_cast<std::uint8_t>(data[0] % 8 + 1);
    counts.NumDigitalChannels = static_cast<std::uint8_t>(data[1] % 3);
    counts.SODAvailable = ToFlag(data[2] % 2 == 1);
    Bytes image(config::SettingsImageSize);
    std::copy_n(data + 3, std::min(size - 3, image.size()), image.begin());

    const LoggerState state = Decoded(image, counts);
    Require(state.SensorWarmupTime <= 60 && state.FlowMode <= 4 && state.FlowUnits <= 4);
    Require(state.LoggerName.size() <= 32 && state.TablePath.size() <= 128);
    Bytes again;
    if (config::EncodeSettingsImage(state, again)) {
        Bytes third;
        Require(config::EncodeSettingsImage(Decoded(again, counts), third));
        Require(third == again);
    }
    return 0;
}
