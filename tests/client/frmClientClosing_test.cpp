#include <gtest/gtest.h>

#include <QPointer>
#include <QStyleOptionTitleBar>
#include <QTimer>
#include <QWindow>

#include "client/frmClient.h"
#include "flow/flow_mode.h"
#include "frmClient_fixture.h"

// A window that goes while somebody still works on it.

namespace client_test {
namespace {

using Form = ClientFormTest;

TEST_F(Form, TheCloseBoxUnloadsAndLeavesTheArea) {
    auto window = Open();
    const QPointer<frmClient> watch(window.get());
    window->close();
    EXPECT_EQ(console.State.Windows.NumClientWindows, 0);
    EXPECT_EQ(console.State.Windows.At(0), nullptr);
    EXPECT_EQ(console.State.Book.Entries[1].WindowIndex, NoWindow);
    EXPECT_EQ(console.View.Clients[0].Icon, IconNoWindow);
    EXPECT_TRUE(area->subWindowList().isEmpty());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_NE(watch, nullptr);
    window.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(watch, nullptr);
}

TEST_F(Form, BehindAClickOnTheTitleOneClickOnTheCloseBoxIsEnough) {
    const auto window = Open();
    QStyleOptionTitleBar bar;
    bar.initFrom(window.get());
    bar.subControls = QStyle::SC_All;
    bar.titleBarFlags = window->windowFlags();
    bar.titleBarState = Qt::WindowActive;
    const QStyle* style = window->style();
    const int height = style->pixelMetric(QStyle::PM_TitleBarHeight, &bar, window.get());
    bar.rect = QRect(0, 0, window->width(), height);
    const QPoint box = style
                           ->subControlRect(QStyle::CC_TitleBar, &bar,
                                            QStyle::SC_TitleBarCloseButton, window.get())
                           .center();
    QWindow* whole = area->window()->windowHandle();
    const auto click = [&](const QPoint& place) {
        QTest::mouseMove(whole, window->mapTo(area->window(), place));
        QTest::mouseClick(whole, Qt::LeftButton, {}, window->mapTo(area->window(), place));
    };
    click(QPoint(window->width() / 2, height / 2));
    EXPECT_EQ(console.State.Windows.NumClientWindows, 1);
    click(box);
    EXPECT_EQ(console.State.Windows.NumClientWindows, 0);
}

TEST_F(Form, AMainWindowThatGoesFirstTakesTheWindowWithIt) {
    auto window = Open();
    const QPointer<frmClient> watch(window.get());
    console.State.Windows.Slots.clear();
    delete area;
    EXPECT_EQ(watch, nullptr);
    window.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

TEST_F(Form, AClosedWindowStillAnswersWithoutAScreen) {
    const auto window = Open();
    window->Unload();
    EXPECT_TRUE(window->GetSettings());
    EXPECT_TRUE(window->GetStatus());
    EXPECT_TRUE(window->GetTime());
    EXPECT_TRUE(window->ResetPulseAccs());
    Sample(*window, {1});
    window->ResetDisplay();
    window->UpdateFlowModeDisplay();
    window->SetCaption("gone");
    window->ShowIcon(IconAddressed);
    window->GiveFocus();
    EXPECT_EQ(window->IsActive(), False);
    EXPECT_EQ(TextOf(Find(*window, "lblLoggerName")), "");
    EXPECT_FALSE(window->isVisible());
}

// The wait of an operation in which the operator closes the window: by number, from 1.
class FormClosing : public ClientFormTest, public ::testing::WithParamInterface<int> {
 protected:
    // Runs `method` on a window that nobody but its slot holds, and closes it in the wait. True
    // if the operation got that far.
    template <typename Method>
    bool ClosedInside(Method method) {
        auto window = Open();
        frmClient* const bare = window.get();
        const QPointer<frmClient> watch(bare);
        window.reset();
        int wait = 0;
        console.Logger.InEveryWait = [&] {
            QCoreApplication::processEvents();
            if (++wait == GetParam() && watch != nullptr) {
                watch->close();
            }
        };
        EXPECT_TRUE(method(*bare));
        console.Logger.InEveryWait = nullptr;
        const bool closed = wait >= GetParam();
        EXPECT_EQ(console.State.Windows.NumClientWindows, closed ? 0 : 1);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_EQ(watch == nullptr, closed);
        return closed;
    }
};

TEST_P(FormClosing, InsideGetSettings) {
    EXPECT_TRUE(ClosedInside([](frmClient& window) { return window.GetSettings(); }));
}

TEST_P(FormClosing, InsideGetSettingsOfAFlowWindow) {
    console.Logger.Settings = FreshLogger(8, 2);
    EXPECT_TRUE(ClosedInside([](frmClient& window) {
        Click(window, "cmdFlow");
        return window.GetSettings();
    }));
    EXPECT_TRUE(console.Boxes().empty());
}

TEST_P(FormClosing, InsideGetSettingsOfAnUnknownFlume) {
    console.Logger.Settings.FlowMode = FlumeMode;
    console.Logger.Settings.FlumeTag = "GONE";
    EXPECT_TRUE(ClosedInside([](frmClient& window) { return window.GetSettings(); }));
    EXPECT_TRUE(console.Boxes().empty());
}

TEST_P(FormClosing, InsideGetStatusGetTimeOrResetPulseAccs) {
    const bool reached = GetParam() <= 2;
    EXPECT_EQ(ClosedInside([](frmClient& window) { return window.GetStatus(); }), reached);
    console.State.Windows.NumClientWindows = 0;
    EXPECT_EQ(ClosedInside([](frmClient& window) { return window.GetTime(); }), reached);
    console.State.Windows.NumClientWindows = 0;
    EXPECT_EQ(ClosedInside([](frmClient& window) { return window.ResetPulseAccs(); }), reached);
}

INSTANTIATE_TEST_SUITE_P(EveryWait, FormClosing, ::testing::Range(1, 13));

TEST_F(Form, ClosedBehindTheBoxOfTheFlowCheck) {
    console.Logger.Settings = FreshLogger(8, 0);
    auto window = Open();
    ASSERT_TRUE(window->GetSettings());
    const QPointer<frmClient> watch(window.get());
    QWidget* button = Find(*window, "cmdFlow");
    console.Outside.Boxes.WhileShown = [&] { watch->close(); };
    window.reset();
    QTest::mouseClick(button, Qt::LeftButton);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(watch, nullptr);
    EXPECT_EQ(console.Boxes().size(), 1U);
}

// A window in the flow mode that nobody but its slot holds, on a logger whose settings need a box.
class FormBehindABox : public ClientFormTest {
 protected:
    // Reads the settings, runs `act` on the window behind the box, and names that box.
    template <typename Act>
    std::string ReadBehindTheBox(Act act) {
        auto window = Open();
        Click(*window, "cmdFlow");
        const QPointer<frmClient> watch(window.get());
        frmClient* const bare = window.get();
        window.reset();
        console.Outside.Boxes.WhileShown = [&] { act(*watch); };
        EXPECT_TRUE(bare->GetSettings());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_EQ(watch, nullptr);
        EXPECT_EQ(console.Boxes().size(), 1U);
        return console.Boxes().at(0).Title;
    }
    void UseUnknownFlumeOnEightChannels() {
        console.Logger.Settings = FreshLogger(8, 0);
        console.Logger.Settings.FlowMode = FlumeMode;
        console.Logger.Settings.FlumeTag = "GONE";
    }
};

TEST_F(FormBehindABox, ClosedBehindAnUnknownFlumeInsideGetSettings) {
    UseUnknownFlumeOnEightChannels();
    EXPECT_EQ(ReadBehindTheBox([](frmClient& window) { window.close(); }), "Bad Flume Tag");
}

TEST_F(FormBehindABox, ShutDownBehindAnUnknownFlumeInsideGetSettings) {
    UseUnknownFlumeOnEightChannels();
    EXPECT_EQ(ReadBehindTheBox([this](frmClient& window) {
                  console.State.LinkRecord.ShuttingDown = True;
                  window.Unload();
              }),
              "Bad Flume Tag");
}

TEST_F(FormBehindABox, ClosedBehindTheFlowCheckInsideGetSettings) {
    console.Logger.Settings = FreshLogger(8, 0);
    EXPECT_EQ(ReadBehindTheBox([](frmClient& window) { window.close(); }), "Flow Mode Error");
}

TEST_F(FormBehindABox, ShutDownBehindTheFlowCheckInsideGetSettings) {
    console.Logger.Settings = FreshLogger(8, 0);
    EXPECT_EQ(ReadBehindTheBox([this](frmClient& window) {
                  console.State.LinkRecord.ShuttingDown = True;
                  window.Unload();
              }),
              "Flow Mode Error");
}

TEST_F(Form, ClosedWhileItWaitsForItsActivation) {
    auto window = Open();
    const QPointer<frmClient> watch(window.get());
    QWidget* label = Find(*window, "lblData(0)");
    QTimer closing;
    QObject::connect(&closing, &QTimer::timeout, window.get(), &QWidget::close);
    closing.setSingleShot(true);
    closing.start(0);
    window.reset();
    QTest::mousePress(label, Qt::RightButton);
    // The button comes up again, or it would count as held in every test behind this one.
    QTest::mouseRelease(&mainWindow, Qt::RightButton);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(watch, nullptr);
    EXPECT_TRUE(console.Popup.Captions.empty());
}

}  // namespace
}  // namespace client_test
