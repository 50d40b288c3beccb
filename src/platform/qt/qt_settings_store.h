#ifndef ORVIA_PLATFORM_QT_QT_SETTINGS_STORE_H
#define ORVIA_PLATFORM_QT_QT_SETTINGS_STORE_H

#include <QSettings>
#include <QString>

#include "platform/host.h"

/// The user's settings: a text file in the user's configuration folder, the registry on Windows.
/// Whatever stands there, reading never fails. Written back when the store goes at the latest.
class QtSettingsStore final : public SettingsStore {
 public:
    QtSettingsStore();
    /// Keeps the settings in a file of the caller's.
    explicit QtSettingsStore(const QString& file);

    [[nodiscard]] std::optional<std::string> Read(const std::string& section,
                                                  const std::string& key) const override;
    void Write(const std::string& section, const std::string& key,
               const std::string& value) override;

    /// The program's per-user configuration folder: the one of the settings file.
    [[nodiscard]] QString Folder() const;

 private:
    QSettings settings_;
};

#endif  // ORVIA_PLATFORM_QT_QT_SETTINGS_STORE_H
