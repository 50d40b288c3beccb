#ifndef ORVIA_TESTS_WHOLE_PROGRAM_SIM_PROCESS_H
#define ORVIA_TESTS_WHOLE_PROGRAM_SIM_PROCESS_H

#include <QString>
#include <QStringList>
#include <memory>
#include <vector>

#include "whole_program/sim_channel.h"

namespace whole_program {

/// What a site's sensors truly say.
struct Truth {
    std::vector<double> Analog;
    std::vector<QString> Units;
    double Flow = 0;
    double Velocity = 0;
    int Records = 0;
};

/// orvia-sim, serving a network at a link, under control.
class SimProcess {
 public:
    /// Starts it; throws std::runtime_error if it does not come up.
    SimProcess(const QString& program, const QString& network, const QString& link,
               const QStringList& options = {});

    /// Sends a command and returns the lines of its answer; throws if it says error.
    QStringList Ask(const QString& command);
    /// What the site's sensors say now.
    [[nodiscard]] Truth TruthOf(const QString& site);
    /// What they said at the moment of a record, 1 the oldest.
    [[nodiscard]] Truth RecordOf(const QString& site, int number);

 private:
    [[nodiscard]] Truth TruthBy(const QString& command);

    std::unique_ptr<SimChannel> channel_;
};

}  // namespace whole_program

#endif  // ORVIA_TESTS_WHOLE_PROGRAM_SIM_PROCESS_H
