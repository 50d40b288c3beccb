#include "simulator/faults.h"

#include <algorithm>
#include <array>
#include <utility>

#include "simulator/random.h"

namespace simulator {

namespace {

struct NamedKind {
    FaultKind Kind;
    std::string_view Name;
};

constexpr std::array<NamedKind, 15> Names = {{
    {FaultKind::None, "none"},
    {FaultKind::LoseRequest, "lose-request"},
    {FaultKind::LoseAck, "lose-ack"},
    {FaultKind::LoseReply, "lose-reply"},
    {FaultKind::LoseAnswer, "lose-answer"},
    {FaultKind::Late, "late"},
    {FaultKind::LateReply, "late-reply"},
    {FaultKind::Cut, "cut"},
    {FaultKind::Corrupt, "corrupt"},
    {FaultKind::Noise, "noise"},
    {FaultKind::NoiseAhead, "noise-ahead"},
    {FaultKind::WrongAck, "wrong-ack"},
    {FaultKind::WrongLength, "wrong-length"},
    {FaultKind::Repeat, "repeat"},
    {FaultKind::Silent, "silent"},
}};

/// An answer on its way out, in its two parts.
struct Parts {
    Bytes Head;
    Bytes Body;
    Microseconds HeadDelay = 0;
    Microseconds BodyDelay = 0;
};

Parts Split(const Answer& answer) {
    Parts parts;
    parts.Body = answer.Body();
    (parts.Body.empty() ? parts.Body : parts.Head) = answer.Ack;
    return parts;
}

bool SaysNothing(FaultKind kind) {
    return kind == FaultKind::LoseRequest || kind == FaultKind::LoseAnswer ||
           kind == FaultKind::Silent;
}

void Prepend(Bytes& bytes, const Bytes& noise) {
    bytes.insert(bytes.begin(), noise.begin(), noise.end());
}

void ChangeByte(Bytes& bytes, int position, std::uint8_t mask) {
    if (position >= 0 && static_cast<std::size_t>(position) < bytes.size()) {
        bytes[static_cast<std::size_t>(position)] ^= mask;
    }
}

void Cut(Bytes& bytes, int length) {
    const auto wanted = static_cast<std::size_t>(std::max(length, 0));
    bytes.resize(std::min(bytes.size(), wanted));
}

void ReplaceFirst(Parts& parts, std::uint8_t value) {
    Bytes& first = parts.Head.empty() ? parts.Body : parts.Head;
    if (!first.empty()) {
        first.front() = value;
    }
}

void Twice(Bytes& bytes) {
    const Bytes once = bytes;
    bytes.insert(bytes.end(), once.begin(), once.end());
}

void LoseHead(Parts& parts) {
    (parts.Head.empty() ? parts.Body : parts.Head).clear();
}

/// The answer with its frame (or, without one, its status bytes) of another length.
Answer Resized(Answer answer, int difference) {
    Bytes& bytes = answer.Payload ? *answer.Payload : answer.Status;
    const auto size = static_cast<int>(bytes.size()) + difference;
    bytes.resize(static_cast<std::size_t>(std::max(size, 0)), 0);
    return answer;
}

void Apply(const LineFault& fault, Parts& parts) {
    switch (fault.Kind) {
        case FaultKind::LoseAck:
            return LoseHead(parts);
        case FaultKind::LoseReply:
            return parts.Body.clear();
        case FaultKind::Late:
            parts.HeadDelay = fault.Delay;
            parts.BodyDelay = fault.Delay;
            return;
        case FaultKind::LateReply:
            parts.BodyDelay = fault.Delay;
            return;
        case FaultKind::Cut:
            return Cut(parts.Body, fault.Position);
        case FaultKind::Corrupt:
            return ChangeByte(parts.Body, fault.Position, fault.Value);
        case FaultKind::Noise:
            return Prepend(parts.Body, fault.Data);
        case FaultKind::NoiseAhead:
            return Prepend(parts.Head.empty() ? parts.Body : parts.Head, fault.Data);
        case FaultKind::WrongAck:
            return ReplaceFirst(parts, fault.Value);
        case FaultKind::Repeat:
            return Twice(parts.Body);
        case FaultKind::None:
        case FaultKind::LoseRequest:
        case FaultKind::LoseAnswer:
        case FaultKind::WrongLength:
        case FaultKind::Silent:
            return;
    }
}

}  // namespace

LineFault Late(Microseconds by) {
    return {FaultKind::Late, by, 0, 0, {}};
}

LineFault LateReply(Microseconds by) {
    return {FaultKind::LateReply, by, 0, 0, {}};
}

LineFault CutAfter(int bytes) {
    return {FaultKind::Cut, 0, bytes, 0, {}};
}

LineFault CorruptByte(int position, std::uint8_t mask) {
    return {FaultKind::Corrupt, 0, position, mask, {}};
}

LineFault NoiseBefore(Bytes noise) {
    return {FaultKind::Noise, 0, 0, 0, std::move(noise)};
}

LineFault NoiseAhead(Bytes noise) {
    return {FaultKind::NoiseAhead, 0, 0, 0, std::move(noise)};
}

LineFault WrongAck(std::uint8_t byte) {
    return {FaultKind::WrongAck, 0, 0, byte, {}};
}

LineFault WrongLength(int difference) {
    return {FaultKind::WrongLength, 0, difference, 0, {}};
}

LineFault Plain(FaultKind kind) {
    return {kind, 0, 0, 0, {}};
}

std::string_view NameOf(FaultKind kind) {
    const auto found = std::find_if(Names.begin(), Names.end(),
                                    [kind](const NamedKind& entry) { return entry.Kind == kind; });
    return found == Names.end() ? Names.front().Name : found->Name;
}

std::optional<FaultKind> FaultKindNamed(std::string_view name) {
    const auto found = std::find_if(Names.begin(), Names.end(),
                                    [name](const NamedKind& entry) { return entry.Name == name; });
    if (found == Names.end()) {
        return std::nullopt;
    }
    return found->Kind;
}

std::vector<Sending> Suffer(const LineFault& fault, const Answer& answer) {
    if (SaysNothing(fault.Kind)) {
        return {};
    }
    const bool resized = fault.Kind == FaultKind::WrongLength;
    Parts parts = Split(resized ? Resized(answer, fault.Position) : answer);
    Apply(fault, parts);
    std::vector<Sending> out;
    if (!parts.Head.empty()) {
        out.push_back({parts.HeadDelay, std::move(parts.Head)});
    }
    if (!parts.Body.empty()) {
        out.push_back({parts.BodyDelay, std::move(parts.Body)});
    }
    return out;
}

FaultScript& FaultScript::Queue(const LineFault& fault, int times) {
    if (times > 0) {
        queue_.push_back({times, fault});
    }
    return *this;
}

FaultScript& FaultScript::OnRequest(std::uint8_t code, const LineFault& fault, int times) {
    rules_.push_back({code, times, fault});
    return *this;
}

FaultScript& FaultScript::Always(const LineFault& fault) {
    always_ = fault;
    return *this;
}

FaultScript& FaultScript::Probability(double p, std::uint64_t seed, std::vector<FaultKind> kinds) {
    probability_ = p;
    seed_ = seed;
    drawn_ = 0;
    kinds_ = std::move(kinds);
    if (kinds_.empty()) {
        kinds_ = {FaultKind::LoseRequest, FaultKind::LoseAck,  FaultKind::LoseReply,
                  FaultKind::LoseAnswer,  FaultKind::Late,     FaultKind::LateReply,
                  FaultKind::Cut,         FaultKind::Corrupt,  FaultKind::Noise,
                  FaultKind::NoiseAhead,  FaultKind::WrongAck, FaultKind::WrongLength,
                  FaultKind::Repeat};
    }
    return *this;
}

FaultScript& FaultScript::Clear() {
    queue_.clear();
    rules_.clear();
    always_ = {};
    probability_ = 0;
    return *this;
}

LineFault FaultScript::Take(std::uint8_t code) {
    LineFault fault = Choose(code);
    if (fault.Kind != FaultKind::None) {
        ++count_;
    }
    return fault;
}

LineFault FaultScript::Choose(std::uint8_t code) {
    for (Rule& rule : rules_) {
        if (rule.Code == code && rule.Left > 0) {
            --rule.Left;
            return rule.Fault;
        }
    }
    if (!queue_.empty()) {
        Entry& next = queue_.front();
        LineFault fault = next.Fault;
        if (--next.Left == 0) {
            queue_.pop_front();
        }
        return fault;
    }
    return always_.Kind == FaultKind::None ? ByChance() : always_;
}

LineFault FaultScript::ByChance() {
    if (probability_ <= 0 || Draw() >= probability_) {
        return {};
    }
    constexpr Microseconds longest = 3 * Second;
    const auto below = [this](int limit) { return static_cast<int>(Draw() * limit); };
    LineFault fault;
    fault.Kind = kinds_[static_cast<std::size_t>(below(static_cast<int>(kinds_.size())))];
    fault.Delay = static_cast<Microseconds>(Draw() * static_cast<double>(longest));
    fault.Position = below(16);
    fault.Value = static_cast<std::uint8_t>(1 + below(255));
    fault.Data = Bytes(static_cast<std::size_t>(1 + below(4)));
    for (std::uint8_t& byte : fault.Data) {
        byte = static_cast<std::uint8_t>(below(256));
    }
    return fault;
}

double FaultScript::Draw() {
    return MixedFraction(seed_, drawn_++);
}

}  // namespace simulator
