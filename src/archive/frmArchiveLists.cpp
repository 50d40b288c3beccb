#include "archive/frmArchiveLists.h"

#include <QDateTime>
#include <QEvent>
#include <QHeaderView>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "platform/qt/text_qt.h"

namespace {

QVariant Alignment(bool left) {
    return QVariant((left ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
}

bool IsLeft(LoggerColumn column) {
    return column <= LoggerColumn::Last;
}

bool IsLeft(UploadColumn column) {
    return column <= UploadColumn::Outcome;
}

/// A heading of a list, by column.
template <typename Column>
QVariant Heading(int section, Qt::Orientation orientation, int role, int columns) {
    if (orientation != Qt::Horizontal || section >= columns) {
        return {};
    }
    const auto column = static_cast<Column>(section);
    switch (role) {
        case Qt::DisplayRole:
            return ToQt(HeadingOf(column));
        case Qt::TextAlignmentRole:
            return Alignment(IsLeft(column));
        default:
            return {};
    }
}

LocalTime LocalTimeOf(std::int64_t milliseconds) {
    const QDateTime at = QDateTime::fromMSecsSinceEpoch(milliseconds);
    return {at.date().year(),   at.date().month(),  at.date().day(), at.time().hour(),
            at.time().minute(), at.time().second(), at.time().msec()};
}

}  // namespace

// ----- loggers

void LoggerModel::SetLines(const std::vector<LoggerLine>& lines) {
    RemoveGone(lines);
    UpdateOrAdd(lines);
}

void LoggerModel::RemoveGone(const std::vector<LoggerLine>& lines) {
    std::unordered_set<std::int64_t> left;
    for (const LoggerLine& line : lines) {
        left.insert(line.Summary.Logger.Id);
    }
    for (std::size_t row = lines_.size(); row-- > 0;) {
        if (left.count(lines_[row].Summary.Logger.Id) == 0) {
            const int at = static_cast<int>(row);
            beginRemoveRows({}, at, at);
            lines_.erase(lines_.begin() + at);
            endRemoveRows();
        }
    }
}

void LoggerModel::UpdateOrAdd(const std::vector<LoggerLine>& lines) {
    std::unordered_map<std::int64_t, std::size_t> rows;
    for (std::size_t row = 0; row < lines_.size(); ++row) {
        rows[lines_[row].Summary.Logger.Id] = row;
    }
    std::vector<LoggerLine> fresh;
    for (const LoggerLine& line : lines) {
        const auto row = rows.find(line.Summary.Logger.Id);
        if (row == rows.end()) {
            fresh.push_back(line);
        } else {
            lines_[row->second] = line;
        }
    }
    if (!rows.empty()) {
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, LoggerColumns - 1));
    }
    if (!fresh.empty()) {
        beginInsertRows({}, rowCount(), rowCount() + static_cast<int>(fresh.size()) - 1);
        lines_.insert(lines_.end(), fresh.begin(), fresh.end());
        endInsertRows();
    }
}

void LoggerModel::SetGaps(std::int64_t logger, std::int64_t gaps) {
    for (std::size_t row = 0; row < lines_.size(); ++row) {
        if (lines_[row].Summary.Logger.Id == logger) {
            lines_[row].Gaps = gaps;
            const QModelIndex cell =
                index(static_cast<int>(row), static_cast<int>(LoggerColumn::Gaps));
            Q_EMIT dataChanged(cell, cell);
            return;
        }
    }
}

int LoggerModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(lines_.size());
}

int LoggerModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : LoggerColumns;
}

QVariant LoggerModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) {
        return {};
    }
    const auto column = static_cast<LoggerColumn>(index.column());
    switch (role) {
        case Qt::DisplayRole:
            return ToQt(TextOf(Line(index.row()), column, clock_));
        case Qt::TextAlignmentRole:
            return Alignment(IsLeft(column));
        case Qt::AccessibleTextRole:
            return column == LoggerColumn::Gaps && !Line(index.row()).Gaps
                       ? QVariant(QStringLiteral("not counted yet"))
                       : QVariant();
        default:
            return {};
    }
}

QVariant LoggerModel::headerData(int section, Qt::Orientation orientation, int role) const {
    return Heading<LoggerColumn>(section, orientation, role, LoggerColumns);
}

const LoggerModel& LoggerOrder::Source() const {
    return *static_cast<const LoggerModel*>(sourceModel());
}

void LoggerOrder::SetFilter(const std::string& text) {
    filter_ = text;
    invalidateFilter();
}

const LoggerLine& LoggerOrder::Line(int row) const {
    return Source().Line(mapToSource(index(row, 0)).row());
}

bool LoggerOrder::lessThan(const QModelIndex& left, const QModelIndex& right) const {
    return StandsBefore(Source().Line(left.row()), Source().Line(right.row()),
                        static_cast<LoggerColumn>(left.column()));
}

bool LoggerOrder::filterAcceptsRow(int row, const QModelIndex& /*parent*/) const {
    return filter_.empty() || Matches(Source().Line(row), filter_);
}

// ----- uploads

void UploadModel::SetLines(std::vector<UploadLine> lines) {
    for (UploadLine& line : lines) {
        line.Begin = LocalTimeOf(line.Upload.Begin);
        if (line.Upload.End) {
            line.End = LocalTimeOf(*line.Upload.End);
        }
    }
    // A list that is read stays where it is as long as its rows do.
    const bool same = lines.size() == lines_.size() && !lines.empty() &&
                      lines.front().Upload.Logger == lines_.front().Upload.Logger;
    if (same) {
        lines_ = std::move(lines);
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, UploadColumns - 1));
        return;
    }
    beginResetModel();
    lines_ = std::move(lines);
    endResetModel();
}

int UploadModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(lines_.size());
}

int UploadModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : UploadColumns;
}

QVariant UploadModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) {
        return {};
    }
    const auto column = static_cast<UploadColumn>(index.column());
    switch (role) {
        case Qt::DisplayRole:
            return ToQt(TextOf(lines_[static_cast<std::size_t>(index.row())], column, clock_));
        case Qt::TextAlignmentRole:
            return Alignment(IsLeft(column));
        default:
            return {};
    }
}

QVariant UploadModel::headerData(int section, Qt::Orientation orientation, int role) const {
    return Heading<UploadColumn>(section, orientation, role, UploadColumns);
}

// ----- the view of both

ArchiveList::ArchiveList(QWidget* parent, const QString& name, const QString& meaning)
    : QTableView(parent) {
    setObjectName(name);
    setAccessibleName(meaning);
    setTabKeyNavigation(false);
    setSelectionBehavior(SelectRows);
    setAlternatingRowColors(true);
    setShowGrid(false);
    setWordWrap(false);
    setHorizontalScrollMode(ScrollPerPixel);
    verticalHeader()->hide();
    horizontalHeader()->setHighlightSections(false);
    FitRows();
}

void ArchiveList::SetWidths(const std::vector<int>& digits, int stretched) {
    digits_ = digits;
    stretched_ = stretched;
    FitColumns();
}

void ArchiveList::FitRows() {
    const int height = fontMetrics().height() + fontMetrics().height() / 3;
    verticalHeader()->setMinimumSectionSize(height);
    verticalHeader()->setDefaultSectionSize(height);
}

void ArchiveList::FitColumns() {
    const int margin = fontMetrics().height() / 2;
    for (std::size_t i = 0; i < digits_.size(); ++i) {
        const int column = static_cast<int>(i);
        const int wanted = fontMetrics().horizontalAdvance(QLatin1Char('0')) * digits_[i] + margin;
        horizontalHeader()->resizeSection(
            column, std::max(wanted, horizontalHeader()->sectionSizeHint(column)));
        horizontalHeader()->setSectionResizeMode(
            column, column == stretched_ ? QHeaderView::Stretch : QHeaderView::Interactive);
    }
}

void ArchiveList::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        FitRows();
        FitColumns();
    }
}
