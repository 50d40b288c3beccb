// How the window of a report is put together; what it does is in frmReport.cpp.
#include <QBoxLayout>
#include <QComboBox>
#include <QDateEdit>
#include <QLabel>
#include <QLineEdit>
#include <QPrintDialog>
#include <QPrinter>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <algorithm>

#include "archive/date_format.h"
#include "archive/frmReport.h"
#include "archive/frmReportTable.h"
#include "platform/qt/named_controls.h"
#include "platform/qt/text_qt.h"

namespace {

constexpr int LongestText = 200;

QString Named(const char* name) {
    return QString::fromLatin1(name);
}

QDate DateOf(Moment moment) {
    const LocalTime time = TimeOfMoment(moment);
    return {time.Year, time.Month, time.Day};
}

Moment MomentOfDate(const QDate& date) {
    return MomentOf(LocalTime{date.year(), date.month(), date.day()});
}

bool AskWithDialog(QPrinter& printer, QWidget* parent) {
    QPrintDialog dialog(&printer, parent);
    dialog.setOption(QAbstractPrintDialog::PrintPageRange);
    return dialog.exec() == QDialog::Accepted;
}

}  // namespace

frmReport::frmReport(const ArchiveContext& context, std::shared_ptr<const NamedSeries> series,
                     const Period& span, QWidget* parent)
    : QDialog(parent),
      AskForPrinter(AskWithDialog),
      outside_(context.outside),
      lastFolder_(context.lastFolder),
      series_(std::move(series)),
      choice_(*series_, span, outside_) {
    setObjectName(Named("frmReport"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    setWindowTitle(QStringLiteral("Report - ") + EscapedTitle(series_->Name()));
    setSizeGripEnabled(true);
    auto* whole = new QVBoxLayout(this);
    BuildChoices(*whole);
    BuildNames(*whole);
    BuildTable(*whole);
    BuildButtons(*whole);
    FitScreen();
    OrderTabs();
    connect(&poll_, &QTimer::timeout, this, [this] { TakeWork(); });
    cmbStep_->setFocus();
    Refresh();
}

void frmReport::BuildChoices(QBoxLayout& column) {
    auto* row = new QHBoxLayout;
    cmbStep_ = new QComboBox(this);
    cmbStep_->setObjectName(Named("cmbStep"));
    cmbStep_->addItems({QStringLiteral("Day"), QStringLiteral("Week"), QStringLiteral("Month")});
    row->addWidget(CaptionFor(cmbStep_, Named("lblStep"), QStringLiteral("&By:")));
    row->addWidget(cmbStep_);
    connect(cmbStep_, &QComboBox::currentIndexChanged, this, [this](int step) {
        choice_.SetStep(static_cast<PeriodStep>(step));
        Refresh();
    });
    BuildPeriod(*row);
    BuildUnits(*row);
    row->addStretch();
    column.addLayout(row);
}

QDateEdit* frmReport::DateField(const char* name, Moment shown) {
    auto* field = new QDateEdit(this);
    field->setObjectName(Named(name));
    field->setCalendarPopup(true);
    field->setDisplayFormat(ToQt(DateFormatOf(outside_.Clock)));
    field->setDateRange(DateOf(EarliestMoment), DateOf(LatestMoment - 1));
    field->setDate(DateOf(shown));
    return field;
}

void frmReport::BuildPeriod(QBoxLayout& row) {
    dtpFrom_ = DateField("dtpFrom", choice_.From());
    dtpTo_ = DateField("dtpTo", choice_.To());
    row.addSpacing(fontMetrics().averageCharWidth());
    row.addWidget(CaptionFor(dtpFrom_, Named("lblFrom"), QStringLiteral("&From:")));
    row.addWidget(dtpFrom_);
    row.addWidget(CaptionFor(dtpTo_, Named("lblTo"), QStringLiteral("&To:")));
    row.addWidget(dtpTo_);
    connect(dtpFrom_, &QDateEdit::dateChanged, this, [this](const QDate& date) {
        choice_.SetFrom(MomentOfDate(date));
        Refresh();
    });
    connect(dtpTo_, &QDateEdit::dateChanged, this, [this](const QDate& date) {
        choice_.SetTo(MomentOfDate(date));
        Refresh();
    });
}

void frmReport::BuildUnits(QBoxLayout& row) {
    cmbVolume_ = new QComboBox(this);
    cmbVolume_->setObjectName(Named("cmbVolume"));
    for (const VolumeUnit unit : choice_.Units()) {
        cmbVolume_->addItem(ToQt(VolumeUnitName(unit)));
    }
    lblVolume_ = CaptionFor(cmbVolume_, Named("lblVolume"), QStringLiteral("&Volume in:"));
    row.addSpacing(fontMetrics().averageCharWidth());
    row.addWidget(lblVolume_);
    row.addWidget(cmbVolume_);
    lblVolume_->setVisible(!choice_.Units().empty());
    cmbVolume_->setVisible(!choice_.Units().empty());
    connect(cmbVolume_, &QComboBox::currentIndexChanged, this, [this](int unit) {
        choice_.SetUnit(static_cast<std::size_t>(unit));
        Refresh();
    });
}

QLineEdit* frmReport::TextField(const char* name, const std::string& shown) {
    auto* field = new QLineEdit(ToQt(shown), this);
    field->setObjectName(Named(name));
    field->setMaxLength(LongestText);
    connect(field, &QLineEdit::editingFinished, this, [this] { choice_.Remember(); });
    return field;
}

void frmReport::BuildNames(QBoxLayout& column) {
    auto* row = new QHBoxLayout;
    txtSite_ = TextField("txtSite", choice_.Site());
    txtSite_->setToolTip(QStringLiteral("Where the logger stands. Kept for this logger."));
    txtMadeBy_ = TextField("txtMadeBy", choice_.MadeBy());
    txtMadeBy_->setToolTip(QStringLiteral("Who makes the report. Kept for all reports."));
    row->addWidget(CaptionFor(txtSite_, Named("lblSite"), QStringLiteral("S&ite:")));
    row->addWidget(txtSite_, 3);
    row->addSpacing(fontMetrics().averageCharWidth());
    row->addWidget(CaptionFor(txtMadeBy_, Named("lblMadeBy"), QStringLiteral("&Made by:")));
    row->addWidget(txtMadeBy_, 2);
    column.addLayout(row);
    connect(txtSite_, &QLineEdit::textChanged, this,
            [this](const QString& text) { choice_.SetSite(FromQt(text)); });
    connect(txtMadeBy_, &QLineEdit::textChanged, this,
            [this](const QString& text) { choice_.SetMadeBy(FromQt(text)); });
}

void frmReport::BuildTable(QBoxLayout& column) {
    lblSummary_ =
        ValueLabel(this, Named("lblSummary"), QStringLiteral("Period and how complete it is"));
    lblSummary_->setWordWrap(true);
    table_ = new ReportTable(this);
    column.addWidget(lblSummary_);
    column.addWidget(table_, 1);
}

void frmReport::BuildButtons(QBoxLayout& column) {
    auto* row = new QHBoxLayout;
    lblState_ = ValueLabel(this, Named("lblState"), QStringLiteral("What was done last"));
    lblState_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    ProgressBar_ = new QProgressBar(this);
    ProgressBar_->setObjectName(Named("ProgressBar"));
    ProgressBar_->setAccessibleName(QStringLiteral("Working out the report"));
    ProgressBar_->setRange(0, 0);
    ProgressBar_->hide();
    row->addWidget(ProgressBar_, 1);
    row->addWidget(lblState_, 1);
    const auto button = [this, row](const char* name, const char* caption, const char* tip) {
        QPushButton* made = NamedButton(this, Named(name), QString::fromLatin1(caption));
        // Enter in a field must not press one.
        made->setAutoDefault(false);
        made->setToolTip(QString::fromLatin1(tip));
        row->addWidget(made);
        return made;
    };
    cmdCopy_ = button("cmdCopy", "&Copy", "Copies the whole table, for a spreadsheet.");
    cmdCsv_ = button("cmdCsv", "&Save as CSV...", "");
    cmdPdf_ = button("cmdPdf", "Save as P&DF...", "");
    cmdPrint_ = button("cmdPrint", "&Print...", "");
    cmdClose_ = button("cmdClose", "C&lose", "");
    connect(cmdCopy_, &QPushButton::clicked, this, &frmReport::CopyReport);
    connect(cmdCsv_, &QPushButton::clicked, this, &frmReport::SaveCsv);
    connect(cmdPdf_, &QPushButton::clicked, this, &frmReport::SavePdf);
    connect(cmdPrint_, &QPushButton::clicked, this, &frmReport::PrintReport);
    connect(cmdClose_, &QPushButton::clicked, this, [this] { close(); });
    column.addLayout(row);
}

void frmReport::FitScreen() {
    constexpr int Characters = 140;
    constexpr int Lines = 34;
    const QSize wanted(fontMetrics().averageCharWidth() * Characters,
                       fontMetrics().lineSpacing() * Lines);
    // Room for the frame that the desktop puts around a window.
    const int frame = 2 * fontMetrics().height();
    resize(wanted.boundedTo(screen()->availableSize() - QSize(frame, frame)));
}

void frmReport::OrderTabs() {
    QWidget* before = cmbStep_;
    for (QWidget* widget : std::initializer_list<QWidget*>{
             dtpFrom_, dtpTo_, cmbVolume_, txtSite_, txtMadeBy_, table_->Rows(), table_->Total(),
             cmdCopy_, cmdCsv_, cmdPdf_, cmdPrint_, cmdClose_}) {
        setTabOrder(before, widget);
        before = widget;
    }
}
