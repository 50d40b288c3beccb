#ifndef ORVIA_ARCHIVE_FRM_ARCHIVE_LISTS_H
#define ORVIA_ARCHIVE_FRM_ARCHIVE_LISTS_H

#include <QAbstractTableModel>
#include <QSortFilterProxyModel>
#include <QTableView>
#include <cstdint>
#include <string>
#include <vector>

#include "archive/archive_list.h"

/// Shows the loggers of an archive to a view. Texts are made when they are asked for.
class LoggerModel final : public QAbstractTableModel {
 public:
    LoggerModel(const SystemClock& clock, QObject* parent)
        : QAbstractTableModel(parent), clock_(clock) {}

    /// Takes the loggers anew; those that are still there keep their rows, so that what is chosen
    /// stays chosen.
    void SetLines(const std::vector<LoggerLine>& lines);
    /// Takes a logger's gaps.
    void SetGaps(std::int64_t logger, std::int64_t gaps);
    [[nodiscard]] const LoggerLine& Line(int row) const {
        return lines_[static_cast<std::size_t>(row)];
    }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

 private:
    void RemoveGone(const std::vector<LoggerLine>& lines);
    void UpdateOrAdd(const std::vector<LoggerLine>& lines);

    const SystemClock& clock_;
    std::vector<LoggerLine> lines_;
};

/// The loggers that the filter lets through, in the order of a column.
class LoggerOrder final : public QSortFilterProxyModel {
 public:
    using QSortFilterProxyModel::QSortFilterProxyModel;

    void SetFilter(const std::string& text);
    [[nodiscard]] const LoggerLine& Line(int row) const;

 protected:
    [[nodiscard]] bool lessThan(const QModelIndex& left, const QModelIndex& right) const override;
    [[nodiscard]] bool filterAcceptsRow(int row, const QModelIndex& parent) const override;

 private:
    [[nodiscard]] const LoggerModel& Source() const;

    std::string filter_;
};

/// Shows the uploads of a logger to a view.
class UploadModel final : public QAbstractTableModel {
 public:
    UploadModel(const SystemClock& clock, QObject* parent)
        : QAbstractTableModel(parent), clock_(clock) {}

    /// Puts the local times in.
    void SetLines(std::vector<UploadLine> lines);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

 private:
    const SystemClock& clock_;
    std::vector<UploadLine> lines_;
};

/// A list of either.
class ArchiveList final : public QTableView {
 public:
    ArchiveList(QWidget* parent, const QString& name, const QString& meaning);

    /// Widths of the columns, in digits; one takes what is left.
    void SetWidths(const std::vector<int>& digits, int stretched);

 protected:
    void changeEvent(QEvent* event) override;

 private:
    void FitRows();
    void FitColumns();

    std::vector<int> digits_;
    int stretched_ = 0;
};

#endif  // ORVIA_ARCHIVE_FRM_ARCHIVE_LISTS_H
