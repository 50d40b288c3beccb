#include "simulator/sim_program_options.h"

#include <span>

#include "simulator/text.h"

namespace simulator {

const std::string_view UsageText =
    "Usage: orvia-sim NETWORK-FILE --link PATH [options]\n"
    "\n"
    "Serves the radio network that the file describes on a pseudo-terminal, to which PATH\n"
    "becomes a symbolic link. Prints \"ready: PATH\" once it can be opened.\n"
    "\n"
    "  --link PATH      the link to make; a link that is there already is replaced\n"
    "  --trace          print each exchange\n"
    "  --baud N         speed of the line, instead of the file's; 0 for no pacing\n"
    "  --seed N         seed of weather and noise, instead of the file's\n"
    "  --control FIFO   read commands from this FIFO, made if it is not there; - for\n"
    "                   standard input. The command help lists them.\n"
    "  --help           this text\n"
    "\n"
    "Ends on the commands quit and hangup, and on SIGINT and SIGTERM, with status 0; with 1\n"
    "if the system refuses something, 2 for a wrong command line, 3 for a bad network file.\n";

namespace {

constexpr std::int64_t FastestLine = 4'000'000;

/// Takes the value of an option; false if it is not of its form.
bool TakeValue(ProgramOptions& options, std::string_view name, std::string_view value) {
    if (name == "--link") {
        options.Link = value;
        return !value.empty();
    }
    if (name == "--control") {
        options.Control = value;
        return !value.empty();
    }
    const std::int64_t most = name == "--baud" ? FastestLine : INT64_MAX;
    const auto number = IntegerOf(value, 0, most);
    if (number && name == "--baud") {
        options.Baud = static_cast<int>(*number);
    } else if (number) {
        options.Seed = static_cast<std::uint64_t>(*number);
    }
    return number.has_value();
}

bool TakesValue(std::string_view name) {
    return name == "--link" || name == "--control" || name == "--baud" || name == "--seed";
}

void TakeWord(ProgramOptions& options, std::string_view word) {
    if (word == "--trace") {
        options.Trace = true;
    } else if (word == "--help" || word == "-h") {
        options.Help = true;
    } else if (word.starts_with('-')) {
        options.Wrong = "unknown option " + std::string(word);
    } else if (!options.NetworkFile.empty()) {
        options.Wrong = "more than one network file";
    } else {
        options.NetworkFile = word;
    }
}

}  // namespace

ProgramOptions ParseOptions(int count, const char* const* arguments) {
    ProgramOptions options;
    const std::span words(arguments, static_cast<std::size_t>(count));
    for (std::size_t i = 1; i < words.size() && options.Wrong.empty(); ++i) {
        const std::string_view word = words[i];
        if (!TakesValue(word)) {
            TakeWord(options, word);
        } else if (++i == words.size() || !TakeValue(options, word, words[i])) {
            options.Wrong = std::string(word) + " needs a good value";
        }
    }
    const bool complete = !options.NetworkFile.empty() && !options.Link.empty();
    if (options.Wrong.empty() && !options.Help && !complete) {
        options.Wrong = "a network file and --link are needed";
    }
    return options;
}

}  // namespace simulator
