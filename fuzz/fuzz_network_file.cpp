// A network file of any bytes: the reader ends, and tells each fault with its line; a network that
// it finds good can be built, and each of its loggers asked what it measures and keeps.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "simulator/control.h"
#include "simulator/network_file.h"

namespace {

using namespace simulator;

void Require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

void RequireLines(const NetworkFile& file, std::string_view text) {
    const auto lines =
        1 + std::count_if(text.begin(), text.end(), [](char c) { return c == '\n' || c == '\r'; });
    for (const NetworkFileError& error : file.Errors) {
        Require(!error.What.empty() && error.Line >= 0 && error.Line <= lines);
    }
}

void AskLogger(Network& network, const Logger& logger, Microseconds now) {
    Require(logger.AnalogChannels() >= 1 && logger.AnalogChannels() <= 8);
    Require(logger.PulseChannels() <= 2);
    Require(network.FindLogger(logger.Name()) == &logger);
    const std::string truth = Control(network, "truth " + logger.Name(), now).Text;
    Require(truth.ends_with("\nok"));
    const std::uint32_t records = logger.RecordsAt(now);
    if (records > 0) {
        const std::size_t size = 4 + 2 * (logger.AnalogChannels() + logger.PulseChannels());
        Require(logger.Record(0).size() == size && logger.Record(records - 1).size() == size);
        const std::string first = Control(network, "recorded " + logger.Name() + " 1", now).Text;
        Require(first.ends_with("\nok"));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const NetworkFile file = ParseNetwork(text);
    RequireLines(file, text);
    if (!file.Errors.empty()) {
        return 0;
    }
    const auto network = BuildNetwork(file.Network);
    Require(!network->Loggers().empty());
    for (const auto& logger : network->Loggers()) {
        AskLogger(*network, *logger, 0);
        AskLogger(*network, *logger, 5400 * Second);
    }
    return 0;
}
