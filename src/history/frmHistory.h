#ifndef ORVIA_HISTORY_FRM_HISTORY_H
#define ORVIA_HISTORY_FRM_HISTORY_H

#include <QDialog>
#include <functional>
#include <memory>

#include "history/fill_list.h"
#include "history/history_columns.h"
#include "history/history_context.h"
#include "records/client_window.h"

class HistoryList;
class QLabel;
class QProgressBar;
class QPushButton;

/// Shows the records of the viewer as a plot; `points` are those of the flow device, `viewer` the
/// modal window that it must be used beside, and outlives.
using ShowRecordPlot = std::function<void(const FlowTable& points, QDialog& viewer)>;

/// The viewer of the history store, whose records belong to the current logger. That logger's
/// window, never null, computes its flow.
class frmHistory final : public QDialog {
    Q_OBJECT

 public:
    /// Without a procedure for it there is no plot to be had.
    frmHistory(const HistoryContext& history, std::shared_ptr<ClientWindow> window, QWidget* parent,
               ShowRecordPlot plot = nullptr);

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
    void Plot();
    void SetPointer(Pointer pointer);

    const HistoryContext history_;
    std::shared_ptr<ClientWindow> window_;  ///< of the logger, whether it is still open or not
    const ShowRecordPlot plot_;
    HistoryColumns columns_;
    bool BadUnits_ = false;

    QLabel* lblLoggerName_ = nullptr;
    QLabel* lblNumRecords_ = nullptr;
    HistoryList* lvwHistory_ = nullptr;
    QProgressBar* ProgressBar_ = nullptr;
    QPushButton* cmdOK_ = nullptr;
};

#endif  // ORVIA_HISTORY_FRM_HISTORY_H
