#include "flow/frmRatingSheet.h"

#include <QEvent>
#include <QHeaderView>
#include <utility>

#include "platform/qt/text_qt.h"

void RatingSheetModel::SetSheet(RatingSheet sheet) {
    beginResetModel();
    sheet_ = std::move(sheet);
    endResetModel();
}

int RatingSheetModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(sheet_.Rows.size());
}

int RatingSheetModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(sheet_.Headings.size());
}

QVariant RatingSheetModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) {
        return {};
    }
    const RatingSheet::Row& row = sheet_.Rows[static_cast<std::size_t>(index.row())];
    switch (role) {
        case Qt::DisplayRole:
            return ToQt(row.Cells[static_cast<std::size_t>(index.column())]);
        case Qt::TextAlignmentRole:
            return QVariant(Qt::AlignRight | Qt::AlignVCenter);
        case Qt::FontRole: {
            QFont font;
            font.setItalic(true);
            return row.Marked ? QVariant(font) : QVariant();
        }
        case Qt::ToolTipRole:
        case Qt::AccessibleDescriptionRole:
            return row.Remark.empty() ? QVariant() : QVariant(ToQt(row.Remark));
        default:
            return {};
    }
}

QVariant RatingSheetModel::headerData(int section, Qt::Orientation orientation, int role) const {
    const auto column = static_cast<std::size_t>(section);
    if (orientation != Qt::Horizontal || column >= sheet_.Headings.size()) {
        return {};
    }
    switch (role) {
        case Qt::DisplayRole:
            return ToQt(sheet_.Headings[column]);
        case Qt::TextAlignmentRole:
            return QVariant(Qt::AlignRight | Qt::AlignVCenter);
        default:
            return {};
    }
}

RatingSheetView::RatingSheetView(QWidget* parent, const QString& name, const QString& meaning)
    : QTableView(parent) {
    setObjectName(name);
    setAccessibleName(meaning);
    setModel(&model_);
    setTabKeyNavigation(false);
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setAlternatingRowColors(true);
    setShowGrid(false);
    verticalHeader()->hide();
    horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    horizontalHeader()->setHighlightSections(false);
    FitRows();
}

void RatingSheetView::FitRows() {
    const int height = fontMetrics().height() + fontMetrics().height() / 3;
    verticalHeader()->setMinimumSectionSize(height);
    verticalHeader()->setDefaultSectionSize(height);
}

void RatingSheetView::SetSheet(RatingSheet sheet) {
    setting_ = true;
    model_.SetSheet(std::move(sheet));
    setting_ = false;
}

void RatingSheetView::SetRow(int row) {
    setting_ = true;
    if (row < model_.rowCount()) {
        setCurrentIndex(model_.index(row, 0));
    }
    setting_ = false;
}

void RatingSheetView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTableView::currentChanged(current, previous);
    if (!setting_ && current.isValid() && RowChosen) {
        RowChosen(current.row());
    }
}

void RatingSheetView::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        FitRows();
    }
}
