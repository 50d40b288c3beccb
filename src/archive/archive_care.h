#ifndef ORVIA_ARCHIVE_ARCHIVE_CARE_H
#define ORVIA_ARCHIVE_ARCHIVE_CARE_H

#include <cstdint>
#include <functional>
#include <future>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "archive/archive_reader.h"
#include "archive/upload_filer.h"
#include "platform/archive_store.h"

/// How some care of the archive ended.
struct CareResult {
    bool Good = false;
    std::string Text;  ///< for the operator
};

/// Care of the archive that takes long, one at a time, while everything else goes on: a back-up or
/// a check on a thread of its own, a deletion piece by piece. Nothing waits for it but its own end.
class ArchiveCare {
 public:
    /// `filer` may be null.
    ArchiveCare(std::shared_ptr<ArchiveStore> store, const UploadFiler* filer)
        : store_(std::move(store)), filer_(filer) {}
    /// Waits for a back-up or check that runs; a deletion stays where it is.
    ~ArchiveCare() = default;
    ArchiveCare(const ArchiveCare&) = delete;
    ArchiveCare& operator=(const ArchiveCare&) = delete;

    /// Another archive from now on, when nothing is under way.
    void TakeCareOf(std::shared_ptr<ArchiveStore> store, bool shared) {
        store_ = std::move(store);
        shared_ = shared;
    }

    // Begin it, when nothing is under way.
    void BackUp(const std::string& path);
    void Check();
    void Delete(const ArchiveLogger& logger);

    [[nodiscard]] bool Busy() const { return asked_ || result_.valid(); }
    /// What it does, for the operator; empty when nothing is under way.
    [[nodiscard]] std::string Doing() const;
    /// How far a deletion is, 0 to 100; nothing where that cannot be told.
    [[nodiscard]] std::optional<int> PerCent() const;
    /// Whether Cancel ends it: a deletion.
    [[nodiscard]] bool CanCancel() const { return asked_.has_value(); }
    void Cancel();

    /// To be called again and again while it is busy: does a piece of a deletion, and looks whether
    /// the rest is done. Its end is told once.
    [[nodiscard]] std::optional<CareResult> Step();

 private:
    using Work = std::function<CareResult()>;

    void Begin(const std::string& doing, const Work& work);
    [[nodiscard]] CareResult CopyTo(const std::string& path);
    [[nodiscard]] CareResult FaultOf(const ArchiveFault& fault) const;
    [[nodiscard]] std::optional<CareResult> DeleteOn();
    [[nodiscard]] CareResult EndOfDeletion(const std::string& text, bool good);

    std::shared_ptr<ArchiveStore> store_;
    bool shared_ = false;  ///< it is on a server
    const UploadFiler* filer_;
    std::string doing_;
    std::future<CareResult> result_;
    std::optional<ArchiveLogger> asked_;  ///< to be deleted
    std::int64_t left_ = 0;               ///< of its records
    bool cancelled_ = false;
    int locked_ = 0;  ///< steps in which another program held the archive
};

#endif  // ORVIA_ARCHIVE_ARCHIVE_CARE_H
