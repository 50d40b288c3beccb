#ifndef ORVIA_TRACE_FRM_TRACE_LIST_H
#define ORVIA_TRACE_FRM_TRACE_LIST_H

#include <QAbstractTableModel>
#include <QTableView>
#include <optional>
#include <string>
#include <vector>

#include "trace/trace_filter.h"

/// Shows the entries of the trace to a view. Nothing is held for a row but its number: what is on
/// the screen is put into words when it is drawn.
class TraceModel final : public QAbstractTableModel {
    Q_OBJECT

 public:
    explicit TraceModel(const TraceStore& store) : store_(store), rows_(store) {}

    void SetFilter(const TraceFilter& filter);
    /// Takes in what has happened since.
    void Follow(LoggerNames names);
    [[nodiscard]] const TraceRows& Rows() const { return rows_; }
    [[nodiscard]] const LoggerNames& Names() const { return names_; }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

 private:
    void DropOutdated();
    void RenewLast();
    void TakeFresh();
    [[nodiscard]] QString TextAt(int row, int column) const;

    const TraceStore& store_;
    TraceRows rows_;
    LoggerNames names_;
};

/// The table of the trace. It stays at the end while the end is in sight.
class TraceList final : public QTableView {
    Q_OBJECT

 public:
    TraceList(const TraceStore& store, QWidget* parent);

    [[nodiscard]] const TraceModel& Model() const { return model_; }
    void SetFilter(const TraceFilter& filter, LoggerNames names);
    void Follow(LoggerNames names);
    /// The rows that are chosen, from the top.
    [[nodiscard]] std::vector<std::size_t> Chosen() const;
    /// All rows.
    [[nodiscard]] std::vector<std::size_t> All() const;
    [[nodiscard]] std::optional<std::size_t> Current() const;
    void GoTo(std::size_t row);

 protected:
    void resizeEvent(QResizeEvent* event) override;

 private:
    void ShareWidth();
    void KeepToEnd();

    TraceModel model_;
    bool atEnd_ = true;        ///< the end is in sight, and stays there
    int end_ = 0;              ///< of the bar, as far as is known here
    bool sharing_ = false;     ///< the widths of columns change by the program's own doing
    bool byOperator_ = false;  ///< the operator has given a column its width: they stay
};

#endif  // ORVIA_TRACE_FRM_TRACE_LIST_H
