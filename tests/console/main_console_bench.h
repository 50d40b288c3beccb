#ifndef ORVIA_TESTS_CONSOLE_MAIN_CONSOLE_BENCH_H
#define ORVIA_TESTS_CONSOLE_MAIN_CONSOLE_BENCH_H

#include <QAction>
#include <QDragMoveEvent>
#include <QMimeData>
#include <QPlainTextEdit>
#include <memory>
#include <stdexcept>
#include <string>

#include "app/frmMain_fixture.h"
#include "console/frmClientList.h"
#include "console/frmLog.h"
#include "console/list_drop.h"
#include "forms_bench.h"
#include "support/qt/modal_answer.h"
#include "support/qt/run_events.h"

namespace testing_support {

/// The main window, connected, with its client list and its menus at hand.
class frmMainConsoleTest : public MainWindowTest {
 protected:
    frmMainConsoleTest() {
        StartConnected();
        boxes_.Shown.clear();
        window_->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(window_.get()));
    }

    ClientListWidget& List() {
        return *static_cast<ClientListWidget*>(forms_bench::Find(*window_, "lvwClients"));
    }

    QPoint PlaceOf(int item) { return List().visualItemRect(List().item(item - 1)).center(); }

    void ClickItem(int item, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseClick(List().viewport(), button, {}, PlaceOf(item));
        QCoreApplication::processEvents();
    }

    /// Drops an item's text on another, as the end of a drag does.
    void Drop(const QString& text, const QPoint& place) {
        QMimeData dragged;
        dragged.setText(text);
        QDragEnterEvent enter(place, Qt::MoveAction, &dragged, Qt::LeftButton, {});
        QCoreApplication::sendEvent(List().viewport(), &enter);
        QDragMoveEvent over(place, Qt::MoveAction, &dragged, Qt::LeftButton, {});
        QCoreApplication::sendEvent(List().viewport(), &over);
        QDropEvent drop(place, Qt::MoveAction, &dragged, Qt::LeftButton, {});
        QCoreApplication::sendEvent(List().viewport(), &drop);
    }

    QAction& Row(const std::string& name) {
        auto* row = window_->findChild<QAction*>(ToQt(name));
        if (row == nullptr) {
            throw std::logic_error("no menu row " + name);
        }
        return *row;
    }
    void Choose(const std::string& name) {
        ASSERT_TRUE(Row(name).isEnabled()) << name;
        Row(name).trigger();
    }

    /// Lets ticks go by until the commands show the state of link and book.
    void AwaitRow(const std::string& name) {
        ASSERT_TRUE(RunEventsUntil([&] { return Row(name).isEnabled(); }));
    }
    void AwaitCommands() { AwaitRow("mnuGetSettingsFACW"); }

    /// Whether a walk over all windows has logged that text.
    bool WalkIsOn(const char* text) {
        const auto* log = window_->findChild<frmLog*>();
        return state_.OperationsRecord.ForAllActive != False && log != nullptr &&
               forms_bench::Find<QPlainTextEdit>(*log, "txtLog")
                   ->toPlainText()
                   .contains(QLatin1String(text));
    }

    std::string Names() {
        std::string names;
        for (int item = 1; item <= List().ItemCount(); ++item) {
            names += (names.empty() ? "" : ",") + List().ItemText(item);
        }
        return names;
    }

    std::shared_ptr<ClientWindow> Window(int slot) { return state_.Windows.At(slot); }
};

}  // namespace testing_support

#endif  // ORVIA_TESTS_CONSOLE_MAIN_CONSOLE_BENCH_H
