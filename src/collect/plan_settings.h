#ifndef ORVIA_COLLECT_PLAN_SETTINGS_H
#define ORVIA_COLLECT_PLAN_SETTINGS_H

#include <optional>
#include <string>

#include "collect/collect_plan.h"
#include "platform/host.h"

// What regular collections keep between runs: keys of their own, absent until a plan is made.
// What is no plan reads as one that is off.

[[nodiscard]] CollectPlan ReadPlan(const SettingsStore& store);
void KeepPlan(const CollectPlan& plan, SettingsStore& store);

/// Nothing if none was kept.
[[nodiscard]] std::optional<PlanMark> ReadMark(const SettingsStore& store);
void KeepMark(const PlanMark& mark, SettingsStore& store);

/// What came of the last round, in a line.
[[nodiscard]] std::string ReadLastRound(const SettingsStore& store);
void KeepLastRound(const std::string& text, SettingsStore& store);

/// "2026-11-15 08:30:00" of a moment, and back; nothing if it is none.
[[nodiscard]] std::string MomentText(Moment moment);
[[nodiscard]] std::optional<Moment> MomentOfText(const std::string& text);

#endif  // ORVIA_COLLECT_PLAN_SETTINGS_H
