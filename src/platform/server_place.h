#ifndef ORVIA_PLATFORM_SERVER_PLACE_H
#define ORVIA_PLATFORM_SERVER_PLACE_H

#include <cstdint>
#include <string>

/// How safe the way to a database server has to be.
enum class ServerTls {
    Offered,   ///< encrypted if the server can
    Demanded,  ///< encrypted, or not at all
    Checked    ///< encrypted, and the server's certificate holds for its name
};

/// Where an archive that several consoles share is, and as whom it is entered. The password is kept
/// apart from it.
struct ServerPlace {
    static constexpr std::uint16_t UsualPort = 5432;

    std::string Server = {};  ///< name or address, or the folder of a local socket
    std::uint16_t Port = UsualPort;
    std::string Database = {};
    std::string User = {};
    ServerTls Tls = ServerTls::Offered;
    bool operator==(const ServerPlace&) const = default;
};

#endif  // ORVIA_PLATFORM_SERVER_PLACE_H
