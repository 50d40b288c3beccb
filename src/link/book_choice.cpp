#include "link/book_choice.h"

#include "common/path_text.h"

std::string BookBaseName(std::string_view path) {
    if (path.empty()) {
        return "-- None --";
    }
    const std::string_view name = BehindLastSeparator(path);
    const std::size_t stop = name.rfind('.');
    // A full stop at the very front belongs to the name.
    return std::string(stop == std::string_view::npos || stop == 0 ? name : name.substr(0, stop));
}

FileQuery BookQuery(const std::string& title, std::string_view startFolder) {
    return {.Title = title,
            .DefaultExtension = ".obk",
            .Filter = "Address Book Files (*.obk)|*.obk",
            .InitialName = JoinPath(startFolder, "*.obk")};
}
