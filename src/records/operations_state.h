#ifndef ORVIA_RECORDS_OPERATIONS_STATE_H
#define ORVIA_RECORDS_OPERATIONS_STATE_H

#include <cstdint>

#include "common/flag.h"

/// Who holds the link for longer than one exchange.
struct Operations {
    Flag OperationBusy = False;     ///< an operation or a step of a sampling machine runs
    Flag ForAllActive = False;      ///< the operation runs under a walk over all windows
    std::int16_t ForAllWindow = 0;  ///< slot of the window that the walk has come to
};

#endif  // ORVIA_RECORDS_OPERATIONS_STATE_H
