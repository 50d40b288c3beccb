// A row of settings of any content, as a damaged or foreign archive may hold it: it gives settings
// in their ranges, and those give a row that gives them again.

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <span>

#include "archive/archive_rows.h"

namespace {

void Require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

/// Hands out what the fuzzer made; zeros when that is used up.
class Input {
 public:
    explicit Input(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

    std::uint8_t Byte() {
        const std::uint8_t byte = bytes_.empty() ? std::uint8_t{0} : bytes_.front();
        bytes_ = bytes_.subspan(bytes_.empty() ? 0 : 1);
        return byte;
    }
    std::uint64_t Number(int size) {
        std::uint64_t number = 0;
        for (int i = 0; i < size; ++i) {
            number = number << 8 | Byte();
        }
        return number;
    }
    std::int32_t Integer() { return static_cast<std::int32_t>(Number(4)); }
    double Real() { return std::bit_cast<double>(Number(8)); }
    [[nodiscard]] std::span<const std::uint8_t> Rest() const { return bytes_; }

 private:
    std::span<const std::uint8_t> bytes_;
};

ArchiveSettings RowFrom(Input& input) {
    ArchiveSettings row;
    row.Firmware = input.Integer();
    row.AnalogChannels = input.Integer();
    row.PulseChannels = input.Integer();
    row.SampleOnDemand = input.Integer();
    row.FlowDecimals = input.Integer();
    row.VelocityDecimals = input.Integer();
    row.EquationOffset = input.Real();
    row.EquationExponent = input.Real();
    row.EquationMultiplier = input.Real();
    const int points = input.Byte() % 8;
    for (int i = 0; i < points; ++i) {
        row.Points.push_back({input.Real(), input.Real()});
    }
    row.DeviceName.assign(input.Byte() % 16, static_cast<char>(input.Byte()));
    row.Image.assign(input.Rest().begin(), input.Rest().end());
    return row;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input({data, size});
    const ArchiveSettings row = RowFrom(input);
    const SeriesSettings settings = SettingsOfRow(row);
    const LoggerRecord& logger = settings.Logger;
    Require(logger.NumAnalogChannels <= AnalogChannels);
    Require(logger.NumDigitalChannels <= PulseChannels);
    Require(logger.FlowDecPlaces >= 0 && logger.FlowDecPlaces <= 6);
    Require(std::isfinite(logger.FlowEqOffset) && std::isfinite(logger.FlowEqMultiplier));
    Require(settings.Table.UpperBound() == static_cast<int>(row.Points.size()));

    const ArchiveSettings again = SettingsRow(logger, settings.Table);
    // Of settings that no image holds there is none.
    if (!again.Image.empty()) {
        const SeriesSettings back = SettingsOfRow(again);
        Require(SettingsRow(back.Logger, back.Table) == again);
    }
    return 0;
}
