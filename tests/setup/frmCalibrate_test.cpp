#include "setup/frmCalibrate.h"

#include <optional>

#include "app/frmMain_fixture.h"
#include "setup/frmSetup_fixture.h"

namespace setup_testing {
namespace {

/// The wizard started from the first row; each step is met by the next of the acts.
class CalibrateForm : public SetupFormTest {
 protected:
    using Act = std::function<void(frmCalibrate&)>;

    void Run(std::vector<Act> acts) {
        Open();
        ClickTab(0);
        acts_ = std::move(acts);
        running_ = true;
        Next();
        Click("cmdCalibrate(0)");
        running_ = false;
        EXPECT_EQ(done_, acts_.size()) << "every step was met";
        EXPECT_EQ(opened->Busy(), False);
    }

    /// Waits for the next step to stand, then acts.
    void Next() {
        QTimer::singleShot(5, form.get(), [this] {
            auto* wizard = qobject_cast<frmCalibrate*>(QApplication::activeModalWidget());
            if (!running_) {
                return;
            }
            Next();
            // Keys and focus are for a window that has come to the front.
            if (acting_ || wizard == nullptr || !wizard->isActiveWindow()) {
                return;
            }
            if (done_ == acts_.size()) {
                ADD_FAILURE() << "the wizard still stands behind the last act";
                wizard->close();
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
    bool running_ = false;
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

TEST_F(CalibrateForm, EnterPressesTheButtonThatHasTheFocus) {
    const auto enterOn = [](frmCalibrate& wizard, const char* name) {
        FindIn(wizard, name)->setFocus();
        PressKey(wizard, Qt::Key_Return);
    };
    Run({Press("cmdNext"),
         [&](frmCalibrate& wizard) {
             enterOn(wizard, "cmdHelp");
             EXPECT_EQ(wizard.State().Result, "");
             enterOn(wizard, "cmdBack");
             EXPECT_EQ(wizard.State().Result, "Back");
         },
         [&](frmCalibrate& wizard) {
             EXPECT_EQ(wizard.State().Step, 1);
             EXPECT_TRUE(FindIn(wizard, "txtCalibrate")->hasFocus());
             PressKey(wizard, Qt::Key_Return);
         },
         [&](frmCalibrate& wizard) {
             EXPECT_EQ(wizard.State().Step, 2) << "in the field it is Next again";
             enterOn(wizard, "cmdCancel");
             EXPECT_EQ(wizard.State().Result, "Cancel");
         }});
    EXPECT_EQ(TextOf("txtHighEU(0)"), "100");
}

TEST_F(CalibrateForm, TabToBackOrCancelValidatesNothingButIsNotPassed) {
    Run({Press("cmdNext"), [this](frmCalibrate& wizard) {
             FindIn<QTimer>(wizard, "Timer1")->stop();
             FindIn<QLineEdit>(wizard, "txtCalibrate")->setText(QStringLiteral("x"));
             PressKey(wizard, Qt::Key_Tab);
             EXPECT_TRUE(FindIn(wizard, "cmdBack")->hasFocus());
             EXPECT_TRUE(opened->TakeBoxes().empty());
             PressKey(wizard, Qt::Key_Tab);
             EXPECT_TRUE(FindIn(wizard, "txtCalibrate")->hasFocus());
             EXPECT_EQ(opened->TakeBoxes().size(), 1U);
             ClickOn(FindIn(wizard, "cmdCancel"));
         }});
}

TEST_F(CalibrateForm, WithoutALoggerTheButtonDoesNothing) {
    Open();
    ClickTab(0);
    opened->console.State.LinkRecord.Connected = False;
    Click("cmdCalibrate(0)");
    EXPECT_EQ(opened->Busy(), False);
    EXPECT_TRUE(opened->TakeBoxes().empty());
}

TEST_F(CalibrateForm, KeysReachEveryButton) {
    const auto stands = [](frmCalibrate& wizard, int step) {
        EXPECT_EQ(wizard.State().Step, step);
        EXPECT_TRUE(FindIn(wizard, "txtCalibrate")->hasFocus());
    };
    // A button pressed by its letter shows so for a moment before it acts.
    const auto letter = [](frmCalibrate& wizard, Qt::Key key) {
        PressKey(wizard, key, Qt::AltModifier);
        EXPECT_TRUE(RunEventsUntil([&] { return !wizard.isVisible(); }));
    };
    const auto tabTo = [](frmCalibrate& wizard, const char* name) {
        for (int tabs = 0; tabs < 8 && !FindIn(wizard, name)->hasFocus(); ++tabs) {
            PressKey(wizard, Qt::Key_Tab);
        }
        EXPECT_TRUE(FindIn(wizard, name)->hasFocus());
    };
    Run({[&](frmCalibrate& wizard) {
             stands(wizard, 1);
             letter(wizard, Qt::Key_N);
         },
         [&](frmCalibrate& wizard) {
             stands(wizard, 2);
             letter(wizard, Qt::Key_B);
         },
         [&](frmCalibrate& wizard) {
             stands(wizard, 1);
             PressKey(wizard, Qt::Key_Return);
         },
         [&](frmCalibrate& wizard) {
             stands(wizard, 2);
             tabTo(wizard, "cmdHelp");
             PressKey(wizard, Qt::Key_Space);
             EXPECT_TRUE(wizard.isVisible());
             EXPECT_EQ(wizard.State().Result, "");
             tabTo(wizard, "cmdCancel");
             PressKey(wizard, Qt::Key_Space);
             EXPECT_EQ(wizard.State().Result, "Cancel");
             EXPECT_FALSE(wizard.isVisible());
         }});
}

TEST_F(CalibrateForm, TheQuestionSaysWhatItIs) {
    Run({[](frmCalibrate& wizard) {
        const auto* question = FindIn<QLabel>(wizard, "lblCalibrate");
        EXPECT_EQ(FromQt(question->accessibleDescription()), "Question of this step");
        EXPECT_EQ(question->buddy(), FindIn(wizard, "txtCalibrate"));
        wizard.close();
    }});
}

TEST_F(CalibrateForm, TheDialogBehindItIsHeld) {
    const auto look = [this](frmCalibrate& wizard) {
        for (const char* name : {"TabStrip", "txtHighEU(0)", "cmdCalibrate(1)", "cmdOK"}) {
            EXPECT_FALSE(Find(name)->isEnabled()) << name;
        }
        ClickOn(FindIn(wizard, wizard.State().Step == 1 ? "cmdNext" : "cmdCancel"));
    };
    Run({look, look});
    for (const char* name : {"TabStrip", "txtHighEU(0)", "cmdCalibrate(1)", "cmdOK"}) {
        EXPECT_TRUE(Find(name)->isEnabled()) << name;
    }
    EXPECT_TRUE(HasFocus("cmdCalibrate(0)"));
}

// ----- closing the wizard and the program inside its waits

class CalibrationOfMainWindow : public testing_support::MainWindowTest {
 protected:
    /// Opens the set-up of the first site and brings the wizard of its first channel to the live
    /// readings of step 2; `act` happens there.
    void AtTheReadings(const std::function<void(frmCalibrate&)>& act) {
        StartConnected();
        ClickClient(1);
        ModalAnswer<frmSetup> dialog([&](frmSetup& shown) {
            FindIn<QTabBar>(shown, "TabStrip")->setCurrentIndex(0);
            std::optional<ModalAnswer<frmCalibrate>> readings;
            ModalAnswer<frmCalibrate> start([&](frmCalibrate& wizard) {
                ClickOn(FindIn(wizard, "cmdNext"));
                readings.emplace(act);
            });
            ClickOn(FindIn(shown, "cmdCalibrate(0)"));
            EXPECT_TRUE(readings && readings->Given());
            HighRaw = FromQt(FindIn<QLineEdit>(shown, "txtHighRaw(0)")->text());
            if (shown.isVisible()) {
                shown.close();
            }
        });
        Click("cmdSetup");
        EXPECT_TRUE(dialog.Given());
    }

    simulator::Logger& Logger() { return *host_.Virtual.Network.Loggers().front(); }
    int Requests() { return host_.Virtual.Network.Count().Requests; }
    bool InAnExchange() const { return state_.LinkRecord.CommBusy != False; }
    /// The sample that was asked for has been acknowledged; its status is awaited.
    bool AwaitsTheStatus() {
        return !InAnExchange() && state_.LinkRecord.WaitTicks > 0 &&
               host_.Virtual.Network.RequestsTo(Logger()).back().front() == 0x09;
    }

    void EndTheProgram() {
        Ended = window_->close();
        RequestsAtTheEnd = Requests();
    }
    void ExpectUnwound() {
        EXPECT_TRUE(Ended);
        EXPECT_EQ(state_.LinkRecord.ShuttingDown, True);
        EXPECT_FALSE(host_.Virtual.Port.PortOpen());
        EXPECT_EQ(Requests(), RequestsAtTheEnd) << "nothing goes out behind the end";
        EXPECT_EQ(HighRaw, "65535");
        EXPECT_TRUE(boxes_.Shown.empty());
        ExpectAtRest();
    }

    std::string HighRaw;
    bool Ended = false;
    int RequestsAtTheEnd = 0;
};

TEST_F(CalibrationOfMainWindow, ClosingInsideAnExchangeEndsTheWizard) {
    bool met = false;
    AtTheReadings([&](frmCalibrate& wizard) {
        EXPECT_EQ(wizard.State().Step, 2);
        Logger().Silence();
        Once([this] { return InAnExchange(); },
             [&] {
                 met = true;
                 wizard.close();
                 EXPECT_FALSE(wizard.isVisible());
                 EXPECT_EQ(state_.OperationsRecord.OperationBusy, True);
                 Logger().Wake();
             });
    });
    EXPECT_TRUE(met);
    EXPECT_EQ(HighRaw, "65535");
    EXPECT_TRUE(boxes_.Shown.empty());
    ExpectAtRest();
}

TEST_F(CalibrationOfMainWindow, TheEndOfTheProgramIsRefusedInsideAnExchangeThenUnwinds) {
    bool refused = false;
    AtTheReadings([&](frmCalibrate& wizard) {
        Logger().Silence();
        Once([this] { return InAnExchange(); },
             [&] {
                 refused = !window_->close();
                 EXPECT_TRUE(wizard.isVisible());
                 Once([this] { return !InAnExchange(); }, [this] { EndTheProgram(); });
             });
    });
    EXPECT_TRUE(refused);
    ExpectUnwound();
}

TEST_F(CalibrationOfMainWindow, TheEndOfTheProgramInsideTheWaitForAStatusUnwinds) {
    AtTheReadings([&](frmCalibrate&) {
        Logger().Answers(0x09, simulator::Answer{{simulator::Acknowledge}, {}, {}});
        Once([this] { return AwaitsTheStatus(); }, [this] { EndTheProgram(); });
    });
    ExpectUnwound();
}

}  // namespace
}  // namespace setup_testing
