#include "common/desktop_entry.h"

#include <string_view>

namespace {

/// A path inside quotes, as the key Exec has it. The characters that stay special between quotes
/// take a backslash, and the backslash itself one more as a text of the file; a percent sign is
/// doubled, or it would begin a field code.
std::string QuotedForExec(std::string_view path) {
    constexpr std::string_view Special = "\"`$\\";
    std::string quoted = "\"";
    for (const char character : path) {
        if (character == '\\') {
            quoted += "\\\\\\\\";
        } else if (Special.find(character) != std::string_view::npos) {
            quoted += "\\\\";
            quoted += character;
        } else if (character == '%') {
            quoted += "%%";
        } else {
            quoted += character;
        }
    }
    return quoted + "\"";
}

}  // namespace

std::string SessionEntry(const std::string& name, const std::string& program,
                         const std::string& argument) {
    return "[Desktop Entry]\nType=Application\nName=" + name + "\nExec=" + QuotedForExec(program) +
           " " + argument + "\nX-GNOME-Autostart-enabled=true\n";
}
