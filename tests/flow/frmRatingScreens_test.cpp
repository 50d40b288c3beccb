// Pictures of the window of ratings for each kind of device, light and dark.
#include "flow/rating_support.h"
#include "frmRating_fixture.h"
#include "support/qt/desk_look.h"

namespace rating_testing {
namespace {

class RatingScreens : public RatingFormTest, public ::testing::WithParamInterface<bool> {
 protected:
    void Keep(const std::string& name) {
        KeepOnBothScreens(*form_, QStringLiteral("frmRating-") + ToQt(name), GetParam());
    }

 private:
    const DeskColours colours_{GetParam()};
};

TEST_P(RatingScreens, OfEveryKind) {
    Open();
    for (const RatingKind& kind : RatingKinds()) {
        ChooseKind(kind.Key);
        Control<QPlainTextEdit>("txtRows")->setPlainText(ToQt(RatingRowsText(SomeDevice(kind))));
        EXPECT_GT(TableRows(), 0) << kind.Key;
        Control("pctCurve")->setFocus();
        for (int i = 0; i < 12; ++i) {
            Press(Qt::Key_Right);
        }
        Keep(std::string(kind.Key));
    }
}

TEST_P(RatingScreens, OfOutliersAndFaultsAndLogarithms) {
    Open();
    ChooseKind("points");
    Control<QPlainTextEdit>("txtRows")->setPlainText(QStringLiteral(
        "0.1 0.0949\n0.2 0.268\n0.3 0.493\n0.4 0.759\n0.5 2.1\n0.6 1.394\n0.7 1.757\n"
        "0.8 2.147\n0.9 2.561\n1 3\n"));
    EXPECT_GT(TableRows(), 0);
    Click("chkLogarithmic");
    Control<QTabWidget>("TabStrip")->setCurrentIndex(1);
    Keep("outlier");
    ChooseKind("rectangular-weir");
    Type(InputOf("rectangular-weir", "crest"), "two");
    Type(InputOf("rectangular-weir", "crest-height"), "4000");
    EXPECT_EQ(TableRows(), 0);
    Keep("faults");
}

INSTANTIATE_TEST_SUITE_P(Palettes, RatingScreens, ::testing::Bool(),
                         [](const auto& dark) { return dark.param ? "Dark" : "Light"; });

}  // namespace
}  // namespace rating_testing
