#include "platform/qt/sql_statement.h"

#include <QByteArray>
#include <QSqlError>

SqlStatement::SqlStatement(const QSqlDatabase& database, const char* text, SqlDialect& dialect)
    : query_(database), dialect_(&dialect) {
    if (!database.isOpen()) {
        throw dialect.FaultOf(database.lastError());
    }
    query_.setForwardOnly(dialect.FetchesRowByRow());
    if (!query_.prepare(NamePlaces(dialect.Said(text)))) {
        throw dialect.FaultOf(query_.lastError());
    }
}

QString SqlStatement::NamePlaces(const QString& text) {
    QString named;
    for (const QChar one : text) {
        if (one == QLatin1Char('?')) {
            places_ += QStringLiteral(":v%1_").arg(places_.size());
            named += places_.constLast();
        } else {
            named += one;
        }
    }
    return named;
}

void SqlStatement::Execute() {
    if (!query_.exec()) {
        const ArchiveFault fault = dialect_->FaultOf(query_.lastError());
        query_.finish();
        throw fault;
    }
}

bool SqlStatement::Next() {
    if (query_.next()) {
        return true;
    }
    if (query_.lastError().isValid()) {
        throw dialect_->FaultOf(query_.lastError());
    }
    return false;
}

std::int64_t SqlStatement::Integer(int column) const {
    return query_.value(column).toLongLong();
}

double SqlStatement::Real(int column) const {
    return query_.value(column).toDouble();
}

std::string SqlStatement::Text(int column) const {
    return dialect_->TextOf(query_.value(column).toByteArray());
}

Bytes SqlStatement::Blob(int column) const {
    const QByteArray bytes = query_.value(column).toByteArray();
    return {bytes.begin(), bytes.end()};
}

QVariant SqlStatement::Variant(const Bytes& bytes) {
    // Of no bytes at all the driver would make a null.
    return QVariant(bytes.empty() ? QByteArray("")
                                  : QByteArray(reinterpret_cast<const char*>(bytes.data()),
                                               static_cast<qsizetype>(bytes.size())));
}

SqlStatement& SqlStatements::operator[](const char* text) {
    auto& statement = statements_[text];
    if (!statement) {
        statement = std::make_unique<SqlStatement>(database_, text, dialect_);
    }
    return *statement;
}

std::int64_t AskSql(const QSqlDatabase& database, const char* text) {
    SqliteDialect dialect(database);
    return AskSql(database, text, dialect);
}

std::int64_t AskSql(const QSqlDatabase& database, const char* text, SqlDialect& dialect) {
    SqlStatement statement(database, text, dialect);
    SqlRows rows(statement);
    return rows.Next() ? rows->Integer(0) : 0;
}
