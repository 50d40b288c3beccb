// A table file of any bytes: the reader ends, keeps at most the points it may, each of them finite,
// and the calculation over them gives a finite flow.

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>

#include "flow/flow_calculation.h"
#include "flow/flow_table.h"

namespace {

void Require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

void RequireFiniteFlow(const FlowTable& table) {
    LoggerRecord record;
    record.FlowMode = 4;
    for (const FlowTablePoint& point : table) {
        Require(std::isfinite(point.Level) && std::isfinite(point.Flow));
        double velocity = 1;
        Require(std::isfinite(CalculateFlow(record, table, point.Level, velocity)));
        Require(velocity == 0);
    }
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
