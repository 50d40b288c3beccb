#ifndef ORVIA_CONSOLE_FRM_WALK_LOG_H
#define ORVIA_CONSOLE_FRM_WALK_LOG_H

#include <QPointer>

#include "console/frmLog.h"
#include "console/operation_log.h"

class QMdiArea;
class QWidget;

/// The log of the main window: makes frmLog for the first walk, and keeps it for the next until
/// the operator closes it by its frame.
class WalkLogForm final : public WalkLog {
 public:
    /// `panel` is the left panel of the main window, which the log's place is reckoned from.
    WalkLogForm(QWidget& main, QMdiArea& area, const QWidget& panel)
        : main_(main), area_(area), panel_(panel) {}
    WalkLogForm(const WalkLogForm&) = delete;
    WalkLogForm& operator=(const WalkLogForm&) = delete;

    void AppendLog(const std::string& text) override;
    void OpenLog() override;
    [[nodiscard]] bool LogWindowOpen() const override;
    [[nodiscard]] bool CancelRequested() const override;
    void SetFoot(const std::string& text) override;
    void EndLog() override;

    /// Unloads the log window, if it is loaded, as its frame does.
    void Unload();
    /// What the log says; empty without one.
    [[nodiscard]] std::string Text() const;

 private:
    void Load();

    QWidget& main_;
    QMdiArea& area_;
    const QWidget& panel_;
    QPointer<frmLog> form_;
};

#endif  // ORVIA_CONSOLE_FRM_WALK_LOG_H
