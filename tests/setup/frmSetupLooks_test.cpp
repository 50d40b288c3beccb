// What the eye needs of the set-up: rows, widths and menu items.
#include "setup/frmSetup_fixture.h"

namespace setup_testing {
namespace {

class SetupLooks : public SetupFormTest {
 protected:
    /// The columns of a panel's picture that differ from its ground, from the first to `before`.
    static bool IsInkBefore(QWidget& panel, int before) {
        const QImage picture = panel.grab().toImage();
        const QRgb ground = picture.pixel(0, 0);
        for (int y = picture.height() / 4; y < picture.height() * 3 / 4; ++y) {
            for (int x = 0; x < before; ++x) {
                if (picture.pixel(x, y) != ground) {
                    return true;
                }
            }
        }
        return false;
    }
};

TEST_F(SetupLooks, TheNumberOfAChannelStandsBesideItsRow) {
    Open();
    ClickTab(0);
    auto* panel = Find<QGroupBox>("fraSetup(0)");
    const auto* first = Find("chkEnable(0)");
    EXPECT_TRUE(IsInkBefore(*panel, panel->fontMetrics().horizontalAdvance(u'0')));
    EXPECT_LT(std::abs(first->geometry().center().y() - panel->rect().center().y()), 4)
        << "nothing stands above the controls";
}

TEST_F(SetupLooks, RowsOfChannelsThatAreMissingAreLowAndGrey) {
    Open();
    ClickTab(0);
    QCoreApplication::processEvents();
    const auto* row = Find<QGroupBox>("fraSetup(2)");
    const auto* missing = Find<QGroupBox>("fraSetup(3)");
    EXPECT_FALSE(missing->isEnabled());
    EXPECT_TRUE(missing->isVisible());
    EXPECT_LT(missing->height(), row->height() * 3 / 4);
}

TEST_F(SetupLooks, AColumnOfSingleDigitsIsNarrowerThanThatOfUnits) {
    Open(SetupSite(8, 2));
    ClickTab(0);
    QCoreApplication::processEvents();
    const auto* units = Find<QComboBox>("cmbEU(0)");
    const auto* places = Find<QComboBox>("cmbPrecision(0)");
    EXPECT_LT(places->width(), units->width());
    const QString longest(static_cast<int>(LongestUnit), QLatin1Char('n'));
    EXPECT_GT(units->lineEdit()->width(), units->fontMetrics().horizontalAdvance(longest));
}

TEST_F(SetupLooks, MenuItemsOfEmptyRecentFilesAreNotLive) {
    Open();
    auto& recent = opened->console.State.SettingsRecord.LastFile;
    recent = {"/a.set", "", "/c.set", ""};
    ASSERT_TRUE(RunEventsUntil(
        [this] { return FromQt(Find<QAction>("mnuHist(2)")->text()) == "&3 /c.set"; }));
    EXPECT_TRUE(Find<QAction>("mnuHist(0)")->isEnabled());
    EXPECT_FALSE(Find<QAction>("mnuHist(1)")->isEnabled());
    EXPECT_TRUE(Find<QAction>("mnuHist(2)")->isEnabled());
    EXPECT_FALSE(Find<QAction>("mnuHist(3)")->isEnabled());
}

}  // namespace
}  // namespace setup_testing
