#ifndef ORVIA_ARCHIVE_FRM_PLOT_LINES_H
#define ORVIA_ARCHIVE_FRM_PLOT_LINES_H

#include <QTreeWidget>
#include <functional>
#include <memory>
#include <vector>

#include "archive/plot_readout.h"
#include "archive/plot_scene.h"

/// The lines that a plot can show, each to be checked, with a sample of its look and what it has
/// under the cursor. Those of several series stand under their names.
class PlotLineList final : public QTreeWidget {
    Q_OBJECT

 public:
    explicit PlotLineList(QWidget* parent);

    /// Offers all columns of these series; those that a plot begins with are checked. If it is the
    /// same columns again, what is checked stays.
    void SetSeries(const std::vector<std::shared_ptr<const NamedSeries>>& series);
    /// The lines that are checked, in their order.
    [[nodiscard]] std::vector<PlotLine> Chosen() const;
    /// Shows a readout of the chosen lines; none without rows.
    void ShowReadout(const PlotReadout& readout);

    /// Called when the operator checked or cleared a line.
    std::function<void()> ChoiceChanged;

 protected:
    void changeEvent(QEvent* event) override;

 private:
    void AddLines(const std::shared_ptr<const NamedSeries>& series, QTreeWidgetItem* heading);
    void Swatch();

    std::vector<PlotLine> lines_;
    std::vector<QTreeWidgetItem*> rows_;  ///< by line
    bool filling_ = false;
};

#endif  // ORVIA_ARCHIVE_FRM_PLOT_LINES_H
