// Writes the table files of the catalogues by the program's own ratings: orvia-tables FOLDER.

#include <array>
#include <cstdio>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include "flow/rating_file.h"
#include "flow/rating_made.h"

namespace {

struct Figure {
    std::string_view Key;
    double Value = 0;
};

/// One table file: the device it rates, all lengths in feet.
struct ShippedTable {
    std::string File;
    std::string Name;
    std::string_view Kind;
    std::vector<Figure> Figures;
};

std::string Plain(double value) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%g", value);
    return text.data();
}

void AddNotches(std::vector<ShippedTable>& tables) {
    // Four feet, since some notches are as deep and no level is held to the range.
    constexpr double Deepest = 4;
    constexpr std::pair<const char*, double> Notches[] = {
        {"22", 22.5}, {"30", 30}, {"45", 45}, {"60", 60}, {"120", 120}};
    for (const auto& [tag, angle] : Notches) {
        tables.push_back({std::string("v_") + tag + ".tbl",
                          "V-notch weir, " + Plain(angle) + " degrees",
                          "v-notch",
                          {{"angle", angle}, {"greatest-head", Deepest}}});
    }
}

void AddContractedWeirs(std::vector<ShippedTable>& tables) {
    for (const double crest : {1.0, 1.5, 2.0, 3.0, 4.0, 5.0, 6.0, 8.0, 10.0}) {
        tables.push_back({"rc_" + Plain(crest) + ".tbl",
                          "Rectangular weir, contracted, " + Plain(crest) + " ft",
                          "standard-weir",
                          {{"crest", crest}, {"greatest-head", crest / 2}}});
    }
}

void AddHFlumes(std::vector<ShippedTable>& tables) {
    struct Family {
        const char* Prefix;
        const char* Name;
        std::string_view Kind;
        std::vector<double> Depths;  // those of the catalogue, by their positions among the choices
        std::size_t First;
    };
    const Family families[] = {{"hs_", "HS flume", "hs-flume", {0.4, 0.6, 0.8, 1}, 0},
                               {"h_", "H flume", "h-flume", {0.5, 0.75, 1, 1.5, 2, 2.5, 3, 4.5}, 0},
                               {"hl_", "HL flume", "hl-flume", {4}, 4}};
    for (const Family& family : families) {
        for (std::size_t i = 0; i < family.Depths.size(); ++i) {
            const std::string depth = Plain(family.Depths[i]);
            tables.push_back({family.Prefix + depth + ".tbl",
                              std::string(family.Name) + ", " + depth + " ft deep",
                              family.Kind,
                              {{"size", static_cast<double>(family.First + i)}}});
        }
    }
}

std::optional<RatingDevice> DeviceOf(const ShippedTable& table) {
    const RatingKind* kind = FindRatingKind(table.Kind);
    if (kind == nullptr) {
        return std::nullopt;
    }
    RatingDevice device = DefaultRatingDevice(*kind, 0);
    device.Name = table.Name;
    for (const Figure& figure : table.Figures) {
        const std::optional<std::size_t> at = RatingFieldAt(*kind, figure.Key);
        if (!at) {
            return std::nullopt;
        }
        device.Values[*at] = figure.Value;
    }
    return device;
}

bool Write(const std::string& folder, const ShippedTable& table) {
    const std::optional<RatingDevice> device = DeviceOf(table);
    if (!device) {
        return false;
    }
    const Rating rating = ComputeRating(*device);
    std::ofstream file(folder + "/" + table.File, std::ios::binary);
    WriteRatingTable(file, *device, rating);
    std::printf("%s: %d points\n", table.File.c_str(), rating.Points.UpperBound());
    return rating.Made() && file.good();
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 2) {
        std::fputs("usage: orvia-tables FOLDER\n", stderr);
        return 2;
    }
    std::vector<ShippedTable> tables;
    AddNotches(tables);
    AddContractedWeirs(tables);
    AddHFlumes(tables);
    for (const ShippedTable& table : tables) {
        if (!Write(arguments[1], table)) {
            std::fprintf(stderr, "%s could not be made\n", table.File.c_str());
            return 1;
        }
    }
    return 0;
}
