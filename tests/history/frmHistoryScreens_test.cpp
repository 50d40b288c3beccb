#include <QGroupBox>
#include <QLabel>
#include <QProgressBar>
#include <QRadioButton>

#include "flow/flow_calculation.h"
#include "history/frmHistoryOptions.h"
#include "history/frmProgress.h"
#include "history/frm_history_fixture.h"
#include "support/qt/desk_look.h"

namespace testing_support {
namespace {

// Every window with a site's data; kept as pictures where ORVIA_SCREENSHOTS names a folder. Run it
// once more under QT_SCALE_FACTOR=2 for the pictures of a fine screen.
class HistoryScreens : public HistoryFormTest, public testing::WithParamInterface<bool> {
 protected:
    /// Keeps a picture, and sees that no text is cut off.
    void Keep(QWidget& form, const QString& name) {
        QCoreApplication::processEvents();
        EXPECT_FALSE(form.grab().isNull());
        for (QWidget* child : form.findChildren<QWidget*>()) {
            const bool shows = qobject_cast<QLabel*>(child) != nullptr ||
                               qobject_cast<QAbstractButton*>(child) != nullptr;
            if (shows && child->isVisible()) {
                EXPECT_GE(child->width(), child->minimumSizeHint().width())
                    << FromQt(child->objectName());
                EXPECT_GE(child->height(), child->minimumSizeHint().height())
                    << FromQt(child->objectName());
            }
        }
        KeepPicture(form, name + QLatin1Char('-') + DeskName(GetParam()));
    }

    /// A flow site: level, temperature, battery and rain over some days.
    void ReadSite() {
        Connect(1);
        LoggerRecord& site = console.State.Logger;
        site = PlainLogger(3, 1);
        site.LoggerName = "North outfall & weir";
        site.FlowMode = 1;
        site.FlowUnits = 1;
        site.RawScaleUpper.fill(65535);
        site.UpperLimit = {6, 50, 24, 0, 0, 0, 0, 0};
        site.DecPlaces = {3, 1, 2, 0, 0, 0, 0, 0, 2, 0};
        site.PulseUnit[0] = 0.01;
        for (int i = 0; i < 48'213; ++i) {
            const auto wave = static_cast<std::uint16_t>(20'000 + 9000 * std::sin(i / 15.0));
            AddRecord(
                console.State.History, January(1 + i / 96 % 31, i / 4 % 24, i % 4 * 15),
                {wave, static_cast<std::uint16_t>(30'000 + wave / 9),
                 static_cast<std::uint16_t>(35'000 - i % 900), static_cast<std::uint16_t>(i / 7)});
        }
    }

 private:
    const DeskColours colours_{GetParam()};
};

TEST_P(HistoryScreens, Viewer) {
    ReadSite();
    frmHistory form(console.Make.History(), AnyWindow(), nullptr);
    form.Load();
    form.show();
    Keep(form, QStringLiteral("frmHistory"));
    auto* bar = Find<QProgressBar>(form, "ProgressBar");
    bar->setRange(1, 48'213);
    bar->setValue(20'000);
    bar->show();
    Keep(form, QStringLiteral("frmHistory-saving"));
}

TEST_P(HistoryScreens, ViewerWithoutRows) {
    frmHistory form(console.Make.History(), AnyWindow(), nullptr);
    form.Load();
    form.show();
    Keep(form, QStringLiteral("frmHistory-empty"));
}

TEST_P(HistoryScreens, Upload) {
    frmGetHistoryData form(console.Make.History(), 48'213, nullptr);
    form.SetTag(TagRunning);
    form.show();
    form.SetBarMaximum(48'213);
    form.SetBarValue(17'220);
    form.SetProgress("17220 records");
    form.SetRetries("3 retries");
    QTest::qWait(60);
    Keep(form, QStringLiteral("frmGetHistoryData"));
    form.SetBarValue(48'213);
    form.SetProgress("Upload complete: 48213 records uploaded.");
    form.AllowOkay();
    QTest::qWait(60);
    Keep(form, QStringLiteral("frmGetHistoryData-complete"));
}

TEST_P(HistoryScreens, Formatting) {
    frmProgress form(nullptr);
    form.Bar().setRange(0, 200'000);
    form.Bar().setValue(120'000);
    form.show();
    Keep(form, QStringLiteral("frmProgress"));
}

TEST_P(HistoryScreens, Options) {
    frmHistoryOptions form(console.State.SettingsRecord, nullptr);
    form.show();
    Keep(form, QStringLiteral("frmHistoryOptions"));
}

INSTANTIATE_TEST_SUITE_P(Colours, HistoryScreens, testing::Bool());

}  // namespace
}  // namespace testing_support
