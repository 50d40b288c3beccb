#ifndef ORVIA_PLATFORM_QT_SERVER_RECORDS_H
#define ORVIA_PLATFORM_QT_SERVER_RECORDS_H

#include "platform/qt/sql_store.h"

/// How PostgreSQL is asked for records.
[[nodiscard]] const SqlRecordTexts& ServerRecordTexts();

#endif  // ORVIA_PLATFORM_QT_SERVER_RECORDS_H
