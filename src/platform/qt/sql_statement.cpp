#include "platform/qt/sql_statement.h"

#include <QByteArray>
#include <QFileInfo>
#include <QStringList>
#include <QUrl>

#include "platform/qt/text_qt.h"

namespace {

// What the engine answers, without the finer causes in the upper bits.
constexpr int CauseMask = 0xFF;
constexpr int Busy = 5;
constexpr int TableLocked = 6;
constexpr int ReadOnlyFile = 8;
constexpr int InputOutput = 10;
constexpr int Corrupt = 11;
constexpr int DiskFull = 13;
constexpr int CannotOpen = 14;
constexpr int NotADatabase = 26;

/// A file that is there but cannot be opened may not be written, or nothing beside it.
ArchiveTrouble TroubleOfOpening(const QString& file) {
    const QFileInfo info(file);
    return info.exists() ? ArchiveTrouble::ReadOnly : ArchiveTrouble::NoFolder;
}

ArchiveTrouble TroubleOf(int cause, const QString& file) {
    switch (cause) {
        case Busy:
        case TableLocked:
            return ArchiveTrouble::Locked;
        case ReadOnlyFile:
            return ArchiveTrouble::ReadOnly;
        // A quota that is used up comes as this.
        case InputOutput:
        case DiskFull:
            return ArchiveTrouble::Full;
        case Corrupt:
            return ArchiveTrouble::Damaged;
        case CannotOpen:
            return TroubleOfOpening(file);
        case NotADatabase:
            return ArchiveTrouble::Foreign;
        default:
            return ArchiveTrouble::Other;
    }
}

QString NameOf(int position) {
    return QStringLiteral(":v%1_").arg(position);
}

/// The text with a name in the place of each question mark.
QString Named(const char* text) {
    QString named;
    int position = 0;
    for (const QChar one : QString::fromUtf8(text)) {
        named += one == QLatin1Char('?') ? NameOf(position++) : QString(one);
    }
    return named;
}

}  // namespace

ArchiveFault FaultOf(const QSqlError& error, const QString& file) {
    const int cause = error.nativeErrorCode().toInt() & CauseMask;
    return {TroubleOf(cause, file),
            FromQt(error.databaseText().isEmpty() ? error.driverText() : error.databaseText())};
}

SqlStatement::SqlStatement(const QSqlDatabase& database, const char* text)
    : query_(database), file_(QUrl(database.databaseName()).toLocalFile()) {
    query_.setForwardOnly(true);
    if (!query_.prepare(Named(text))) {
        throw FaultOf(query_.lastError(), file_);
    }
}

const QString& SqlStatement::Placeholder(int position) {
    static thread_local QStringList names;
    while (names.size() <= position) {
        names += NameOf(static_cast<int>(names.size()));
    }
    return names[position];
}

void SqlStatement::Execute() {
    if (!query_.exec()) {
        const ArchiveFault fault = FaultOf(query_.lastError(), file_);
        query_.finish();
        throw fault;
    }
}

bool SqlStatement::Next() {
    if (query_.next()) {
        return true;
    }
    if (query_.lastError().isValid()) {
        throw FaultOf(query_.lastError(), file_);
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
    return query_.value(column).toByteArray().toStdString();
}

Bytes SqlStatement::Blob(int column) const {
    const QByteArray bytes = query_.value(column).toByteArray();
    return {bytes.begin(), bytes.end()};
}

/// As bytes, so that none is lost that is no UTF-8; the statement casts them to a text.
QVariant SqlStatement::Variant(const std::string& text) {
    return QVariant(QByteArray(text.data(), static_cast<qsizetype>(text.size())));
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
        statement = std::make_unique<SqlStatement>(database_, text);
    }
    return *statement;
}

std::int64_t AskSql(const QSqlDatabase& database, const char* text) {
    SqlStatement statement(database, text);
    SqlRows rows(statement);
    return rows.Next() ? rows->Integer(0) : 0;
}
