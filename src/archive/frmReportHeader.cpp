#include "archive/frmReportHeader.h"

#include <QPainter>
#include <QScrollBar>
#include <QStyleOptionHeader>
#include <algorithm>

#include "platform/qt/text_qt.h"

ReportHeader::ReportHeader(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {
    setHighlightSections(false);
    setSectionsClickable(false);
    setSectionResizeMode(QHeaderView::Interactive);
    setMinimumSectionSize(0);
    // What is scrolled is moved and not painted, but the names stay in sight.
    connect(this, &QHeaderView::sectionResized, viewport(), qOverload<>(&QWidget::update));
}

void ReportHeader::SetGroups(std::vector<ColumnGroup> groups) {
    groups_ = std::move(groups);
    viewport()->update();
}

const ColumnGroup* ReportHeader::GroupOf(int section) const {
    const auto number = static_cast<std::size_t>(section);
    const auto group =
        std::find_if(groups_.begin(), groups_.end(), [number](const ColumnGroup& each) {
            return each.First <= number && number < each.First + each.Count;
        });
    return group == groups_.end() || group->Name.empty() ? nullptr : &*group;
}

QRect ReportHeader::PlaceOf(const ColumnGroup& group) const {
    const int first = static_cast<int>(group.First);
    const int last = first + static_cast<int>(group.Count) - 1;
    const int left = sectionViewportPosition(first);
    const int right = sectionViewportPosition(last) + sectionSize(last);
    return {left, 0, right - left, height()};
}

int ReportHeader::WidthForName(const ColumnGroup& group) const {
    QFont bold = font();
    bold.setBold(true);
    const int margin = 2 * style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, this);
    return QFontMetrics(bold).horizontalAdvance(ToQt(group.Name)) + 3 * margin;
}

QSize ReportHeader::sectionSizeFromContents(int section) const {
    const QSize size = QHeaderView::sectionSizeFromContents(section);
    return {size.width(), 2 * size.height()};
}

void ReportHeader::paintSection(QPainter* painter, const QRect& where, int section) const {
    const ColumnGroup* group = GroupOf(section);
    if (group == nullptr) {
        PaintCell(*painter, where, section);
        return;
    }
    const int half = where.height() / 2;
    PaintCell(*painter, where.adjusted(0, half, 0, 0), section);
    QRect upper = PlaceOf(*group);
    upper.setHeight(half);
    painter->save();
    painter->setClipRect(QRect(where.left(), where.top(), where.width(), half));
    PaintName(*painter, upper, *group);
    painter->restore();
}

void ReportHeader::PaintCell(QPainter& painter, const QRect& where, int section) const {
    QStyleOptionHeader option;
    initStyleOption(&option);
    option.rect = where;
    option.section = section;
    option.text = model()->headerData(section, Qt::Horizontal).toString();
    option.textAlignment = static_cast<Qt::Alignment>(
        model()->headerData(section, Qt::Horizontal, Qt::TextAlignmentRole).toInt());
    option.position = QStyleOptionHeader::Middle;
    option.state |= QStyle::State_Raised;
    style()->drawControl(QStyle::CE_Header, &option, &painter, this);
}

void ReportHeader::PaintName(QPainter& painter, const QRect& floor,
                             const ColumnGroup& group) const {
    QStyleOptionHeader option;
    initStyleOption(&option);
    option.rect = floor;
    option.position = QStyleOptionHeader::Middle;
    option.state |= QStyle::State_Raised;
    style()->drawControl(QStyle::CE_HeaderSection, &option, &painter, this);
    QFont bold = font();
    bold.setBold(true);
    painter.setFont(bold);
    painter.setPen(palette().color(QPalette::ButtonText));
    const int margin = style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, this);
    const QRect room = (floor & viewport()->rect()).adjusted(margin, 0, -margin, 0);
    painter.drawText(room, Qt::AlignCenter,
                     QFontMetrics(bold).elidedText(ToQt(group.Name), Qt::ElideRight, room.width()));
}
