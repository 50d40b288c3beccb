// Put beside an installed console and started over a link among the commands, as the console is:
// reads the catalogues where the console looks for them, and those of the sources for comparison.
//
//     orvia-installed-check DATA

#include <QApplication>
#include <cstdio>

#include "common/path_text.h"
#include "flow/catalogues.h"
#include "platform/qt/qt_host.h"

namespace {

/// Entries of a catalogue; one whose table cannot be read is none.
int EntriesOf(const std::string& folder, const std::string& catalogue) {
    FlowDeviceList list;
    config::ReadFlowDeviceList(JoinPath(folder, catalogue), folder, list);
    return list.UpperBound();
}

}  // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Orvia"));
    QtHost host;
    const std::string& folder = host.Services().AppPath;
    bool good = argc == 2;
    for (const char* catalogue : {"flumes.lst", "weirs.lst"}) {
        const int expected = argc == 2 ? EntriesOf(argv[1], catalogue) : 0;
        const int found = EntriesOf(folder, catalogue);
        std::printf("%s in %s: %d of %d\n", catalogue, folder.c_str(), found, expected);
        good = good && expected > 0 && found == expected;
    }
    return good ? 0 : 1;
}
