#include "simulator/network_file.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "simulator/network_file_keys.h"
#include "simulator/text.h"

namespace simulator {

namespace {

constexpr std::size_t MostAnalog = 8;
constexpr std::size_t MostPulse = 2;
constexpr std::size_t MostErrors = 20;

/// Cuts the text at CR LF, LF or CR.
std::vector<std::string_view> Lines(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
        lines.push_back(text.substr(0, end));
        const bool pair = text.substr(end, 2) == "\r\n";
        text.remove_prefix(std::min(end + (pair ? 2 : 1), text.size()));
    }
    return lines;
}

class Reader {
 public:
    explicit Reader(std::optional<std::uint64_t> seed) : seed_(seed) { KeepSeed(); }

    NetworkFile Read(std::string_view text) {
        for (const std::string_view line : Lines(text)) {
            ++line_;
            TakeLine(Trimmed(line));
        }
        EndLogger();
        if (file_.Network.Loggers.empty()) {
            Complain("the network has no logger");
        }
        return std::move(file_);
    }

 private:
    void TakeLine(std::string_view line) {
        if (line.empty() || line.front() == '#') {
            return;
        }
        if (line.front() == '[') {
            return line.back() == ']' ? Begin(Trimmed(line.substr(1, line.size() - 2)))
                                      : Complain("a section ends with ]");
        }
        const auto parts = SplitAt(line, '=');
        if (!parts) {
            return Complain("neither a section nor key = value");
        }
        TakeKey(parts->First, parts->Second);
    }

    void Begin(std::string_view name) {
        section_ = SectionNamed(name);
        if (section_ == FileSection::None) {
            return Complain("no section \"" + std::string(name) + "\"");
        }
        if (section_ == FileSection::Logger) {
            return BeginLogger();
        }
        const bool first = file_.Network.Loggers.empty();
        if (first != (section_ == FileSection::Network)) {
            section_ = FileSection::None;
            return Complain(first ? "a logger's section before any logger"
                                  : "the network's section comes before the loggers");
        }
        BeginChannel();
    }

    void BeginLogger() {
        EndLogger();
        loggerLine_ = line_;
        LoggerSetup setup;
        setup.Settings.Name.clear();
        setup.Settings.Analog.clear();
        file_.Network.Loggers.push_back(std::move(setup));
    }

    void BeginChannel() {
        if (section_ == FileSection::Analog) {
            AddChannel(Current().Settings.Analog, MostAnalog);
        } else if (section_ == FileSection::Pulse) {
            AddChannel(Current().Settings.Pulse, MostPulse);
        }
    }

    template <typename Channel>
    void AddChannel(std::vector<Channel>& channels, std::size_t most) {
        if (channels.size() == most) {
            section_ = FileSection::None;
            return Complain("a logger has no more than " + std::to_string(most) +
                            " of these channels");
        }
        channels.emplace_back();
    }

    void TakeKey(std::string_view key, std::string_view value) {
        if (section_ == FileSection::None) {
            // What is wrong with the section itself has been told already.
            if (file_.Errors.empty()) {
                Complain("a key before any section");
            }
            return;
        }
        const std::string wrong = ApplyKey(file_.Network, section_, key, value);
        if (!wrong.empty()) {
            Complain(wrong);
        }
        KeepSeed();
    }

    /// A seed that is given stands above that of the file.
    void KeepSeed() { file_.Network.Seed = seed_.value_or(file_.Network.Seed); }

    /// Looks at the logger that is complete now, at the line of its section.
    void EndLogger() {
        if (file_.Network.Loggers.empty()) {
            return;
        }
        const int here = std::exchange(line_, loggerLine_);
        const LoggerSetup& logger = Current();
        if (logger.Settings.Name.empty()) {
            Complain("the logger has no name");
        }
        if (logger.Settings.Analog.empty()) {
            Complain("the logger has no analog channel");
        }
        const auto& all = file_.Network.Loggers;
        if (std::any_of(all.begin(), all.end() - 1,
                        [&](const LoggerSetup& other) { return Clash(other, logger); })) {
            Complain("another logger has the same name, or the same channel and address");
        }
        line_ = here;
    }

    /// The radio is reached by the last three bytes of its address alone.
    static bool Clash(const LoggerSetup& one, const LoggerSetup& other) {
        const bool sameAddress =
            one.Channel == other.Channel &&
            std::equal(one.Mac.begin() + 3, one.Mac.end(), other.Mac.begin() + 3);
        return sameAddress || one.Settings.Name == other.Settings.Name;
    }

    LoggerSetup& Current() { return file_.Network.Loggers.back(); }

    void Complain(std::string what) {
        if (file_.Errors.size() < MostErrors) {
            file_.Errors.push_back({line_, std::move(what)});
        }
    }

    std::optional<std::uint64_t> seed_;
    NetworkFile file_;
    FileSection section_ = FileSection::None;
    int line_ = 0;
    int loggerLine_ = 0;
};

}  // namespace

NetworkFile ParseNetwork(std::string_view text, std::optional<std::uint64_t> seed) {
    return Reader(seed).Read(text);
}

std::unique_ptr<Network> BuildNetwork(const NetworkDescription& description, CivilSeconds now) {
    auto network = std::make_unique<Network>(description.Start.value_or(now));
    network->LineBaud = description.Baud;
    network->Radio().SetSystemId(description.SystemId);
    for (const LoggerSetup& setup : description.Loggers) {
        network->AddLogger(setup);
    }
    return network;
}

}  // namespace simulator
