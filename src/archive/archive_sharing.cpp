#include "archive/archive_sharing.h"

#include "archive/sharing_words.h"
#include "common/text.h"

void ArchiveSharing::Begin() {
    if (outside_.Shared == nullptr || outside_.Archive == nullptr) {
        return;
    }
    choice_ = ReadSharing(outside_.Store);
    if (choice_.On && !outside_.Shared->WhyNot()) {
        Start(std::nullopt);
    }
}

void ArchiveSharing::Choose(const SharingChoice& choice,
                            const std::optional<std::string>& password) {
    if (choice.Place != choice_.Place) {
        KeepSharedIdentity("", outside_.Store);
    }
    choice_ = choice;
    KeepSharing(choice_, outside_.Store);
    question_.reset();
    keyringWords_.clear();
    awaySince_.clear();
    seen_ = told_ = SharingState::Off;
    if (choice_.On) {
        Start(password);
    } else {
        outside_.Shared->Cease();
    }
}

/// Gets the password, and shares. A keyring that does not answer leaves it to the user's file.
void ArchiveSharing::Start(const std::optional<std::string>& password) {
    if (password || !choice_.Keyring || outside_.Passwords == nullptr) {
        Share(choice_.Keyring ? password.value_or("") : "");
        return;
    }
    question_ = std::make_shared<int>();
    outside_.Passwords->Ask(
        PasswordName(choice_.Place),
        [this, question = std::weak_ptr<int>(question_)](const KeeperAnswer& answer) {
            if (!question.expired()) {
                question_.reset();
                keyringWords_ = answer.Done ? "" : answer.Words;
                Share(answer.Password);
            }
        });
}

void ArchiveSharing::Share(const std::string& password) {
    outside_.Shared->Share(choice_.Place, password, ReadSharedIdentity(outside_.Store));
}

std::string ArchiveSharing::StateText() const {
    if (!IsOn()) {
        return StatusText({}, "");
    }
    std::string text = question_ ? "The keyring is being asked for the password..."
                                 : StatusText(outside_.Shared->Status(), awaySince_);
    if (!keyringWords_.empty()) {
        text.append(LineBreak).append("The keyring does not answer: ").append(keyringWords_);
    }
    return text;
}

std::string ArchiveSharing::NoticeText() const {
    return ::NoticeText(outside_.Shared->Status(), awaySince_);
}

std::optional<std::string> ArchiveSharing::Tick() {
    if (!IsOn()) {
        return std::nullopt;
    }
    const SharingStatus now = outside_.Shared->Status();
    if (now.State != seen_) {
        See(now);
    }
    const bool settled = now.State != SharingState::Off && now.State != SharingState::Begins;
    if (!settled || now.State == told_ || status_.Busy()) {
        return std::nullopt;
    }
    const auto line = LineBetween(told_, now);
    told_ = now.State;
    if (!line) {
        return std::nullopt;
    }
    status_.Came(line->Text, line->Good);
    return line->Text;
}

void ArchiveSharing::See(const SharingStatus& now) {
    seen_ = now.State;
    if (now.State == SharingState::Away) {
        const LocalTime time = outside_.Clock.Now();
        awaySince_ = outside_.Clock.DateText(time) + " " + outside_.Clock.TimeText(time);
    }
    if (!now.Identity.empty() && now.Identity != ReadSharedIdentity(outside_.Store)) {
        KeepSharedIdentity(now.Identity, outside_.Store);
    }
}

void ArchiveSharing::Filed() {
    if (IsOn()) {
        outside_.Shared->Look();
    }
}
