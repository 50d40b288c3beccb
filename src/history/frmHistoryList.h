#ifndef ORVIA_HISTORY_FRM_HISTORY_LIST_H
#define ORVIA_HISTORY_FRM_HISTORY_LIST_H

#include <QAbstractTableModel>
#include <QTreeView>
#include <vector>

#include "history/history_table.h"

/// Shows the rows of a table to a view. Nothing is held for a row: what is on the screen is asked
/// of the table.
class HistoryModel final : public QAbstractTableModel {
 public:
    using QAbstractTableModel::QAbstractTableModel;

    /// Takes other rows and columns.
    void SetTable(HistoryTable table);
    [[nodiscard]] const HistoryTable& Table() const { return table_; }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

 private:
    HistoryTable table_;
};

/// The list of the viewer.
class HistoryList final : public QTreeView {
 public:
    explicit HistoryList(QWidget* parent);

    void SetTable(HistoryTable table);
    [[nodiscard]] const HistoryTable& Table() const { return model_.Table(); }

 protected:
    void drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                 const QModelIndex& index) const override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;

 private:
    void MeasureColumns();
    void SpreadColumns();

    HistoryModel model_;
    std::vector<int> widths_;  ///< of the columns, as their texts need
};

#endif  // ORVIA_HISTORY_FRM_HISTORY_LIST_H
