#ifndef ORVIA_PLATFORM_QT_FILE_QUERY_H
#define ORVIA_PLATFORM_QT_FILE_QUERY_H

#include <QString>
#include <string_view>

/// A filter such as "Setup Files (*.set)|*.set" in Qt's form, "Setup Files (*.set)". Several
/// pairs give several filters, several patterns are parted by ";". Empty if it has no pattern.
[[nodiscard]] QString NameFilters(std::string_view filter);

/// Where a file dialog starts: the folder and the name in it, either may be empty.
struct StartingPoint {
    QString Folder;
    QString Name;
};

/// Takes an initial name apart. A last part that is a pattern ("*.obk") gives no name, a folder
/// that does not exist no folder.
[[nodiscard]] StartingPoint StartOf(std::string_view initialName);

#endif  // ORVIA_PLATFORM_QT_FILE_QUERY_H
