#include "history/frmGetHistoryData.h"

#include <QBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

#include "platform/qt/named_controls.h"
#include "platform/qt/text_qt.h"

frmGetHistoryData::frmGetHistoryData(const HistoryContext& history, std::int32_t totalRecords,
                                     QWidget* parent)
    : QDialog(parent), history_(history), TotalRecords_(totalRecords) {
    constexpr int MillisecondsBetweenMoves = 40;
    setObjectName(QStringLiteral("frmGetHistoryData"));
    setWindowTitle(QLatin1String(GetHistoryTitle));
    auto* column = new QVBoxLayout(this);
    column->setSizeConstraint(QLayout::SetFixedSize);
    BuildProgress();
    BuildButtons();
    untilNextMove_.setSingleShot(true);
    untilNextMove_.setInterval(MillisecondsBetweenMoves);
    connect(&untilNextMove_, &QTimer::timeout, this, [this] {
        if (moved_) {
            ShowNow();
        }
    });
}

void frmGetHistoryData::BuildProgress() {
    const auto label = [this](const char* name, const char* meaning) {
        auto* made = new QLabel(this);
        made->setObjectName(QLatin1String(name));
        made->setTextFormat(Qt::PlainText);
        made->setAccessibleDescription(QLatin1String(meaning));
        layout()->addWidget(made);
        return made;
    };
    lblGetHistoryData_ = label("lblGetHistoryData", "Records received so far");
    lblGetHistoryData_->setMinimumWidth(fontMetrics().horizontalAdvance(
        QStringLiteral("Upload complete: 200000 records uploaded.   ")));
    ProgressBar1_ = new QProgressBar(this);
    ProgressBar1_->setObjectName(QStringLiteral("ProgressBar1"));
    ProgressBar1_->setAccessibleName(QStringLiteral("Records received"));
    layout()->addWidget(ProgressBar1_);
    lblRetries_ = label("lblRetries", "Requests repeated so far");
}

void frmGetHistoryData::BuildButtons() {
    auto* row = new QHBoxLayout;
    row->addStretch();
    const auto button = [this, row](const char* name, const char* text, const char* tag) {
        QPushButton* made = NamedButton(this, QLatin1String(name), QLatin1String(text));
        connect(made, &QPushButton::clicked, this, [this, tag] { Press(tag); });
        row->addWidget(made);
        return made;
    };
    cmdOkay_ = button("cmdOkay", "Okay", TagOkay);
    cmdOkay_->setEnabled(false);
    cmdCancel_ = button("cmdCancel", "Stop", TagCancel);
    // No default button yet: Enter elsewhere in the dialog shall not end the upload.
    cmdCancel_->setAutoDefault(false);
    static_cast<QBoxLayout*>(layout())->addLayout(row);
}

void frmGetHistoryData::Press(const char* tag) {
    if (tag_ != TagStarting) {
        SetTag(tag);
    }
}

void frmGetHistoryData::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    QMetaObject::invokeMethod(
        this,
        [this] {
            RunUpload({.link = history_.link,
                       .exchange = history_.exchange,
                       .global = history_.global,
                       .store = history_.store,
                       .boxes = history_.outside.Boxes,
                       .listener = history_.listener},
                      *this, TotalRecords_);
        },
        Qt::QueuedConnection);
}

void frmGetHistoryData::SetBarMaximum(std::int32_t maximum) {
    told_.Maximum = maximum;
    Move();
}

void frmGetHistoryData::SetBarValue(std::int32_t value) {
    told_.Value = value;
    Move();
}

void frmGetHistoryData::SetRetries(const std::string& text) {
    told_.Retries = text;
    Move();
}

void frmGetHistoryData::SetProgress(const std::string& text) {
    told_.Progress = text;
    Move();
}

void frmGetHistoryData::AllowOkay() {
    cmdOkay_->setEnabled(true);
    cmdOkay_->setDefault(true);
    cmdOkay_->setFocus();
    cmdCancel_->setEnabled(false);
}

void frmGetHistoryData::Hide() {
    ShowNow();
    hide();
}

void frmGetHistoryData::Move() {
    moved_ = true;
    if (!untilNextMove_.isActive()) {
        ShowNow();
    }
}

void frmGetHistoryData::ShowNow() {
    moved_ = false;
    untilNextMove_.start();
    ProgressBar1_->setRange(0, told_.Maximum);
    ProgressBar1_->setValue(told_.Value);
    lblRetries_->setText(ToQt(told_.Retries));
    lblGetHistoryData_->setText(ToQt(told_.Progress));
    history_.status.HowFar(told_.Progress + (told_.Retries.empty() ? "" : ", " + told_.Retries));
}
