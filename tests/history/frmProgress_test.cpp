#include "history/frmProgress.h"

#include <QElapsedTimer>
#include <QLabel>
#include <QProgressBar>

#include "history/frm_history_fixture.h"

namespace testing_support {
namespace {

TEST(FrmProgress, StandsWithItsTexts) {
    frmProgress form(nullptr);
    EXPECT_EQ(form.windowTitle(), QStringLiteral("Formatting Data"));
    EXPECT_EQ(Find<QLabel>(form, "lblStatusBar")->text(),
              QStringLiteral("Please wait while data is being formatted"));
    EXPECT_FALSE(form.isModal());
    EXPECT_FALSE(Find(form, "ProgressBar")->accessibleName().isEmpty());
}

TEST(BarFollower, MovesABarAtMostTwentyFiveTimesASecond) {
    QProgressBar bar;
    bar.setRange(0, 1'000'000'000);
    int moves = 0;
    QObject::connect(&bar, &QProgressBar::valueChanged, &bar, [&moves] { ++moves; });
    BarFollower follower(bar);
    QElapsedTimer clock;
    clock.start();
    for (int value = 1; clock.elapsed() < 300; ++value) {
        follower.SetValue(value);
    }
    EXPECT_LE(moves, 8);
    EXPECT_GE(moves, 3);
}

}  // namespace
}  // namespace testing_support
