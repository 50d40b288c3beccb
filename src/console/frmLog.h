#ifndef ORVIA_CONSOLE_FRM_LOG_H
#define ORVIA_CONSOLE_FRM_LOG_H

#include <QMdiSubWindow>
#include <string>

class QPlainTextEdit;
class QPushButton;
class StatusLine;

/// The log of a walk over all client windows, a child of the main window. Its button asks a
/// running walk to end, and hides the window behind it.
class frmLog final : public QMdiSubWindow {
    Q_OBJECT

 public:
    frmLog();

    /// Empties the log, for a new walk.
    void Reset();
    /// Adds to the end, where the caret goes, so that the box follows.
    void AppendText(const std::string& text);
    [[nodiscard]] std::string Text() const;
    /// What stands beside the button; empty takes it away.
    void SetFoot(const std::string& text);
    /// The walk is over: the button closes.
    void EndWalk();

    /// False once it was closed by its frame; then it only waits to be deleted.
    [[nodiscard]] bool IsLoaded() const { return loaded_; }
    /// Takes the window out of its area and has it deleted; a walk goes on without a log.
    void Unload();

    bool CancelRequested = false;

 protected:
    void mousePressEvent(QMouseEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

 private:
    void PressClose();
    /// The area would leave no window active behind one that hides: the uppermost one becomes so.
    void HideFromArea();

    QPlainTextEdit* txtLog_;
    StatusLine* lblFoot_;
    QPushButton* cmdClose_;
    bool loaded_ = true;
    bool cancels_ = true;  ///< the button reads "Cancel"
};

#endif  // ORVIA_CONSOLE_FRM_LOG_H
