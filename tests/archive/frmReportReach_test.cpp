// The window of a report for those who do without a pointer, a picture or a large screen.
#include <QAccessible>
#include <QElapsedTimer>
#include <map>

#include "frmReport_fixture.h"

namespace testing_support {
namespace {

TEST_F(ReportFormTest, EveryControlHasANameForThoseWhoCannotSeeIt) {
    Open();
    int stops = 0;
    for (QWidget* widget : form_->findChildren<QWidget*>()) {
        const bool own =
            !widget->objectName().isEmpty() && !widget->objectName().startsWith(u"qt_");
        if (!own || !widget->isVisible() || (widget->focusPolicy() & Qt::TabFocus) == 0) {
            continue;
        }
        ++stops;
        QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(widget);
        ASSERT_NE(reader, nullptr);
        EXPECT_FALSE(reader->text(QAccessible::Name).isEmpty()) << FromQt(widget->objectName());
    }
    EXPECT_EQ(stops, 13);
}

TEST_F(ReportFormTest, AScreenReaderTellsTheGroupOfAColumn) {
    Open();
    QAccessibleInterface* reader =
        QAccessible::queryAccessibleInterface(Control<QTableView>("lvwReport"));
    ASSERT_NE(reader, nullptr);
    ASSERT_NE(reader->tableInterface(), nullptr);
    EXPECT_EQ(FromQt(reader->tableInterface()->columnDescription(5)), "Minimum");
    bool told = false;
    for (int i = 0; i < reader->childCount() && !told; ++i) {
        told =
            reader->child(i)->text(QAccessible::Name) == QStringLiteral("Channel 1 (Feet) Minimum");
    }
    EXPECT_TRUE(told);
}

TEST_F(ReportFormTest, NoTwoControlsHaveTheSameKey) {
    Open();
    std::map<QChar, std::string> keys;
    const auto take = [&keys](const QString& text) {
        const auto at = text.indexOf(QLatin1Char('&'));
        if (at >= 0) {
            const auto [known, fresh] = keys.emplace(text[at + 1].toLower(), FromQt(text));
            EXPECT_TRUE(fresh) << FromQt(text) << " and " << known->second;
        }
    };
    for (const QLabel* label : form_->findChildren<QLabel*>()) {
        take(label->buddy() != nullptr ? label->text() : QString());
    }
    for (const QPushButton* button : form_->findChildren<QPushButton*>()) {
        take(button->text());
    }
    EXPECT_EQ(keys.size(), 11U);
}

TEST_F(ReportFormTest, TheTabKeyGoesThroughTheWindowInItsOrder) {
    Open();
    Control("cmbStep")->setFocus();
    std::vector<std::string> order;
    while (order.empty() || order.back() != "cmdClose") {
        const std::string at = FromQt(QApplication::focusWidget()->objectName());
        // In a date it goes from number to number.
        if (order.empty() || order.back() != at) {
            order.push_back(at);
        }
        ASSERT_LT(order.size(), 20U);
        Press(Qt::Key_Tab);
    }
    EXPECT_EQ(order,
              (std::vector<std::string>{"cmbStep", "dtpFrom", "dtpTo", "cmbVolume", "txtSite",
                                        "txtMadeBy", "lvwReport", "lvwTotal", "cmdCopy", "cmdCsv",
                                        "cmdPdf", "cmdPrint", "cmdClose"}));
}

TEST_F(ReportFormTest, EnterInAFieldPressesNoButton) {
    Open();
    for (const char* field : {"txtSite", "dtpFrom"}) {
        Control(field)->setFocus();
        Press(Qt::Key_Return);
        EXPECT_TRUE(form_->isVisible());
    }
    EXPECT_TRUE(host_.Dialogs.Queries.empty());
}

TEST_F(ReportFormTest, FitsASmallScreen) {
    Open(TwoWeeks(8, 2));
    EXPECT_LE(form_->minimumSizeHint().width(), 990);
    EXPECT_LE(form_->minimumSizeHint().height(), 566);
}

TEST_F(ReportFormTest, AMonthOfTenChannelsIsShownAtOnce) {
    SeriesMaker maker = TwoWeeks(8, 2);
    for (int i = 0; i < 17 * 96; ++i) {
        maker.Add(TwoWeeksSpan.End + Moment{i} * 900, {i, i, i, i, i, i, i, i, i, i});
    }
    Open(maker);
    QElapsedTimer watch;
    watch.start();
    Control<QDateEdit>("dtpTo")->setDate({2024, 2, 13});
    Settle();
    form_->grab();
    RecordProperty("milliseconds", static_cast<int>(watch.elapsed()));
    EXPECT_LT(watch.elapsed(), 200);
    EXPECT_EQ(Cells("lvwReport").size(), 31U);
    watch.start();
    Pick("month.pdf");
    Click("cmdPdf");
    RecordProperty("PdfMilliseconds", static_cast<int>(watch.elapsed()));
    EXPECT_LT(watch.elapsed(), 2000);
}

}  // namespace
}  // namespace testing_support
