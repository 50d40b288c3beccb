#include "flow/rating.h"

#include <algorithm>
#include <cmath>

#include "flow/finite.h"
#include "flow/flow_mode.h"

namespace {

struct Segment {
    FlowTablePoint Low;
    FlowTablePoint High;
};

Segment SegmentAround(const FlowTable& table, double level) {
    const int last = table.UpperBound();
    if (level < table[1].Level) {
        return {FlowTablePoint{}, table[1]};
    }
    // Not "at or above": a level that compares with nothing must not reach the search.
    const int start =
        last == 2 || !(level < table[last].Level) ? last - 1 : FindSegment(table, level);
    return {table[start], table[start + 1]};
}

std::optional<double> EquationFlow(const LoggerRecord& record, double level) {
    const double head = level + record.FlowEqOffset;
    if (!AllFinite(head, record.FlowEqExponent)) {
        return std::nullopt;
    }
    return IfFinite(std::pow(head, record.FlowEqExponent) * record.FlowEqMultiplier);
}

}  // namespace

int FindSegment(const FlowTable& table, double level) {
    const int last = table.UpperBound();
    const auto points = table.begin() - 1;  // counts from 1; every index below is held to 1 .. last
    int i = 2;
    for (int m = last; m >= 4; m /= 2) {
        i *= 2;
    }
    for (int step = i / 2; step != 0; step /= 2) {
        i = level < points[i].Level ? std::max(i - step, 1) : std::min(i + step, last);
    }
    return level < points[i].Level && i >= 2 ? i - 1 : i;
}

std::optional<double> TableFlow(const FlowTable& table, double level) {
    const Segment segment = SegmentAround(table, level);
    if (!(segment.Low.Level < segment.High.Level)) {
        return IfFinite(segment.Low.Flow);
    }
    const double run = segment.High.Level - segment.Low.Level;
    const double product = (segment.High.Flow - segment.Low.Flow) * (level - segment.Low.Level);
    if (!AllFinite(run, product)) {
        return std::nullopt;
    }
    return IfFinite(product / run + segment.Low.Flow);
}

std::optional<double> RatingFlow(const LoggerRecord& record, const FlowTable& table, double level) {
    switch (table.UpperBound()) {
        case 0:
            return record.FlowMode == FlumeMode || record.FlowMode == WeirMode
                       ? EquationFlow(record, level)
                       : 0.0;
        case 1:
            return 0.0;
        default:
            return TableFlow(table, level);
    }
}
