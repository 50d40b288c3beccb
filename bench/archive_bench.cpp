// The archive: filing an upload of 200,000 records into an empty archive and once more, beside a
// bare loop of inserts of the same rows into the same table; what a live upload pays for a portion;
// reading a logger's year and the list of loggers from an archive of many. ORVIA_ARCHIVE_ROWS tells
// how many rows that one has (2,000,000).

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <cstdlib>
#include <span>
#include <stdexcept>
#include <vector>

#include "archive/archive_reader.h"
#include "archive/archive_rows.h"
#include "archive/archive_transaction.h"
#include "archive/series_merge.h"
#include "platform/qt/sql_archive.h"

namespace {

constexpr int Records = 200'000;
constexpr std::size_t Portion = 4096;
constexpr std::size_t LivePortion = 400;  // what comes in 400 ms at best

/// The application that Qt's drivers need.
void NeedApplication() {
    static int argc = 1;
    static char name[] = "archive_bench";
    static char* argv[] = {name, nullptr};
    static const QCoreApplication application(argc, argv);
}

std::vector<HistoryRecord> MadeRecords(int count) {
    std::vector<HistoryRecord> records(static_cast<std::size_t>(count));
    std::uint32_t number = 1;
    for (std::size_t i = 0; i < records.size(); ++i) {
        records[i].Time = PackedTimeOf(0x48000000U + static_cast<std::uint32_t>(i) * 900);
        for (std::uint16_t& raw : records[i].Raw) {
            number = number * 1'664'525U + 1'013'904'223U;
            raw = static_cast<std::uint16_t>(number >> 16);
        }
    }
    return records;
}

/// An archive in a folder of its own.
class Bench {
 public:
    Bench() {
        NeedApplication();
        archive.Open();
        logger.Name = "Bench";
        archive.AddLogger(logger);
    }

    void Upload(const std::vector<HistoryRecord>& records, std::size_t portion) {
        ArchiveUpload upload{.Logger = logger.Id, .Begin = ++begin_};
        archive.AddUpload(upload);
        SeriesMerge merge(archive, upload.Id, upload.Begin);
        AlikeCounter alike;
        std::vector<RecordIdentity> pending;
        for (const HistoryRecord& record : records) {
            pending.push_back(IdentityOf(record, alike.Next(record)));
            if (pending.size() == portion) {
                File(merge, pending);
            }
        }
        File(merge, pending);
    }

    void File(SeriesMerge& merge, std::vector<RecordIdentity>& pending) {
        ArchiveTransaction transaction(archive, ArchiveTransaction::Kind::Writing);
        logger = *archive.LoggerOf(logger.Id);
        merge.File(pending, logger);
        archive.UpdateLogger(logger);
        transaction.Commit();
        pending.clear();
    }

    [[nodiscard]] QString FilePath() const {
        return folder_.filePath(QStringLiteral("archive.sqlite"));
    }

 private:
    QTemporaryDir folder_{QDir::currentPath() + QStringLiteral("/archive_bench")};
    std::int64_t begin_ = 0;

 public:
    SqlArchive archive{{.File = FilePath()}};
    ArchiveLogger logger;
};

void Demand(bool good) {
    if (!good) {
        throw std::runtime_error("SQLite refused");
    }
}

/// The least that could write the same rows: one statement, bound and stepped.
class BareLoop {
 public:
    explicit BareLoop(const QString& file) {
        Demand(sqlite3_open(file.toUtf8().constData(), &database_) == SQLITE_OK);
        Do("PRAGMA synchronous=NORMAL");
        Demand(sqlite3_prepare_v2(database_,
                                  "INSERT INTO records VALUES(?,?,?,?,?,?,?,?,?,?,?,?,?,?,?)", -1,
                                  &insert_, nullptr) == SQLITE_OK);
    }
    ~BareLoop() {
        sqlite3_finalize(insert_);
        sqlite3_close(database_);
    }
    BareLoop(const BareLoop&) = delete;
    BareLoop& operator=(const BareLoop&) = delete;

    void Write(std::span<const HistoryRecord> records) {
        Do("BEGIN IMMEDIATE");
        for (const HistoryRecord& record : records) {
            int column = 0;
            sqlite3_bind_int64(insert_, ++column, 1);
            sqlite3_bind_int64(insert_, ++column, ++place_);
            sqlite3_bind_int64(insert_, ++column, TimeNumber(record.Time));
            for (const std::uint16_t raw : record.Raw) {
                sqlite3_bind_int(insert_, ++column, raw);
            }
            sqlite3_bind_int(insert_, ++column, 1);
            sqlite3_bind_int64(insert_, ++column, 1);
            Demand(sqlite3_step(insert_) == SQLITE_DONE);
            sqlite3_reset(insert_);
        }
        Do("COMMIT");
    }
    void Do(const char* statement) {
        Demand(sqlite3_exec(database_, statement, nullptr, nullptr, nullptr) == SQLITE_OK);
    }

 private:
    sqlite3* database_ = nullptr;
    sqlite3_stmt* insert_ = nullptr;
    std::int64_t place_ = std::int64_t{1} << 32;
};

void BareInserts(benchmark::State& state) {
    const auto records = MadeRecords(Records);
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        Bench bench;
        bench.archive.Close();
        BareLoop loop(bench.FilePath());
        state.ResumeTiming();
        for (std::size_t first = 0; first < records.size(); first += Portion) {
            const std::size_t count = std::min(Portion, records.size() - first);
            loop.Write(std::span(records).subspan(first, count));
        }
    }
}
BENCHMARK(BareInserts)->Unit(benchmark::kMillisecond)->UseRealTime();

void FileIntoEmpty(benchmark::State& state) {
    const auto records = MadeRecords(Records);
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        Bench bench;
        state.ResumeTiming();
        bench.Upload(records, Portion);
    }
}
BENCHMARK(FileIntoEmpty)->Unit(benchmark::kMillisecond)->UseRealTime();

void FileAllKnown(benchmark::State& state) {
    const auto records = MadeRecords(Records);
    Bench bench;
    bench.Upload(records, Portion);
    for ([[maybe_unused]] auto _ : state) {
        bench.Upload(records, Portion);
    }
    if (bench.logger.Records != Records) {
        state.SkipWithError("known records were filed again");
    }
}
BENCHMARK(FileAllKnown)->Unit(benchmark::kMillisecond)->UseRealTime();

/// A portion as a live upload files it, at 115200 baud every 400 ms.
void LivePortions(benchmark::State& state) {
    const auto records = MadeRecords(Records);
    Bench bench;
    ArchiveUpload upload{.Logger = bench.logger.Id, .Begin = 1};
    bench.archive.AddUpload(upload);
    SeriesMerge merge(bench.archive, upload.Id, upload.Begin);
    std::size_t next = 0;
    for ([[maybe_unused]] auto _ : state) {
        std::vector<RecordIdentity> pending;
        for (std::size_t i = 0; i < LivePortion; ++i, ++next) {
            const auto turn = static_cast<std::int32_t>(next / records.size());
            pending.push_back(IdentityOf(records[next % records.size()], 1 + turn));
        }
        bench.File(merge, pending);
    }
}
BENCHMARK(LivePortions)->Unit(benchmark::kMicrosecond)->UseRealTime();

/// An archive of many rows: 100 loggers with a record each 15 minutes.
class Large {
 public:
    static constexpr int Loggers = 100;

    static Large& Get() {
        static Large large;
        return large;
    }

    Bench bench;
    std::int64_t perLogger = 0;

 private:
    Large() {
        const char* told = std::getenv("ORVIA_ARCHIVE_ROWS");
        perLogger = (told != nullptr ? std::atoll(told) : 2'000'000) / Loggers;
        for (int i = 1; i < Loggers; ++i) {
            ArchiveLogger logger{.Mac = {0, 0, 0, 0, 0, static_cast<std::uint8_t>(i)},
                                 .Name = "Logger " + std::to_string(i)};
            bench.archive.AddLogger(logger);
        }
        ArchiveUpload upload{.Logger = 1, .Begin = 1};
        bench.archive.AddUpload(upload);
        bench.archive.Close();
        BareLoop loop(bench.FilePath());
        const std::string rows = std::to_string(perLogger);
        for (int i = 1; i <= Loggers; ++i) {
            loop.Do(("INSERT INTO records WITH n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n "
                     "WHERE i + 1 < " +
                     rows + ") SELECT " + std::to_string(i) +
                     ", 4294967296 + i, 500000000 + i * 900, i & 65535, 7 * i & 65535, 30000, "
                     "40000, 50000, 60000, 1, 2, 3, i & 65535, 1, 1 FROM n")
                        .c_str());
        }
        loop.Do(("UPDATE loggers SET records = " + rows).c_str());
        bench.archive.Open();
    }
};

void ReadYear(benchmark::State& state) {
    constexpr std::uint32_t Year = 35'040;
    Large& large = Large::Get();
    const auto first =
        500'000'000U + static_cast<std::uint32_t>(large.perLogger / 2 - Year / 2) * 900U;
    const Period year{.Begin = MomentOf(PackedTimeOf(first)),
                      .End = MomentOf(PackedTimeOf(first + (Year - 1) * 900U)) + 1};
    std::int64_t logger = 0;
    for ([[maybe_unused]] auto _ : state) {
        logger = logger % Large::Loggers + 1;
        const Series series = ReadSeries(large.bench.archive, logger, year);
        if (series.Records.size() < Year && large.perLogger > Year) {
            state.SkipWithError("not a year");
        }
    }
}
BENCHMARK(ReadYear)->Unit(benchmark::kMillisecond)->UseRealTime();

void List(benchmark::State& state) {
    Large& large = Large::Get();
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(ListLoggers(large.bench.archive));
    }
}
BENCHMARK(List)->Unit(benchmark::kMillisecond)->UseRealTime();

void OpenArchive(benchmark::State& state) {
    Large& large = Large::Get();
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        large.bench.archive.Close();
        state.ResumeTiming();
        large.bench.archive.Open();
    }
}
BENCHMARK(OpenArchive)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
