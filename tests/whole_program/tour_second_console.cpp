#include <QTextStream>

#include "whole_program/tour.h"

namespace whole_program {

int RunSecondConsole(int client) {
    constexpr int Milliseconds = 100;
    ConsoleRun console;
    console.Start();
    if (console.OpenClient(client) == nullptr) {
        return 1;
    }
    console.Click(QStringLiteral("cmdGetSettings"));
    QTimer tell;
    QObject::connect(&tell, &QTimer::timeout, &tell, [&console] {
        QTextStream(stdout) << console.State().History.HistoryCount() << Qt::endl;
    });
    tell.start(Milliseconds);
    console.Click(QStringLiteral("cmdGetHistory"));
    return 0;
}

}  // namespace whole_program
