#ifndef ORVIA_CONSOLE_OPERATION_LOG_H
#define ORVIA_CONSOLE_OPERATION_LOG_H

#include <string>

/// Where operations tell what they do, without asking who is listening.
class OperationLog {
 public:
    virtual ~OperationLog() = default;

    /// Adds to the end of the log; does nothing while no log window is loaded.
    virtual void AppendLog(const std::string& text) = 0;
};

/// The log as a walk over all windows uses it.
class WalkLog : public OperationLog {
 public:
    /// Loads the log window if there is none, shows it, empty and with its button on "Cancel", and
    /// gives it the focus.
    virtual void OpenLog() = 0;
    /// False once the operator has closed it by its frame.
    [[nodiscard]] virtual bool LogWindowOpen() const = 0;
    /// Whether the operator asked the walk to end.
    [[nodiscard]] virtual bool CancelRequested() const = 0;
    /// What stands below the log while a walk tells how far it is; empty takes it away.
    virtual void SetFoot(const std::string& text) = 0;
    /// The walk is over: the button of the window, if that is loaded, turns to "Close".
    virtual void EndLog() = 0;
};

#endif  // ORVIA_CONSOLE_OPERATION_LOG_H
