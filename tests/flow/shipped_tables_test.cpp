// Every shipped table against its formula, written out here once more, and against the rating that
// it was made from.

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <string>

#include "flow/flow_table.h"
#include "flow/rating.h"
#include "flow/rating_file.h"

namespace {

std::string DataFolder() {
    return ORVIA_DATA_FOLDER;
}

using Law = std::function<double(double feet)>;

/// An H flume's law in feet: its numbers are for metres and cubic metres per second.
Law HFlume(double a, double b, double c) {
    return [=](double feet) {
        const double log = std::log10(feet * 0.3048);
        return std::pow(10.0, a + b * log + c * log * log) / std::pow(0.3048, 3);
    };
}

/// Kindsvater and Shen, with coefficient and head correction in feet.
Law Notch(double degrees, double coefficient, double correction) {
    return [=](double feet) {
        return 8.0 / 15 * coefficient * std::sqrt(2 * 9.80665 / 0.3048) *
               std::tan(degrees * std::acos(-1.0) / 360) * std::pow(feet + correction, 2.5);
    };
}

Law Francis(double crest) {
    return [=](double feet) { return 3.33 * (crest - 0.2 * feet) * std::pow(feet, 1.5); };
}

struct Shipped {
    Law Formula;
    double LeastHead;  // of the documented range
    double LastHead;   // of the table
};

std::map<std::string, Shipped> ShippedTables() {
    return {{"hs_0.4", {HFlume(-0.4361, 2.5151, 0.1379), 0.02, 0.4}},
            {"hs_0.6", {HFlume(-0.4430, 2.4908, 0.1657), 0.02, 0.6}},
            {"hs_0.8", {HFlume(-0.4410, 2.4571, 0.1762), 0.02, 0.8}},
            {"hs_1", {HFlume(-0.4382, 2.4193, 0.1790), 0.02, 1}},
            {"h_0.5", {HFlume(0.0372, 2.6629, 0.1954), 0.02, 0.5}},
            {"h_0.75", {HFlume(0.0351, 2.6434, 0.2243), 0.02, 0.75}},
            {"h_1", {HFlume(0.0206, 2.5902, 0.2281), 0.02, 1}},
            {"h_1.5", {HFlume(0.0238, 2.5473, 0.2540), 0.02, 1.5}},
            {"h_2", {HFlume(0.0237, 2.4918, 0.2605), 0.02, 2}},
            {"h_2.5", {HFlume(0.0268, 2.4402, 0.2600), 0.02, 2.5}},
            {"h_3", {HFlume(0.0329, 2.3977, 0.2588), 0.02, 3}},
            {"h_4.5", {HFlume(0.0588, 2.3032, 0.2547), 0.02, 4.5}},
            {"hl_4", {HFlume(0.3160, 2.3466, 0.2794), 0.02, 4}},
            {"v_22", {Notch(22.5, 0.590580, 0.008399), 0.2, 4}},
            {"v_30", {Notch(30, 0.586425, 0.006985), 0.2, 4}},
            {"v_45", {Notch(45, 0.580175, 0.004921), 0.2, 4}},
            {"v_60", {Notch(60, 0.576671, 0.003696), 0.2, 4}},
            {"v_120", {Notch(120, 0.580758, 0.002895), 0.2, 4}},
            {"rc_1", {Francis(1), 0.02, 0.5}},
            {"rc_1.5", {Francis(1.5), 0.02, 0.75}},
            {"rc_2", {Francis(2), 0.02, 1}},
            {"rc_3", {Francis(3), 0.02, 1.5}},
            {"rc_4", {Francis(4), 0.02, 2}},
            {"rc_5", {Francis(5), 0.02, 2.5}},
            {"rc_6", {Francis(6), 0.02, 3}},
            {"rc_8", {Francis(8), 0.02, 4}},
            {"rc_10", {Francis(10), 0.02, 5}}};
}

FlowTable TableOf(const std::string& name) {
    FlowTable table;
    EXPECT_TRUE(config::ReadFlowTable(name + ".tbl", DataFolder(), table)) << name;
    return table;
}

TEST(ShippedTables, AreOffTheirFormulaByATenthOfAPercentAtMost) {
    for (const auto& [name, shipped] : ShippedTables()) {
        const FlowTable table = TableOf(name);
        ASSERT_GE(table.UpperBound(), 2) << name;
        EXPECT_LE(table[1].Level, shipped.LeastHead) << name;
        EXPECT_EQ(table[table.UpperBound()].Level, shipped.LastHead) << name;
        constexpr int Heads = 5000;
        const double ratio = shipped.LastHead / shipped.LeastHead;
        for (int i = 0; i <= Heads; ++i) {
            const double head = shipped.LeastHead * std::pow(ratio, static_cast<double>(i) / Heads);
            const double flow = *TableFlow(table, head);
            ASSERT_NEAR(flow / shipped.Formula(head), 1, 0.001) << name << " at " << head;
        }
    }
}

TEST(ShippedTables, AreAllKnown) {
    for (const auto& file : std::filesystem::directory_iterator(DataFolder())) {
        const std::string name = file.path().stem().string();
        if (file.path().extension() == ".tbl" && name != "demo") {
            EXPECT_TRUE(ShippedTables().contains(name)) << name;
        }
    }
}

// Each opens for change, and making it again gives the same bytes: run orvia-tables if one differs.
TEST(ShippedTables, AreWhatTheirHeadingsMake) {
    for (const auto& [name, shipped] : ShippedTables()) {
        const std::string path = DataFolder() + "/" + name + ".tbl";
        const std::optional<RatingTableRead> read = OpenRatingTable(path);
        ASSERT_TRUE(read && read->FromHeadings) << name;
        std::ifstream file(path, std::ios::binary);
        const std::string bytes((std::istreambuf_iterator<char>(file)), {});
        EXPECT_EQ(RatingTableText(read->Device, ComputeRating(read->Device)), bytes) << name;
    }
}

}  // namespace
