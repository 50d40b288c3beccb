#ifndef ORVIA_ARCHIVE_ARCHIVE_SHARING_H
#define ORVIA_ARCHIVE_ARCHIVE_SHARING_H

#include <memory>
#include <optional>
#include <string>

#include "archive/sharing_settings.h"
#include "platform/host.h"
#include "platform/password_keeper.h"
#include "platform/shared_archive.h"
#include "records/operation_status.h"

/// The sharing of the archive as the user has chosen it: gets the password, has the hand-over run,
/// and tells when the server goes away and when it is back. It never asks, and nothing waits for
/// it.
class ArchiveSharing {
 public:
    /// `outside` may have no shared archive: then nothing is ever shared.
    ArchiveSharing(const Host& outside, OperationStatus& status)
        : outside_(outside), status_(status) {}
    ArchiveSharing(const ArchiveSharing&) = delete;
    ArchiveSharing& operator=(const ArchiveSharing&) = delete;

    /// Shares as it was chosen last.
    void Begin();
    /// Keeps another choice, and shares by it. A password that was typed is given; else the
    /// desktop's keyring is asked, where it is to have it.
    void Choose(const SharingChoice& choice, const std::optional<std::string>& password);

    [[nodiscard]] const SharingChoice& Chosen() const { return choice_; }
    [[nodiscard]] bool IsOn() const {
        return choice_.On && outside_.Shared != nullptr && !outside_.Shared->WhyNot();
    }
    /// How it stands, in words.
    [[nodiscard]] std::string StateText() const;
    /// Why there is nothing to show of the shared archive.
    [[nodiscard]] std::string NoticeText() const;

    /// A tick of the console. A line that is to be told waits for its turn at the status line; it
    /// is given back, for a log.
    std::optional<std::string> Tick();
    /// Something was filed.
    void Filed();

 private:
    void Start(const std::optional<std::string>& password);
    void Share(const std::string& password);
    void See(const SharingStatus& now);

    const Host& outside_;
    OperationStatus& status_;
    SharingChoice choice_;
    std::string keyringWords_;  ///< why the keyring did not answer
    std::string awaySince_;     ///< when the server went away
    SharingState seen_ = SharingState::Off;
    SharingState told_ = SharingState::Off;
    // An answer of the keyring to a question that is no longer asked, or when this is gone, is
    // nobody's.
    std::shared_ptr<int> question_;
};

#endif  // ORVIA_ARCHIVE_ARCHIVE_SHARING_H
