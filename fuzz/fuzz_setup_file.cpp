// A set-up file of any bytes: the reader ends; what it read can be shown, taken back and encoded or
// refused; and a state that encodes comes back from the file that is written of it, with the same
// image.

#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>

#include "logger/settings_image.h"
#include "setup/setup_file.h"
#include "setup/setup_transfer.h"

namespace {

void Require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

LoggerState Defaults() {
    LoggerState state;
    state.NumAnalogChannels = 3;
    state.NumDigitalChannels = 1;
    SetDefaultSettings(state);
    return state;
}

bool IsPlain(const std::string& text) {
    for (const char c : text) {
        if (c < ' ' || c > '~') {
            return false;
        }
    }
    return text.empty() || (text.front() != ' ' && text.back() != ' ');
}

bool HasPlainTexts(const LoggerState& state) {
    bool plain = IsPlain(state.LoggerName) && IsPlain(state.SampleInterval) &&
                 IsPlain(state.FlumeTag) && IsPlain(state.WeirTag) && IsPlain(state.TablePath);
    for (const std::string& unit : state.EngUnits) {
        plain = plain && IsPlain(unit);
    }
    return plain;
}

void RequireRoundTrip(const LoggerState& state, const Bytes& image) {
    std::ostringstream written;
    WriteSetupFile(written, state, {"1.0.0", "1/2/2026", "03:04:05"});
    std::istringstream file(written.str());
    LoggerState again = Defaults();
    Require(!ReadSetupFile(file, again).has_value());
    Bytes imageAgain;
    Require(config::EncodeSettingsImage(again, imageAgain));
    Require(imageAgain == image);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::istringstream file(std::string(reinterpret_cast<const char*>(data), size));
    LoggerState state = Defaults();
    const auto fault = ReadSetupFile(file, state);
    Require(!fault.has_value() || fault->Line >= 1);
    Require(state.NumAnalogChannels == 3 && state.NumDigitalChannels == 1);
    Bytes image;
    if (config::EncodeSettingsImage(state, image) && HasPlainTexts(state)) {
        RequireRoundTrip(state, image);
    }
    SetupControls controls;
    static_cast<void>(StateToForm(state, {}, controls));
    Require(FormToState(controls, {}, state));
    SetupControls shownAgain = controls;
    static_cast<void>(StateToForm(state, {}, shownAgain));
    Require(shownAgain.cmbWarmup == controls.cmbWarmup && shownAgain.cmbBaud == controls.cmbBaud);
    return 0;
}
