#ifndef ORVIA_COLLECT_COLLECT_WALK_H
#define ORVIA_COLLECT_COLLECT_WALK_H

#include "collect/collect_round.h"
#include "collect/digest.h"
#include "console/operation_log.h"

/// "Collect History from All Client Windows": uploads the history of each into the archive, without
/// viewer or questions, and tells in the log how it went. A walk as the others over all windows
/// are; cancelled, it ends the upload in hand too. Nothing is ever cleared on a logger. Below the
/// last line stands what needs a person, if something does.
void CollectFromAll(const CollectContext& context, const CollectChoice& choice,
                    const DigestLimits& limits, WalkLog& log, CollectProgress& progress);

#endif  // ORVIA_COLLECT_COLLECT_WALK_H
