#include "setup/frmCalibrate.h"

#include "setup/frmSetup_fixture.h"

namespace setup_testing {
namespace {

using testing_support::Millisecond;

/// The wizard started from the first row; each step is met by the next of the acts.
class CalibrateForm : public SetupFormTest {
 protected:
    using Act = std::function<void(frmCalibrate&)>;

    void Run(std::vector<Act> acts) {
        Open();
        ClickTab(0);
        acts_ = std::move(acts);
        Next();
        Click("cmdCalibrate(0)");
        EXPECT_EQ(done_, acts_.size()) << "every step was met";
        EXPECT_EQ(opened->Busy(), False);
    }

    /// Waits for the next step to stand, then acts.
    void Next() {
        QTimer::singleShot(5, form.get(), [this] {
            auto* wizard = qobject_cast<frmCalibrate*>(QApplication::activeModalWidget());
            if (done_ == acts_.size()) {
                return;
            }
            Next();
            if (acting_ || wizard == nullptr || !wizard->isVisible()) {
                return;
            }
            acting_ = true;
            const Act act = acts_[done_++];
            act(*wizard);
            acting_ = false;
        });
    }

    static Act Press(const std::string& button, const std::string& typed = "") {
        return [button, typed](frmCalibrate& wizard) {
            auto* field = FindIn<QLineEdit>(wizard, "txtCalibrate");
            if (!typed.empty()) {
                FindIn<QTimer>(wizard, "Timer1")->stop();
                field->setText(ToQt(typed));
            }
            ClickOn(FindIn<QPushButton>(wizard, button));
        };
    }
    static std::string FieldOf(const frmCalibrate& wizard) {
        return FromQt(FindIn<QLineEdit>(wizard, "txtCalibrate")->text());
    }

    std::vector<Act> acts_;
    std::size_t done_ = 0;
    bool acting_ = false;  // an act may run events itself
};

TEST_F(CalibrateForm, FourStepsFillTheRow) {
    Run({Press("cmdNext", "90"), Press("cmdNext", "60000"), Press("cmdNext", "-5"),
         Press("cmdNext", "12")});
    EXPECT_EQ(TextOf("txtHighEU(0)"), "90");
    EXPECT_EQ(TextOf("txtHighRaw(0)"), "60000");
    EXPECT_EQ(TextOf("txtLowEU(0)"), "-5");
    EXPECT_EQ(TextOf("txtLowRaw(0)"), "12");
    EXPECT_TRUE(opened->TakeBoxes().empty());
}

TEST_F(CalibrateForm, ShowsStepAndChannel) {
    Run({[](frmCalibrate& wizard) {
             EXPECT_EQ(FromQt(wizard.windowTitle()), "Calibrate Channel 1 (Feet)");
             EXPECT_EQ(FromQt(FindIn<QLabel>(wizard, "lblCalibrate")->text()),
                       "Enter the highest value in engineering units:");
             EXPECT_FALSE(FindIn(wizard, "cmdBack")->isEnabled());
             EXPECT_EQ(FromQt(FindIn<QPushButton>(wizard, "cmdBack")->text()), "< &Back");
             EXPECT_EQ(FromQt(FindIn<QPushButton>(wizard, "cmdNext")->text()), "&Next >");
             EXPECT_EQ(FromQt(FindIn<QPushButton>(wizard, "cmdCancel")->text()), "Cancel");
             EXPECT_EQ(FieldOf(wizard), "100");
             ClickOn(FindIn(wizard, "cmdHelp"));
             EXPECT_TRUE(wizard.isVisible()) << "help has no action";
             ClickOn(FindIn(wizard, "cmdNext"));
         },
         [](frmCalibrate& wizard) {
             EXPECT_TRUE(FindIn(wizard, "cmdBack")->isEnabled());
             EXPECT_EQ(FromQt(FindIn<QLabel>(wizard, "lblCalibrate")->text()),
                       "Press Next when the value is settled:");
             ClickOn(FindIn(wizard, "cmdNext"));
         },
         [](frmCalibrate& wizard) {
             EXPECT_EQ(FromQt(FindIn<QPushButton>(wizard, "cmdNext")->text()), "Next");
             ClickOn(FindIn(wizard, "cmdNext"));
         },
         [](frmCalibrate& wizard) {
             EXPECT_EQ(FromQt(FindIn<QPushButton>(wizard, "cmdNext")->text()), "Finish");
             ClickOn(FindIn(wizard, "cmdBack"));
         },
         [](frmCalibrate& wizard) {
             EXPECT_EQ(FromQt(FindIn<QPushButton>(wizard, "cmdNext")->text()), "Next");
             wizard.close();
         }});
}

TEST_F(CalibrateForm, TheFieldFollowsTheSensor) {
    std::string raw;
    Run({Press("cmdNext"),
         [&](frmCalibrate& wizard) {
             EXPECT_EQ(FieldOf(wizard), "65535");
             EXPECT_TRUE(RunEventsUntil([&] { return FieldOf(wizard) != "65535"; }));
             opened->Logger().SetAnalogSignal(0, simulator::ConstantSignal(50));
             const std::string before = FieldOf(wizard);
             EXPECT_TRUE(RunEventsUntil([&] { return FieldOf(wizard) != before; }));
             raw = FieldOf(wizard);
             ClickOn(FindIn(wizard, "cmdNext"));
         },
         Press("cmdNext"), Press("cmdNext", "0")});
    EXPECT_EQ(raw,
              std::to_string(opened->Logger().RawCount(0, opened->console.Outside.Time.Now())));
    EXPECT_EQ(TextOf("txtHighRaw(0)"), raw);
}

TEST_F(CalibrateForm, EveryWayToEndItEarlyLeavesTheRow) {
    const Act escape = [](frmCalibrate& wizard) { PressKey(wizard, Qt::Key_Escape); };
    const Act close = [](frmCalibrate& wizard) { wizard.close(); };
    for (const Act& end : {Press("cmdCancel", "77"), escape, close}) {
        for (std::size_t step = 0; step < 4; ++step) {
            done_ = 0;
            std::vector<Act> acts(step, Press("cmdNext", "33"));
            acts.push_back(end);
            Run(acts);
            EXPECT_EQ(TextOf("txtHighEU(0)"), "100");
            EXPECT_EQ(TextOf("txtHighRaw(0)"), "65535");
            EXPECT_EQ(TextOf("txtLowEU(0)"), "0");
            EXPECT_EQ(TextOf("txtLowRaw(0)"), "0");
        }
    }
}

TEST_F(CalibrateForm, ABadNumberIsToldOnceAndKeepsTheStep) {
    Run({[this](frmCalibrate& wizard) {
             FindIn<QLineEdit>(wizard, "txtCalibrate")->setText(QStringLiteral("1000000"));
             ClickOn(FindIn(wizard, "cmdNext"));
             const auto boxes = opened->TakeBoxes();
             ASSERT_EQ(boxes.size(), 1U);
             EXPECT_EQ(boxes[0].Title, "Bad Number");
             EXPECT_TRUE(wizard.isVisible());
             EXPECT_EQ(wizard.State().Step, 1);
             EXPECT_TRUE(FindIn(wizard, "txtCalibrate")->hasFocus());
             FindIn<QLineEdit>(wizard, "txtCalibrate")->setText(QStringLiteral("5"));
             PressKey(wizard, Qt::Key_Return);
         },
         [this](frmCalibrate& wizard) {
             FindIn<QTimer>(wizard, "Timer1")->stop();
             FindIn<QLineEdit>(wizard, "txtCalibrate")->setText(QStringLiteral("70000"));
             PressKey(wizard, Qt::Key_Return);
             EXPECT_EQ(opened->TakeBoxes().size(), 1U);
             EXPECT_EQ(wizard.State().Step, 2);
             ClickOn(FindIn(wizard, "cmdBack"));
             EXPECT_TRUE(opened->TakeBoxes().empty()) << "back leaves without validating";
         },
         [](frmCalibrate& wizard) {
             EXPECT_EQ(FieldOf(wizard), "5");
             FindIn<QLineEdit>(wizard, "txtCalibrate")->setText(QStringLiteral("x"));
             ClickOn(FindIn(wizard, "cmdCancel"));
         }});
    EXPECT_TRUE(opened->TakeBoxes().empty()) << "cancel too";
}

TEST_F(CalibrateForm, WithoutALoggerTheButtonDoesNothing) {
    Open();
    ClickTab(0);
    opened->console.State.LinkRecord.Connected = False;
    Click("cmdCalibrate(0)");
    EXPECT_EQ(opened->Busy(), False);
    EXPECT_TRUE(opened->TakeBoxes().empty());
}

TEST_F(CalibrateForm, ClosingInsideAnExchangeEndsTheWizard) {
    Run({Press("cmdNext"), [this](frmCalibrate& wizard) {
             opened->Logger().Silence();
             bool closed = false;
             EXPECT_TRUE(RunEventsUntil([&] {
                 if (!closed && opened->console.State.LinkRecord.CommBusy == False) {
                     closed = true;
                     opened->console.Outside.Time.In(50 * Millisecond, [&] { wizard.close(); });
                 }
                 return !wizard.isVisible();
             }));
         }});
    EXPECT_EQ(TextOf("txtHighRaw(0)"), "65535");
}

TEST_F(CalibrateForm, TheEndOfTheProgramInsideAnExchangeUnwinds) {
    Run({Press("cmdNext"), [this](frmCalibrate& wizard) {
             opened->Logger().Silence();
             opened->console.Outside.Time.In(50 * Millisecond, [this, &wizard] {
                 opened->console.State.LinkRecord.ShuttingDown = True;
                 wizard.close();
                 form->close();
             });
             EXPECT_TRUE(RunEventsUntil([&] { return !wizard.isVisible(); }));
         }});
    EXPECT_FALSE(form->isVisible());
    EXPECT_TRUE(opened->TakeBoxes().empty());
}

TEST_F(CalibrateForm, KeysReachEveryButton) {
    Run({[](frmCalibrate& wizard) { PressKey(wizard, Qt::Key_N, Qt::AltModifier); },
         [](frmCalibrate& wizard) { PressKey(wizard, Qt::Key_B, Qt::AltModifier); },
         [](frmCalibrate& wizard) { PressKey(wizard, Qt::Key_Escape); }});
    EXPECT_EQ(done_, 3U);
}

}  // namespace
}  // namespace setup_testing
