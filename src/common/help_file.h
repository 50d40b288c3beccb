#ifndef ORVIA_COMMON_HELP_FILE_H
#define ORVIA_COMMON_HELP_FILE_H

#include <string>
#include <string_view>

/// Path of the help file beside the program: the compiled one, else the contents of the same pages
/// in the folder "help", which stand for it where no viewer for it is at hand. Empty if there is
/// neither.
[[nodiscard]] std::string HelpFile(std::string_view appPath);

/// Stands between a compiled help file and one of its pages.
inline constexpr std::string_view HelpTopicMark = "::/";

/// A page of the help, as a viewer is told to open it: the page's own file, or the compiled one,
/// the mark and the page.
[[nodiscard]] std::string HelpTopic(std::string_view helpFile, std::string_view page);

#endif  // ORVIA_COMMON_HELP_FILE_H
