// Control lines of any bytes, one behind another, while the console talks: each has an answer of
// its form, and whatever they make of the network, it goes on.

#include <array>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "simulator/control.h"
#include "simulator/network_file.h"

namespace {

using namespace simulator;

constexpr std::string_view Site = R"([logger]
name = Mill Pipe
channel = 10
mac = 00A096100001
records = 40
[analog]
units = Feet
limits = 0 2
signal = level base=0.5 day=0.2 storm=1 recession=6 noise=0.01
[analog]
raw = 7 7
limits = 0 0.001
[pulse]
units = Inches
per-pulse = 0.01
signal = rain depth=0.8
[flow]
method = manning
[logger]
name = radio
channel = 11
mac = 00A096100002
[analog]
units = Volts
)";

void Require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

bool IsAnswer(std::string_view text) {
    return text == "ok" || text.ends_with("\nok") || text.starts_with("error: ");
}

/// Enters command mode and leaves it, then asks the logger for status and a block of its history.
void Talk(Network& network, Microseconds now) {
    const Bytes status = {0x0C};
    const Bytes history = {0x0D, 0x01};
    network.Write(now, BytesOf("AT+++\r\xCC"
                               "ATO\r"));
    network.Write(now, EncodeFrame(status));
    network.Write(now, EncodeFrame(history));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const NetworkFile site = ParseNetwork(Site);
    Require(site.Errors.empty());
    const auto network = BuildNetwork(site.Network);
    const Logger& logger = *network->Loggers().front();
    network->Radio().Tune(logger.Channel(), logger.Mac());
    network->KeepsRecord = false;
    std::string_view text(reinterpret_cast<const char*>(data), size);
    Microseconds now = 0;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        Require(IsAnswer(Control(*network, text.substr(0, end), now).Text));
        text.remove_prefix(std::min(end + 1, text.size()));
        Talk(*network, now);
        now += Second;
        static_cast<void>(network->Read(now));
    }
    Require(!logger.Record(0).empty());
    return 0;
}
