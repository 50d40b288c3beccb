#include "common/help_file.h"

#include "common/path_text.h"

std::string HelpFile(std::string_view appPath) {
    const std::string path = JoinPath(appPath, "Orvia.chm");
    return FileExists(path) ? path : std::string();
}
