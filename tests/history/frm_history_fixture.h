#ifndef ORVIA_TESTS_HISTORY_FRM_HISTORY_FIXTURE_H
#define ORVIA_TESTS_HISTORY_FRM_HISTORY_FIXTURE_H

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QPushButton>
#include <QTest>
#include <algorithm>
#include <functional>
#include <memory>
#include <string>

#include "history/frmGetHistory.h"
#include "history/frmGetHistoryData.h"
#include "history/frmHistory.h"
#include "history/frmHistoryList.h"
#include "history/sample_history.h"
#include "support/qt/find_control.h"
#include "support/qt/modal_answer.h"
#include "support/virtual_console.h"

namespace testing_support {

inline void Click(const QWidget& window, const std::string& button) {
    QTest::mouseClick(Find(window, button), Qt::LeftButton);
}

#if defined(__SANITIZE_ADDRESS__)
inline constexpr bool Sanitized = true;
#else
inline constexpr bool Sanitized = false;
#endif

/// Takes every dialog off the screen, as the program does when it closes.
inline void CloseEveryDialog() {
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        auto* dialog = qobject_cast<QDialog*>(widget);
        if (dialog != nullptr && dialog->isVisible()) {
            dialog->done(QDialog::Rejected);
        }
    }
}

/// The longest of some durations; measured again, up to three times in all, while it is above
/// `limit`. What another program does to one round it hardly does to three.
template <typename Time, typename Round>
[[nodiscard]] Time LongestWithin(Time limit, Round round) {
    Time longest = round();
    for (int again = 0; again < 2 && longest >= limit; ++again) {
        longest = std::min(longest, round());
    }
    return longest;
}

/// Real windows of history on the offscreen screen, above the console on the virtual host.
class HistoryFormTest : public testing::Test {
 protected:
    /// A logger with so many records in its memory, its window open.
    void Connect(std::uint32_t records, int analog = 2, int pulse = 1) {
        simulator::LoggerSetup setup = BasicSite(1, analog, pulse);
        setup.Logging = false;
        setup.HistoryRecords = records;
        Connect(setup);
    }
    void Connect(const simulator::LoggerSetup& setup) {
        console.Connect();
        console.AddSite(setup);
        logger = console.Outside.Network.FindLogger("Site 1");
        window = console.OpenWindow(1);
    }

    /// The logger's window, or one that is in no slot if none is connected.
    [[nodiscard]] std::shared_ptr<ClientWindow> AnyWindow() {
        return window ? window : std::make_shared<FakeClientWindow>(console.State);
    }

    void GetHistory() {
        GetHistoryInWindows(console.Operation(), console.Make.History(), nullptr);
        EXPECT_EQ(console.State.OperationsRecord.OperationBusy, False);
        EXPECT_EQ(console.View.Shape, Pointer::Normal);
    }

    /// Does `act` with the progress dialog, `delay` after it was first seen.
    void WithDialogAfter(Microseconds delay, std::function<void(frmGetHistoryData&)> act) {
        console.Outside.Time.In(1 * Millisecond, [this, delay, act = std::move(act)] {
            if (Dialog() == nullptr) {
                WithDialogAfter(delay, act);
            } else {
                console.Outside.Time.In(delay, [act] { act(*Dialog()); });
            }
        });
    }

    /// The progress dialog, if it is open.
    static frmGetHistoryData* Dialog() {
        return qobject_cast<frmGetHistoryData*>(QApplication::activeModalWidget());
    }

    [[nodiscard]] const std::vector<BoxContent>& Boxes() const {
        return console.Outside.Boxes.Shown;
    }

    VirtualConsole console;
    simulator::Logger* logger = nullptr;
    std::shared_ptr<FakeClientWindow> window;
};

}  // namespace testing_support

#endif  // ORVIA_TESTS_HISTORY_FRM_HISTORY_FIXTURE_H
