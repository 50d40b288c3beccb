#ifndef ORVIA_TESTS_HISTORY_FRM_HISTORY_FIXTURE_H
#define ORVIA_TESTS_HISTORY_FRM_HISTORY_FIXTURE_H

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QPushButton>
#include <QTest>
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

/// Real windows of history on the offscreen screen, above the console on the virtual host.
class HistoryFormTest : public testing::Test {
 protected:
    /// A logger with so many records in its memory, its window open.
    void Connect(std::uint32_t records, int analog = 2, int pulse = 1) {
        console.Connect();
        simulator::LoggerSetup setup = BasicSite(1, analog, pulse);
        setup.Logging = false;
        setup.HistoryRecords = records;
        console.AddSite(setup);
        logger = console.Outside.Network.FindLogger("Site 1");
        window = console.OpenWindow(1);
    }

    void GetHistory() {
        GetHistoryInWindows(console.Operation(), console.State, console.View, nullptr);
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

    [[nodiscard]] const std::vector<MessageBox>& Boxes() const {
        return console.Outside.Boxes.Shown;
    }

    VirtualConsole console;
    simulator::Logger* logger = nullptr;
    std::shared_ptr<FakeClientWindow> window;
};

}  // namespace testing_support

#endif  // ORVIA_TESTS_HISTORY_FRM_HISTORY_FIXTURE_H
