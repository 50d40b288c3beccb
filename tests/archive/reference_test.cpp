// Reports of records that reference.py made, against what it works out of them by itself.

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <sstream>

#include "archive/report.h"
#include "archive/series_maker.h"
#include "common/number_text.h"
#include "support/virtual_host.h"

namespace testing_support {
namespace {

std::vector<std::string> Split(const std::string& text, char mark) {
    std::vector<std::string> parts;
    std::size_t begin = 0;
    for (std::size_t end = 0; end != std::string::npos; begin = end + 1) {
        end = text.find(mark, begin);
        parts.push_back(text.substr(begin, end - begin));
    }
    return parts;
}

double Number(const std::string& text) {
    return WholeNumber(text).value();
}

int Whole(const std::string& text) {
    return static_cast<int>(Number(text));
}

/// A report as the reference has it.
struct ExpectedReport {
    PeriodStep Step = PeriodStep::Day;
    Period Span;
    std::string Unit;
    std::vector<std::vector<std::string>> Rows;
    std::vector<std::string> Total;
};

struct Scenario {
    std::string Name;
    SeriesMaker Maker;
    std::vector<std::string> Columns;
    std::vector<ExpectedReport> Reports;
};

template <typename Array>
void Fill(Array& array, const std::string& text, std::size_t first = 0) {
    for (const std::string& item : Split(text, '|')) {
        array[first++] = static_cast<typename Array::value_type>(Number(item));
    }
}

/// Takes lists of analog channels first and then of pulse channels.
template <typename Array, typename Convert>
void FillChannels(Array& array, const std::string& text, const LoggerRecord& logger,
                  Convert convert) {
    const std::vector<std::string> items = Split(text, '|');
    for (std::size_t i = 0; i < items.size(); ++i) {
        const std::size_t analog = logger.NumAnalogChannels;
        array[i < analog ? i : AnalogChannels + i - analog] = convert(items[i]);
    }
}

void SetTable(SeriesSettings& settings, const std::string& text) {
    const std::vector<std::string> numbers = Split(text, '|');
    for (std::size_t i = 0; i + 1 < numbers.size(); i += 2) {
        settings.Table.Append({Number(numbers[i]), Number(numbers[i + 1])});
    }
}

using Setter = std::function<void(SeriesSettings&, const std::string&)>;

template <typename Field>
Setter Into(Field LoggerRecord::*field) {
    return [field](SeriesSettings& settings, const std::string& text) {
        settings.Logger.*field = static_cast<Field>(Number(text));
    };
}

template <typename Array>
Setter Each(Array LoggerRecord::*array) {
    return [array](SeriesSettings& settings, const std::string& text) {
        Fill(settings.Logger.*array, text);
    };
}

const std::map<std::string, Setter>& Setters() {
    using L = LoggerRecord;
    static const std::map<std::string, Setter> setters = {
        {"interval", [](SeriesSettings& s, const std::string& t) { s.Logger.SampleInterval = t; }},
        {"style", Into(&L::LoggingStyle)},
        {"analog", Into(&L::NumAnalogChannels)},
        {"pulse", Into(&L::NumDigitalChannels)},
        {"units",
         [](SeriesSettings& s, const std::string& t) {
             FillChannels(s.Logger.EngUnits, t, s.Logger, [](const std::string& i) { return i; });
         }},
        {"places",
         [](SeriesSettings& s, const std::string& t) {
             FillChannels(s.Logger.DecPlaces, t, s.Logger,
                          [](const std::string& i) { return static_cast<std::uint8_t>(Whole(i)); });
         }},
        {"rawlower", Each(&L::RawScaleLower)},
        {"rawupper", Each(&L::RawScaleUpper)},
        {"lower", Each(&L::LowerLimit)},
        {"upper", Each(&L::UpperLimit)},
        {"pulseunit", Each(&L::PulseUnit)},
        {"flowmode", Into(&L::FlowMode)},
        {"flowunits", Into(&L::FlowUnits)},
        {"velunits", Into(&L::VelUnits)},
        {"n", Into(&L::ManningsN)},
        {"s", Into(&L::ManningsS)},
        {"stype", Into(&L::ManningsSType)},
        {"d", Into(&L::ManningsD)},
        {"dtype", Into(&L::ManningsDType)},
        {"offset", Into(&L::LevelOffset)},
        {"offsettype", Into(&L::LevelOffsetType)},
        {"a", Into(&L::FlowEqOffset)},
        {"b", Into(&L::FlowEqExponent)},
        {"c", Into(&L::FlowEqMultiplier)},
        {"table", SetTable}};
    return setters;
}

void AddRecordLine(const std::string& text, SeriesMaker& maker) {
    std::istringstream line(text);
    std::size_t settings = 0;
    std::array<int, 6> time{};
    line >> settings;
    for (int& field : time) {
        line >> field;
    }
    maker.Add(Packed(time[0], time[1], time[2], time[3], time[4], time[5]), {}, settings);
    int count = 0;
    for (std::size_t i = 0; line >> count; ++i) {
        maker.Made.Records.back().Record.Raw[i] = static_cast<std::uint16_t>(count);
    }
}

ExpectedReport ReportLineOf(const std::vector<std::string>& fields) {
    const std::map<std::string, PeriodStep> steps = {
        {"day", PeriodStep::Day}, {"week", PeriodStep::Week}, {"month", PeriodStep::Month}};
    ExpectedReport report;
    report.Step = steps.at(fields[1]);
    report.Span = {static_cast<Moment>(Number(fields[2])), static_cast<Moment>(Number(fields[3]))};
    report.Unit = fields[4];
    return report;
}

void TakeLine(const std::string& line, std::vector<Scenario>& scenarios) {
    const std::vector<std::string> fields = Split(line, '\t');
    const std::vector<std::string> behind(fields.begin() + 1, fields.end());
    const std::string& word = fields[0];
    if (word == "scenario") {
        scenarios.emplace_back();
        scenarios.back().Name = fields[1];
        scenarios.back().Maker.Made.Settings.clear();
        return;
    }
    Scenario& scenario = scenarios.back();
    if (word == "settings") {
        scenario.Maker.Made.Settings.push_back({PlainLogger(0, 0), FlowTable()});
    } else if (word == "record") {
        AddRecordLine(fields[1], scenario.Maker);
    } else if (word == "columns") {
        scenario.Columns = behind;
    } else if (word == "report") {
        scenario.Reports.push_back(ReportLineOf(fields));
    } else if (word == "row") {
        scenario.Reports.back().Rows.push_back(behind);
    } else if (word == "total") {
        scenario.Reports.back().Total = behind;
    } else {
        Setters().at(word)(scenario.Maker.Made.Settings.back(), fields[1]);
    }
}

const std::vector<Scenario>& Scenarios() {
    static const std::vector<Scenario> all = [] {
        std::vector<Scenario> scenarios;
        std::ifstream file(ORVIA_ARCHIVE_TESTS "/reference.txt");
        for (std::string line; std::getline(file, line);) {
            TakeLine(line, scenarios);
        }
        return scenarios;
    }();
    return all;
}

VolumeUnit UnitNamed(const std::string& name) {
    for (int flow = 0; flow < 5; ++flow) {
        for (const VolumeUnit unit : VolumeUnitsFor(flow)) {
            if (VolumeUnitName(unit) == name) {
                return unit;
            }
        }
    }
    throw std::runtime_error("no unit is called " + name);
}

class ReferenceTest : public testing::TestWithParam<std::size_t> {};

TEST_P(ReferenceTest, EveryFigureOfEveryReportIsTheOneWorkedOutIndependently) {
    const Scenario& scenario = Scenarios()[GetParam()];
    const SeriesValues values(scenario.Maker.Made);
    VirtualHost host;
    ASSERT_FALSE(scenario.Reports.empty());
    for (const ExpectedReport& expected : scenario.Reports) {
        const Report report = MakeReport(
            values, {expected.Span, expected.Step, UnitNamed(expected.Unit), "", ""}, host.Clock);
        std::vector<std::string> headings;
        for (const ReportColumn& column : report.Columns) {
            headings.push_back((column.Group.empty() ? "" : column.Group + " ") + column.Heading);
        }
        EXPECT_EQ(headings, scenario.Columns);
        ASSERT_EQ(report.Rows.size(), expected.Rows.size());
        for (std::size_t row = 0; row < report.Rows.size(); ++row) {
            EXPECT_EQ(report.Rows[row], expected.Rows[row]);
        }
        EXPECT_EQ(report.Total, expected.Total);
    }
}

INSTANTIATE_TEST_SUITE_P(Scenarios, ReferenceTest, testing::Range<std::size_t>(0, 8),
                         [](const auto& instance) { return Scenarios()[instance.param].Name; });

TEST(Reference, HasAllItsScenarios) {
    EXPECT_EQ(Scenarios().size(), 8U);
}

}  // namespace
}  // namespace testing_support
