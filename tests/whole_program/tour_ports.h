#ifndef ORVIA_TESTS_WHOLE_PROGRAM_TOUR_PORTS_H
#define ORVIA_TESTS_WHOLE_PROGRAM_TOUR_PORTS_H

#include "whole_program/tour.h"

namespace whole_program {

/// The main window's last line comes to end so: what was done, without the time before it.
void CheckStatus(Tour& tour, const QString& end);

/// Opens the console, whose dialog to connect is cancelled.
void OpenUnconnected(Tour& tour);

/// Connects by `port`, chosen among the settings, and reads what the box says beside the told.
void ExpectRefusal(Tour& tour, const QString& port, const QString& picture,
                   const QStringList& reasons);

}  // namespace whole_program

#endif  // ORVIA_TESTS_WHOLE_PROGRAM_TOUR_PORTS_H
