#ifndef ORVIA_ARCHIVE_SERIES_H
#define ORVIA_ARCHIVE_SERIES_H

#include <cstdint>
#include <vector>

#include "history/history_store.h"
#include "logger/logger_state.h"

/// What the figures of records hang on, as the upload that first held them knew it: the settings,
/// with their flow parameters resolved, and the points of the flow device.
struct SeriesSettings {
    LoggerRecord Logger;
    FlowTable Table;
};

/// One record of a series: time and raw counts as they came.
struct SeriesRecord {
    HistoryRecord Record;
    std::uint32_t Settings = 0;  ///< which of the series' settings it is read with, from 0
};

/// Records of one logger, in the order in which it gave them.
struct Series {
    std::vector<SeriesRecord> Records;
    std::vector<SeriesSettings> Settings;
};

#endif  // ORVIA_ARCHIVE_SERIES_H
