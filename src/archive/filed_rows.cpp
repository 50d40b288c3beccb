#include "archive/filed_rows.h"

ArchiveLogger LoggerRowOf(ArchiveStore& store, const std::array<std::uint8_t, 6>& mac,
                          const std::string& name) {
    auto logger = store.FindLogger(mac);
    if (!logger) {
        logger = ArchiveLogger{.Mac = mac, .Name = name};
        store.AddLogger(*logger);
    }
    return *logger;
}

std::int64_t SettingsIdOf(ArchiveStore& store, std::int64_t logger, ArchiveSettings settings) {
    for (const ArchiveSettings& kept : store.SettingsOf(logger)) {
        settings.Id = kept.Id;
        if (settings == kept) {
            return kept.Id;
        }
    }
    store.AddSettings(logger, settings);
    return settings.Id;
}
