#include "collect/collect_round.h"

#include <algorithm>

#include "collect/collect_words.h"
#include "console/client_list.h"

bool CollectRound::Step(const Tell& tell) {
    if (context_.operation.radio.link.ShuttingDown != False) {
        return false;
    }
    if (again_) {
        return StepOnFailed(tell);
    }
    return choice_.Scope == CollectScope::Windows ? StepOnWindows(tell) : StepOnBook(tell);
}

bool CollectRound::StepOnWindows(const Tell& tell) {
    while (slot_ <= context_.windows.UpperBound()) {
        const Target target = WindowInSlot(context_.operation, slot_++);
        if (target.Window) {
            Visit(target, tell);
            return true;
        }
    }
    return false;
}

bool CollectRound::StepOnBook(const Tell& tell) {
    const int number = NextEntry();
    if (number == 0) {
        return false;
    }
    const ClientRadio& entry = context_.book.Entries[number];
    done_.push_back({entry.Name, entry.Channel, entry.Mac});
    VisitEntry(number, tell);
    return true;
}

bool CollectRound::StepOnFailed(const Tell& tell) {
    while (!failed_.empty()) {
        const int number = EntryOf(failed_.front());
        failed_.erase(failed_.begin());
        const bool there =
            number != 0 && (choice_.Scope == CollectScope::WholeBook ||
                            context_.windows.At(context_.book.Entries[number].WindowIndex));
        if (there) {
            VisitEntry(number, tell);
            return true;
        }
    }
    return false;
}

/// Through the window of an entry, which is opened and closed again if there is none.
void CollectRound::VisitEntry(int number, const Tell& tell) {
    const std::int16_t open = context_.book.Entries[number].WindowIndex;
    if (context_.windows.At(open)) {
        Visit(WindowInSlot(context_.operation, open), tell);
        return;
    }
    MainView& view = context_.operation.radio.view;
    const std::int16_t slot = OpenClientWindow(number, context_.book, context_.windows, view,
                                               view.NewClientWindowBehind());
    const Target target = WindowInSlot(context_.operation, slot);
    Visit(target, tell);
    if (IsOpen(context_.operation, target)) {
        const int now = target.Window->ClientIndex();
        target.Window->Unload();
        if (context_.book.Entries.Holds(now) && now <= view.ClientCount()) {
            view.SetClientIcon(now, context_.book.Entries[now].SmallIcon);
        }
    }
}

void CollectRound::Visit(const Target& target, const Tell& tell) {
    ++visited_;
    context_.operation.radio.status.Round(visited_, std::max(visited_, LoggersInAll()));
    const WalkStep step(context_.operation, target.Slot);
    tell(BeginningOfLine(NameOf(target)));
    CollectedLogger result = CollectFrom(context_, target, choice_, watch_);
    tell(ResultText(result) + "\n");
    for (const std::string& said : result.Told) {
        tell("    " + said + "\n");
    }
    Keep(std::move(result));
}

void CollectRound::Keep(CollectedLogger result) {
    const auto before = std::find_if(results_.begin(), results_.end(), [&](const auto& other) {
        return again_ && other.Mac == result.Mac;
    });
    if (before == results_.end()) {
        results_.push_back(std::move(result));
    } else {
        *before = std::move(result);
    }
}

bool CollectRound::TryFailedAgain() {
    failed_.clear();
    for (const CollectedLogger& result : results_) {
        if (!result.IsDone() && result.Outcome != CollectOutcome::NoEntry) {
            failed_.push_back(result.Mac);
        }
    }
    again_ = true;
    visited_ = 0;
    return !failed_.empty();
}

int CollectRound::NextEntry() const {
    for (int number = 1; number <= context_.book.Entries.UpperBound(); ++number) {
        const ClientRadio& entry = context_.book.Entries[number];
        const Identity identity{entry.Name, entry.Channel, entry.Mac};
        if (std::find(done_.begin(), done_.end(), identity) == done_.end()) {
            return number;
        }
    }
    return 0;
}

int CollectRound::EntryOf(const MacAddress& mac) const {
    for (int number = 1; number <= context_.book.Entries.UpperBound(); ++number) {
        if (context_.book.Entries[number].Mac == mac) {
            return number;
        }
    }
    return 0;
}

int CollectRound::LoggersInAll() const {
    if (again_) {
        return visited_ + static_cast<int>(failed_.size());
    }
    return choice_.Scope == CollectScope::Windows ? context_.windows.NumClientWindows
                                                  : context_.book.Entries.UpperBound();
}
