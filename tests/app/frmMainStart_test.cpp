// Where the connect dialog comes up at the start. A window system gives a window its place some
// time after it was shown.
#include <QWindow>

#include "app/frmMain_fixture.h"

namespace testing_support {
namespace {

/// A window system that gives the main window its place when it brings it to the screen, and not
/// when it is asked to.
class StartOfMainWindow : public MainWindowTest {
 protected:
    StartOfMainWindow() { qApp->installEventFilter(&watch_); }
    ~StartOfMainWindow() override { qApp->removeEventFilter(&watch_); }

    /// Starts the console with the connect dialog left as it comes up; where it stood over the
    /// window.
    QPoint PlaceAtStart() {
        QPoint place;
        Start([&](frmConnect& dialog) {
            QTest::qWait(200);  // the window system has told all by then
            place = Off(dialog);
            dialog.reject();
        });
        return place;
    }
    /// The same with the dialog of the connect button.
    QPoint PlaceLater() {
        QPoint place;
        QTimer look;
        QObject::connect(&look, &QTimer::timeout, &look, [&] {
            if (auto* dialog = dynamic_cast<frmConnect*>(QApplication::activeModalWidget())) {
                look.stop();
                QTest::qWait(200);
                place = Off(*dialog);
                dialog->reject();
            }
        });
        look.start(1);
        Click("cmdConnect");
        return place;
    }

    static constexpr QPoint Place{150, 90};

 private:
    class Watch : public QObject {
     public:
        bool eventFilter(QObject* watched, QEvent* event) override {
            auto* window = qobject_cast<QWindow*>(watched);
            if (event->type() == QEvent::Expose && window != nullptr && !placed_ &&
                window->objectName() == QStringLiteral("frmMainWindow")) {
                placed_ = true;
                window->setPosition(Place);
            }
            return false;
        }

     private:
        bool placed_ = false;
    };

    /// The dialog's middle, from that of the main window, as the window system has them.
    [[nodiscard]] QPoint Off(const QWidget& dialog) const {
        return dialog.windowHandle()->geometry().center() -
               window_->windowHandle()->geometry().center();
    }

    Watch watch_;
};

TEST_F(StartOfMainWindow, TheConnectDialogStandsCentredOverTheWindow) {
    const QPoint off = PlaceAtStart();
    EXPECT_EQ(window_->windowHandle()->position(), Place);
    // The room that a frame and its title may take.
    EXPECT_LE(qAbs(off.x()), 10);
    EXPECT_LE(qAbs(off.y()), 40);
}

TEST_F(StartOfMainWindow, TheConnectDialogStandsWhereItStandsLater) {
    const QPoint atStart = PlaceAtStart();
    EXPECT_EQ(atStart, PlaceLater());
}

}  // namespace
}  // namespace testing_support
