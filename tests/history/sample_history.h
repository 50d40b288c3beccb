#ifndef ORVIA_TESTS_HISTORY_SAMPLE_HISTORY_H
#define ORVIA_TESTS_HISTORY_SAMPLE_HISTORY_H

#include <array>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

#include "history/csv.h"
#include "history/fill_list.h"

namespace testing_support {

/// The packed time of 1 to 31 January 2024.
[[nodiscard]] inline std::array<std::uint8_t, 4> January(int day, int hour, int minute,
                                                         int second = 0) {
    constexpr int months = 24 * 12;
    return {static_cast<std::uint8_t>(second | minute << 6),
            static_cast<std::uint8_t>(minute >> 2 | hour << 4),
            static_cast<std::uint8_t>(hour >> 4 | day << 1 | months << 6),
            static_cast<std::uint8_t>(months >> 2)};
}

inline void AddRecord(HistoryStore& store, const std::array<std::uint8_t, 4>& time,
                      std::initializer_list<std::uint16_t> counts) {
    HistoryRecord record;
    record.Time = time;
    std::copy(counts.begin(), counts.end(), record.Raw.begin());
    store.Append(record);
}

/// A logger whose channels show their raw counts.
[[nodiscard]] inline LoggerRecord PlainLogger(int analog, int pulse) {
    LoggerRecord logger;
    logger.LoggerName = "Pump 3";
    logger.NumAnalogChannels = static_cast<std::uint8_t>(analog);
    logger.NumDigitalChannels = static_cast<std::uint8_t>(pulse);
    logger.AnalogEnable.fill(1);
    logger.DigitalEnable.fill(1);
    logger.RawScaleUpper.fill(100);
    logger.UpperLimit.fill(100);
    logger.PulseUnit.fill(1);
    logger.EngUnits = {"Feet", "Deg C", "Volts", "%", "%", "%", "%", "%", "Gal", "Rain"};
    return logger;
}

/// A bar that keeps all its values.
class FakeBar final : public ProgressBar {
 public:
    void SetValue(std::int32_t value) override { Values.push_back(value); }
    std::vector<std::int32_t> Values;
};

/// The texts of a row.
[[nodiscard]] inline std::vector<std::string> RowOf(const HistoryTable& table, int row) {
    std::vector<std::string> texts;
    texts.reserve(static_cast<std::size_t>(table.ColumnCount()));
    for (int column = 0; column < table.ColumnCount(); ++column) {
        texts.emplace_back(table.Text(row, column));
    }
    return texts;
}

}  // namespace testing_support

#endif  // ORVIA_TESTS_HISTORY_SAMPLE_HISTORY_H
