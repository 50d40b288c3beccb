#include "history/frmHistoryList.h"

#include <QHeaderView>
#include <QItemSelectionModel>
#include <QStyledItemDelegate>
#include <algorithm>
#include <functional>
#include <numeric>
#include <utility>

#include "platform/qt/text_qt.h"

namespace {

/// Gives the rows air to be told apart by.
class RoomyRows final : public QStyledItemDelegate {
 public:
    using QStyledItemDelegate::QStyledItemDelegate;

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const override {
        const QSize hint = QStyledItemDelegate::sizeHint(option, index);
        return {hint.width(), std::max(hint.height(), option.fontMetrics.height() * 3 / 2)};
    }
};

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
    setItemDelegate(new RoomyRows(this));
    setModel(&model_);
}

void HistoryList::SetTable(HistoryTable table) {
    model_.SetTable(std::move(table));
    MeasureColumns();
    SpreadColumns();
    if (model_.rowCount() > 0) {
        // Where the keys begin; nobody has chosen it yet.
        selectionModel()->setCurrentIndex(model_.index(0, 0), QItemSelectionModel::NoUpdate);
    }
}

// Half a row at the lower edge would look like the end of the records.
void HistoryList::drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const {
    const bool whole = option.rect.bottom() < viewport()->height();
    if (whole || option.rect.top() <= 0) {
        QTreeView::drawRow(painter, option, index);
    }
}

void HistoryList::scrollContentsBy(int dx, int dy) {
    QTreeView::scrollContentsBy(dx, dy);
    // A row that was left out moves up as a gap.
    viewport()->update();
}

void HistoryList::resizeEvent(QResizeEvent* event) {
    QTreeView::resizeEvent(event);
    SpreadColumns();
}

void HistoryList::MeasureColumns() {
    const HistoryTable& table = model_.Table();
    const int margin = 3 * fontMetrics().averageCharWidth();
    widths_.clear();
    for (int column = 0; column < table.ColumnCount(); ++column) {
        const int text = fontMetrics().horizontalAdvance(ToQt(table.LongestText(column)));
        widths_.push_back(std::max(text + margin, header()->sectionSizeHint(column)));
    }
}

// What the texts do not need is shared out among the columns.
void HistoryList::SpreadColumns() {
    int spare = std::accumulate(widths_.begin(), widths_.end(), viewport()->width(), std::minus());
    auto left = static_cast<int>(widths_.size());
    int column = 0;
    for (const int width : widths_) {
        const int share = std::max(spare, 0) / left--;
        spare -= share;
        header()->resizeSection(column++, width + share);
    }
}
