#include "setup/frmSetupPages.h"

#include <QAccessible>
#include <algorithm>
#include <iostream>

#include "setup/frmSetup_fixture.h"
#include "support/work_time.h"

namespace setup_testing {
namespace {

using SetupForm = SetupFormTest;

std::vector<std::string> ItemsOf(const QComboBox& list) {
    std::vector<std::string> items(static_cast<std::size_t>(list.count()));
    for (int i = 0; i < list.count(); ++i) {
        items[static_cast<std::size_t>(i)] = FromQt(list.itemText(i));
    }
    return items;
}

using Items = std::vector<std::string>;

TEST_F(SetupForm, OpensOnTheGeneralPageOfTheLogger) {
    Open();
    EXPECT_EQ(FromQt(form->windowTitle()), "Tessel Setup");
    EXPECT_EQ(FromQt(Tabs()->tabText(Tabs()->currentIndex())), "General");
    EXPECT_TRUE(Find("Frames(2)")->isVisible());
    for (const char* hidden : {"Frames(0)", "Frames(1)", "Frames(3)"}) {
        EXPECT_FALSE(Find(hidden)->isVisible());
    }
    EXPECT_EQ(TextOf("txtName"), "Site 1");
    EXPECT_EQ(TextOf("txtSampleInterval"), "15");
    EXPECT_EQ(TextOf("cmbSampleInterval"), "minutes");
    EXPECT_EQ(opened->Busy(), False) << "the dialog's own commands may run";
    EXPECT_TRUE(opened->TakeBoxes().empty());
}

TEST_F(SetupForm, TheFlowTabIsForThreeChannels) {
    Open(SetupSite(3));
    ASSERT_EQ(Tabs()->count(), 4);
    EXPECT_EQ(FromQt(Tabs()->tabText(3)), "Flow Calculation ");
    EXPECT_EQ(FromQt(Tabs()->tabData(3).toString()), "Flow");
    Open(SetupSite(2));
    EXPECT_EQ(Tabs()->count(), 3);
}

TEST_F(SetupForm, TabsTurnThePages) {
    Open();
    for (const int page : {0, 3, 1, 2}) {
        ClickTab(page);
        for (int other = 0; other < 4; ++other) {
            EXPECT_EQ(Find("Frames(" + std::to_string(other) + ")")->isVisible(), other == page);
        }
    }
    Key(Qt::Key_PageUp, Qt::ControlModifier);
    EXPECT_EQ(Tabs()->currentIndex(), 1);
    Key(Qt::Key_PageDown, Qt::ControlModifier);
    Key(Qt::Key_PageDown, Qt::ControlModifier);
    Key(Qt::Key_PageDown, Qt::ControlModifier);
    EXPECT_EQ(Tabs()->currentIndex(), 3);
}

TEST_F(SetupForm, EveryChannelHasAPanelAndThoseOfTheLoggerARow) {
    Open();
    for (int i = 0; i < 8; ++i) {
        const auto* panel = Find<QGroupBox>("fraSetup(" + std::to_string(i) + ")");
        EXPECT_EQ(FromQt(panel->title()), std::to_string(i + 1));
        EXPECT_EQ(panel->isEnabled(), i < 3);
        EXPECT_EQ(panel->findChildren<QLineEdit*>().isEmpty(), i >= 3);
    }
    ClickTab(0);
    EXPECT_TRUE(Find("fraSetup(7)")->isVisible());
    EXPECT_EQ(TextOf("cmbEU(0)"), "Feet");
    EXPECT_EQ(TextOf("txtHighEU(2)"), "100");
    EXPECT_EQ(TextOf("cmdCalibrate(2)"), "Calibrate");
}

TEST_F(SetupForm, HeadsStandAboveTheirColumns) {
    Open();
    ClickTab(0);
    const std::vector<std::pair<std::string, std::string>> heads = {
        {"Label1", "cmbEU(0)"},      {"Label2", "txtHighEU(0)"},   {"Label3", "txtLowEU(0)"},
        {"Label4", "txtHighRaw(0)"}, {"Label5", "txtLowRaw(0)"},   {"Label10", "txtTop(0)"},
        {"Label11", "txtBottom(0)"}, {"Label6", "cmbPrecision(0)"}};
    for (const auto& [head, column] : heads) {
        EXPECT_EQ(Find(head)->mapTo(form.get(), QPoint()).x(),
                  Find(column)->mapTo(form.get(), QPoint()).x())
            << head;
    }
}

TEST_F(SetupForm, TooltipsTellWhatAFieldHolds) {
    Open();
    const std::vector<std::pair<std::string, std::string>> tips = {
        {"chkEnable(0)", "Selects if channel is included in display and history "},
        {"cmbEU(1)", "Name of measurement engineering units (9 characters max)"},
        {"txtHighEU(0)",
         "Floating point value of upper calibration point expressed in engineering units"},
        {"txtLowEU(0)",
         "Floating point value of lower calibration point expressed in engineering units"},
        {"txtHighRaw(0)", "Integer value of upper calibration point ( 0-65535)"},
        {"txtLowRaw(0)", "Integer value of lower calibration point (0-65535)"},
        {"txtTop(0)", "Floating point value of top of display meter"},
        {"txtBottom(0)", "Floating point value of bottom of display meter"},
        {"cmbPrecision(0)", "Number of digits to display after decimal point "},
        {"cmdCalibrate(0)", "Run dialog that assists setting calibration points"},
        {"chkPulseEnable(1)", "Selects if pulse channel is included in display and history data"},
        {"cmbPulseEU(0)", "Name of measurement units (9 characters max)"},
        {"txtPulseUnit(0)", "Floating point value for each pulse expressed in engineering units"},
        {"cmbPulsePrecision(0)", "Number of digits to display after decimal point "},
        {"cmdOK", "Write setup values to logger flash memory"}};
    for (const auto& [name, tip] : tips) {
        EXPECT_EQ(FromQt(Find(name)->toolTip()), tip) << name;
    }
}

TEST_F(SetupForm, ListsHoldTheirItems) {
    Open();
    const Items analog = {"mA",   "Volts", "mV",     "Temp F", "Temp C", "degrees", "%",   "Inches",
                          "Feet", "cm",    "Meters", "NTU",    "ppm",    "uS",      "MPH", "KPH"};
    const Items lengths = {"feet", "inches", "meters", "cm"};
    for (const char* name : {"cmbEU(0)", "cmbEU(1)", "cmbEU(2)"}) {
        EXPECT_EQ(ItemsOf(*Find<QComboBox>(name)), analog) << name;
    }
    for (const char* name : {"cmbPulseEU(0)", "cmbPulseEU(1)"}) {
        EXPECT_EQ(ItemsOf(*Find<QComboBox>(name)),
                  (Items{"Pulses", "Inches", "cm", "Cubic Ft", "Liters", "Gallons", "Kgal"}));
    }
    EXPECT_EQ(ItemsOf(*Find<QComboBox>("cmbSampleInterval")),
              (Items{"seconds", "minutes", "hours", "days"}));
    for (const char* name : {"cmbAlarm(0)", "cmbAlarm(1)"}) {
        EXPECT_EQ(ItemsOf(*Find<QComboBox>(name)), (Items{"A.M.", "P.M."}));
    }
    EXPECT_EQ(ItemsOf(*Find<QComboBox>("cmbBaud")),
              (Items{"Auto Baud Rate", "Fixed 9600", "Fixed 19200", "Fixed 28800", "Fixed 38400",
                     "Fixed 57600", "Fixed 115200"}));
    EXPECT_EQ(ItemsOf(*Find<QComboBox>("cmbFlowUnits")),
              (Items{"cfs - cubic feet per second", "gpm - gallons per minute",
                     "mgd - million's of gallons per day", "cms - cubic meters per second",
                     "lps - liters per second"}));
    EXPECT_EQ(
        ItemsOf(*Find<QComboBox>("cmbRoughness")),
        (Items{"0.010 - Plastic, other smooth surfaces", "0.012 - Smooth, unpainted steel",
               "0.013 - Painted steel, coated cast iron",
               "0.013 - Clay drainage tile, smooth asphalt", "0.013 - Finished concrete",
               "0.014 - Vitrified clay sewer tile - most common", "0.014 - Uncoated cast iron",
               "0.017 - Unfinished concrete", "0.024 - Corrugated metal storm drain"}));
    EXPECT_EQ(ItemsOf(*Find<QComboBox>("cmbOffsetUnits")), lengths);
    EXPECT_EQ(ItemsOf(*Find<QComboBox>("cmbDiameterUnits")), lengths);
    EXPECT_EQ(ItemsOf(*Find<QComboBox>("cmbSlopeUnits")), (Items{"decimal (rise/run)", "percent"}));
    EXPECT_EQ(ItemsOf(*Find<QComboBox>("cmbVelUnits")),
              (Items{"fps - feet-per-sec", "mps - meters-per-sec"}));
    Items seconds;
    for (int second = 0; second <= 60; ++second) {
        seconds.push_back(std::to_string(second));
    }
    EXPECT_EQ(ItemsOf(*Find<QComboBox>("cmbWarmup")), seconds);
    for (const char* name : {"cmbPrecision(0)", "cmbPrecision(2)", "cmbPulsePrecision(1)"}) {
        EXPECT_EQ(ItemsOf(*Find<QComboBox>(name)), (Items{"0", "1", "2", "3", "4", "5", "6"}));
    }
    EXPECT_EQ(ItemsOf(*Find<QComboBox>("cmbFlume")),
              (Items{"- None -", "Flume & channel P6", "Flume & channel P12"}));
    EXPECT_EQ(ItemsOf(*Find<QComboBox>("cmbWeir")), Items{"- None -"});
}

TEST_F(SetupForm, OnePulseChannelLeavesTheSecondPanelDisabledWithItsValues) {
    simulator::LoggerSetup site = SetupSite(3, 1);
    Open(site);
    EXPECT_EQ(FromQt(Find<QGroupBox>("fraPulse(0)")->title()), "Pulse Channel 1");
    EXPECT_EQ(FromQt(Find<QGroupBox>("fraPulse(1)")->title()), "Pulse Channel 2");
    EXPECT_TRUE(Find("fraPulse(0)")->isEnabled());
    for (const char* name :
         {"fraPulse(1)", "chkPulseEnable(1)", "cmbPulseEU(1)", "txtPulseUnit(1)",
          "cmbPulsePrecision(1)", "lblPulse1(1)", "lblPulse2(1)", "lblPulse3(1)"}) {
        EXPECT_FALSE(Find(name)->isEnabled()) << name;
    }
    EXPECT_EQ(TextOf("txtPulseUnit(1)"),
              std::to_string(static_cast<int>(opened->Global().PulseUnit[1])));
}

TEST_F(SetupForm, SampleOnDemandIsForLoggersThatOfferIt) {
    Open();
    EXPECT_FALSE(Find("chkSOD")->isEnabled());
    simulator::LoggerSetup site = SetupSite();
    site.SodAvailable = true;
    Open(site);
    EXPECT_TRUE(Find("chkSOD")->isEnabled());
}

TEST_F(SetupForm, UnitsAreFilledAnewForEitherKindOfChannel) {
    QComboBox combo;
    combo.addItem(QStringLiteral("other"));
    FillUnitsCombo(combo, true);
    EXPECT_EQ(ItemsOf(combo).front(), "mA");
    EXPECT_EQ(combo.count(), 16);
    FillUnitsCombo(combo, false);
    EXPECT_EQ(ItemsOf(combo).front(), "Pulses");
    EXPECT_EQ(combo.count(), 7);
}

TEST_F(SetupForm, TheBaudRateIsOnNoPageWhileItsFlagIsClear) {
    Open();
    EXPECT_EQ(opened->console.State.ShowBaudRate, False);
    EXPECT_TRUE(Find("cmbBaud")->isHidden());
    EXPECT_TRUE(Find("lblBaudRate")->isHidden());
    opened->console.State.ShowBaudRate = True;
    form = NewForm([] { return true; });
    form->show();
    EXPECT_TRUE(Find("cmbBaud")->isVisible());
    EXPECT_TRUE(Find("lblBaudRate")->isVisible());
    EXPECT_EQ(TextOf("lblBaudRate"), "Baud Rate");
}

TEST_F(SetupForm, TheLongestNumberOfTheLoggerIsNotCutOff) {
    Open();
    const QString longest = QStringLiteral("-0.0123456");
    for (const char* name :
         {"txtHighEU(0)", "txtLowEU(0)", "txtTop(0)", "txtBottom(0)", "txtPulseUnit(0)",
          "txtFlowTop", "txtOffset", "txtSlope", "txtDiameter", "txtVelTop"}) {
        const auto* field = Find<QLineEdit>(name);
        constexpr int Margin = 2;  // that a line keeps beside its text
        const int border = field->style()->pixelMetric(QStyle::PM_DefaultFrameWidth) + Margin;
        EXPECT_GT(field->width(), field->fontMetrics().horizontalAdvance(longest) + 2 * border)
            << name;
    }
}

TEST_F(SetupForm, CaptionsStandAsTheyAre) {
    Open();
    const std::vector<std::pair<std::string, std::string>> captions = {
        {"Label7", "Name"},
        {"Label8", "Sensor Warmup Time"},
        {"Label9", "seconds"},
        {"optPeriodic", "Sample periodically every"},
        {"optLogarithmic", "Logarithmic timing"},
        {"optFastMode", "Fast sampling mode (10 times per second)"},
        {"chkException", "Log only if channel 1 change exceeds +/-"},
        {"lblExceptionUnits", "raw units"},
        {"chkAlarm(0)", "Use Alarm 1 To Specify Sampling Start Time"},
        {"chkAlarm(1)", "Use Alarm 2 To Specify Sampling Stop Time"},
        {"lblAlarm(0)", "Alarm 1 Time (hh:mm:ss)"},
        {"lblAlarm(1)", "Alarm 2 Time (hh:mm:ss)"},
        {"chkSOD", "Enable Sample-On-Demand"},
        {"chkWrap", "Wrap records at end of storage"},
        {"lblPulse1(0)", "Sensor Name or Units"},
        {"lblPulse2(0)", "Value for Single Pulse"},
        {"lblPulse3(1)", "Decimal Places"},
        {"optNoFlow", "No Flow Calculation"},
        {"optMannings", "Manning's Equation"},
        {"optFlume", "Flume:"},
        {"optWeir", "Weir:"},
        {"optTable", "Table File:"},
        {"cmdBrowse", "..."},
        {"Label12", "Flow Display Units:"},
        {"Label13", "Flow Display Top Value:"},
        {"Label14", "Level Offset:"},
        {"lblM3", "Roughness Number:"},
        {"lblM2", "Slope:"},
        {"lblM1", "Pipe Diameter:"},
        {"lblM4", "Velocity Display Units:"},
        {"lblM5", "Velocity Display Top:"},
        {"cmdOK", "Program Settings"},
        {"cmdCancel", "Back to Main Window"}};
    for (const auto& [name, text] : captions) {
        EXPECT_EQ(TextOf(name), text) << name;
    }
    EXPECT_EQ(FromQt(Find<QGroupBox>("frmMannings")->title()), "Manning's Equation Parameters");
    const std::vector<std::pair<std::string, std::string>> items = {
        {"mnuSave", "&Save Setup File"},
        {"mnuLoad", "&Load Setup File"},
        {"mnuExit", "E&xit Back to Main Window"},
        {"mnuDownload", "&Program Settings"},
        {"mnuInitialize", "&Initialize to Default Values"},
        {"mnuLaunchHelp", "&Help"},
        {"mnuAbout", "&About"}};
    for (const auto& [name, text] : items) {
        EXPECT_EQ(FromQt(Find<QAction>(name)->text()), text) << name;
    }
}

// ----- reach and speed

bool TakesInput(const QWidget* widget) {
    return qobject_cast<const QLineEdit*>(widget) != nullptr ||
           qobject_cast<const QComboBox*>(widget) != nullptr ||
           qobject_cast<const QAbstractButton*>(widget) != nullptr;
}

TEST_F(SetupForm, EveryInputHasAName) {
    Open(SetupSite(3, 2));
    std::vector<const QWidget*> labelled;
    for (const QLabel* label : form->findChildren<QLabel*>()) {
        labelled.push_back(label->buddy());
    }
    for (const QWidget* widget : form->findChildren<QWidget*>()) {
        const bool inside = qobject_cast<const QComboBox*>(widget->parentWidget()) != nullptr;
        if (!TakesInput(widget) || inside || widget->objectName().isEmpty() ||
            widget->objectName().startsWith(QStringLiteral("qt_")) ||
            widget->objectName().startsWith(QStringLiteral("Scroll"))) {
            continue;
        }
        // What stands in a field is its value, not its name.
        const bool button = qobject_cast<const QAbstractButton*>(widget) != nullptr;
        const bool named = !widget->accessibleName().isEmpty() ||
                           std::find(labelled.begin(), labelled.end(), widget) != labelled.end() ||
                           (button && !widget->property("text").toString().isEmpty());
        EXPECT_TRUE(named) << FromQt(widget->objectName());
    }
}

TEST_F(SetupForm, TheFieldOfAnEditableListIsCalledLikeTheList) {
    Open(SetupSite(3, 2));
    const auto called = [this](const char* list) {
        const QLineEdit* field = dynamic_cast<const QComboBox&>(*Find(list)).lineEdit();
        return FromQt(QAccessible::queryAccessibleInterface(const_cast<QLineEdit*>(field))
                          ->text(QAccessible::Name));
    };
    EXPECT_EQ(called("cmbEU(0)"), "Channel 1 Units");
    EXPECT_EQ(called("cmbPulseEU(1)"), "Sensor Name or Units");
    EXPECT_EQ(called("cmbRoughness"), "Roughness Number:");
    int fields = 0;
    for (const QComboBox* list : form->findChildren<QComboBox*>()) {
        if (const QLineEdit* field = list->lineEdit()) {
            EXPECT_FALSE(field->accessibleName().isEmpty()) << FromQt(list->objectName());
            ++fields;
        }
    }
    EXPECT_EQ(fields, 3 * 2 + 2 * 2 + 2) << "units and places of the channels; warm-up, roughness";
}

TEST_F(SetupForm, TabGoesThroughEveryPageInOrder) {
    simulator::LoggerSetup site = SetupSite(3, 2);
    site.SodAvailable = true;
    Open(site);
    const auto walk = [this](int page) {
        ClickTab(page);
        Tabs()->setFocus();
        Items names;
        do {
            Key(Qt::Key_Tab);
            names.push_back(FromQt(form->focusWidget()->objectName()));
        } while (names.back() != "TabStrip" && names.size() < 60);
        return names;
    };
    Items analog;
    for (const char* i : {"(0)", "(1)", "(2)"}) {
        for (const char* name :
             {"chkEnable", "cmbEU", "txtHighEU", "txtLowEU", "txtHighRaw", "txtLowRaw", "txtTop",
              "txtBottom", "cmbPrecision", "cmdCalibrate"}) {
            analog.push_back(std::string(name) + i);
        }
    }
    analog.insert(analog.end(), {"cmdOK", "cmdCancel", "TabStrip"});
    EXPECT_EQ(walk(0), analog);
    EXPECT_EQ(walk(1),
              (Items{"chkPulseEnable(0)", "cmbPulseEU(0)", "txtPulseUnit(0)",
                     "cmbPulsePrecision(0)", "chkPulseEnable(1)", "cmbPulseEU(1)",
                     "txtPulseUnit(1)", "cmbPulsePrecision(1)", "cmdOK", "cmdCancel", "TabStrip"}));
    EXPECT_EQ(walk(2),
              (Items{"txtName", "cmbWarmup", "optPeriodic", "txtSampleInterval",
                     "cmbSampleInterval", "chkException", "txtException", "chkAlarm(0)",
                     "chkAlarm(1)", "chkSOD", "chkWrap", "cmdOK", "cmdCancel", "TabStrip"}));
    ClickTab(3);
    Click("optMannings");
    EXPECT_EQ(walk(3),
              (Items{"optMannings", "cmbFlowUnits", "txtFlowTop", "txtOffset", "cmbOffsetUnits",
                     "cmbRoughness", "txtSlope", "cmbSlopeUnits", "txtDiameter", "cmbDiameterUnits",
                     "cmbVelUnits", "txtVelTop", "cmdOK", "cmdCancel", "TabStrip"}));
}

TEST_F(SetupForm, NothingIsCutOffInALargerFont) {
    const QFont before = QApplication::font();
    QFont large = before;
    large.setPointSizeF(before.pointSizeF() * 1.6);
    QApplication::setFont(large);
    Open(SetupSite(3, 2));
    for (int page = 0; page < 4; ++page) {
        ClickTab(page);
        QCoreApplication::processEvents();
        for (const QWidget* child :
             Find("Frames(" + std::to_string(page) + ")")->findChildren<QWidget*>()) {
            const bool text = qobject_cast<const QLabel*>(child) != nullptr ||
                              qobject_cast<const QAbstractButton*>(child) != nullptr;
            if (text && child->isVisible()) {
                EXPECT_GE(child->width(), child->minimumSizeHint().width())
                    << FromQt(child->objectName());
                EXPECT_GE(child->height(), child->minimumSizeHint().height())
                    << FromQt(child->objectName());
            }
        }
    }
    QApplication::setFont(before);
}

TEST_F(SetupForm, OpensTurnsAndValidatesAtOnce) {
    constexpr double Limit = 50;
#if defined(__SANITIZE_ADDRESS__)
    constexpr int Slower = 6;
#else
    constexpr int Slower = 1;
#endif
    Open(SetupSite(8, 2));
    form.reset();
    opened->Busy() = True;
    testing_support::WorkTime watch;
    form = NewForm([] { return true; });
    form->Load();
    form->show();
    QCoreApplication::processEvents();
    const double opening = watch.Restart();
    ClickTab(0);
    QCoreApplication::processEvents();
    const double turning = watch.Restart();
    Type("txtHighEU(0)", "0.0140001");
    watch.Restart();
    Key(Qt::Key_Tab);
    const double validating = watch.Restart();
    std::cout << "opening " << opening << " ms, turning a page " << turning
              << " ms, leaving a field " << validating << " ms\n";
    EXPECT_LT(opening, Limit * Slower);
    EXPECT_LT(turning, Limit * Slower);
    EXPECT_LT(validating, Limit * Slower);
}

}  // namespace
}  // namespace setup_testing
