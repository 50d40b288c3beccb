#ifndef ORVIA_CLIENT_INFORMATION_H
#define ORVIA_CLIENT_INFORMATION_H

#include <string>

#include "client/client_panel.h"
#include "logger/logger_state.h"

// The labels that tell what is known of a logger beside its readings.

/// Time of an alarm (0 or 1) in a 12-hour clock, as "1:05:09 PM".
[[nodiscard]] std::string AlarmText(const LoggerRecord& record, int alarm);

/// Shows clock, name, logging, interval, warm-up, number of records and alarms.
void ShowSettings(const LoggerRecord& record, ClientPanel& panel);

/// Shows the logging state and the number of records.
void ShowStatus(const LoggerRecord& record, ClientPanel& panel);

/// Shows the logger's clock.
void ShowLoggerTime(const LoggerRecord& record, ClientPanel& panel);

/// Empties every label of a reading or of information.
void BlankDisplay(ClientPanel& panel);

#endif  // ORVIA_CLIENT_INFORMATION_H
