#include "simulator/control.h"

#include <algorithm>
#include <array>

#include "simulator/text.h"

namespace simulator {

namespace {

using WordList = std::vector<std::string_view>;

constexpr std::string_view HelpText =
    "fault|radio-fault KIND [VALUE] [TIMES]   the next requests go wrong\n"
    "fault|radio-fault pass TIMES             the next requests go well\n"
    "fault|radio-fault chance P SEED          requests go wrong with probability P\n"
    "fault|radio-fault always KIND [VALUE]    every request goes wrong\n"
    "fault|radio-fault clear                  no more faults\n"
    "silence NAME, wake NAME                  a logger, or radio\n"
    "strength VALUE                           what the radio reports as signal; auto\n"
    "set NAME CHANNEL VALUE                   put a constant on an analog channel\n"
    "truth NAME                               what the sensors truly say\n"
    "sampled NAME                             the same when the last sample was taken\n"
    "recorded NAME NUMBER                     the same at a record, 1 the oldest\n"
    "counters, help\n"
    "hangup, quit                             the port hangs up, the program ends";

constexpr std::int64_t MostTimes = 1'000'000;

ControlResult Ok() {
    return {"ok"};
}

ControlResult Error(const std::string& what) {
    return {"error: " + what};
}

std::string Quoted(std::string_view text) {
    return "\"" + std::string(text) + "\"";
}

// ----- faults

/// Puts the value of a fault where its kind wants it; false if it is not of the right form.
bool TakeFaultValue(LineFault& fault, std::string_view text) {
    const auto number = [&](std::int64_t low, std::int64_t high, auto& out) {
        const auto value = IntegerOf(text, low, high);
        out = static_cast<std::remove_reference_t<decltype(out)>>(value.value_or(0));
        return value.has_value();
    };
    switch (fault.Kind) {
        case FaultKind::Late:
        case FaultKind::LateReply: {
            const bool good = number(0, 600'000, fault.Delay);
            fault.Delay *= Millisecond;
            return good;
        }
        case FaultKind::Cut:
        case FaultKind::Corrupt:
            fault.Value = 0xFF;
            return number(0, 1000, fault.Position);
        case FaultKind::WrongLength:
            return number(-1000, 1000, fault.Position);
        case FaultKind::Noise:
        case FaultKind::NoiseAhead:
            fault.Data = HexBytesOf(text).value_or(Bytes{});
            return !fault.Data.empty();
        case FaultKind::WrongAck: {
            const Bytes byte = HexBytesOf(text).value_or(Bytes{});
            fault.Value = byte.size() == 1 ? byte.front() : 0;
            return byte.size() == 1;
        }
        default:
            return false;
    }
}

bool NeedsValue(FaultKind kind) {
    constexpr std::array kinds = {FaultKind::Late,       FaultKind::LateReply,   FaultKind::Cut,
                                  FaultKind::Corrupt,    FaultKind::WrongLength, FaultKind::Noise,
                                  FaultKind::NoiseAhead, FaultKind::WrongAck};
    return std::find(kinds.begin(), kinds.end(), kind) != kinds.end();
}

struct FaultOrder {
    LineFault Fault;
    int Times = 1;
};

/// "cut 5 2": kind, its value if it has one, times.
std::optional<FaultOrder> ParseFault(const WordList& words) {
    const auto kind = words.empty() ? std::nullopt : FaultKindNamed(words[0]);
    if (!kind || *kind == FaultKind::None) {
        return std::nullopt;
    }
    FaultOrder order;
    order.Fault.Kind = *kind;
    std::size_t next = 1;
    if (NeedsValue(*kind)) {
        if (words.size() < 2 || !TakeFaultValue(order.Fault, words[1])) {
            return std::nullopt;
        }
        ++next;
    }
    if (next < words.size()) {
        const auto times = IntegerOf(words[next++], 1, MostTimes);
        order.Times = static_cast<int>(times.value_or(0));
    }
    return next == words.size() && order.Times > 0 ? std::optional(order) : std::nullopt;
}

bool TakeChance(FaultScript& script, const WordList& words) {
    const auto chance = words.size() == 3 ? NumberOf(words[1]) : std::nullopt;
    const auto seed = words.size() == 3 ? IntegerOf(words[2], 0, INT64_MAX) : std::nullopt;
    if (!chance || !seed || *chance < 0 || *chance > 1) {
        return false;
    }
    script.Probability(*chance, static_cast<std::uint64_t>(*seed));
    return true;
}

bool TakePass(FaultScript& script, const WordList& words) {
    const auto times = words.size() == 2 ? IntegerOf(words[1], 1, MostTimes) : std::nullopt;
    script.Pass(static_cast<int>(times.value_or(0)));
    return times.has_value();
}

bool TakeFault(FaultScript& script, WordList words) {
    const std::string_view first = words.empty() ? std::string_view{} : words[0];
    if (first == "clear") {
        script.Clear();
        return words.size() == 1;
    }
    if (first == "pass") {
        return TakePass(script, words);
    }
    if (first == "chance") {
        return TakeChance(script, words);
    }
    const bool always = first == "always";
    if (always) {
        words.erase(words.begin());
    }
    const auto order = ParseFault(words);
    if (order && always) {
        script.Always(order->Fault);
    } else if (order) {
        script.NextReply(order->Fault, order->Times);
    }
    return order.has_value();
}

// ----- loggers

std::string AnalogText(const Logger& logger, std::size_t channel, Microseconds now) {
    return "analog " + std::to_string(channel + 1) + " " +
           FixedText(logger.TrueValue(channel, now), 6) + " " +
           logger.Setup().Settings.Analog[channel].Units + " raw " +
           std::to_string(logger.RawCount(channel, now)) + "\n";
}

std::string PulseText(const Logger& logger, std::size_t channel, Microseconds now) {
    return "pulse " + std::to_string(channel + 1) + " " +
           FixedText(logger.TruePulseAmount(channel, now), 6) + " " +
           logger.Setup().Settings.Pulse[channel].Units + " count " +
           std::to_string(logger.PulseCount(channel, now)) + "\n";
}

std::string FlowText(const Logger& logger, Microseconds now) {
    constexpr std::array<std::string_view, 5> flows = {"CFS", "GPM", "MGD", "CMS", "LPS"};
    constexpr std::array<std::string_view, 2> velocities = {"FPS", "MPS"};
    const FlowSettings& settings = logger.Setup().Settings.Flow;
    const Flow flow = logger.TrueFlowNow(now);
    return "flow " + FixedText(flow.Rate, 6) + " " +
           std::string(flows[static_cast<std::size_t>(settings.FlowUnits)]) + " velocity " +
           FixedText(flow.Velocity, 6) + " " +
           std::string(velocities[static_cast<std::size_t>(settings.VelUnits)]) + "\n";
}

std::string TruthText(const Logger& logger, Microseconds now) {
    std::string text = "truth of " + logger.Name() + "\n";
    for (std::size_t channel = 0; channel < logger.AnalogChannels(); ++channel) {
        text += AnalogText(logger, channel, now);
    }
    for (std::size_t channel = 0; channel < logger.PulseChannels(); ++channel) {
        text += PulseText(logger, channel, now);
    }
    if (logger.Setup().Settings.Flow.Mode != FlowMode::None) {
        text += FlowText(logger, now);
    }
    return text + "records " + std::to_string(logger.RecordsAt(now)) + "\nok";
}

ControlResult NoLogger(std::string_view name) {
    return Error("no logger " + Quoted(name));
}

ControlResult Truth(Network& network, std::string_view name, Microseconds now) {
    const Logger* logger = network.FindLogger(std::string(name));
    return logger == nullptr ? NoLogger(name) : ControlResult{TruthText(*logger, now)};
}

ControlResult Sampled(Network& network, std::string_view name, Microseconds now) {
    const Logger* logger = network.FindLogger(std::string(name));
    if (logger == nullptr) {
        return NoLogger(name);
    }
    const auto moment = logger->SampleMoment(now);
    return moment ? ControlResult{TruthText(*logger, *moment)} : Error("no sample");
}

/// What stands before the last word of a text, and that word: names may have blanks in them.
TextPair BeforeLastWord(std::string_view text) {
    const WordList words = Words(text);
    if (words.empty()) {
        return {};
    }
    const auto at = static_cast<std::size_t>(words.back().data() - text.data());
    return {Trimmed(text.substr(0, at)), words.back()};
}

ControlResult Recorded(Network& network, std::string_view rest, Microseconds now) {
    const auto [name, number] = BeforeLastWord(rest);
    const Logger* logger = network.FindLogger(std::string(name));
    if (logger == nullptr) {
        return NoLogger(name);
    }
    const auto record = IntegerOf(number, 1, logger->RecordsAt(now));
    if (!record) {
        return Error("no such record");
    }
    const auto index = static_cast<std::uint32_t>(*record - 1);
    return {TruthText(*logger, logger->RecordMoment(index))};
}

ControlResult SetSilent(Network& network, std::string_view name, bool silent) {
    const auto set = [silent](auto& device) { silent ? device.Silence() : device.Wake(); };
    Logger* logger = network.FindLogger(std::string(name));
    if (logger != nullptr) {
        set(*logger);
    } else if (name == "radio") {
        set(network.Radio());
    } else {
        return NoLogger(name);
    }
    return Ok();
}

/// "NAME CHANNEL VALUE".
ControlResult SetChannel(Network& network, std::string_view rest) {
    const auto [nameAndChannel, valueText] = BeforeLastWord(rest);
    const auto [name, channelText] = BeforeLastWord(nameAndChannel);
    Logger* logger = network.FindLogger(std::string(name));
    if (logger == nullptr) {
        return NoLogger(name);
    }
    const auto channel =
        IntegerOf(channelText, 1, static_cast<std::int64_t>(logger->AnalogChannels()));
    const auto value = NumberOf(valueText);
    if (!channel || !value) {
        return Error("no such channel, or not a number");
    }
    logger->SetAnalogSignal(static_cast<std::size_t>(*channel - 1), ConstantSignal(*value));
    return Ok();
}

ControlResult SetStrength(Network& network, std::string_view value) {
    const auto strength = IntegerOf(value, 0, 255);
    if (!strength && value != "auto") {
        return Error("strength 0 to 255, or auto");
    }
    network.Radio().FixSignal(strength ? std::optional(static_cast<std::uint8_t>(*strength))
                                       : std::nullopt);
    return Ok();
}

std::string CountersText(const Counters& counters) {
    const std::array<std::pair<std::string_view, std::int64_t>, 8> rows = {{
        {"written", counters.BytesWritten},
        {"to-console", counters.BytesToConsole},
        {"radio-commands", counters.RadioCommands},
        {"requests", counters.Requests},
        {"bad-frames", counters.BadFrames},
        {"unanswered", counters.Unanswered},
        {"unheard", counters.Unheard},
        {"drowned", counters.Drowned},
    }};
    std::string text;
    for (const auto& [name, count] : rows) {
        text += std::string(name) + " " + std::to_string(count) + "\n";
    }
    return text + "ok";
}

// ----- the commands

ControlResult ScriptFault(FaultScript& script, std::string_view rest) {
    return TakeFault(script, Words(rest)) ? Ok() : Error("no such fault " + Quoted(rest));
}

ControlResult End(Network& /*network*/, std::string_view /*rest*/, Microseconds /*now*/) {
    return {.Text = "ok", .Ends = true};
}

struct Command {
    std::string_view Name;
    ControlResult (*Do)(Network& network, std::string_view rest, Microseconds now);
};

constexpr std::array Commands = {
    Command{"fault", [](Network& network, std::string_view rest,
                        Microseconds) { return ScriptFault(network.Faults(), rest); }},
    Command{"radio-fault", [](Network& network, std::string_view rest,
                              Microseconds) { return ScriptFault(network.RadioFaults(), rest); }},
    Command{"silence", [](Network& network, std::string_view rest,
                          Microseconds) { return SetSilent(network, rest, true); }},
    Command{"wake", [](Network& network, std::string_view rest,
                       Microseconds) { return SetSilent(network, rest, false); }},
    Command{"truth", Truth},
    Command{"sampled", Sampled},
    Command{"recorded", Recorded},
    Command{"set", [](Network& network, std::string_view rest,
                      Microseconds) { return SetChannel(network, rest); }},
    Command{"strength", [](Network& network, std::string_view rest,
                           Microseconds) { return SetStrength(network, rest); }},
    Command{"counters", [](Network& network, std::string_view,
                           Microseconds) { return ControlResult{CountersText(network.Count())}; }},
    Command{"help", [](Network&, std::string_view,
                       Microseconds) { return ControlResult{std::string(HelpText) + "\nok"}; }},
    Command{"hangup", End},
    Command{"quit", End},
};

}  // namespace

ControlResult Control(Network& network, std::string_view line, Microseconds now) {
    line = Trimmed(line);
    const std::string_view name = line.substr(0, line.find_first_of(" \t"));
    const auto command = std::find_if(Commands.begin(), Commands.end(),
                                      [&](const Command& entry) { return entry.Name == name; });
    if (command == Commands.end()) {
        return Error("no command " + Quoted(name) + "; try help");
    }
    return command->Do(network, Trimmed(line.substr(name.size())), now);
}

}  // namespace simulator
