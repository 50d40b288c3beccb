// A catalogue of any bytes: the reader ends, and each entry has the form that the rest relies on.

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>

#include "common/characters.h"
#include "flow/catalogues.h"

namespace {

void Require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

void RequireForm(const FlowDeviceEntry& entry) {
    Require(CountCharacters(entry.Tag) <= 8);
    Require(entry.IsTable == 0 || entry.IsTable == 1);
    Require(entry.IsTable == 1 || entry.TableFile.empty());
    Require(std::isfinite(entry.EqOffset) && std::isfinite(entry.EqExponent) &&
            std::isfinite(entry.EqMultiplier));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::istringstream input(std::string(reinterpret_cast<const char*>(data), size));
    FlowDeviceList list;
    config::ReadFlowDeviceList(
        input, size, [](std::string_view path) { return path.size() % 2 == 0; }, list);
    for (const FlowDeviceEntry& entry : list) {
        RequireForm(entry);
    }
    return 0;
}
