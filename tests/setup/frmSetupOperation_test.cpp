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
    std::string units;
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

TEST_F(SetupOfMainWindow, TheEndOfTheProgramUnderTheDialogUnwinds) {
    OpenSetup([&](frmSetup& dialog) {
        setup_testing::FindIn<QLineEdit>(dialog, "txtName")->setText(QStringLiteral("Other"));
        boxes_.Answers = {BoxAnswer::Cancel};
        window_->close();
    });
    EXPECT_EQ(state_.LinkRecord.ShuttingDown, True);
}

TEST_F(SetupOfMainWindow, TheEndOfTheProgramInsideAProgrammingUnwinds) {
    OpenSetup([&](frmSetup& dialog) {
        for (const auto& logger : host_.Virtual.Network.Loggers()) {
            logger->Silence();
        }
        // Between two exchanges: during one, the main window refuses to close.
        Once([&] { return !dialog.isEnabled() || state_.OperationsRecord.OperationBusy != False; },
             [&] { state_.LinkRecord.ShuttingDown = True; });
        boxes_.Answers = {BoxAnswer::Yes};
        setup_testing::ClickOn(setup_testing::FindIn(dialog, "cmdOK"));
    });
    EXPECT_EQ(state_.LinkRecord.ShuttingDown, True);
}

}  // namespace
}  // namespace testing_support
