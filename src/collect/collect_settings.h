#ifndef ORVIA_COLLECT_COLLECT_SETTINGS_H
#define ORVIA_COLLECT_COLLECT_SETTINGS_H

#include "collect/collect_choice.h"
#include "platform/host.h"

// What collections keep between runs: keys of their own, absent until something is chosen.

/// What the row "Collect History from All Client Windows" does.
[[nodiscard]] CollectChoice ReadCollectChoice(const SettingsStore& store);
void KeepCollectChoice(const CollectChoice& choice, SettingsStore& store);

#endif  // ORVIA_COLLECT_COLLECT_SETTINGS_H
