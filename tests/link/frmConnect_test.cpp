#include "link/frmConnect.h"

#include "app/frmMain_fixture.h"
#include "link/frmConnectSetup.h"
#include "support/qt/modal_answer.h"

namespace testing_support {
namespace {

class frmConnectTest : public MainWindowTest {
 protected:
    static void Press(const frmConnect& dialog, const char* button) {
        dialog.findChild<QPushButton*>(QLatin1String(button))->click();
    }
};

TEST_F(frmConnectTest, ConnectCancelledDuringTheAttemptEndsWithIt) {
    host_.Virtual.Network.Radio().Silence();
    bool cancelled = false;
    Start([&](frmConnect& dialog) {
        Once([this] { return state_.LinkRecord.CommBusy != False; },
             [&] {
                 cancelled = true;
                 Press(dialog, "cmdCancel");
                 EXPECT_TRUE(dialog.isVisible()) << "the attempt ends it";
             });
        Press(dialog, "cmdConnect");
    });
    EXPECT_TRUE(cancelled);
    ASSERT_EQ(boxes_.Shown.size(), 2U);
    EXPECT_EQ(boxes_.Shown[0].Title, "Connection Required");
    EXPECT_EQ(boxes_.Shown[1].Title, "Connect Error");
    EXPECT_EQ(state_.LinkRecord.LinkState, LinkDisconnected);
    EXPECT_EQ(state_.LinkRecord.CommBusy, False);
}

TEST_F(frmConnectTest, SettingsCannotBeChangedDuringTheAttempt) {
    host_.Virtual.Network.Radio().Silence();
    const ModalAnswer<frmConnectSetup> answer([](frmConnectSetup& form) { form.reject(); });
    bool pressed = false;
    Start([&](frmConnect& dialog) {
        Once([this] { return state_.LinkRecord.CommBusy != False; },
             [&] {
                 pressed = true;
                 Press(dialog, "cmdSetup");
             });
        Press(dialog, "cmdConnect");
    });
    EXPECT_TRUE(pressed);
    EXPECT_FALSE(answer.Given()) << "the port and its rate are in use";
}

TEST_F(frmConnectTest, EnterPressesTheButtonThatHasTheFocus) {
    const ModalAnswer<frmConnectSetup> answer([](frmConnectSetup& form) { form.reject(); });
    Start([](frmConnect& dialog) {
        dialog.findChild<QPushButton*>(QStringLiteral("cmdSetup"))->setFocus();
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
        EXPECT_TRUE(dialog.isVisible());
        dialog.findChild<QPushButton*>(QStringLiteral("cmdCancel"))->setFocus();
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
    });
    EXPECT_TRUE(answer.Given());
    ASSERT_EQ(boxes_.Shown.size(), 1U);
    EXPECT_EQ(boxes_.Shown[0].Title, "Connection Required");
}

TEST_F(frmConnectTest, ItsCloseBoxActsAsCancel) {
    Start([](frmConnect& dialog) { dialog.close(); });
    ASSERT_EQ(boxes_.Shown.size(), 1U);
    EXPECT_EQ(boxes_.Shown[0].Title, "Connection Required");
    EXPECT_EQ(state_.LinkRecord.Connected, False);
}

TEST_F(frmConnectTest, APortThatWillNotOpenTellsSoThenTheConsoleGoesOn) {
    host_.Virtual.Port.Missing = {1};
    Start([](frmConnect& dialog) { Press(dialog, "cmdConnect"); });
    ASSERT_EQ(boxes_.Shown.size(), 1U);
    EXPECT_EQ(boxes_.Shown[0].Title, "Connect Error");
    EXPECT_EQ(window_->ClientCount(), 3) << "the book is loaded all the same";
}

}  // namespace
}  // namespace testing_support
