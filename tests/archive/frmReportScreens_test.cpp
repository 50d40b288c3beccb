// Pictures of the window of a report, light and dark, and of its pages.
#include <QDir>
#include <QScrollBar>

#include "frmReport_fixture.h"
#include "support/qt/desk_look.h"

namespace testing_support {
namespace {

class ReportScreens : public ReportFormTest, public ::testing::WithParamInterface<bool> {
 protected:
    ~ReportScreens() override { delete form_; }

    void Keep(const std::string& name) {
        KeepOnBothScreens(*form_, QStringLiteral("frmReport-") + ToQt(name), GetParam());
    }
    void KeepPages(const std::string& name) {
        Pick("report.pdf");
        Click("cmdPdf");
        EXPECT_TRUE(Boxes().empty());
        if (!PictureFolder().isEmpty() && !GetParam()) {
            Run(QStringLiteral("pdftoppm"),
                {QStringLiteral("-r"), QStringLiteral("110"), QStringLiteral("-png"),
                 ToQt(PathOf("report.pdf")),
                 QDir(PictureFolder()).filePath(QStringLiteral("report-page-") + ToQt(name))});
        }
    }

 private:
    const DeskColours colours_{GetParam()};
};

TEST_P(ReportScreens, OfALoggerWithAFlow) {
    Open();
    Type("txtSite", "Dam 4, left bank");
    Type("txtMadeBy", "J. Smith");
    Control("lvwReport")->setFocus();
    Keep("flow");
    KeepPages("flow");
}

TEST_P(ReportScreens, OfTenChannels) {
    Open(TwoWeeks(8, 2));
    Control<QTableView>("lvwReport")->horizontalScrollBar()->setValue(777);
    Keep("wide");
    KeepPages("wide");
}

TEST_P(ReportScreens, OfOneChannel) {
    SeriesMaker maker(1, 0);
    for (int i = 0; i < 100; ++i) {
        maker.Add(SomeDay + Moment{i} * 900, {i * i % 97});
    }
    Open(maker, {SomeDay, SomeDay + 3 * SecondsPerDay});
    Keep("narrow");
    KeepPages("narrow");
}

TEST_P(ReportScreens, OfFaultsAndNothing) {
    Open();
    SetDate("dtpTo", {2024, 1, 10});
    Keep("fault");
    Open(SeriesMaker(2, 1), {});
    Keep("empty");
    KeepPages("empty");
}

INSTANTIATE_TEST_SUITE_P(Palettes, ReportScreens, ::testing::Bool(),
                         [](const auto& dark) { return dark.param ? "Dark" : "Light"; });

}  // namespace
}  // namespace testing_support
