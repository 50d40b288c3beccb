#ifndef ORVIA_PLATFORM_QT_SQL_STATEMENT_H
#define ORVIA_PLATFORM_QT_SQL_STATEMENT_H

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QStringList>
#include <QVariant>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "common/bytes.h"
#include "platform/qt/sql_dialect.h"

/// A statement that is prepared once and run often, with values bound to it.
class SqlStatement {
 public:
    /// The dialect outlives it.
    SqlStatement(const QSqlDatabase& database, const char* text, SqlDialect& dialect);

    /// Binds the values in their order and runs it.
    template <typename... Values>
    void Run(const Values&... values) {
        [[maybe_unused]] int position = 0;
        (Bind(position++, values), ...);
        Execute();
    }

    /// Binds one value, from 0.
    template <typename Value>
    void Bind(int position, const Value& value) {
        query_.bindValue(places_.at(position), Variant(value));
    }

    /// Steps to the next row; false behind the last.
    [[nodiscard]] bool Next();
    [[nodiscard]] std::int64_t Integer(int column) const;
    [[nodiscard]] double Real(int column) const;
    [[nodiscard]] bool IsNull(int column) const { return query_.isNull(column); }
    [[nodiscard]] std::string Text(int column) const;
    [[nodiscard]] Bytes Blob(int column) const;
    /// Rows that it changed.
    [[nodiscard]] int Changed() const { return query_.numRowsAffected(); }
    /// Lets go of the rows that were not asked for.
    void Finish() { query_.finish(); }

 private:
    [[nodiscard]] static QVariant Variant(std::int64_t value) {
        return QVariant(static_cast<qlonglong>(value));
    }
    [[nodiscard]] static QVariant Variant(std::int32_t value) { return QVariant(value); }
    [[nodiscard]] static QVariant Variant(std::uint32_t value) {
        return QVariant(static_cast<qlonglong>(value));
    }
    [[nodiscard]] static QVariant Variant(double value) { return QVariant(value); }
    [[nodiscard]] QVariant Variant(const std::string& text) const {
        return QVariant(dialect_->KeptText(text));
    }
    [[nodiscard]] static QVariant Variant(const Bytes& bytes);
    [[nodiscard]] static QVariant Variant(const QString& text) { return QVariant(text); }
    template <typename T>
    [[nodiscard]] QVariant Variant(const std::optional<T>& value) const {
        return value ? Variant(*value) : QVariant();
    }
    /// The text with a name in the place of each question mark. To bind by position the driver
    /// would make the name anew each time.
    [[nodiscard]] QString NamePlaces(const QString& text);
    void Execute();

    QSqlQuery query_;
    QStringList places_;
    SqlDialect* dialect_;
};

/// A statement that runs, whose rows are let go of in the end.
class SqlRows {
 public:
    template <typename... Values>
    explicit SqlRows(SqlStatement& statement, const Values&... values) : statement_(statement) {
        statement_.Run(values...);
    }
    ~SqlRows() { statement_.Finish(); }
    SqlRows(const SqlRows&) = delete;
    SqlRows& operator=(const SqlRows&) = delete;

    [[nodiscard]] bool Next() { return statement_.Next(); }
    const SqlStatement* operator->() const { return &statement_; }

 private:
    SqlStatement& statement_;
};

/// The statements of a connection, each prepared when it is first asked for.
class SqlStatements {
 public:
    /// Both outlive it.
    SqlStatements(const QSqlDatabase& database, SqlDialect& dialect)
        : database_(database), dialect_(dialect) {}

    /// `text` is a constant of the program.
    [[nodiscard]] SqlStatement& operator[](const char* text);

 private:
    const QSqlDatabase& database_;
    SqlDialect& dialect_;
    std::map<const char*, std::unique_ptr<SqlStatement>> statements_;
};

/// Runs one statement once, on a file.
template <typename... Values>
void RunSql(const QSqlDatabase& database, const char* text, const Values&... values) {
    SqliteDialect dialect(database);
    SqlStatement(database, text, dialect).Run(values...);
}

/// The first column of the first row, as a number; 0 if there is none.
[[nodiscard]] std::int64_t AskSql(const QSqlDatabase& database, const char* text);
[[nodiscard]] std::int64_t AskSql(const QSqlDatabase& database, const char* text,
                                  SqlDialect& dialect);

#endif  // ORVIA_PLATFORM_QT_SQL_STATEMENT_H
