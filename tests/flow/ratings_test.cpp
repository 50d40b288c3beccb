// The shipped catalogues against figures that others have published; docs/flow-devices.md names
// the sources. Where a source gives another unit, the row is turned here, not the rating.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <set>

#include "flow/catalogues.h"
#include "flow/flow_calculation.h"
#include "flow/flow_definition.h"
#include "flow/flow_support.h"
#include "flow/flow_table.h"

namespace {

constexpr double FeetPerMeter = 1 / 0.3048;
constexpr double LitersPerCubicFoot = 28.316846592;
constexpr double GpmPerCfs = 448.831;
constexpr double Gravity = 32.174;  // feet per second squared

std::string DataFolder() {
    return ORVIA_DATA_FOLDER;
}

class Ratings : public ::testing::Test {
 protected:
    Ratings() {
        config::ReadFlowDeviceList(DataFolder() + "/flumes.lst", DataFolder(), known_.FlumeList);
        config::ReadFlowDeviceList(DataFolder() + "/weirs.lst", DataFolder(), known_.WeirList);
    }

    /// Flow in cfs of the device with that tag, as a logger's window would show it.
    double Cfs(const std::string& tag, double head) {
        LoggerState state;
        RecordingBoxes boxes;
        const bool weir = Knows(known_.WeirList, tag);
        state.FlowMode = weir ? 3 : 2;
        (weir ? state.WeirTag : state.FlumeTag) = tag;
        state.EngUnits[0] = "feet";
        config::LoadFlowDefinition(state, known_, DataFolder(), boxes);
        EXPECT_TRUE(boxes.Shown.empty()) << tag;
        double velocity = 0;
        return CalculateFlow(state, state.FlowTable, head, velocity);
    }
    void ExpectRow(const std::string& tag, double head, double cfs, double share) {
        EXPECT_NEAR(Cfs(tag, head), cfs, cfs * share) << tag << " at " << head;
    }
    static bool Knows(const FlowDeviceList& list, const std::string& tag) {
        return std::any_of(list.begin(), list.end(),
                           [&](const FlowDeviceEntry& entry) { return entry.Tag == tag; });
    }

    Catalogues known_;
};

struct MetricRow {
    const char* Tag;
    double Meters;
    double Liters;  // per second
};

// Bos (1989), discharge characteristics of Parshall flumes: least and greatest flow of each size.
// Its heads are rounded from feet, so those of 1.5, 2 and 2.5 ft are given as such.
TEST_F(Ratings, ParshallFlumesAgreeWithTheLimitsOfBos) {
    constexpr MetricRow Rows[] = {
        {"P1", 0.015, 0.09},  {"P1", 0.21, 5.4},    {"P2", 0.015, 0.18},  {"P2", 0.24, 13.2},
        {"P3", 0.03, 0.77},   {"P3", 0.33, 32.1},   {"P6", 0.03, 1.50},   {"P6", 0.4572, 111},
        {"P9", 0.03, 2.5},    {"P9", 0.61, 251},    {"P12", 0.03, 3.32},  {"P12", 0.762, 457},
        {"P18", 0.03, 4.80},  {"P18", 0.762, 695},  {"P24", 0.046, 12.1}, {"P24", 0.762, 937},
        {"P36", 0.046, 17.6}, {"P36", 0.762, 1427}, {"P48", 0.061, 35.8}, {"P48", 0.762, 1923},
        {"P60", 0.061, 44.1}, {"P60", 0.762, 2424}, {"P72", 0.076, 74.1}, {"P72", 0.762, 2929},
        {"P84", 0.076, 85.8}, {"P84", 0.762, 3438}, {"P96", 0.076, 97.2}, {"P96", 0.762, 3949}};
    for (const MetricRow& row : Rows) {
        ExpectRow(row.Tag, row.Meters * FeetPerMeter, row.Liters / LitersPerCubicFoot, 0.015);
    }
}

// The same for throats of 10 ft and more, which follow a law of their own. The greatest heads are
// 3.5, 4.5, 5.5 and 6 ft.
TEST_F(Ratings, LargeParshallFlumesAgreeWithTheLimitsOfBos) {
    constexpr MetricRow Rows[] = {
        {"P120", 0.09, 160}, {"P120", 1.0668, 8280},  {"P144", 0.09, 190}, {"P144", 1.3716, 14680},
        {"P180", 0.09, 230}, {"P180", 1.6764, 25040}, {"P240", 0.09, 310}, {"P240", 1.8288, 37970},
        {"P300", 0.09, 380}, {"P300", 1.8288, 47140}, {"P360", 0.09, 460}, {"P360", 1.8288, 56330},
        {"P480", 0.09, 600}, {"P480", 1.8288, 74700}, {"P600", 0.09, 750}, {"P600", 1.8288, 93040}};
    for (const MetricRow& row : Rows) {
        // The least flows have two digits.
        ExpectRow(row.Tag, row.Meters * FeetPerMeter, row.Liters / LitersPerCubicFoot,
                  row.Liters < 1000 ? 0.025 : 0.001);
    }
}

// Skogerboe: C = K W^1.025, K by length alone; the narrowest flume is listed 3.4 % above it. And
// the least and greatest flow that are published for all sizes together.
TEST_F(Ratings, CutthroatFlumesAgreeWithTheCommonLaw) {
    struct Length {
        int Inches = 0;
        double K = 0;
        double Exponent = 0;
        std::initializer_list<int> Throats;
    };
    const Length lengths[] = {{18, 6.1, 2.15, {1, 2, 4, 8}},
                              {36, 4.5, 1.84, {2, 4, 8, 16}},
                              {54, 3.98, 1.72, {3, 6, 12, 24}},
                              {108, 3.5, 1.56, {12, 24, 48, 72}}};
    for (const Length& length : lengths) {
        for (const int throat : length.Throats) {
            const std::string tag =
                "CT" + std::to_string(length.Inches) + "X" + std::to_string(throat);
            for (const double share : {0.1, 0.2, 0.33}) {
                const double head = share * length.Inches / 12;
                const double law =
                    length.K * std::pow(throat / 12.0, 1.025) * std::pow(head, length.Exponent);
                ExpectRow(tag, head, law, throat == 1 ? 0.035 : 0.012);
            }
        }
    }
    EXPECT_NEAR(Cfs("CT18X1", 0.05) * GpmPerCfs, 0.3536, 0.0001);
    EXPECT_NEAR(Cfs("CT108X72", 3) * GpmPerCfs, 54801, 5);
}

struct Row {
    const char* Tag;
    double Feet;
    double Cfs;
};

// Free-flow capacities of the Water Measurement Manual and ASTM D1941, at 1.5, 2 and 2.5 ft.
TEST_F(Ratings, ParshallFlumesAgreeWithTheirPublishedCapacities) {
    constexpr Row Rows[] = {{"P6", 1.5, 3.9},    {"P9", 2, 8.9},     {"P12", 2.5, 16.1},
                            {"P18", 2.5, 24.6},  {"P24", 2.5, 33.1}, {"P36", 2.5, 50.4},
                            {"P48", 2.5, 67.9},  {"P60", 2.5, 85.6}, {"P72", 2.5, 103.5},
                            {"P84", 2.5, 121.4}, {"P96", 2.5, 139.5}};
    for (const Row& row : Rows) {
        ExpectRow(row.Tag, row.Feet, row.Cfs, 0.005);
    }
}

// Parshall's own law for throats of 1 to 8 ft: Q = 4 W H^(1.522 W^0.026).
TEST_F(Ratings, WideParshallFlumesFollowTheCommonLaw) {
    constexpr std::pair<const char*, double> Throats[] = {{"P12", 1}, {"P18", 1.5}, {"P24", 2},
                                                          {"P36", 3}, {"P48", 4},   {"P60", 5},
                                                          {"P72", 6}, {"P84", 7},   {"P96", 8}};
    for (const auto& [tag, width] : Throats) {
        for (const double head : {0.3, 1.0, 2.4}) {
            const double law = 4 * width * std::pow(head, 1.522 * std::pow(width, 0.026));
            ExpectRow(tag, head, law, 0.002);
        }
    }
}

// Capacities of the rating tables in USDA Agriculture Handbook 224, at full depth.
TEST_F(Ratings, HFlumesAgreeWithTheirPublishedCapacities) {
    constexpr Row Rows[] = {{"HS0.4", 0.4, 0.085}, {"HS0.6", 0.6, 0.23}, {"HS0.8", 0.8, 0.47},
                            {"HS1", 1, 0.82},      {"H0.5", 0.5, 0.347}, {"H0.75", 0.75, 0.957},
                            {"H1", 1, 1.97},       {"H1.5", 1.5, 5.42},  {"H2", 2, 11.1},
                            {"H2.5", 2.5, 19.3},   {"H3", 3, 30.7},      {"H4.5", 4.5, 84.5},
                            {"HL4", 4, 117}};
    for (const Row& row : Rows) {
        ExpectRow(row.Tag, row.Feet, row.Cfs, 0.015);
    }
}

// Rows of the 4 inch table in the Isco handbook; its power law keeps to 1 % of the full scale.
TEST_F(Ratings, PalmerBowlusFlumeAgreesWithTheHandbooksTable) {
    constexpr MetricRow Rows[] = {
        {"PB4", 0.01829, 0.2436}, {"PB4", 0.03048, 0.5947}, {"PB4", 0.0762, 3.435}};
    for (const MetricRow& row : Rows) {
        EXPECT_NEAR(Cfs(row.Tag, row.Meters * FeetPerMeter) * LitersPerCubicFoot, row.Liters,
                    3.435 * 0.01);
    }
    EXPECT_NEAR(Cfs("PB4", 0.10), 0.0210, 5e-4);
}

/// What the head correction (feet) of a notch adds to its flow.
double CorrectionShare(double correction, double head) {
    return std::pow(1 + correction / head, 2.5);
}

// Published tables after ASTM D5242, every row from 0.20 to 0.30 ft. They leave the head correction
// out, 0.0049 and 0.0037 ft, which is 6.3 and 4.7 % of the flow at the first row.
TEST_F(Ratings, NotchesOf45And60DegreesAgreeWithPublishedTablesButForTheHeadCorrection) {
    constexpr double Notch45[] = {0.0185, 0.0209, 0.0235, 0.0263, 0.0292, 0.0323,
                                  0.0357, 0.0392, 0.0429, 0.0469, 0.0510};
    constexpr double Notch60[] = {0.0258, 0.0292, 0.0328, 0.0366, 0.0407, 0.0451,
                                  0.0497, 0.0547, 0.0599, 0.0654, 0.0711};
    for (int i = 0; i <= 10; ++i) {
        const double head = 0.20 + 0.01 * i;
        ExpectRow("V45", head, Notch45[i] * CorrectionShare(0.00492, head), 0.012);
        ExpectRow("V60", head, Notch60[i] * CorrectionShare(0.00370, head), 0.015);
    }
}

/// The equation of Kindsvater and Shen, with the coefficient and head correction (in metres) that
/// are interpolated on a grid laid over Shen's curves.
double ShenCfs(double degrees, double coefficient, double correction, double head) {
    const double radians = degrees * std::acos(-1.0) / 180;
    return 8.0 / 15 * coefficient * std::sqrt(2 * Gravity) * std::tan(radians / 2) *
           std::pow(head + correction * FeetPerMeter, 2.5);
}

// Shen (1981), whose curves hold from 25 to 100 degrees, as read from a grid laid over them. V90 is
// Cone's law, which keeps to them.
TEST_F(Ratings, NotchesAgreeWithShensCurves) {
    for (const double head : {0.2, 0.3, 0.5, 0.8, 1.0, 1.25}) {
        ExpectRow("V90", head, ShenCfs(90, 0.5775, 0.0009, head), 0.008);
        ExpectRow("V60", head, ShenCfs(60, 0.575, 0.0012, head), 0.006);
        ExpectRow("V45", head, ShenCfs(45, 0.5788, 0.0016, head), 0.006);
        ExpectRow("V30", head, ShenCfs(30, 0.585, 0.0023, head), 0.006);
    }
}

// Endress+Hauser: cubic metres per hour, times the 2.5th power of the head in millimetres, without
// head correction: 2.56, 2.13, 1.50 and 1.13 mm are what V22 to V60 have beyond it. Cone's exponent
// for 90 degrees is another; the two laws cross near 0.8 ft.
TEST_F(Ratings, NotchesAgreeWithASecondListOfCoefficientsButForTheHeadCorrection) {
    struct Notch {
        const char* Tag;
        double Factor, Correction;
    };
    constexpr double FeetPerMillimeter = FeetPerMeter / 1000;
    constexpr double CubicMetersPerHourPerCfs = LitersPerCubicFoot * 3.6;
    constexpr Notch Notches[] = {{"V22", 0.0000313, 2.56},
                                 {"V30", 0.0000421, 2.13},
                                 {"V45", 0.0000651, 1.50},
                                 {"V60", 0.0000907, 1.13},
                                 {"V90", 0.0001571, 0}};
    for (const Notch& notch : Notches) {
        for (const double millimeters : {150.0, 250.0, 380.0}) {
            const double hourly = notch.Factor * std::pow(millimeters, 2.5) *
                                  CorrectionShare(notch.Correction, millimeters);
            ExpectRow(notch.Tag, millimeters * FeetPerMillimeter, hourly / CubicMetersPerHourPerCfs,
                      0.015);
        }
    }
}

// Discharge goes with the tangent of half the angle as long as the coefficient stays; and the Isco
// handbook has 4.33 for the widest, without head correction (0.0029 ft).
TEST_F(Ratings, TheWidestNotchHoldsTheTangentBesideThatOf60Degrees) {
    for (const double head : {0.2, 0.6, 1.25}) {
        ExpectRow("V120", head, 3 * Cfs("V60", head), 0.012);
        ExpectRow("V120", head, 4.33 * std::pow(head, 2.5) * CorrectionShare(0.0029, head), 0.008);
    }
}

struct GpmRow {
    double Inches;
    double Crest1, Crest3, Crest5;
    double PerFoot;  // for each foot of crest above 5
};

// A published table of contracted weirs in gallons per minute by head in inches, worked by hand to
// three digits or so.
constexpr GpmRow WeirTable[] = {{1, 35.4, 108, 180, 36.1}, {1.5, 64.9, 197, 330, 66.2},
                                {2, 98.5, 302, 506, 102},  {2.5, 136, 422, 706, 143},
                                {3, 178, 552, 926, 187},   {3.5, 222, 695, 1167, 236},
                                {4, 269, 846, 1424, 288},  {4.5, 318, 1006, 1696, 345},
                                {5, 370, 1175, 1985, 405}, {5.75, 449, 1442, 2440, 495}};

TEST_F(Ratings, ContractedWeirsAgreeWithAPublishedTable) {
    for (const GpmRow& row : WeirTable) {
        const double head = row.Inches / 12;
        ExpectRow("RC1", head, row.Crest1 / GpmPerCfs, 0.01);
        ExpectRow("RC3", head, row.Crest3 / GpmPerCfs, 0.01);
        ExpectRow("RC5", head, row.Crest5 / GpmPerCfs, 0.01);
        // Two contractions take the same from a crest of any length, so lengths between are sums.
        ExpectRow("RC1.5", head, (row.Crest1 + 0.5 * row.PerFoot) / GpmPerCfs, 0.01);
        ExpectRow("RC2", head, (row.Crest1 + row.PerFoot) / GpmPerCfs, 0.01);
        ExpectRow("RC4", head, (row.Crest3 + row.PerFoot) / GpmPerCfs, 0.01);
        ExpectRow("RC6", head, (row.Crest5 + row.PerFoot) / GpmPerCfs, 0.01);
        ExpectRow("RC8", head, (row.Crest5 + 3 * row.PerFoot) / GpmPerCfs, 0.01);
        ExpectRow("RC10", head, (row.Crest5 + 5 * row.PerFoot) / GpmPerCfs, 0.01);
    }
}

constexpr std::pair<const char*, double> Crests[] = {
    {"1", 1}, {"1.5", 1.5}, {"2", 2}, {"3", 3}, {"4", 4}, {"5", 5}, {"6", 6}, {"8", 8}, {"10", 10}};

TEST_F(Ratings, SuppressedWeirsAgreeWithTheFlowPerFootOfThatTable) {
    for (const GpmRow& row : WeirTable) {
        for (const auto& [length, feet] : Crests) {
            ExpectRow(std::string("RS") + length, row.Inches / 12, feet * row.PerFoot / GpmPerCfs,
                      0.01);
        }
    }
}

// Bos (1989): Q = Cd 2/3 sqrt(2 g) L H^1.5 with Cd = 0.63.
TEST_F(Ratings, CipollettiWeirsAgreeWithTheCoefficientOfBos) {
    for (const auto& [length, feet] : Crests) {
        for (const double head : {0.2, 0.3, 0.33 * feet}) {
            const double bos = 0.63 * 2 / 3 * std::sqrt(2 * Gravity) * feet * std::pow(head, 1.5);
            ExpectRow(std::string("CIP") + length, head, bos, 0.005);
        }
    }
}

TEST_F(Ratings, EveryEntryOfTheFilesIsTakenUp) {
    EXPECT_EQ(known_.FlumeList.UpperBound(), 52);
    EXPECT_EQ(known_.WeirList.UpperBound(), 33);
}

// Outside 25 to 100 degrees there is no curve of Shen's.
TEST_F(Ratings, DoubtfulNotchesSayThatTheyAre) {
    for (const FlowDeviceEntry& entry : known_.WeirList) {
        const bool doubtful = entry.Tag == "V22" || entry.Tag == "V120";
        EXPECT_EQ(entry.Name.find("doubtful") != std::string::npos, doubtful) << entry.Tag;
    }
}

TEST_F(Ratings, TagsAreUniqueAndFitTheLogger) {
    for (const FlowDeviceList* list : {&known_.FlumeList, &known_.WeirList}) {
        std::set<std::string> tags;
        for (const FlowDeviceEntry& entry : *list) {
            EXPECT_TRUE(tags.insert(entry.Tag).second) << entry.Tag;
            EXPECT_TRUE(!entry.Tag.empty() && entry.Tag.size() <= 8) << entry.Tag;
        }
    }
}

TEST_F(Ratings, EveryShippedTableRisesFromTheFirstPointToTheLast) {
    int tables = 0;
    for (const auto& file : std::filesystem::directory_iterator(DataFolder())) {
        if (file.path().extension() != ".tbl") {
            continue;
        }
        ++tables;
        FlowTable table;
        ASSERT_TRUE(config::ReadFlowTable(file.path().filename().string(), DataFolder(), table));
        EXPECT_GE(table.UpperBound(), 10) << file.path();
        for (int i = 2; i <= table.UpperBound(); ++i) {
            EXPECT_LT(table[i - 1].Level, table[i].Level) << file.path() << i;
            EXPECT_LT(table[i - 1].Flow, table[i].Flow) << file.path() << i;
        }
    }
    EXPECT_EQ(tables, 28);
}

TEST_F(Ratings, EveryDeviceIsDescribedInTheDocumentation) {
    std::ifstream file(DataFolder() + "/../docs/flow-devices.md");
    const std::string text((std::istreambuf_iterator<char>(file)), {});
    for (const FlowDeviceList* list : {&known_.FlumeList, &known_.WeirList}) {
        for (const FlowDeviceEntry& entry : *list) {
            EXPECT_NE(text.find("| `" + entry.Tag + "` |"), std::string::npos) << entry.Tag;
        }
    }
    EXPECT_NE(text.find("`demo.tbl`"), std::string::npos);
}

}  // namespace
