#include "client/frmClient.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QContextMenuEvent>
#include <QGroupBox>
#include <QImage>
#include <QLabel>
#include <QPushButton>
#include <QTextDocument>
#include <set>
#include <vector>

#include "client/layout.h"
#include "flow/flow_mode.h"
#include "frmClient_fixture.h"

namespace client_test {
namespace {

using Form = ClientFormTest;

// Counts the paints of one widget.
class PaintCounter final : public QObject {
 public:
    explicit PaintCounter(QWidget* widget) { widget->installEventFilter(this); }
    int Paints = 0;

 protected:
    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        Paints += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
};

TEST_F(Form, OpensInTheMediumModeWithEmptyReadings) {
    const auto window = Open();
    EXPECT_EQ(console.State.Windows.NumClientWindows, 1);
    EXPECT_EQ(window->height(), 416);
    EXPECT_EQ(window->width(), 389);
    EXPECT_TRUE(Find(*window, "lblData2(9)")->isVisible());
    EXPECT_FALSE(Find(*window, "fraMeter(0)")->isVisible());
    EXPECT_EQ(TextOf(Find(*window, "lblData2(0)")), "");
    EXPECT_EQ(TextOf(Find(*window, "lblData(0)")), "Channel 1");
}

struct ButtonMode {
    const char* Button;
    std::int16_t Mode;
};

class FormButtons : public ClientFormTest, public ::testing::WithParamInterface<ButtonMode> {};

TEST_P(FormButtons, ChooseTheDisplayMode) {
    const auto window = Open();
    Click(*window, GetParam().Button);
    EXPECT_EQ(window->Model().Record.DisplayMode, GetParam().Mode);
    const ModeSize& size = SizeOfMode(GetParam().Mode);
    EXPECT_EQ(window->width(), (size.Width + 14) / 15);
    EXPECT_EQ(window->height(), (size.Height + 14) / 15);
    for (const char* name : {"cmdSmall", "cmdMedium", "cmdWide", "cmdMeter", "cmdFlow"}) {
        EXPECT_EQ(Find<QPushButton>(*window, name)->isChecked(),
                  std::string(name) == GetParam().Button);
    }
}

TEST_P(FormButtons, CutNothingOff) {
    const auto window = Open();
    ASSERT_TRUE(window->GetSettings());
    Sample(*window, {32768, 30000, 30000, 65535, 65535});
    Click(*window, GetParam().Button);
    ExpectNothingCutOff(*window);
}

INSTANTIATE_TEST_SUITE_P(Five, FormButtons,
                         ::testing::Values(ButtonMode{"cmdSmall", DisplaySmall},
                                           ButtonMode{"cmdMedium", DisplayMedium},
                                           ButtonMode{"cmdWide", DisplayWide},
                                           ButtonMode{"cmdMeter", DisplayMeter},
                                           ButtonMode{"cmdFlow", DisplayFlow}),
                         [](const auto& mode) { return std::string(mode.param.Button); });

TEST_F(Form, TheSmallWindowHidesTheInformationBeyondItsEdge) {
    const auto window = Open();
    Click(*window, "cmdSmall");
    const QWidget* content = Find(*window, "content");
    const QWidget* frame = Find(*window, "fraLoggerName");
    EXPECT_TRUE(frame->isVisible());
    EXPECT_GE(frame->x(), content->width());
}

TEST_F(Form, ShowsWhatTheLoggerAnswers) {
    const auto window = Open();
    ASSERT_TRUE(window->GetSettings());
    Sample(*window, {32768, 0, 0});
    EXPECT_EQ(TextOf(Find(*window, "lblLoggerName")), "North outfall");
    EXPECT_EQ(TextOf(Find(*window, "lblData2(0)")), "1.000 Feet");
    EXPECT_EQ(window->LoggerTimeCaption(), "09/30/23 12:05:09");
    EXPECT_FALSE(Find(*window, "lblAlarm(0)")->isEnabled());
}

TEST_F(Form, AnAmpersandInNamesAndUnitsShowsAsItself) {
    console.Logger.Settings.LoggerName = "Weir & Co";
    console.Logger.Settings.EngUnits[0] = "m&m";
    const auto window = Open("A & B");
    ASSERT_TRUE(window->GetSettings());
    Sample(*window, {32768});
    EXPECT_EQ(TextOf(Find(*window, "lblLoggerName")), "Weir & Co");
    EXPECT_EQ(TextOf(Find(*window, "lblData2(0)")), "1.000 m&m");
    EXPECT_EQ(window->windowTitle(), QStringLiteral("A & B"));
    for (const QLabel* label : window->findChildren<QLabel*>()) {
        EXPECT_EQ(label->textFormat(), Qt::PlainText);
        EXPECT_EQ(label->buddy(), nullptr);
    }
}

TEST_F(Form, ATipShowsAmpersandsAndMarkupAsThemselves) {
    FlowDeviceEntry flume;
    flume.Tag = "LONG";
    flume.Name = "Flume & <b>weir</b> of the upper works, rebuilt with a throat of half the width";
    console.State.CataloguesRecord.FlumeList.Append(flume);
    console.Logger.Settings.FlowMode = FlumeMode;
    console.Logger.Settings.FlumeTag = flume.Tag;
    const auto window = Open();
    Click(*window, "cmdFlow");
    ASSERT_TRUE(window->GetSettings());
    const QWidget* label = Find(*window, "lblFWT2");
    ASSERT_EQ(TextOf(label), " " + flume.Name);
    QTextDocument tip;
    tip.setHtml(label->toolTip());
    EXPECT_EQ(FromQt(tip.toPlainText()), " " + flume.Name);
    EXPECT_TRUE(Find(*window, "lblFWT")->toolTip().isEmpty());
}

TEST_F(Form, TheCaptionOfTheDesignStandsUntilItIsSet) {
    const auto window = frmClient::Make(console.Context);
    EXPECT_EQ(window->Caption(), "Client");
    EXPECT_EQ(window->windowTitle(), QStringLiteral("Client"));
}

TEST_F(Form, ATitleWithTheMarkOfAChangedDocumentShowsAsItself) {
    const auto window = Open("Site [*] 4");
    EXPECT_EQ(window->Caption(), "Site [*] 4");
    EXPECT_EQ(window->windowTitle(), QStringLiteral("Site [*][*] 4"));
}

TEST_F(Form, TheFlowModeIsRefusedWithABoxAndTurnsIntoTheBarGraph) {
    console.Logger.Settings = FreshLogger(8, 0);
    const auto window = Open();
    ASSERT_TRUE(window->GetSettings());
    Click(*window, "cmdFlow");
    ASSERT_EQ(console.Boxes().size(), 1U);
    EXPECT_EQ(console.Boxes()[0].Title, "Flow Mode Error");
    EXPECT_TRUE(Find(*window, "fraMeter(7)")->isVisible());
    EXPECT_TRUE(Find<QPushButton>(*window, "cmdMeter")->isChecked());
}

TEST_F(Form, ActivationFollowsTheActiveChild) {
    const auto first = Open("first");
    const auto second = Open("second");
    EXPECT_EQ(first->IsActive(), False);
    EXPECT_NE(second->IsActive(), False);
    first->GiveFocus();
    QCoreApplication::processEvents();
    EXPECT_NE(first->IsActive(), False);
    EXPECT_EQ(second->IsActive(), False);
}

TEST_F(Form, ABoxInFrontLeavesTheActiveChildActive) {
    const auto window = Open();
    QWidget box;
    box.show();
    box.activateWindow();
    QCoreApplication::processEvents();
    ASSERT_TRUE(box.isActiveWindow());
    EXPECT_NE(window->IsActive(), False);
}

TEST_F(Form, ARightPressShowsTheMenuOnEveryToldControl) {
    const auto window = Open();
    ASSERT_TRUE(window->GetSettings());
    std::set<std::string> tried;
    for (const char* button : {"cmdMedium", "cmdMeter"}) {
        Click(*window, button);
        ClientPanel panel = window->Model().Panel();
        for (const ControlRow& row : ClientControls()) {
            const QWidget* control = Find(*window, ControlName(row, 0));
            if (!control->isVisible() || row.Container == "fraFlowMode") {
                continue;
            }
            const std::size_t before = console.Popup.Captions.size();
            RightPress(control);
            EXPECT_EQ(console.Popup.Captions.size() - before, row.ShowsPopup ? 1U : 0U) << row.Name;
            tried.insert(std::string(row.Name));
        }
    }
    EXPECT_GT(tried.size(), 40U);
}

TEST_F(Form, ARightPressOnTheWindowItselfShowsTheMenu) {
    const auto window = Open();
    const QWidget* content = Find(*window, "content");
    const QPoint place =
        content->mapTo(&mainWindow, content->rect().bottomLeft() + QPoint(30, -20));
    QTest::mousePress(mainWindow.windowHandle(), Qt::RightButton, {}, place);
    QTest::mouseRelease(mainWindow.windowHandle(), Qt::RightButton, {}, place);
    EXPECT_EQ(console.Popup.Captions, std::vector<std::string>{"Sample Continuously"});
}

TEST_F(Form, ARightPressOnTheFlowButtonGivesNoMenu) {
    const auto window = Open();
    RightPress(Find(*window, "cmdFlow"));
    EXPECT_TRUE(console.Popup.Captions.empty());
}

TEST_F(Form, ARightPressOnTheFlowParametersGivesNoMenu) {
    const auto window = Open();
    ASSERT_TRUE(window->GetSettings());
    Click(*window, "cmdFlow");
    ASSERT_TRUE(Find(*window, "lblFlowMode")->isVisible());
    RightPress(Find(*window, "lblFlowMode"));
    RightPress(Find(*window, "fraFlowMode"));
    EXPECT_TRUE(console.Popup.Captions.empty());
}

TEST_F(Form, OtherPressesDoNothing) {
    const auto window = Open();
    QTest::mouseClick(Find(*window, "lblData(0)"), Qt::LeftButton);
    QTest::mouseClick(Find(*window, "lblData(0)"), Qt::MiddleButton);
    EXPECT_TRUE(console.Popup.Captions.empty());
}

TEST_F(Form, WithASecondWindowActiveARightPressActivatesTheFirst) {
    const auto first = Open("first");
    const auto second = Open("second");
    area->tileSubWindows();
    QCoreApplication::processEvents();
    ASSERT_NE(second->IsActive(), False);
    QTest::mouseClick(Find(*first, "lblData(0)"), Qt::RightButton);
    EXPECT_NE(first->IsActive(), False);
    EXPECT_EQ(second->IsActive(), False);
    EXPECT_EQ(console.Popup.Captions.size(), 1U);
}

TEST_F(Form, TheMenuKeyShowsTheMenuOnceWithTheFocusWhereItWas) {
    const auto window = Open();
    QWidget* button = Find(*window, "cmdSmall");
    button->setFocus();
    QContextMenuEvent key(QContextMenuEvent::Keyboard, QPoint(), QPoint());
    QCoreApplication::sendEvent(button, &key);
    EXPECT_EQ(console.Popup.Captions.size(), 1U);
    EXPECT_EQ(QApplication::focusWidget(), button);
}

TEST_F(Form, ARightPressTakesTheFocusFromOutsideTheWindow) {
    const auto window = Open();
    QPushButton outside(&mainWindow);
    outside.show();
    outside.setFocus();
    ASSERT_EQ(QApplication::focusWidget(), &outside);
    RightPress(Find(*window, "lblData(0)"));
    const QWidget* focus = QApplication::focusWidget();
    EXPECT_TRUE(focus == window.get() || window->isAncestorOf(focus));
}

QColor PixelOfColumn(const frmClient& window, int column, double fromTop) {
    QWidget* box = window.findChild<QWidget*>(QStringLiteral("fraColumn(%1)").arg(column));
    const QImage image = box->grab().toImage();
    const ClientRecord& record = window.Model().Record;
    const double top = 120 / 15.0;
    const double height = record.BarHeight / 15.0;
    return image.pixelColor(image.width() / 2, static_cast<int>(top + height * fromTop));
}

TEST_F(Form, BarsAreFilledFromTheFootUp) {
    const auto window = Open();
    ASSERT_TRUE(window->GetSettings());
    Click(*window, "cmdMeter");
    Sample(*window, {32768, 0, 65535});
    ASSERT_TRUE(
        RunEventsUntil([&] { return PixelOfColumn(*window, 0, 0.75) == QColor(128, 128, 255); }));
    const QColor ground = window->palette().color(QPalette::Window);
    EXPECT_EQ(PixelOfColumn(*window, 0, 0.25), ground);
    EXPECT_EQ(PixelOfColumn(*window, 1, 0.9), ground);
    EXPECT_EQ(PixelOfColumn(*window, 5, 0.9), ground);
}

TEST_F(Form, FlowAndVelocityHaveTheirOwnColour) {
    const auto window = Open();
    ASSERT_TRUE(window->GetSettings());
    Click(*window, "cmdFlow");
    Sample(*window, {32768, 0, 0});
    EXPECT_TRUE(RunEventsUntil([&] {
        return PixelOfColumn(*window, 3, 0.9) == QColor(128, 0, 128) &&
               PixelOfColumn(*window, 4, 0.9) == QColor(128, 0, 128) &&
               PixelOfColumn(*window, 0, 0.9) == QColor(128, 128, 255);
    }));
}

TEST_F(Form, AStandingDisplayIsNotPaintedAgain) {
    const auto window = Open();
    ASSERT_TRUE(window->GetSettings());
    Click(*window, "cmdMeter");
    Sample(*window, {32768, 0, 0});
    RunTicks(*window, 3);
    PaintCounter content(Find(*window, "content"));
    PaintCounter column(Find(*window, "fraColumn(0)"));
    RunTicks(*window, 10);
    EXPECT_EQ(content.Paints, 0);
    EXPECT_EQ(column.Paints, 0);
}

TEST_F(Form, TheTicksRestWhenThereIsNothingToDraw) {
    const auto window = Open();
    const auto* timer = window->findChild<QTimer*>(QStringLiteral("Timer1"));
    ASSERT_NE(timer, nullptr);
    const auto rests = [timer] { return !timer->isActive(); };
    ASSERT_TRUE(RunEventsUntil(rests)) << "without settings";
    ASSERT_TRUE(window->GetSettings());
    Click(*window, "cmdMeter");
    ASSERT_TRUE(RunEventsUntil(rests)) << "with bars that stand";
    Sample(*window, {30000});
    EXPECT_TRUE(timer->isActive()) << "a bar has moved";
    ASSERT_TRUE(RunEventsUntil(rests));
    Sample(*window, {30000});
    ASSERT_TRUE(RunEventsUntil(rests)) << "it has not moved";
    Find(*window, "content")->update();
    ASSERT_TRUE(RunEventsUntil([timer] { return timer->isActive(); })) << "painting draws anew";
    ASSERT_TRUE(RunEventsUntil(rests));
    window->Unload();
    Sample(*window, {20000});
    EXPECT_FALSE(timer->isActive()) << "a closed window never ticks";
}

TEST_F(Form, AMovedBarPaintsItsColumnAndNotTheWindow) {
    console.Logger.Settings.DecPlaces[0] = 0;
    const auto window = Open();
    ASSERT_TRUE(window->GetSettings());
    Click(*window, "cmdMeter");
    for (int i = 0; i < 4; ++i) {
        Sample(*window, {32768, 0, 0});
    }
    RunTicks(*window, 3);
    PaintCounter content(Find(*window, "content"));
    PaintCounter column(Find(*window, "fraColumn(0)"));
    Sample(*window, {36000, 0, 0});  // still rounds to 1: every text stays
    ASSERT_TRUE(RunEventsUntil([&] { return column.Paints > 0; }));
    RunTicks(*window, 3);
    EXPECT_EQ(content.Paints, 0);
    EXPECT_EQ(column.Paints, 1);
}

TEST_F(Form, PaintingTheWindowDrawsEveryBarAgain) {
    const auto window = Open();
    ASSERT_TRUE(window->GetSettings());
    Click(*window, "cmdMeter");
    RunTicks(*window, 3);
    ASSERT_NE(window->Model().Record.Meters[0].LastBarTop, 0);
    Find(*window, "content")->repaint();
    EXPECT_EQ(window->Model().Record.Meters[0].LastBarTop, 0);
    EXPECT_TRUE(RunEventsUntil([&] { return window->Model().Record.Meters[7].LastBarTop != 0; }));
}

TEST_F(Form, BarsOfALoggerThatFellSilentAreGoneAfterTheNextPaint) {
    const auto window = Open();
    ASSERT_TRUE(window->GetSettings());
    Click(*window, "cmdMeter");
    Sample(*window, {65535, 0, 0});
    ASSERT_TRUE(
        RunEventsUntil([&] { return PixelOfColumn(*window, 0, 0.5) == QColor(128, 128, 255); }));
    console.Logger.Answers = false;
    EXPECT_FALSE(window->GetSettings());
    Click(*window, "cmdSmall");
    Click(*window, "cmdMeter");
    RunTicks(*window, 3);
    EXPECT_EQ(PixelOfColumn(*window, 0, 0.5), window->palette().color(QPalette::Window));
}

TEST_F(Form, ResizingByHandReturnsToTheSizeOfTheMode) {
    const auto window = Open();
    window->resize(700, 600);
    QCoreApplication::processEvents();
    EXPECT_EQ(window->width(), 389);
    EXPECT_EQ(window->height(), 416);
}

TEST_F(Form, MinimizedStaysSmallAndComesBack) {
    const auto window = Open();
    window->showMinimized();
    QCoreApplication::processEvents();
    EXPECT_TRUE(window->IsMinimized());
    EXPECT_LT(window->height(), 100);
    window->RestoreWindow();
    QCoreApplication::processEvents();
    EXPECT_FALSE(window->IsMinimized());
    EXPECT_EQ(window->height(), 416);
}

TEST_F(Form, ButtonsAreInTabOrderWithNamesAndKeys) {
    const auto window = Open();
    window->GiveFocus();
    Find(*window, "cmdSmall")->setFocus();
    for (const char* name : {"cmdSmall", "cmdMedium", "cmdWide", "cmdMeter", "cmdFlow"}) {
        auto* button = Find<QPushButton>(*window, name);
        EXPECT_EQ(QApplication::focusWidget(), button) << name;
        EXPECT_FALSE(button->accessibleName().isEmpty()) << name;
        EXPECT_TRUE(button->toolTip().contains(button->accessibleName())) << name;
        EXPECT_FALSE(button->icon().isNull()) << name;
        EXPECT_FALSE(button->icon().pixmap(16, 16).isNull()) << name;
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
}

TEST_F(Form, EnterPressesTheButtonThatHasTheFocus) {
    const auto window = Open();
    window->GiveFocus();
    Find(*window, "cmdMeter")->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_EQ(window->Model().Record.DisplayMode, DisplayMeter);
}

TEST_F(Form, AKeyChoosesTheModeOfTheActiveWindowAlone) {
    const auto first = Open("first");
    const auto second = Open("second");
    second->GiveFocus();
    Find(*second, "cmdMedium")->setFocus();
    QTest::keyClick(mainWindow.windowHandle(), Qt::Key_4, Qt::AltModifier);
    EXPECT_TRUE(RunEventsUntil([&] { return second->Model().Record.DisplayMode == DisplayMeter; }));
    EXPECT_EQ(first->Model().Record.DisplayMode, DisplayMedium);
}

TEST_F(Form, LabelsThatChangeSayWhatTheyShowAndKeepTheirTextAsName) {
    const auto window = Open();
    const QWidget* reading = Find(*window, "lblData2(0)");
    EXPECT_EQ(FromQt(reading->accessibleDescription()), "Channel 1 reading");
    EXPECT_EQ(FromQt(reading->accessibleName()), "");
}

TEST_F(Form, NoWordsForAScreenReaderAreMarkup) {
    const auto window = Open();
    ASSERT_TRUE(window->GetSettings());
    int captionsWithTip = 0;
    for (const char* mode : {"cmdSmall", "cmdMedium", "cmdWide", "cmdMeter", "cmdFlow"}) {
        Click(*window, mode);
        for (QLabel* label : window->findChildren<QLabel*>()) {
            const std::string words = FromQt(
                QAccessible::queryAccessibleInterface(label)->text(QAccessible::Description));
            EXPECT_EQ(words.find('<'), std::string::npos) << words << " in " << mode;
            const bool captionIsCut = !label->toolTip().isEmpty() && words == TextOf(label);
            captionsWithTip += captionIsCut ? 1 : 0;
        }
    }
    EXPECT_GT(captionsWithTip, 0) << "a caption that is cut has a tip, and says it in plain words";
}

TEST_F(Form, ColumnsFourAndFiveSayWhatTheyShowInTheFlowMode) {
    const auto window = Open();
    const auto says = [&](const char* name) {
        return FromQt(Find(*window, name)->accessibleDescription());
    };
    EXPECT_EQ(says("lblValue(3)"), "Column 4 reading");
    Click(*window, "cmdFlow");
    EXPECT_EQ(says("lblValue(2)"), "Column 3 reading");
    EXPECT_EQ(says("lblValue(3)"), "Flow reading");
    EXPECT_EQ(says("lblUnits(4)"), "Velocity units");
    EXPECT_EQ(says("fraColumn(4)"), "Velocity bar");
    Click(*window, "cmdMeter");
    EXPECT_EQ(says("lblValue(3)"), "Column 4 reading");
}

TEST_F(Form, TheIconTellsWhoIsAddressed) {
    const auto window = Open();
    const qint64 open = window->windowIcon().cacheKey();
    window->ShowIcon(IconAddressed);
    EXPECT_NE(window->windowIcon().cacheKey(), open);
    EXPECT_FALSE(window->windowIcon().pixmap(16, 16).isNull());
}

TEST_F(Form, AnotherFontKeepsEverythingInView) {
    const auto window = Open();
    ASSERT_TRUE(window->GetSettings());
    QFont large = window->font();
    large.setPixelSize(24);
    window->setFont(large);
    Click(*window, "cmdMeter");
    const QWidget* content = Find(*window, "content");
    EXPECT_GT(window->width(), 641);
    const QWidget* last = Find(*window, "fraMeter(7)");
    EXPECT_TRUE(content->rect().contains(last->geometry()));
    EXPECT_TRUE(content->rect().contains(Find(*window, "lblAlarm2(1)")->geometry()));
}

}  // namespace
}  // namespace client_test
