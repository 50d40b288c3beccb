#ifndef ORVIA_SIMULATOR_FAULTS_H
#define ORVIA_SIMULATOR_FAULTS_H

#include <cstdint>
#include <deque>
#include <optional>
#include <string_view>
#include <vector>

#include "simulator/answer.h"

namespace simulator {

/// What can go wrong with one exchange. The body of an answer is what follows the acknowledge; for
/// an answer that is an acknowledge alone, and for the server radio, it is the whole answer.
enum class FaultKind {
    None,
    LoseRequest,  ///< the request never arrives: nothing is done, nothing comes back
    LoseAck,      ///< the acknowledge is lost, the body comes
    LoseReply,    ///< the body is lost, the acknowledge comes
    LoseAnswer,   ///< the request is carried out, nothing comes back
    Late,         ///< the whole answer comes `Delay` late
    LateReply,    ///< the body comes `Delay` late, the acknowledge in time
    Cut,          ///< the body ends after `Position` bytes
    Corrupt,      ///< byte `Position` of the body is changed by XOR with `Value`
    Noise,        ///< the bytes `Data` come between acknowledge and body
    NoiseAhead,   ///< the bytes `Data` come before the answer
    WrongAck,     ///< the first byte of the answer is `Value`
    WrongLength,  ///< the payload is `Position` bytes longer (or shorter), in a good frame
    Repeat,       ///< the body comes twice
    Silent,       ///< no answer to this request or any later one, until woken
};

struct LineFault {
    FaultKind Kind = FaultKind::None;
    Microseconds Delay = 0;
    int Position = 0;
    std::uint8_t Value = 0;
    Bytes Data;
};

/// The whole answer comes that much late.
[[nodiscard]] LineFault Late(Microseconds by);
/// The body comes that much late, the acknowledge in time.
[[nodiscard]] LineFault LateReply(Microseconds by);
/// The body ends after so many bytes; a body that is shorter comes whole.
[[nodiscard]] LineFault CutAfter(int bytes);
/// The bits of `mask` are turned in the body's byte at `position`, from 0; nothing happens to a
/// body that is shorter.
[[nodiscard]] LineFault CorruptByte(int position, std::uint8_t mask = 0xFF);
/// The bytes come between acknowledge and body.
[[nodiscard]] LineFault NoiseBefore(Bytes noise);
/// The bytes come before the answer.
[[nodiscard]] LineFault NoiseAhead(Bytes noise);
/// The answer begins with that byte.
[[nodiscard]] LineFault WrongAck(std::uint8_t byte);
/// The payload is that many bytes longer, or shorter if negative, in a good frame.
[[nodiscard]] LineFault WrongLength(int difference);
/// A fault that needs no more than its kind.
[[nodiscard]] LineFault Plain(FaultKind kind);

/// The kind's name in lower case with hyphens: "lose-request". "none" for None.
[[nodiscard]] std::string_view NameOf(FaultKind kind);
/// The kind of that name; nothing if there is none.
[[nodiscard]] std::optional<FaultKind> FaultKindNamed(std::string_view name);

/// What goes out for `answer` under `fault`, in order. Nothing goes out under LoseRequest,
/// LoseAnswer and Silent.
[[nodiscard]] std::vector<Sending> Suffer(const LineFault& fault, const Answer& answer);

/// The script of faults of one side: what befalls each request that arrives, at most one fault to
/// a request. Rules for a command come first, then the queue in the order written, then `Always`,
/// then chance. Reads as a sentence: `Faults().Pass(2).LoseReply().NextReply(CutAfter(5))`.
class FaultScript {
 public:
    /// Adds to the queue: each entry is for one request.
    FaultScript& LoseRequest(int times = 1) { return Queue(Plain(FaultKind::LoseRequest), times); }
    FaultScript& LoseAck(int times = 1) { return Queue(Plain(FaultKind::LoseAck), times); }
    FaultScript& LoseReply(int times = 1) { return Queue(Plain(FaultKind::LoseReply), times); }
    FaultScript& LoseAnswer(int times = 1) { return Queue(Plain(FaultKind::LoseAnswer), times); }
    FaultScript& RepeatReply(int times = 1) { return Queue(Plain(FaultKind::Repeat), times); }
    FaultScript& GoSilent() { return Queue(Plain(FaultKind::Silent), 1); }
    FaultScript& NextReply(const LineFault& fault, int times = 1) { return Queue(fault, times); }
    /// The next `times` requests go well.
    FaultScript& Pass(int times = 1) { return Queue(LineFault{}, times); }

    /// The next `times` requests with that first byte: the command code of a logger; of the server
    /// radio the byte behind CC, and "A" (41) for both changes of mode.
    FaultScript& OnRequest(std::uint8_t code, const LineFault& fault, int times = 1);

    /// Every request for which nothing else is scripted.
    FaultScript& Always(const LineFault& fault);

    /// Each request for which nothing else is scripted suffers, with probability `p`, one of
    /// `kinds` (all that pass by themselves if empty), chosen by a random sequence from `seed`.
    FaultScript& Probability(double p, std::uint64_t seed, std::vector<FaultKind> kinds = {});

    /// Back to no faults at all.
    FaultScript& Clear();

    /// The fault for a request with that code, taken off the script; kind None if it goes well.
    [[nodiscard]] LineFault Take(std::uint8_t code);

    /// Faults dealt out since the start.
    [[nodiscard]] int Count() const { return count_; }

 private:
    struct Rule {
        std::uint8_t Code = 0;
        int Left = 0;
        LineFault Fault;
    };
    /// What the next requests suffer; a million of them take no more room than one.
    struct Entry {
        int Left = 0;
        LineFault Fault;
    };

    FaultScript& Queue(const LineFault& fault, int times);
    [[nodiscard]] LineFault Choose(std::uint8_t code);
    [[nodiscard]] LineFault ByChance();
    [[nodiscard]] double Draw();

    std::deque<Entry> queue_;
    std::vector<Rule> rules_;
    LineFault always_;
    double probability_ = 0;
    std::uint64_t seed_ = 0;
    std::uint64_t drawn_ = 0;
    std::vector<FaultKind> kinds_;
    int count_ = 0;
};

}  // namespace simulator

#endif  // ORVIA_SIMULATOR_FAULTS_H
