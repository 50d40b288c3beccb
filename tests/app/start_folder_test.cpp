// Where file dialogs start that start in the program's folder, if no file can be put there.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "archive/plot_file.h"
#include "common/path_text.h"
#include "console/book_operations.h"
#include "flow/rating_session.h"
#include "history/save_history.h"
#include "support/virtual_console.h"

namespace {

using testing_support::VirtualConsole;

const std::string Program = "/usr/lib/orvia";
const std::string Documents = "/home/operator/Documents";

/// The console in a folder that takes files, or whose files go to the documents instead.
class StartFolder : public ::testing::TestWithParam<bool> {
 protected:
    StartFolder() {
        if (GetParam()) {
            outside_.SaveFolder = Documents;
        }
    }
    [[nodiscard]] static std::string ExpectedFolder() { return GetParam() ? Documents : Program; }
    [[nodiscard]] static std::string Expected(const std::string& name) {
        return JoinPath(ExpectedFolder(), name);
    }
    /// What the last dialog offered.
    [[nodiscard]] std::string Offered() const {
        const auto& queries = console_.Outside.Dialogs.Queries;
        return queries.empty() ? "no dialog" : queries.back().InitialName;
    }
    [[nodiscard]] std::string OfferedFolder() const {
        const std::string offered = Offered();
        return offered.substr(0, std::max<std::size_t>(LastSeparator(offered), 1) - 1);
    }

    VirtualConsole console_{Program};
    Host& outside_ = console_.State.Outside;
};

TEST_P(StartFolder, AddressBooks) {
    LoadOtherBook(console_.BookWork());
    EXPECT_EQ(Offered(), Expected("*.obk"));
    CreateBlankBook(console_.BookWork());
    EXPECT_EQ(Offered(), Expected("*.obk"));
}

TEST_P(StartFolder, FilesOfAHistory) {
    std::string lastFolder;
    static_cast<void>(AskForCsvFile("pump", outside_, lastFolder));
    EXPECT_EQ(OfferedFolder(), ExpectedFolder());
}

TEST_P(StartFolder, Plots) {
    std::string lastFolder;
    static_cast<void>(AskForPlotFile("pump", outside_, lastFolder));
    EXPECT_EQ(OfferedFolder(), ExpectedFolder());
}

TEST_P(StartFolder, FlowTables) {
    RatingSession session(outside_);
    static_cast<void>(session.Open());
    EXPECT_EQ(Offered(), Expected("*.tbl"));
    static_cast<void>(session.PickRows());
    EXPECT_EQ(Offered(), Expected("*.csv"));
}

INSTANTIATE_TEST_SUITE_P(OfFiles, StartFolder, ::testing::Bool(), [](const auto& chosen) {
    return std::string(chosen.param ? "Documents" : "Program");
});

}  // namespace
