#include "archive/sharing_words.h"

#include "archive/archive_words.h"
#include "common/number_text.h"
#include "common/text.h"

namespace {

std::string Uploads(std::int64_t count) {
    return IntegerToText(count) + (count == 1 ? " upload" : " uploads");
}

/// " 3 uploads wait for it." where that is known.
std::string WaitingText(const SharingStatus& status, const std::string& how) {
    if (!status.Waiting) {
        return {};
    }
    return " " + Uploads(*status.Waiting) + (*status.Waiting == 1 ? " waits" : " wait") + how;
}

/// A fault: what the console knows of it, and the server's own words in a line below.
std::string Why(ArchiveTrouble kind, const std::string& words) {
    std::string text = WhatIsWrongThere(kind);
    if (!words.empty()) {
        text.append(LineBreak).append(words);
    }
    return text;
}

std::string AwayText(const SharingStatus& status, const std::string& since) {
    std::string text = "The shared archive cannot be reached";
    text.append(since.empty() ? "" : " since ").append(since);
    if (status.Kind != ArchiveTrouble::Away) {
        return text.append(": ").append(Why(status.Kind, status.Words));
    }
    text.append(".");
    return status.Words.empty() ? text : text.append(LineBreak).append(status.Words);
}

/// A server that answers, if only to refuse, is not out of reach.
std::string LineOfLoss(ArchiveTrouble kind) {
    if (kind == ArchiveTrouble::Away || kind == ArchiveTrouble::Other) {
        return "The shared archive cannot be reached: uploads are kept on this computer, and "
               "handed over later";
    }
    return "The shared archive cannot be entered: " + WhatIsWrongThere(kind) +
           " Uploads are kept on this computer, and handed over later";
}

}  // namespace

std::string StatusText(const SharingStatus& status, const std::string& since) {
    switch (status.State) {
        case SharingState::Off:
            return "The archive is not shared.";
        case SharingState::Begins:
            return "The server is being asked...";
        case SharingState::Done:
            return "All uploads are handed over.";
        case SharingState::Waits:
            return "The server answers." + WaitingText(status, " and are being handed over.");
        case SharingState::ReadOnly:
            return "This user may only read the shared archive." +
                   WaitingText(status, " for one who may file.");
        case SharingState::Stuck:
            return "The server answers, but does not take what is handed over: " +
                   Why(status.Kind, status.Words) + std::string(LineBreak) +
                   std::string(TrimLeft(WaitingText(status, ".")));
        default:
            return AwayText(status, since) + std::string(LineBreak) +
                   std::string(TrimLeft(WaitingText(status,
                                                    ", and are handed over by themselves "
                                                    "when it is back.")));
    }
}

std::string TrialText(const SharingTrial& trial) {
    if (!trial.Good) {
        return "This does not work: " + Why(trial.Kind, trial.Words);
    }
    const std::string loggers =
        IntegerToText(trial.Loggers) + (trial.Loggers == 1 ? " logger" : " loggers");
    return trial.MayFile ? "This works. The shared archive has " + loggers + "."
                         : "The shared archive has " + loggers +
                               ", but this user may only read it: uploads stay on this computer.";
}

std::optional<SharingLine> LineBetween(SharingState told, const SharingStatus& now) {
    switch (now.State) {
        case SharingState::Away:
            return SharingLine{LineOfLoss(now.Kind), false};
        case SharingState::Stuck:
            return SharingLine{"The shared archive does not take what is handed over: " +
                                   WhatIsWrongThere(now.Kind) +
                                   " Uploads are kept on this computer",
                               false};
        case SharingState::ReadOnly:
            return SharingLine{
                "This user may only read the shared archive: uploads stay on this "
                "computer",
                false};
        case SharingState::Done:
        case SharingState::Waits:
            if (told == SharingState::Away) {
                return SharingLine{"The shared archive is back" +
                                   (now.Waiting.value_or(0) == 0
                                        ? std::string()
                                        : ": " + Uploads(*now.Waiting) + " to be handed over")};
            }
            if (told == SharingState::Stuck || told == SharingState::ReadOnly) {
                return SharingLine{"The shared archive takes uploads again"};
            }
            return std::nullopt;
        default:
            return std::nullopt;
    }
}

std::string NoticeText(const SharingStatus& status, const std::string& since) {
    std::string text = status.State == SharingState::Away
                           ? AwayText(status, since)
                           : "The server of the shared archive is being asked...";
    text.append(LineBreak).append(LineBreak);
    return text.append("\"This Computer\" shows what was collected here.");
}
