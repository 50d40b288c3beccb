#include "archive/sharing_worker.h"

#include <condition_variable>
#include <mutex>
#include <utility>

#include "archive/archive_transaction.h"

namespace {

/// Whether this user may write there: asks as one does who is about to.
bool MayFile(ArchiveStore& store) {
    const auto trouble = TroubleIn([&store] {
        const ArchiveTransaction transaction(store, ArchiveTransaction::Kind::Writing);
        static_cast<void>(store.FindLogger({}));
    });
    return !trouble || trouble->Kind != ArchiveTrouble::ReadOnly;
}

SharingTrial TryOut(const SharingStores& stores, const SharingTarget& target) {
    SharingTrial trial;
    const auto trouble = TroubleIn([&] {
        const auto store = stores.Server(target.Place, target.Password);
        store->Open();
        trial.Loggers = static_cast<std::int64_t>(store->Loggers().size());
        trial.MayFile = MayFile(*store);
        trial.Good = true;
    });
    return trouble ? SharingTrial{.Kind = trouble->Kind, .Words = trouble->Words} : trial;
}

/// Whether the next round will most likely fare better.
bool MendsItself(ArchiveTrouble kind) {
    return kind == ArchiveTrouble::Locked || kind == ArchiveTrouble::Gone;
}

/// What a turn shows of the hand-over.
SharingStatus StatusBehind(const SharingRounds::Result& result, SharingStatus status) {
    status.Waiting = result.Waiting ? result.Waiting : status.Waiting;
    if (!result.Asked) {
        return status;
    }
    status.Kind = result.Wrong ? result.Wrong->Kind : ArchiveTrouble::Other;
    status.Words = result.Wrong ? result.Wrong->Words : std::string();
    status.Identity = result.Identity.empty() ? status.Identity : result.Identity;
    if (!result.Reached) {
        status.State = SharingState::Away;
    } else if (!result.Wrong || MendsItself(result.Wrong->Kind)) {
        status.State = status.Waiting == 0 ? SharingState::Done : SharingState::Waits;
    } else {
        status.State =
            status.Kind == ArchiveTrouble::ReadOnly ? SharingState::ReadOnly : SharingState::Stuck;
    }
    return status;
}

}  // namespace

/// What the interface and the thread have in common. The thread holds the lock but for the time
/// that it waits, or does what may take long.
class SharingWorker::Engine {
 public:
    Engine(SharingStores stores, const SharingPauses& pauses)
        : stores_(std::move(stores)), endPause_(pauses.End), rounds_(stores_, pauses) {}

    // Of the interface.
    /// Changes something under the lock, and wakes the thread.
    template <typename Change>
    void Tell(Change change);
    void Share(const SharingTarget& target, const std::string& identity);
    void Cease();
    void Look();
    void HandOverAgain();
    void Try(const SharingTarget& target);
    void ForgetTry();
    [[nodiscard]] SharingStatus Status();
    [[nodiscard]] std::optional<SharingTrial> Tried();
    /// Ends the thread; false if it does not within the time.
    [[nodiscard]] bool End();
    [[nodiscard]] const SharingStores& Stores() const { return stores_; }

    /// The thread.
    void Run();

 private:
    using Lock = std::unique_lock<std::mutex>;
    struct Attempt {
        SharingTarget At;
        std::int64_t Number = 0;
    };

    void Turn(Lock& lock);
    void AwaitWork(Lock& lock);
    void HandOver(Lock& lock);
    void RunAttempt(Lock& lock);

    const SharingStores stores_;
    const std::chrono::milliseconds endPause_;

    std::mutex mutex_;
    std::condition_variable changed_;
    std::condition_variable ended_;
    bool ends_ = false;
    bool hasEnded_ = false;
    std::optional<SharingTarget> target_;
    std::int64_t generation_ = 0;  ///< of the target
    bool woken_ = false;
    bool again_ = false;
    bool hurries_ = false;
    SharingStatus status_;
    std::optional<Attempt> attempt_;
    std::int64_t attempts_ = 0;
    std::optional<SharingTrial> tried_;

    // Of the thread alone.
    SharingRounds rounds_;
    std::int64_t aimed_ = 0;  ///< generation of the target that the rounds go to
};

// ----- of the interface

template <typename Change>
void SharingWorker::Engine::Tell(Change change) {
    {
        const std::lock_guard lock(mutex_);
        change();
    }
    changed_.notify_one();
}

void SharingWorker::Engine::Share(const SharingTarget& target, const std::string& identity) {
    Tell([&] {
        target_ = target;
        ++generation_;
        again_ = false;
        status_ = {.State = SharingState::Begins, .Identity = identity};
    });
}

void SharingWorker::Engine::Cease() {
    Tell([this] {
        target_.reset();
        ++generation_;
        again_ = false;
        status_ = {};
    });
}

void SharingWorker::Engine::Look() {
    Tell([this] { woken_ = true; });
}

void SharingWorker::Engine::HandOverAgain() {
    Tell([this] {
        again_ = true;
        hurries_ = true;
        woken_ = true;
    });
}

void SharingWorker::Engine::Try(const SharingTarget& target) {
    Tell([&] {
        attempt_ = {.At = target, .Number = ++attempts_};
        tried_.reset();
    });
}

void SharingWorker::Engine::ForgetTry() {
    Tell([this] {
        ++attempts_;
        attempt_.reset();
        tried_.reset();
    });
}

SharingStatus SharingWorker::Engine::Status() {
    const std::lock_guard lock(mutex_);
    return status_;
}

std::optional<SharingTrial> SharingWorker::Engine::Tried() {
    const std::lock_guard lock(mutex_);
    return std::exchange(tried_, std::nullopt);
}

bool SharingWorker::Engine::End() {
    Lock lock(mutex_);
    ends_ = true;
    changed_.notify_one();
    return ended_.wait_for(lock, endPause_, [this] { return hasEnded_; });
}

// ----- the thread

void SharingWorker::Engine::Run() {
    Lock lock(mutex_);
    while (!ends_) {
        Turn(lock);
    }
    lock.unlock();
    rounds_.Release();
    lock.lock();
    hasEnded_ = true;
    ended_.notify_one();
}

void SharingWorker::Engine::Turn(Lock& lock) {
    if (attempt_) {
        RunAttempt(lock);
    } else if (target_) {
        HandOver(lock);
    } else {
        AwaitWork(lock);
    }
}

void SharingWorker::Engine::AwaitWork(Lock& lock) {
    lock.unlock();
    rounds_.Release();
    lock.lock();
    changed_.wait(lock, [this] { return ends_ || attempt_ || target_; });
}

void SharingWorker::Engine::RunAttempt(Lock& lock) {
    const Attempt attempt = *std::exchange(attempt_, std::nullopt);
    lock.unlock();
    const SharingTrial trial = TryOut(stores_, attempt.At);
    lock.lock();
    if (attempt.Number == attempts_) {
        tried_ = trial;
        // Where it answers, what waits for it need not wait any longer.
        hurries_ = hurries_ || trial.Good;
    }
}

/// Hands a portion over, and rests if the round ends with it.
void SharingWorker::Engine::HandOver(Lock& lock) {
    const std::int64_t generation = generation_;
    const std::string identity = status_.Identity;
    const SharingTarget target = *target_;
    const bool again = std::exchange(again_, false);
    const bool hurries = std::exchange(hurries_, false);
    woken_ = false;
    lock.unlock();
    if (generation != aimed_) {
        rounds_.Aim(target);
        aimed_ = generation;
    }
    if (again) {
        rounds_.Again();
    }
    if (hurries) {
        rounds_.Hurry();
    }
    const SharingRounds::Result result = rounds_.Turn(identity);
    lock.lock();
    if (generation != generation_) {
        return;
    }
    status_ = StatusBehind(result, status_);
    if (!result.More) {
        changed_.wait_until(lock, rounds_.Next(), [this, generation] {
            return ends_ || attempt_ || woken_ || hurries_ || generation != generation_;
        });
    }
}

// ----- the worker

SharingWorker::SharingWorker(SharingStores stores, const SharingPauses& pauses)
    : engine_(std::make_shared<Engine>(std::move(stores), pauses)) {}

SharingWorker::~SharingWorker() {
    if (!thread_.joinable()) {
        return;
    }
    if (engine_->End()) {
        thread_.join();
    } else {
        thread_.detach();
    }
}

std::optional<std::string> SharingWorker::WhyNot() const {
    return engine_->Stores().WhyNot;
}

void SharingWorker::Share(const ServerPlace& place, const std::string& password,
                          const std::string& identity) {
    const SharingStores& stores = engine_->Stores();
    store_ = (stores.ForWindows ? stores.ForWindows : stores.Server)(place, password);
    engine_->Share({place, password}, identity);
    Begin();
}

void SharingWorker::Cease() {
    store_.reset();
    engine_->Cease();
}

SharingStatus SharingWorker::Status() const {
    return engine_->Status();
}

void SharingWorker::Look() {
    engine_->Look();
}

void SharingWorker::HandOverAgain() {
    engine_->HandOverAgain();
}

void SharingWorker::Try(const ServerPlace& place, const std::string& password) {
    engine_->Try({place, password});
    Begin();
}

std::optional<SharingTrial> SharingWorker::Tried() {
    return engine_->Tried();
}

void SharingWorker::ForgetTry() {
    engine_->ForgetTry();
}

/// Most runs of the console share nothing, and have no thread for it.
void SharingWorker::Begin() {
    if (!thread_.joinable()) {
        thread_ = std::thread([engine = engine_] { engine->Run(); });
    }
}
