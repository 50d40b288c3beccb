#include "setup/recent_files.h"

#include <algorithm>
#include <utility>

#include "common/path_text.h"

namespace {

constexpr std::string_view AllSetupFiles = "*.set";

// Positions of a path's last separator, counted from 1.
constexpr std::size_t FirstBehindFolder = 2;
constexpr std::size_t FirstBehindRoot = 4;

}  // namespace

void PushRecentFile(std::string path, Settings& settings) {
    auto& files = settings.LastFile;
    // A path in the last place is overwritten like any other that stands there.
    const auto last = files.end() - 1;
    const auto found = std::find(files.begin(), last, path);
    std::move_backward(files.begin(), found, found + 1);
    files.front() = std::move(path);
}

std::string_view FileNameOfPath(std::string_view path) {
    const std::size_t separator = LastSeparator(path);
    return separator != path.size() && separator >= FirstBehindRoot ? path.substr(separator) : path;
}

bool RememberFolder(const std::string& path, Settings& settings, std::string& CurrentFile) {
    const std::size_t separator = LastSeparator(path);
    if (separator < FirstBehindFolder || separator == path.size()) {
        return false;
    }
    // The path may be one of the texts that change here.
    std::string folder = path.substr(0, separator - 1);
    std::string name = path.substr(separator);
    settings.LastFilePath = std::move(folder);
    CurrentFile = std::move(name);
    return true;
}

bool RememberChosenFile(const std::string& path, Settings& settings, std::string& CurrentFile) {
    if (!RememberFolder(path, settings, CurrentFile)) {
        return false;
    }
    PushRecentFile(path, settings);
    return true;
}

std::string InitialSetupName(const Settings& settings, std::string_view CurrentFile,
                             std::string_view startFolder) {
    std::string_view folder = settings.LastFilePath;
    if (folder.empty()) {
        return JoinPath(startFolder, AllSetupFiles);
    }
    if (LastSeparator(folder) == folder.size()) {
        folder.remove_suffix(1);
    }
    return JoinPath(folder, CurrentFile.empty() ? AllSetupFiles : CurrentFile);
}
