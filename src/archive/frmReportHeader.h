#ifndef ORVIA_ARCHIVE_FRM_REPORT_HEADER_H
#define ORVIA_ARCHIVE_FRM_REPORT_HEADER_H

#include <QHeaderView>
#include <cstddef>
#include <vector>

#include "archive/report_words.h"

/// Headings on two floors: a name over the columns of each group, and a heading for each column. A
/// column without a group takes both floors. The name stands in the middle of what is in sight of
/// its group.
class ReportHeader final : public QHeaderView {
 public:
    explicit ReportHeader(QWidget* parent);

    /// Groups of the sections, by their numbers.
    void SetGroups(std::vector<ColumnGroup> groups);
    /// Width that the heading of a section needs.
    [[nodiscard]] int WidthFor(int section) const {
        return sectionSizeFromContents(section).width();
    }
    /// The same of a group's name.
    [[nodiscard]] int WidthForName(const ColumnGroup& group) const;

 protected:
    void paintSection(QPainter* painter, const QRect& where, int section) const override;
    [[nodiscard]] QSize sectionSizeFromContents(int section) const override;

 private:
    [[nodiscard]] const ColumnGroup* GroupOf(int section) const;
    [[nodiscard]] QRect PlaceOf(const ColumnGroup& group) const;
    void PaintCell(QPainter& painter, const QRect& where, int section) const;
    void PaintName(QPainter& painter, const QRect& floor, const ColumnGroup& group) const;

    std::vector<ColumnGroup> groups_;
};

#endif  // ORVIA_ARCHIVE_FRM_REPORT_HEADER_H
