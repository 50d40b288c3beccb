#ifndef ORVIA_ARCHIVE_FRM_REPORT_H
#define ORVIA_ARCHIVE_FRM_REPORT_H

#include <QDialog>
#include <QTimer>
#include <functional>
#include <future>
#include <memory>

#include "archive/archive_context.h"
#include "archive/frmReportPages.h"
#include "archive/named_series.h"
#include "archive/report.h"
#include "archive/report_choice.h"

class QBoxLayout;
class QComboBox;
class QDateEdit;
class QLabel;
class QLineEdit;
class QPagedPaintDevice;
class QPrinter;
class QProgressBar;
class QPushButton;
class ReportTable;

/// The window of a report on a series: what it is divided by, its period, unit of volume, site and
/// maker above; below its table, which follows every change; copied, saved and printed from here.
/// What takes long is worked out beside the window. It goes when it is closed.
class frmReport final : public QDialog {
    Q_OBJECT

 public:
    frmReport(const ArchiveContext& context, std::shared_ptr<const NamedSeries> series,
              const Period& span, QWidget* parent);
    /// Waits for what is still being worked out.
    ~frmReport() override;

    /// Escape acts as the close box.
    void reject() override { close(); }

    /// Whether a report is being worked out.
    [[nodiscard]] bool IsWorking() const { return made_.valid(); }

    /// Works a report out, on a thread of its own.
    using Maker =
        std::function<Report(const SeriesValues&, const ReportRequest&, const SystemClock&)>;
    Maker Make = MakeReport;
    /// Has the operator choose and set a printer; False if printing is cancelled.
    std::function<bool(QPrinter& printer, QWidget* parent)> AskForPrinter;

 protected:
    void closeEvent(QCloseEvent* event) override;

 private:
    void BuildChoices(QBoxLayout& column);
    void BuildPeriod(QBoxLayout& row);
    void BuildUnits(QBoxLayout& row);
    void BuildNames(QBoxLayout& column);
    void BuildTable(QBoxLayout& column);
    void BuildButtons(QBoxLayout& column);
    void FitScreen();
    void OrderTabs();
    [[nodiscard]] QDateEdit* DateField(const char* name, Moment shown);
    [[nodiscard]] QLineEdit* TextField(const char* name, const std::string& shown);

    void Refresh();
    void StartWork();
    void TakeWork();
    void ShowWorking(bool working);
    void ShowReport();
    void ShowFault(const std::string& fault);
    void EnableOutput();

    void CopyReport();
    void SaveCsv();
    void SavePdf();
    void PrintReport();
    [[nodiscard]] std::optional<std::string> AskFor(const char* title, const char* extension,
                                                    const char* filter);
    void TellSaved(bool saved, const char* title, const std::string& path);
    [[nodiscard]] Report Finished() const;
    [[nodiscard]] std::string PdfOf(const Report& report) const;
    [[nodiscard]] PageTexts Texts() const;
    [[nodiscard]] ReportPages::Plot PlotOf(const Report& report) const;

    const Host outside_;
    std::string& lastFolder_;
    const std::shared_ptr<const NamedSeries> series_;
    ReportChoice choice_;
    std::shared_ptr<const Report> report_;
    ReportRequest shown_;  ///< that the report answers
    std::future<Report> made_;
    ReportRequest asked_;  ///< what is being worked out
    bool stale_ = false;   ///< something else is wanted meanwhile
    bool gone_ = false;    ///< closed while something is worked out
    QTimer poll_;

    QComboBox* cmbStep_ = nullptr;
    QDateEdit* dtpFrom_ = nullptr;
    QDateEdit* dtpTo_ = nullptr;
    QComboBox* cmbVolume_ = nullptr;
    QLabel* lblVolume_ = nullptr;
    QLineEdit* txtSite_ = nullptr;
    QLineEdit* txtMadeBy_ = nullptr;
    QLabel* lblSummary_ = nullptr;
    ReportTable* table_ = nullptr;
    QProgressBar* ProgressBar_ = nullptr;
    QLabel* lblState_ = nullptr;
    QPushButton* cmdCopy_ = nullptr;
    QPushButton* cmdCsv_ = nullptr;
    QPushButton* cmdPdf_ = nullptr;
    QPushButton* cmdPrint_ = nullptr;
    QPushButton* cmdClose_ = nullptr;
};

#endif  // ORVIA_ARCHIVE_FRM_REPORT_H
