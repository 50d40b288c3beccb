// Pictures of the window of ratings for each kind of device, light and dark.
#include <QDir>
#include <QPalette>
#include <QPixmap>

#include "flow/rating_support.h"
#include "frmRating_fixture.h"

namespace rating_testing {
namespace {

class RatingScreens : public RatingFormTest, public ::testing::WithParamInterface<bool> {
 protected:
    RatingScreens() : before_(QApplication::palette()) {
        QPalette dark(QColor(53, 53, 53), QColor(53, 53, 53));
        dark.setColor(QPalette::Base, QColor(35, 35, 35));
        dark.setColor(QPalette::Highlight, QColor(42, 130, 218));
        QApplication::setPalette(GetParam() ? dark : QPalette(QColor(239, 239, 239)));
    }
    ~RatingScreens() override { QApplication::setPalette(before_); }

    /// As on a screen of 1024 by 600 and on one of 1280 by 900; pictures cost time, so they are
    /// made where a folder waits for them.
    void Keep(const std::string& name) {
        const QString folder = qEnvironmentVariable("ORVIA_SCREENSHOTS");
        for (const QSize size : {QSize(990, 566), QSize(1246, 866)}) {
            form_->resize(size);
            QCoreApplication::processEvents();
            EXPECT_EQ(form_->size(), size) << name << " does not fit";
            if (!folder.isEmpty()) {
                const QString file = QStringLiteral("frmRating-%1-%2-%3-%4x.png")
                                         .arg(ToQt(name))
                                         .arg(QLatin1String(GetParam() ? "dark" : "light"))
                                         .arg(size.width())
                                         .arg(form_->devicePixelRatioF());
                EXPECT_TRUE(QDir().mkpath(folder));
                EXPECT_TRUE(form_->grab().save(QDir(folder).filePath(file)));
            }
        }
    }

 private:
    QPalette before_;
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
