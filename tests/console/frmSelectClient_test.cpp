#include "console/frmSelectClient.h"

#include <QListWidget>

#include "forms_bench.h"
#include "platform/qt/twips.h"

namespace {

using namespace forms_bench;

class frmSelectClientTest : public ::testing::Test {
 protected:
    frmSelectClientTest() { Show(form); }

    void ClickRow(int row) {
        auto* list = Find<QListWidget>(form, "lstClients");
        const QPoint place = list->visualItemRect(list->item(row)).center();
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, place);
    }

    frmSelectClient form{{"North & South", "Weir", "Pump 3"}, nullptr};
};

TEST_F(frmSelectClientTest, StartsOnItsFirstRow) {
    EXPECT_EQ(form.windowTitle(), QStringLiteral("Select Client"));
    EXPECT_EQ(Find<QListWidget>(form, "lstClients")->currentRow(), 0);
    EXPECT_EQ(Find<QListWidget>(form, "lstClients")->count(), 3);
    EXPECT_EQ(form.Tag, "");
}

TEST_F(frmSelectClientTest, OneClickOnARowChoosesIt) {
    ClickRow(2);
    EXPECT_EQ(form.Tag, "Okay");
    EXPECT_EQ(form.Chosen(), 3);
    EXPECT_FALSE(form.isVisible());
}

TEST_F(frmSelectClientTest, EnterChoosesTheSelectedRow) {
    Press(Qt::Key_Down);
    Press(Qt::Key_Return);
    EXPECT_EQ(form.Tag, "Okay");
    EXPECT_EQ(form.Chosen(), 2);
    EXPECT_FALSE(form.isVisible());
}

TEST_F(frmSelectClientTest, EnterWithoutASelectionDoesNothing) {
    Find<QListWidget>(form, "lstClients")->clearSelection();
    Press(Qt::Key_Return);
    EXPECT_TRUE(form.isVisible());
    EXPECT_EQ(form.Tag, "");
}

TEST_F(frmSelectClientTest, EscapeAndTheFrameChooseNothing) {
    form.Tag = "Okay";
    Press(Qt::Key_Escape);
    EXPECT_EQ(form.Tag, "");
    EXPECT_FALSE(form.isVisible());
    Show(form);
    form.Tag = "Okay";
    form.close();
    EXPECT_EQ(form.Tag, "");
}

TEST_F(frmSelectClientTest, StandsInsideTheMainWindow) {
    QWidget main;
    main.setGeometry(100, 80, 600, 400);
    Show(main);
    frmSelectClient over({"A"}, &main);
    EXPECT_EQ(over.pos(), main.pos() + QPoint(PixelsOfTwips(1000), PixelsOfTwips(1000)));
}

TEST_F(frmSelectClientTest, TellsBelowTheListHowToChooseAndLeave) {
    const auto* list = Find<QListWidget>(form, "lstClients");
    const QRect below(list->x(), list->geometry().bottom() + 2, list->width(),
                      form.height() - list->geometry().bottom() - 2);
    EXPECT_GE(below.height(), form.fontMetrics().height());
    const QImage hint = form.grab(below).toImage();
    int ink = 0;
    for (int x = 0; x < hint.width(); ++x) {
        ink += hint.pixel(x, hint.height() / 2) != hint.pixel(0, 0) ? 1 : 0;
    }
    EXPECT_GT(ink, 10);
    EXPECT_TRUE(list->accessibleDescription().contains(QStringLiteral("Enter")));
    EXPECT_TRUE(list->accessibleDescription().contains(QStringLiteral("Escape")));
}

TEST_F(frmSelectClientTest, ReachesEverybody) {
    ExpectReach(form);
    KeepPictures(form);
}

}  // namespace
