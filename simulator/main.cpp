#include <time.h>

#include <cerrno>
#include <cstring>
#include <iostream>
#include <optional>

#include "simulator/network_file.h"
#include "simulator/sim_program_files.h"
#include "simulator/sim_program_loop.h"
#include "simulator/sim_program_options.h"
#include "simulator/sim_program_terminal.h"
#include "simulator/trace.h"

namespace {

using namespace simulator;

constexpr int SystemFailed = 1;
constexpr int WrongCommandLine = 2;
constexpr int BadNetworkFile = 3;

int Fail(int status, const std::string& what) {
    std::cerr << "orvia-sim: " << what << '\n';
    return status;
}

CivilSeconds LocalNow() {
    const time_t now = time(nullptr);
    tm local{};
    localtime_r(&now, &local);
    return ToSeconds({local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour,
                      local.tm_min, local.tm_sec});
}

int Run(const ProgramOptions& options, Network& network) {
    network.KeepsRecord = false;
    network.LineBaud = options.Baud.value_or(network.LineBaud);
    if (options.Trace) {
        network.SetTrace(
            [](const Exchange& exchange) { std::cout << TraceLine(exchange) << std::endl; });
    }
    CatchEndingSignals();
    ControlInput control;
    std::string wrong = options.Control.empty() ? std::string() : control.Open(options.Control);
    Terminal terminal;
    wrong = wrong.empty() ? terminal.Open() : wrong;
    Link link;
    wrong = wrong.empty() ? link.Make(options.Link, terminal.Name()) : wrong;
    if (!wrong.empty()) {
        return Fail(SystemFailed, wrong);
    }
    std::cout << "ready: " << options.Link << std::endl;
    Serve(network, terminal, control);
    return 0;
}

}  // namespace

int main(int count, char** arguments) {
    const ProgramOptions options = ParseOptions(count, arguments);
    if (options.Help) {
        std::cout << UsageText;
        return 0;
    }
    if (!options.Wrong.empty()) {
        return Fail(WrongCommandLine, options.Wrong + "; try --help");
    }
    const auto text = ReadWholeFile(options.NetworkFile);
    if (!text) {
        return Fail(BadNetworkFile, options.NetworkFile + ": " + std::strerror(errno));
    }
    const NetworkFile file = ParseNetwork(*text, options.Seed);
    for (const NetworkFileError& error : file.Errors) {
        std::cerr << options.NetworkFile << ':' << error.Line << ": " << error.What << '\n';
    }
    if (!file.Errors.empty()) {
        return BadNetworkFile;
    }
    const auto network = BuildNetwork(file.Network, LocalNow());
    return Run(options, *network);
}
