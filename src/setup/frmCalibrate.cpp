#include "setup/frmCalibrate.h"

#include <QBoxLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "platform/qt/focus_guard.h"
#include "platform/qt/text_qt.h"
#include "setup/frmSetupParts.h"

using namespace setup_parts;

frmCalibrate::frmCalibrate(SharedState& state, QWidget* parent) : QDialog(parent), state_(state) {
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
    Timer1_.setInterval(QuarterSecond(state.Outside.TickMilliseconds));
    connect(&Timer1_, &QTimer::timeout, this, [this] {
        CalibrationTick({state_.LinkRecord, state_.Exchange, state_.Logger, state_.Outside.Clock},
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
    lblCalibrate_ = Label(Frame1_, "lblCalibrate", "", txtCalibrate_);
    auto* column = new QVBoxLayout(Frame1_);
    column->addWidget(lblCalibrate_);
    column->addWidget(txtCalibrate_);
    layout()->addWidget(Frame1_);
}

QPushButton* frmCalibrate::AddButton(const char* name, const char* caption) {
    auto* button = new QPushButton(QString::fromLatin1(caption), this);
    button->setObjectName(Named(name));
    button->setAutoDefault(false);
    return button;
}

void frmCalibrate::BuildButtons() {
    cmdBack_ = AddButton("cmdBack", "< &Back");
    cmdNext_ = AddButton("cmdNext", "&Next >");
    cmdNext_->setDefault(true);
    cmdCancel_ = AddButton("cmdCancel", "Cancel");
    auto* row = new QHBoxLayout;
    row->addStretch();
    for (QPushButton* button : {cmdBack_, cmdNext_, cmdCancel_, AddButton("cmdHelp", "Help")}) {
        row->addWidget(button);
    }
    static_cast<QBoxLayout*>(layout())->addLayout(row);
    connect(cmdBack_, &QPushButton::clicked, this, [this] { Finish("Back"); });
    connect(cmdNext_, &QPushButton::clicked, this, [this] { Finish("Next"); });
    connect(cmdCancel_, &QPushButton::clicked, this, [this] { Finish("Cancel"); });
}

void frmCalibrate::SetCaption(const std::string& caption) {
    setWindowTitle(ToQt(caption).replace(QStringLiteral("[*]"), QStringLiteral("[*][*]")));
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
    if (state_.LinkRecord.ShuttingDown == False) {
        exec();
    }
}

bool frmCalibrate::Validate() {
    const FieldCheck check = CheckCalibration(Field(), calibration_.Step);
    if (check.Box) {
        state_.Outside.Boxes.Show(*check.Box);
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
