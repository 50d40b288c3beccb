// Loggers, settings and uploads of an archive.

#include <QString>
#include <array>
#include <utility>

#include "common/mac_text.h"
#include "platform/qt/sql_store.h"

namespace {

constexpr std::array<std::pair<ArchiveOutcome, const char*>, 3> Outcomes = {
    {{ArchiveOutcome::Complete, "complete"},
     {ArchiveOutcome::Stopped, "stopped"},
     {ArchiveOutcome::Failed, "failed"}}};

std::optional<std::string> OutcomeText(const std::optional<ArchiveOutcome>& outcome) {
    for (const auto& [known, text] : Outcomes) {
        if (outcome == known) {
            return text;
        }
    }
    return std::nullopt;
}

std::optional<ArchiveOutcome> OutcomeOf(const std::string& text) {
    for (const auto& [known, name] : Outcomes) {
        if (text == name) {
            return known;
        }
    }
    return std::nullopt;
}

std::array<std::uint8_t, 6> MacOf(const std::string& text) {
    std::array<std::uint8_t, 6> mac = {};
    const QByteArray bytes = QByteArray::fromHex(QByteArray::fromStdString(text));
    for (std::size_t i = 0; i < mac.size() && static_cast<qsizetype>(i) < bytes.size(); ++i) {
        mac[i] = static_cast<std::uint8_t>(bytes[static_cast<qsizetype>(i)]);
    }
    return mac;
}

ArchiveLogger LoggerRow(const SqlRows& row) {
    return {.Id = row->Integer(0),
            .Mac = MacOf(row->Text(1)),
            .Name = row->Text(2),
            .Records = row->Integer(3),
            .Uploads = row->Integer(4),
            .Revision = row->Integer(5)};
}

ArchiveUpload UploadRow(const SqlRows& row) {
    ArchiveUpload upload{
        .Id = row->Integer(0), .Logger = row->Integer(1), .Begin = row->Integer(2)};
    if (!row->IsNull(3)) {
        upload.End = row->Integer(3);
    }
    upload.Outcome = OutcomeOf(row->Text(4));
    upload.Firmware = static_cast<std::int32_t>(row->Integer(5));
    upload.Name = row->Text(6);
    upload.Settings = row->Integer(7);
    upload.Said = row->Integer(8);
    upload.Received = row->Integer(9);
    upload.Origin = row->Text(10);
    return upload;
}

ArchiveSettings SettingsRow(const SqlRows& row) {
    const auto number = [&row](int column) {
        return static_cast<std::int32_t>(row->Integer(column));
    };
    return {.Id = row->Integer(0),
            .Image = row->Blob(1),
            .Firmware = number(2),
            .AnalogChannels = number(3),
            .PulseChannels = number(4),
            .SampleOnDemand = number(5),
            .FlowDecimals = number(6),
            .VelocityDecimals = number(7),
            .EquationOffset = row->Real(8),
            .EquationExponent = row->Real(9),
            .EquationMultiplier = row->Real(10),
            .DeviceName = row->Text(11),
            .Points = {}};
}

#define ORVIA_OWED                                                                        \
    "LEFT JOIN handed ON handed.target = CAST(? AS TEXT) AND handed.upload = uploads.id " \
    "WHERE handed.upload IS NULL OR handed.received <> uploads.received OR "              \
    "(handed.ended IS NULL AND uploads.ended IS NOT NULL)"

constexpr const char* AllLoggers =
    "SELECT id, mac, CAST(name AS BLOB), records, uploads, revision FROM loggers "
    "ORDER BY name, id";
#define ORVIA_LOGGER_BY_MAC                                                        \
    "SELECT id, mac, CAST(name AS BLOB), records, uploads, revision FROM loggers " \
    "WHERE mac = CAST(? AS TEXT)"
#define ORVIA_LOGGER_BY_ID \
    "SELECT id, mac, CAST(name AS BLOB), records, uploads, revision FROM loggers WHERE id = ?"

constexpr const char* LoggerByMac = ORVIA_LOGGER_BY_MAC;
constexpr const char* LoggerById = ORVIA_LOGGER_BY_ID;
// Whoever else holds it is waited for; what is read then is what they left.
constexpr const char* HeldLoggerByMac = ORVIA_LOGGER_BY_MAC " FOR UPDATE";
constexpr const char* HeldLoggerById = ORVIA_LOGGER_BY_ID " FOR UPDATE";

#undef ORVIA_LOGGER_BY_MAC
#undef ORVIA_LOGGER_BY_ID

constexpr const char* InsertLogger =
    "INSERT INTO loggers(mac, name, records, uploads, revision) "
    "VALUES(CAST(? AS TEXT), CAST(? AS TEXT), ?, ?, ?) RETURNING id";
constexpr const char* ChangeLogger =
    "UPDATE loggers SET name = CAST(? AS TEXT), records = ?, uploads = ?, revision = ? "
    "WHERE id = ?";

constexpr const char* SettingsOfLogger =
    "SELECT id, image, firmware, analog_channels, pulse_channels, sample_on_demand, "
    "flow_decimals, velocity_decimals, equation_offset, equation_exponent, equation_multiplier, "
    "CAST(device AS BLOB) FROM settings WHERE logger = ? ORDER BY id";
constexpr const char* PointsOfSettings =
    "SELECT level, flow FROM points WHERE settings = ? ORDER BY number";
constexpr const char* InsertSettings =
    "INSERT INTO settings(logger, image, firmware, analog_channels, pulse_channels, "
    "sample_on_demand, flow_decimals, velocity_decimals, equation_offset, equation_exponent, "
    "equation_multiplier, device) VALUES(?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, CAST(? AS TEXT)) "
    "RETURNING id";
constexpr const char* InsertPoint =
    "INSERT INTO points(settings, number, level, flow) VALUES(?, ?, ?, ?)";

#define ORVIA_UPLOAD_COLUMNS                                               \
    "SELECT uploads.id, logger, begun, uploads.ended, outcome, firmware, " \
    "CAST(name AS BLOB), settings, said, uploads.received, origin FROM uploads "

constexpr const char* UploadsOfLogger = ORVIA_UPLOAD_COLUMNS "WHERE logger = ? ORDER BY begun";
constexpr const char* UploadOfOrigin =
    ORVIA_UPLOAD_COLUMNS "WHERE logger = ? AND origin = CAST(? AS TEXT)";
// Something of it is missing there, or its end is.
constexpr const char* OwedUploads = ORVIA_UPLOAD_COLUMNS ORVIA_OWED " ORDER BY begun LIMIT ?";
constexpr const char* OwedCount = "SELECT count(*) FROM uploads " ORVIA_OWED;

#undef ORVIA_UPLOAD_COLUMNS

constexpr const char* NoteHanded =
    "INSERT INTO handed(target, upload, received, ended) VALUES(CAST(? AS TEXT), ?, ?, ?) "
    "ON CONFLICT(target, upload) DO UPDATE SET received = excluded.received, "
    "ended = excluded.ended";
constexpr const char* InsertUpload =
    "INSERT INTO uploads(logger, begun, ended, outcome, firmware, name, settings, said, received, "
    "origin) VALUES(?, ?, ?, CAST(? AS TEXT), ?, CAST(? AS TEXT), ?, ?, ?, CAST(? AS TEXT)) "
    "RETURNING id";
constexpr const char* ChangeUpload =
    "UPDATE uploads SET ended = ?, outcome = CAST(? AS TEXT), received = ? WHERE id = ?";

}  // namespace

SqlStatement& SqlStore::Prepared(const char* text) {
    if (!statements_) {
        throw ArchiveFault(ArchiveTrouble::Other, "The archive is not open.");
    }
    return (*statements_)[text];
}

std::vector<ArchiveLogger> SqlStore::Loggers() {
    std::vector<ArchiveLogger> loggers;
    for (SqlRows rows(Prepared(AllLoggers)); rows.Next();) {
        loggers.push_back(LoggerRow(rows));
    }
    return loggers;
}

std::optional<ArchiveLogger> SqlStore::FindLogger(const std::array<std::uint8_t, 6>& mac) {
    SqlRows rows(Prepared(HoldsLoggers() ? HeldLoggerByMac : LoggerByMac), MacText(mac));
    return rows.Next() ? std::optional(LoggerRow(rows)) : std::nullopt;
}

std::optional<ArchiveLogger> SqlStore::LoggerOf(std::int64_t id) {
    SqlRows rows(Prepared(HoldsLoggers() ? HeldLoggerById : LoggerById), id);
    return rows.Next() ? std::optional(LoggerRow(rows)) : std::nullopt;
}

void SqlStore::AddLogger(ArchiveLogger& logger) {
    SqlRows rows(Prepared(InsertLogger), MacText(logger.Mac), logger.Name, logger.Records,
                 logger.Uploads, logger.Revision);
    static_cast<void>(rows.Next());
    logger.Id = rows->Integer(0);
}

void SqlStore::UpdateLogger(const ArchiveLogger& logger) {
    Prepared(ChangeLogger)
        .Run(logger.Name, logger.Records, logger.Uploads, logger.Revision, logger.Id);
}

void SqlStore::DeleteLogger(std::int64_t logger) {
    Prepared("DELETE FROM points WHERE settings IN (SELECT id FROM settings WHERE logger = ?)")
        .Run(logger);
    Prepared("DELETE FROM settings WHERE logger = ?").Run(logger);
    Prepared("DELETE FROM handed WHERE upload IN (SELECT id FROM uploads WHERE logger = ?)")
        .Run(logger);
    Prepared("DELETE FROM uploads WHERE logger = ?").Run(logger);
    Prepared("DELETE FROM loggers WHERE id = ?").Run(logger);
}

std::vector<ArchiveSettings> SqlStore::SettingsOf(std::int64_t logger) {
    std::vector<ArchiveSettings> all;
    for (SqlRows rows(Prepared(SettingsOfLogger), logger); rows.Next();) {
        all.push_back(SettingsRow(rows));
    }
    for (ArchiveSettings& settings : all) {
        for (SqlRows rows(Prepared(PointsOfSettings), settings.Id); rows.Next();) {
            settings.Points.push_back({rows->Real(0), rows->Real(1)});
        }
    }
    return all;
}

void SqlStore::AddSettings(std::int64_t logger, ArchiveSettings& settings) {
    {
        SqlRows rows(Prepared(InsertSettings), logger, settings.Image, settings.Firmware,
                     settings.AnalogChannels, settings.PulseChannels, settings.SampleOnDemand,
                     settings.FlowDecimals, settings.VelocityDecimals, settings.EquationOffset,
                     settings.EquationExponent, settings.EquationMultiplier, settings.DeviceName);
        static_cast<void>(rows.Next());
        settings.Id = rows->Integer(0);
    }
    std::int32_t number = 0;
    for (const ArchivePoint& point : settings.Points) {
        Prepared(InsertPoint).Run(settings.Id, ++number, point.Level, point.Flow);
    }
}

std::vector<ArchiveUpload> SqlStore::UploadsOf(std::int64_t logger) {
    std::vector<ArchiveUpload> uploads;
    for (SqlRows rows(Prepared(UploadsOfLogger), logger); rows.Next();) {
        uploads.push_back(UploadRow(rows));
    }
    return uploads;
}

std::optional<std::int64_t> SqlStore::LastBegin(std::int64_t logger) {
    SqlRows rows(Prepared("SELECT max(begun) FROM uploads WHERE logger = ?"), logger);
    return rows.Next() && !rows->IsNull(0) ? std::optional(rows->Integer(0)) : std::nullopt;
}

std::vector<std::int64_t> SqlStore::UploadsBegunBehind(std::int64_t logger, std::int64_t begin) {
    std::vector<std::int64_t> ids;
    SqlRows rows(Prepared("SELECT id FROM uploads WHERE logger = ? AND begun > ?"), logger, begin);
    while (rows.Next()) {
        ids.push_back(rows->Integer(0));
    }
    return ids;
}

void SqlStore::AddUpload(ArchiveUpload& upload) {
    SqlRows rows(Prepared(InsertUpload), upload.Logger, upload.Begin, upload.End,
                 OutcomeText(upload.Outcome), upload.Firmware, upload.Name, upload.Settings,
                 upload.Said, upload.Received, upload.Origin);
    static_cast<void>(rows.Next());
    upload.Id = rows->Integer(0);
}

void SqlStore::UpdateUpload(const ArchiveUpload& upload) {
    SqlStatement& change = Prepared(ChangeUpload);
    change.Run(upload.End, OutcomeText(upload.Outcome), upload.Received, upload.Id);
    if (change.Changed() != 1) {
        throw ArchiveFault(ArchiveTrouble::Gone, "");
    }
}

std::optional<ArchiveUpload> SqlStore::UploadFrom(std::int64_t logger, const std::string& origin) {
    SqlRows rows(Prepared(UploadOfOrigin), logger, origin);
    return rows.Next() ? std::optional(UploadRow(rows)) : std::nullopt;
}

std::string SqlStore::Identity() {
    SqlRows rows(Prepared("SELECT identity FROM about"));
    return rows.Next() ? rows->Text(0) : std::string();
}

std::vector<ArchiveUpload> SqlStore::UploadsOwed(const std::string& target, int most) {
    std::vector<ArchiveUpload> uploads;
    for (SqlRows rows(Prepared(OwedUploads), target, most); rows.Next();) {
        uploads.push_back(UploadRow(rows));
    }
    return uploads;
}

std::int64_t SqlStore::CountOwed(const std::string& target) {
    SqlRows rows(Prepared(OwedCount), target);
    return rows.Next() ? rows->Integer(0) : 0;
}

void SqlStore::NoteHandedOver(const std::string& target, const ArchiveUpload& upload) {
    Prepared(NoteHanded).Run(target, upload.Id, upload.Received, upload.End);
}

void SqlStore::ForgetHandedOver(const std::string& target) {
    Prepared("DELETE FROM handed WHERE target = CAST(? AS TEXT)").Run(target);
}
