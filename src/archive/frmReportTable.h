#ifndef ORVIA_ARCHIVE_FRM_REPORT_TABLE_H
#define ORVIA_ARCHIVE_FRM_REPORT_TABLE_H

#include <QAbstractTableModel>
#include <QTableView>
#include <memory>

#include "archive/report.h"

class QLabel;
class QScrollBar;
class ReportHeader;

/// Shows rows of a report to a view. Its first column heads the rows.
class ReportModel final : public QAbstractTableModel {
 public:
    enum class Part { Rows, Total };
    explicit ReportModel(Part part) : part_(part) {}

    void SetReport(std::shared_ptr<const Report> report);
    [[nodiscard]] const std::vector<std::string>& Row(int row) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

 private:
    const Part part_;
    std::shared_ptr<const Report> report_ = std::make_shared<Report>();
};

/// A list of rows whose corner names what stands at their left.
class ReportRowsView final : public QTableView {
 public:
    ReportRowsView(QWidget* parent, ReportModel& model);

    /// Names the corner.
    void SetCorner(const QString& text);

 protected:
    void updateGeometries() override;
    void keyPressEvent(QKeyEvent* event) override;

 private:
    void CopyRows() const;

    ReportModel& rows_;
    QLabel* corner_;
};

/// The table of a report: rows that scroll, and below, always in sight, that of the whole period.
class ReportTable final : public QWidget {
 public:
    explicit ReportTable(QWidget* parent);

    void SetReport(std::shared_ptr<const Report> report);

    [[nodiscard]] QTableView* Rows() const { return lvwReport_; }
    [[nodiscard]] QTableView* Total() const { return lvwTotal_; }

 protected:
    void changeEvent(QEvent* event) override;

 private:
    void Arrange();
    void Join(QScrollBar& shown, QScrollBar& own);
    void FitColumns(const Report& report);
    void FitRows();
    [[nodiscard]] int RoomFor(const QString& text) const;

    ReportModel rows_{ReportModel::Part::Rows};
    ReportModel total_{ReportModel::Part::Total};
    ReportRowsView* lvwReport_;
    ReportRowsView* lvwTotal_;
    ReportHeader* header_;
    QScrollBar* down_;
    QScrollBar* across_;
};

#endif  // ORVIA_ARCHIVE_FRM_REPORT_TABLE_H
