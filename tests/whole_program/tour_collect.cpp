// The whole network is collected at a click, with a silent logger and a fault of the line, and then
// by itself, on a clock that is set ahead.
#include <QCheckBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QTabWidget>
#include <map>
#include <stdexcept>

#include "whole_program/tour.h"

namespace whole_program {

namespace {

constexpr int Patience = 300000;
constexpr int SecondsOfDay = 86400;
const QString SilentName = QStringLiteral("Ridge Rain Gauge");

/// Records that the log tells of a logger: all that came, and those that were new.
struct Collected {
    int Records = 0;
    int New = 0;
};

/// Loggers of which all came, those without records too.
int DoneIn(const QString& log) {
    return static_cast<int>(log.count(QStringLiteral("...OK, ")));
}

/// By name; those that had records, all of which came.
std::map<QString, Collected> CollectedIn(const QString& log) {
    static const QRegularExpression Line(
        QStringLiteral("client window (.+)\\.\\.\\.OK, (\\d+) records?, (\\d+) new"));
    std::map<QString, Collected> found;
    for (auto match = Line.globalMatch(log); match.hasNext();) {
        const QRegularExpressionMatch line = match.next();
        found[line.captured(1)] = {line.captured(2).toInt(), line.captured(3).toInt()};
    }
    return found;
}

int EntriesOf(Tour& tour) {
    return tour.Console.State().Book.Entries.UpperBound();
}

std::map<QString, Collected> CollectByHand(Tour& tour) {
    ConsoleRun& console = tour.Console;
    console.Choose(QStringLiteral("mnuCollectBook"));
    tour.Sim.Ask(QStringLiteral("silence ") + SilentName);
    tour.Sim.Ask(QStringLiteral("fault pass 40"));
    tour.Sim.Ask(QStringLiteral("fault lose-reply 2"));
    console.Choose(QStringLiteral("mnuCollect"));
    tour.Sim.Ask(QStringLiteral("wake ") + SilentName);
    const QString log =
        console.Window().findChild<QPlainTextEdit*>(QStringLiteral("txtLog"))->toPlainText();
    Tour::Say(QStringLiteral("\n") + log);
    tour.Keep(QStringLiteral("collected"));
    tour.Check(log.contains(SilentName + QStringLiteral("...FAIL, no answer")),
               QStringLiteral("the silent logger in the log"));
    tour.Check(log.contains(QStringLiteral("\nDone\n")), QStringLiteral("the end of the walk"));
    tour.Check(DoneIn(log) == EntriesOf(tour) - 1,
               QStringLiteral("loggers collected: %1").arg(DoneIn(log)));
    return CollectedIn(log);
}

QString CollectByItself(Tour& tour) {
    ConsoleRun& console = tour.Console;
    console.Choose(QStringLiteral("mnuCollectRegularly"));
    auto* form = console.Window().findChild<QWidget*>(QStringLiteral("frmCollect"));
    if (form == nullptr || !form->isVisible()) {
        throw std::runtime_error("frmCollect does not come up");
    }
    console.Click(QStringLiteral("chkOn"), form);
    console.Click(QStringLiteral("cmdSave"), form);
    console.Clock().GoAhead(SecondsOfDay);
    auto* last = form->findChild<QLabel*>(QStringLiteral("lblLast"));
    const bool came = ConsoleRun::RunUntil(
        [last] { return last->text().contains(QStringLiteral("loggers done")); }, Patience);
    tour.Check(came, QStringLiteral("the round does not come"));
    tour.Keep(QStringLiteral("round"), form);
    form->findChild<QTabWidget*>(QStringLiteral("tabPages"))->setCurrentIndex(2);
    ConsoleRun::RunFor(1000);
    tour.Keep(QStringLiteral("round-log"), form);
    const QString log =
        form->findChild<QPlainTextEdit*>(QStringLiteral("txtRoundLog"))->toPlainText();
    Tour::Say(QStringLiteral("\n") + log);
    form->close();
    return log;
}

}  // namespace

void CollectNetwork(Tour& tour) {
    const auto first = CollectByHand(tour);
    const QString log = CollectByItself(tour);
    const auto second = CollectedIn(log);
    tour.Check(DoneIn(log) == EntriesOf(tour),
               QStringLiteral("loggers collected by the round: %1").arg(DoneIn(log)));
    for (const auto& [name, before] : first) {
        const auto now = second.find(name);
        tour.Check(now != second.end() && now->second.New == now->second.Records - before.Records,
                   name + QStringLiteral(": the second time something else is new than what was "
                                         "logged since"));
    }
    tour.CheckBoxes({});
}

}  // namespace whole_program
