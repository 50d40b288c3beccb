// The live plot in the console: its menu row, the readings that reach it, and the console's end.
#include <QAction>
#include <QPointer>

#include "app/frmMain_fixture.h"
#include "archive/frmPlot.h"
#include "archive/frmPlotChart.h"
#include "platform/qt/text_qt.h"

namespace testing_support {
namespace {

class LivePlotInConsole : public MainWindowTest {
 protected:
    frmPlot* OpenPlot() {
        Find<QAction>("mnuLivePlot").trigger();
        return window_->findChild<frmPlot*>();
    }
    static std::size_t Readings(const frmPlot& plot) {
        const auto& lines = plot.findChild<PlotChart*>()->Scene().Lines();
        return lines.empty() ? 0 : lines[0].Series->Values().RecordCount();
    }
};

TEST_F(LivePlotInConsole, PlotsTheReadingsOfTheActiveWindow) {
    StartConnected();
    ClickClient(1);
    ClickClient(2);
    const frmPlot* plot = OpenPlot();
    ASSERT_NE(plot, nullptr);
    EXPECT_EQ(FromQt(plot->windowTitle()), "Live Plot of Site 2");
    EXPECT_TRUE(plot->isVisible());
    EXPECT_FALSE(plot->isModal());
    EXPECT_EQ(Readings(*plot), 0U);
    window_->activateWindow();
    Click("cmdSampleContinuously");
    EXPECT_TRUE(host_.RunUntil([&] { return Readings(*plot) >= 3; }));
    Click("cmdSampleContinuously");
    EXPECT_TRUE(host_.RunUntil([&] {
        return Find<QPushButton>("cmdSampleContinuously").text() ==
               QStringLiteral("&Sample Continuously");
    }));
    const std::size_t kept = Readings(*plot);
    WindowOf(2)->close();
    host_.RunFor(500);
    EXPECT_EQ(Readings(*plot), kept) << "what there is stays to be looked at";
    EXPECT_TRUE(boxes_.Shown.empty());
}

TEST_F(LivePlotInConsole, WithoutAWindowItSaysWhatIsMissing) {
    StartConnected();
    EXPECT_EQ(OpenPlot(), nullptr);
    ASSERT_EQ(boxes_.Shown.size(), 1U);
    EXPECT_EQ(boxes_.Shown[0].Title, "Live Plot");
    EXPECT_NE(boxes_.Shown[0].Text.find("no active client window"), std::string::npos);
}

TEST_F(LivePlotInConsole, GoesWithTheConsoleWithoutAWord) {
    StartConnected();
    ClickClient(1);
    const QPointer<frmPlot> plot = OpenPlot();
    ASSERT_NE(plot, nullptr);
    EXPECT_TRUE(window_->close());
    EXPECT_TRUE(plot == nullptr || !plot->isVisible());
    EXPECT_TRUE(boxes_.Shown.empty());
}

}  // namespace
}  // namespace testing_support
