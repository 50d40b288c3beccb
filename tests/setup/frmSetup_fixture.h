#ifndef ORVIA_TESTS_SETUP_FRMSETUP_FIXTURE_H
#define ORVIA_TESTS_SETUP_FRMSETUP_FIXTURE_H

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QTabBar>
#include <QTest>
#include <QWindow>
#include <memory>
#include <string>

#include "app/frmAbout.h"
#include "platform/qt/text_qt.h"
#include "setup/frmCalibrate.h"
#include "setup/frmSetup.h"
#include "setup/setup_fixture.h"
#include "support/qt/modal_answer.h"
#include "support/qt/run_events.h"

namespace setup_testing {

/// The control of that name; a wrong name fails with those that exist.
template <typename Control = QWidget>
Control* FindIn(const QWidget& window, const std::string& name) {
    auto* control = window.findChild<Control*>(ToQt(name));
    if (control == nullptr) {
        std::string names;
        for (const QObject* child : window.findChildren<QObject*>()) {
            names += FromQt(child->objectName()) + " ";
        }
        ADD_FAILURE() << "no control " << name << " among " << names;
    }
    return control;
}

/// Clicks as the system does: through the window, on what lies there once it is laid out. The
/// offscreen screen is smaller than any desk's, so that the user has to scroll.
inline void ClickOn(QWidget* widget) {
    QCoreApplication::processEvents();
    const bool marked = qobject_cast<QCheckBox*>(widget) != nullptr ||
                        qobject_cast<QRadioButton*>(widget) != nullptr;
    const QPoint place(marked ? widget->height() / 2 : widget->width() / 2, widget->height() / 2);
    QWidget* whole = widget->window();
    auto* scroll = whole->findChild<QScrollArea*>();
    if (scroll != nullptr && scroll->widget()->isAncestorOf(widget)) {
        const QPoint inside = widget->mapTo(scroll->widget(), place);
        scroll->ensureVisible(inside.x(), inside.y());
    }
    QTest::mouseClick(whole->windowHandle(), Qt::LeftButton, {}, widget->mapTo(whole, place));
}

inline void PressKey(const QWidget& window, Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(window.windowHandle(), key, modifiers);
}

/// The real dialog on the offscreen screen, its logger on virtual time.
class SetupFormTest : public ::testing::Test {
 protected:
    static constexpr int FastTick = 4;  // the dialog's own timer then ticks each 10 ms

    void Open(const simulator::LoggerSetup& site = SetupSite()) {
        opened = std::make_unique<OpenedSetup>(site);
        SharedState& state = opened->console.State;
        state.Outside.TickMilliseconds = FastTick;
        for (const char* tag : {"P6", "P12"}) {
            FlowDeviceEntry device;
            device.Tag = tag;
            device.Name = std::string("Flume & channel ") + tag;
            state.CataloguesRecord.FlumeList.Append(device);
        }
        opened->Read();
        opened->TakeBoxes();
        opened->Busy() = True;
        form = NewForm([this] { return opened->Select(); });
        form->Load();
        // The network's time goes on in step with the dialog's.
        QObject::connect(&tick, &QTimer::timeout, &tick, [this] {
            opened->console.Outside.Time.Run(100 * testing_support::Millisecond);
        });
        tick.start(FastTick);
        form->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(form.get()));
        // A press that another test of this program never released would catch every click.
        QTest::mouseRelease(form->windowHandle(), Qt::RightButton);
        QCoreApplication::processEvents();
    }

    /// The dialog on the records as they are now.
    std::unique_ptr<frmSetup> NewForm(std::function<bool()> reselect) {
        return std::make_unique<frmSetup>(
            opened->console.Make.Setup(),
            frmSetup::Services{.Reselect = std::move(reselect),
                               .ShowAbout = [](QWidget& above) { frmAbout(&above).exec(); }},
            nullptr);
    }

    template <typename Control = QWidget>
    Control* Find(const std::string& name) const {
        return FindIn<Control>(*form, name);
    }
    QTabBar* Tabs() const { return Find<QTabBar>("TabStrip"); }
    void Click(const std::string& name) const { ClickOn(Find(name)); }
    void ClickTab(int n) const {
        QTest::mouseClick(form->windowHandle(), Qt::LeftButton, {},
                          Tabs()->mapTo(form.get(), Tabs()->tabRect(n).center()));
    }
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const {
        PressKey(*form, key, modifiers);
    }
    /// Text of a field, a label or a button.
    std::string TextOf(const std::string& name) const {
        const auto* widget = Find(name);
        if (const auto* list = qobject_cast<const QComboBox*>(widget)) {
            return FromQt(list->currentText());
        }
        return FromQt(widget->property("text").toString());
    }
    /// Goes to the field and types over what stands there.
    void Type(const std::string& name, const std::string& text) const {
        QWidget* field = Find(name);
        field->setFocus();
        auto* line = qobject_cast<QLineEdit*>(field);
        if (line == nullptr) {
            line = qobject_cast<QComboBox*>(field)->lineEdit();
        }
        line->selectAll();
        QTest::keyClick(line, Qt::Key_Delete);
        QTest::keyClicks(line, ToQt(text));
    }
    bool HasFocus(const std::string& name) const {
        const QWidget* field = Find(name);
        const QWidget* focused = form->focusWidget();
        return focused == field || field->isAncestorOf(focused);
    }
    void Trigger(const std::string& name) const { Find<QAction>(name)->trigger(); }
    bool TimerPasses(const std::function<bool()>& done) const { return RunEventsUntil(done); }

    std::unique_ptr<OpenedSetup> opened;
    std::unique_ptr<frmSetup> form;
    QTimer tick;
};

}  // namespace setup_testing

#endif  // ORVIA_TESTS_SETUP_FRMSETUP_FIXTURE_H
