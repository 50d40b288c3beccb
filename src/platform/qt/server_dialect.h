#ifndef ORVIA_PLATFORM_QT_SERVER_DIALECT_H
#define ORVIA_PLATFORM_QT_SERVER_DIALECT_H

#include <string_view>

#include "platform/qt/sql_dialect.h"

/// Of an archive on a server, PostgreSQL. Notes the faults of its connection.
class ServerDialect final : public SqlDialect {
 public:
    [[nodiscard]] QString Said(const char* statement) const override;
    [[nodiscard]] QByteArray KeptText(const std::string& text) const override;
    [[nodiscard]] std::string TextOf(const QByteArray& kept) const override;
    [[nodiscard]] ArchiveFault FaultOf(const QSqlError& error) override;
    /// Only so may statements alternate.
    [[nodiscard]] bool FetchesRowByRow() const override { return false; }

    /// Whether anything went wrong since the last Begin: the server then takes all of it back, and
    /// calls that a commit.
    [[nodiscard]] bool HasFailed() const { return failed_; }
    void Begin() { failed_ = false; }
    /// Whether the connection is of no use any more.
    [[nodiscard]] bool IsLost() const { return lost_; }
    void Connected() { lost_ = failed_ = false; }

 private:
    bool failed_ = false;
    bool lost_ = false;
};

/// What a server's code of five characters means to an archive; one that there is none of comes
/// from a connection that broke.
[[nodiscard]] ArchiveTrouble TroubleOfState(std::string_view state);
/// Why no connection could be made, which has no code, only words.
[[nodiscard]] ArchiveTrouble TroubleOfConnecting(std::string_view words);

#endif  // ORVIA_PLATFORM_QT_SERVER_DIALECT_H
