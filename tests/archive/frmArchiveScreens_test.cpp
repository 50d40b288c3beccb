// Pictures of the archive's window, light and dark, and the window for those who do without one.
#include <QAccessible>
#include <QApplication>
#include <map>

#include "archive/frmArchive_fixture.h"
#include "support/qt/desk_look.h"

namespace archive_testing {
namespace {

TEST_F(ArchiveFormTest, EveryControlHasANameForThoseWhoCannotSeeIt) {
    Keep("Pump 1", 3);
    Open();
    int stops = 0;
    for (QWidget* widget : form_->findChildren<QWidget*>()) {
        const bool own =
            !widget->objectName().isEmpty() && !widget->objectName().startsWith(u"qt_");
        if (own && widget->isVisible() && (widget->focusPolicy() & Qt::TabFocus) != 0) {
            ++stops;
            QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(widget);
            ASSERT_NE(reader, nullptr);
            EXPECT_FALSE(reader->text(QAccessible::Name).isEmpty()) << FromQt(widget->objectName());
        }
    }
    EXPECT_GE(stops, 13);
}

TEST_F(ArchiveFormTest, NoTwoControlsHaveTheSameKey) {
    std::map<QChar, std::string> keys;
    const auto take = [&keys](QString text) {
        const auto at = text.replace(QStringLiteral("&&"), QStringLiteral("  ")).indexOf(u'&');
        if (at >= 0) {
            const auto [known, fresh] = keys.emplace(text[at + 1].toLower(), FromQt(text));
            EXPECT_TRUE(fresh) << FromQt(text) << " and " << known->second;
        }
    };
    for (const QLabel* label : form_->findChildren<QLabel*>()) {
        take(label->buddy() != nullptr ? label->text() : QString());
    }
    for (const QAbstractButton* button : form_->findChildren<QAbstractButton*>()) {
        take(button->text());
    }
    EXPECT_GE(keys.size(), 14U);
}

TEST_F(ArchiveFormTest, TheTabKeyGoesThroughTheWindowInItsOrder) {
    Keep("Pump 1", 3);
    Open();
    ChoosePeriod(FromTo);
    Control("txtFilter")->setFocus();
    std::vector<std::string> order;
    while (order.size() < 13) {
        const std::string name = FromQt(QApplication::focusWidget()->objectName());
        // A date has a stop for each of its parts.
        if (order.empty() || order.back() != name) {
            order.push_back(name);
        }
        QTest::keyClick(form_->windowHandle(), Qt::Key_Tab);
    }
    EXPECT_EQ(order,
              (std::vector<std::string>{"txtFilter", "lvwLoggers", "lvwUploads", "cmbPeriod",
                                        "dtpFrom", "dtpTo", "cmdPlot", "cmdReport", "cmdSaveCsv",
                                        "chkMachine", "cmdDelete", "cmdBackUp", "cmdCheck"}));
}

TEST_F(ArchiveFormTest, EnterOnALoggerPlotsIt) {
    Keep("Pump 1", 3);
    Open();
    EXPECT_EQ(QApplication::focusWidget(), Control("lvwLoggers"));
    QTest::keyClick(form_->windowHandle(), Qt::Key_Return);
    EXPECT_EQ(plots_.size(), 1U);
    QTest::keyClick(form_->windowHandle(), Qt::Key_Escape);
    EXPECT_FALSE(form_->isVisible());
}

class ArchiveScreens : public ArchiveFormTest, public ::testing::WithParamInterface<bool> {
 protected:
    void Picture(const std::string& name) {
        KeepOnBothScreens(*form_, QStringLiteral("frmArchive-") + ToQt(name), GetParam());
    }
    void Fill() {
        const std::vector<const char*> names = {"North Weir",
                                                "South Weir",
                                                "Pump 1",
                                                "Pump 2",
                                                "Mill Race",
                                                "Upper Reservoir",
                                                "Lower Reservoir",
                                                "Effluent Channel",
                                                "Storm Drain 4",
                                                "Industrial Park",
                                                "County Road 7 Culvert",
                                                "Lift Station"};
        int records = 40;
        for (const char* name : names) {
            Keep(name, records, SomeDay - records * Moment{900});
            records = records * 5 / 3;
        }
        ArchiveUpload upload{.Logger = 1, .Begin = 1'701'000'000'000, .Name = "North Weir"};
        upload.Said = 4000;
        upload.Received = 1280;
        upload.Firmware = 12;
        archive_.AddUpload(upload);
    }

 private:
    const DeskColours colours_{GetParam()};
};

TEST_P(ArchiveScreens, OfLoggersAndOfNone) {
    Open();
    Picture("empty");
    Fill();
    ASSERT_TRUE(RunEventsUntil([this] { return List("lvwLoggers").rowCount() == 12; }));
    ASSERT_TRUE(RunEventsUntil([this] { return Cell("lvwLoggers", 11, 5) != "..."; }));
    Control<QTableView>("lvwLoggers")->selectRow(7);
    Picture("loggers");
    EXPECT_FALSE(Control<QTableView>("lvwLoggers")->grab().isNull());
}

TEST_P(ArchiveScreens, OfACheckThatRunsAndOfTrouble) {
    Keep("Pump 1", 100'000);
    Open();
    Click("cmdDelete");
    ASSERT_TRUE(RunEventsUntil([this] { return !IsIdle(); }));
    Picture("deleting");
    Click("cmdCancel");
    ASSERT_TRUE(RunEventsUntil([this] { return IsIdle(); }));
    archive_.Close();
    WriteFile(FromQt(FileName("data/archive.sqlite")), "no archive");
    Make();
    Open();
    Picture("trouble");
    EXPECT_TRUE(Control("lblNotice")->isVisible());
}

INSTANTIATE_TEST_SUITE_P(Palettes, ArchiveScreens, ::testing::Bool(),
                         [](const auto& dark) { return dark.param ? "Dark" : "Light"; });

}  // namespace
}  // namespace archive_testing
