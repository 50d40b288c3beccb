#ifndef ORVIA_ARCHIVE_FRM_PLOT_H
#define ORVIA_ARCHIVE_FRM_PLOT_H

#include <QDialog>
#include <QTimer>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "archive/archive_context.h"
#include "archive/named_series.h"
#include "archive/periods.h"
#include "platform/host.h"

class PlotChart;
class PlotLineList;
class QBoxLayout;
class QLabel;
class QPagedPaintDevice;
class QPushButton;

/// The window of a plot: the lines to choose from, with what each has under the cursor, and the
/// chart. It stands beside the other windows, and goes when it is closed.
class frmPlot final : public QDialog {
    Q_OBJECT

 public:
    using SharedSeries = std::shared_ptr<const NamedSeries>;
    /// Gives the newest readings; the same as before while there are no newer ones, and nothing
    /// once there will be no more.
    using LiveSource = std::function<SharedSeries()>;

    /// Plots one series or several over each other; `span` is all of the time, that of the records
    /// if it is empty.
    frmPlot(const ArchiveContext& context, std::vector<SharedSeries> series, const Period& span,
            QWidget* parent);
    /// Plots the readings of the last hour as they come in, under that name.
    frmPlot(const ArchiveContext& context, const std::string& name, LiveSource source,
            QWidget* parent);
    ~frmPlot() override;

    /// Closes the window at the end of the program: nobody is told anything any more.
    void Unload();

    /// Has the operator choose the paper to print on; nothing if that was cancelled. A test answers
    /// in his place.
    std::function<std::unique_ptr<QPagedPaintDevice>(const QString& title, QWidget* parent)>
        AskPaper;

 private:
    void Build(const QString& title);
    [[nodiscard]] QWidget* BuildSide();
    [[nodiscard]] QWidget* BuildChart();
    void BuildZooms(QBoxLayout& row);
    void BuildButtons(QBoxLayout& column);
    void FitScreen();
    QPushButton* Button(const char* name, const char* caption, const char* help,
                        std::function<void()> press);

    void ShowLines();
    void ShowPart();
    void ShowReadout();
    void ShowNote();
    void TakeReadings();
    void Tell(const BoxContent& box) const;
    void Save();
    void Print();

    const ArchiveContext context_;
    std::vector<SharedSeries> series_;
    std::string name_;
    LiveSource source_;  ///< none unless the plot is live
    Period hour_;        ///< that a live plot knows
    QTimer pulse_;
    bool unloaded_ = false;

    PlotLineList* list_ = nullptr;
    QLabel* lblCursor_ = nullptr;
    QLabel* lblMarks_ = nullptr;
    PlotChart* chart_ = nullptr;
    QPushButton* cmdAll_ = nullptr;
    QPushButton* cmdBack_ = nullptr;
    QPushButton* cmdPeriod_ = nullptr;
    QLabel* lblState_ = nullptr;
};

#endif  // ORVIA_ARCHIVE_FRM_PLOT_H
