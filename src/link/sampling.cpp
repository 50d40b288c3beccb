#include "link/sampling.h"

#include <limits>
#include <memory>
#include <utility>
#include <vector>

#include "common/fault.h"
#include "common/number_text.h"
#include "link/busy_guard.h"
#include "link/port.h"
#include "logger/commands.h"

namespace comm {

namespace {

constexpr std::int16_t SecondRequestAt = 10;  // of SampleTicks
constexpr std::int16_t ReadAt = 12;           // of SampleTicks
constexpr std::int16_t NextRoundFrom = 2;     // of SampleTicks: one sample a second
constexpr std::int16_t SingleSampleLimit = 25;
constexpr float UpdateSeconds = 60;
constexpr float JumpSeconds = 120;  // behind the mark: the clock has jumped

// Values of SingleSample.
constexpr std::int16_t SingleFirstRequest = 1;
constexpr std::int16_t SingleSecondRequest = 2;
constexpr std::int16_t SingleRead = 3;

// Both machines ask alike, so that one step serves them.
static_assert(SingleFirstRequest == ContinuousFirstRequest);
static_assert(SingleSecondRequest == ContinuousSecondRequest);
static_assert(SingleRead == ContinuousRead);

/// What a step did to the machine's turn.
enum class Step { Stays, Done };

void CountTick(std::int16_t& ticks) {
    if (ticks < std::numeric_limits<std::int16_t>::max()) {
        ++ticks;
    }
}

cmd::SampleResult ReadNewest(const SamplingContext& context) {
    return cmd::ReadSample(context.exchange, context.global, context.clock, context.newest);
}

/// The first two states of both machines: ask at once, and again when the sample of the first
/// request is there.
Step RequestStep(const SamplingContext& context, std::int16_t state) {
    if (state == SingleSecondRequest) {
        if (context.sampling.SampleTicks != SecondRequestAt) {
            return Step::Stays;
        }
        context.radio.link.MSComm1.ClearInBuffer();
    }
    cmd::RequestSample(context.exchange, cmd::SampleNow);
    return Step::Done;
}

void SingleSampleStep(const SamplingContext& context) {
    Sampling& sampling = context.sampling;
    const std::int16_t state = sampling.SingleSample;
    if (state != SingleRead) {
        if (RequestStep(context, state) == Step::Done) {
            sampling.SingleSample = static_cast<std::int16_t>(state + 1);
        }
    } else if (sampling.SampleTicks == ReadAt) {
        static_cast<void>(ReadNewest(context));
        sampling.SingleSample = 0;
    }
}

/// The window that is sampled continuously, as long as slot, entry and window still agree.
std::shared_ptr<ClientWindow> SampledWindow(const SamplingContext& context) {
    const Sampling& sampling = context.sampling;
    const auto& entries = context.book.Entries;
    if (!entries.Holds(sampling.ContinuousClient) ||
        entries[sampling.ContinuousClient].WindowIndex == NoWindow) {
        return nullptr;
    }
    auto window = context.windows.At(sampling.ContinuousWindow);
    return window && window->ClientIndex() == sampling.ContinuousClient ? window : nullptr;
}

void TellSample(const SamplingContext& context, cmd::SampleResult result, const std::string& name) {
    context.radio.status.Came(result == cmd::SampleResult::Read ? "Sample of " + name + " received"
                              : result == cmd::SampleResult::NotSent ? name + " did not answer"
                                                                     : name + " gave no sample",
                              result == cmd::SampleResult::Read);
}

void ReadContinuousSample(const SamplingContext& context) {
    const cmd::SampleResult result = ReadNewest(context);
    if (result == cmd::SampleResult::NotSent) {
        context.newest.MarkNoSample();
    }
    if (const auto window = SampledWindow(context)) {
        TellSample(context, result, window->Caption());
        window->SetDP();
        static_cast<void>(window->GetStatus());
    } else {
        context.sampling.StopContinuous = True;
    }
    context.sampling.ContinuousMode = ContinuousSecondRequest;
    context.sampling.SampleTicks = NextRoundFrom;
}

void ContinuousSampleStep(const SamplingContext& context) {
    Sampling& sampling = context.sampling;
    const std::int16_t mode = sampling.ContinuousMode;
    if (mode != ContinuousRead) {
        if (RequestStep(context, mode) == Step::Done) {
            sampling.ContinuousMode = static_cast<std::int16_t>(mode + 1);
        }
    } else if (sampling.SampleTicks == ReadAt) {
        ReadContinuousSample(context);
    }
}

float SecondsSinceMidnight(const SystemClock& clock) {
    const LocalTime now = clock.Now();
    return static_cast<float>((now.Hour * 60 + now.Minute) * 60 + now.Second) +
           static_cast<float>(now.Millisecond) / 1000.0F;
}

/// Whether a pass is due, and if so moves the mark on. A day that has turned restarts the marks
/// from now, and so does a clock that jumped forward: passes that were missed are not made up.
bool UpdateIsDue(const SamplingContext& context) {
    float& mark = context.sampling.NextAutoUpdate;
    const float now = SecondsSinceMidnight(context.clock);
    if (mark <= now && now <= mark + UpdateSeconds) {
        return false;
    }
    const bool jumped = now < mark || now > mark + JumpSeconds;
    mark = jumped ? now : mark + UpdateSeconds;
    return true;
}

/// What a pass came to.
struct PassCount {
    int Windows = 0;
    int Answered = 0;
};

/// Reads a window's logger and shows it. The sample was asked for at the pass before.
void ReadUpdate(const SamplingContext& context, ClientWindow& window, PassCount& count) {
    context.radio.status.Doing("Updating " + window.Caption());
    context.newest.MarkNoSample();
    ++count.Windows;
    count.Answered += ReadNewest(context) == cmd::SampleResult::Read ? 1 : 0;
    static_cast<void>(window.GetTime());
    context.newest.Time = window.LoggerTimeCaption();
    window.SetDP();
    static_cast<void>(window.GetStatus());
}

/// Whether the window has not been closed since it was looked up: its entry still leads to it.
bool IsOpen(const SamplingContext& context, const std::shared_ptr<ClientWindow>& window) {
    const auto& entries = context.book.Entries;
    const std::int16_t number = window->ClientIndex();
    return entries.Holds(number) && context.windows.At(entries[number].WindowIndex) == window;
}

/// One open window's share of a pass; False if its radio could not be selected.
bool UpdateWindow(const SamplingContext& context, ClientWindow& window, PassCount& count) {
    const ClientRadio client = context.book.Entries[window.ClientIndex()];
    if (!SelectClient(context.radio, client)) {
        return false;
    }
    if (window.SettingsValid() == False) {
        return true;
    }
    window.ClientSetNumChannels();
    if (context.sampling.ContinuousMode == AutoUpdateRunning) {
        ReadUpdate(context, window, count);
    }
    context.radio.link.MSComm1.ClearInBuffer();
    cmd::RequestSample(context.exchange, cmd::SampleLater);
    return true;
}

void EndMachines(const SamplingContext& context) {
    context.sampling.ContinuousMode = SamplingIdle;
    context.sampling.StopContinuous = False;
    context.operations.OperationBusy = False;
    context.radio.view.SetPointer(Pointer::Normal);
}

void TellUpdateFailed(const SamplingContext& context, const ClientWindow& window) {
    context.radio.boxes.Show(
        {.Text = "Error: unable to connect with radio \"" + window.Caption() + "\"",
         .Title = "Auto Update Failed",
         .Icon = BoxIcon::Exclamation});
}

/// The open windows, in the order of the book.
std::vector<std::shared_ptr<ClientWindow>> WindowsInOrder(const SamplingContext& context) {
    std::vector<std::shared_ptr<ClientWindow>> windows;
    for (const ClientRadio& entry : context.book.Entries) {
        if (auto window = context.windows.At(entry.WindowIndex)) {
            windows.push_back(std::move(window));
        }
    }
    return windows;
}

/// Updates all open windows; stops at one whose radio cannot be selected, and returns that. A
/// device that is lost ends the pass, as it ends the mode.
std::shared_ptr<ClientWindow> UpdateWindows(const SamplingContext& context) {
    const BusyGuard busy(context.operations.OperationBusy);
    context.radio.view.SetPointer(Pointer::Hourglass);
    PassCount count;
    // An entry can be deleted while an exchange waits, and those behind it move up: who has a turn
    // is settled before.
    for (const auto& window : WindowsInOrder(context)) {
        if (IsOpen(context, window) && !UpdateWindow(context, *window, count)) {
            return window;
        }
        if (DeviceLost(context.radio.link)) {
            break;
        }
    }
    context.radio.view.SetPointer(Pointer::Normal);
    if (count.Windows > 0) {
        context.radio.status.Came("Auto Update: " + IntegerToText(count.Answered) + " of " +
                                      IntegerToText(count.Windows) + " loggers gave a sample",
                                  count.Answered == count.Windows);
    }
    return nullptr;
}

void UpdatePass(const SamplingContext& context) {
    if (const auto failed = UpdateWindows(context)) {
        EndMachines(context);
        context.radio.status.Came(
            "Auto Update ended: " + failed->Caption() + " could not be reached", false);
        TellUpdateFailed(context, *failed);
        return;
    }
    context.sampling.ContinuousMode = AutoUpdateRunning;
}

/// The mode that runs ends as it was asked to.
void EndMode(const SamplingContext& context) {
    const bool updates = context.sampling.ContinuousMode >= AutoUpdateStart;
    context.sampling.StopContinuous = False;
    context.sampling.ContinuousMode = SamplingIdle;
    context.radio.status.Came(updates ? "Auto Update stopped" : "Continuous sampling stopped");
}

void AutoUpdateStep(const SamplingContext& context) {
    Sampling& sampling = context.sampling;
    if (sampling.ContinuousMode == AutoUpdateStart) {
        sampling.NextAutoUpdate = SecondsSinceMidnight(context.clock) - UpdateSeconds;
        sampling.ContinuousMode = AutoUpdateFirstPass;
    }
    if (!UpdateIsDue(context)) {
        return;
    }
    if (context.windows.NumClientWindows == 0) {
        sampling.StopContinuous = True;
    }
    UpdatePass(context);
    if (sampling.StopContinuous != False) {
        EndMode(context);
    }
}

void ContinuousTick(const SamplingContext& context) {
    Sampling& sampling = context.sampling;
    if (context.operations.OperationBusy != False) {
        return;
    }
    if (sampling.StopContinuous != False || context.windows.NumClientWindows == 0) {
        EndMode(context);
        return;
    }
    CountTick(sampling.SampleTicks);
    if (sampling.ContinuousMode >= AutoUpdateStart) {
        AutoUpdateStep(context);
        return;
    }
    const BusyGuard busy(context.operations.OperationBusy);
    ContinuousSampleStep(context);
}

void SingleSampleTick(const SamplingContext& context) {
    Sampling& sampling = context.sampling;
    CountTick(sampling.SampleTicks);
    if (sampling.SingleSampleTicks > 0) {
        --sampling.SingleSampleTicks;
    }
    SingleSampleStep(context);
}

}  // namespace

void SampleTick(const SamplingContext& context) {
    if (context.sampling.StepRuns != False) {
        return;
    }
    const BusyGuard runs(context.sampling.StepRuns);
    try {
        if (context.sampling.SingleSample != 0) {
            SingleSampleTick(context);
        } else if (context.sampling.ContinuousMode != SamplingIdle) {
            ContinuousTick(context);
        }
    } catch (const Fault&) {
        EndMachines(context);
    }
}

void StartSingleSample(Sampling& sampling, DataPoint& newest) {
    newest.MarkNoSample();
    sampling.SampleTicks = 0;
    sampling.SingleSampleTicks = SingleSampleLimit;
    sampling.SingleSample = SingleFirstRequest;
}

}  // namespace comm
