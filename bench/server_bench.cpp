// The shared archive on a server that bench/server/run.sh has filled: reading a logger's year and a
// month's report from it; eight consoles that file at once, each a logger of its own, beside one
// that copies the same rows into the same table. ORVIA_SERVER is the folder of the server's socket.

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QFile>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <array>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "archive/archive_reader.h"
#include "archive/archive_rows.h"
#include "archive/archive_transaction.h"
#include "archive/report.h"
#include "archive/series_merge.h"
#include "archive/series_values.h"
#include "plain_clock.h"
#include "platform/qt/server_archive.h"

namespace {

constexpr int Consoles = 8;
constexpr int PerConsole = 25'000;
constexpr std::size_t Portion = 4096;

/// The application that Qt's drivers need.
void NeedApplication() {
    static int argc = 1;
    static char name[] = "server_bench";
    static char* argv[] = {name, nullptr};
    static const QCoreApplication application(argc, argv);
}

std::string Folder() {
    const char* told = std::getenv("ORVIA_SERVER");
    if (told == nullptr) {
        throw std::runtime_error("ORVIA_SERVER names no server: see bench/server/run.sh");
    }
    return told;
}

std::string Database() {
    const char* told = std::getenv("ORVIA_DATABASE");
    return told != nullptr ? told : "orvia";
}

ServerArchiveOptions Options() {
    NeedApplication();
    return {.Place = {.Server = Folder(), .Database = Database(), .User = "console"}};
}

class Administrator {
 public:
    Administrator() {
        NeedApplication();
        database_ =
            QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), QStringLiteral("administrator"));
        database_.setHostName(QString::fromStdString(Folder()));
        database_.setDatabaseName(QString::fromStdString(Database()));
        database_.setUserName(QStringLiteral("administrator"));
        static_cast<void>(database_.open());
    }
    static Administrator& Get() {
        static Administrator one;
        return one;
    }
    void Do(const std::string& statement) {
        QSqlQuery query(database_);
        if (!query.exec(QString::fromStdString(statement))) {
            throw std::runtime_error(query.lastError().text().toStdString());
        }
    }

 private:
    QSqlDatabase database_;
};

std::array<std::uint8_t, 6> BenchMac(int console) {
    return {0xBE, 0, 0, 0, 0, static_cast<std::uint8_t>(console)};
}

HistoryRecord MadeRecord(int number) {
    HistoryRecord record;
    record.Time = PackedTimeOf(26U * 12 << 22 | static_cast<std::uint32_t>(number) << 2);
    std::uint32_t noise = static_cast<std::uint32_t>(number);
    for (std::uint16_t& raw : record.Raw) {
        noise = noise * 1'664'525U + 1'013'904'223U;
        raw = static_cast<std::uint16_t>(noise >> 16);
    }
    return record;
}

/// Takes away what a run has filed.
void CleanUp() {
    Administrator::Get().Do(
        "DELETE FROM orvia.records WHERE logger = ANY(ARRAY(SELECT id FROM orvia.loggers WHERE mac "
        "LIKE 'BE:%'))");
    Administrator::Get().Do("DELETE FROM orvia.records WHERE logger < 0");
    Administrator::Get().Do("DELETE FROM orvia.uploads WHERE name = 'Bench'");
    Administrator::Get().Do("DELETE FROM orvia.loggers WHERE mac LIKE 'BE:%'");
    Administrator::Get().Do("VACUUM orvia.records_2026");
    Administrator::Get().Do("CHECKPOINT");
}

void FileAsConsole(int console) {
    ServerArchive store(Options());
    store.Open();
    ArchiveLogger logger{.Mac = BenchMac(console), .Name = "Bench"};
    store.AddLogger(logger);
    ArchiveUpload upload{.Logger = logger.Id, .Begin = 1, .Name = "Bench"};
    store.AddUpload(upload);
    SeriesMerge merge(store, upload.Id, upload.Begin);
    for (int first = 0; first < PerConsole; first += static_cast<int>(Portion)) {
        std::vector<RecordIdentity> pending;
        for (int i = first; i < std::min(first + static_cast<int>(Portion), PerConsole); ++i) {
            pending.push_back(IdentityOf(MadeRecord(i), 1));
        }
        ArchiveTransaction transaction(store, ArchiveTransaction::Kind::Writing);
        logger = *store.LoggerOf(logger.Id);
        merge.File(pending, logger);
        store.UpdateLogger(logger);
        transaction.Commit();
    }
}

void EightConsoles(benchmark::State& state) {
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        CleanUp();
        state.ResumeTiming();
        std::vector<std::thread> threads;
        for (int console = 0; console < Consoles; ++console) {
            threads.emplace_back(FileAsConsole, console);
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
    }
    state.SetItemsProcessed(state.iterations() * Consoles * PerConsole);
    CleanUp();
}
BENCHMARK(EightConsoles)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);

/// The rows that the eight file, as COPY reads them.
QString CopyFile() {
    const QString name = QString::fromStdString(Folder()) + QStringLiteral("/copied_rows");
    QFile out(name);
    if (!out.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        throw std::runtime_error("cannot write the rows to copy");
    }
    for (int console = 0; console < Consoles; ++console) {
        for (int i = 0; i < PerConsole; ++i) {
            const HistoryRecord record = MadeRecord(i);
            std::string line = std::to_string((std::int64_t{1} << 32) + i) + '\t' +
                               std::to_string(TimeNumber(record.Time)) + '\t' +
                               std::to_string(-1 - console) + "\t1\t1";
            for (const std::uint16_t raw : record.Raw) {
                line += '\t' + std::to_string(raw);
            }
            line += '\n';
            out.write(line.data(), static_cast<qint64>(line.size()));
        }
    }
    return name;
}

void CopyByOne(benchmark::State& state) {
    const std::string file = CopyFile().toStdString();
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        CleanUp();
        state.ResumeTiming();
        Administrator::Get().Do(
            "COPY orvia.records(place, time, logger, upload, nth, c1, c2, c3, c4, c5, c6, c7, c8, "
            "c9, c10) FROM '" +
            file + "'");
    }
    state.SetItemsProcessed(state.iterations() * Consoles * PerConsole);
    CleanUp();
    QFile::remove(QString::fromStdString(file));
}
BENCHMARK(CopyByOne)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);

Moment DateOf(std::uint32_t year, std::uint32_t month) {
    return MomentOf(PackedTimeOf((year * 12 + month - 1) << 22 | 1U << 17));
}

/// The made loggers have no settings to decode: all channels are shown as they come.
LoggerRecord TenChannels() {
    LoggerRecord logger;
    logger.LoggerName = "Bench";
    logger.SampleInterval = "15 minutes";
    logger.NumAnalogChannels = 8;
    logger.NumDigitalChannels = 2;
    logger.AnalogEnable.fill(1);
    logger.DigitalEnable.fill(1);
    logger.RawScaleUpper.fill(65535);
    logger.UpperLimit.fill(10);
    logger.EngUnits.fill("Feet");
    return logger;
}

/// Reads a period of one logger after the other, and does something with each.
template <typename Use>
void Read(benchmark::State& state, const Period& period, std::size_t least, Use use) {
    ServerArchive store(Options());
    store.Open();
    const auto loggers = store.Loggers();
    std::size_t next = 0;
    for ([[maybe_unused]] auto _ : state) {
        // Neighbours lie on the same pages.
        next = (next + 37) % loggers.size();
        Series series = ReadSeries(store, loggers[next].Id, period);
        if (series.Records.size() < least) {
            state.SkipWithError("records are missing");
            return;
        }
        use(series);
    }
}

void ReadYear(benchmark::State& state) {
    Read(state, {.Begin = DateOf(21, 1), .End = DateOf(22, 1)}, 35'040, [](Series&) {});
}
BENCHMARK(ReadYear)->Unit(benchmark::kMillisecond)->UseRealTime();

void MonthReport(benchmark::State& state) {
    const Period month{.Begin = DateOf(21, 6), .End = DateOf(21, 7)};
    const PlainClock clock;
    Read(state, month, 2'880, [&](Series& series) {
        series.Settings.at(0).Logger = TenChannels();
        const SeriesValues values(series);
        benchmark::DoNotOptimize(
            MakeReport(values, {month, PeriodStep::Day, std::nullopt, "", ""}, clock));
    });
}
BENCHMARK(MonthReport)->Unit(benchmark::kMillisecond)->UseRealTime();

void List(benchmark::State& state) {
    ServerArchive store(Options());
    store.Open();
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(ListLoggers(store));
    }
}
BENCHMARK(List)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
