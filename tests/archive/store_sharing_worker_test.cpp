#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <thread>

#include "archive/hand_over_bench.h"
#include "archive/sharing_worker.h"
#include "archive/stumbling_store.h"

namespace testing_support {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr milliseconds Patience(20'000);

/// What the server does, told by the test while the worker's thread asks it.
class ServerSwitch {
 public:
    void Set(std::optional<ArchiveTrouble> trouble) { trouble_ = trouble ? int(*trouble) : -1; }
    /// Calls hang until they are let go.
    void Hang(bool hangs) {
        {
            const std::lock_guard lock(mutex_);
            hangs_ = hangs;
        }
        changed_.notify_all();
    }
    void Pass() {
        ++Calls;
        {
            std::unique_lock lock(mutex_);
            Hanging = hangs_;
            changed_.wait(lock, [this] { return !hangs_; });
            Hanging = false;
        }
        if (const int trouble = trouble_; trouble >= 0) {
            throw ArchiveFault(static_cast<ArchiveTrouble>(trouble), "told so");
        }
    }

    std::atomic<int> Calls = 0;
    std::atomic<bool> Hanging = false;

 private:
    std::atomic<int> trouble_ = -1;
    std::mutex mutex_;
    std::condition_variable changed_;
    bool hangs_ = false;
};

class SharingWorkerTest : public StoreTest {
 protected:
    SharingWorkerTest() : local(computer.NewStore()) { local->Open(); }

    [[nodiscard]] SharingStores Stores() {
        SharingStores stores;
        stores.Local = [this] { return computer.NewStore(); };
        stores.Server = [this, server = server](const ServerPlace&, const std::string&) {
            auto front = std::make_unique<StumblingStore>(bench->NewStore());
            front->Stumble = [server](const char*, StumblingStore::When when) {
                if (when == StumblingStore::When::Before) {
                    server->Pass();
                }
            };
            return front;
        };
        return stores;
    }
    template <typename Met>
    [[nodiscard]] static bool Await(Met met) {
        const auto until = steady_clock::now() + Patience;
        while (!met() && steady_clock::now() < until) {
            std::this_thread::sleep_for(milliseconds(1));
        }
        return met();
    }
    [[nodiscard]] static bool Comes(const SharingWorker& worker, SharingState state) {
        return Await([&] { return worker.Status().State == state; });
    }
    [[nodiscard]] std::size_t UploadsThere() {
        const auto logger = store->FindLogger(MacOf(1));
        return logger ? store->UploadsOf(logger->Id).size() : 0;
    }
    void File(std::int64_t begin) {
        FileUpload(*local, {.Begin = begin, .Records = {RecordAt(60), RecordAt(61)}});
    }

    SqliteBench computer;
    std::unique_ptr<ArchiveStore> local;
    std::shared_ptr<ServerSwitch> server = std::make_shared<ServerSwitch>();
    const ServerPlace place{.Server = "server"};
    const SharingPauses quick{.First = milliseconds(20),
                              .Longest = milliseconds(40),
                              .Idle = milliseconds(50),
                              .End = milliseconds(100)};
};

TEST_P(SharingWorkerTest, HandsOverWhatWaitsAndWhatIsFiledLater) {
    File(1000);
    SharingWorker worker(Stores(), {.Idle = Patience});
    EXPECT_EQ(worker.Status().State, SharingState::Off);
    worker.Share(place, "", "");
    ASSERT_TRUE(Comes(worker, SharingState::Done));
    EXPECT_EQ(UploadsThere(), 1U);
    EXPECT_EQ(worker.Status().Waiting, 0);
    EXPECT_EQ(worker.Status().Identity, store->Identity());
    File(2000);
    worker.Look();
    EXPECT_TRUE(Await([this] { return UploadsThere() == 2; }));
    EXPECT_EQ(Whole(*store), Whole(*local));
}

TEST_P(SharingWorkerTest, LooksByItselfForWhatAnotherConsoleFiled) {
    SharingWorker worker(Stores(), quick);
    worker.Share(place, "", "");
    ASSERT_TRUE(Comes(worker, SharingState::Done));
    File(1000);
    EXPECT_TRUE(Await([this] { return UploadsThere() == 1; }));
}

TEST_P(SharingWorkerTest, AtRestTheServerIsLeftAlone) {
    SharingWorker worker(Stores(), {.Idle = Patience});
    worker.Share(place, "", "");
    ASSERT_TRUE(Comes(worker, SharingState::Done));
    const int calls = server->Calls;
    std::this_thread::sleep_for(milliseconds(50));
    EXPECT_EQ(server->Calls, calls);
}

TEST_P(SharingWorkerTest, AServerThatIsAwayGetsAllWhenItIsBack) {
    server->Set(ArchiveTrouble::Away);
    File(1000);
    SharingWorker worker(Stores(), quick);
    worker.Share(place, "", store->Identity());
    ASSERT_TRUE(Comes(worker, SharingState::Away));
    EXPECT_EQ(worker.Status().Words, "told so");
    EXPECT_EQ(worker.Status().Waiting, 1);
    File(2000);
    worker.Look();
    EXPECT_TRUE(Await([&] { return worker.Status().Waiting == 2; }));
    EXPECT_EQ(UploadsThere(), 0U);
    server->Set(std::nullopt);
    ASSERT_TRUE(Comes(worker, SharingState::Done));
    EXPECT_EQ(Whole(*store), Whole(*local));
    // While all is there: the next look tells.
    server->Set(ArchiveTrouble::Away);
    EXPECT_TRUE(Comes(worker, SharingState::Away));
}

/// What is filed meanwhile has it counted, and the server not asked the sooner.
TEST_P(SharingWorkerTest, AServerThatIsAwayIsAskedAgainBehindItsPause) {
    server->Set(ArchiveTrouble::Away);
    SharingWorker worker(Stores(), {.First = Patience, .Longest = Patience});
    worker.Share(place, "", store->Identity());
    ASSERT_TRUE(Comes(worker, SharingState::Away));
    const int calls = server->Calls;
    File(1000);
    worker.Look();
    EXPECT_TRUE(Await([&] { return worker.Status().Waiting == 1; }));
    EXPECT_EQ(server->Calls, calls);
    server->Set(std::nullopt);
    worker.Try(place, "");
    EXPECT_TRUE(Comes(worker, SharingState::Done));
}

TEST_P(SharingWorkerTest, TheWindowsHaveAnArchiveOfTheirOwn) {
    SharingStores stores = Stores();
    ArchiveStore* windows = nullptr;
    stores.ForWindows = [&](const ServerPlace&, const std::string&) {
        auto made = bench->NewStore();
        windows = made.get();
        return made;
    };
    SharingWorker worker(stores, quick);
    worker.Share(place, "", "");
    ASSERT_NE(windows, nullptr);
    EXPECT_EQ(worker.Store().get(), windows);
    worker.Cease();
    EXPECT_EQ(worker.Store(), nullptr);
}

TEST_P(SharingWorkerTest, WhoMayOnlyReadIsToldSo) {
    File(1000);
    SharingStores stores = Stores();
    stores.Server = [this](const ServerPlace&, const std::string&) {
        auto front = std::make_unique<StumblingStore>(bench->NewStore());
        front->Stumble = [](const std::string& call, StumblingStore::When) {
            if (call == "FindLogger") {
                throw ArchiveFault(ArchiveTrouble::ReadOnly, "");
            }
        };
        return front;
    };
    SharingWorker worker(stores, quick);
    worker.Share(place, "", "");
    ASSERT_TRUE(Comes(worker, SharingState::ReadOnly));
    EXPECT_EQ(worker.Status().Waiting, 1);
    EXPECT_TRUE(worker.Status().Answers());
    worker.Try(place, "");
    std::optional<SharingTrial> trial;
    ASSERT_TRUE(Await([&] { return trial || (trial = worker.Tried()); }));
    EXPECT_TRUE(trial->Good);
    EXPECT_FALSE(trial->MayFile);
}

TEST_P(SharingWorkerTest, WhatIsRefusedIsTriedAgain) {
    File(1000);
    server->Set(ArchiveTrouble::Full);
    SharingStores stores = Stores();
    std::atomic<bool> refuses = true;
    stores.Server = [&](const ServerPlace&, const std::string&) {
        auto front = std::make_unique<StumblingStore>(bench->NewStore());
        front->Stumble = [&](const std::string& call, StumblingStore::When) {
            if (call == "AddRecords" && refuses) {
                throw ArchiveFault(ArchiveTrouble::Full, "no room");
            }
        };
        return front;
    };
    SharingWorker worker(stores, quick);
    worker.Share(place, "", "");
    ASSERT_TRUE(Comes(worker, SharingState::Stuck));
    EXPECT_EQ(worker.Status().Words, "no room");
    EXPECT_EQ(worker.Status().Waiting, 1);
    refuses = false;
    ASSERT_TRUE(Comes(worker, SharingState::Done));
    EXPECT_EQ(Whole(*store), Whole(*local));
}

TEST_P(SharingWorkerTest, HandsAllOverAgain) {
    File(1000);
    SharingWorker worker(Stores(), {.Idle = Patience});
    worker.Share(place, "", "");
    ASSERT_TRUE(Comes(worker, SharingState::Done));
    DeleteLogger(*store, store->Loggers().at(0).Id);
    worker.Look();
    worker.HandOverAgain();
    EXPECT_TRUE(Await([this] { return UploadsThere() == 1; }));
    EXPECT_TRUE(Comes(worker, SharingState::Done));
    EXPECT_EQ(Whole(*store), Whole(*local));
}

TEST_P(SharingWorkerTest, CeasesAndSharesAnew) {
    SharingWorker worker(Stores(), quick);
    worker.Share(place, "", "");
    ASSERT_TRUE(Comes(worker, SharingState::Done));
    EXPECT_NE(worker.Store(), nullptr);
    worker.Cease();
    EXPECT_EQ(worker.Status().State, SharingState::Off);
    EXPECT_EQ(worker.Store(), nullptr);
    File(1000);
    worker.Look();
    worker.Share(place, "", "");
    EXPECT_TRUE(Await([this] { return UploadsThere() == 1; }));
}

TEST_P(SharingWorkerTest, MakesNoArchiveWhereThereIsNone) {
    SqliteBench empty;
    SharingStores stores = Stores();
    stores.Local = [&] { return empty.NewStore(); };
    SharingWorker worker(stores, quick);
    worker.Share(place, "", "");
    ASSERT_TRUE(Comes(worker, SharingState::Done));
    EXPECT_FALSE(empty.NewStore()->Exists());
}

TEST_P(SharingWorkerTest, ATryTellsWhatCameOfItOnce) {
    File(1000);
    HandOverAll(*local, *store);
    SharingWorker worker(Stores(), quick);
    worker.Try(place, "");
    std::optional<SharingTrial> trial;
    ASSERT_TRUE(Await([&] { return trial || (trial = worker.Tried()); }));
    EXPECT_TRUE(trial->Good);
    EXPECT_TRUE(trial->MayFile);
    EXPECT_EQ(trial->Loggers, 1);
    EXPECT_FALSE(worker.Tried());
    server->Set(ArchiveTrouble::Foreign);
    worker.Try(place, "");
    trial.reset();
    ASSERT_TRUE(Await([&] { return trial || (trial = worker.Tried()); }));
    EXPECT_FALSE(trial->Good);
    EXPECT_EQ(trial->Kind, ArchiveTrouble::Foreign);
    EXPECT_EQ(trial->Words, "told so");
}

TEST_P(SharingWorkerTest, ATryThatIsForgottenTellsNothing) {
    server->Hang(true);
    SharingWorker worker(Stores(), quick);
    worker.Try(place, "");
    ASSERT_TRUE(Await([this] { return server->Hanging.load(); }));
    worker.ForgetTry();
    server->Hang(false);
    worker.Share(place, "", "");
    ASSERT_TRUE(Comes(worker, SharingState::Done));
    EXPECT_FALSE(worker.Tried());
}

/// The interface goes on, and the program ends, while a call hangs.
TEST_P(SharingWorkerTest, AServerThatKeepsACallKeepsNobodyElse) {
    const auto alive = std::make_shared<int>();
    server->Hang(true);
    {
        SharingStores stores = Stores();
        stores.Local = [this, alive] { return computer.NewStore(); };
        auto worker = std::make_unique<SharingWorker>(std::move(stores), quick);
        worker->Share(place, "", "");
        ASSERT_TRUE(Await([this] { return server->Hanging.load(); }));
        const auto before = steady_clock::now();
        worker->Look();
        worker->HandOverAgain();
        worker->Try(place, "");
        EXPECT_EQ(worker->Status().State, SharingState::Begins);
        worker->Cease();
        worker.reset();
        EXPECT_LT(steady_clock::now() - before, Patience);
    }
    EXPECT_GT(alive.use_count(), 1);
    server->Hang(false);
    EXPECT_TRUE(Await([&] { return alive.use_count() == 1; }));
}

TEST_P(SharingWorkerTest, TwoConsolesOnOneArchiveHandOverOnce) {
    for (int upload = 1; upload <= 20; ++upload) {
        File(1000 * upload);
    }
    SharingWorker one(Stores(), quick);
    SharingWorker other(Stores(), quick);
    one.Share(place, "", "");
    other.Share(place, "", "");
    ASSERT_TRUE(Comes(one, SharingState::Done));
    ASSERT_TRUE(Comes(other, SharingState::Done));
    EXPECT_EQ(Whole(*store), Whole(*local));
}

ORVIA_FOR_ALL_STORES(SharingWorkerTest);

}  // namespace
}  // namespace testing_support
