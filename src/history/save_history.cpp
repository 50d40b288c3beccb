#include "history/save_history.h"

#include "common/path_text.h"
#include "history/csv.h"

namespace {

/// A separator up to here belongs to the root of a drive, which stays.
constexpr std::size_t RootLength = 2;

}  // namespace

std::optional<std::string> AskForFile(FileQuery query, const Host& host, std::string& lastFolder) {
    if (lastFolder.empty()) {
        lastFolder = host.StartFolder();
    }
    query.InitialName = JoinPath(lastFolder, query.InitialName);
    auto path = host.Dialogs.PickForSaving(query, true);
    if (path && LastSeparator(*path) > RootLength) {
        lastFolder = path->substr(0, LastSeparator(*path) - 1);
    }
    return path;
}

std::optional<std::string> AskForCsvFile(const std::string& loggerName, const Host& host,
                                         std::string& lastFolder) {
    return AskForFile({.Title = "Save As",
                       .DefaultExtension = ".csv",
                       .Filter = "Comma Separated Value Files (*.csv)|*.csv",
                       .InitialName = DefaultCsvName(loggerName, host.Clock.Now())},
                      host, lastFolder);
}

std::int32_t SaveBarMaximum(int rows) {
    return rows == 0 ? 2 : rows;
}

bool IsSingleColumn(const std::string& setting) {
    return !setting.empty();
}

std::string SingleColumnSetting(bool singleColumn) {
    return singleColumn ? "Yes" : "";
}
