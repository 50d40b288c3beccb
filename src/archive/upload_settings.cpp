#include "archive/upload_settings.h"

#include <algorithm>

#include "archive/archive_rows.h"

UploadSettings::UploadSettings(ArchiveStore& store, std::int64_t logger)
    : rows_(store.SettingsOf(logger)) {
    for (const ArchiveUpload& upload : store.UploadsOf(logger)) {
        uploads_[upload.Id] = upload.Settings;
    }
}

std::uint32_t UploadSettings::NumberOf(std::int64_t upload, std::vector<SeriesSettings>& settings) {
    if (upload != lastUpload_) {
        const std::int64_t id = uploads_[upload];
        const auto [number, isNew] =
            numbers_.try_emplace(id, static_cast<std::uint32_t>(settings.size()));
        if (isNew) {
            settings.push_back(SettingsOfRow(RowOf(id)));
        }
        lastUpload_ = upload;
        lastNumber_ = number->second;
    }
    return lastNumber_;
}

ArchiveSettings UploadSettings::RowOf(std::int64_t id) const {
    const auto row = std::find_if(rows_.begin(), rows_.end(),
                                  [id](const ArchiveSettings& one) { return one.Id == id; });
    return row == rows_.end() ? ArchiveSettings{} : *row;
}
