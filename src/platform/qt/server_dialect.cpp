#include "platform/qt/server_dialect.h"

#include <QRegularExpression>
#include <array>
#include <utility>

#include "platform/qt/server_text.h"
#include "platform/qt/text_qt.h"

namespace {

struct Meaning {
    std::string_view Begins;  ///< the code, or how a class of codes begins
    ArchiveTrouble Kind;
};

// https://www.postgresql.org/docs/15/errcodes-appendix.html
constexpr Meaning Meanings[] = {
    {"55P03", ArchiveTrouble::Locked},    // lock_not_available
    {"57014", ArchiveTrouble::Locked},    // query_canceled: it took too long
    {"40001", ArchiveTrouble::Locked},    // serialization_failure
    {"40P01", ArchiveTrouble::Locked},    // deadlock_detected
    {"23505", ArchiveTrouble::Locked},    // unique_violation: another console was first
    {"42501", ArchiveTrouble::ReadOnly},  // insufficient_privilege
    {"25006", ArchiveTrouble::ReadOnly},  // read_only_sql_transaction
    {"53100", ArchiveTrouble::Full},      // disk_full
    {"53300", ArchiveTrouble::Away},      // too_many_connections
    {"57P0", ArchiveTrouble::Away},       // shutdown, crash, not yet up
    {"25P03", ArchiveTrouble::Away},      // idle_in_transaction_session_timeout
    {"08", ArchiveTrouble::Away},         // connection exceptions
    {"3D000", ArchiveTrouble::Foreign},   // invalid_catalog_name: no such database
    {"3F000", ArchiveTrouble::Foreign},   // invalid_schema_name
    {"42P01", ArchiveTrouble::Foreign},   // undefined_table
    {"42703", ArchiveTrouble::Foreign},   // undefined_column
    {"28", ArchiveTrouble::Refused},      // invalid authorization
    {"XX001", ArchiveTrouble::Damaged},   // data_corrupted
    {"XX002", ArchiveTrouble::Damaged},   // index_corrupted
};

// What a server says that lets nobody in, if it speaks English. One that speaks otherwise counts as
// away, and is told in its own words.
constexpr std::pair<std::string_view, ArchiveTrouble> Refusals[] = {
    {"password", ArchiveTrouble::Refused},
    {"authentication", ArchiveTrouble::Refused},
    {"pg_hba.conf", ArchiveTrouble::Refused},
    {"is not permitted to log in", ArchiveTrouble::Refused},
    {"permission denied for database", ArchiveTrouble::Refused},
    {"does not support SSL", ArchiveTrouble::Refused},
    {"certificate", ArchiveTrouble::Refused},
    {"FATAL:  role ", ArchiveTrouble::Refused},
    {"FATAL:  database ", ArchiveTrouble::Foreign},
};

}  // namespace

ArchiveTrouble TroubleOfState(std::string_view state) {
    if (state.empty()) {
        return ArchiveTrouble::Away;
    }
    for (const Meaning& one : Meanings) {
        if (state.starts_with(one.Begins)) {
            return one.Kind;
        }
    }
    return ArchiveTrouble::Other;
}

ArchiveTrouble TroubleOfConnecting(std::string_view words) {
    for (const auto& [part, kind] : Refusals) {
        if (words.find(part) != std::string_view::npos) {
            return kind;
        }
    }
    return ArchiveTrouble::Away;
}

QString ServerDialect::Said(const char* statement) const {
    static const QRegularExpression textIn(QStringLiteral(R"(CAST\(\? AS TEXT\))"));
    static const QRegularExpression textOut(QStringLiteral(R"(CAST\((\w+) AS BLOB\))"));
    return QString::fromUtf8(statement)
        .replace(textIn, QStringLiteral("convert_from(?, 'UTF8')"))
        .replace(textOut, QStringLiteral("convert_to(\\1, 'UTF8')"));
}

QByteArray ServerDialect::KeptText(const std::string& text) const {
    return QByteArray::fromStdString(ServerText(text));
}

std::string ServerDialect::TextOf(const QByteArray& kept) const {
    return TextOfServer(kept.toStdString());
}

ArchiveFault ServerDialect::FaultOf(const QSqlError& error) {
    failed_ = true;
    const ArchiveTrouble kind = TroubleOfState(FromQt(error.nativeErrorCode()));
    lost_ = lost_ || kind == ArchiveTrouble::Away;
    const QString words = error.databaseText().trimmed();
    return {kind, FromQt(words.isEmpty() ? error.driverText() : words)};
}
