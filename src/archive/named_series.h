#ifndef ORVIA_ARCHIVE_NAMED_SERIES_H
#define ORVIA_ARCHIVE_NAMED_SERIES_H

#include <string>
#include <utility>

#include "archive/series.h"
#include "archive/series_values.h"

/// Records of a logger, or of one upload, with their figures and the name that they are shown
/// under. Windows share one by shared_ptr, as each may be closed before the others.
class NamedSeries {
 public:
    NamedSeries(std::string name, Series series)
        : name_(std::move(name)), series_(std::move(series)), values_(series_) {}
    NamedSeries(const NamedSeries&) = delete;
    NamedSeries& operator=(const NamedSeries&) = delete;

    [[nodiscard]] const std::string& Name() const { return name_; }
    [[nodiscard]] const Series& Records() const { return series_; }
    [[nodiscard]] const SeriesValues& Values() const { return values_; }

 private:
    const std::string name_;
    const Series series_;
    const SeriesValues values_;
};

#endif  // ORVIA_ARCHIVE_NAMED_SERIES_H
