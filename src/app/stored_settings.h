#ifndef ORVIA_APP_STORED_SETTINGS_H
#define ORVIA_APP_STORED_SETTINGS_H

#include "platform/host.h"
#include "records/settings.h"

/// Reads all keys; an absent one gives its default.
[[nodiscard]] Settings ReadSettings(const SettingsStore& store);

/// Writes all ten keys.
void SaveSettings(const Settings& settings, SettingsStore& store);

#endif  // ORVIA_APP_STORED_SETTINGS_H
