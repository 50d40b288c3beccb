#include "archive/report_choice.h"

#include "archive/report_words.h"
#include "history/csv.h"

namespace {

const std::string Section = "Report";
const std::string MadeByKey = "MadeBy";

Period SpanOr(const Period& span, const SeriesTimes& times, const SystemClock& clock) {
    const Period asked = span.IsEmpty() ? NamedPeriodOf(times, NamedPeriod::All) : span;
    if (!asked.IsEmpty()) {
        return asked;
    }
    const Moment today = DayBegin(MomentOf(clock.Now()));
    return {today, NextDay(today)};
}

}  // namespace

ReportChoice::ReportChoice(const NamedSeries& series, const Period& span, const Host& outside)
    : series_(series), outside_(outside) {
    const SeriesValues& values = series.Values();
    const Period period = SpanOr(span, values.Times(), outside.Clock);
    begin_ = period.Begin;
    last_ = period.End - 1;
    if (values.FlowColumn()) {
        units_ = VolumeUnitsFor(values.FlowUnits());
    }
    site_ = outside.Store.Read(Section, SiteKey()).value_or("");
    madeBy_ = outside.Store.Read(Section, MadeByKey).value_or("");
}

void ReportChoice::SetFrom(Moment day) {
    if (DayBegin(day) != From()) {
        begin_ = DayBegin(day);
    }
}

void ReportChoice::SetTo(Moment day) {
    if (DayBegin(day) != To()) {
        last_ = NextDay(day) - 1;
    }
}

std::string ReportChoice::Fault() const {
    return last_ < begin_ ? "The period ends before it begins. Change one of its dates." : "";
}

ReportRequest ReportChoice::Request() const {
    ReportRequest request;
    request.Span = PeriodFromTo(begin_, last_ + 1);
    request.Step = step_;
    if (unit_ < units_.size()) {
        request.Unit = units_[unit_];
    }
    request.Site = site_;
    request.MadeBy = madeBy_;
    return request;
}

// A slash would part the key.
std::string ReportChoice::SiteKey() const {
    std::string key = "Site ";
    for (const char c : series_.Name()) {
        switch (c) {
            case '%':
                key += "%25";
                break;
            case '/':
                key += "%2F";
                break;
            case '\\':
                key += "%5C";
                break;
            default:
                key += c;
        }
    }
    return key;
}

void ReportChoice::Remember() const {
    outside_.Store.Write(Section, SiteKey(), site_);
    outside_.Store.Write(Section, MadeByKey, madeBy_);
}

std::string DefaultReportName(const std::string& logger, PeriodStep step, const LocalTime& now,
                              const std::string& extension) {
    const std::string name = DefaultCsvName(logger + " " + ReportTitle(step), now);
    return name.substr(0, name.rfind('.')) + extension;
}
