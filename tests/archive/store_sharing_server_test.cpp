// Two consoles and a real server, which goes away and comes back.
#include <chrono>
#include <thread>

#include "archive/hand_over_bench.h"
#include "archive/postgres_server.h"
#include "archive/sharing_worker.h"

namespace testing_support {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

/// A computer with an archive of its own, which is shared.
class CrewConsole {
 public:
    explicit CrewConsole(const ServerArchiveOptions& server)
        : worker_(StoresFor(server), {.First = milliseconds(100),
                                      .Longest = milliseconds(200),
                                      .Idle = milliseconds(100),
                                      .End = milliseconds(3000)}) {
        archive_->Open();
        worker_.Share(server.Place, server.Password, "");
    }

    void File(const PlannedUpload& upload) {
        FileUpload(*archive_, upload);
        worker_.Look();
    }
    [[nodiscard]] bool Comes(SharingState state) const {
        constexpr milliseconds patience(30'000);
        const auto until = steady_clock::now() + patience;
        while (worker_.Status().State != state && steady_clock::now() < until) {
            std::this_thread::sleep_for(milliseconds(2));
        }
        return worker_.Status().State == state;
    }
    [[nodiscard]] SharingStatus Status() const { return worker_.Status(); }
    [[nodiscard]] bool HasHandedOver(const std::string& identity) {
        constexpr milliseconds patience(30'000);
        const auto until = steady_clock::now() + patience;
        while (archive_->CountOwed(identity) > 0 && steady_clock::now() < until) {
            std::this_thread::sleep_for(milliseconds(2));
        }
        return archive_->CountOwed(identity) == 0;
    }

 private:
    [[nodiscard]] SharingStores StoresFor(const ServerArchiveOptions& server) {
        SharingStores stores;
        stores.Local = [this] { return computer_.NewStore(); };
        stores.Server = [server](const ServerPlace&, const std::string&) {
            return std::make_unique<ServerArchive>(server);
        };
        return stores;
    }

    SqliteBench computer_;
    std::unique_ptr<ArchiveStore> archive_ = computer_.NewStore();
    SharingWorker worker_;
};

[[nodiscard]] PlannedUpload UploadAt(std::int64_t begin, std::uint32_t from, std::uint32_t to) {
    PlannedUpload upload{.Begin = begin};
    for (std::uint32_t time = from; time < to; ++time) {
        upload.Records.push_back(RecordAt(time));
    }
    return upload;
}

class CrewTest : public ::testing::Test {
 protected:
    CrewTest() { reference_->Open(); }

    /// One of the consoles files, and so does one that has all.
    void File(CrewConsole& console, const PlannedUpload& upload) {
        FileUpload(*reference_, upload);
        console.File(upload);
    }
    void ExpectAllThere() {
        const auto shared = bench_.NewStore();
        shared->Open();
        EXPECT_EQ(Whole(*shared), Whole(*reference_));
    }

    PostgresServer server_;  // of its own: it goes away
    PostgresBench bench_{server_};
    SqliteBench direct_;
    std::unique_ptr<ArchiveStore> reference_ = direct_.NewStore();
};

TEST_F(CrewTest, WhatWasUploadedWhileTheServerWasAwayIsThereWhenItIsBack) {
    const auto store = bench_.NewStore();
    store->Open();
    const std::string identity = store->Identity();
    store->Close();
    CrewConsole one(bench_.Options());
    CrewConsole other(bench_.Options());
    File(one, UploadAt(1000, 1, 40));
    ASSERT_TRUE(one.HasHandedOver(identity));
    for (const auto ending : {PostgresServer::Ending::Orderly, PostgresServer::Ending::Crash}) {
        server_.Stop(ending);
        ASSERT_TRUE(one.Comes(SharingState::Away));
        ASSERT_TRUE(other.Comes(SharingState::Away));
        EXPECT_FALSE(one.Status().Words.empty());
        const std::int64_t begin = ending == PostgresServer::Ending::Orderly ? 2000 : 3000;
        File(one, UploadAt(begin, 30, 60));
        File(other, UploadAt(begin + 1, 20, 90));
        File(one, UploadAt(begin + 2, 80, 120));
        server_.Start();
        ASSERT_TRUE(one.HasHandedOver(identity));
        ASSERT_TRUE(other.HasHandedOver(identity));
        ExpectAllThere();
    }
    EXPECT_TRUE(one.Comes(SharingState::Done));
    EXPECT_TRUE(other.Comes(SharingState::Done));
}

/// The server is killed again and again while much is handed over.
TEST_F(CrewTest, AServerThatDiesWhileItIsHandedToLosesAndDoublesNothing) {
    const auto store = bench_.NewStore();
    store->Open();
    const std::string identity = store->Identity();
    store->Close();
    CrewConsole one(bench_.Options());
    CrewConsole other(bench_.Options());
    ASSERT_TRUE(one.Comes(SharingState::Done));
    for (int round = 0; round < 4; ++round) {
        const std::int64_t begin = 10'000 + 1000 * round;
        const auto from = static_cast<std::uint32_t>(1 + 3000 * round);
        File(one, UploadAt(begin, from, from + 9000));
        File(other, UploadAt(begin + 1, from + 2000, from + 11'000));
        std::this_thread::sleep_for(milliseconds(40 * round));
        server_.Stop(PostgresServer::Ending::Crash);
        server_.Start();
    }
    ASSERT_TRUE(one.HasHandedOver(identity));
    ASSERT_TRUE(other.HasHandedOver(identity));
    ExpectAllThere();
}

TEST_F(CrewTest, AUserWhoMayOnlyReadReadsAndFilesHere) {
    ServerArchiveOptions reader = bench_.Options();
    reader.Place.User = "reader";
    CrewConsole console(reader);
    ASSERT_TRUE(console.Comes(SharingState::Done));
    console.File(UploadAt(1000, 1, 40));
    ASSERT_TRUE(console.Comes(SharingState::ReadOnly));
    EXPECT_EQ(console.Status().Waiting, 1);
}

}  // namespace
}  // namespace testing_support
