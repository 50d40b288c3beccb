#include "setup/frmSetup_fixture.h"
#include "support/qt/desk_look.h"

namespace setup_testing {
namespace {

simulator::LoggerSetup PipeSite() {
    simulator::LoggerSetup site = SetupSite(3, 1);
    site.SodAvailable = true;
    simulator::LoggerSettings& settings = site.Settings;
    settings.Name = "North outfall, pipe 2";
    settings.Analog[0] = {"Feet", true, 3, 0, 65535, 0, 12.5, 0, 10};
    settings.Analog[1].Units = "Temp F";
    settings.Analog[2] = {"Volts", true, 2, 0, 62384, 0, 24, 0, 24};
    settings.Pulse[0] = {"Gallons", true, 1, 0.01};
    settings.Alarms[0] = {true, 6, 30, 0};
    settings.Flow.Mode = simulator::FlowMode::Manning;
    settings.Flow.ManningsN = 0.013;
    settings.Flow.ManningsD = 18;
    settings.Flow.ManningsDType = simulator::LengthUnit::Inch;
    settings.Flow.FlumeTag = "P6";
    settings.Flow.TablePath = "tables/north outfall.tbl";
    return site;
}

class SetupScreens : public SetupFormTest, public ::testing::WithParamInterface<bool> {
 protected:
    /// A screen that shows all of the dialog.
    void Enlarge() { form->resize(form->sizeHint().expandedTo(QSize(900, 640))); }

    static void Keep(QWidget& window, const std::string& name) {
        QCoreApplication::processEvents();
        EXPECT_FALSE(window.grab().isNull());
        testing_support::KeepPicture(
            window, ToQt(name) + QLatin1Char('-') + testing_support::DeskName(GetParam()));
    }

 private:
    const testing_support::DeskColours colours_{GetParam()};
};

TEST_P(SetupScreens, OfEveryPage) {
    Open(PipeSite());
    opened->console.State.SettingsRecord.LastFile = {"/home/field/sites/north & south.set",
                                                     "/home/field/sites/mill.set", "", ""};
    const std::vector<std::string> pages = {"Analog", "Digital", "General", "Flow"};
    for (int n = 0; n < 4; ++n) {
        ClickTab(n);
        Enlarge();
        Keep(*form, "frmSetup-" + pages[static_cast<std::size_t>(n)]);
    }
}

TEST_P(SetupScreens, OfAllChannels) {
    Open(SetupSite(8, 2));
    ClickTab(0);
    Enlarge();
    Keep(*form, "frmSetup-Analog8");
}

TEST_P(SetupScreens, OfTheWizardsSteps) {
    Open(PipeSite());
    ClickTab(0);
    int step = 0;
    const std::function<void()> next = [&] {
        auto* wizard = qobject_cast<frmCalibrate*>(QApplication::activeModalWidget());
        if (wizard == nullptr || !wizard->isVisible()) {
            QTimer::singleShot(10, form.get(), next);  // it is still to come
            return;
        }
        ++step;
        if (step % 2 == 0) {
            const std::string stored = TextOf(step == 2 ? "txtHighRaw(0)" : "txtLowRaw(0)");
            EXPECT_TRUE(RunEventsUntil([&] {
                return FromQt(FindIn<QLineEdit>(*wizard, "txtCalibrate")->text()) != stored;
            }));
        }
        Keep(*wizard, "frmCalibrate-" + std::to_string(step));
        ClickOn(FindIn<QPushButton>(*wizard, "cmdNext"));
        if (step < 4) {
            QTimer::singleShot(10, form.get(), next);
        }
    };
    QTimer::singleShot(10, form.get(), next);
    Click("cmdCalibrate(0)");
    EXPECT_EQ(step, 4);
    EXPECT_NE(TextOf("txtHighRaw(0)"), "65535");
}

INSTANTIATE_TEST_SUITE_P(Palettes, SetupScreens, ::testing::Bool(),
                         [](const auto& dark) { return dark.param ? "Dark" : "Light"; });

}  // namespace
}  // namespace setup_testing
