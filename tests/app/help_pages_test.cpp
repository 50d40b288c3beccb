#include "app/help_pages.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

std::string_view PageAt(const std::vector<std::string>& names) {
    return HelpPageAt(names);
}

TEST(HelpPages, AWindowHasItsPage) {
    EXPECT_EQ(HelpPageOf("frmMain"), "main-window.html");
    EXPECT_EQ(HelpPageOf("frmRating"), "flow-table-window.html");
    EXPECT_EQ(HelpPageOf("cmdOK"), "");
    EXPECT_EQ(HelpPageOf(""), "");
}

TEST(HelpPages, BothStepsOfAWizardHaveOne) {
    EXPECT_EQ(HelpPageOf("frmAddClient1"), HelpPageOf("frmAddClient2"));
}

TEST(HelpPages, TheInnermostThatHasAPageTells) {
    EXPECT_EQ(PageAt({"cmdGetSettings", "Picture1", "frmMain"}), "main-window.html");
    EXPECT_EQ(PageAt({"cmdFlow", "content", "frmClient", "MDIArea", "frmMain"}),
              "client-window.html");
    EXPECT_EQ(PageAt({"txtName", "Frames(2)", "frmSetup", "frmMain"}), "setup-general.html");
    EXPECT_EQ(PageAt({"TabStrip", "frmSetup", "frmMain"}), "setup.html");
}

TEST(HelpPages, WhereNothingHasAPageTheContentsTell) {
    EXPECT_EQ(PageAt({"cmdOK", "frmNew"}), "index.html");
    EXPECT_EQ(PageAt({}), "index.html");
}

}  // namespace
