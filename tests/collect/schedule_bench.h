#ifndef ORVIA_TESTS_COLLECT_SCHEDULE_BENCH_H
#define ORVIA_TESTS_COLLECT_SCHEDULE_BENCH_H

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "collect/collect_bench.h"
#include "collect/collect_schedule.h"
#include "collect/plan_settings.h"
#include "platform/moments.h"

namespace testing_support {

/// A console with an archive and a schedule, whose clock can be set.
class ScheduleBench final : public CollectBench, public ScheduleDesk {
 public:
    explicit ScheduleBench(ArchiveStore& archive) : CollectBench(archive) {
        Restart();
        console.Outside.Time.StartTimer(100 * Millisecond, [this] {
            if (schedule) {
                schedule->Tick();
            }
        });
    }

    /// The program anew, as far as the schedule is concerned.
    void Restart() {
        schedule = std::make_unique<CollectSchedule>(ScheduleContext{
            .collect = console.Collection(), .store = console.Outside.Store, .desk = *this});
    }

    // ScheduleDesk
    void QueueStep() override {
        console.Outside.Time.In(0, [this] {
            if (schedule) {
                schedule->Step();
            }
        });
    }
    bool DialogStands() override { return Dialog; }
    std::string RoundEnded(const std::string& digest, const std::string& /*when*/) override {
        Digests.push_back(digest);
        return Trouble;
    }

    /// Lets hours pass. While nothing is under way the clock jumps over most of each.
    void Pass(int hours) {
        for (int i = 0; i < hours * 60; ++i) {
            PassMinute();
        }
    }
    void PassMinute() {
        const bool rests = !schedule->RoundRuns() && !schedule->RoundWaits();
        Seconds(rests ? 2 : 60);
        if (rests) {
            SetClock(58);
        }
    }
    void Seconds(int seconds) { console.Outside.Time.Run(seconds * Second); }
    /// Sets the computer's clock on by so many seconds, or back; the loggers' stay behind it.
    void SetClock(std::int64_t seconds) {
        LocalTime& start = console.Outside.Clock.Start;
        start = FromMilliseconds(ToMilliseconds(start) + seconds * 1000);
    }
    [[nodiscard]] std::string Now() const {
        return MomentText(MomentOf(console.Outside.Clock.Now()));
    }
    /// Does `act` once, as soon as the log of the round holds `text`, whatever runs then.
    void OnceTold(const std::string& text, std::function<void()> act) {
        console.Outside.Time.StartTimer(
            20 * Millisecond, [this, text, act = std::move(act), done = false]() mutable {
                if (!done && schedule && schedule->LogText().find(text) != std::string::npos) {
                    done = true;
                    act();
                }
            });
    }
    /// Lets time pass until no round is under way or wanted.
    [[nodiscard]] bool RunOut(int seconds = 3600) {
        return console.Outside.Time.RunUntil(
            [this] { return !schedule->RoundRuns() && !schedule->RoundWaits(); }, seconds * Second);
    }
    [[nodiscard]] int RoundsRun() const { return static_cast<int>(Digests.size()); }

    std::unique_ptr<CollectSchedule> schedule;
    bool Dialog = false;
    std::string Trouble;               ///< with the digest
    std::vector<std::string> Digests;  ///< of each round
};

}  // namespace testing_support

#endif  // ORVIA_TESTS_COLLECT_SCHEDULE_BENCH_H
