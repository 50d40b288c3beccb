#include "archive/frmPlotLines.h"

#include <QHeaderView>
#include <QSignalBlocker>

#include "archive/frmPlotStyle.h"
#include "platform/qt/text_qt.h"

namespace {

enum Column { NameColumn, ValueColumn };

/// Whether these are the columns that are offered already, of newer readings.
bool SameColumns(const std::vector<PlotLine>& lines,
                 const std::vector<std::shared_ptr<const NamedSeries>>& series) {
    std::size_t at = 0;
    for (const auto& one : series) {
        for (const SeriesColumn& column : one->Values().Columns()) {
            const PlotLine* line = at < lines.size() ? &lines[at++] : nullptr;
            if (line == nullptr ||
                TitleOf(line->Series->Values().Columns()[line->Column]) != TitleOf(column)) {
                return false;
            }
        }
    }
    return at == lines.size();
}

}  // namespace

PlotLineList::PlotLineList(QWidget* parent) : QTreeWidget(parent) {
    setObjectName(QStringLiteral("lvwLines"));
    setAccessibleName(QStringLiteral("Lines, and their values at the cursor"));
    setColumnCount(2);
    setHeaderLabels({QStringLiteral("Line"), QStringLiteral("At Cursor")});
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(NameColumn, QHeaderView::Stretch);
    header()->setSectionResizeMode(ValueColumn, QHeaderView::ResizeToContents);
    header()->setSectionsMovable(false);
    headerItem()->setTextAlignment(ValueColumn, Qt::AlignRight | Qt::AlignVCenter);
    setIndentation(0);
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setAllColumnsShowFocus(true);
    setUniformRowHeights(false);
    connect(this, &QTreeWidget::itemChanged, this, [this](QTreeWidgetItem*, int column) {
        if (!filling_ && column == NameColumn && ChoiceChanged) {
            ChoiceChanged();
        }
    });
}

void PlotLineList::SetSeries(const std::vector<std::shared_ptr<const NamedSeries>>& series) {
    if (!lines_.empty() && SameColumns(lines_, series)) {
        auto line = lines_.begin();
        for (const auto& one : series) {
            for (std::size_t column = 0; column < one->Values().Columns().size(); ++column) {
                (line++)->Series = one;
            }
        }
        return;
    }
    filling_ = true;
    clear();
    lines_.clear();
    rows_.clear();
    for (const auto& one : series) {
        QTreeWidgetItem* heading = nullptr;
        if (series.size() > 1) {
            heading = new QTreeWidgetItem(this, {ToQt(one->Name())});
            heading->setFlags(Qt::ItemIsEnabled);
            heading->setFirstColumnSpanned(true);
            QFont bold = font();
            bold.setBold(true);
            heading->setFont(NameColumn, bold);
        }
        AddLines(one, heading);
    }
    expandAll();
    Swatch();
    filling_ = false;
}

void PlotLineList::AddLines(const std::shared_ptr<const NamedSeries>& series,
                            QTreeWidgetItem* heading) {
    const std::vector<SeriesColumn>& columns = series->Values().Columns();
    const std::vector<std::size_t> first = FirstChoice(series->Values());
    for (std::size_t column = 0; column < columns.size(); ++column) {
        auto* row = heading != nullptr ? new QTreeWidgetItem(heading) : new QTreeWidgetItem(this);
        row->setText(NameColumn, ToQt(TitleOf(columns[column])));
        row->setToolTip(NameColumn, row->text(NameColumn));
        row->setTextAlignment(ValueColumn, Qt::AlignRight | Qt::AlignVCenter);
        row->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        const bool chosen = std::find(first.begin(), first.end(), column) != first.end();
        row->setCheckState(NameColumn, chosen ? Qt::Checked : Qt::Unchecked);
        rows_.push_back(row);
        lines_.push_back({series, column, static_cast<int>(lines_.size())});
    }
}

void PlotLineList::Swatch() {
    const PlotStyle style = PlotStyleOf(palette(), font());
    const int height = fontMetrics().height();
    const QSize size(height * 2, height);
    setIconSize(size);
    const bool before = filling_;
    filling_ = true;
    for (std::size_t line = 0; line < rows_.size(); ++line) {
        rows_[line]->setIcon(NameColumn, QIcon(PlotSwatch(line, style, size, devicePixelRatioF())));
    }
    filling_ = before;
}

std::vector<PlotLine> PlotLineList::Chosen() const {
    std::vector<PlotLine> chosen;
    for (std::size_t line = 0; line < rows_.size(); ++line) {
        if (rows_[line]->checkState(NameColumn) == Qt::Checked) {
            chosen.push_back(lines_[line]);
        }
    }
    return chosen;
}

void PlotLineList::ShowReadout(const PlotReadout& readout) {
    filling_ = true;
    auto told = readout.Rows.begin();
    for (QTreeWidgetItem* row : rows_) {
        QString value;
        QString when;
        if (row->checkState(NameColumn) == Qt::Checked && told != readout.Rows.end()) {
            value = ToQt(told->Value);
            when = told->Time.empty() ? QString() : QStringLiteral("at ") + ToQt(told->Time);
            ++told;
        }
        row->setText(ValueColumn, value);
        row->setToolTip(ValueColumn, when);
    }
    filling_ = false;
}

void PlotLineList::changeEvent(QEvent* event) {
    QTreeWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange) {
        Swatch();
    }
}
