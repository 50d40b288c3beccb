// A console that is there to be killed: it uploads from a logger on the virtual line into an
// archive and tells on its standard output, each tenth of a second of the line's time, what came so
// far.
//
//   orvia-killed-console FILE RECORDS SHIFT    uploads; the logger's clock is SHIFT records ahead
//   orvia-killed-console FILE hold             keeps the archive locked until its input ends

#include <unistd.h>

#include <QCoreApplication>
#include <QString>
#include <cstdlib>
#include <string>

#include "archive/filing_bench.h"
#include "platform/qt/sql_archive.h"

namespace {

using testing_support::FilingBench;
using testing_support::Millisecond;

void Tell(const std::string& line) {
    if (::write(STDOUT_FILENO, line.data(), line.size()) < 0) {
        std::_Exit(EXIT_FAILURE);
    }
}

void Hold(SqlArchive& archive) {
    archive.Open();
    archive.Begin();
    Tell("held\n");
    char byte = 0;
    static_cast<void>(::read(STDIN_FILENO, &byte, 1) == 0);
    archive.Rollback();
}

void Upload(SqlArchive& archive, int records, int shift) {
    constexpr int secondsPerRecord = 900;
    auto setup = testing_support::SiteWithHistory(static_cast<std::uint32_t>(records));
    setup.ClockOffset = simulator::CivilSeconds{shift} * secondsPerRecord;
    FilingBench filing(setup, &archive);
    filing.Every(100 * Millisecond, [&filing] {
        Tell(std::to_string(filing.Now() / Millisecond) + " " +
             std::to_string(filing.bench.Store().HistoryCount()) + "\n");
    });
    filing.Run();
    Tell("done\n");
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    SqlArchive archive({.File = QString::fromLocal8Bit(argv[1])});
    if (argc == 3) {
        Hold(archive);
    } else if (argc == 4) {
        Upload(archive, std::atoi(argv[2]), std::atoi(argv[3]));
    }
    return EXIT_SUCCESS;
}
