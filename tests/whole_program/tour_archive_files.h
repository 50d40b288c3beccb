#ifndef ORVIA_TESTS_WHOLE_PROGRAM_TOUR_ARCHIVE_FILES_H
#define ORVIA_TESTS_WHOLE_PROGRAM_TOUR_ARCHIVE_FILES_H

#include <QString>

#include "whole_program/tour.h"

namespace whole_program {

/// A picture of a plot has a good size, and lines in colours.
void CheckPicture(Tour& tour, const QString& path);
/// A drawing of a plot is read through, has lines and names what it shows.
void CheckDrawing(Tour& tour, const QString& path, const QString& name);
/// Two files of records are the same to the byte but for the time at which each was saved.
[[nodiscard]] bool SameRecords(const QString& one, const QString& other);

/// What a report is held against: two figures of the archive's window, and the file of the records.
struct ReportTruth {
    QString Records;
    QString Gaps;
    QString Csv;
};

/// The report's whole period tells what the window does, and of the flow what comes out of the
/// records when it is worked out anew.
void CheckReport(Tour& tour, const QString& path, const ReportTruth& truth);
/// The report's pages tell the same as its file, as far as they can be read here.
void CheckPage(Tour& tour, const QString& pdf, const QString& csv);

}  // namespace whole_program

#endif  // ORVIA_TESTS_WHOLE_PROGRAM_TOUR_ARCHIVE_FILES_H
