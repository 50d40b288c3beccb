#ifndef ORVIA_ARCHIVE_UPLOAD_SETTINGS_H
#define ORVIA_ARCHIVE_UPLOAD_SETTINGS_H

#include <cstdint>
#include <map>
#include <vector>

#include "archive/series.h"
#include "platform/archive_store.h"

/// The settings that each upload of a logger had, decoded when they are first asked for.
class UploadSettings {
 public:
    UploadSettings(ArchiveStore& store, std::int64_t logger);

    /// The number of an upload's settings in `settings`, which they are put into the first time.
    /// An upload that is not known has those of a logger fresh from the box.
    [[nodiscard]] std::uint32_t NumberOf(std::int64_t upload,
                                         std::vector<SeriesSettings>& settings);

 private:
    [[nodiscard]] ArchiveSettings RowOf(std::int64_t id) const;

    std::vector<ArchiveSettings> rows_;
    std::map<std::int64_t, std::int64_t> uploads_;
    std::map<std::int64_t, std::uint32_t> numbers_;
    std::int64_t lastUpload_ = 0;  // no upload has it
    std::uint32_t lastNumber_ = 0;
};

#endif  // ORVIA_ARCHIVE_UPLOAD_SETTINGS_H
