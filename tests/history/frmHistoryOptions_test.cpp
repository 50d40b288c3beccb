#include "history/frmHistoryOptions.h"

#include <QGroupBox>
#include <QRadioButton>

#include "history/frm_history_fixture.h"

namespace testing_support {
namespace {

class FrmHistoryOptions : public testing::Test {
 protected:
    Settings settings;
};

TEST_F(FrmHistoryOptions, ShowsTheSetting) {
    for (const char* setting : {"", "Yes", "other"}) {
        settings.CSVDateTimeSingleColumn = setting;
        const frmHistoryOptions form(settings, nullptr);
        const bool single = setting[0] != '\0';
        EXPECT_EQ(Find<QRadioButton>(form, "optNoComma")->isChecked(), single);
        EXPECT_EQ(Find<QRadioButton>(form, "optComma")->isChecked(), !single);
    }
}

TEST_F(FrmHistoryOptions, CarriesItsTexts) {
    const frmHistoryOptions form(settings, nullptr);
    EXPECT_EQ(form.windowTitle(), QStringLiteral("History File Options"));
    EXPECT_EQ(Find<QGroupBox>(form, "Frame1")->title(), QStringLiteral("Date/Time Format"));
    EXPECT_EQ(Find<QRadioButton>(form, "optComma")->text(),
              QStringLiteral("Date and Time are in separate columns in CSV output files."));
    EXPECT_EQ(Find<QRadioButton>(form, "optNoComma")->text(),
              QStringLiteral("Date and Time are combined into a single column in CSV output "
                             "files."));
    EXPECT_EQ(Find<QPushButton>(form, "cmdOK")->text(), QStringLiteral("Close"));
    EXPECT_EQ(Find<QPushButton>(form, "cmdCancel")->text(), QStringLiteral("Cancel"));
}

TEST_F(FrmHistoryOptions, CloseStoresTheChoice) {
    frmHistoryOptions form(settings, nullptr);
    form.show();
    Find<QRadioButton>(form, "optNoComma")->click();
    Click(form, "cmdOK");
    EXPECT_EQ(settings.CSVDateTimeSingleColumn, "Yes");
    EXPECT_FALSE(form.isVisible());
    form.show();
    Find<QRadioButton>(form, "optComma")->click();
    QTest::keyClick(&form, Qt::Key_Return);
    EXPECT_EQ(settings.CSVDateTimeSingleColumn, "");
}

TEST_F(FrmHistoryOptions, CancelStoresNothing) {
    frmHistoryOptions form(settings, nullptr);
    form.show();
    Find<QRadioButton>(form, "optNoComma")->click();
    Click(form, "cmdCancel");
    EXPECT_EQ(settings.CSVDateTimeSingleColumn, "");
    EXPECT_FALSE(form.isVisible());
}

}  // namespace
}  // namespace testing_support
