#include "app/stored_settings.h"

#include <string>

namespace {

const std::string Section = "Configuration";

struct Key {
    const char* Name;
    const char* Default;
};

constexpr Key Port{"Port", "Com1"};
constexpr Key Baud{"Baud", "38400"};
constexpr Key Book{"AddressBook", ""};
constexpr Key FilePath{"LastFilePath", ""};
constexpr std::array<Key, 4> Files{
    {{"LastFile0", ""}, {"LastFile1", ""}, {"LastFile2", ""}, {"LastFile3", ""}}};
constexpr Key Disconnect{"AutoDisconnect", ""};
constexpr Key SingleColumn{"CSVDateTimeSingleColumn", ""};

}  // namespace

Settings ReadSettings(const SettingsStore& store) {
    const auto read = [&store](const Key& key) {
        return store.Read(Section, key.Name).value_or(key.Default);
    };
    Settings settings;
    settings.PortName = read(Port);
    settings.BaudRate = read(Baud);
    settings.AddressBookPath = read(Book);
    settings.LastFilePath = read(FilePath);
    for (std::size_t i = 0; i < Files.size(); ++i) {
        settings.LastFile[i] = read(Files[i]);
    }
    settings.AutoDisconnect = read(Disconnect);
    settings.CSVDateTimeSingleColumn = read(SingleColumn);
    return settings;
}

void SaveSettings(const Settings& settings, SettingsStore& store) {
    const auto write = [&store](const Key& key, const std::string& value) {
        store.Write(Section, key.Name, value);
    };
    write(Port, settings.PortName);
    write(Baud, settings.BaudRate);
    write(Book, settings.AddressBookPath);
    write(FilePath, settings.LastFilePath);
    for (std::size_t i = 0; i < Files.size(); ++i) {
        write(Files[i], settings.LastFile[i]);
    }
    write(Disconnect, settings.AutoDisconnect);
    write(SingleColumn, settings.CSVDateTimeSingleColumn);
}
