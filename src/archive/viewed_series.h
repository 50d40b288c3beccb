#ifndef ORVIA_ARCHIVE_VIEWED_SERIES_H
#define ORVIA_ARCHIVE_VIEWED_SERIES_H

#include <memory>

#include "archive/named_series.h"
#include "history/history_store.h"

/// The upload that the viewer shows, as a series of its own: records of the store, read with the
/// settings of the current logger and the points of its flow device.
[[nodiscard]] std::shared_ptr<const NamedSeries> ViewedSeries(const HistoryStore& store,
                                                              const LoggerRecord& logger,
                                                              const FlowTable& points);

#endif  // ORVIA_ARCHIVE_VIEWED_SERIES_H
