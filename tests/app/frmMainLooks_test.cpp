// What of the main window must be seen: the state of the link and the pictures of the list.
#include <QImage>
#include <QLineEdit>
#include <QListWidget>
#include <QMdiArea>
#include <set>

#include "app/contrast.h"
#include "app/frmAbout.h"
#include "app/frmMain.h"
#include "app/frmMain_fixture.h"
#include "support/qt/pictures_on_buttons.h"

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

TEST_F(MainWindowLooks, TheGroundBehindTheWindowsFollowsThePalette) {
    const QPalette before = QApplication::palette();
    for (const QColor window : {QColor(239, 239, 239), QColor(53, 53, 53)}) {
        QApplication::setPalette(QPalette(window, window));
        QCoreApplication::processEvents();
        const QColor ground = Find<QMdiArea>("MDIArea").background().color();
        EXPECT_LE(std::abs(ground.lightness() - window.lightness()), 60) << window.lightness();
    }
    QApplication::setPalette(before);
}

class ListPictures : public MainWindowLooks {
 protected:
    [[nodiscard]] QImage Picture(std::uint8_t icon, QIcon::Mode mode) {
        window_->ClearClients();
        window_->AddClient("Weir", icon);
        return Find<QListWidget>("lvwClients")
            .item(0)
            ->icon()
            .pixmap(QSize(16, 16), 1.0, mode)
            .toImage()
            .convertToFormat(QImage::Format_ARGB32);
    }
    /// How many pixels stand out from that ground.
    static int Seen(const QImage& picture, Colour ground) {
        int seen = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                const QColor pixel = picture.pixelColor(x, y);
                seen += pixel.alpha() > 200 && ContrastRatio(OfQt(pixel), ground) >= 3 ? 1 : 0;
            }
        }
        return seen;
    }
};

TEST_F(ListPictures, AreSeenOnTheSelectedRowAndOnAnyGround) {
    constexpr int Enough = 20;  // of 256 pixels
    for (const std::uint8_t icon : {IconNoWindow, IconWindowOpen, IconAddressed}) {
        const QImage selected = Picture(icon, QIcon::Selected);
        EXPECT_EQ(selected, Picture(icon, QIcon::Normal)) << "not tinted by the highlight";
        for (const Colour ground : {Colour{48, 140, 198}, Colour{42, 130, 218}, Colour{35, 35, 35},
                                    Colour{255, 255, 255}}) {
            EXPECT_GE(Seen(selected, ground), Enough) << int{icon} << " on " << int{ground.Red};
        }
    }
}

TEST_F(ListPictures, DifferInShapeAndNotInColourAlone) {
    constexpr int Enough = 25;  // of 256 pixels
    const auto outline = [this](std::uint8_t icon) { return Picture(icon, QIcon::Normal); };
    const QImage open = outline(IconWindowOpen);
    const QImage addressed = outline(IconAddressed);
    int differing = 0;
    for (int y = 0; y < open.height(); ++y) {
        for (int x = 0; x < open.width(); ++x) {
            const bool one = open.pixelColor(x, y).alpha() > 127;
            const bool other = addressed.pixelColor(x, y).alpha() > 127;
            differing += one != other ? 1 : 0;
        }
    }
    EXPECT_GE(differing, Enough);
}

TEST_F(MainWindowLooks, AboutHasNoPictureOnItsButtonWhateverTheStyleGives) {
    const PicturesOnButtons style;
    const frmAbout about(window_.get());
    for (const QPushButton* button : about.findChildren<QPushButton*>()) {
        EXPECT_TRUE(button->icon().isNull());
    }
}

TEST_F(MainWindowLooks, AboutHasRoomForItsTitle) {
    frmAbout about(window_.get());
    about.show();
    // A frame writes it larger than the window its texts, beside a picture and a button.
    EXPECT_GE(about.width(), about.fontMetrics().horizontalAdvance(about.windowTitle()) +
                                 9 * about.fontMetrics().height());
}

}  // namespace
}  // namespace testing_support
