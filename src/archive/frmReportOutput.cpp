// How a report leaves its window: clipboard, files and paper.
#include <QApplication>
#include <QBuffer>
#include <QClipboard>
#include <QLabel>
#include <QLocale>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QPointer>
#include <QPrinter>
#include <algorithm>
#include <array>

#include "archive/frmPlotChart.h"
#include "archive/frmReport.h"
#include "archive/report_words.h"
#include "common/file_rewrite.h"
#include "common/path_text.h"
#include "history/save_history.h"
#include "platform/qt/text_qt.h"

namespace {

constexpr int DotsAnInch = 1200;

/// The lands whose paper is Letter (Unicode CLDR, supplemental data, measurementData); elsewhere it
/// is A4.
constexpr std::array LetterLands{QLocale::Belize,    QLocale::Canada,      QLocale::Chile,
                                 QLocale::Colombia,  QLocale::CostaRica,   QLocale::ElSalvador,
                                 QLocale::Guatemala, QLocale::Mexico,      QLocale::Nicaragua,
                                 QLocale::Panama,    QLocale::Philippines, QLocale::PuertoRico,
                                 QLocale::Venezuela, QLocale::UnitedStates};

QPageSize PaperOf(const QLocale& locale) {
    const bool letter =
        std::find(LetterLands.begin(), LetterLands.end(), locale.territory()) != LetterLands.end();
    return QPageSize(letter ? QPageSize::Letter : QPageSize::A4);
}

QPageLayout LayoutFor(const Report& report, const QPageSize& size) {
    return {size, ReportPages::OrientationFor(report, size), ReportPages::Margins(),
            QPageLayout::Millimeter};
}

/// The wait pointer, for as long as it lives.
class WaitPointer final {
 public:
    WaitPointer() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitPointer() { QApplication::restoreOverrideCursor(); }
    WaitPointer(const WaitPointer&) = delete;
    WaitPointer& operator=(const WaitPointer&) = delete;
};

bool PrintPages(const ReportPages& pages, QPrinter& printer) {
    QPainter painter;
    if (!painter.begin(&printer)) {
        return false;
    }
    const bool range = printer.printRange() == QPrinter::PageRange && printer.fromPage() > 0;
    const int first = range ? printer.fromPage() : 1;
    const int last = range ? std::max(printer.toPage(), first) : pages.Count();
    const bool painted = pages.Paint(painter, first, last);
    return painter.end() && painted && printer.printerState() != QPrinter::Error;
}

}  // namespace

void frmReport::CopyReport() {
    QApplication::clipboard()->setText(ToQt(ReportTabText(*report_)));
    lblState_->setText(QStringLiteral("Copied: %1 rows.").arg(report_->Rows.size()));
}

/// The report as it is handed out now.
Report frmReport::Finished() const {
    Report report = *report_;
    report.Head = ReportHeadOf(series_->Values(), choice_.Request(), outside_.Clock);
    return report;
}

std::optional<std::string> frmReport::AskFor(const char* title, const char* extension,
                                             const char* filter) {
    choice_.Remember();
    return AskForFile({.Title = title,
                       .DefaultExtension = extension,
                       .Filter = filter,
                       .InitialName = DefaultReportName(series_->Name(), choice_.Step(),
                                                        outside_.Clock.Now(), extension)},
                      outside_, lastFolder_);
}

void frmReport::TellSaved(bool saved, const char* title, const std::string& path) {
    if (saved) {
        lblState_->setText(QStringLiteral("Saved: ") + ToQt(BehindLastSeparator(path)));
        return;
    }
    lblState_->clear();
    outside_.Boxes.Show(
        {.Text = "Error: the report was not saved. The file could not be written:\n" + path,
         .Title = title,
         .Icon = BoxIcon::Stop});
}

void frmReport::SaveCsv() {
    constexpr const char* Title = "Save as CSV";
    const QPointer<frmReport> alive(this);
    const auto path = AskFor(Title, ".csv", "Comma Separated Value Files (*.csv)|*.csv");
    if (!path || alive.isNull()) {
        return;
    }
    TellSaved(SaveReportCsv(*path, Finished()), Title, *path);
}

void frmReport::SavePdf() {
    constexpr const char* Title = "Save as PDF";
    const QPointer<frmReport> alive(this);
    const auto path = AskFor(Title, ".pdf", "PDF Files (*.pdf)|*.pdf");
    if (!path || alive.isNull()) {
        return;
    }
    const std::string pdf = PdfOf(Finished());
    TellSaved(!pdf.empty() && RewriteFile(*path, pdf), Title, *path);
}

void frmReport::PrintReport() {
    choice_.Remember();
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(Texts().Footer);
    printer.setPageLayout(LayoutFor(*report_, printer.pageLayout().pageSize()));
    const QPointer<frmReport> alive(this);
    if (!AskForPrinter(printer, this) || alive.isNull()) {
        return;
    }
    bool printed = false;
    {
        const WaitPointer wait;
        Report report = Finished();
        report.Head = PageHeadOf(report);
        printed = PrintPages(ReportPages(report, Texts(), PlotOf(report), printer), printer);
    }
    lblState_->setText(printed ? QStringLiteral("Printed.") : QString());
    if (!printed) {
        outside_.Boxes.Show(
            {.Text = "Error: the report was not printed. The printer did not take it.",
             .Title = "Print",
             .Icon = BoxIcon::Stop});
    }
}

/// Empty if it could not be painted.
std::string frmReport::PdfOf(const Report& report) const {
    const WaitPointer wait;
    Report page = report;
    page.Head = PageHeadOf(report);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setResolution(DotsAnInch);
    writer.setTitle(Texts().Footer);
    writer.setCreator(QStringLiteral("Orvia"));
    writer.setPageLayout(LayoutFor(page, PaperOf(QLocale())));
    const ReportPages pages(page, Texts(), PlotOf(page), writer);
    QPainter painter;
    if (!painter.begin(&writer) || !pages.Paint(painter, 1, pages.Count()) || !painter.end()) {
        return {};
    }
    return bytes.toStdString();
}

PageTexts frmReport::Texts() const {
    const QString title = ToQt(ReportTitle(choice_.Step()));
    return {title, title + QStringLiteral(" - ") + ToQt(series_->Name())};
}

/// Of the flow, else of the first column; none where there is nothing to plot.
ReportPages::Plot frmReport::PlotOf(const Report& report) const {
    const SeriesValues& values = series_->Values();
    if (values.Columns().empty() || !HasRecords(report)) {
        return {};
    }
    auto chart = std::make_shared<PlotChart>(outside_.Clock, nullptr);
    chart->SetLines({PlotLine{series_, values.FlowColumn().value_or(0)}});
    chart->SetSpan(shown_.Span.Begin, shown_.Span.End - 1);
    return [chart](QPainter& painter, const QRectF& where) { chart->PaintOn(painter, where); };
}
