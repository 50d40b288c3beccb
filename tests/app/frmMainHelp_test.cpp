#include "app/frmMain_fixture.h"

#include <QAction>
#include <QDialog>
#include <QWindow>

#include "support/qt/modal_answer.h"

namespace testing_support {
namespace {

/// The console with the pages of its help beside it.
class MainWindowHelpTest : public MainWindowTest {
 protected:
    MainWindowHelpTest() {
        WriteFile(help_, "help");
        window_ = std::make_unique<frmMain>(state_);
    }

    static void PressF1(const QWidget& window) {
        QTest::keyClick(window.windowHandle(), Qt::Key_F1);
    }

    /// What a viewer was told to open.
    [[nodiscard]] const std::vector<std::string>& Opened() const {
        return host_.Virtual.Help.Opened;
    }
    [[nodiscard]] std::string Page(const std::string& name) const { return help_ + "::/" + name; }

    std::string help_ = JoinPath(folder_, "Orvia.chm");
};

TEST_F(MainWindowHelpTest, F1ShowsThePageOfTheWindowWithTheFocus) {
    StartConnected();
    window_->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window_.get()));
    Find<QListWidget>("lvwClients").setFocus();
    PressF1(*window_);
    ClickClient(1);
    WindowOf(1)->setFocus();
    PressF1(*window_);
    EXPECT_EQ(Opened(),
              (std::vector<std::string>{Page("main-window.html"), Page("client-window.html")}));
}

TEST_F(MainWindowHelpTest, F1ShowsThePageOfAModalWindow) {
    Start([](frmConnect& dialog) {
        PressF1(dialog);
        dialog.findChild<QPushButton*>(QStringLiteral("cmdConnect"))->click();
    });
    EXPECT_EQ(Opened(), std::vector<std::string>{Page("connect.html")});
}

TEST_F(MainWindowHelpTest, F1InTheSetupShowsThePageThatIsTurnedTo) {
    StartConnected();
    ClickClient(1);
    Click("cmdGetSettings");
    const ModalAnswer<QDialog> answer([](QDialog& setup) {
        EXPECT_EQ(setup.objectName(), QStringLiteral("frmSetup"));
        setup.findChild<QWidget*>(QStringLiteral("txtName"))->setFocus();
        PressF1(setup);
        setup.close();
    });
    Click("cmdSetup");
    EXPECT_TRUE(answer.Given());
    EXPECT_EQ(Opened(), std::vector<std::string>{Page("setup-general.html")});
}

TEST_F(MainWindowHelpTest, TheMenuOpensTheHelpAtItsContents) {
    window_->findChild<QAction*>(QStringLiteral("mnuLaunchHelp"))->trigger();
    EXPECT_EQ(Opened(), std::vector<std::string>{help_});
}

TEST_F(MainWindowTest, F1WithoutHelpDoesNothing) {
    StartConnected();
    QTest::keyClick(window_->windowHandle(), Qt::Key_F1);
    EXPECT_TRUE(host_.Virtual.Help.Opened.empty());
}

}  // namespace
}  // namespace testing_support
