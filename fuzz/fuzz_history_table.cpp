// Any records under any settings: the rows that they are formatted into, and packed.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <span>
#include <string>

#include "flow/flow_calculation.h"
#include "history/fill_list.h"

namespace {

void Require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

class PlainClock final : public SystemClock {
 public:
    LocalTime Now() const override { return {}; }
    std::string DateText(const LocalTime& time) const override {
        return std::to_string(time.Month) + "/" + std::to_string(time.Day) + "/" +
               std::to_string(time.Year);
    }
    std::string TimeText(const LocalTime&) const override { return "8:30:00"; }
};

class NoBar final : public ProgressBar {
 public:
    void SetValue(std::int32_t) override {}
};

/// Takes values off the input, zeros behind its end.
class Input {
 public:
    explicit Input(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

    template <typename T>
    T Take() {
        T value{};
        const std::size_t size = std::min(sizeof(T), bytes_.size());
        std::memcpy(&value, bytes_.data(), size);
        bytes_ = bytes_.subspan(size);
        return value;
    }
    [[nodiscard]] std::span<const std::uint8_t> Rest() const { return bytes_; }

 private:
    std::span<const std::uint8_t> bytes_;
};

LoggerRecord TakeLogger(Input& input) {
    LoggerRecord logger;
    logger.NumAnalogChannels = static_cast<std::uint8_t>(1 + input.Take<std::uint8_t>() % 8);
    logger.NumDigitalChannels = input.Take<std::uint8_t>() % 3;
    logger.FlowMode = input.Take<std::uint8_t>();
    logger.FlowUnits = input.Take<std::uint8_t>();
    logger.ManningsD = input.Take<double>();
    logger.ManningsN = input.Take<double>();
    logger.ManningsS = input.Take<double>();
    logger.EngUnits[0] = "Feet";
    logger.AnalogEnable.fill(input.Take<std::uint8_t>());
    logger.DigitalEnable.fill(input.Take<std::uint8_t>());
    for (std::size_t i = 0; i < AnalogChannels; ++i) {
        logger.RawScaleLower[i] = input.Take<std::uint16_t>();
        logger.RawScaleUpper[i] = input.Take<std::uint16_t>();
        logger.LowerLimit[i] = input.Take<double>();
        logger.UpperLimit[i] = input.Take<double>();
        logger.DecPlaces[i] = input.Take<std::uint8_t>();
    }
    logger.PulseUnit = {input.Take<double>(), input.Take<double>()};
    return logger;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static HistoryStore store;
    Input input(std::span(data, size));
    const LoggerRecord logger = TakeLogger(input);
    const int channels = logger.NumAnalogChannels + logger.NumDigitalChannels;
    store.Clear();
    const auto records = input.Rest();
    for (int at = 0; at + RecordSize(channels) <= static_cast<int>(records.size());
         at += RecordSize(channels)) {
        store.Append(ReadRecord(records, at, channels));
    }
    const PlainClock clock;
    const FlowTable flowTable;
    const HistorySource source{.store = store,
                               .logger = logger,
                               .clock = clock,
                               .flow = [&](double level, double& velocity) {
                                   return CalculateFlow(logger, flowTable, level, velocity);
                               }};
    NoBar bar;
    HistoryTable all;
    HistoryTable packed;
    const HistoryColumns columns = ColumnsOf(logger, false);
    FillTable(source, columns, false, bar, all);
    FillTable(source, columns, true, bar, packed);
    for (int row = 0; row < all.RowCount(); ++row) {
        DataPoint point;
        cmd::DecodeRecord(records, row * RecordSize(channels), channels, clock, point);
        Require(all.Text(row, 0) == point.Time);
    }
    Require(all.RowCount() == store.HistoryCount());
    Require(packed.RowCount() <= all.RowCount());
    return 0;
}
