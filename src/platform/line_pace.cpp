#include "platform/line_pace.h"

namespace {

using std::chrono::milliseconds;

/// What takes longer is a silence.
constexpr milliseconds SlowestByte{2};
/// Shorter rests are not worth a timer.
constexpr milliseconds ShortestRest{4};
/// The system may have gathered two bytes where the program came late.
constexpr int MostAtATime = 2;

}  // namespace

void LinePace::Came(Time now, int bytes) {
    Take(now, bytes);
    if (bytes > MostAtATime) {
        perByte_ = {};
    }
}

void LinePace::CameUnseen(Time now, int bytes) {
    Take(now, bytes);
}

void LinePace::Forget() {
    last_.reset();
    perByte_ = {};
}

std::chrono::milliseconds LinePace::RestFor(int count) const {
    const auto rest = std::chrono::duration_cast<milliseconds>((count - 1) * perByte_ * 3 / 4);
    return rest < ShortestRest ? milliseconds{0} : rest;
}

void LinePace::Take(Time now, int bytes) {
    const bool known = last_ && bytes > 0 && now - *last_ <= bytes * SlowestByte;
    perByte_ = known ? (now - *last_) / bytes : std::chrono::nanoseconds{0};
    last_ = now;
}
