#include "setup/frmSetup.h"

#include <QAction>
#include <QCloseEvent>
#include <QMenuBar>
#include <QPushButton>
#include <QTabBar>

#include "platform/qt/focus_guard.h"
#include "platform/qt/status_line.h"
#include "platform/qt/text_qt.h"
#include "setup/calibration.h"
#include "setup/frmSetupPages.h"
#include "setup/setup_changes.h"
#include "setup/setup_form_state.h"

frmSetup::frmSetup(const SetupRecords& records, Services services, QWidget* parent)
    : QDialog(parent), records_(records), services_(std::move(services)) {
    setObjectName(QStringLiteral("frmSetup"));
    setWindowTitle(QStringLiteral("Tessel Setup"));
    BuildTabs();
    BuildButtons();
    BuildMenus();
    BuildShortcuts();
    ConnectPages();
    GuardFields();
    FitScreen();
    Timer1_.setObjectName(QStringLiteral("Timer1"));
    Timer1_.setInterval(QuarterSecond(records_.outside.TickMilliseconds));
    connect(&Timer1_, &QTimer::timeout, this, [this] { OnTimer1(); });
}

void frmSetup::Load() {
    OpenSetup(Context());
    OnTimer1();
    Timer1_.start();
}

void frmSetup::ShowModally() {
    Load();
    if (records_.link.ShuttingDown == False) {
        exec();
    }
}

SetupContext frmSetup::Context() {
    return {records_, services_.Reselect, *this, dialog_};
}

// ----- what the procedures tell and ask

SetupControls frmSetup::Controls() const {
    return pages_->Fields().Values();
}

void frmSetup::ShowControls(const SetupControls& controls) {
    showing_ = true;
    pages_->Fields().Show(controls);
    showing_ = false;
}

bool frmSetup::ValidateField() {
    // What a validator remarks on a value that it accepts is for who leaves the field.
    remarks_ = false;
    const bool accepted = guard_->Accepts();
    remarks_ = true;
    return accepted;
}

void frmSetup::EnableFlow(const FlowStates& states) {
    pages_->EnableFlow(states);
}

void frmSetup::SetTableFile(const std::string& path) {
    SetupControls controls = Controls();
    controls.txtTableFile = path;
    ShowControls(controls);
}

void frmSetup::SetCalibration(int channel, const CalibrationValues& values) {
    SetupControls controls = Controls();
    AnalogRow& row = controls.Analog.at(static_cast<std::size_t>(channel));
    row.txtHighEU = values.HighEU;
    row.txtLowEU = values.LowEU;
    row.txtHighRaw = values.HighRaw;
    row.txtLowRaw = values.LowRaw;
    ShowControls(controls);
}

void frmSetup::EnableAlarm(int alarm, bool on) {
    pages_->EnableAlarm(alarm, on);
}

void frmSetup::SetRecentFile(int place, std::string_view name) {
    const QString caption = QStringLiteral("&%1 ").arg(place + 1) + EscapedAmpersands(name);
    QAction* item = mnuHist_.at(static_cast<std::size_t>(place));
    if (item->text() != caption) {
        item->setText(caption);
    }
    item->setEnabled(!name.empty());
}

void frmSetup::SetPointer(Pointer pointer) {
    pointer == Pointer::Hourglass ? setCursor(Qt::WaitCursor) : unsetCursor();
}

void frmSetup::EnableCancel(bool on) {
    cmdCancel_->setEnabled(on);
}

void frmSetup::FocusCancel() {
    cmdCancel_->setFocus();
}

void frmSetup::HoldInput(bool held) {
    if (held) {
        focusBefore_ = focusWidget();
    }
    for (QWidget* part : std::initializer_list<QWidget*>{menus_, TabStrip_, pages_, cmdOK_}) {
        part->setEnabled(!held);
    }
    if (!held && focusBefore_ != nullptr) {
        focusBefore_->setFocus();
    }
}

// ----- events

bool frmSetup::Validate(const frmSetupFields::Field& field) {
    const FieldCheck check = field.Check(frmSetupFields::TextOf(field.Widget));
    if (check.Box && (remarks_ || !check.Accepted)) {
        records_.outside.Boxes.Show(*check.Box);
    }
    if (check.Text) {
        frmSetupFields::SetText(field.Widget, *check.Text);
    }
    return check.Accepted;
}

void frmSetup::OnTimer1() {
    if (records_.link.ShuttingDown != False) {
        done(Rejected);
        return;
    }
    SetupTick(Context());
    lblStatus_->Tell(records_.status.Text(), records_.status.Failed());
}

void frmSetup::TurnPage(int step) {
    // The shortcuts are the window's, and work while the strip is held.
    if (TabStrip_->isEnabled()) {
        TabStrip_->setCurrentIndex(
            qBound(0, TabStrip_->currentIndex() + step, TabStrip_->count() - 1));
    }
}

void frmSetup::closeEvent(QCloseEvent* event) {
    const bool closes =
        records_.link.ShuttingDown != False || !isVisible() || QueryUnloadSetup(Context());
    event->setAccepted(closes);
    if (closes) {
        Timer1_.stop();
        done(Rejected);
    }
}
