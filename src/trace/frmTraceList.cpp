#include "trace/frmTraceList.h"

#include <QFontMetrics>
#include <QHeaderView>
#include <QScrollBar>
#include <QTextDocument>
#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "platform/qt/text_qt.h"

namespace {

/// A column: its heading, the words it shows, and a text of usual length.
struct Column {
    std::string_view Heading;
    std::string ExchangeWords::*Words;
    std::string_view Usual;
};

constexpr std::array<Column, 8> Columns{
    {{"Time", &ExchangeWords::Time, "2026-00-00 00:00:00.000"},
     {"Direction", &ExchangeWords::Direction, "out, in"},
     {"Radio or Logger", &ExchangeWords::Who, "Hill Tanks (channel 00, MAC 00-00-00)"},
     {"Asked", &ExchangeWords::Asked, "history, last block again"},
     {"Came", &ExchangeWords::Came, "acknowledged, 242 bytes from 8"},
     {"After", &ExchangeWords::After, "1000 ms"},
     {"Try", &ExchangeWords::Try, "2 of 3"},
     {"Fault", &ExchangeWords::Fault, "no acknowledge within 0.8 s"}}};
constexpr int CameColumn = 4;

}  // namespace

// ----- the model

void TraceModel::SetFilter(const TraceFilter& filter) {
    beginResetModel();
    rows_.SetFilter(filter);
    endResetModel();
}

void TraceModel::Follow(LoggerNames names) {
    names_ = std::move(names);
    DropOutdated();
    RenewLast();
    TakeFresh();
}

void TraceModel::DropOutdated() {
    const std::size_t outdated = rows_.Outdated();
    if (outdated > 0) {
        beginRemoveRows({}, 0, static_cast<int>(outdated) - 1);
        rows_.DropOutdated(outdated);
        endRemoveRows();
    }
}

void TraceModel::RenewLast() {
    if (!rows_.LastMayHaveChanged()) {
        return;
    }
    const int last = rowCount() - 1;
    if (rows_.LastFails()) {
        beginRemoveRows({}, last, last);
        rows_.DropLast();
        endRemoveRows();
    } else {
        Q_EMIT dataChanged(index(last, 0), index(last, columnCount() - 1));
    }
}

void TraceModel::TakeFresh() {
    const std::vector<std::uint64_t> fresh = rows_.Fresh();
    if (fresh.empty()) {
        rows_.Append(fresh);
        return;
    }
    const int first = rowCount();
    beginInsertRows({}, first, first + static_cast<int>(fresh.size()) - 1);
    rows_.Append(fresh);
    endInsertRows();
}

int TraceModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.Count());
}

int TraceModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(Columns.size());
}

QString TraceModel::TextAt(int row, int column) const {
    const std::uint64_t number = rows_.Number(static_cast<std::size_t>(row));
    if (!store_.Holds(number)) {
        return column == CameColumn ? QStringLiteral("(no longer kept)") : QString();
    }
    const ExchangeWords words = InWords(store_.At(number), names_);
    return ToQt(words.*Columns.at(static_cast<std::size_t>(column)).Words);
}

QVariant TraceModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount()) {
        return {};
    }
    switch (role) {
        case Qt::DisplayRole:
            return TextAt(index.row(), index.column());
        case Qt::ToolTipRole:
            // What a cell cuts off can be read all the same, and is never taken for markup.
            return Qt::convertFromPlainText(TextAt(index.row(), index.column()));
        default:
            return {};
    }
}

QVariant TraceModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section >= columnCount()) {
        return {};
    }
    switch (role) {
        case Qt::DisplayRole:
            return ToQt(Columns.at(static_cast<std::size_t>(section)).Heading);
        case Qt::TextAlignmentRole:
            return QVariant(Qt::AlignLeft | Qt::AlignVCenter);
        default:
            return {};
    }
}

// ----- the view

TraceList::TraceList(const TraceStore& store, QWidget* parent) : QTableView(parent), model_(store) {
    setObjectName(QStringLiteral("lvwTrace"));
    setAccessibleName(QStringLiteral("Exchanges"));
    setModel(&model_);
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setTabKeyNavigation(false);
    setAlternatingRowColors(true);
    setShowGrid(false);
    setWordWrap(false);
    verticalHeader()->hide();
    // One height for all rows: none of them is ever asked for its own.
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 4);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setStretchLastSection(true);
    SizeColumns();
}

void TraceList::SizeColumns() {
    const int margin = 3 * fontMetrics().averageCharWidth();
    for (int column = 0; column < model_.columnCount(); ++column) {
        const QString usual = ToQt(Columns.at(static_cast<std::size_t>(column)).Usual);
        const int width = fontMetrics().horizontalAdvance(usual) + margin;
        horizontalHeader()->resizeSection(
            column, std::max(width, horizontalHeader()->sectionSizeHint(column)));
    }
}

bool TraceList::AtEnd() const {
    return verticalScrollBar()->value() >= verticalScrollBar()->maximum();
}

void TraceList::SetFilter(const TraceFilter& filter, LoggerNames names) {
    model_.SetFilter(filter);
    model_.Follow(std::move(names));
    scrollToBottom();
}

void TraceList::Follow(LoggerNames names) {
    const bool follows = AtEnd();
    const auto dropped = static_cast<int>(model_.Rows().Outdated());
    const int before = verticalScrollBar()->value();
    model_.Follow(std::move(names));
    if (follows) {
        scrollToBottom();
    } else if (dropped > 0) {
        // The rows that are read stay in their place while those above them go.
        verticalScrollBar()->setValue(std::max(before - dropped, 0));
    }
}

std::vector<std::size_t> TraceList::Chosen() const {
    std::vector<std::size_t> rows;
    for (const QModelIndex& index : selectionModel()->selectedRows()) {
        rows.push_back(static_cast<std::size_t>(index.row()));
    }
    std::sort(rows.begin(), rows.end());
    return rows;
}

std::vector<std::size_t> TraceList::All() const {
    std::vector<std::size_t> rows(model_.Rows().Count());
    for (std::size_t row = 0; row < rows.size(); ++row) {
        rows[row] = row;
    }
    return rows;
}

std::optional<std::size_t> TraceList::Current() const {
    const QModelIndex index = currentIndex();
    return index.isValid() ? std::optional(static_cast<std::size_t>(index.row())) : std::nullopt;
}

void TraceList::GoTo(std::size_t row) {
    const QModelIndex index = model_.index(static_cast<int>(row), 0);
    setCurrentIndex(index);
    scrollTo(index);
}
