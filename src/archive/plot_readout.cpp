#include "archive/plot_readout.h"

#include <cstdlib>
#include <set>

#include "archive/plot_path.h"
#include "common/number_text.h"

namespace {

constexpr const char* NoRecord = "no record";

std::string ValueText(const SeriesColumn& column, double value) {
    const std::string unit = UnitOf(column);
    return FormatFixed(value, column.Places) + (unit.empty() ? "" : " " + unit);
}

PlotReadoutRow RowOf(const PlotScene& scene, std::size_t line, Moment moment, const PlotPart& part,
                     const SystemClock& clock) {
    PlotReadoutRow row{scene.TitleOf(line), NoRecord, ""};
    if (const auto reading = scene.ColumnOf(line).ReadingAt(moment, part.Reach())) {
        row.Value = ValueText(scene.HeadingOf(line), reading->Value);
        row.Time = reading->Time == moment ? "" : MomentText(reading->Time, clock);
    }
    return row;
}

std::string WordsOf(const PlotReadout& readout) {
    std::string words = readout.Time;
    for (const PlotReadoutRow& row : readout.Rows) {
        words += (&row == &readout.Rows.front() ? ": " : ", ") + row.Title + " " + row.Value;
        words += row.Time.empty() ? "" : " at " + row.Time;
    }
    return words + (readout.Marks.empty() ? "" : ". " + readout.Marks);
}

}  // namespace

PlotReadout ReadoutAt(const PlotScene& scene, Moment moment, const PlotPart& part,
                      const SystemClock& clock) {
    PlotReadout readout{MomentText(moment, clock), {}, MarksNear(scene, moment, part, clock), ""};
    for (std::size_t line = 0; line < scene.Lines().size(); ++line) {
        readout.Rows.push_back(RowOf(scene, line, moment, part, clock));
    }
    readout.Words = WordsOf(readout);
    return readout;
}

Moment NearestRecord(const PlotScene& scene, Moment moment, const PlotPart& part) {
    std::optional<Moment> nearest;
    for (std::size_t line = 0; line < scene.Lines().size(); ++line) {
        const auto reading = scene.ColumnOf(line).ReadingAt(moment, part.Reach());
        if (reading &&
            (!nearest || std::abs(reading->Time - moment) < std::abs(*nearest - moment))) {
            nearest = reading->Time;
        }
    }
    return nearest.value_or(moment);
}

std::string MarksNear(const PlotScene& scene, Moment moment, const PlotPart& part,
                      const SystemClock& clock) {
    std::string text;
    for (const SceneMark& mark : scene.MarksIn(moment - part.Reach(), moment + part.Reach())) {
        text += (text.empty() ? "" : "\n") +
                (scene.HasSeveralSeries() ? mark.Series->Name() + ": " : "") +
                TextOf(mark.Mark.Kind) + " " + MomentText(mark.Mark.Time, clock) + ": " +
                MeaningOf(mark.Mark.Kind);
    }
    return text;
}

std::string MarksInWords(const std::vector<SceneMark>& marks) {
    std::set<PlotMark::Sort> told;
    std::string text;
    for (const SceneMark& mark : marks) {
        if (told.insert(mark.Mark.Kind).second) {
            text += (text.empty() ? "" : "   ") + ShortTextOf(mark.Mark.Kind) + ": " +
                    MeaningOf(mark.Mark.Kind);
        }
    }
    return text;
}
