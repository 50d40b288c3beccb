#ifndef ORVIA_TESTS_APP_FRM_MAIN_FIXTURE_H
#define ORVIA_TESTS_APP_FRM_MAIN_FIXTURE_H

#include <gtest/gtest.h>

#include <QApplication>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/frmMain.h"
#include "app/shared_state.h"
#include "client/frmClient.h"
#include "common/path_text.h"
#include "link/frmConnect.h"
#include "support/qt/accelerated_host.h"
#include "support/virtual_console.h"

namespace testing_support {

/// The console's real windows on a fast host, with a network of three sites and their book.
class MainWindowTest : public ::testing::Test {
 protected:
    /// With an archive if there is one to keep what is uploaded, and one that it is shared in.
    explicit MainWindowTest(ArchiveStore* archive = nullptr, SharedArchive* shared = nullptr,
                            PasswordKeeper* passwords = nullptr);
    ~MainWindowTest() override;

    /// Starts the console; `inDialog` is done to the connect dialog once it is there.
    void Start(const std::function<void(frmConnect&)>& inDialog);
    /// Starts it and connects.
    void StartConnected();

    template <typename Widget>
    Widget& Find(const char* name);
    /// Clicks a button once it is enabled.
    void Click(const char* name);
    /// The same, with `action` done once, so many virtual milliseconds behind the click.
    void ClickAndLater(const char* name, int milliseconds, std::function<void()> action);
    /// Clicks item `number` of the client list.
    void ClickClient(int number, Qt::MouseButton button = Qt::LeftButton);
    std::shared_ptr<frmClient> WindowOf(int entry);
    /// Does `action` once, as soon as `moment` holds, inside whatever runs then; looks every few
    /// virtual milliseconds for some seconds.
    void Once(const std::function<bool()>& moment, const std::function<void()>& action);

    void ExpectAtRest();

    AcceleratedHost host_;
    std::string folder_ = FreshFolder("main");
    SharedState state_;
    std::unique_ptr<frmMain> window_;
    ScriptedBoxes& boxes_ = host_.Virtual.Boxes;
};

template <typename Widget>
Widget& MainWindowTest::Find(const char* name) {
    auto* found = window_->findChild<Widget*>(QLatin1String(name));
    if (found == nullptr) {
        std::string names;
        for (const Widget* widget : window_->findChildren<Widget*>()) {
            names += widget->objectName().toStdString() + " ";
        }
        throw std::runtime_error(std::string("no ") + name + " among " + names);
    }
    return *found;
}

}  // namespace testing_support

#endif  // ORVIA_TESTS_APP_FRM_MAIN_FIXTURE_H
