#ifndef ORVIA_ARCHIVE_SHARING_WORDS_H
#define ORVIA_ARCHIVE_SHARING_WORDS_H

#include <optional>
#include <string>

#include "platform/shared_archive.h"

/// How the hand-over stands, for the window of its settings. `since` is when the server went away,
/// in words.
[[nodiscard]] std::string StatusText(const SharingStatus& status, const std::string& since);

/// What came of a try.
[[nodiscard]] std::string TrialText(const SharingTrial& trial);

/// A line for the operator.
struct SharingLine {
    std::string Text;
    bool Good = true;
};

/// What is told when the hand-over, that stood so when it was told of last, stands otherwise.
/// Nothing that goes on, or goes well from the first, is told.
[[nodiscard]] std::optional<SharingLine> LineBetween(SharingState told, const SharingStatus& now);

/// Why there is nothing to show of the shared archive.
[[nodiscard]] std::string NoticeText(const SharingStatus& status, const std::string& since);

#endif  // ORVIA_ARCHIVE_SHARING_WORDS_H
