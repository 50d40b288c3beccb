// How the archive's window is put together; what it does is in frmArchive.cpp.
#include <QBoxLayout>
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QScrollBar>
#include <QSplitter>

#include "archive/frmArchive.h"
#include "archive/frmArchiveLists.h"
#include "platform/qt/named_controls.h"
#include "platform/qt/qt_system_clock.h"
#include "platform/qt/text_qt.h"

namespace {

QString Named(const char* name) {
    return QString::fromLatin1(name);
}

/// The system's short form of a date, with all of the year, so that it can be typed.
QString DayFormat() {
    QString format = ShortDateFormat(QLocale::system());
    if (!format.contains(QStringLiteral("yyyy"))) {
        format.replace(QStringLiteral("yy"), QStringLiteral("yyyy"));
    }
    return format;
}

}  // namespace

frmArchive::frmArchive(const ArchiveWork& work, QWidget* parent)
    : QDialog(parent), session_(work), care_(session_.Store(), work.filer) {
    setObjectName(Named("frmArchive"));
    setWindowTitle(QStringLiteral("Archive"));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    setSizeGripEnabled(true);
    auto* column = new QVBoxLayout(this);
    BuildChoice(*column);
    BuildFilter(*column);
    BuildLists(*column);
    BuildPeriod(*column);
    BuildCare(*column);
    BuildTimers();
    OrderTabs();
    ShowChoice();
    ShowUploads();
    ShowStates();
    FitScreen();
    lvwLoggers_->setFocus();
}

frmArchive::~frmArchive() = default;

void frmArchive::BuildChoice(QBoxLayout& column) {
    pnlChoice_ = new QWidget(this);
    auto* row = new QHBoxLayout(pnlChoice_);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(new QLabel(QStringLiteral("Archive:"), pnlChoice_));
    const auto add = [this, row](const char* name, const char* text, const char* hint,
                                 bool shared) {
        auto* option = new QRadioButton(QString::fromLatin1(text), pnlChoice_);
        option->setObjectName(Named(name));
        option->setToolTip(QString::fromLatin1(hint));
        row->addWidget(option);
        connect(option, &QRadioButton::clicked, this, [this, shared] { LookAt(shared); });
        return option;
    };
    optShared_ = add("optShared", "S&hared", "What all consoles of the crew have collected.", true);
    optLocal_ = add("optLocal", "Th&is Computer", "What was collected here.", false);
    row->addStretch();
    column.addWidget(pnlChoice_);
}

void frmArchive::BuildFilter(QBoxLayout& column) {
    constexpr int Characters = 30;
    txtFilter_ = new QLineEdit(this);
    txtFilter_->setObjectName(Named("txtFilter"));
    txtFilter_->setClearButtonEnabled(true);
    txtFilter_->setMaximumWidth(fontMetrics().averageCharWidth() * 2 * Characters);
    txtFilter_->setToolTip(
        QStringLiteral("Shows the loggers that have this in their name or address."));
    lblCount_ = ValueLabel(this, Named("lblCount"), QStringLiteral("Number of loggers shown"));
    auto* row = new QHBoxLayout;
    row->addWidget(CaptionFor(txtFilter_, Named("lblFilter"), QStringLiteral("&Filter:")));
    row->addWidget(txtFilter_, 1);
    row->addStretch();
    row->addWidget(lblCount_);
    column.addLayout(row);
    connect(txtFilter_, &QLineEdit::textChanged, this, &frmArchive::TakeFilter);
}

QWidget* frmArchive::BuildLoggers() {
    auto* panel = new QWidget(this);
    model_ = new LoggerModel(session_.Work().windows.outside.Clock, this);
    order_ = new LoggerOrder(this);
    order_->setSourceModel(model_);
    lvwLoggers_ = new ArchiveList(panel, Named("lvwLoggers"), QStringLiteral("Loggers"));
    lvwLoggers_->setModel(order_);
    lvwLoggers_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    lvwLoggers_->setSortingEnabled(true);
    lvwLoggers_->sortByColumn(static_cast<int>(LoggerColumn::Name), Qt::AscendingOrder);
    lvwLoggers_->SetWidths({0, 17, 17, 17, 8, 6, 7, 8}, 0);
    auto* inner = new QVBoxLayout(panel);
    inner->setContentsMargins(0, 0, 0, 0);
    inner->addWidget(CaptionFor(lvwLoggers_, Named("lblLoggers"), QStringLiteral("&Loggers:")));
    inner->addWidget(lvwLoggers_, 1);
    connect(lvwLoggers_->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        ShowUploads();
        ShowStates();
    });
    connect(lvwLoggers_, &QAbstractItemView::activated, this, [this] { cmdPlot_->click(); });
    connect(lvwLoggers_->verticalScrollBar(), &QScrollBar::valueChanged, this,
            [this] { count_.start(); });
    connect(lvwLoggers_->horizontalHeader(), &QHeaderView::sortIndicatorChanged, this,
            [this] { count_.start(); });
    return panel;
}

QWidget* frmArchive::BuildUploads() {
    auto* panel = new QWidget(this);
    uploads_ = new UploadModel(session_.Work().windows.outside.Clock, this);
    lvwUploads_ =
        new ArchiveList(panel, Named("lvwUploads"), QStringLiteral("Uploads of the logger"));
    lvwUploads_->setModel(uploads_);
    lvwUploads_->setSelectionMode(QAbstractItemView::SingleSelection);
    lvwUploads_->SetWidths({19, 19, 12, 9, 9, 9}, static_cast<int>(UploadColumn::Outcome));
    lblUploads_ = CaptionFor(lvwUploads_, Named("lblUploads"), QStringLiteral("&Uploads:"));
    lblUploads_->setTextFormat(Qt::PlainText);
    lblUploads_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    auto* inner = new QVBoxLayout(panel);
    inner->setContentsMargins(0, 0, 0, 0);
    inner->addWidget(lblUploads_);
    inner->addWidget(lvwUploads_, 1);
    return panel;
}

void frmArchive::BuildLists(QBoxLayout& column) {
    lists_ = new QSplitter(Qt::Vertical, this);
    lists_->setObjectName(Named("splLists"));
    lists_->setChildrenCollapsible(false);
    lists_->addWidget(BuildLoggers());
    lists_->addWidget(BuildUploads());
    lists_->setStretchFactor(0, 3);
    lists_->setStretchFactor(1, 1);
    lblNotice_ =
        ValueLabel(this, Named("lblNotice"), QStringLiteral("Why there are no loggers to show"));
    lblNotice_->setWordWrap(true);
    lblNotice_->setAlignment(Qt::AlignCenter);
    lblNotice_->setMargin(2 * fontMetrics().height());
    lblNotice_->hide();
    column.addWidget(lists_, 1);
    column.addWidget(lblNotice_, 1);
}

QDateEdit* frmArchive::DayField(const char* name) {
    const LocalTime today = session_.Work().windows.outside.Clock.Now();
    auto* field = new QDateEdit(QDate(today.Year, today.Month, today.Day), this);
    field->setObjectName(Named(name));
    field->setCalendarPopup(true);
    field->setDisplayFormat(DayFormat());
    field->setDateRange(QDate(2000, 1, 1), QDate(2085, 5, 1));
    return field;
}

void frmArchive::BuildPeriod(QBoxLayout& column) {
    cmbPeriod_ = new QComboBox(this);
    cmbPeriod_->setObjectName(Named("cmbPeriod"));
    const auto named = [this](const char* text, NamedPeriod name) {
        cmbPeriod_->addItem(QString::fromLatin1(text), static_cast<int>(name));
    };
    named("All", NamedPeriod::All);
    named("Last day", NamedPeriod::LastDay);
    named("Last week", NamedPeriod::LastWeek);
    named("Last month", NamedPeriod::LastMonth);
    cmbPeriod_->addItem(QStringLiteral("From ... to"));
    cmbPeriod_->setToolTip(
        QStringLiteral("The last day, week and month end with the newest record."));
    dtpFrom_ = DayField("dtpFrom");
    dtpTo_ = DayField("dtpTo");
    chkMachine_ = new QCheckBox(QStringLiteral("For &other programs"), this);
    chkMachine_->setObjectName(Named("chkMachine"));
    chkMachine_->setToolTip(
        QStringLiteral("One line of headings and times as 2024-01-14T13:05:00, instead of the "
                       "viewer's file."));
    auto* row = new QHBoxLayout;
    const auto add = [row](QWidget* field, const char* name, const char* caption) {
        row->addWidget(CaptionFor(field, Named(name), QString::fromLatin1(caption)));
        row->addWidget(field);
    };
    add(cmbPeriod_, "lblPeriod", "P&eriod:");
    add(dtpFrom_, "lblFrom", "Fro&m:");
    add(dtpTo_, "lblTo", "&To:");
    row->addStretch();
    cmdPlot_ =
        AddButton(*row, "cmdPlot", "&Plot", "Shows the records as curves.", &frmArchive::Plot);
    cmdReport_ = AddButton(*row, "cmdReport", "&Report",
                           "Tells what each day, week or month amounts to.", &frmArchive::Report);
    cmdSaveCsv_ = AddButton(*row, "cmdSaveCsv", "Save as &CSV...",
                            "Saves the records as the viewer does.", &frmArchive::SaveCsv);
    row->addWidget(chkMachine_);
    column.addLayout(row);
    connect(cmbPeriod_, &QComboBox::currentIndexChanged, this, [this] { ShowStates(); });
}

QPushButton* frmArchive::AddButton(QBoxLayout& row, const char* name, const char* caption,
                                   const char* hint, void (frmArchive::*press)()) {
    QPushButton* button = NamedButton(this, Named(name), QString::fromLatin1(caption));
    // Enter in a field must not press one.
    button->setAutoDefault(false);
    button->setToolTip(QString::fromLatin1(hint));
    connect(button, &QPushButton::clicked, this, press);
    row.addWidget(button);
    return button;
}

void frmArchive::BuildCare(QBoxLayout& column) {
    lblState_ = ValueLabel(this, Named("lblState"), QStringLiteral("What was done last"));
    lblState_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    ProgressBar_ = new QProgressBar(this);
    ProgressBar_->setObjectName(Named("ProgressBar"));
    ProgressBar_->setAccessibleName(QStringLiteral("Progress"));
    auto* row = new QHBoxLayout;
    row->addWidget(lblState_, 1);
    row->addWidget(ProgressBar_);
    cmdCancel_ = AddButton(*row, "cmdCancel", "C&ancel", "Stops the deletion where it is.",
                           &frmArchive::Cancel);
    cmdDelete_ = AddButton(*row, "cmdDelete", "&Delete Logger...",
                           "Deletes all that is kept of the logger.", &frmArchive::DeleteLogger);
    cmdBackUp_ = AddButton(*row, "cmdBackUp", "&Back Up...", "Writes a copy of the whole archive.",
                           &frmArchive::BackUp);
    cmdCheck_ = AddButton(*row, "cmdCheck", "Chec&k", "Looks whether the archive holds together.",
                          &frmArchive::Check);
    cmdClose_ = NamedButton(this, Named("cmdClose"), QStringLiteral("Clo&se"));
    cmdClose_->setAutoDefault(false);
    connect(cmdClose_, &QPushButton::clicked, this, [this] { close(); });
    row->addWidget(cmdClose_);
    column.addLayout(row);
}

void frmArchive::BuildTimers() {
    constexpr int TicksBetweenLooks = 10;
    const int tick = session_.Work().windows.outside.TickMilliseconds;
    look_.setInterval(TicksBetweenLooks * tick);
    step_.setInterval(tick / 2);
    count_.setInterval(0);
    connect(&look_, &QTimer::timeout, this, [this] { Refresh(); });
    connect(&step_, &QTimer::timeout, this, [this] { StepCare(); });
    connect(&count_, &QTimer::timeout, this, [this] { CountGaps(); });
}

void frmArchive::OrderTabs() {
    QWidget* before = optShared_;
    for (QWidget* widget : std::initializer_list<QWidget*>{
             optLocal_, txtFilter_, lvwLoggers_, lvwUploads_, cmbPeriod_, dtpFrom_, dtpTo_,
             cmdPlot_, cmdReport_, cmdSaveCsv_, chkMachine_, cmdCancel_, cmdDelete_, cmdBackUp_,
             cmdCheck_, cmdClose_}) {
        setTabOrder(before, widget);
        before = widget;
    }
}

void frmArchive::FitScreen() {
    constexpr int Characters = 140;
    constexpr int Lines = 36;
    const QSize wanted(fontMetrics().averageCharWidth() * Characters,
                       fontMetrics().lineSpacing() * Lines);
    // Room for the frame that the desktop puts around a window.
    const int frame = 2 * fontMetrics().height();
    resize(wanted.boundedTo(screen()->availableSize() - QSize(frame, frame)));
}
