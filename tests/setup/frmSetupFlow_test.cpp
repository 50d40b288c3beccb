#include "common/path_text.h"
#include "setup/frmSetup.h"
#include "setup/frmSetup_fixture.h"

// The page of flow: which controls a method enables, what it warns of, its fields.

namespace setup_testing {
namespace {

using testing_support::FreshFolder;
using testing_support::WriteFile;

using SetupFlowForm = SetupFormTest;

TEST_F(SetupFlowForm, EachMethodEnablesItsControls) {
    Open();
    ClickTab(3);
    EXPECT_TRUE(Find<QRadioButton>("optNoFlow")->isChecked());
    const auto expectEnabled = [this](bool flow, bool flume, bool weir, bool table, bool pipe) {
        for (const char* name : {"cmbFlowUnits", "txtFlowTop", "txtOffset", "cmbOffsetUnits"}) {
            EXPECT_EQ(Find(name)->isEnabled(), flow) << name;
        }
        EXPECT_EQ(Find("cmbFlume")->isEnabled(), flume);
        EXPECT_EQ(Find("cmbWeir")->isEnabled(), weir);
        EXPECT_EQ(Find("txtTableFile")->isEnabled(), table);
        EXPECT_EQ(Find("cmdBrowse")->isEnabled(), table);
        for (const char* name : {"txtDiameter", "cmbDiameterUnits", "txtSlope", "cmbSlopeUnits",
                                 "cmbRoughness", "cmbVelUnits", "txtVelTop", "frmMannings", "lblM1",
                                 "lblM2", "lblM3", "lblM4", "lblM5"}) {
            EXPECT_EQ(Find(name)->isEnabled(), pipe) << name;
        }
    };
    expectEnabled(false, false, false, false, false);
    Click("optMannings");
    expectEnabled(true, false, false, false, true);
    Click("optFlume");
    expectEnabled(true, true, false, false, false);
    Click("optWeir");
    expectEnabled(true, false, true, false, false);
    Click("optTable");
    expectEnabled(true, false, false, true, false);
    Click("optNoFlow");
    expectEnabled(false, false, false, false, false);
    EXPECT_TRUE(opened->TakeBoxes().empty()) << "the unit is Feet";
}

TEST_F(SetupFlowForm, AMethodWarnsOfAUnitOnEachChange) {
    simulator::LoggerSetup site = SetupSite();
    site.Settings.Analog[0].Units = "gal";
    Open(site);
    ClickTab(3);
    Click("optFlume");
    EXPECT_EQ(opened->TakeBoxes().size(), 1U);
    Click("optFlume");
    EXPECT_TRUE(opened->TakeBoxes().empty()) << "selected already";
    Click("optWeir");
    EXPECT_EQ(opened->TakeBoxes().size(), 1U);
    Click("optNoFlow");
    EXPECT_TRUE(opened->TakeBoxes().empty());
}

TEST_F(SetupFlowForm, LeavingTheUnitOfChannel1WarnsOnce) {
    simulator::LoggerSetup site = SetupSite();
    site.Settings.Flow.Mode = simulator::FlowMode::Manning;
    Open(site);
    ClickTab(0);
    Type("cmbEU(0)", "gal ");
    Key(Qt::Key_Tab);
    const auto boxes = opened->TakeBoxes();
    ASSERT_EQ(boxes.size(), 1U);
    EXPECT_EQ(boxes[0].Title, "Bad Unit");
    EXPECT_TRUE(HasFocus("txtHighEU(0)"));
    EXPECT_EQ(TextOf("cmbEU(0)"), "gal");
}

TEST_F(SetupFlowForm, ARoughnessItemReducesToItsNumber) {
    simulator::LoggerSetup site = SetupSite();
    site.Settings.Flow.Mode = simulator::FlowMode::Manning;
    Open(site);
    ClickTab(3);
    EXPECT_EQ(TextOf("cmbRoughness"), "0.014");
    auto* list = Find<QComboBox>("cmbRoughness");
    list->setFocus();
    list->setCurrentIndex(7);
    EXPECT_EQ(TextOf("cmbRoughness"), "0.017 - Unfinished concrete");
    Key(Qt::Key_Tab);
    EXPECT_EQ(TextOf("cmbRoughness"), "0.017");
    Type("cmbRoughness", "-1");
    Key(Qt::Key_Tab);
    const auto boxes = opened->TakeBoxes();
    ASSERT_EQ(boxes.size(), 1U);
    EXPECT_EQ(boxes[0].Title, "Illegal Value");
    EXPECT_TRUE(HasFocus("cmbRoughness"));
    EXPECT_EQ(TextOf("cmbRoughness"), "-1");
}

TEST_F(SetupFlowForm, BrowsingFillsTheTableField) {
    simulator::LoggerSetup site = SetupSite();
    site.Settings.Flow.Mode = simulator::FlowMode::Table;
    Open(site);
    ClickTab(3);
    const std::string path = JoinPath(FreshFolder("table"), "t.tbl");
    WriteFile(path, "1 2\n3 4\n");
    opened->console.Outside.Dialogs.Picks = {path};
    Click("cmdBrowse");
    EXPECT_EQ(TextOf("txtTableFile"), path);
    EXPECT_EQ(opened->TakeBoxes().back().Text, "The selected table file has 2 entries.");
    EXPECT_EQ(Find<QLineEdit>("txtTableFile")->maxLength(), 128);
    EXPECT_EQ(Find<QLineEdit>("txtName")->maxLength(), 32);
}
}  // namespace
}  // namespace setup_testing
