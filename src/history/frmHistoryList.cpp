#include "history/frmHistoryList.h"

#include <QHeaderView>
#include <algorithm>
#include <utility>

#include "platform/qt/text_qt.h"

namespace {

QVariant AlignmentOf(int column) {
    const Qt::Alignment across = column == 0 ? Qt::AlignLeft : Qt::AlignHCenter;
    return QVariant(across | Qt::AlignVCenter);
}

}  // namespace

void HistoryModel::SetTable(HistoryTable table) {
    beginResetModel();
    table_ = std::move(table);
    endResetModel();
}

int HistoryModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : table_.RowCount();
}

int HistoryModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : table_.ColumnCount();
}

QVariant HistoryModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) {
        return {};
    }
    switch (role) {
        case Qt::DisplayRole:
            return ToQt(table_.Text(index.row(), index.column()));
        case Qt::TextAlignmentRole:
            return AlignmentOf(index.column());
        default:
            return {};
    }
}

QVariant HistoryModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section >= table_.ColumnCount()) {
        return {};
    }
    switch (role) {
        case Qt::DisplayRole:
            return ToQt(table_.Heading(section));
        case Qt::TextAlignmentRole:
            return AlignmentOf(section);
        default:
            return {};
    }
}

HistoryList::HistoryList(QWidget* parent) : QTreeView(parent) {
    setObjectName(QStringLiteral("lvwHistory"));
    setAccessibleName(QStringLiteral("Records"));
    setRootIsDecorated(false);
    setItemsExpandable(false);
    // Without it the height of every single row is asked for.
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setAlternatingRowColors(true);
    setTabKeyNavigation(false);
    header()->setStretchLastSection(false);
    setModel(&model_);
}

void HistoryList::SetTable(HistoryTable table) {
    model_.SetTable(std::move(table));
    FitColumns();
    if (model_.rowCount() > 0) {
        setCurrentIndex(model_.index(0, 0));
    }
}

void HistoryList::FitColumns() {
    const HistoryTable& table = model_.Table();
    const int margin = 3 * fontMetrics().averageCharWidth();
    for (int column = 0; column < table.ColumnCount(); ++column) {
        const int text = fontMetrics().horizontalAdvance(ToQt(table.LongestText(column)));
        header()->resizeSection(column, std::max(text + margin, header()->sectionSizeHint(column)));
    }
}
