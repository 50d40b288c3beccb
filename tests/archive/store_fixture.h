#ifndef ORVIA_TESTS_ARCHIVE_STORE_FIXTURE_H
#define ORVIA_TESTS_ARCHIVE_STORE_FIXTURE_H

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "archive/archive_reader.h"
#include "archive/archive_rows.h"
#include "archive/archive_transaction.h"
#include "archive/series_merge.h"
#include "platform/qt/sql_archive.h"

namespace testing_support {

/// An archive that lies somewhere, and any number of consoles on it.
class ArchiveBench {
 public:
    virtual ~ArchiveBench() = default;
    /// One more console's store on the same archive, closed.
    [[nodiscard]] virtual std::unique_ptr<ArchiveStore> NewStore() = 0;

    /// Another program keeps all of it from being written, for a while.
    virtual void Hold() = 0;
    virtual void Release() = 0;
    /// How many of so many random cases are worth their time on such a store.
    [[nodiscard]] virtual int CasesOf(int many) const { return many; }

    std::int64_t Clock = 1'700'000'000'000;  ///< what every store tells
};

class SqliteBench final : public ArchiveBench {
 public:
    std::unique_ptr<ArchiveStore> NewStore() override {
        return std::make_unique<SqlArchive>(
            SqlArchiveOptions{.File = File(), .Clock = [this] { return Clock; }});
    }
    void Hold() override {
        holder_ = NewStore();
        holder_->Open();
        holder_->Begin();
    }
    void Release() override { holder_.reset(); }
    [[nodiscard]] QString File() const {
        return folder_.filePath(QStringLiteral("data/archive.sqlite"));
    }
    [[nodiscard]] QString Folder() const { return folder_.path(); }

 private:
    QTemporaryDir folder_;
    std::unique_ptr<ArchiveStore> holder_;
};

/// Makes a bench of one kind of store.
struct BenchKind {
    const char* Name;
    std::unique_ptr<ArchiveBench> (*Make)();
};

[[nodiscard]] std::vector<BenchKind> AllBenches();

/// Tests that every store passes.
class StoreTest : public testing::TestWithParam<BenchKind> {
 protected:
    StoreTest() : bench(GetParam().Make()), store(bench->NewStore()) { store->Open(); }

    std::unique_ptr<ArchiveBench> bench;
    std::unique_ptr<ArchiveStore> store;
};

#define ORVIA_FOR_ALL_STORES(suite)                                          \
    INSTANTIATE_TEST_SUITE_P(Stores, suite, testing::ValuesIn(AllBenches()), \
                             [](const auto& one) { return one.param.Name; })

/// A record of one count at a time in seconds.
[[nodiscard]] inline HistoryRecord RecordAt(std::uint32_t time, std::uint16_t count = 0) {
    HistoryRecord record;
    record.Time = PackedTimeOf(time);
    record.Raw[0] = count;
    return record;
}

/// Deletes all that a logger has.
inline void DeleteLogger(ArchiveStore& store, std::int64_t id) {
    while (const auto logger = store.LoggerOf(id)) {
        static_cast<void>(DeletePiece(store, *logger));
    }
}

/// What an upload held, and when it began.
struct HeldUpload {
    std::int64_t Begin = 0;
    std::vector<HistoryRecord> Records;
};

/// Files uploads of one logger in portions, as the console does.
class MergeBench {
 public:
    explicit MergeBench(ArchiveStore& store) : store_(store) {}

    /// Adds the row of an upload.
    [[nodiscard]] std::int64_t Add(std::int64_t begin) {
        ArchiveTransaction transaction(store_, ArchiveTransaction::Kind::Writing);
        ArchiveLogger logger = Logger();
        ArchiveUpload upload{.Logger = logger.Id, .Begin = begin, .Name = "Site"};
        store_.AddUpload(upload);
        transaction.Commit();
        return upload.Id;
    }

    [[nodiscard]] ArchiveLogger Logger() {
        auto logger = store_.FindLogger(Mac);
        if (!logger) {
            logger = ArchiveLogger{.Mac = Mac, .Name = "Site"};
            store_.AddLogger(*logger);
        }
        return *logger;
    }

    /// Files all of an upload, `portion` records at a time.
    void File(const HeldUpload& upload, std::size_t portion = 1000) {
        SeriesMerge merge(store_, Add(upload.Begin), upload.Begin);
        AlikeCounter alike;
        for (std::size_t first = 0; first < upload.Records.size(); first += portion) {
            const std::size_t count = std::min(portion, upload.Records.size() - first);
            FilePortion(merge, alike, std::span(upload.Records).subspan(first, count));
        }
    }

    void FilePortion(SeriesMerge& merge, AlikeCounter& alike,
                     std::span<const HistoryRecord> records) {
        std::vector<RecordIdentity> known;
        for (const HistoryRecord& record : records) {
            known.push_back(IdentityOf(record, alike.Next(record)));
        }
        FileIdentities(merge, known);
    }

    void FileIdentities(SeriesMerge& merge, const std::vector<RecordIdentity>& records) {
        ArchiveTransaction transaction(store_, ArchiveTransaction::Kind::Writing);
        ArchiveLogger logger = Logger();
        merge.File(records, logger);
        store_.UpdateLogger(logger);
        transaction.Commit();
    }

    /// The series as the archive holds it.
    [[nodiscard]] std::vector<ArchiveRecord> Rows() {
        std::vector<ArchiveRecord> rows;
        store_.RecordsFrom(Logger().Id, 1, 1'000'000, rows);
        return rows;
    }

    static constexpr std::array<std::uint8_t, 6> Mac = {0, 0x13, 0xA2, 0x40, 0x5F, 0x01};

 private:
    ArchiveStore& store_;
};

}  // namespace testing_support

#endif  // ORVIA_TESTS_ARCHIVE_STORE_FIXTURE_H
