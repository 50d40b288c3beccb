#include "platform/qt/sql_dialect.h"

#include <QFileInfo>
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

}  // namespace

SqliteDialect::SqliteDialect(const QSqlDatabase& database)
    : SqliteDialect(QUrl(database.databaseName()).toLocalFile()) {}

QString SqliteDialect::Said(const char* statement) const {
    return QString::fromUtf8(statement);
}

QByteArray SqliteDialect::KeptText(const std::string& text) const {
    return {text.data(), static_cast<qsizetype>(text.size())};
}

std::string SqliteDialect::TextOf(const QByteArray& kept) const {
    return kept.toStdString();
}

ArchiveFault SqliteDialect::FaultOf(const QSqlError& error) {
    const int cause = error.nativeErrorCode().toInt() & CauseMask;
    return {TroubleOf(cause, file_),
            FromQt(error.databaseText().isEmpty() ? error.driverText() : error.databaseText())};
}
