#include "whole_program/tour_archive_files.h"

#include <QDateTime>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QStandardPaths>
#include <QXmlStreamReader>
#include <algorithm>
#include <vector>

namespace whole_program {

namespace {

QByteArray Contents(const QString& path) {
    QFile file(path);
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
}

// ----- reports

/// A report as it was saved: fields in quotes where they need them.
struct SavedReport {
    QList<QStringList> Head;
    QStringList Columns;
    QStringList Total;
    int Rows = 0;  ///< in front of the total
};

QStringList FieldsOf(const QString& line) {
    QStringList fields(QString{});
    bool quoted = false;
    for (const QChar c : line) {
        if (c == QLatin1Char('"')) {
            quoted = !quoted;
        } else if (c == QLatin1Char(',') && !quoted) {
            fields << QString();
        } else {
            fields.last() += c;
        }
    }
    return fields;
}

SavedReport ReadReport(const QString& path) {
    SavedReport report;
    for (const QString& line :
         QString::fromUtf8(Contents(path)).split(QStringLiteral("\r\n"), Qt::SkipEmptyParts)) {
        const QStringList fields = FieldsOf(line);
        if (!report.Columns.isEmpty()) {
            report.Total = fields;
            ++report.Rows;
        } else if (fields.size() > 2) {
            report.Columns = fields;
        } else {
            report.Head.append(fields);
        }
    }
    --report.Rows;
    return report;
}

QString Figure(const SavedReport& report, const QString& part, const QString& other) {
    for (int column = 0; column < report.Columns.size(); ++column) {
        const QString& name = report.Columns[column];
        if (name.contains(part) && name.contains(other)) {
            return report.Total.value(column);
        }
    }
    return {};
}

// ----- records

struct FlowRecord {
    qint64 Time = 0;  ///< seconds
    double Flow = 0;
};

/// Times and flows of the viewer's file: date, time, channels, flow.
std::vector<FlowRecord> ReadFlows(const QString& path) {
    constexpr int Headings = 2;
    const QString comma = QStringLiteral(", ");
    const QStringList lines =
        QString::fromUtf8(Contents(path)).split(QStringLiteral("\r\n"), Qt::SkipEmptyParts);
    const auto flow = lines.value(1).split(comma).indexOf(QStringLiteral("Flow (CFS)"));
    std::vector<FlowRecord> records;
    for (const QString& line : lines.mid(Headings)) {
        const QStringList fields = line.split(comma);
        const QDateTime time(QDate::fromString(fields.value(0), QStringLiteral("M/d/yy")),
                             QTime::fromString(fields.value(1), QStringLiteral("HH:mm:ss")),
                             Qt::UTC);
        records.push_back({time.toSecsSinceEpoch(), fields.value(flow).toDouble()});
    }
    return records;
}

struct FlowTruth {
    double Mean = 0;
    double Peak = 0;
    double Volume = 0;  ///< cubic feet, of cubic feet per second
};

/// The records are ten minutes apart, and two seconds at the end; between those is a gap.
FlowTruth TruthOf(const std::vector<FlowRecord>& records) {
    constexpr qint64 TenMinutes = 600;
    constexpr qint64 Fast = 3;
    FlowTruth truth;
    double sum = 0;
    for (std::size_t i = 0; i < records.size(); ++i) {
        sum += records[i].Flow;
        truth.Peak = std::max(truth.Peak, records[i].Flow);
        const qint64 apart = i == 0 ? 0 : records[i].Time - records[i - 1].Time;
        if (apart == TenMinutes || (apart > 0 && apart <= Fast)) {
            truth.Volume +=
                (records[i].Flow + records[i - 1].Flow) / 2 * static_cast<double>(apart);
        }
    }
    truth.Mean = sum / static_cast<double>(records.size());
    return truth;
}

// ----- files alike

/// The first line tells behind the name on which day and at what time the file was saved.
QByteArray WithoutTimeOfSaving(const QByteArray& file) {
    const auto begin = file.indexOf(',');
    const auto end = file.indexOf(',', file.indexOf(',', begin + 1) + 1);
    return begin < 0 || end < begin ? QByteArray() : file.left(begin) + file.mid(end);
}

}  // namespace

void CheckPicture(Tour& tour, const QString& path) {
    constexpr int LeastColoured = 500;  // pixels
    constexpr int Coloured = 60;        // saturation
    const QImage picture(path);
    int coloured = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            coloured += picture.pixelColor(x, y).saturation() >= Coloured ? 1 : 0;
        }
    }
    Tour::Say(QStringLiteral("A picture of %1 by %2 pixels, %3 of them in colours")
                  .arg(picture.width())
                  .arg(picture.height())
                  .arg(coloured));
    tour.Check(picture.width() >= 800 && picture.height() >= 400,
               QStringLiteral("the size of the picture"));
    tour.Check(coloured >= LeastColoured, QStringLiteral("the picture has no lines"));
}

void CheckDrawing(Tour& tour, const QString& path, const QString& name) {
    QXmlStreamReader drawing(Contents(path));
    int lines = 0;
    QString words;
    while (!drawing.atEnd()) {
        const auto token = drawing.readNext();
        const bool starts = token == QXmlStreamReader::StartElement;
        lines += starts && (drawing.name() == QLatin1String("path") ||
                            drawing.name() == QLatin1String("polyline"))
                     ? 1
                     : 0;
        words += token == QXmlStreamReader::Characters ? drawing.text().toString() : QString();
    }
    Tour::Say(QStringLiteral("A drawing of %1 lines").arg(lines));
    tour.Check(!drawing.hasError(), QStringLiteral("the drawing: ") + drawing.errorString());
    tour.Check(lines > 0 && words.contains(name), QStringLiteral("what the drawing shows"));
}

bool SameRecords(const QString& one, const QString& other) {
    const QByteArray bytes = WithoutTimeOfSaving(Contents(one));
    return !bytes.isEmpty() && bytes == WithoutTimeOfSaving(Contents(other));
}

void CheckReport(Tour& tour, const QString& path, const ReportTruth& truth) {
    const SavedReport report = ReadReport(path);
    const std::vector<FlowRecord> records = ReadFlows(truth.Csv);
    const QString volume = Figure(report, QStringLiteral("Flow"), QStringLiteral("Volume"));
    const QString mean = Figure(report, QStringLiteral("Flow"), QStringLiteral("Mean"));
    const QString peak = Figure(report, QStringLiteral("Flow"), QStringLiteral("Maximum"));
    Tour::Say(QStringLiteral("The report by %1 days: flow %2 in the mean, %3 at its peak, %4 cubic "
                             "feet in all; %5 complete")
                  .arg(report.Rows)
                  .arg(mean, peak, volume,
                       Figure(report, QStringLiteral("Complete"), QStringLiteral("Complete"))));
    tour.Check(Figure(report, QStringLiteral("Records"), {}) == truth.Records &&
                   truth.Records.toUInt() == records.size(),
               QStringLiteral("records in the report"));
    tour.Check(Figure(report, QStringLiteral("Gaps"), {}) == truth.Gaps,
               QStringLiteral("gaps in the report"));
    const FlowTruth flow = TruthOf(records);
    tour.Check(flow.Volume > 0, QStringLiteral("the records tell of no flow"));
    tour.CheckFigure(mean, flow.Mean, 1e-3, QStringLiteral("the mean flow of the report"));
    tour.CheckFigure(peak, flow.Peak, 0, QStringLiteral("the peak of the report"));
    tour.CheckFigure(volume, flow.Volume, 1e-3, QStringLiteral("the volume of the report"));
}

void CheckPage(Tour& tour, const QString& pdf, const QString& csv) {
    const QString reader = QStandardPaths::findExecutable(QStringLiteral("pdftotext"));
    if (reader.isEmpty()) {
        Tour::Say(QStringLiteral("The printed report was not read back: there is no pdftotext."));
        return;
    }
    QProcess process;
    process.start(reader, {QStringLiteral("-layout"), pdf, QStringLiteral("-")});
    process.waitForFinished();
    const QString text = QString::fromUtf8(process.readAllStandardOutput());
    const SavedReport report = ReadReport(csv);
    QStringList words = report.Total;
    // When it was made may be a second later.
    for (const QStringList& line : report.Head) {
        words << (line.first() == QLatin1String("Made") ? QString() : line.last());
    }
    words.removeAll(QString());
    for (const QString& word : words) {
        tour.Check(text.contains(word), QStringLiteral("the printed report lacks ") + word);
    }
    Tour::Say(QStringLiteral("The printed report read back: %1 pages, %2 figures and texts of %3")
                  .arg(text.count(QLatin1Char('\f')))
                  .arg(words.size())
                  .arg(report.Total.size() + report.Head.size()));
}

}  // namespace whole_program
