#include "setup/frmSetup.h"

#include <QMenu>
#include <QMenuBar>

#include "common/path_text.h"
#include "setup/frmSetup_fixture.h"

namespace setup_testing {
namespace {

using testing_support::FreshFolder;
using testing_support::Millisecond;
using testing_support::WriteFile;

using SetupForm = SetupFormTest;

TEST_F(SetupForm, TheTimerFollowsTheAlarms) {
    Open();
    EXPECT_FALSE(Find("txtAlarm(1)")->isEnabled());
    Click("chkAlarm(1)");
    EXPECT_TRUE(TimerPasses([this] { return Find("txtAlarm(1)")->isEnabled(); }));
    EXPECT_TRUE(Find("cmbAlarm(1)")->isEnabled());
    EXPECT_TRUE(Find("lblAlarm(1)")->isEnabled());
    EXPECT_FALSE(Find("txtAlarm(0)")->isEnabled());
    Click("chkAlarm(1)");
    EXPECT_TRUE(TimerPasses([this] { return !Find("txtAlarm(1)")->isEnabled(); }));
    EXPECT_TRUE(Find("txtException")->isEnabled()) << "whatever its check box says";
}

TEST_F(SetupForm, TheTimerNamesTheRecentFiles) {
    Open();
    EXPECT_EQ(FromQt(Find<QAction>("mnuHist(0)")->text()), "&1 ");
    opened->console.State.SettingsRecord.LastFile = {"/home/x/a&b.set", "/c.set", "", ""};
    EXPECT_TRUE(TimerPasses(
        [this] { return FromQt(Find<QAction>("mnuHist(0)")->text()) == "&1 a&&b.set"; }));
    EXPECT_EQ(FromQt(Find<QAction>("mnuHist(1)")->text()), "&2 /c.set");
    EXPECT_EQ(FromQt(Find<QAction>("mnuHist(3)")->text()), "&4 ");
}

TEST_F(SetupForm, RecentFileCaptionsChangeAtMostAQuarterOfASecondAfterAFileWasChosen) {
    Open();
    const std::string path = JoinPath(FreshFolder("quarter"), "chosen.set");
    WriteFile(path, "LoggerName=Chosen\n");
    auto* timer = Find<QTimer>("Timer1");
    ASSERT_EQ(timer->interval(), QuarterSecond(FastTick));
    const auto caption = [this] { return FromQt(Find<QAction>("mnuHist(0)")->text()); };
    std::string atFirstTick;
    QObject::connect(timer, &QTimer::timeout, timer,
                     [&] { atFirstTick = atFirstTick.empty() ? caption() : atFirstTick; });
    opened->console.Outside.Dialogs.Picks = {path};
    Trigger("mnuLoad");
    EXPECT_EQ(caption(), "&1 ");
    EXPECT_TRUE(TimerPasses([&] { return !atFirstTick.empty(); }));
    EXPECT_EQ(atFirstTick, "&1 chosen.set");
    QObject::disconnect(timer, nullptr, timer, nullptr);
}

TEST_F(SetupForm, TheTimerKeepsAQuarterOfASecond) {
    Open();
    EXPECT_EQ(Find<QTimer>("Timer1")->interval(), FastTick * 5 / 2);
    EXPECT_EQ(QuarterSecond(100), 250);
}

// ----- leaving fields

TEST_F(SetupForm, AnAcceptedFieldShowsWhatTheLoggerWillHold) {
    Open();
    ClickTab(0);
    Type("txtHighEU(0)", "12345678");
    Key(Qt::Key_Tab);
    EXPECT_EQ(TextOf("txtHighEU(0)"), "999999");
    EXPECT_TRUE(HasFocus("txtLowEU(0)"));
    Type("cmbEU(1)", "  kilometers ");
    Key(Qt::Key_Tab);
    EXPECT_EQ(TextOf("cmbEU(1)"), "kilometer");
    Type("cmbPrecision(1)", "4");
    Key(Qt::Key_Tab);
    EXPECT_EQ(Find<QComboBox>("cmbPrecision(1)")->currentIndex(), 4);
}

TEST_F(SetupForm, TypedUnitsAreNotCompleted) {
    Open();
    ClickTab(0);
    Type("cmbEU(1)", "vol");
    Key(Qt::Key_Tab);
    EXPECT_EQ(TextOf("cmbEU(1)"), "vol");
}

class WaysOut : public SetupFormTest, public ::testing::WithParamInterface<int> {
 protected:
    void Go(int way) {
        switch (way) {
            case 0:
                return Click("txtLowRaw(0)");
            case 1:
                return Key(Qt::Key_Tab);
            case 2:
                return Key(Qt::Key_Backtab);
            case 3:
                return Key(Qt::Key_F, Qt::AltModifier);
            case 4:
                return Key(Qt::Key_Return);
            case 5:
                return ClickTab(1);
            case 6:
                return QTest::mouseClick(form->windowHandle(), Qt::LeftButton, {},
                                         QPoint(15, form->findChild<QMenuBar*>()->height() / 2));
            case 7:
                return Click("cmdOK");
            case 8:
                return Key(Qt::Key_S, Qt::ControlModifier);
            case 9:
                return Key(Qt::Key_PageDown, Qt::ControlModifier);
            case 10:
                return Click("chkEnable(1)");
            default:
                return Click("cmdCalibrate(0)");
        }
    }
};

TEST_P(WaysOut, DoNotLeaveARefusedField) {
    Open();
    ClickTab(0);
    Type("txtHighRaw(0)", "abc");
    const QPointer<QWidget> popup = QApplication::activePopupWidget();
    Go(GetParam());
    QCoreApplication::processEvents();
    EXPECT_TRUE(HasFocus("txtHighRaw(0)"));
    EXPECT_EQ(TextOf("txtHighRaw(0)"), "abc");
    EXPECT_EQ(Tabs()->currentIndex(), 0);
    EXPECT_EQ(QApplication::activePopupWidget(), popup);
    EXPECT_TRUE(Find<QCheckBox>("chkEnable(1)")->isChecked());
    EXPECT_TRUE(opened->TakeBoxes().empty()) << "silently";
    EXPECT_TRUE(opened->console.Outside.Dialogs.Queries.empty());
}

INSTANTIATE_TEST_SUITE_P(OfEveryKind, WaysOut, ::testing::Range(0, 12));

TEST_F(SetupForm, AMessageOfARefusalShowsOnce) {
    Open();
    Type("txtSampleInterval", "0");
    int way = 0;
    for (const auto& leave : std::vector<std::function<void()>>{
             [this] { Click("txtException"); }, [this] { Key(Qt::Key_Tab); },
             [this] { ClickTab(0); }, [this] { Click("cmdOK"); },
             [this] { Click("optFastMode"); }}) {
        leave();
        QCoreApplication::processEvents();
        const auto boxes = opened->TakeBoxes();
        ASSERT_EQ(boxes.size(), 1U) << "way " << way;
        ++way;
        EXPECT_EQ(boxes[0].Text, "Error: sample interval must be between 1 and 65535.");
        EXPECT_EQ(boxes[0].Title, "Format Error");
        EXPECT_TRUE(HasFocus("txtSampleInterval"));
        EXPECT_EQ(TextOf("txtSampleInterval"), "0");
    }
}

TEST_F(SetupForm, AnExceptionLevelOf65536KeepsTheFocus) {
    Open();
    Type("txtException", "65536");
    Key(Qt::Key_Tab);
    const auto boxes = opened->TakeBoxes();
    ASSERT_EQ(boxes.size(), 1U);
    EXPECT_EQ(boxes[0].Text, "Error: exception level must be between 0 and 65535.");
    EXPECT_EQ(boxes[0].Title, "Format Error");
    EXPECT_EQ(boxes[0].Icon, BoxIcon::Stop);
    EXPECT_EQ(boxes[0].Buttons, BoxButtons::Ok);
    EXPECT_TRUE(HasFocus("txtException"));
    EXPECT_EQ(TextOf("txtException"), "65536");
}

TEST_F(SetupForm, CancelLeavesWithoutValidating) {
    Open();
    Type("txtSampleInterval", "0");
    opened->Answer(BoxAnswer::Cancel);
    Click("cmdCancel");
    const auto boxes = opened->TakeBoxes();
    ASSERT_EQ(boxes.size(), 1U);
    EXPECT_EQ(boxes[0].Title, "Data Has Changed");
    EXPECT_TRUE(form->isVisible());
}

TEST_F(SetupForm, EnterPressesTheButtonThatHasTheFocus) {
    Open();
    Find("cmdCancel")->setFocus();
    Key(Qt::Key_Return);
    EXPECT_FALSE(form->isVisible());
    Open();
    Find("txtName")->setFocus();
    Key(Qt::Key_Return);
    EXPECT_TRUE(form->isVisible());
    EXPECT_TRUE(opened->TakeBoxes().empty()) << "nothing is programmed by Enter in a field";
}

// ----- closing

class ClosingForm : public SetupFormTest, public ::testing::WithParamInterface<int> {
 protected:
    void Close() {
        switch (GetParam()) {
            case 0:
                return Click("cmdCancel");
            case 1:
                return Trigger("mnuExit");
            case 2:
                return Key(Qt::Key_Escape);
            default:
                form->close();
        }
    }
};

TEST_P(ClosingForm, AsksNothingWithoutAChange) {
    Open();
    Close();
    EXPECT_FALSE(form->isVisible());
    EXPECT_TRUE(opened->TakeBoxes().empty());
    EXPECT_EQ(opened->Busy(), True);
}

TEST_P(ClosingForm, AsksBothQuestionsAfterAChangeOnce) {
    Open();
    Type("txtName", "Other");
    opened->Answer(BoxAnswer::No, BoxAnswer::Cancel);
    Close();
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(opened->TakeBoxes().size(), 2U);
    EXPECT_EQ(TextOf("txtName"), "Other");
    opened->Answer(BoxAnswer::No, BoxAnswer::No);
    Close();
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(opened->TakeBoxes().size(), 2U);
}

TEST_P(ClosingForm, IsRefusedDuringAnOperation) {
    Open();
    opened->Busy() = True;
    Close();
    EXPECT_TRUE(form->isVisible());
    EXPECT_TRUE(opened->TakeBoxes().empty());
}

TEST_P(ClosingForm, DoesNotTakeARefusedValueToAFile) {
    Open();
    const std::string path = JoinPath(FreshFolder("closing"), "refused.set");
    opened->console.Outside.Dialogs.Picks = {path};
    Type("txtSampleInterval", "0");
    opened->Answer(BoxAnswer::Yes);
    Close();
    EXPECT_TRUE(form->isVisible());
    EXPECT_TRUE(HasFocus("txtSampleInterval"));
    EXPECT_EQ(TextOf("txtSampleInterval"), "0");
    const auto boxes = opened->TakeBoxes();
    ASSERT_EQ(boxes.size(), 2U);
    EXPECT_EQ(boxes[0].Title, "Data Has Changed");
    EXPECT_EQ(boxes[1].Title, "Format Error");
    EXPECT_TRUE(opened->console.Outside.Dialogs.Queries.empty());
    EXPECT_FALSE(FileExists(path));
}

TEST_P(ClosingForm, DoesNotTakeARefusedValueToTheLogger) {
    Open();
    const Bytes before = opened->LoggerMemory();
    ClickTab(0);
    Type("txtHighRaw(0)", "abc");
    opened->Answer(BoxAnswer::No, BoxAnswer::Yes);
    Close();
    EXPECT_TRUE(form->isVisible());
    EXPECT_TRUE(HasFocus("txtHighRaw(0)"));
    EXPECT_EQ(opened->TakeBoxes().size(), 2U) << "refused silently";
    EXPECT_EQ(opened->LoggerMemory(), before);
    Type("txtHighRaw(0)", "60000");
    opened->Answer(BoxAnswer::No, BoxAnswer::Yes);
    Close();
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(opened->Global().RawScaleUpper[0], 60000);
    EXPECT_EQ(opened->LoggerMemory(), opened->Image());
}

TEST_P(ClosingForm, TakesAFieldAsItShowsAfterwards) {
    Open();
    Click("chkAlarm(0)");
    ASSERT_TRUE(TimerPasses([this] { return Find("txtAlarm(0)")->isEnabled(); }));
    Type("txtAlarm(0)", "99");
    opened->Answer(BoxAnswer::No, BoxAnswer::Yes);
    Close();
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(opened->TakeBoxes().back().Text, "Alarm hour must be between 1 and 12");
    Type("txtAlarm(0)", "7");
    opened->Answer(BoxAnswer::No, BoxAnswer::Yes);
    Close();
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(TextOf("txtAlarm(0)"), "7:00:00");
    EXPECT_EQ(opened->LoggerMemory(), opened->Image());
}

INSTANTIATE_TEST_SUITE_P(InEveryWay, ClosingForm, ::testing::Range(0, 4));

TEST_F(SetupForm, ARemarkOnAnAcceptedUnitIsNotRepeatedByTheQuestions) {
    simulator::LoggerSetup site = SetupSite();
    site.Settings.Flow.Mode = simulator::FlowMode::Manning;
    Open(site);
    ClickTab(0);
    Type("cmbEU(0)", " gal");
    opened->console.Outside.Dialogs.Picks = {JoinPath(FreshFolder("remark"), "a.set")};
    opened->Answer(BoxAnswer::Yes, BoxAnswer::Yes);
    Key(Qt::Key_Escape);
    EXPECT_FALSE(form->isVisible());
    const auto boxes = opened->TakeBoxes();
    ASSERT_EQ(boxes.size(), 2U);
    EXPECT_EQ(boxes[1].Title, "Data Has Changed");
    EXPECT_EQ(opened->Global().EngUnits[0], "gal") << "trimmed all the same";
}

TEST_F(SetupForm, TheModalDialogReturnsWhenItIsClosed) {
    Open();
    form->hide();
    opened->Read();
    opened->Busy() = True;
    ModalAnswer<frmSetup> answer([](frmSetup& shown) { shown.close(); });
    form->ShowModally();
    EXPECT_TRUE(answer.Given());
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(opened->Busy(), True);
}

TEST_F(SetupForm, TheEndOfTheProgramEndsTheModalDialogWithoutAQuestion) {
    Open();
    form->hide();
    opened->Busy() = True;
    ModalAnswer<frmSetup> answer([this](frmSetup& shown) {
        FindIn<QLineEdit>(shown, "txtName")->setText(QStringLiteral("Other"));
        opened->console.State.LinkRecord.ShuttingDown = True;
    });
    form->ShowModally();
    EXPECT_TRUE(answer.Given());
    EXPECT_TRUE(opened->TakeBoxes().empty());
}

// ----- programming

TEST_F(SetupForm, ProgramsWhatTheControlsHold) {
    Open();
    Type("txtName", "Programmed");
    opened->Answer(BoxAnswer::Yes);
    Click("cmdOK");
    EXPECT_EQ(opened->LoggerMemory(), opened->Image());
    EXPECT_EQ(opened->Global().LoggerName, "Programmed");
    EXPECT_TRUE(HasFocus("cmdCancel"));
    EXPECT_EQ(opened->TakeBoxes().size(), 1U);
    EXPECT_NE(form->cursor().shape(), Qt::WaitCursor);
}

TEST_F(SetupForm, HoldsItsInputWhileItPrograms) {
    Open();
    Find("txtName")->setFocus();
    bool looked = false;
    opened->console.Outside.Time.In(100 * Millisecond, [&] {
        looked = true;
        EXPECT_EQ(form->cursor().shape(), Qt::WaitCursor);
        for (const char* name : {"cmdCancel", "cmdOK", "txtName", "TabStrip"}) {
            EXPECT_FALSE(Find(name)->isEnabled()) << name;
        }
        form->close();
        Trigger("mnuExit");
        EXPECT_TRUE(form->isVisible());
        Key(Qt::Key_PageUp, Qt::ControlModifier);
        Key(Qt::Key_PageDown, Qt::ControlModifier);
        Key(Qt::Key_PageDown, Qt::ControlModifier);
        EXPECT_EQ(Tabs()->currentIndex(), 2) << "no page turns";
    });
    opened->Logger().Silence();
    opened->Answer(BoxAnswer::Yes);
    Trigger("mnuDownload");
    EXPECT_TRUE(looked);
    EXPECT_EQ(opened->TakeBoxes().back().Text, "Error: programming not completed successfully.");
    for (const char* name : {"cmdCancel", "cmdOK", "txtName", "TabStrip"}) {
        EXPECT_TRUE(Find(name)->isEnabled()) << name;
    }
    EXPECT_TRUE(HasFocus("txtName"));
}

TEST_F(SetupForm, WithoutALoggerTheButtonDoesNothing) {
    Open();
    opened->console.State.LinkRecord.Connected = False;
    Click("cmdOK");
    EXPECT_TRUE(opened->TakeBoxes().empty());
}

TEST_F(SetupForm, TheEndOfTheProgramInsideAProgrammingUnwinds) {
    Open();
    opened->Logger().Silence();
    opened->console.Outside.Time.In(300 * Millisecond, [&] {
        opened->console.State.LinkRecord.ShuttingDown = True;
        form->close();
    });
    opened->Answer(BoxAnswer::Yes);
    Click("cmdOK");
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(opened->TakeBoxes().size(), 1U);
    form.reset();
}

// ----- menus

TEST_F(SetupForm, FilesAreSavedAndLoadedFromTheMenu) {
    Open();
    const std::string path = JoinPath(FreshFolder("form"), "a.set");
    Type("txtName", "Saved");
    opened->console.Outside.Dialogs.Picks = {path, path};
    Key(Qt::Key_S, Qt::ControlModifier);
    EXPECT_TRUE(FileExists(path));
    Type("txtName", "Other");
    opened->Answer(BoxAnswer::No);
    Trigger("mnuLoad");
    EXPECT_EQ(TextOf("txtName"), "Saved");
    EXPECT_TRUE(
        TimerPasses([this] { return FromQt(Find<QAction>("mnuHist(0)")->text()) == "&1 a.set"; }));
    opened->TakeBoxes();
    opened->console.Outside.Dialogs.Picks = {path};
    Trigger("mnuHist(0)");
    EXPECT_EQ(opened->console.Outside.Dialogs.Queries.back().InitialName, path);
}

TEST_F(SetupForm, DefaultsComeFromTheMenu) {
    Open();
    Trigger("mnuInitialize");
    EXPECT_EQ(TextOf("txtName"), "Tessel");
    EXPECT_EQ(TextOf("cmbEU(2)"), "Volts");
}

TEST_F(SetupForm, HelpOpensOnlyWhereThereIsAFile) {
    Open();
    Trigger("mnuLaunchHelp");
    EXPECT_TRUE(opened->console.Outside.Help.Opened.empty());
    const std::string folder = FreshFolder("help");
    WriteFile(JoinPath(folder, "Orvia.chm"), "x");
    opened->console.State.Outside.AppPath = folder;
    Trigger("mnuLaunchHelp");
    EXPECT_EQ(opened->console.Outside.Help.Opened.size(), 1U);
}

TEST_F(SetupForm, AboutShowsTheProgram) {
    Open();
    ModalAnswer<QDialog> answer([](QDialog& about) {
        EXPECT_EQ(FromQt(about.windowTitle()), "About Harrowmere");
        about.reject();
    });
    Trigger("mnuAbout");
    EXPECT_TRUE(answer.Given());
}

TEST_F(SetupForm, RecentFilesStandBetweenTwoSeparators) {
    Open();
    std::vector<std::string> names;
    for (const QAction* item : Find<QMenu>("File")->actions()) {
        names.push_back(FromQt(item->objectName()));
    }
    EXPECT_EQ(names,
              (std::vector<std::string>{"mnuSave", "mnuLoad", "mnuSep1", "mnuHist(0)", "mnuHist(1)",
                                        "mnuHist(2)", "mnuHist(3)", "mnuSep2", "mnuExit"}));
}

}  // namespace
}  // namespace setup_testing
