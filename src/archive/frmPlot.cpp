#include "archive/frmPlot.h"

#include <QBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QScreen>
#include <QSplitter>
#include <utility>

#include "archive/frmPlotChart.h"
#include "archive/frmPlotLines.h"
#include "archive/frmPlotSave.h"
#include "archive/live_series.h"
#include "archive/plot_readout.h"
#include "platform/qt/named_controls.h"
#include "platform/qt/text_qt.h"

namespace {

constexpr int PulseMilliseconds = 40;  // no more than 25 drawings a second
constexpr const char* HelpLine =
    "Drag to pan, Shift and drag to select a period. Wheel zooms time, with Ctrl values. "
    "Keys: arrows, Home, End, Page Up, Page Down, +, -, Backspace.";

QString Named(const char* name) {
    return QString::fromLatin1(name);
}

std::unique_ptr<QPagedPaintDevice> ChoosePrinter(const QString& title, QWidget* parent) {
    auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    printer->setPageOrientation(QPageLayout::Landscape);
    printer->setDocName(title);
    QPrintDialog dialog(printer.get(), parent);
    const bool chosen = dialog.exec() == QDialog::Accepted;
    return chosen ? std::move(printer) : nullptr;
}

}  // namespace

// ----- making it

frmPlot::frmPlot(const ArchiveContext& context, std::vector<SharedSeries> series,
                 const Period& span, QWidget* parent)
    : QDialog(parent), AskPaper(ChoosePrinter), context_(context), series_(std::move(series)) {
    name_ = series_.size() == 1 ? series_.front()->Name() : "Plot";
    Build(ToQt(PlotTitle(series_)));
    const Period whole = span.IsEmpty() ? WholeOf(series_) : span;
    list_->SetSeries(series_);
    ShowLines();
    chart_->SetSpan(whole.Begin, whole.IsEmpty() ? whole.Begin : whole.End - 1);
}

frmPlot::frmPlot(const ArchiveContext& context, const std::string& name, LiveSource source,
                 QWidget* parent)
    : QDialog(parent),
      AskPaper(ChoosePrinter),
      context_(context),
      name_(name),
      source_(std::move(source)) {
    Build(QStringLiteral("Live Plot of ") + ToQt(name));
    const Period hour = LastHour(context_.outside.Clock);
    chart_->SetSpan(hour.Begin, hour.End - 1);
    TakeReadings();
    connect(&pulse_, &QTimer::timeout, this, [this] { TakeReadings(); });
    pulse_.start(PulseMilliseconds);
}

frmPlot::~frmPlot() = default;

void frmPlot::Unload() {
    unloaded_ = true;
    pulse_.stop();
    close();
}

void frmPlot::Build(const QString& title) {
    setObjectName(Named("frmPlot"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowFlags(windowFlags() | Qt::WindowMinMaxButtonsHint);
    setWindowTitle(EscapedTitle(FromQt(title)));
    setSizeGripEnabled(true);
    auto* body = new QSplitter(Qt::Horizontal, this);
    body->setObjectName(Named("splPlot"));
    body->setChildrenCollapsible(false);
    body->addWidget(BuildSide());
    body->addWidget(BuildChart());
    body->setStretchFactor(1, 1);
    auto* whole = new QVBoxLayout(this);
    whole->addWidget(body, 1);
    BuildButtons(*whole);
    chart_->SetTitle(title);
    FitScreen();
    chart_->setFocus();
}

QWidget* frmPlot::BuildSide() {
    auto* side = new QWidget(this);
    list_ = new PlotLineList(side);
    list_->ChoiceChanged = [this] { ShowLines(); };
    lblCursor_ = ValueLabel(side, Named("lblCursor"), QStringLiteral("Time at the cursor"));
    lblMarks_ = ValueLabel(side, Named("lblMarks"), QStringLiteral("Marks at the cursor"));
    lblMarks_->setWordWrap(true);
    lblMarks_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    // Room for them is kept, so that the list does not jump.
    constexpr int MarkLines = 3;
    lblMarks_->setMinimumHeight(fontMetrics().lineSpacing() * MarkLines);
    auto* column = new QVBoxLayout(side);
    column->setContentsMargins(0, 0, 0, 0);
    QLabel* caption = CaptionFor(list_, Named("lblLines"), QStringLiteral("&Lines:"));
    // As high as the row of buttons beside it.
    caption->setMinimumHeight(QPushButton(QStringLiteral("Zoom")).sizeHint().height());
    column->addWidget(caption);
    column->addWidget(list_, 1);
    column->addWidget(lblCursor_);
    column->addWidget(lblMarks_);
    constexpr int Characters = 48;
    side->setMinimumWidth(fontMetrics().averageCharWidth() * Characters);
    return side;
}

QWidget* frmPlot::BuildChart() {
    auto* panel = new QWidget(this);
    chart_ = new PlotChart(context_.outside.Clock, panel);
    chart_->PartChanged = [this] { ShowPart(); };
    chart_->CursorMoved = [this] { ShowReadout(); };
    constexpr int LeastLines = 12;
    chart_->setMinimumHeight(fontMetrics().lineSpacing() * LeastLines);
    auto* above = new QHBoxLayout;
    above->addWidget(CaptionFor(chart_, Named("lblPlot"), QStringLiteral("Plo&t:")));
    above->addStretch();
    BuildZooms(*above);
    auto* column = new QVBoxLayout(panel);
    column->setContentsMargins(0, 0, 0, 0);
    column->addLayout(above);
    column->addWidget(chart_, 1);
    return panel;
}

QPushButton* frmPlot::Button(const char* name, const char* caption, const char* help,
                             std::function<void()> press) {
    QPushButton* made = NamedButton(this, Named(name), QString::fromLatin1(caption));
    made->setToolTip(QString::fromLatin1(help));
    // Enter elsewhere must not press one.
    made->setAutoDefault(false);
    connect(made, &QPushButton::clicked, this, std::move(press));
    return made;
}

void frmPlot::BuildZooms(QBoxLayout& row) {
    cmdPeriod_ = Button("cmdPeriod", "Select P&eriod", "A drag selects the period to show.",
                        [this] { chart_->SetChoosing(cmdPeriod_->isChecked()); });
    cmdPeriod_->setCheckable(true);
    row.addWidget(cmdPeriod_);
    row.addWidget(
        Button("cmdIn", "Zoom &In", "Shows half of the time (+)", [this] { chart_->ZoomIn(); }));
    row.addWidget(
        Button("cmdOut", "Zoom &Out", "Shows twice the time (-)", [this] { chart_->ZoomOut(); }));
    cmdBack_ = Button("cmdBack", "&Back", "Shows what was shown before (Backspace)",
                      [this] { chart_->ZoomBack(); });
    row.addWidget(cmdBack_);
    cmdAll_ = Button("cmdAll", "Zoom to &All", "Shows all of the time, and values as they fit",
                     [this] { chart_->ZoomAll(); });
    row.addWidget(cmdAll_);
}

void frmPlot::BuildButtons(QBoxLayout& column) {
    lblState_ = ValueLabel(this, Named("lblState"), QStringLiteral("Help"));
    lblState_->setText(QString::fromLatin1(HelpLine));
    lblState_->setWordWrap(true);
    auto* row = new QHBoxLayout;
    row->addWidget(lblState_, 1);
    row->addWidget(Button("cmdSave", "&Save As...", "Saves a picture, a drawing or a document.",
                          [this] { Save(); }));
    row->addWidget(
        Button("cmdPrint", "&Print...", "Prints the plot as it stands.", [this] { Print(); }));
    row->addWidget(Button("cmdClose", "&Close", "Closes this window.", [this] { close(); }));
    column.addLayout(row);
    QWidget::setTabOrder(list_, chart_);
}

void frmPlot::FitScreen() {
    constexpr int Characters = 150;
    constexpr int Lines = 38;
    const QSize wanted(fontMetrics().averageCharWidth() * Characters,
                       fontMetrics().lineSpacing() * Lines);
    // Room for the frame that the desktop puts around a window.
    const int frame = 2 * fontMetrics().height();
    resize(wanted.boundedTo(screen()->availableSize() - QSize(frame, frame)));
}

// ----- what is shown

void frmPlot::ShowLines() {
    chart_->SetLines(list_->Chosen());
    ShowNote();
    ShowReadout();
}

void frmPlot::ShowNote() {
    const bool records = !WholeOf(series_).IsEmpty();
    QString note;
    if (!records) {
        note = source_ ? QStringLiteral(
                             "No readings yet. They come with Sample Continuously, Get "
                             "Sample and Auto Update.")
                       : QStringLiteral("There are no records.");
    } else if (list_->Chosen().empty()) {
        note = QStringLiteral("No line is checked.");
    }
    chart_->SetNote(note);
}

void frmPlot::ShowPart() {
    cmdBack_->setEnabled(chart_->View().CanGoBack());
    cmdAll_->setEnabled(!chart_->View().ShowsAll());
    ShowReadout();
}

void frmPlot::ShowReadout() {
    const std::optional<Moment> cursor = chart_->Cursor();
    const PlotReadout readout =
        cursor ? ReadoutAt(chart_->Scene(), *cursor, chart_->Shown(), context_.outside.Clock)
               : PlotReadout{};
    lblCursor_->setText(cursor ? QStringLiteral("Cursor: ") + ToQt(readout.Time)
                               : QStringLiteral("Cursor: none. Point at the plot."));
    lblMarks_->setText(ToQt(readout.Marks));
    list_->ShowReadout(readout);
    chart_->Describe(ToQt(readout.Words));
}

void frmPlot::TakeReadings() {
    const Period hour = LastHour(context_.outside.Clock);
    const SharedSeries newest = source_();
    if (newest != nullptr && (series_.empty() || newest != series_.front())) {
        series_ = {newest};
        list_->SetSeries(series_);
        ShowLines();
    }
    // Without a window there are no more readings: what there is stays to be looked at. Nothing is
    // drawn anew within a second without a reading.
    if (hour != hour_ && (newest != nullptr || series_.empty())) {
        hour_ = hour;
        chart_->MoveSpan(hour.Begin, hour.End - 1);
        ShowNote();
    }
}

// ----- keeping it

void frmPlot::Tell(const BoxContent& box) const {
    if (!unloaded_) {
        context_.outside.Boxes.Show(box);
    }
}

void frmPlot::Save() {
    const QPointer<frmPlot> self(this);
    const auto path = AskForPlotFile(name_, context_.outside, context_.lastFolder);
    if (!path || self == nullptr || unloaded_) {
        return;
    }
    const std::optional<PlotFormat> format = PlotFormatOf(*path);
    if (!format) {
        return Tell(UnknownPlotFormat(*path));
    }
    if (!SavePlot(*chart_, *path, *format, windowTitle())) {
        return Tell(PlotNotWritten(*path));
    }
    lblState_->setText(QStringLiteral("Saved: ") + ToQt(*path));
}

void frmPlot::Print() {
    const QPointer<frmPlot> self(this);
    const std::unique_ptr<QPagedPaintDevice> paper = AskPaper(windowTitle(), this);
    if (paper == nullptr || self == nullptr || unloaded_) {
        return;
    }
    if (!PrintPlot(*chart_, *paper)) {
        Tell({.Text = "Error: the plot was not printed. The printer did not take it.",
              .Title = "Print Plot",
              .Icon = BoxIcon::Stop});
        return;
    }
    lblState_->setText(QStringLiteral("Printed."));
}
