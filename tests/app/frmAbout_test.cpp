#include "app/frmAbout.h"

#include <QAction>
#include <QLabel>

#include "app/frmMain_fixture.h"
#include "support/qt/modal_answer.h"

namespace testing_support {
namespace {

class frmAboutTest : public MainWindowTest {
 protected:
    /// Chooses "&About" and does `act` with what comes up.
    void Choose(const std::function<void(QDialog&)>& act) {
        const ModalAnswer<QDialog> answer(act);
        Find<QAction>("mnuAbout").trigger();
        EXPECT_TRUE(answer.Given());
    }
};

TEST_F(frmAboutTest, ShowsPictureThenVersionModally) {
    Choose([](QDialog& about) {
        EXPECT_EQ(about.objectName(), QStringLiteral("frmAbout"));
        EXPECT_TRUE(about.isModal());
        EXPECT_EQ(about.windowTitle(), QStringLiteral("About Harrowmere"));
        EXPECT_EQ(about.findChild<QLabel*>(QStringLiteral("lblVersion"))->text(),
                  QStringLiteral("Orvia\nVersion 1.0.0"));
        const auto* picture = about.findChild<QLabel*>(QStringLiteral("Picture1"));
        EXPECT_FALSE(picture->pixmap(Qt::ReturnByValue).isNull());
        EXPECT_GE(picture->width(), 96);
        about.reject();
    });
}

TEST_F(frmAboutTest, EscapeClosesIt) {
    Choose([](QDialog& about) {
        QTest::keyClick(&about, Qt::Key_Escape);
        EXPECT_FALSE(about.isVisible());
    });
}

TEST_F(frmAboutTest, EnterClosesIt) {
    Choose([](QDialog& about) {
        QTest::keyClick(&about, Qt::Key_Return);
        EXPECT_FALSE(about.isVisible());
    });
}

}  // namespace
}  // namespace testing_support
