#ifndef ORVIA_PLATFORM_QT_QT_COMMAND_RUNNER_H
#define ORVIA_PLATFORM_QT_QT_COMMAND_RUNNER_H

#include <QObject>

#include "platform/host.h"

/// Starts programs through the system, without a shell. They go on when this one ends.
class QtCommandRunner final : public CommandRunner {
 public:
    [[nodiscard]] bool Start(const std::string& program, const std::vector<std::string>& arguments,
                             const std::string& input) override;
};

#endif  // ORVIA_PLATFORM_QT_QT_COMMAND_RUNNER_H
