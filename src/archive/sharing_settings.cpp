#include "archive/sharing_settings.h"

#include <algorithm>
#include <array>
#include <limits>

#include "common/number_text.h"
#include "common/text.h"

namespace {

const std::string Section = "Shared Archive";
constexpr const char* OnKey = "On";
constexpr const char* ServerKey = "Server";
constexpr const char* PortKey = "Port";
constexpr const char* DatabaseKey = "Database";
constexpr const char* UserKey = "User";
constexpr const char* TlsKey = "Encryption";
constexpr const char* PasswordFromKey = "PasswordFrom";
constexpr const char* IdentityKey = "Identity";
constexpr const char* KeyringText = "Keyring";
constexpr const char* FileText = "File";
constexpr std::array<const char*, 3> TlsTexts = {"Offered", "Demanded", "Checked"};

/// Servers take no longer name of a database or user.
constexpr std::size_t LongestName = 63;
constexpr std::size_t LongestServer = 255;

ServerTls TlsOf(const std::string& text) {
    const auto found = std::find(TlsTexts.begin(), TlsTexts.end(), text);
    return found == TlsTexts.end() ? ServerTls::Offered
                                   : static_cast<ServerTls>(found - TlsTexts.begin());
}

std::optional<std::uint16_t> PortOf(std::string_view text) {
    std::int32_t number = 0;
    const bool digits =
        !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
    const bool fits = digits && TextToLong(text, number) && number >= 1 &&
                      number <= std::numeric_limits<std::uint16_t>::max();
    return fits ? std::optional(static_cast<std::uint16_t>(number)) : std::nullopt;
}

bool HasControl(std::string_view text) {
    return std::any_of(text.begin(), text.end(), [](char one) {
        const auto code = static_cast<unsigned char>(one);
        constexpr unsigned char blank = 0x20;
        constexpr unsigned char del = 0x7F;
        return code < blank || code == del;
    });
}

/// What is wrong with the name of something.
std::optional<std::string> FlawOfName(std::string_view name, const std::string& what,
                                      std::size_t longest) {
    if (name.empty()) {
        return "Please enter the " + what + ".";
    }
    if (HasControl(name)) {
        return "The " + what + " has a character in it that cannot be typed.";
    }
    if (name.size() > longest) {
        return "The " + what + " is too long: " + IntegerToText(static_cast<int>(longest)) +
               " characters at most.";
    }
    return std::nullopt;
}

std::optional<std::string> FlawOfServer(std::string_view server) {
    auto flaw = FlawOfName(server, "name or address of the server", LongestServer);
    if (flaw) {
        return flaw;
    }
    // The folder of a local socket may have blanks.
    const bool folder = server.front() == '/';
    if (!folder && server.find_first_of(" ,") != std::string_view::npos) {
        return "The name or address of a server has no blanks or commas in it.";
    }
    if (!folder && server.find("://") != std::string_view::npos) {
        return "Please enter the name or address of the server alone, without \"://\".";
    }
    return std::nullopt;
}

}  // namespace

SharingChoice ReadSharing(const SettingsStore& store) {
    const auto text = [&store](const char* key) { return store.Read(Section, key).value_or(""); };
    return {.On = text(OnKey) == "1",
            .Place = {.Server = text(ServerKey),
                      .Port = PortOf(text(PortKey)).value_or(ServerPlace::UsualPort),
                      .Database = text(DatabaseKey),
                      .User = text(UserKey),
                      .Tls = TlsOf(text(TlsKey))},
            .Keyring = text(PasswordFromKey) != FileText};
}

void KeepSharing(const SharingChoice& choice, SettingsStore& store) {
    const auto write = [&store](const char* key, const std::string& value) {
        store.Write(Section, key, value);
    };
    write(OnKey, choice.On ? "1" : "0");
    write(ServerKey, choice.Place.Server);
    write(PortKey, IntegerToText(choice.Place.Port));
    write(DatabaseKey, choice.Place.Database);
    write(UserKey, choice.Place.User);
    write(TlsKey, TlsTexts[static_cast<std::size_t>(choice.Place.Tls)]);
    write(PasswordFromKey, choice.Keyring ? KeyringText : FileText);
}

std::string ReadSharedIdentity(const SettingsStore& store) {
    return store.Read(Section, IdentityKey).value_or("");
}

void KeepSharedIdentity(const std::string& identity, SettingsStore& store) {
    store.Write(Section, IdentityKey, identity);
}

std::string PasswordName(const ServerPlace& place) {
    return place.User + "@" + place.Server + ":" + IntegerToText(place.Port) + "/" + place.Database;
}

std::optional<PlaceFlaw> TakePlace(const TypedPlace& typed, ServerPlace& place) {
    const std::string_view server = Trim(typed.Server);
    const std::string_view database = Trim(typed.Database);
    const std::string_view user = Trim(typed.User);
    const auto port = PortOf(Trim(typed.Port));
    if (const auto flaw = FlawOfServer(server)) {
        return PlaceFlaw{PlaceField::Server, *flaw};
    }
    if (!port) {
        return PlaceFlaw{PlaceField::Port, "The port is a whole number from 1 to 65535."};
    }
    if (const auto flaw = FlawOfName(database, "name of the database", LongestName)) {
        return PlaceFlaw{PlaceField::Database, *flaw};
    }
    if (const auto flaw = FlawOfName(user, "name of the user", LongestName)) {
        return PlaceFlaw{PlaceField::User, *flaw};
    }
    place = {.Server = std::string(server),
             .Port = *port,
             .Database = std::string(database),
             .User = std::string(user),
             .Tls = typed.Tls};
    return std::nullopt;
}
