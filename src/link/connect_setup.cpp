#include "link/connect_setup.h"

#include <algorithm>

#include "common/path_text.h"
#include "link/port_trouble.h"

namespace comm {

std::string PortMark(int number, const std::map<int, PortUser>& used) {
    const auto user = used.find(number);
    return user == used.end() ? std::string() : "In use by " + ProgramText(user->second);
}

int PortChoice(const Enumerate::PortList& offered, std::string_view portName) {
    const auto found = std::find_if(
        offered.begin(), offered.end(),
        [portName](const std::string& entry) { return Enumerate::ExtractPort(entry) == portName; });
    return found == offered.end() ? 0 : static_cast<int>(found - offered.begin());
}

int BaudChoice(std::string_view baudRate) {
    constexpr int Usual = 3;
    const auto at = static_cast<std::size_t>(
        std::find(BaudRates.begin(), BaudRates.end(), baudRate) - BaudRates.begin());
    return at == BaudRates.size() ? Usual : static_cast<int>(at);
}

bool TakeChoices(const ConnectChoices& choices, Settings& settings, MessageBoxes& boxes) {
    const std::string& path = choices.AddressBookPath;
    if (path != settings.AddressBookPath && !path.empty() && !FileExists(path)) {
        boxes.Show({.Text = "Error: the address book path is not valid!",
                    .Title = "Address Book Not Found",
                    .Icon = BoxIcon::Exclamation});
        return false;
    }
    settings.BaudRate = choices.BaudRate;
    settings.PortName = Enumerate::ExtractPort(choices.Port);
    settings.AutoDisconnect = choices.AutoDisconnect ? "1" : "0";
    settings.AddressBookPath = path;
    return true;
}

}  // namespace comm
