#include <gtest/gtest.h>

#include <QApplication>
#include <QPainter>
#include <QTest>
#include <QWheelEvent>
#include <QXmlStreamReader>
#include <cmath>
#include <set>

#include "american_clock.h"
#include "archive/frmPlotChart.h"
#include "archive/frmPlotSave.h"
#include "archive/frmPlotStyle.h"
#include "archive/plot_path.h"
#include "frmPlot_support.h"
#include "platform/qt/text_qt.h"
#include "support/qt/desk_look.h"

namespace plot_testing {
namespace {

constexpr Moment DayEnd = 2 * SecondsPerDay - 900;

class PlotChartTest : public ::testing::Test {
 protected:
    PlotChartTest() {
        chart_.resize(900, 500);
        chart_.PartChanged = [this] { ++parts_; };
        chart_.CursorMoved = [this] { ++cursors_; };
    }

    void Show(std::vector<PlotLine> lines) {
        chart_.SetLines(std::move(lines));
        chart_.SetSpan(SomeDay, SomeDay + DayEnd);
        chart_.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&chart_));
        chart_.setFocus();
        Settle();
    }
    static void Settle() { QCoreApplication::processEvents(); }
    QImage Seen() {
        Settle();
        // In the chart's own pixels, however fine the screen is.
        QImage seen = chart_.grab().toImage().scaled(chart_.size());
        seen.setDevicePixelRatio(1);
        return seen;
    }
    QColor ColourOf(std::size_t look) const {
        return PlotStyleOf(chart_.palette(), chart_.font()).Of(PlotLookOf(look));
    }
    int XOf(Moment moment) const {
        const QRect area = chart_.Area();
        return static_cast<int>(std::lround(PlotBox{
            double(area.left()),
            0,
            double(area.width()),
            1,
            chart_.Shown().From,
            chart_.Shown().To,
            {0, 1}}.XOf(moment)));
    }
    /// Pixels of a look between two moments.
    int Drawn(std::size_t look, Moment from, Moment to) {
        const QRect area = chart_.Area();
        return PixelsOf(Seen(), ColourOf(look),
                        QRect(QPoint(XOf(from), area.top()), QPoint(XOf(to), area.bottom())));
    }
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(&chart_, key, modifiers);
        Settle();
    }
    void Turn(QPoint at, int angle, Qt::KeyboardModifiers modifiers = {}) {
        QWheelEvent event(at, chart_.mapToGlobal(at), {}, {0, angle}, Qt::NoButton, modifiers,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&chart_, &event);
        Settle();
    }
    void DragTo(QPoint from, QPoint to, Qt::KeyboardModifiers modifiers = {}) {
        QTest::mousePress(&chart_, Qt::LeftButton, modifiers, from);
        QMouseEvent move(QEvent::MouseMove, to, chart_.mapToGlobal(to), Qt::LeftButton,
                         Qt::LeftButton, modifiers);
        QCoreApplication::sendEvent(&chart_, &move);
        QTest::mouseRelease(&chart_, Qt::LeftButton, modifiers, to);
        Settle();
    }

    AmericanClock clock_;
    PlotChart chart_{clock_, nullptr};
    std::shared_ptr<const NamedSeries> hill_ = Shared("Hill Tanks", TwoDays());
    int parts_ = 0;
    int cursors_ = 0;
};

TEST_F(PlotChartTest, DrawsAGapAsAGap) {
    Show({{hill_, 0}});
    EXPECT_GT(Drawn(0, SomeDay + 8 * SecondsPerHour, SomeDay + 9 * SecondsPerHour), 20);
    EXPECT_EQ(Drawn(0, SomeDay + 10 * SecondsPerHour, SomeDay + 13 * SecondsPerHour + 1800), 0);
    EXPECT_GT(Drawn(0, SomeDay + 15 * SecondsPerHour, SomeDay + 16 * SecondsPerHour), 20);
}

TEST_F(PlotChartTest, APlaceWithoutRecordsStaysBlankAndSaysWhy) {
    Show({});
    const QImage blank = Seen();
    chart_.SetNote(QStringLiteral("No line is checked."));
    EXPECT_NE(Seen(), blank);
    chart_.SetNote(QString());
    EXPECT_EQ(Seen(), blank);
}

TEST_F(PlotChartTest, EachUnitHasAnAxisAndLinesOfAUnitShareOne) {
    Show({{hill_, 0}, {hill_, 1}, {hill_, 3}, {Shared("Mill", TwoDays(20)), 0}});
    ASSERT_EQ(chart_.Ranges().size(), 3U);
    const ValueRange feet = chart_.Ranges().at("Feet");
    EXPECT_LT(feet.Lowest, 10.1);
    EXPECT_GT(feet.Highest, 89.9);
    EXPECT_TRUE(chart_.Ranges().contains("GPM"));
    EXPECT_TRUE(chart_.Ranges().contains("Deg C"));
}

TEST_F(PlotChartTest, TheWheelZoomsTimeAtThePointer) {
    Show({{hill_, 0}});
    const int x = XOf(SomeDay + SecondsPerDay);
    const Moment width = chart_.Shown().Width();
    Turn({x, 200}, 240);
    EXPECT_NEAR(static_cast<double>(chart_.Shown().Width()), static_cast<double>(width) * 0.64, 2);
    EXPECT_NEAR(XOf(SomeDay + SecondsPerDay), x, 1);
    EXPECT_GT(parts_, 0);
    Turn({x, 200}, -1200);
    EXPECT_TRUE(chart_.View().ShowsAll());
}

TEST_F(PlotChartTest, TheWheelZoomsValuesWithControl) {
    Show({{hill_, 0}});
    const ValueRange before = chart_.Ranges().at("Feet");
    Turn({300, chart_.Area().bottom()}, 120, Qt::ControlModifier);
    const ValueRange after = chart_.Ranges().at("Feet");
    EXPECT_NEAR(after.Lowest, before.Lowest, 0.1);
    EXPECT_NEAR(after.Highest - after.Lowest, (before.Highest - before.Lowest) * 0.8, 0.1);
    EXPECT_EQ(chart_.Shown().Width(), DayEnd);
    chart_.ZoomAll();
    EXPECT_EQ(chart_.Ranges().at("Feet").Highest, before.Highest);
}

TEST_F(PlotChartTest, ADragPansAndOneTurnOfTheWheelIsTakenBackAtOnce) {
    Show({{hill_, 0}});
    Turn({450, 200}, 480);
    Turn({450, 200}, 480);
    const PlotPart zoomed = chart_.Shown();
    DragTo({500, 200}, {400, 200});
    EXPECT_GT(chart_.Shown().From, zoomed.From);
    EXPECT_EQ(chart_.Shown().Width(), zoomed.Width());
    chart_.ZoomBack();
    EXPECT_EQ(chart_.Shown(), zoomed);
    chart_.ZoomBack();
    EXPECT_TRUE(chart_.View().ShowsAll());
    EXPECT_FALSE(chart_.View().CanGoBack());
}

TEST_F(PlotChartTest, ShiftAndDragSelectsAPeriod) {
    Show({{hill_, 0}});
    const Moment from = SomeDay + 6 * SecondsPerHour;
    const Moment to = SomeDay + 18 * SecondsPerHour;
    const Moment pixel = DayEnd / chart_.Area().width() + 1;
    DragTo({XOf(to), 100}, {XOf(from), 300}, Qt::ShiftModifier);
    EXPECT_NEAR(static_cast<double>(chart_.Shown().From), static_cast<double>(from), double(pixel));
    EXPECT_NEAR(static_cast<double>(chart_.Shown().To), static_cast<double>(to), double(pixel));
    chart_.ZoomAll();
    chart_.SetChoosing(true);
    DragTo({XOf(from), 100}, {XOf(to), 300});
    EXPECT_NEAR(static_cast<double>(chart_.Shown().To), static_cast<double>(to), double(pixel));
}

TEST_F(PlotChartTest, TheCursorFollowsThePointerToTheNearestRecord) {
    Show({{hill_, 0}});
    QTest::mouseMove(&chart_, {XOf(SomeDay + 3 * SecondsPerHour) + 2, 200});
    Settle();
    ASSERT_TRUE(chart_.Cursor());
    EXPECT_EQ(*chart_.Cursor() % 900, 0);
    EXPECT_NEAR(static_cast<double>(*chart_.Cursor() - SomeDay), 3.0 * SecondsPerHour, 1000);
    EXPECT_GT(cursors_, 0);
    const QImage here = Seen();
    QTest::mouseMove(&chart_, {XOf(SomeDay + 5 * SecondsPerHour), 200});
    EXPECT_NE(Seen(), here);
}

TEST_F(PlotChartTest, KeysMoveTheCursorFromRecordToRecord) {
    Show({{hill_, 0}});
    Press(Qt::Key_Home);
    EXPECT_EQ(chart_.Cursor(), SomeDay);
    Press(Qt::Key_Right);
    EXPECT_EQ(chart_.Cursor(), SomeDay + 900);
    Press(Qt::Key_Right, Qt::ControlModifier);
    EXPECT_GE(*chart_.Cursor(), SomeDay + 900 + DayEnd / 10);
    Press(Qt::Key_Left, Qt::ControlModifier);
    EXPECT_LE(*chart_.Cursor(), SomeDay + 900);
    Press(Qt::Key_End);
    EXPECT_EQ(chart_.Cursor(), SomeDay + 191 * 900 - SecondsPerHour);
    Press(Qt::Key_Right);
    EXPECT_EQ(chart_.Cursor(), SomeDay + 191 * 900 - SecondsPerHour);
}

TEST_F(PlotChartTest, KeysZoomAtTheCursorPanAndGoBack) {
    Show({{hill_, 0}});
    Press(Qt::Key_End);
    Press(Qt::Key_Plus);
    Press(Qt::Key_Plus);
    const PlotPart end = chart_.Shown();
    EXPECT_NEAR(static_cast<double>(end.Width()), DayEnd / 4.0, 2);
    EXPECT_TRUE(end.ShareOf(*chart_.Cursor()));
    Press(Qt::Key_PageUp);
    EXPECT_LT(chart_.Shown().From, end.From);
    Press(Qt::Key_PageDown);
    EXPECT_EQ(chart_.Shown(), end);
    Press(Qt::Key_Home);
    EXPECT_TRUE(chart_.Shown().ShareOf(SomeDay)) << "the cursor is shown";
    Press(Qt::Key_Minus);
    EXPECT_GT(chart_.Shown().Width(), end.Width());
    const ValueRange before = chart_.Ranges().at("Feet");
    Press(Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_LT(chart_.Ranges().at("Feet").Highest, before.Highest);
    const ValueRange zoomed = chart_.Ranges().at("Feet");
    Press(Qt::Key_Up);
    EXPECT_GT(chart_.Ranges().at("Feet").Lowest, zoomed.Lowest);
    while (chart_.View().CanGoBack()) {
        Press(Qt::Key_Backspace);
    }
    EXPECT_TRUE(chart_.View().ShowsAll());
}

TEST_F(PlotChartTest, MarksStandAtTheirTimes) {
    Show({{hill_, 0}});
    const Moment back = SomeDay + 120 * 900 - SecondsPerHour;
    const QRect area = chart_.Area();
    const QImage seen = Seen();
    const auto dashes = [&](Moment at) {
        int count = 0;
        const QColor ground = chart_.palette().color(QPalette::Base);
        for (int y = area.top() + 20; y < area.bottom() - 20; ++y) {
            count += seen.pixelColor(XOf(at), y) != ground ? 1 : 0;
        }
        return count;
    };
    EXPECT_GT(dashes(back), area.height() / 4) << "clock set back";
    EXPECT_GT(dashes(SomeDay + 14 * SecondsPerHour), area.height() / 4) << "alarm 1";
    EXPECT_LT(dashes(SomeDay + 12 * SecondsPerHour - 300), area.height() / 8);
}

TEST_F(PlotChartTest, TakesTheColoursOfTheDesktopWhenTheyChange) {
    Show({{hill_, 0}});
    for (const QPalette& palette : {DeskPalette(true), DeskPalette(false)}) {
        chart_.setPalette(palette);
        const QImage seen = Seen();
        const QColor ground = palette.color(QPalette::Base);
        EXPECT_EQ(seen.pixelColor(chart_.Area().right() - 3, chart_.Area().top() + 3).rgb(),
                  ground.rgb());
        EXPECT_GT(PixelsOf(seen, ColourOf(0)), 200);
    }
}

TEST_F(PlotChartTest, LooksDifferAndStandOutFromTheirGround) {
    const auto luminance = [](QColor colour) {
        const auto part = [](double value) {
            return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * part(colour.redF()) + 0.7152 * part(colour.greenF()) +
               0.0722 * part(colour.blueF());
    };
    const auto contrast = [&](QColor a, QColor b) {
        const double high = std::max(luminance(a), luminance(b)) + 0.05;
        return high / (std::min(luminance(a), luminance(b)) + 0.05);
    };
    std::set<std::pair<std::uint32_t, int>> looks;
    for (std::size_t look = 0; look < PlotLooks; ++look) {
        const PlotLook told = PlotLookOf(look);
        EXPECT_TRUE(looks.emplace(told.OnLight, static_cast<int>(told.Marker)).second) << look;
        EXPECT_GE(contrast(QColor::fromRgb(told.OnLight), Qt::white), 3.5) << look;
        EXPECT_GE(contrast(QColor::fromRgb(told.OnDark), QColor(35, 35, 35)), 4.5) << look;
    }
}

// ----- on paper

TEST_F(PlotChartTest, SavesADrawingOfVectorsWithTextsAndLegend) {
    Show({{hill_, 0}, {hill_, 3}, {Shared("Mill & Race", TwoDays(20)), 0}});
    chart_.SetTitle(QStringLiteral("Plot of Hill Tanks"));
    QXmlStreamReader reader(PlotBytes(chart_, PlotFormat::Svg, QStringLiteral("Hill")));
    QString texts;
    int lines = 0;
    while (!reader.atEnd()) {
        reader.readNext();
        lines += reader.isStartElement() && reader.name() == QLatin1String("polyline") ? 1 : 0;
        EXPECT_NE(reader.name(), QLatin1String("image"));
        if (reader.isCharacters()) {
            texts += reader.text();
        }
    }
    EXPECT_FALSE(reader.hasError()) << FromQt(reader.errorString());
    EXPECT_GE(lines, 4);
    for (const char* text :
         {"Plot of Hill Tanks", "Hill Tanks: Channel 1 (Feet)", "Hill Tanks: Flow (GPM)",
          "Mill & Race: Channel 1 (Feet)", "1/14/24", "06:00", "40", "20000", "set back"}) {
        EXPECT_TRUE(texts.contains(QLatin1String(text))) << text << FromQt(texts);
    }
}

TEST_F(PlotChartTest, SavesAPictureThatIsBlackOnWhiteWhateverTheDesktopIs) {
    Show({{hill_, 0}});
    chart_.setPalette(DeskPalette(true));
    const QImage picture = QImage::fromData(PlotBytes(chart_, PlotFormat::Png, QString()), "PNG");
    ASSERT_FALSE(picture.isNull());
    EXPECT_EQ(picture.size(), chart_.size() * 2);
    EXPECT_EQ(picture.pixelColor(2, 2), QColor(Qt::white));
    EXPECT_GT(PixelsOf(picture, QColor::fromRgb(PlotLookOf(0).OnLight)), 500);
}

TEST_F(PlotChartTest, FillsTheSameRectangleOnFinePaper) {
    Show({{hill_, 0}});
    constexpr int Fine = 4;
    QImage paper(1000 * Fine, 700 * Fine, QImage::Format_RGB32);
    paper.setDotsPerMeterX(3780 * Fine);
    paper.setDotsPerMeterY(3780 * Fine);
    paper.fill(Qt::white);
    QPainter painter(&paper);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRect where = QRect(100 * Fine, 100 * Fine, 800 * Fine, 500 * Fine);
    chart_.PaintOn(painter, where);
    painter.end();
    const QColor line = QColor::fromRgb(PlotLookOf(0).OnLight);
    const int all = PixelsOf(paper, line);
    EXPECT_GT(all, 4000);
    EXPECT_EQ(PixelsOf(paper, line, where), all);
    EXPECT_GT(PixelsOf(paper, line, where.adjusted(700 * Fine, 0, 0, 0)), all / 20);
    EXPECT_GT(PixelsOf(paper, line, where.adjusted(0, 300 * Fine, 0, 0)), all / 10);
    EXPECT_GT(PixelsOf(paper, Qt::black, where.adjusted(0, 460 * Fine, 0, 0)), 100) << "legend";
}

TEST_F(PlotChartTest, SavesADocumentOfOnePage) {
    Show({{hill_, 0}});
    const QByteArray bytes = PlotBytes(chart_, PlotFormat::Pdf, QStringLiteral("Hill"));
    EXPECT_TRUE(bytes.startsWith("%PDF"));
    EXPECT_TRUE(bytes.contains("%%EOF"));
    EXPECT_EQ(bytes.count("/Type /Page\n"), 1);
}

}  // namespace
}  // namespace plot_testing
