#ifndef ORVIA_ARCHIVE_REPORT_CHOICE_H
#define ORVIA_ARCHIVE_REPORT_CHOICE_H

#include <cstddef>
#include <string>
#include <vector>

#include "archive/named_series.h"
#include "archive/report.h"

/// What the operator asks of a report on a series, which must outlive this, and what is remembered
/// of it: who makes reports, and the site of each logger.
class ReportChoice {
 public:
    /// An empty span stands for all of the series; without records for today.
    ReportChoice(const NamedSeries& series, const Period& span, const Host& outside);

    /// First moments of the first and the last day.
    [[nodiscard]] Moment From() const { return DayBegin(begin_); }
    [[nodiscard]] Moment To() const { return DayBegin(last_); }
    /// Another first or last day, whole. The day that it was leaves the time of day as it is.
    void SetFrom(Moment day);
    void SetTo(Moment day);
    /// Why there is no period; empty if there is one.
    [[nodiscard]] std::string Fault() const;

    [[nodiscard]] PeriodStep Step() const { return step_; }
    void SetStep(PeriodStep step) { step_ = step; }

    /// Units of volume to choose from; none without a flow.
    [[nodiscard]] const std::vector<VolumeUnit>& Units() const { return units_; }
    void SetUnit(std::size_t unit) { unit_ = unit; }

    [[nodiscard]] const std::string& Site() const { return site_; }
    void SetSite(const std::string& site) { site_ = site; }
    [[nodiscard]] const std::string& MadeBy() const { return madeBy_; }
    void SetMadeBy(const std::string& name) { madeBy_ = name; }
    /// Keeps site and name for the next report.
    void Remember() const;

    [[nodiscard]] ReportRequest Request() const;

 private:
    [[nodiscard]] std::string SiteKey() const;

    const NamedSeries& series_;
    const Host outside_;
    Moment begin_ = 0;
    Moment last_ = 0;  ///< the last one inside
    PeriodStep step_ = PeriodStep::Day;
    std::vector<VolumeUnit> units_;
    std::size_t unit_ = 0;
    std::string site_;
    std::string madeBy_;
};

/// Name that a report's file gets unless the operator wants another: the plain characters of the
/// logger's name, what it is and when it was made, with `extension` ".csv" or ".pdf".
[[nodiscard]] std::string DefaultReportName(const std::string& logger, PeriodStep step,
                                            const LocalTime& now, const std::string& extension);

#endif  // ORVIA_ARCHIVE_REPORT_CHOICE_H
