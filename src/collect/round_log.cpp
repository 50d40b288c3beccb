#include "collect/round_log.h"

#include <exception>

#include "archive/archive_transaction.h"
#include "archive/record_moment.h"
#include "collect/plan_settings.h"

namespace {

/// Rounds that wait for an archive; older ones are given up.
constexpr std::size_t MostOwed = 20;
/// Rounds are remembered for two years.
constexpr std::int64_t Remembered = 731LL * 86'400 * 1000;

}  // namespace

void RoundLog::Begin() {
    newest_ = {.Begin = store_.Now()};
    ++number_;
    lineBegins_ = true;
    owed_.push_back({number_, newest_});
    if (owed_.size() > MostOwed) {
        owed_.pop_front();
    }
}

void RoundLog::Append(const std::string& text) {
    for (const char character : text) {
        if (lineBegins_) {
            newest_.Log += MomentText(MomentOf(clock_.Now())) + "  ";
            lineBegins_ = false;
        }
        newest_.Log += character;
        lineBegins_ = character == '\n';
    }
    Changed();
}

void RoundLog::Count(std::int64_t loggers, std::int64_t done) {
    newest_.Loggers = loggers;
    newest_.Done = done;
    Changed();
}

void RoundLog::End(const std::string& digest) {
    newest_.End = store_.Now();
    newest_.Digest = digest;
    Changed();
}

/// The round that runs is owed once more.
void RoundLog::Changed() {
    if (!owed_.empty() && owed_.back().Number == number_) {
        owed_.back().Round = newest_;
    } else {
        owed_.push_back({number_, newest_});
    }
}

void RoundLog::Keep() {
    try {
        while (!owed_.empty()) {
            store_.Open();
            ArchiveTransaction transaction(store_, ArchiveTransaction::Kind::Writing);
            auto& [number, round] = owed_.front();
            store_.KeepRound(round);
            store_.DropRounds(round.Begin - Remembered);
            transaction.Commit();
            if (number == number_) {
                newest_.Id = round.Id;
            }
            owed_.pop_front();
        }
    } catch (const std::exception&) {
        // It stays owed.
        return;
    }
}
