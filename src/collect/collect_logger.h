#ifndef ORVIA_COLLECT_COLLECT_LOGGER_H
#define ORVIA_COLLECT_COLLECT_LOGGER_H

#include <functional>

#include "collect/collect_choice.h"
#include "collect/collect_context.h"
#include "collect/collect_progress.h"
#include "collect/collected_logger.h"
#include "console/operation_shape.h"

/// Who follows a collection while a logger is in hand.
struct CollectWatch {
    CollectProgress& progress;
    /// Whether the upload in hand is to end; asked behind each exchange.
    std::function<bool()> stopWanted;
};

/// Collects all records of one logger into the archive: has its radio selected, reads status,
/// clock, and settings if they are not known, uploads, and sets the clock if that is wanted. Shows
/// no box and asks nothing, and clears nothing on the logger. The link is held by the caller, under
/// a step of a walk.
[[nodiscard]] CollectedLogger CollectFrom(const CollectContext& context, const Target& target,
                                          const CollectChoice& choice, const CollectWatch& watch);

#endif  // ORVIA_COLLECT_COLLECT_LOGGER_H
