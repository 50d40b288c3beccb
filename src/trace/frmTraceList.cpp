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

/// A column: its heading, the words it shows, a text of usual length, and whether it gives way
/// where all of them do not fit.
struct Column {
    std::string_view Heading;
    std::string ExchangeWords::*Words;
    std::string_view Usual;
    bool GivesWay;
};

constexpr std::array<Column, 8> Columns{
    {{"Time", &ExchangeWords::Time, "2026-00-00 00:00:00.000", false},
     {"Direction", &ExchangeWords::Direction, "out, in", false},
     {"Radio or Logger", &ExchangeWords::Who, "Hill Tanks (channel 00, MAC 00-00-00)", true},
     {"Asked", &ExchangeWords::Asked, "history, last block again", true},
     {"Came", &ExchangeWords::Came, "acknowledged, 242 bytes from 8", true},
     {"After", &ExchangeWords::After, "1000 ms", false},
     {"Try", &ExchangeWords::Try, "2 of 3", false},
     {"Fault", &ExchangeWords::Fault, "no acknowledge within 0.8 s", true}}};
constexpr int CameColumn = 4;
constexpr int FaultColumn = 7;

const Column& ColumnAt(int column) {
    return Columns.at(static_cast<std::size_t>(column));
}

QFont FaultFont() {
    QFont font;
    font.setBold(true);
    return font;
}

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
    return ToQt(words.*ColumnAt(column).Words);
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
        case Qt::FontRole:
            return index.column() == FaultColumn ? QVariant(FaultFont()) : QVariant();
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
            return ToQt(ColumnAt(section).Heading);
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
    KeepToEnd();
    // The last column stretches by itself.
    connect(horizontalHeader(), &QHeaderView::sectionResized, this,
            [this](int column) { byOperator_ |= !sharing_ && column != FaultColumn; });
}

void TraceList::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    if (!byOperator_) {
        sharing_ = true;
        ShareWidth();
        sharing_ = false;
    }
}

/// Each column has its usual width. Where they do not all fit, those with long words share what the
/// others leave, so that a fault is in sight in any window.
void TraceList::ShareWidth() {
    const int margin = 3 * fontMetrics().averageCharWidth();
    std::array<int, Columns.size()> widths{};
    int fixed = 0;
    int yielding = 0;
    for (int column = 0; column < model_.columnCount(); ++column) {
        const QString usual = ToQt(ColumnAt(column).Usual);
        const int width = std::max(fontMetrics().horizontalAdvance(usual) + margin,
                                   horizontalHeader()->sectionSizeHint(column));
        widths.at(static_cast<std::size_t>(column)) = width;
        (ColumnAt(column).GivesWay ? yielding : fixed) += width;
    }
    const int room = std::clamp(viewport()->width() - fixed, 1, yielding);
    for (int column = 0; column < model_.columnCount(); ++column) {
        const int usual = widths.at(static_cast<std::size_t>(column));
        const int width = ColumnAt(column).GivesWay ? usual * room / yielding : usual;
        horizontalHeader()->resizeSection(
            column, std::max(width, horizontalHeader()->sectionSizeHint(column)));
    }
}

/// Rows that come make the bar longer some time later. Its value then is no sign that the operator
/// has scrolled away; one that changes is. A change may itself have the bar grow, before it is
/// heard of here.
void TraceList::KeepToEnd() {
    const QScrollBar* bar = verticalScrollBar();
    connect(bar, &QScrollBar::valueChanged, this,
            [this, bar](int value) { atEnd_ = value >= bar->maximum(); });
    connect(bar, &QScrollBar::rangeChanged, this, [this](int /*first*/, int last) {
        const bool moved = verticalScrollBar()->value() < end_;
        end_ = last;
        if (atEnd_ && !moved) {
            verticalScrollBar()->setValue(last);
        }
    });
}

void TraceList::SetFilter(const TraceFilter& filter, LoggerNames names) {
    model_.SetFilter(filter);
    model_.Follow(std::move(names));
    atEnd_ = true;
    scrollToBottom();
}

void TraceList::Follow(LoggerNames names) {
    const auto dropped = static_cast<int>(model_.Rows().Outdated());
    const int before = verticalScrollBar()->value();
    model_.Follow(std::move(names));
    if (!atEnd_ && dropped > 0) {
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
