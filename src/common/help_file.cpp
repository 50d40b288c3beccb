#include "common/help_file.h"

#include "common/path_text.h"

namespace {

constexpr std::string_view Compiled = "Orvia.chm";

}  // namespace

std::string HelpFile(std::string_view appPath) {
    for (const std::string& path :
         {JoinPath(appPath, Compiled), JoinPath(JoinPath(appPath, "help"), "index.html")}) {
        if (FileExists(path)) {
            return path;
        }
    }
    return {};
}

std::string HelpTopic(std::string_view helpFile, std::string_view page) {
    std::string topic;
    if (BehindLastSeparator(helpFile) == Compiled) {
        topic.append(helpFile).append(HelpTopicMark);
    } else {
        topic.append(helpFile.substr(0, LastSeparator(helpFile)));
    }
    return topic.append(page);
}
