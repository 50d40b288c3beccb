#include "archive/plot_file.h"

#include "common/path_text.h"
#include "common/text.h"
#include "history/csv.h"

namespace {

constexpr std::string_view CsvExtension = ".csv";
/// A separator up to here belongs to the root of a drive, which stays.
constexpr std::size_t RootLength = 2;

/// As a history file of that name would be called, with another extension.
std::string OfferedName(const std::string& name, const LocalTime& now) {
    std::string offered = DefaultCsvName(name, now);
    offered.replace(offered.size() - CsvExtension.size(), CsvExtension.size(), ".png");
    return offered;
}

}  // namespace

std::optional<PlotFormat> PlotFormatOf(std::string_view path) {
    const std::string lower = ToLower(path);
    if (lower.ends_with(".png")) {
        return PlotFormat::Png;
    }
    if (lower.ends_with(".svg")) {
        return PlotFormat::Svg;
    }
    return lower.ends_with(".pdf") ? std::optional(PlotFormat::Pdf) : std::nullopt;
}

std::optional<std::string> AskForPlotFile(const std::string& name, const Host& host,
                                          std::string& lastFolder) {
    const std::string folder = lastFolder.empty() ? host.StartFolder() : lastFolder;
    auto path = host.Dialogs.PickForSaving(
        {.Title = SavePlotTitle,
         .DefaultExtension = ".png",
         .Filter = "Pictures (*.png)|*.png|Drawings (*.svg)|*.svg|Documents (*.pdf)|*.pdf",
         .InitialName = JoinPath(folder, OfferedName(name, host.Clock.Now()))},
        true);
    if (path && LastSeparator(*path) > RootLength) {
        lastFolder = path->substr(0, LastSeparator(*path) - 1);
    }
    return path;
}

BoxContent UnknownPlotFormat(const std::string& path) {
    return {.Text =
                "The plot was not saved. A plot is saved as a picture (.png), a drawing (.svg) "
                "or a document (.pdf), and this name ends in none of them:\n" +
                path,
            .Title = SavePlotTitle,
            .Icon = BoxIcon::Exclamation};
}

BoxContent PlotNotWritten(const std::string& path) {
    return {.Text = "Error: the plot was not saved. The file could not be written:\n" + path,
            .Title = SavePlotTitle,
            .Icon = BoxIcon::Stop};
}
