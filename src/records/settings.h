#ifndef ORVIA_RECORDS_SETTINGS_H
#define ORVIA_RECORDS_SETTINGS_H

#include <array>
#include <string>

/// What the settings store keeps between runs; all values are text.
struct Settings {
    std::string PortName;  ///< "COM" and a number
    std::string BaudRate;
    std::string AddressBookPath;          ///< book in use, empty if none
    std::string LastFilePath;             ///< folder last used by the set-up file dialogs
    std::array<std::string, 4> LastFile;  ///< recent set-up files, newest first
    std::string AutoDisconnect;           ///< "1", "0" or empty
    std::string CSVDateTimeSingleColumn;  ///< empty for two columns, "Yes" for one
};

#endif  // ORVIA_RECORDS_SETTINGS_H
