#ifndef ORVIA_FLOW_FRM_RATING_SHEET_H
#define ORVIA_FLOW_FRM_RATING_SHEET_H

#include <QAbstractTableModel>
#include <QTableView>
#include <functional>

#include "flow/rating_picture.h"

/// Shows a sheet to a view; rows with a mark are slanted and say why.
class RatingSheetModel final : public QAbstractTableModel {
 public:
    using QAbstractTableModel::QAbstractTableModel;

    void SetSheet(RatingSheet sheet);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

 private:
    RatingSheet sheet_;
};

/// A list of figures, one row of which may be the current one.
class RatingSheetView final : public QTableView {
 public:
    RatingSheetView(QWidget* parent, const QString& name, const QString& meaning);

    void SetSheet(RatingSheet sheet);
    void SetRow(int row);

    /// Called when the operator goes to a row.
    std::function<void(int row)> RowChosen;

 protected:
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void changeEvent(QEvent* event) override;

 private:
    void FitRows();

    RatingSheetModel model_;
    bool setting_ = false;
};

#endif  // ORVIA_FLOW_FRM_RATING_SHEET_H
