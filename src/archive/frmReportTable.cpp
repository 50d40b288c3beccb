#include "archive/frmReportTable.h"

#include <QApplication>
#include <QClipboard>
#include <QEvent>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QScrollBar>
#include <algorithm>
#include <utility>

#include "archive/frmReportHeader.h"
#include "archive/page_layout.h"
#include "archive/report_words.h"
#include "platform/qt/text_qt.h"

namespace {

QVariant AlignmentOf(const ReportColumn& column) {
    const Qt::Alignment across = column.IsNumber ? Qt::AlignRight : Qt::AlignLeft;
    return QVariant(across | Qt::AlignVCenter);
}

QFont Bold(QFont font) {
    font.setBold(true);
    return font;
}

/// The longest text of a column. Its letters are nearly all digits, which are all as wide.
const std::string& LongestOf(const Report& report, std::size_t column) {
    const std::string* longest = &report.Columns[column].Heading;
    for (const std::vector<std::string>& row : report.Rows) {
        longest = row[column].size() > longest->size() ? &row[column] : longest;
    }
    return *longest;
}

}  // namespace

// ----- what the views show

void ReportModel::SetReport(std::shared_ptr<const Report> report) {
    beginResetModel();
    report_ = std::move(report);
    endResetModel();
}

const std::vector<std::string>& ReportModel::Row(int row) const {
    return part_ == Part::Rows ? report_->Rows[static_cast<std::size_t>(row)] : report_->Total;
}

int ReportModel::rowCount(const QModelIndex& parent) const {
    if (parent.isValid()) {
        return 0;
    }
    const int total = report_->Total.empty() ? 0 : 1;
    return part_ == Part::Rows ? static_cast<int>(report_->Rows.size()) : total;
}

int ReportModel::columnCount(const QModelIndex& parent) const {
    const bool none = parent.isValid() || report_->Columns.empty();
    return none ? 0 : static_cast<int>(report_->Columns.size()) - 1;
}

QVariant ReportModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) {
        return {};
    }
    const auto column = static_cast<std::size_t>(index.column()) + 1;
    switch (role) {
        case Qt::DisplayRole:
            return ToQt(Row(index.row())[column]);
        case Qt::TextAlignmentRole:
            return AlignmentOf(report_->Columns[column]);
        case Qt::FontRole:
            return part_ == Part::Total ? QVariant(Bold(QFont())) : QVariant();
        default:
            return {};
    }
}

QVariant ReportModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Vertical) {
        return role == Qt::DisplayRole && section < rowCount() ? QVariant(ToQt(Row(section)[0]))
                                                               : QVariant();
    }
    const auto number = static_cast<std::size_t>(section) + 1;
    if (number >= report_->Columns.size()) {
        return {};
    }
    const ReportColumn& column = report_->Columns[number];
    switch (role) {
        case Qt::DisplayRole:
            return ToQt(column.Heading);
        case Qt::AccessibleTextRole:
        case Qt::ToolTipRole:
            return ToQt(HeadingOf(column));
        case Qt::TextAlignmentRole:
            return AlignmentOf(column);
        default:
            return {};
    }
}

// ----- rows

ReportRowsView::ReportRowsView(QWidget* parent, ReportModel& model)
    : QTableView(parent), rows_(model), corner_(new QLabel(this)) {
    setModel(&model);
    setTabKeyNavigation(false);
    setSelectionBehavior(SelectRows);
    setAlternatingRowColors(true);
    setShowGrid(false);
    setWordWrap(false);
    setHorizontalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setCornerButtonEnabled(false);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setSectionsClickable(false);
    verticalHeader()->setHighlightSections(false);
    verticalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    corner_->setTextFormat(Qt::PlainText);
    corner_->setMargin(4);
    corner_->hide();
}

void ReportRowsView::SetCorner(const QString& text) {
    corner_->setText(text);
    corner_->setVisible(!text.isEmpty());
}

void ReportRowsView::updateGeometries() {
    QTableView::updateGeometries();
    corner_->setGeometry(frameWidth(), frameWidth(), verticalHeader()->width(),
                         horizontalHeader()->height());
}

void ReportRowsView::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy)) {
        CopyRows();
    } else {
        QTableView::keyPressEvent(event);
    }
}

void ReportRowsView::CopyRows() const {
    std::vector<int> chosen;
    for (const QModelIndex& index : selectionModel()->selectedRows()) {
        chosen.push_back(index.row());
    }
    std::sort(chosen.begin(), chosen.end());
    Report report;
    std::vector<std::size_t> numbers;
    for (const int row : chosen) {
        numbers.push_back(report.Rows.size());
        report.Rows.push_back(rows_.Row(row));
    }
    if (!numbers.empty()) {
        QApplication::clipboard()->setText(ToQt(RowsTabText(report, numbers)));
    }
}

// ----- the whole

ReportTable::ReportTable(QWidget* parent)
    : QWidget(parent),
      lvwReport_(new ReportRowsView(this, rows_)),
      lvwTotal_(new ReportRowsView(this, total_)),
      header_(new ReportHeader(lvwReport_)),
      down_(new QScrollBar(Qt::Vertical, this)),
      across_(new QScrollBar(Qt::Horizontal, this)) {
    lvwReport_->setObjectName(QStringLiteral("lvwReport"));
    lvwReport_->setAccessibleName(QStringLiteral("Report"));
    lvwReport_->setHorizontalHeader(header_);
    lvwTotal_->setObjectName(QStringLiteral("lvwTotal"));
    lvwTotal_->setAccessibleName(QStringLiteral("Whole period"));
    lvwTotal_->horizontalHeader()->hide();
    lvwTotal_->setAlternatingRowColors(false);
    Arrange();
    Join(*down_, *lvwReport_->verticalScrollBar());
    Join(*across_, *lvwReport_->horizontalScrollBar());
    QScrollBar* rows = lvwReport_->horizontalScrollBar();
    QScrollBar* total = lvwTotal_->horizontalScrollBar();
    connect(rows, &QScrollBar::valueChanged, total, &QScrollBar::setValue);
    connect(total, &QScrollBar::valueChanged, rows, &QScrollBar::setValue);
    connect(rows, &QScrollBar::valueChanged, header_->viewport(), qOverload<>(&QWidget::update));
    connect(header_, &QHeaderView::sectionResized, this,
            [this](int section, int, int width) { lvwTotal_->setColumnWidth(section, width); });
    FitRows();
}

void ReportTable::Arrange() {
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(0);
    grid->setVerticalSpacing(2);
    grid->addWidget(lvwReport_, 0, 0);
    grid->addWidget(down_, 0, 1);
    grid->addWidget(lvwTotal_, 1, 0);
    grid->addWidget(across_, 2, 0);
    grid->setRowStretch(0, 1);
    grid->setColumnStretch(0, 1);
}

/// A bar that stands outside of a list, so that both lists are as wide.
void ReportTable::Join(QScrollBar& shown, QScrollBar& own) {
    const auto follow = [&shown, &own] {
        shown.setRange(own.minimum(), own.maximum());
        shown.setPageStep(own.pageStep());
        shown.setSingleStep(own.singleStep());
        shown.setValue(own.value());
        shown.setVisible(own.maximum() > own.minimum());
    };
    connect(&own, &QScrollBar::rangeChanged, &shown, follow);
    connect(&own, &QScrollBar::valueChanged, &shown, &QScrollBar::setValue);
    connect(&shown, &QScrollBar::valueChanged, &own, &QScrollBar::setValue);
    follow();
}

void ReportTable::SetReport(std::shared_ptr<const Report> report) {
    std::vector<ColumnGroup> groups = GroupsOf(std::span(report->Columns).subspan(1));
    rows_.SetReport(report);
    total_.SetReport(report);
    lvwReport_->SetCorner(ToQt(report->Columns.front().Heading));
    header_->SetGroups(std::move(groups));
    FitColumns(*report);
    if (rows_.rowCount() > 0) {
        lvwReport_->setCurrentIndex(rows_.index(0, 0));
    }
}

int ReportTable::RoomFor(const QString& text) const {
    // The total is in bold letters.
    return QFontMetrics(Bold(font())).horizontalAdvance(text) +
           2 * fontMetrics().averageCharWidth();
}

void ReportTable::FitColumns(const Report& report) {
    const std::vector<ColumnGroup> groups = GroupsOf(report.Columns);
    std::vector<double> widths;
    std::vector<double> names;
    std::vector<IndexRange> ranges;
    for (std::size_t i = 0; i < report.Columns.size(); ++i) {
        const int heading = i == 0 ? 0 : header_->WidthFor(static_cast<int>(i) - 1);
        const std::string& total = report.Total.empty() ? std::string() : report.Total[i];
        widths.push_back(
            std::max({heading, RoomFor(ToQt(LongestOf(report, i))), RoomFor(ToQt(total))}));
    }
    for (const ColumnGroup& group : groups) {
        ranges.push_back({group.First, group.Count});
        names.push_back(header_->WidthForName(group));
    }
    WidenColumns(ranges, names, widths);
    for (std::size_t i = 1; i < widths.size(); ++i) {
        header_->resizeSection(static_cast<int>(i) - 1, static_cast<int>(widths[i] + 0.99));
        lvwTotal_->setColumnWidth(static_cast<int>(i) - 1, static_cast<int>(widths[i] + 0.99));
    }
    for (ReportRowsView* view : {lvwReport_, lvwTotal_}) {
        view->verticalHeader()->setFixedWidth(static_cast<int>(widths[0] + 0.99));
    }
}

void ReportTable::FitRows() {
    const int height = fontMetrics().height() + fontMetrics().height() / 3;
    for (ReportRowsView* view : {lvwReport_, lvwTotal_}) {
        view->verticalHeader()->setMinimumSectionSize(height);
        view->verticalHeader()->setDefaultSectionSize(height);
    }
    lvwTotal_->setFixedHeight(height + 2 * lvwTotal_->frameWidth());
}

void ReportTable::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        FitRows();
    }
}
