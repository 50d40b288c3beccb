#ifndef ORVIA_ARCHIVE_SHARING_SETTINGS_H
#define ORVIA_ARCHIVE_SHARING_SETTINGS_H

#include <optional>
#include <string>

#include "platform/host.h"
#include "platform/server_place.h"

/// What the user has chosen about a shared archive. The password is no part of it.
struct SharingChoice {
    bool On = false;
    ServerPlace Place = {};
    bool Keyring = true;  ///< the desktop keeps the password; if not, the user's file pgpass has it
    bool operator==(const SharingChoice&) const = default;
};

/// What is kept of it between runs: keys of their own, absent until something is chosen.
[[nodiscard]] SharingChoice ReadSharing(const SettingsStore& store);
void KeepSharing(const SharingChoice& choice, SettingsStore& store);

/// What the server's archive told of itself when it was last there; empty if it never was.
[[nodiscard]] std::string ReadSharedIdentity(const SettingsStore& store);
void KeepSharedIdentity(const std::string& identity, SettingsStore& store);

/// The name that the desktop keeps the password under.
[[nodiscard]] std::string PasswordName(const ServerPlace& place);

/// A server's place as it was typed.
struct TypedPlace {
    std::string Server = {};
    std::string Port = {};
    std::string Database = {};
    std::string User = {};
    ServerTls Tls = ServerTls::Offered;
};

enum class PlaceField { Server, Port, Database, User };

/// What is wrong with a field, for the operator.
struct PlaceFlaw {
    PlaceField Field = PlaceField::Server;
    std::string Words;
};

/// The first that is wrong with it; nothing if `place` takes it. Blanks around a field are no part
/// of it.
[[nodiscard]] std::optional<PlaceFlaw> TakePlace(const TypedPlace& typed, ServerPlace& place);

#endif  // ORVIA_ARCHIVE_SHARING_SETTINGS_H
