#ifndef ORVIA_PLATFORM_QT_SQL_DIALECT_H
#define ORVIA_PLATFORM_QT_SQL_DIALECT_H

#include <QByteArray>
#include <QSqlDatabase>
#include <QSqlError>
#include <QString>
#include <string>

#include "platform/archive_store.h"

/// What one engine says otherwise than another. Statements are written as SQLite has them: `?`
/// stands for a value; texts go in as `CAST(? AS TEXT)` and come out as `CAST(name AS BLOB)`, as
/// bytes, so that none is lost that is no UTF-8.
class SqlDialect {
 public:
    virtual ~SqlDialect() = default;
    /// A statement as this engine has it.
    [[nodiscard]] virtual QString Said(const char* statement) const = 0;
    /// A text as this engine can keep it, and back.
    [[nodiscard]] virtual QByteArray KeptText(const std::string& text) const = 0;
    [[nodiscard]] virtual std::string TextOf(const QByteArray& kept) const = 0;
    /// What went wrong, as an archive tells it.
    [[nodiscard]] virtual ArchiveFault FaultOf(const QSqlError& error) = 0;
    /// Whether rows are fetched as they are asked for, or all at once.
    [[nodiscard]] virtual bool FetchesRowByRow() const = 0;
};

/// Of an archive in a file.
class SqliteDialect final : public SqlDialect {
 public:
    explicit SqliteDialect(QString file) : file_(std::move(file)) {}
    /// Of the file behind a connection.
    explicit SqliteDialect(const QSqlDatabase& database);

    [[nodiscard]] QString Said(const char* statement) const override;
    [[nodiscard]] QByteArray KeptText(const std::string& text) const override;
    [[nodiscard]] std::string TextOf(const QByteArray& kept) const override;
    [[nodiscard]] ArchiveFault FaultOf(const QSqlError& error) override;
    [[nodiscard]] bool FetchesRowByRow() const override { return true; }

 private:
    const QString file_;
};

#endif  // ORVIA_PLATFORM_QT_SQL_DIALECT_H
