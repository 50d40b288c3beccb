#include "archive/archive_care.h"

#include <chrono>
#include <exception>
#include <filesystem>
#include <system_error>

#include "archive/archive_list.h"
#include "archive/archive_words.h"
#include "common/file_path.h"
#include "common/number_text.h"
#include "common/path_text.h"
#include "common/text.h"

namespace {

/// Steps that a deletion tries again while another program holds the archive.
constexpr int MostLocked = 100;
constexpr int Hundred = 100;

CareResult ResultOfCheck(const std::vector<std::string>& wrong) {
    if (wrong.empty()) {
        return {.Good = true, .Text = "Checked: the archive holds together."};
    }
    std::string text = "The archive does not hold together:";
    text.append(LineBreak);
    for (const std::string& line : wrong) {
        text.append(LineBreak).append(LoggerLabel(line));
    }
    text.append(LineBreak).append(LineBreak);
    return {.Good = false,
            .Text = text +
                    "Put a back-up in its place, or move it elsewhere: a new archive is made "
                    "with the next upload."};
}

}  // namespace

void ArchiveCare::BackUp(const std::string& path) {
    Begin("Backing up...", [this, path] { return CopyTo(path); });
}

CareResult ArchiveCare::CopyTo(const std::string& path) {
    namespace fs = std::filesystem;
    std::error_code failed;
    if (fs::equivalent(FilePath(path), FilePath(store_->Place()), failed)) {
        return {.Good = false, .Text = "That file is the archive itself. Choose another name."};
    }
    // A back-up that is replaced stays until the new one is whole.
    const std::string fresh = path + ".new";
    fs::remove(FilePath(fresh), failed);
    store_->BackUp(fresh, [] {});
    fs::rename(FilePath(fresh), FilePath(path), failed);
    if (failed) {
        const std::string why = failed.message();
        fs::remove(FilePath(fresh), failed);
        throw ArchiveFault(ArchiveTrouble::NoFolder, path + ": " + why);
    }
    return {.Good = true, .Text = "Backed up to " + path};
}

void ArchiveCare::Check() {
    Begin("Checking...", [this] { return ResultOfCheck(store_->Check([] {})); });
}

void ArchiveCare::Begin(const std::string& doing, const Work& work) {
    doing_ = doing;
    result_ = std::async(std::launch::async, [this, work] {
        try {
            return work();
        } catch (const ArchiveFault& fault) {
            return FaultOf(fault);
        } catch (const std::exception& fault) {
            return FaultOf(ArchiveFault(ArchiveTrouble::Other, fault.what()));
        }
    });
}

CareResult ArchiveCare::FaultOf(const ArchiveFault& fault) const {
    const auto words = shared_ ? SharedAccessText : AccessText;
    return {.Good = false, .Text = words(fault.Kind(), store_->Place(), fault.what())};
}

void ArchiveCare::Delete(const ArchiveLogger& logger) {
    doing_ = "Deleting " + LoggerLabel(logger.Name) + "...";
    asked_ = logger;
    left_ = logger.Records;
    cancelled_ = false;
    locked_ = 0;
}

std::string ArchiveCare::Doing() const {
    return Busy() ? doing_ : std::string();
}

std::optional<int> ArchiveCare::PerCent() const {
    if (!asked_ || asked_->Records <= 0) {
        return std::nullopt;
    }
    return static_cast<int>(Hundred * (asked_->Records - left_) / asked_->Records);
}

void ArchiveCare::Cancel() {
    cancelled_ = asked_.has_value();
}

std::optional<CareResult> ArchiveCare::Step() {
    if (asked_) {
        return DeleteOn();
    }
    if (!result_.valid() ||
        result_.wait_for(std::chrono::seconds(0)) == std::future_status::timeout) {
        return std::nullopt;
    }
    return result_.get();
}

std::optional<CareResult> ArchiveCare::DeleteOn() {
    if (cancelled_) {
        return EndOfDeletion(
            "Deleting was cancelled: " + IntegerToText(left_) + " records are left.", true);
    }
    if (filer_ != nullptr && filer_->Owes()) {
        return std::nullopt;  // an upload goes first
    }
    try {
        store_->Open();
        const Deletion now = DeletePiece(*store_, *asked_);
        locked_ = 0;
        left_ = now.Left;
        switch (now.Now) {
            case Deletion::State::GoesOn:
                return std::nullopt;
            case Deletion::State::Done:
                return EndOfDeletion("Deleted: " + LoggerLabel(asked_->Name), true);
            default:
                return EndOfDeletion(
                    LoggerLabel(asked_->Name) +
                        " was uploaded meanwhile, so that it was deleted no further.",
                    false);
        }
    } catch (const ArchiveFault& fault) {
        if (fault.Kind() == ArchiveTrouble::Locked && ++locked_ < MostLocked) {
            return std::nullopt;
        }
        return EndOfDeletion(FaultOf(fault).Text, false);
    }
}

CareResult ArchiveCare::EndOfDeletion(const std::string& text, bool good) {
    asked_.reset();
    return {.Good = good, .Text = text};
}
