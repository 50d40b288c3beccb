#ifndef ORVIA_TESTS_WHOLE_PROGRAM_MEASURE_UPLOADS_H
#define ORVIA_TESTS_WHOLE_PROGRAM_MEASURE_UPLOADS_H

#include <QString>

#include "whole_program/console_run.h"

namespace whole_program {

/// Uploads the history of the first site of `network` at 9600, 38400 and 115200 baud, and prints
/// how much of what the line allows each reached and how long a click waited meanwhile.
void MeasureUploads(const QString& simulator, const QString& network, const Home& home);

}  // namespace whole_program

#endif  // ORVIA_TESTS_WHOLE_PROGRAM_MEASURE_UPLOADS_H
