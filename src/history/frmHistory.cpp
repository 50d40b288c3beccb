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
#include "platform/qt/text_qt.h"

frmHistory::frmHistory(SharedState& state, MainView& view, std::shared_ptr<ClientWindow> window,
                       QWidget* parent)
    : QDialog(parent), state_(state), view_(view), window_(std::move(window)) {
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
    auto* button = new QPushButton(QLatin1String(text), this);
    button->setObjectName(QLatin1String(name));
    connect(button, &QPushButton::clicked, this, press);
    return button;
}

void frmHistory::BuildButtons() {
    auto* row = new QHBoxLayout;
    row->addWidget(ProgressBar_, 1);
    cmdOK_ = AddButton("cmdOK", "OK", &frmHistory::Close);
    cmdOK_->setDefault(true);
    row->addWidget(cmdOK_);
    row->addWidget(AddButton("cmdSave", "&Save to File", &frmHistory::Save));
    row->addWidget(AddButton("cmdPack", "&Pack", &frmHistory::Pack));
    row->addWidget(AddButton("cmdOptions", "&Options", &frmHistory::Options));
    static_cast<QBoxLayout*>(layout())->addLayout(row);
}

void frmHistory::Load() {
    CheckUnits();
    FillList(false);
}

void frmHistory::CheckUnits() {
    const std::string& units = state_.Logger.EngUnits[0];
    BadUnits_ = HasFlow(state_.Logger) && !config::IsFlowUnit(units);
    if (BadUnits_) {
        state_.Boxes.Show(BadUnitsWarning(units));
    }
}

HistorySource frmHistory::Source() const {
    return {
        state_.History, state_.Logger, state_.Outside.Clock,
        [this](double level, double& velocity) { return window_->CalculateFlow(level, velocity); }};
}

void frmHistory::FillList(bool pack) {
    if (state_.LinkRecord.ShuttingDown != False) {
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
    bar.setRange(0, FillBarMaximum(state_.History));
    bar.setValue(0);
    bar.window()->show();
    bar.show();
    lvwHistory_->SetTable({});
    columns_ = ColumnsOf(state_.Logger, BadUnits_);
    BarFollower follower(bar);
    HistoryTable table;
    FillTable(Source(), columns_, pack, follower, table);
    lvwHistory_->SetTable(std::move(table));
    lblLoggerName_->setText(ToQt(state_.Logger.LoggerName));
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
        AskForCsvFile(state_.Logger.LoggerName, state_.Outside, state_.LastHistoryFolder);
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
                 {CsvTitleLine(state_.Logger, columns_.ShowFlow, state_.Outside.Clock), table,
                  IsSingleColumn(state_.SettingsRecord.CSVDateTimeSingleColumn)},
                 follower));
    SetPointer(Pointer::Normal);
    ProgressBar_->hide();
    cmdOK_->setFocus();
}

void frmHistory::Pack() {
    if (state_.Boxes.Show(PackQuestion()) == BoxAnswer::Yes) {
        FillList(true);
    }
}

void frmHistory::Options() {
    frmHistoryOptions(state_.SettingsRecord, this).exec();
}

void frmHistory::SetPointer(Pointer pointer) {
    view_.SetPointer(pointer);
    pointer == Pointer::Hourglass ? setCursor(Qt::WaitCursor) : unsetCursor();
}
