#ifndef ORVIA_TESTS_ARCHIVE_SERVER_FIXTURE_H
#define ORVIA_TESTS_ARCHIVE_SERVER_FIXTURE_H

#include <memory>
#include <string>
#include <vector>

#include "archive/postgres_server.h"
#include "archive/store_fixture.h"

namespace testing_support {

/// What `act` faults with; Gone, which no server tells, if it does not.
template <typename Act>
ArchiveTrouble TroubleOf(Act act) {
    try {
        act();
    } catch (const ArchiveFault& fault) {
        return fault.Kind();
    }
    return ArchiveTrouble::Gone;
}

/// A shared archive of its own on a real server, and a store on it that is open.
class ServerTest : public testing::Test {
 protected:
    explicit ServerTest(PostgresServer& server = PostgresServer::Shared())
        : bench(server), store(bench.NewStore()) {
        store->Open();
    }

    [[nodiscard]] static std::vector<HistoryRecord> Records(std::uint32_t first,
                                                            std::uint32_t count) {
        std::vector<HistoryRecord> records;
        for (std::uint32_t i = 0; i < count; ++i) {
            records.push_back(RecordAt(first + i));
        }
        return records;
    }
    void File(std::int64_t begin, std::uint32_t first, std::uint32_t count) {
        MergeBench(*store).File({.Begin = begin, .Records = Records(first, count)});
    }
    /// A store that enters as told otherwise than usual.
    template <typename Change>
    [[nodiscard]] std::unique_ptr<ServerArchive> With(Change change) {
        ServerArchiveOptions options = bench.Options();
        change(options);
        return std::make_unique<ServerArchive>(options);
    }
    [[nodiscard]] std::unique_ptr<ServerArchive> As(const std::string& user,
                                                    const std::string& password = {}) {
        return With([&](ServerArchiveOptions& options) {
            options.Place.User = user;
            options.Password = password;
        });
    }
    void CutConnections() {
        bench.Do(
            QStringLiteral("SELECT pg_terminate_backend(pid, 5000) FROM pg_stat_activity "
                           "WHERE usename = 'console'"));
    }
    [[nodiscard]] std::int64_t Count(const char* rows) {
        return bench.Do(QStringLiteral("SELECT count(*) FROM orvia.") + QString::fromUtf8(rows))
            .toLongLong();
    }
    /// That the archive holds together and has so many records.
    void ExpectWhole(std::int64_t records) {
        const auto other = bench.NewStore();
        other->Open();
        EXPECT_TRUE(other->Check([] {}).empty());
        EXPECT_EQ(Count("records"), records);
    }

    PostgresBench bench;
    std::unique_ptr<ArchiveStore> store;
};

}  // namespace testing_support

#endif  // ORVIA_TESTS_ARCHIVE_SERVER_FIXTURE_H
