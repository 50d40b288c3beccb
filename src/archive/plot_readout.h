#ifndef ORVIA_ARCHIVE_PLOT_READOUT_H
#define ORVIA_ARCHIVE_PLOT_READOUT_H

#include <optional>
#include <string>
#include <vector>

#include "archive/plot_scene.h"
#include "archive/plot_view.h"
#include "platform/host.h"

/// What a line has under the cursor.
struct PlotReadoutRow {
    std::string Title;
    std::string Value;  ///< with its unit, "1.23 Feet"; "no record" in a gap
    std::string Time;   ///< of the record, where it is not the cursor's
};

/// All that is under the cursor.
struct PlotReadout {
    std::string Time;
    std::vector<PlotReadoutRow> Rows;  ///< one for each line
    std::string Marks;  ///< "Clock Set Back 1/14/24 13:05:00: The logger's..."; empty without any
    std::string Words;  ///< all of it in one line, for those who hear it
};

/// Reads all lines at a moment; `part` is what is shown.
[[nodiscard]] PlotReadout ReadoutAt(const PlotScene& scene, Moment moment, const PlotPart& part,
                                    const SystemClock& clock);

/// The moment of the record that lies nearest to a moment, as long as one is near it.
[[nodiscard]] Moment NearestRecord(const PlotScene& scene, Moment moment, const PlotPart& part);

/// The marks near a moment in words, a line each; empty without any.
[[nodiscard]] std::string MarksNear(const PlotScene& scene, Moment moment, const PlotPart& part,
                                    const SystemClock& clock);

/// What the short texts of these marks mean: "C: The logger's clock... A1: ..."; each once.
[[nodiscard]] std::string MarksInWords(const std::vector<SceneMark>& marks);

#endif  // ORVIA_ARCHIVE_PLOT_READOUT_H
