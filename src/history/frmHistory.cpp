#include "history/frmHistory.h"

#include <QBoxLayout>
#include <QGroupBox>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <utility>

#include "flow/unit_names.h"
#include "history/csv.h"
#include "history/frmHistoryList.h"
#include "history/frmHistoryOptions.h"
#include "history/frmProgress.h"
#include "history/save_history.h"
#include "platform/qt/named_controls.h"
#include "platform/qt/text_qt.h"

frmHistory::frmHistory(const HistoryContext& history, std::shared_ptr<ClientWindow> window,
                       QWidget* parent, ShowRecordPlot plot)
    : QDialog(parent), history_(history), window_(std::move(window)), plot_(std::move(plot)) {
    constexpr int Characters = 130;
    constexpr int Lines = 32;
    setObjectName(QStringLiteral("frmHistory"));
    setWindowTitle(QStringLiteral("Historical Data Viewer"));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    new QVBoxLayout(this);
    BuildFrames();
    BuildList();
    BuildButtons();
    resize(fontMetrics().averageCharWidth() * Characters, fontMetrics().lineSpacing() * Lines);
    cmdOK_->setFocus();
}

void frmHistory::BuildFrames() {
    auto* row = new QHBoxLayout;
    const auto frame = [this, row](const char* name, const char* title, const char* label,
                                   const char* meaning, int share) {
        auto* box = new QGroupBox(QLatin1String(title), this);
        box->setObjectName(QLatin1String(name));
        auto* shown = new QLabel(box);
        shown->setObjectName(QLatin1String(label));
        shown->setTextFormat(Qt::PlainText);
        shown->setAccessibleDescription(QLatin1String(meaning));
        (new QHBoxLayout(box))->addWidget(shown);
        row->addWidget(box, share);
        return shown;
    };
    lblLoggerName_ =
        frame("fraLoggerName", "Logger Name", "lblLoggerName", "Name of the logger", 3);
    lblNumRecords_ =
        frame("Frame1", "Records Retrieved", "lblNumRecords", "Number of rows shown", 1);
    static_cast<QBoxLayout*>(layout())->addLayout(row);
}

void frmHistory::BuildList() {
    lvwHistory_ = new HistoryList(this);
    layout()->addWidget(lvwHistory_);
    ProgressBar_ = new QProgressBar(this);
    ProgressBar_->setObjectName(QStringLiteral("ProgressBar"));
    ProgressBar_->setAccessibleName(QStringLiteral("Progress"));
    QSizePolicy policy = ProgressBar_->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    ProgressBar_->setSizePolicy(policy);
    ProgressBar_->hide();
}

QPushButton* frmHistory::AddButton(const char* name, const char* text,
                                   void (frmHistory::*press)()) {
    QPushButton* button = NamedButton(this, QLatin1String(name), QLatin1String(text));
    connect(button, &QPushButton::clicked, this, press);
    return button;
}

void frmHistory::BuildButtons() {
    auto* row = new QHBoxLayout;
    QPushButton* plot = AddButton("cmdPlot", "P&lot", &frmHistory::Plot);
    plot->setAutoDefault(false);
    plot->setEnabled(plot_ != nullptr);
    row->addWidget(plot);
    row->addWidget(ProgressBar_, 1);
    cmdOK_ = AddButton("cmdOK", "OK", &frmHistory::Close);
    cmdOK_->setDefault(true);
    row->addWidget(cmdOK_);
    row->addWidget(AddButton("cmdSave", "&Save to File", &frmHistory::Save));
    row->addWidget(AddButton("cmdPack", "&Pack", &frmHistory::Pack));
    QPushButton* options = AddButton("cmdOptions", "&Options", &frmHistory::Options);
    row->addWidget(options);
    static_cast<QBoxLayout*>(layout())->addLayout(row);
    // It came later than the others, and is reached behind them.
    setTabOrder(options, plot);
}

void frmHistory::Load() {
    CheckUnits();
    FillList(false);
}

void frmHistory::CheckUnits() {
    const std::string& units = history_.global.EngUnits[0];
    BadUnits_ = HasFlow(history_.global) && !config::IsFlowUnit(units);
    if (BadUnits_) {
        history_.outside.Boxes.Show(BadUnitsWarning(units));
    }
}

HistorySource frmHistory::Source() const {
    return {.store = history_.store,
            .logger = history_.global,
            .clock = history_.outside.Clock,
            .flow = [this](double level, double& velocity) {
                return window_->CalculateFlow(level, velocity);
            }};
}

void frmHistory::FillList(bool pack) {
    if (history_.link.ShuttingDown != False) {
        return;
    }
    if (pack) {
        FillFollowedBy(*ProgressBar_, pack);
        ProgressBar_->hide();
    } else {
        frmProgress progress(isVisible() ? this : parentWidget());
        FillFollowedBy(progress.Bar(), pack);
    }
    SetPointer(Pointer::Normal);
}

void frmHistory::FillFollowedBy(QProgressBar& bar, bool pack) {
    bar.setRange(0, FillBarMaximum(history_.store));
    bar.setValue(0);
    bar.window()->show();
    bar.show();
    lvwHistory_->SetTable({});
    columns_ = ColumnsOf(history_.global, BadUnits_);
    BarFollower follower(bar);
    HistoryTable table;
    FillTable(Source(), columns_, pack, follower, table);
    lvwHistory_->SetTable(std::move(table));
    lblLoggerName_->setText(ToQt(history_.global.LoggerName));
    lblNumRecords_->setText(QString::number(lvwHistory_->Table().RowCount()));
}

void frmHistory::Close() {
    SetPointer(Pointer::Hourglass);
    lvwHistory_->SetTable({});
    SetPointer(Pointer::Normal);
    repaint();
    accept();
}

void frmHistory::Save() {
    const auto path =
        AskForCsvFile(history_.global.LoggerName, history_.outside, history_.lastFolder);
    if (!path) {
        return;
    }
    const HistoryTable& table = lvwHistory_->Table();
    ProgressBar_->setRange(1, SaveBarMaximum(table.RowCount()));
    ProgressBar_->setValue(1);
    ProgressBar_->show();
    SetPointer(Pointer::Hourglass);
    BarFollower follower(*ProgressBar_);
    // A file that cannot be written is told by nothing but the file.
    static_cast<void>(
        WriteCsv(*path,
                 {CsvTitleLine(history_.global, columns_.ShowFlow, history_.outside.Clock), table,
                  IsSingleColumn(history_.settings.CSVDateTimeSingleColumn)},
                 follower));
    SetPointer(Pointer::Normal);
    ProgressBar_->hide();
    cmdOK_->setFocus();
}

void frmHistory::Pack() {
    if (history_.outside.Boxes.Show(PackQuestion()) == BoxAnswer::Yes) {
        FillList(true);
    }
}

void frmHistory::Options() {
    frmHistoryOptions(history_.settings, this).exec();
}

void frmHistory::Plot() {
    plot_(window_->FlowPoints(), *this);
}

void frmHistory::SetPointer(Pointer pointer) {
    history_.view.SetPointer(pointer);
    pointer == Pointer::Hourglass ? setCursor(Qt::WaitCursor) : unsetCursor();
}
