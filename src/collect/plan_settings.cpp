#include "collect/plan_settings.h"

#include <array>
#include <string_view>
#include <utility>

#include "common/number_text.h"
#include "common/text.h"

namespace {

const std::string Section = "Collect";
constexpr const char* OnKey = "Regularly";
constexpr const char* StepKey = "Every";
constexpr const char* HoursKey = "Hours";
constexpr const char* WeekdayKey = "Weekday";
constexpr const char* TimeKey = "Time";
constexpr const char* ScopeKey = "RegularScope";
constexpr const char* SyncKey = "RegularSyncTime";
constexpr const char* AnchorKey = "Since";
constexpr const char* DoneKey = "Accounted";
constexpr const char* LastKey = "LastRound";

constexpr const char* BookText = "Book";
constexpr const char* WindowsText = "Windows";

constexpr std::array<std::pair<PlanStep, const char*>, 3> Steps = {
    {{PlanStep::Hours, "Hours"}, {PlanStep::Daily, "Day"}, {PlanStep::Weekly, "Week"}}};

/// The number at a place of a text, of digits alone; -1 if it is none in the range.
int NumberIn(std::string_view text, std::size_t first, std::size_t size, int least, int most) {
    if (first + size > text.size()) {
        return -1;
    }
    const std::string_view part = text.substr(first, size);
    std::int32_t value = 0;
    const bool digits = part.find_first_not_of("0123456789") == std::string_view::npos;
    return digits && TextToLong(part, value) && value >= least && value <= most ? value : -1;
}

int ReadNumber(const SettingsStore& store, const char* key, int most, int otherwise) {
    const std::string text = store.Read(Section, key).value_or("");
    const int value = text.empty() ? -1 : NumberIn(text, 0, text.size(), 1, most);
    return value < 0 ? otherwise : value;
}

int ReadTime(const SettingsStore& store, int otherwise) {
    constexpr int MinutesPerHour = 60;
    const std::string text = store.Read(Section, TimeKey).value_or("");
    const int hour = NumberIn(text, 0, 2, 0, 23);
    const int minute = NumberIn(text, 3, 2, 0, 59);
    return text.size() == 5 && hour >= 0 && minute >= 0 ? hour * MinutesPerHour + minute
                                                        : otherwise;
}

PlanStep ReadStep(const SettingsStore& store, PlanStep otherwise) {
    const std::string text = store.Read(Section, StepKey).value_or("");
    for (const auto& [step, name] : Steps) {
        if (text == name) {
            return step;
        }
    }
    return otherwise;
}

}  // namespace

CollectPlan ReadPlan(const SettingsStore& store) {
    CollectPlan plan;
    plan.On = store.Read(Section, OnKey) == "1";
    plan.Step = ReadStep(store, plan.Step);
    plan.Hours = ReadNumber(store, HoursKey, CollectPlan::MostHours, plan.Hours);
    plan.Weekday = ReadNumber(store, WeekdayKey, 7, plan.Weekday);
    plan.Minute = ReadTime(store, plan.Minute);
    plan.Choice.Scope = store.Read(Section, ScopeKey) == WindowsText ? CollectScope::Windows
                                                                     : CollectScope::WholeBook;
    plan.Choice.SyncTime = store.Read(Section, SyncKey) == "1";
    return plan;
}

void KeepPlan(const CollectPlan& plan, SettingsStore& store) {
    const auto write = [&store](const char* key, const std::string& value) {
        store.Write(Section, key, value);
    };
    for (const auto& [step, name] : Steps) {
        if (step == plan.Step) {
            write(StepKey, name);
        }
    }
    write(HoursKey, IntegerToText(plan.Hours));
    write(WeekdayKey, IntegerToText(plan.Weekday));
    write(TimeKey, TimeOfDayText(plan.Minute));
    write(ScopeKey, plan.Choice.Scope == CollectScope::Windows ? WindowsText : BookText);
    write(SyncKey, plan.Choice.SyncTime ? "1" : "0");
    write(OnKey, plan.On ? "1" : "0");
}

std::optional<PlanMark> ReadMark(const SettingsStore& store) {
    const auto anchor = MomentOfText(store.Read(Section, AnchorKey).value_or(""));
    const auto done = MomentOfText(store.Read(Section, DoneKey).value_or(""));
    return anchor && done ? std::optional(PlanMark{*anchor, *done}) : std::nullopt;
}

void KeepMark(const PlanMark& mark, SettingsStore& store) {
    store.Write(Section, AnchorKey, MomentText(mark.Anchor));
    store.Write(Section, DoneKey, MomentText(mark.Done));
}

std::string ReadLastRound(const SettingsStore& store) {
    return store.Read(Section, LastKey).value_or("");
}

void KeepLastRound(const std::string& text, SettingsStore& store) {
    store.Write(Section, LastKey, text);
}

std::string MomentText(Moment moment) {
    std::string text = IsoText(moment);
    text[text.find('T')] = ' ';
    return text;
}

std::optional<Moment> MomentOfText(const std::string& text) {
    constexpr std::size_t Size = 19;
    const LocalTime time{NumberIn(text, 0, 4, 1900, 9999), NumberIn(text, 5, 2, 1, 12),
                         NumberIn(text, 8, 2, 1, 31),      NumberIn(text, 11, 2, 0, 23),
                         NumberIn(text, 14, 2, 0, 59),     NumberIn(text, 17, 2, 0, 59)};
    const bool whole = text.size() == Size && time.Year >= 0 && time.Month >= 0 && time.Day >= 0 &&
                       time.Hour >= 0 && time.Minute >= 0 && time.Second >= 0;
    return whole ? std::optional(MomentOf(time)) : std::nullopt;
}
