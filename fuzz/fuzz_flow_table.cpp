// A table file of any bytes: the reader ends, keeps at most the points it may, each of them finite,
// and the calculation at, between and beyond them gives a finite flow.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <numeric>
#include <sstream>
#include <string>

#include "flow/flow_calculation.h"
#include "flow/flow_mode.h"
#include "flow/flow_table.h"

namespace {

void Require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

void RequireFiniteFlowAt(double level, const FlowTable& table) {
    LoggerRecord record;
    record.FlowMode = TableMode;
    double velocity = 1;
    Require(std::isfinite(CalculateFlow(record, table, level, velocity)));
    Require(velocity == 0);
}

void RequireFiniteFlow(const FlowTable& table) {
    FlowTablePoint last;  // the origin, from which the first segment runs
    double highest = 0;
    for (const FlowTablePoint& point : table) {
        Require(std::isfinite(point.Level) && std::isfinite(point.Flow));
        RequireFiniteFlowAt(point.Level, table);
        RequireFiniteFlowAt(std::midpoint(last.Level, point.Level), table);
        highest = std::max(highest, point.Level);
        last = point;
    }
    RequireFiniteFlowAt(highest + 1, table);
    RequireFiniteFlowAt(highest * 2, table);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::istringstream input(std::string(reinterpret_cast<const char*>(data), size));
    FlowTable table;
    const bool read = config::ReadFlowTable(input, size, table);
    Require(read || table.UpperBound() == 0);
    Require(table.UpperBound() <= MostTablePoints);
    RequireFiniteFlow(table);
    return 0;
}
