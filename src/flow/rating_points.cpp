#include "flow/rating_points.h"

#include <algorithm>
#include <cmath>

#include "flow/rating_method.h"

namespace {

// So dense that a straight line between two neighbours is off a 2.5th power by some 0.005 %.
constexpr double SamplesPerDecade = 240;
constexpr int HeadDigits = 5;
constexpr double LargestRatio = 1e6;

/// The last point to which a straight line from point `from` stays within the tolerance.
std::size_t FarthestFrom(const std::vector<FlowTablePoint>& points, std::size_t from,
                         double tolerance) {
    const FlowTablePoint& start = points[from];
    double least = -HUGE_VAL;  // slopes that pass all points so far
    double greatest = HUGE_VAL;
    std::size_t farthest = from + 1;
    for (std::size_t i = from + 1; i < points.size() && least <= greatest; ++i) {
        const double run = points[i].Level - start.Level;
        const double slope = (points[i].Flow - start.Flow) / run;
        if (slope >= least && slope <= greatest) {
            farthest = i;
        }
        const double slack = tolerance * points[i].Flow / run;
        least = std::max(least, slope - slack);
        greatest = std::min(greatest, slope + slack);
    }
    return farthest;
}

FlowTable Chosen(const std::vector<FlowTablePoint>& points, double tolerance) {
    FlowTable table;
    for (std::size_t at = 0; at < points.size();
         at = at + 1 < points.size() ? FarthestFrom(points, at, tolerance) : points.size()) {
        table.Append(points[at]);
    }
    return table;
}

}  // namespace

std::vector<double> SampleHeads(double first, double last, const std::vector<double>& bends) {
    std::vector<double> heads;
    if (!(first > 0) || !(first < last) || !(last / first <= LargestRatio)) {
        return heads;
    }
    const int count = 1 + static_cast<int>(std::ceil(SamplesPerDecade * std::log10(last / first)));
    heads.push_back(first);
    for (int i = 1; i < count; ++i) {
        const double head = first * std::pow(last / first, static_cast<double>(i) / count);
        heads.push_back(RoundTo(head, HeadDigits));
    }
    heads.push_back(last);
    heads.insert(heads.end(), bends.begin(), bends.end());
    std::erase_if(heads, [&](double head) { return !(head >= first && head <= last); });
    std::sort(heads.begin(), heads.end());
    heads.erase(std::unique(heads.begin(), heads.end()), heads.end());
    return heads;
}

FlowTable ChoosePoints(const std::vector<FlowTablePoint>& points, double tolerance, int most) {
    constexpr int MostTries = 60;
    FlowTable table = Chosen(points, tolerance);
    for (int i = 0; i < MostTries && table.UpperBound() > most; ++i) {
        tolerance *= 1.5;
        table = Chosen(points, tolerance);
    }
    return table;
}
