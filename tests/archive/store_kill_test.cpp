// Consoles killed in the middle of uploads, at any moment.

#include <chrono>
#include <random>
#include <set>
#include <sstream>
#include <thread>

#include "archive/other_process.h"
#include "archive/store_fixture.h"

namespace testing_support {
namespace {

/// What the killed console told: the records that had come a second before its end at the latest.
struct Told {
    std::int64_t ASecondAgo = 0;
    std::int64_t Last = 0;
    bool Done = false;
};

Told ReadTold(const std::string& output) {
    constexpr std::int64_t Second = 1000;
    Told told;
    std::vector<std::pair<std::int64_t, std::int64_t>> lines;
    std::istringstream in(output.substr(0, output.rfind('\n') + 1));
    for (std::string line; std::getline(in, line);) {
        std::istringstream words(line);
        std::pair<std::int64_t, std::int64_t> one;
        if (words >> one.first >> one.second) {
            lines.push_back(one);
        }
        told.Done = told.Done || line == "done";
    }
    for (const auto& [time, count] : lines) {
        told.Last = count;
        told.ASecondAgo = time + Second <= lines.back().first ? count : told.ASecondAgo;
    }
    return told;
}

constexpr int Records = 6000;
constexpr int ShiftEach = 11;

class KillTest : public testing::Test {
 protected:
    /// Has a console upload, kills it a while after it began, and gives what it told.
    Told UploadAndKill(int number, std::chrono::microseconds after) {
        OtherProcess console({ORVIA_KILLED_CONSOLE, bench.File().toStdString(),
                              std::to_string(Records), std::to_string(number * ShiftEach)});
        console.AwaitOutput();
        std::this_thread::sleep_for(after);
        killed += console.Kill() ? 1 : 0;
        return ReadTold(console.Output());
    }

    [[nodiscard]] std::vector<ArchiveUpload> Uploads() {
        const auto store = bench.NewStore();
        store->Open();
        const auto loggers = store->Loggers();
        return loggers.empty() ? std::vector<ArchiveUpload>{} : store->UploadsOf(loggers[0].Id);
    }

    SqliteBench bench;
    int killed = 0;
};

/// Each console's logger holds the records of the one before but the oldest, and some newer ones.
TEST_F(KillTest, TwoHundredKillsLoseNoMoreThanTheLastSecondAndDoubleNothing) {
    constexpr int Kills = 200;
    constexpr int LongestMilliseconds = 60;
    std::mt19937 random(20261122);
    std::uniform_int_distribution<int> moment(0, LongestMilliseconds * 1000);
    int inTheMiddle = 0;
    std::set<int> expected;  // records that were filed, by their place in the logger's life
    for (int number = 0; number < Kills; ++number) {
        const Told told = UploadAndKill(number, std::chrono::microseconds(moment(random)));
        const auto uploads = Uploads();
        ASSERT_EQ(uploads.size(), static_cast<std::size_t>(number) + 1);
        const ArchiveUpload& last = uploads.back();
        ASSERT_GE(last.Received, told.ASecondAgo) << "kill " << number;
        ASSERT_LE(last.Received, Records);
        ASSERT_EQ(last.Outcome.has_value(), last.End.has_value());
        inTheMiddle += !last.End && last.Received > 0 ? 1 : 0;
        for (int i = 0; i < last.Received; ++i) {
            expected.insert(number * ShiftEach + i);
        }
    }
    EXPECT_GT(inTheMiddle, Kills / 4) << killed << " killed";

    const auto store = bench.NewStore();
    store->Open();
    EXPECT_TRUE(store->Check([] {}).empty());
    const ArchiveLogger logger = store->Loggers().at(0);
    const Series series = ReadSeries(*store, logger.Id);
    ASSERT_EQ(series.Records.size(), expected.size());
    EXPECT_EQ(logger.Records, static_cast<std::int64_t>(expected.size()));
    for (std::size_t i = 1; i < series.Records.size(); ++i) {
        ASSERT_LT(TimeNumber(series.Records[i - 1].Record.Time),
                  TimeNumber(series.Records[i].Record.Time));
    }
}

}  // namespace
}  // namespace testing_support
