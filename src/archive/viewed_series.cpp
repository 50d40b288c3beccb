#include "archive/viewed_series.h"

std::shared_ptr<const NamedSeries> ViewedSeries(const HistoryStore& store,
                                                const LoggerRecord& logger,
                                                const FlowTable& points) {
    Series series;
    series.Settings.push_back({.Logger = logger, .Table = points});
    const auto records = store.Records();
    series.Records.reserve(records.size());
    for (const HistoryRecord& record : records) {
        series.Records.push_back({.Record = record, .Settings = 0});
    }
    return std::make_shared<const NamedSeries>(logger.LoggerName, std::move(series));
}
