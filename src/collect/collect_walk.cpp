#include "collect/collect_walk.h"

#include <algorithm>

#include "collect/collect_words.h"
#include "common/number_text.h"
#include "console/for_all.h"
#include "link/busy_guard.h"

namespace {

bool Cancelled(const WalkLog& log) {
    return log.LogWindowOpen() && log.CancelRequested();
}

void TellRound(OperationStatus& status, const CollectRound& round, bool wholeWay) {
    int done = 0;
    std::string failed;
    for (const CollectedLogger& logger : round.Results()) {
        done += logger.IsDone() ? 1 : 0;
        if (!logger.IsDone()) {
            failed += (failed.empty() ? "" : ", ") + InOneLine(logger.Name);
        }
    }
    status.RoundOver();
    status.Came(std::string("Collect History for all") + (wholeWay ? "" : " was ended") + ": " +
                    IntegerToText(done) + " of " +
                    IntegerToText(static_cast<std::int64_t>(round.Results().size())) + " done" +
                    (failed.empty() ? "" : ", not " + failed),
                wholeWay && failed.empty());
}

/// True if it came to the last logger.
bool WalkAll(CollectRound& round, WalkLog& log) {
    const auto tell = [&log](const std::string& text) { log.AppendLog(text); };
    while (!Cancelled(log)) {
        if (!round.Step(tell)) {
            return true;
        }
    }
    log.AppendLog("\nOperation Cancelled\n");
    return false;
}

bool HasLoggers(const CollectContext& context, const CollectChoice& choice) {
    if (choice.Scope == CollectScope::Windows) {
        return context.windows.NumClientWindows != 0;
    }
    return context.book.Entries.UpperBound() != 0;
}

void TellNone(const CollectContext& context, const CollectChoice& choice) {
    if (choice.Scope == CollectScope::Windows) {
        TellNoClients(context.operation);
        return;
    }
    context.operation.radio.boxes.Show({.Text = "There are no client radios in the address book!",
                                        .Title = "No Clients",
                                        .Icon = BoxIcon::Information});
}

}  // namespace

void CollectFromAll(const CollectContext& context, const CollectChoice& choice,
                    const DigestLimits& limits, WalkLog& log, CollectProgress& progress) {
    const OperationContext& work = context.operation;
    if (!LinkIsFree(work)) {
        return;
    }
    const BusyGuard busy(work.operations.OperationBusy);
    if (!HasLoggers(context, choice)) {
        TellNone(context, choice);
        return;
    }
    log.OpenLog();
    CollectRound round(context, choice,
                       {.progress = progress, .stopWanted = [&log] { return Cancelled(log); }});
    const bool wholeWay = WalkAll(round, log) && work.radio.link.ShuttingDown == False;
    TellRound(work.radio.status, round, wholeWay);
    if (wholeWay) {
        log.AppendLog("Done\n");
    }
    const std::string digest = DigestText(round.Results(), limits);
    if (!digest.empty()) {
        log.AppendLog("\nThis needs a person:\n" + digest);
    }
    log.SetFoot("");
    log.EndLog();
}
