#include <QAccessible>
#include <QFile>
#include <QImage>
#include <QPdfWriter>
#include <map>

#include "archive/plot_looks.h"
#include "frmPlot_fixture.h"

namespace plot_testing {
namespace {

TEST_F(PlotFormTest, BeginsWithChannelOneAndFlowOverAllOfTheTime) {
    Open({hill_});
    EXPECT_EQ(FromQt(form_->windowTitle()), "Plot of Hill Tanks");
    EXPECT_EQ(Rows(), (std::vector<std::string>{"Channel 1 (Feet) x ", "Channel 2 (Deg C) ",
                                                "Pulse Chan 1 (Gal) ", "Flow (GPM) x "}));
    EXPECT_EQ(Chart().Shown().From, SomeDay);
    EXPECT_EQ(Chart().Shown().To, SomeDay + 191 * 900 - SecondsPerHour);
    EXPECT_FALSE(Control("cmdBack")->isEnabled());
    EXPECT_FALSE(Control("cmdAll")->isEnabled());
}

TEST_F(PlotFormTest, ShowsThePeriodThatItWasOpenedFor) {
    Open({hill_}, {SomeDay + 3600, SomeDay + 7200});
    EXPECT_EQ(Chart().Shown().From, SomeDay + 3600);
    EXPECT_EQ(Chart().Shown().To, SomeDay + 7199);
}

TEST_F(PlotFormTest, LinesAreCheckedByTheKeyboardAndShown) {
    Open({hill_});
    auto* list = Control<QTreeWidget>("lvwLines");
    list->setFocus();
    list->setCurrentItem(Row("Channel 2 (Deg C)"));
    Press(Qt::Key_Space);
    ASSERT_EQ(Chart().Scene().Lines().size(), 3U);
    EXPECT_EQ(Chart().Scene().TitleOf(1), "Channel 2 (Deg C)");
    EXPECT_EQ(Chart().Scene().LookOf(2), 3U) << "looks stay with their lines";
    for (const char* title : {"Channel 1 (Feet)", "Channel 2 (Deg C)", "Flow (GPM)"}) {
        Row(title)->setCheckState(0, Qt::Unchecked);
    }
    EXPECT_TRUE(Chart().Scene().Lines().empty());
}

TEST_F(PlotFormTest, ReadsAllLinesAtTheCursorInTheViewersTexts) {
    Open({hill_});
    Press(Qt::Key_Home);
    EXPECT_EQ(LabelText("lblCursor"), "Cursor: 1/14/24 00:00:00");
    const std::vector<std::string> rows = Rows();
    EXPECT_EQ(rows[0], "Channel 1 (Feet) x 50.00 Feet");
    EXPECT_EQ(rows[1], "Channel 2 (Deg C) ");
    EXPECT_EQ(rows[3].substr(0, 13), "Flow (GPM) x ");
    EXPECT_TRUE(rows[3].ends_with(" GPM"));
    Press(Qt::Key_Right);
    EXPECT_EQ(LabelText("lblCursor"), "Cursor: 1/14/24 00:15:00");
    EXPECT_NE(Rows(), rows);
}

TEST_F(PlotFormTest, SaysWhereThereIsNoRecord) {
    Open({hill_});
    Chart().SetCursor(SomeDay + 12 * SecondsPerHour);
    EXPECT_EQ(Rows()[0], "Channel 1 (Feet) x no record");
}

TEST_F(PlotFormTest, ExplainsMarksAtTheCursor) {
    Open({hill_});
    const Moment back = SomeDay + 120 * 900 - SecondsPerHour;
    Chart().SetCursor(back);
    EXPECT_EQ(LabelText("lblMarks"),
              "Clock Set Back 1/15/24 05:00:00: The logger's clock was set "
              "back to this time.");
    Chart().SetCursor(SomeDay + 14 * SecondsPerHour);
    EXPECT_EQ(LabelText("lblMarks"), "Alarm 1 1/14/24 14:00:00: Alarm 1 started the sampling.");
    Chart().SetCursor(SomeDay + 4 * SecondsPerHour);
    EXPECT_EQ(LabelText("lblMarks"), "");
}

TEST_F(PlotFormTest, TellsScreenReadersWhatIsUnderTheCursor) {
    Open({hill_});
    Press(Qt::Key_Home);
    QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(&Chart());
    EXPECT_EQ(FromQt(reader->text(QAccessible::Name)), "Plot");
    const std::string told = FromQt(reader->text(QAccessible::Description));
    EXPECT_EQ(told.substr(0, told.find(", ")), "1/14/24 00:00:00: Channel 1 (Feet) 50.00 Feet");
    EXPECT_NE(told.find("Flow (GPM) "), std::string::npos);
}

TEST_F(PlotFormTest, EveryControlHasANameAndAKeyOfItsOwn) {
    Open({hill_, mill_});
    std::map<QChar, std::string> keys;
    int stops = 0;
    const auto take = [&keys](const QString& text) {
        const auto at = text.indexOf(QLatin1Char('&'));
        ASSERT_GE(at, 0) << FromQt(text);
        EXPECT_TRUE(keys.emplace(text[at + 1].toLower(), FromQt(text)).second) << FromQt(text);
    };
    for (QWidget* widget : form_->findChildren<QWidget*>()) {
        if (widget->isVisible() && (widget->focusPolicy() & Qt::TabFocus) != 0 &&
            !widget->objectName().startsWith(u"qt_")) {
            ++stops;
            EXPECT_FALSE(
                QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name).isEmpty())
                << FromQt(widget->objectName());
        }
    }
    for (const QAbstractButton* button : form_->findChildren<QAbstractButton*>()) {
        take(button->text());
    }
    take(Control<QLabel>("lblLines")->text());
    take(Control<QLabel>("lblPlot")->text());
    EXPECT_EQ(keys.size(), 10U);
    EXPECT_GE(stops, 8);
}

TEST_F(PlotFormTest, ButtonsZoomAndComeBack) {
    Open({hill_});
    const PlotPart all = Chart().Shown();
    Click("cmdIn");
    EXPECT_EQ(Chart().Shown().Width(), all.Width() / 2);
    Click("cmdIn");
    Click("cmdOut");
    EXPECT_NEAR(double(Chart().Shown().Width()), double(all.Width()) / 2, 2);
    Click("cmdBack");
    EXPECT_NEAR(double(Chart().Shown().Width()), double(all.Width()) / 4, 2);
    Click("cmdAll");
    EXPECT_EQ(Chart().Shown(), all);
    EXPECT_FALSE(Control("cmdAll")->isEnabled());
    EXPECT_TRUE(Control("cmdBack")->isEnabled());
    Click("cmdPeriod");
    EXPECT_EQ(Chart().cursor().shape(), Qt::IBeamCursor);
}

TEST_F(PlotFormTest, SeveralLoggersLieOverEachOther) {
    Open({hill_, mill_});
    EXPECT_EQ(FromQt(form_->windowTitle()), "Plot of Hill Tanks and Mill & Race");
    EXPECT_EQ(Rows().size(), 10U);
    EXPECT_EQ(Rows()[5], "Mill & Race ");
    ASSERT_EQ(Chart().Scene().Lines().size(), 4U);
    EXPECT_EQ(Chart().Scene().TitleOf(2), "Mill & Race: Channel 1 (Feet)");
    EXPECT_EQ(Chart().Ranges().size(), 2U);
    Press(Qt::Key_Home);
    EXPECT_EQ(Rows()[1], "Channel 1 (Feet) x 50.00 Feet");
    EXPECT_NE(Rows()[6], Rows()[1]);
}

TEST_F(PlotFormTest, EscapeClosesAndTheWindowGoes) {
    Open({hill_});
    Press(Qt::Key_Escape);
    EXPECT_TRUE(RunEventsUntil([this] { return form_ == nullptr; }));
}

TEST_F(PlotFormTest, ASeriesWithoutRecordsSaysSo) {
    Open({Shared("Empty", Series())});
    Press(Qt::Key_Home);
    Press(Qt::Key_Right);
    Click("cmdIn");
    EXPECT_FALSE(Chart().Cursor());
    EXPECT_TRUE(Boxes().empty());
}

// ----- keeping it

TEST_F(PlotFormTest, SavesInTheFormatOfTheExtension) {
    Open({hill_});
    for (const char* name : {"a.png", "b.SVG", "c.pdf"}) {
        Pick(name);
        Click("cmdSave");
        EXPECT_EQ(LabelText("lblState"), "Saved: " + PathOf(name));
    }
    EXPECT_TRUE(Boxes().empty());
    EXPECT_GT(PixelsOf(QImage(ToQt(PathOf("a.png"))), QColor::fromRgb(PlotLookOf(0).OnLight)), 500);
    const auto contents = [this](const char* name) {
        QFile file(ToQt(PathOf(name)));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    };
    EXPECT_TRUE(contents("b.SVG").contains("Channel 1 (Feet)"));
    EXPECT_TRUE(contents("c.pdf").startsWith("%PDF"));
    const FileQuery& asked = host_.Dialogs.Queries.front();
    EXPECT_EQ(asked.InitialName, PathOf("Hill Tanks 20261115-0830.png"));
    EXPECT_EQ(asked.DefaultExtension, ".png");
    EXPECT_TRUE(host_.Dialogs.Prompts.front());
    EXPECT_EQ(lastFolder_, folder_);
}

TEST_F(PlotFormTest, TellsWhatCouldNotBeSaved) {
    Open({hill_});
    const std::string before = LabelText("lblState");
    Pick("a.bmp");
    Click("cmdSave");
    ASSERT_EQ(Boxes().size(), 1U);
    EXPECT_NE(Boxes()[0].Text.find("ends in none of them:\n" + PathOf("a.bmp")), std::string::npos);
    Pick("no such folder/a.png");
    Click("cmdSave");
    ASSERT_EQ(Boxes().size(), 2U);
    EXPECT_EQ(Boxes()[1].Text, "Error: the plot was not saved. The file could not be written:\n" +
                                   PathOf("no such folder/a.png"));
    Click("cmdSave");  // cancelled
    EXPECT_EQ(Boxes().size(), 2U);
    EXPECT_EQ(LabelText("lblState"), before);
}

TEST_F(PlotFormTest, PrintsWhatIsShownOnThePrinterThatIsChosen) {
    Open({hill_});
    const QString file = ToQt(PathOf("printed.pdf"));
    form_->AskPaper = [&](const QString& title, QWidget* parent) {
        EXPECT_EQ(parent, form_.data());
        EXPECT_EQ(title, form_->windowTitle());
        return std::make_unique<QPdfWriter>(file);
    };
    Click("cmdPrint");
    QFile printed(file);
    ASSERT_TRUE(printed.open(QIODevice::ReadOnly));
    EXPECT_TRUE(printed.readAll().startsWith("%PDF"));
    EXPECT_EQ(LabelText("lblState"), "Printed.");
    EXPECT_TRUE(Boxes().empty());
}

TEST_F(PlotFormTest, APrinterThatTakesNothingIsTold) {
    Open({hill_});
    form_->AskPaper = [&](const QString&, QWidget*) {
        return std::make_unique<QPdfWriter>(ToQt(PathOf("no such folder/printed.pdf")));
    };
    Click("cmdPrint");
    ASSERT_EQ(Boxes().size(), 1U);
    EXPECT_EQ(Boxes()[0].Title, "Print Plot");
    form_->AskPaper = [](const QString&, QWidget*) { return nullptr; };
    Click("cmdPrint");
    EXPECT_EQ(Boxes().size(), 1U);
}

TEST_F(PlotFormTest, ClosedUnderItsOwnQuestionItUnwinds) {
    Open({hill_});
    Pick("late.png");
    host_.Dialogs.WhileShown = [this] { form_->Unload(); };
    Click("cmdSave");
    EXPECT_TRUE(FileContents(PathOf("late.png")).empty());
    EXPECT_TRUE(Boxes().empty());
}

// ----- live

class LivePlotTest : public PlotFormTest {
 protected:
    /// Readings that end now, ten seconds apart.
    std::shared_ptr<const NamedSeries> Readings(int count) {
        SeriesMaker maker(1);
        maker.Logger().SampleInterval = "1 minute";
        const Moment now = MomentOf(host_.Clock.Now());
        for (int i = 0; i < count; ++i) {
            maker.Add(now - 10 * (count - 1 - i), {i % 100});
        }
        return Shared("Hill Tanks", std::move(maker.Made));
    }
    bool Shows(std::size_t readings) {
        return RunEventsUntil([&] {
            return !Chart().Scene().Lines().empty() &&
                   Chart().Scene().Lines()[0].Series->Values().RecordCount() == readings;
        });
    }
};

TEST_F(LivePlotTest, ShowsTheLastHourAsReadingsComeIn) {
    auto newest = Readings(0);
    OpenLive([&] { return newest; });
    EXPECT_EQ(FromQt(form_->windowTitle()), "Live Plot of Hill Tanks");
    const Moment now = MomentOf(host_.Clock.Now());
    EXPECT_EQ(Chart().Shown().From, now - SecondsPerHour);
    EXPECT_EQ(Chart().Shown().To, now);
    newest = Readings(3);
    ASSERT_TRUE(Shows(3));
    Row("Channel 1 (Feet)")->setCheckState(0, Qt::Checked);
    newest = Readings(60);
    EXPECT_TRUE(Shows(60));
    host_.Clock.Start.Minute += 1;
    EXPECT_TRUE(RunEventsUntil([&] { return Chart().Shown().To == now + 60; }));
    EXPECT_TRUE(Boxes().empty());
}

TEST_F(LivePlotTest, WhatTheOperatorZoomedToStays) {
    OpenLive([this, newest = Readings(100)] { return newest; });
    ASSERT_TRUE(Shows(100));
    Press(Qt::Key_End);
    Press(Qt::Key_Plus);
    const PlotPart zoomed = Chart().Shown();
    host_.Clock.Start.Minute += 1;
    EXPECT_TRUE(RunEventsUntil([&] { return !Chart().View().ShowsAll(); }));
    QTest::qWait(100);
    EXPECT_EQ(Chart().Shown(), zoomed);
    Click("cmdAll");
    EXPECT_TRUE(RunEventsUntil([&] { return Chart().Shown().To == MomentOf(host_.Clock.Now()); }));
}

TEST_F(LivePlotTest, DrawsNothingAnewWithinASecondWithoutReading) {
    int asked = 0;
    OpenLive([&asked, newest = Readings(5)] {
        ++asked;
        return newest;
    });
    ASSERT_TRUE(Shows(5));
    int drawn = 0;
    auto told = std::move(Chart().PartChanged);
    Chart().PartChanged = [&] { ++drawn; };
    asked = 0;
    ASSERT_TRUE(RunEventsUntil([&] { return asked >= 3; }));
    EXPECT_EQ(drawn, 0);
    host_.Clock.Start.Second += 1;
    EXPECT_TRUE(RunEventsUntil([&] { return drawn > 0; }));
    Chart().PartChanged = std::move(told);
}

TEST_F(LivePlotTest, KeepsWhatItHasWhenTheClientWindowCloses) {
    std::shared_ptr<const NamedSeries> newest = Readings(5);
    OpenLive([&] { return newest; });
    ASSERT_TRUE(Shows(5));
    newest = nullptr;
    QTest::qWait(100);
    EXPECT_TRUE(Shows(5));
}

}  // namespace
}  // namespace plot_testing
