#ifndef ORVIA_TESTS_CLIENT_FRMCLIENT_FIXTURE_H
#define ORVIA_TESTS_CLIENT_FRMCLIENT_FIXTURE_H

#include <gtest/gtest.h>

#include <QApplication>
#include <QFontMetrics>
#include <QLabel>
#include <QMainWindow>
#include <QMdiArea>
#include <QPointer>
#include <QTest>
#include <QTimer>
#include <algorithm>
#include <memory>
#include <string>

#include "client/frmClient.h"
#include "client_fakes.h"
#include "platform/qt/qt_event_pump.h"
#include "platform/qt/text_qt.h"
#include "support/qt/run_events.h"

namespace client_test {

/// Real client windows in a main window on the offscreen screen, with a logger to read.
class ClientFormTest : public ::testing::Test {
 protected:
    ClientFormTest() {
        area = new QMdiArea(&mainWindow);
        mainWindow.setCentralWidget(area);
        mainWindow.resize(1000, 700);
        mainWindow.show();
        mainWindow.activateWindow();
        console.State.Outside.TickMilliseconds = 5;
        console.Logger.Settings = PipeLogger();
    }

    ~ClientFormTest() override {
        for (const auto& slot : console.State.Windows.Slots) {
            if (const auto held = slot) {
                held->Unload();
            }
        }
        console.State.Windows.Slots.clear();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    /// Opens a window for a new entry of the book, as a click on the list does.
    std::shared_ptr<frmClient> Open(const std::string& name = "North outfall") {
        auto window = frmClient::Make(console.Context);
        console.State.Windows.Slots.push_back(window);
        ClientRadio entry;
        entry.Name = name;
        entry.WindowIndex = static_cast<std::int16_t>(console.State.Windows.UpperBound());
        entry.SmallIcon = IconWindowOpen;
        console.View.AddClient(name, entry.SmallIcon);
        window->SetClientIndex(static_cast<std::int16_t>(console.State.Book.Entries.Append(entry)));
        area->addSubWindow(window.get());
        window->show();
        window->SetCaption(name);
        window->ResetDisplay();
        QCoreApplication::processEvents();
        return window;
    }

    /// The control of that name; a wrong name fails with those that exist.
    template <typename Control = QWidget>
    static Control* Find(const frmClient& window, const std::string& name) {
        auto* control = window.findChild<Control*>(ToQt(name));
        if (control == nullptr) {
            std::string names;
            for (const QWidget* child : window.findChildren<QWidget*>()) {
                names += FromQt(child->objectName()) + " ";
            }
            ADD_FAILURE() << "no control " << name << " among " << names;
        }
        return control;
    }

    static void Click(const frmClient& window, const std::string& button) {
        QTest::mouseClick(Find(window, button), Qt::LeftButton);
        QCoreApplication::processEvents();
    }

    /// A right press where that control is, as the screen delivers it.
    void RightPress(const QWidget* control) {
        const QPoint place = control->mapTo(&mainWindow, control->rect().center());
        QTest::mousePress(mainWindow.windowHandle(), Qt::RightButton, {}, place);
        QTest::mouseRelease(mainWindow.windowHandle(), Qt::RightButton, {}, place);
        QCoreApplication::processEvents();
    }

    static std::string TextOf(const QWidget* label) {
        return FromQt(qobject_cast<const QLabel*>(label)->text());
    }

    /// Lets the window's timer tick so many times, or until it rests, and runs what the ticks
    /// brought about.
    static void RunTicks(const frmClient& window, int count) {
        const auto* timer = window.findChild<QTimer*>(QStringLiteral("Timer1"));
        ASSERT_NE(timer, nullptr);
        int ticks = 0;
        const auto counting = QObject::connect(timer, &QTimer::timeout, [&ticks] { ++ticks; });
        EXPECT_TRUE(RunEventsUntil([&] { return ticks >= count || !timer->isActive(); }));
        QObject::disconnect(counting);
        QCoreApplication::processEvents();
    }

    /// Whatever is visible lies inside what holds it, and every text inside its label. The small
    /// mode leaves the information beyond the edge on purpose.
    static void ExpectNothingCutOff(const frmClient& window) {
        const QWidget* content = Find(window, "content");
        for (const QWidget* child : content->findChildren<QWidget*>()) {
            const int left = child->mapTo(content, QPoint(0, 0)).x();
            const bool beyond =
                window.Model().Record.DisplayMode == DisplaySmall && left >= content->width();
            if (!child->isVisible() || beyond) {
                continue;
            }
            EXPECT_TRUE(child->parentWidget()->rect().contains(child->geometry()))
                << FromQt(child->objectName());
            if (const auto* label = qobject_cast<const QLabel*>(child)) {
                ExpectTextFits(*label);
            }
        }
    }

    static void ExpectTextFits(const QLabel& label) {
        const int flags = label.wordWrap() ? Qt::TextWordWrap : 0;
        const QSize text =
            QFontMetrics(label.font()).boundingRect(label.rect(), flags, label.text()).size();
        EXPECT_LE(text.width(), label.width()) << FromQt(label.objectName());
        EXPECT_LE(text.height(), label.height()) << FromQt(label.objectName());
    }

    void Sample(frmClient& window, std::initializer_list<std::int32_t> raw) {
        console.State.Newest = {};
        console.State.Newest.Time = "09/30/23 12:05:09";
        std::copy(raw.begin(), raw.end(), console.State.Newest.Raw.begin());
        window.SetDP();
    }

    Console<QtEventPump> console;
    QMainWindow mainWindow;
    QMdiArea* area = nullptr;
};

}  // namespace client_test

#endif  // ORVIA_TESTS_CLIENT_FRMCLIENT_FIXTURE_H
