#include "setup/frmSetupPages.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QStackedLayout>

#include "platform/qt/option_group.h"
#include "setup/frmSetupParts.h"
#include "setup/setup_lists.h"

using namespace setup_parts;

namespace {

void Enable(const std::vector<QWidget*>& widgets, bool on) {
    for (QWidget* widget : widgets) {
        widget->setEnabled(on);
    }
}

/// What a list is called: by itself, or by the label beside it.
QString NameOf(const QComboBox& list, const QWidget& pages) {
    if (!list.accessibleName().isEmpty()) {
        return list.accessibleName();
    }
    for (const QLabel* label : pages.findChildren<QLabel*>()) {
        if (label->buddy() == &list) {
            return label->text();
        }
    }
    return {};
}

/// The focus is in the field of a list that takes text, so the field is called like its list.
void NameFieldsOfLists(const QWidget& pages) {
    for (const QComboBox* list : pages.findChildren<QComboBox*>()) {
        if (QLineEdit* field = list->lineEdit()) {
            field->setAccessibleName(NameOf(*list, pages));
        }
    }
}

}  // namespace

frmSetupPages::frmSetupPages(const SetupRecords& records, QWidget* parent)
    : QWidget(parent), records_(records) {
    BuildFrames();
    BuildGeneralPage();
    BuildAnalogPage();
    BuildDigitalPage();
    BuildFlowPage();
    NameFieldsOfLists(*this);
}

void frmSetupPages::BuildFrames() {
    auto* stack = new QStackedLayout(this);
    for (std::size_t i = 0; i < Frames_.size(); ++i) {
        Frames_[i] = new QWidget(this);
        Frames_[i]->setObjectName(Indexed("Frames", static_cast<int>(i)));
        stack->addWidget(Frames_[i]);
    }
    CurrentFrame_ = GeneralFrame;
    stack->setCurrentIndex(GeneralFrame);
}

void frmSetupPages::SelectFrame(int n) {
    if (n != CurrentFrame_) {
        static_cast<QStackedLayout*>(layout())->setCurrentIndex(n);
        CurrentFrame_ = n;
    }
}

void frmSetupPages::EnableFlow(const FlowStates& states) {
    Enable(ofFlume_, states.Flume);
    Enable(ofWeir_, states.Weir);
    Enable(ofTable_, states.Table);
    Enable(ofFlow_, states.Flow);
    Enable(ofMannings_, states.Mannings);
}

void frmSetupPages::EnableAlarm(int alarm, bool on) {
    const auto& widgets = alarms_.at(static_cast<std::size_t>(alarm));
    if (widgets.front()->isEnabledTo(widgets.front()->parentWidget()) != on) {
        Enable(widgets, on);
    }
}

// ----- General

void frmSetupPages::BuildGeneralPage() {
    QWidget* page = Frames_[GeneralFrame];
    auto* rows = new QVBoxLayout(page);
    rows->addLayout(BuildIdentity(page));
    rows->addWidget(BuildTiming(page));
    rows->addLayout(BuildException(page));
    auto* alarms = new QGridLayout;
    BuildAlarm(*alarms, 0);
    BuildAlarm(*alarms, 1);
    alarms->setColumnStretch(4, 1);
    rows->addLayout(alarms);
    QCheckBox* sod = fields_.Check(page, Named("chkSOD"), "Enable Sample-On-Demand",
                                   [](SetupControls& c) -> bool& { return c.chkSOD; });
    sod->setEnabled(records_.global.SODAvailable != False);
    rows->addWidget(sod);
    rows->addWidget(fields_.Check(page, Named("chkWrap"), "Wrap records at end of storage",
                                  [](SetupControls& c) -> bool& { return c.chkWrap; }));
    rows->addLayout(BuildBaudRate(page));
    rows->addStretch();
}

QLayout* frmSetupPages::BuildIdentity(QWidget* page) {
    auto* grid = new QGridLayout;
    QLineEdit* name = fields_.Text(
        page, Named("txtName"), [](SetupControls& c) -> std::string& { return c.txtName; },
        CheckName, static_cast<int>(LongestName));
    name->setMaxLength(static_cast<int>(LongestName));
    QComboBox* warmup =
        fields_.Numbers(page, Named("cmbWarmup"), LastWarmup,
                        [](SetupControls& c) -> std::string& { return c.cmbWarmup; });
    grid->addWidget(Label("Label7", "Name", name), 0, 0);
    grid->addWidget(name, 0, 1, 1, 3);
    grid->addWidget(Label("Label8", "Sensor Warmup Time", warmup), 1, 0);
    grid->addWidget(warmup, 1, 1);
    grid->addWidget(Label(page, "Label9", "seconds"), 1, 2);
    grid->setColumnStretch(4, 1);
    return grid;
}

QLayout* frmSetupPages::BuildException(QWidget* page) {
    auto* row = new QHBoxLayout;
    row->addWidget(fields_.Check(page, Named("chkException"),
                                 "Log only if channel 1 change exceeds +/-",
                                 [](SetupControls& c) -> bool& { return c.chkException; }));
    QLineEdit* level = fields_.Text(
        page, Named("txtException"),
        [](SetupControls& c) -> std::string& { return c.txtException; }, CheckException, 6);
    level->setAccessibleName(QStringLiteral("Exception level in raw units"));
    row->addWidget(level);
    row->addWidget(Label(page, "lblExceptionUnits", "raw units"));
    row->addStretch();
    return row;
}

// Hidden as long as the flag stays clear: the rate only travels with the settings.
QLayout* frmSetupPages::BuildBaudRate(QWidget* page) {
    QComboBox* baud = fields_.List(page, Named("cmbBaud"), setup_lists::BaudRates,
                                   [](SetupControls& c) -> int& { return c.cmbBaud; });
    baud->setCurrentIndex(NoSelection);
    auto* row = new QHBoxLayout;
    for (QWidget* part :
         std::initializer_list<QWidget*>{Label("lblBaudRate", "Baud Rate", baud), baud}) {
        part->setVisible(records_.showBaudRate != False);
        row->addWidget(part);
    }
    row->addStretch();
    return row;
}

QWidget* frmSetupPages::BuildTiming(QWidget* page) {
    const auto timing = [](SetupControls& c) -> int& { return c.Timing; };
    auto* frame = new QGroupBox(page);
    frame->setObjectName(Named("Frame1"));
    frame->setAccessibleName(QStringLiteral("Sample timing"));
    auto* periodic = new QHBoxLayout;
    periodic->addWidget(fields_.Option(frame, Named("optPeriodic"), "Sample periodically every",
                                       timing, TimingPeriodic));
    QLineEdit* interval = fields_.Text(
        frame, Named("txtSampleInterval"),
        [](SetupControls& c) -> std::string& { return c.txtSampleInterval; }, CheckSampleInterval,
        6);
    interval->setText(QStringLiteral("1"));
    interval->setAccessibleName(QStringLiteral("Sample interval"));
    periodic->addWidget(interval);
    QComboBox* unit = fields_.List(frame, Named("cmbSampleInterval"), setup_lists::IntervalUnits,
                                   [](SetupControls& c) -> int& { return c.cmbSampleInterval; });
    unit->setAccessibleName(QStringLiteral("Unit of the sample interval"));
    periodic->addWidget(unit);
    periodic->addStretch();
    auto* rows = new QVBoxLayout(frame);
    rows->addLayout(periodic);
    rows->addWidget(fields_.Option(frame, Named("optLogarithmic"), "Logarithmic timing", timing,
                                   TimingLogarithmic));
    rows->addWidget(fields_.Option(frame, Named("optFastMode"),
                                   "Fast sampling mode (10 times per second)", timing, TimingFast));
    TabEntersAtChosen(*frame);
    return frame;
}

void frmSetupPages::BuildAlarm(QGridLayout& grid, int alarm) {
    static constexpr std::array<const char*, 2> Uses{"Use Alarm 1 To Specify Sampling Start Time",
                                                     "Use Alarm 2 To Specify Sampling Stop Time"};
    static constexpr std::array<const char*, 2> Times{"Alarm 1 Time (hh:mm:ss)",
                                                      "Alarm 2 Time (hh:mm:ss)"};
    static constexpr std::array<const char*, 2> Halves{"Half of the day of alarm 1",
                                                       "Half of the day of alarm 2"};
    const auto i = static_cast<std::size_t>(alarm);
    QWidget* page = Frames_[GeneralFrame];
    grid.addWidget(fields_.Check(page, Indexed("chkAlarm", alarm), Uses.at(i),
                                 [i](SetupControls& c) -> bool& { return c.Alarms[i].chkAlarm; }),
                   alarm, 0);
    QLineEdit* time = fields_.Text(
        page, Indexed("txtAlarm", alarm),
        [i](SetupControls& c) -> std::string& { return c.Alarms[i].txtAlarm; }, CheckAlarm, 8);
    QLabel* label = Label("lblAlarm", Times.at(i), time);
    label->setObjectName(Indexed("lblAlarm", alarm));
    QComboBox* half = fields_.List(page, Indexed("cmbAlarm", alarm), setup_lists::HalfDays,
                                   [i](SetupControls& c) -> int& { return c.Alarms[i].cmbAlarm; });
    half->setAccessibleName(QString::fromLatin1(Halves.at(i)));
    grid.addWidget(label, alarm, 1);
    grid.addWidget(time, alarm, 2);
    grid.addWidget(half, alarm, 3);
    alarms_.at(i) = {time, label, half};
}

// ----- Digital Channels

void frmSetupPages::BuildDigitalPage() {
    QWidget* page = Frames_[DigitalFrame];
    auto* rows = new QVBoxLayout(page);
    for (int channel = 0; channel < PulseChannels; ++channel) {
        rows->addWidget(BuildPulse(page, channel, channel < records_.global.NumDigitalChannels));
    }
    rows->addStretch();
}

QGroupBox* frmSetupPages::BuildPulse(QWidget* page, int channel, bool exists) {
    const auto i = static_cast<std::size_t>(channel);
    auto* panel = new QGroupBox(QStringLiteral("Pulse Channel %1").arg(channel + 1), page);
    panel->setObjectName(Indexed("fraPulse", channel));
    auto* grid = new QGridLayout(panel);
    QCheckBox* enable =
        fields_.Check(panel, Indexed("chkPulseEnable", channel), "Enable",
                      [i](SetupControls& c) -> bool& { return c.Pulse[i].chkPulseEnable; });
    QComboBox* unit = fields_.Editable(
        panel, Indexed("cmbPulseEU", channel), {},
        [i](SetupControls& c) -> std::string& { return c.Pulse[i].cmbPulseEU; }, CheckUnit);
    FillUnitsCombo(*unit, false);
    unit->setMinimumContentsLength(static_cast<int>(LongestUnit));
    QLineEdit* value = fields_.Text(
        panel, Indexed("txtPulseUnit", channel),
        [i](SetupControls& c) -> std::string& { return c.Pulse[i].txtPulseUnit; }, CheckFloat,
        NumberCharacters);
    QComboBox* places = fields_.Numbers(
        panel, Indexed("cmbPulsePrecision", channel), LastPrecision,
        [i](SetupControls& c) -> std::string& { return c.Pulse[i].cmbPulsePrecision; });
    Tell(*enable, "Selects if pulse channel is included in display and history data");
    Tell(*unit, "Name of measurement units (9 characters max)");
    Tell(*value, "Floating point value for each pulse expressed in engineering units");
    Tell(*places, "Number of digits to display after decimal point ");
    const auto label = [channel](const char* name, const char* text, QWidget* buddy) {
        QLabel* made = Label(name, text, buddy);
        made->setObjectName(Indexed(name, channel));
        return made;
    };
    grid->addWidget(enable, 0, 0);
    grid->addWidget(label("lblPulse1", "Sensor Name or Units", unit), 1, 0);
    grid->addWidget(unit, 1, 1);
    grid->addWidget(label("lblPulse2", "Value for Single Pulse", value), 2, 0);
    grid->addWidget(value, 2, 1);
    grid->addWidget(label("lblPulse3", "Decimal Places", places), 3, 0);
    grid->addWidget(places, 3, 1);
    grid->setColumnStretch(2, 1);
    panel->setEnabled(exists);
    return panel;
}
