// What of the main window must be seen: the state of the link.
#include <QLineEdit>
#include <set>

#include "app/contrast.h"
#include "app/frmMain.h"
#include "app/frmMain_fixture.h"

namespace testing_support {
namespace {

Colour OfQt(const QColor& colour) {
    return {static_cast<std::uint8_t>(colour.red()), static_cast<std::uint8_t>(colour.green()),
            static_cast<std::uint8_t>(colour.blue())};
}

constexpr Colour Disconnected{255, 0, 0};
constexpr Colour Connecting{240, 128, 0};
constexpr Colour Normal{0, 160, 0};
constexpr Colour Command{0, 0, 240};

using MainWindowLooks = MainWindowTest;

TEST_F(MainWindowLooks, TheStateOfTheLinkReadsOnAGroundThatIsNeitherBlackNorWhite) {
    const auto& field = Find<QLineEdit>("txtServerState");
    for (const Colour told : {Disconnected, Connecting, Normal, Command}) {
        window_->SetServerState("Connected - Normal", told);
        const Colour text = OfQt(field.palette().color(QPalette::Text));
        const Colour ground = OfQt(field.palette().color(QPalette::Base));
        EXPECT_EQ(ContrastRatio(text, told), 1) << "the told colour stays";
        EXPECT_GE(ContrastRatio(text, ground), 4.5);
        EXPECT_GT(ContrastRatio(ground, {0, 0, 0}), 1.1);
        EXPECT_GT(ContrastRatio(ground, {255, 255, 255}), 1.1);
    }
}

TEST_F(MainWindowLooks, StatesOfWhichTheColoursAllowItShareOneGround) {
    const auto ground = [this](Colour told) {
        window_->SetServerState("state", told);
        return Find<QLineEdit>("txtServerState").palette().color(QPalette::Base);
    };
    EXPECT_EQ(ground(Disconnected), ground(Normal));
    EXPECT_EQ(ground(Connecting), ground(Normal));
}

// Contrast hangs on luminance alone, so that greys stand for all grounds.
TEST_F(MainWindowLooks, NoSingleGroundWouldCarryAllStates) {
    for (int grey = 0; grey < 256; ++grey) {
        const auto part = static_cast<std::uint8_t>(grey);
        double least = 21;
        for (const Colour told : {Disconnected, Connecting, Normal, Command}) {
            least = std::min(least, ContrastRatio(told, {part, part, part}));
        }
        EXPECT_LT(least, 4.5) << grey;
    }
}

}  // namespace
}  // namespace testing_support
