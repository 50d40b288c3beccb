#ifndef ORVIA_ARCHIVE_FRM_PLOT_SAVE_H
#define ORVIA_ARCHIVE_FRM_PLOT_SAVE_H

#include <QByteArray>
#include <string>

#include "archive/plot_file.h"

class PlotChart;
class QPagedPaintDevice;

/// The bytes of a file that shows the plot as it stands, black on white.
[[nodiscard]] QByteArray PlotBytes(const PlotChart& chart, PlotFormat format, const QString& title);

/// Paints the plot over a page of paper; false if the device took nothing.
[[nodiscard]] bool PrintPlot(const PlotChart& chart, QPagedPaintDevice& paper);

/// Writes such a file; false if it could not be written.
[[nodiscard]] bool SavePlot(const PlotChart& chart, const std::string& path, PlotFormat format,
                            const QString& title);

#endif  // ORVIA_ARCHIVE_FRM_PLOT_SAVE_H
