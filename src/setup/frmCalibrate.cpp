#include "setup/frmCalibrate.h"

#include <QBoxLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "platform/qt/focus_guard.h"
#include "platform/qt/named_controls.h"
#include "platform/qt/text_qt.h"
#include "setup/frmSetupParts.h"

using namespace setup_parts;

frmCalibrate::frmCalibrate(const SetupRecords& records, QWidget* parent)
    : QDialog(parent), records_(records) {
    setObjectName(Named("frmCalibrate"));
    setWindowTitle(QStringLiteral("Calibrate"));
    auto* rows = new QVBoxLayout(this);
    rows->setSizeConstraint(QLayout::SetFixedSize);
    BuildField();
    BuildButtons();
    auto* guard = new FocusGuard(this);
    guard->AddField(txtCalibrate_, [this] { return Validate(); });
    guard->LeavesWithoutValidating(cmdBack_);
    guard->LeavesWithoutValidating(cmdCancel_);
    Timer1_.setObjectName(Named("Timer1"));
    Timer1_.setInterval(QuarterSecond(records_.outside.TickMilliseconds));
    connect(&Timer1_, &QTimer::timeout, this, [this] {
        CalibrationTick({.link = records_.link,
                         .exchange = records_.exchange,
                         .global = records_.global,
                         .clock = records_.outside.Clock},
                        *this);
    });
}

void frmCalibrate::BuildField() {
    constexpr int Characters = 48;
    Frame1_ = new QGroupBox(this);
    Frame1_->setObjectName(Named("Frame1"));
    Frame1_->setAccessibleName(QStringLiteral("Value of this step"));
    Frame1_->setMinimumWidth(Frame1_->fontMetrics().averageCharWidth() * Characters);
    txtCalibrate_ = new QLineEdit(QStringLiteral("Text1"), Frame1_);
    txtCalibrate_->setObjectName(Named("txtCalibrate"));
    lblCalibrate_ = Label("lblCalibrate", "", txtCalibrate_);
    lblCalibrate_->setAccessibleDescription(QStringLiteral("Question of this step"));
    auto* column = new QVBoxLayout(Frame1_);
    column->addWidget(lblCalibrate_);
    column->addWidget(txtCalibrate_);
    layout()->addWidget(Frame1_);
}

void frmCalibrate::BuildButtons() {
    cmdBack_ = NamedButton(this, Named("cmdBack"), QStringLiteral("< &Back"));
    cmdNext_ = NamedButton(this, Named("cmdNext"), QStringLiteral("&Next >"));
    cmdCancel_ = NamedButton(this, Named("cmdCancel"), QStringLiteral("Cancel"));
    QPushButton* cmdHelp = NamedButton(this, Named("cmdHelp"), QStringLiteral("Help"));
    auto* row = new QHBoxLayout;
    row->addStretch();
    for (QPushButton* button : {cmdBack_, cmdNext_, cmdCancel_, cmdHelp}) {
        row->addWidget(button);
    }
    cmdNext_->setDefault(true);
    static_cast<QBoxLayout*>(layout())->addLayout(row);
    connect(cmdBack_, &QPushButton::clicked, this, [this] { Finish("Back"); });
    connect(cmdNext_, &QPushButton::clicked, this, [this] { Finish("Next"); });
    connect(cmdCancel_, &QPushButton::clicked, this, [this] { Finish("Cancel"); });
}

void frmCalibrate::SetCaption(const std::string& caption) {
    setWindowTitle(EscapedTitle(caption));
}

void frmCalibrate::SetQuestion(std::string_view question) {
    lblCalibrate_->setText(ToQt(question));
}

void frmCalibrate::SetField(const std::string& text) {
    txtCalibrate_->setText(ToQt(text));
}

std::string frmCalibrate::Field() const {
    return FromQt(txtCalibrate_->text());
}

void frmCalibrate::EnableBack(bool on) {
    cmdBack_->setEnabled(on);
}

void frmCalibrate::SetNextCaption(std::string_view caption) {
    cmdNext_->setText(ToQt(caption));
}

void frmCalibrate::ShowModally() {
    txtCalibrate_->setFocus();
    txtCalibrate_->selectAll();
    if (records_.link.ShuttingDown == False) {
        exec();
    }
}

bool frmCalibrate::Validate() {
    const FieldCheck check = CheckCalibration(Field(), calibration_.Step);
    if (check.Box) {
        records_.outside.Boxes.Show(*check.Box);
    }
    if (check.Text) {
        SetField(*check.Text);
    }
    return check.Accepted;
}

void frmCalibrate::Finish(const char* result) {
    Timer1_.stop();
    calibration_.Result = result;
    done(Accepted);
}
