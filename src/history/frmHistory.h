#ifndef ORVIA_HISTORY_FRM_HISTORY_H
#define ORVIA_HISTORY_FRM_HISTORY_H

#include <QDialog>
#include <memory>

#include "history/fill_list.h"
#include "history/history_columns.h"
#include "history/history_context.h"
#include "records/client_window.h"

class HistoryList;
class QLabel;
class QProgressBar;
class QPushButton;

/// The viewer of the history store, whose records belong to the current logger. That logger's
/// window, never null, computes its flow.
class frmHistory final : public QDialog {
    Q_OBJECT

 public:
    frmHistory(const HistoryContext& history, std::shared_ptr<ClientWindow> window,
               QWidget* parent);

    /// Checks the units of the level and fills the list; before the form is shown.
    void Load();

    /// Makes columns and rows anew; with `pack` without records that repeat the one before. Does
    /// nothing once the program closes, as it can under the question that led here.
    void FillList(bool pack);

 private:
    void BuildFrames();
    void BuildList();
    void BuildButtons();
    QPushButton* AddButton(const char* name, const char* text, void (frmHistory::*press)());
    void CheckUnits();
    [[nodiscard]] HistorySource Source() const;
    void FillFollowedBy(QProgressBar& bar, bool pack);
    void Close();
    void Save();
    void Pack();
    void Options();
    void SetPointer(Pointer pointer);

    const HistoryContext history_;
    std::shared_ptr<ClientWindow> window_;  ///< of the logger, whether it is still open or not
    HistoryColumns columns_;
    bool BadUnits_ = false;

    QLabel* lblLoggerName_ = nullptr;
    QLabel* lblNumRecords_ = nullptr;
    HistoryList* lvwHistory_ = nullptr;
    QProgressBar* ProgressBar_ = nullptr;
    QPushButton* cmdOK_ = nullptr;
};

#endif  // ORVIA_HISTORY_FRM_HISTORY_H
