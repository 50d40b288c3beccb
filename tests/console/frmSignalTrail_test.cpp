#include "console/frmSignalTrail.h"

#include <QCheckBox>
#include <QLabel>

#include "forms_bench.h"
#include "support/virtual_host.h"

namespace {

using namespace forms_bench;

class frmSignalTrailTest : public ::testing::Test {
 protected:
    [[nodiscard]] QString Best() { return Find<QLabel>(form_, "lblBest")->text(); }

    testing_support::CountingBell sound_;
    frmSignalTrail form_{sound_, nullptr};
};

TEST_F(frmSignalTrailTest, TellsTheBestAndForgetsItWithTheRadio) {
    EXPECT_EQ(Best(), QStringLiteral("Best: ---"));
    form_.Add({0, -58});
    form_.Add({12'000, -70});
    EXPECT_EQ(Best(), QStringLiteral("Best: -58 DBm, 12 s ago"));
    form_.Clear();
    EXPECT_EQ(Best(), QStringLiteral("Best: ---"));
}

TEST_F(frmSignalTrailTest, SoundsOnDemandWhenTheLevelIsAsGoodAsTheBest) {
    form_.Add({0, -70});
    EXPECT_EQ(sound_.Rung, 0) << "nobody asked for it";
    Find<QCheckBox>(form_, "chkBeep")->setChecked(true);
    form_.Add({1'000, -71});
    EXPECT_EQ(sound_.Rung, 0);
    form_.Add({2'000, -70});
    EXPECT_EQ(sound_.Rung, 1);
    form_.Add({3'000, -60});
    EXPECT_EQ(sound_.Rung, 2);
    form_.Add({4'000, std::nullopt});
    EXPECT_EQ(sound_.Rung, 2);
}

TEST_F(frmSignalTrailTest, DrawsLevelsAndGaps) {
    constexpr std::int64_t Second = 1000;
    Show(form_);
    const QImage empty = Find(form_, "pctTrail")->grab().toImage();
    for (int i = 0; i < 300; ++i) {
        const bool gap = i > 120 && i < 140;
        form_.Add({i * Second, gap ? std::nullopt : std::optional(-90 + i / 6)});
    }
    EXPECT_NE(Find(form_, "pctTrail")->grab().toImage(), empty);
    ExpectReach(form_);
    KeepPictures(form_);
}

}  // namespace
