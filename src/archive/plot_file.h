#ifndef ORVIA_ARCHIVE_PLOT_FILE_H
#define ORVIA_ARCHIVE_PLOT_FILE_H

#include <optional>
#include <string>
#include <string_view>

#include "platform/host.h"

/// What a plot can be saved as.
enum class PlotFormat { Png, Svg, Pdf };

/// The format that a path's extension asks for, in any case; nothing for any other extension.
[[nodiscard]] std::optional<PlotFormat> PlotFormatOf(std::string_view path);

/// Title of the boxes and the dialog about saving a plot.
inline constexpr const char* SavePlotTitle = "Save Plot As";

/// Asks where to save a plot of that name, beginning with the folder of the last file saved, which
/// is kept. Nothing if that was cancelled.
[[nodiscard]] std::optional<std::string> AskForPlotFile(const std::string& name, const Host& host,
                                                        std::string& lastFolder);

/// What is said of a path with another extension, and of a file that could not be written.
[[nodiscard]] BoxContent UnknownPlotFormat(const std::string& path);
[[nodiscard]] BoxContent PlotNotWritten(const std::string& path);

#endif  // ORVIA_ARCHIVE_PLOT_FILE_H
