#include "common/path_text.h"

#include <system_error>

#include "common/file_path.h"

std::size_t LastSeparator(std::string_view path) {
    const std::size_t found = path.find_last_of("\\/");
    return found == std::string_view::npos ? 0 : found + 1;
}

std::string_view BehindLastSeparator(std::string_view path) {
    return path.substr(LastSeparator(path));
}

std::string JoinPath(std::string_view folder, std::string_view name) {
    std::string path(folder);
    path += Separator;
    path += name;
    return path;
}

std::string NativePath(std::string_view path) {
    std::string native(path);
    if constexpr (Separator == '/') {
        for (char& c : native) {
            if (c == '\\') {
                c = '/';
            }
        }
    }
    return native;
}

namespace {

/// What stands at `path`, "none" for what no system would open.
std::filesystem::file_type TypeAt(std::string_view path) {
    const bool isDevice = Separator == '\\' && NamesDevice(path);
    if (path.empty() || isDevice || path.find('\0') != std::string_view::npos) {
        return std::filesystem::file_type::none;
    }
    std::error_code ignored;
    return std::filesystem::status(FilePath(path), ignored).type();
}

}  // namespace

bool FileExists(std::string_view path) {
    using std::filesystem::file_type;
    const file_type type = TypeAt(path);
    return type != file_type::none && type != file_type::not_found && type != file_type::directory;
}

bool IsRegularFile(std::string_view path) {
    return TypeAt(path) == std::filesystem::file_type::regular;
}

bool TakesFile(std::string_view path) {
    using std::filesystem::file_type;
    const file_type type = TypeAt(path);
    return type == file_type::regular || type == file_type::not_found ||
           type == file_type::character;
}
