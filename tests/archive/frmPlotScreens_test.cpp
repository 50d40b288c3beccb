// Pictures of the plot's window, light and dark.
#include <QDir>

#include "frmPlot_fixture.h"
#include "support/qt/desk_look.h"

namespace plot_testing {
namespace {

/// Seven channels in units of their own.
Series ManyUnits() {
    SeriesMaker maker(7, 1);
    maker.FlowIsLevel(1);
    maker.Logger().EngUnits = {"Feet", "Deg C", "Volts", "%", "pH", "mS/cm", "NTU", "%", "Gal", ""};
    for (int i = 0; i < 700; ++i) {
        const auto wave = [i](double length, int high) {
            return static_cast<int>(high * (1.1 + std::sin(i / length)));
        };
        maker.Add(SomeDay + i * 900, {wave(20, 40), wave(60, 100), 500 + i % 7, wave(31, 300),
                                      wave(97, 70), wave(11, 20), wave(45, 9), i * 5 % 4000});
    }
    return std::move(maker.Made);
}

/// So many records that strokes lie beside each other.
Series Noise() {
    SeriesMaker maker(2);
    maker.Logger().SampleInterval = "1 minute";
    unsigned state = 1;
    for (int i = 0; i < 60'000; ++i) {
        state = state * 1'664'525U + 1'013'904'223U;
        const int noise = static_cast<int>(state >> 26);
        maker.Add(SomeDay + i * 60, {300 + noise + i / 200, 700 + noise - i / 300});
    }
    return std::move(maker.Made);
}

class PlotScreens : public PlotFormTest, public ::testing::WithParamInterface<bool> {
 protected:
    void Keep(const std::string& name) {
        const auto look = [this, &name] {
            QCoreApplication::processEvents();
            EXPECT_GT(Chart().Area().width(), form_->width() / 5) << name;
        };
        KeepOnBothScreens(*form_, QStringLiteral("frmPlot-") + ToQt(name), GetParam(), look);
        if (!PictureFolder().isEmpty() && !GetParam()) {
            for (const char* kind : {".png", ".svg", ".pdf"}) {
                host_.Dialogs.Picks.push_back(
                    FromQt(QDir(PictureFolder()).filePath(QStringLiteral("paper-") + ToQt(name))) +
                    kind);
                Click("cmdSave");
            }
        }
    }

 private:
    const DeskColours colours_{GetParam()};
};

TEST_P(PlotScreens, OfOneLogger) {
    Open({hill_});
    Press(Qt::Key_Home);
    for (int i = 0; i < 20; ++i) {
        Press(Qt::Key_Right);
    }
    Keep("one");
    Chart().SetCursor(SomeDay + 120 * 900 - SecondsPerHour);
    Press(Qt::Key_Plus);
    Press(Qt::Key_Plus);
    Press(Qt::Key_Plus);
    Keep("mark");
}

TEST_P(PlotScreens, OfSeveralLoggers) {
    Open({hill_, mill_});
    Press(Qt::Key_End);
    Keep("several");
}

TEST_P(PlotScreens, OfManyUnits) {
    Open({Shared("Weir at the lower end of the long meadow", ManyUnits())});
    auto* list = Control<QTreeWidget>("lvwLines");
    for (int row = 0; row < list->topLevelItemCount(); ++row) {
        list->topLevelItem(row)->setCheckState(0, Qt::Checked);
    }
    Press(Qt::Key_Home);
    Keep("units");
}

TEST_P(PlotScreens, OfManyRecordsAndOfNone) {
    Open({Shared("Pump 3", Noise())});
    Row("Channel 2 (Deg C)")->setCheckState(0, Qt::Checked);
    Keep("many");
    delete form_.data();
    OpenLive([] { return Shared("Hill Tanks", Series()); });
    Keep("none");
}

INSTANTIATE_TEST_SUITE_P(Palettes, PlotScreens, ::testing::Bool(),
                         [](const auto& dark) { return dark.param ? "Dark" : "Light"; });

}  // namespace
}  // namespace plot_testing
