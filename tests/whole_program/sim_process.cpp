#include "whole_program/sim_process.h"

#include <stdexcept>

namespace whole_program {

namespace {

double Number(const QStringList& words, qsizetype at) {
    return words.value(at).toDouble();
}

}  // namespace

SimProcess::SimProcess(const QString& program, const QString& network, const QString& link,
                       const QStringList& options)
    : channel_(
          StartSimulator(program, QStringList{network, QStringLiteral("--link"), link,
                                              QStringLiteral("--control"), QStringLiteral("-")} +
                                      options)) {
    const QString first = channel_->Hear();
    if (!first.startsWith(QLatin1String("ready"))) {
        throw std::runtime_error("the simulator did not start: " + first.toStdString());
    }
}

QStringList SimProcess::Ask(const QString& command) {
    channel_->Say(command);
    QStringList lines;
    for (QString line = channel_->Hear(); line != QLatin1String("ok"); line = channel_->Hear()) {
        if (line.isNull() || line.startsWith(QLatin1String("error"))) {
            throw std::runtime_error((command + QStringLiteral(": ") + line).toStdString());
        }
        lines << line;
    }
    return lines;
}

Truth SimProcess::TruthOf(const QString& site) {
    return TruthBy(QStringLiteral("truth ") + site);
}

Truth SimProcess::RecordOf(const QString& site, int number) {
    return TruthBy(QStringLiteral("recorded %1 %2").arg(site).arg(number));
}

Truth SimProcess::TruthBy(const QString& command) {
    Truth truth;
    for (const QString& line : Ask(command)) {
        const QStringList words = line.split(QLatin1Char(' '));
        if (words.first() == QLatin1String("analog")) {
            truth.Analog.push_back(Number(words, 2));
            truth.Units.push_back(words.mid(3, words.size() - 5).join(QLatin1Char(' ')));
        } else if (words.first() == QLatin1String("flow")) {
            truth.Flow = Number(words, 1);
            truth.Velocity = Number(words, 4);
        } else if (words.first() == QLatin1String("records")) {
            truth.Records = words.value(1).toInt();
        }
    }
    return truth;
}

}  // namespace whole_program
