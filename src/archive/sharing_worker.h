#ifndef ORVIA_ARCHIVE_SHARING_WORKER_H
#define ORVIA_ARCHIVE_SHARING_WORKER_H

#include <memory>
#include <thread>

#include "archive/sharing_rounds.h"
#include "platform/shared_archive.h"

/// The hand-over on a thread of its own, which has connections of its own. It is woken, or wakes
/// behind its pause; in between it costs nothing.
class SharingWorker final : public SharedArchive {
 public:
    explicit SharingWorker(SharingStores stores, const SharingPauses& pauses = {});
    ~SharingWorker() override;
    SharingWorker(const SharingWorker&) = delete;
    SharingWorker& operator=(const SharingWorker&) = delete;

    [[nodiscard]] std::optional<std::string> WhyNot() const override;
    void Share(const ServerPlace& place, const std::string& password,
               const std::string& identity) override;
    void Cease() override;
    [[nodiscard]] SharingStatus Status() const override;
    void Look() override;
    void HandOverAgain() override;
    void Try(const ServerPlace& place, const std::string& password) override;
    [[nodiscard]] std::optional<SharingTrial> Tried() override;
    void ForgetTry() override;
    [[nodiscard]] std::shared_ptr<ArchiveStore> Store() const override { return store_; }

 private:
    class Engine;

    void Begin();

    // A call that a server keeps for ever must not keep the program: the thread owns what it uses.
    const std::shared_ptr<Engine> engine_;
    std::thread thread_;
    std::shared_ptr<ArchiveStore> store_;  ///< of the interface
};

#endif  // ORVIA_ARCHIVE_SHARING_WORKER_H
