#include "app/frmSplash.h"

#include "app/frmMain_fixture.h"

namespace testing_support {
namespace {

class frmSplashTest : public MainWindowTest {
 protected:
    static const frmSplash* Splash() {
        for (const QWidget* window : QApplication::topLevelWidgets()) {
            const auto* splash = dynamic_cast<const frmSplash*>(window);
            if (splash != nullptr && splash->isVisible()) {
                return splash;
            }
        }
        return nullptr;
    }
};

TEST_F(frmSplashTest, StandsAloneAsLargeAsItsPictureThenGoes) {
    bool seen = false;
    Once([] { return Splash() != nullptr; },
         [&] {
             seen = true;
             const QPixmap picture = Splash()->pixmap(Qt::ReturnByValue);
             EXPECT_FALSE(picture.isNull());
             EXPECT_EQ(QSizeF(Splash()->size()), picture.deviceIndependentSize());
             EXPECT_FALSE(window_->isVisible());
         });
    Start([](frmConnect& dialog) {
        EXPECT_EQ(Splash(), nullptr);
        dialog.reject();
    });
    EXPECT_TRUE(seen);
}

TEST_F(frmSplashTest, StandsForASecond) {
    const Microseconds start = host_.Virtual.Time.Now();
    Microseconds shown = 0;
    Start([&](frmConnect& dialog) {
        shown = host_.Virtual.Time.Now() - start;
        dialog.reject();
    });
    EXPECT_GE(shown, 900 * Millisecond);
}

}  // namespace
}  // namespace testing_support
