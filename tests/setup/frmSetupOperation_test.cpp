#include <QAction>
#include <QLineEdit>

#include "app/frmMain_fixture.h"
#include "platform/qt/text_qt.h"
#include "setup/frmSetup_fixture.h"
#include "support/qt/modal_answer.h"

namespace testing_support {
namespace {

class SetupOfMainWindow : public MainWindowTest {
 protected:
    /// The logger's name in its window.
    std::string NameShown() {
        return FromQt(setup_testing::FindIn<QLabel>(*WindowOf(1), "lblLoggerName")->text());
    }

    /// Opens the window of the first site and clicks `cmdSetup`; `inDialog` happens there.
    void OpenSetup(const std::function<void(frmSetup&)>& inDialog) {
        StartConnected();
        ClickClient(1);
        ModalAnswer<frmSetup> answer(inDialog);
        Click("cmdSetup");
        EXPECT_TRUE(answer.Given());
    }
};

TEST_F(SetupOfMainWindow, ShowsTheLoggerOfTheActiveWindow) {
    std::string name;
    OpenSetup([&](frmSetup& dialog) {
        name = FromQt(setup_testing::FindIn<QLineEdit>(dialog, "txtName")->text());
        dialog.close();
    });
    EXPECT_EQ(name, NameShown());
    EXPECT_NE(name, "");
    ExpectAtRest();
}

TEST_F(SetupOfMainWindow, ProgramsAndReadsTheLoggerAgain) {
    OpenSetup([&](frmSetup& dialog) {
        setup_testing::FindIn<QLineEdit>(dialog, "txtName")->setText(QStringLiteral("Renamed"));
        boxes_.Answers = {BoxAnswer::Yes, BoxAnswer::No};
        setup_testing::ClickOn(setup_testing::FindIn(dialog, "cmdOK"));
        dialog.close();
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_EQ(NameShown(), "Renamed");
    ExpectAtRest();
}

TEST_F(SetupOfMainWindow, IsNotShownForAClientClosedAndDeletedWhileItIsRead) {
    StartConnected();
    ClickClient(1);
    const ModalAnswer<frmSetup> answer([](frmSetup& dialog) { dialog.close(); });
    bool deleted = false;
    Once(
        [this] {
            return state_.LinkRecord.LinkState == LinkNormal && state_.LinkRecord.CommBusy != False;
        },
        [&] {
            deleted = true;
            WindowOf(1)->close();
            Find<QListWidget>("lvwClients").setCurrentRow(0);
            window_->findChild<QAction*>(QStringLiteral("mnuDeleteClient"))->trigger();
        });
    Click("cmdSetup");
    EXPECT_TRUE(deleted);
    EXPECT_EQ(state_.Book.Entries[1].Name, "Site 2");
    EXPECT_FALSE(answer.Given());
    ExpectAtRest();
}

TEST_F(SetupOfMainWindow, IsInThePopupToo) {
    StartConnected();
    ClickClient(1);
    ModalAnswer<frmSetup> answer([](frmSetup& dialog) { dialog.close(); });
    auto* row = window_->findChild<QAction*>(QStringLiteral("mnuClientSetup"));
    ASSERT_NE(row, nullptr);
    EXPECT_EQ(FromQt(row->text()), "Setup");
    row->trigger();
    EXPECT_TRUE(answer.Given());
    ExpectAtRest();
}

// ----- the end of the program

class EndUnderSetup : public SetupOfMainWindow {
 protected:
    simulator::Logger& Logger() { return *host_.Virtual.Network.Loggers().front(); }
    int Requests() { return host_.Virtual.Network.Count().Requests; }

    void EndTheProgram() {
        Ended = window_->close();
        RequestsAtTheEnd = Requests();
    }
    /// Changes the name and presses `cmdOK`; the question is answered with Yes.
    void Program(frmSetup& dialog) {
        setup_testing::FindIn<QLineEdit>(dialog, "txtName")->setText(QStringLiteral("Other"));
        setup_testing::ClickOn(setup_testing::FindIn(dialog, "cmdOK"));
    }
    void ExpectUnwound(std::size_t boxes) {
        EXPECT_TRUE(Ended);
        EXPECT_EQ(state_.LinkRecord.ShuttingDown, True);
        EXPECT_EQ(boxes_.Shown.size(), boxes) << "none behind the end";
        EXPECT_FALSE(host_.Virtual.Port.PortOpen());
        EXPECT_EQ(Requests(), RequestsAtTheEnd) << "nothing goes out behind the end";
        ExpectAtRest();
    }

    bool Ended = false;
    int RequestsAtTheEnd = 0;
};

TEST_F(EndUnderSetup, UnwindsUnderTheDialog) {
    OpenSetup([&](frmSetup& dialog) {
        setup_testing::FindIn<QLineEdit>(dialog, "txtName")->setText(QStringLiteral("Other"));
        EndTheProgram();
    });
    ExpectUnwound(0);
}

TEST_F(EndUnderSetup, UnwindsUnderTheQuestionOfAProgramming) {
    OpenSetup([&](frmSetup& dialog) {
        boxes_.WhileShown = [this] { EndTheProgram(); };
        Program(dialog);
    });
    ExpectUnwound(1);
}

TEST_F(EndUnderSetup, UnwindsInsideAProgrammingWhileTheRestartIsAwaited) {
    OpenSetup([&](frmSetup& dialog) {
        Logger().Answers(0x0B, simulator::Answer{{simulator::Acknowledge}, {}, {}});
        Once(
            [this] {
                return state_.LinkRecord.CommBusy == False && state_.LinkRecord.WaitTicks > 0 &&
                       host_.Virtual.Network.RequestsTo(Logger()).back().front() == 0x0B;
            },
            [this] {
                EXPECT_EQ(state_.OperationsRecord.OperationBusy, True);
                EndTheProgram();
            });
        Program(dialog);
    });
    ExpectUnwound(1);
}

TEST_F(EndUnderSetup, IsRefusedInsideAnExchangeThenUnwindsUnderTheMessage) {
    bool refused = false;
    OpenSetup([&](frmSetup& dialog) {
        Logger().Silence();
        Once([this] { return state_.LinkRecord.CommBusy != False; },
             [&] {
                 refused = !window_->close();
                 EXPECT_TRUE(dialog.isVisible());
                 boxes_.WhileShown = [this] { EndTheProgram(); };
             });
        Program(dialog);
    });
    EXPECT_TRUE(refused);
    ExpectUnwound(2);
    EXPECT_EQ(boxes_.Shown.back().Text, "Error: programming not completed successfully.");
}

}  // namespace
}  // namespace testing_support
