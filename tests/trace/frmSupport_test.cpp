#include "trace/frmSupport.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTest>

#include "common/path_text.h"
#include "support/qt/find_control.h"
#include "support/qt/run_events.h"
#include "support/virtual_console.h"

namespace {

using namespace testing_support;

class FrmSupportTest : public ::testing::Test {
 protected:
    FrmSupportTest() {
        console_.AddSite(BasicSite(1));
        console_.Connect();
    }

    SupportSource Source() const {
        return {.Version = "1.2.3",
                .System = "Some System",
                .Made = console_.State.Outside.Clock.Now(),
                .SettingsRecord = console_.State.SettingsRecord,
                .Book = console_.State.Book,
                .Recorder = console_.State.Recorder,
                .Log = "Getting Sample of Site 1...OK\n"};
    }
    template <typename Widget = QWidget>
    Widget* Control(const std::string& name) const {
        return Find<Widget>(*form_, name);
    }
    void Press(const std::string& name) const { Control<QPushButton>(name)->click(); }
    std::string Shown(const char* part) const {
        auto* tabs = Control<QTabBar>("tabParts");
        for (int tab = 0; tab < tabs->count(); ++tab) {
            if (tabs->tabText(tab) == QLatin1String(part)) {
                tabs->setCurrentIndex(tab);
                return FromQt(Control<QPlainTextEdit>("txtPart")->toPlainText());
            }
        }
        ADD_FAILURE() << "no " << part;
        return {};
    }

    std::string folder_ = FreshFolder("frmSupport");
    VirtualConsole console_{folder_};
    std::unique_ptr<frmSupport> form_ =
        std::make_unique<frmSupport>([this] { return Source(); }, console_.State.Outside, nullptr);
};

TEST_F(FrmSupportTest, ItsTabsAreInSight) {
    form_->ShowOrRaise();
    const auto* tabs = Control<QTabBar>("tabParts");
    EXPECT_GE(tabs->height(), tabs->tabRect(0).height());
    EXPECT_GT(tabs->height(), 0);
}

TEST_F(FrmSupportTest, ShowsEveryTextThatGoesIn) {
    form_->ShowOrRaise();
    EXPECT_EQ(Control<QTabBar>("tabParts")->count(), 5);
    EXPECT_EQ(Shown("versions.txt").rfind("Orvia: 1.2.3\n", 0), 0U);
    EXPECT_NE(Shown("settings.txt").find("Port: "), std::string::npos);
    EXPECT_NE(Shown("book.txt").find("Site 1"), std::string::npos);
    EXPECT_NE(Shown("trace.txt").find("port: open "), std::string::npos);
    EXPECT_EQ(Shown("log.txt"), "Getting Sample of Site 1...OK\n");
    EXPECT_TRUE(console_.Outside.Dialogs.Queries.empty());
    EXPECT_FALSE(form_->isModal());
}

TEST_F(FrmSupportTest, SavesWhatItShowsAndNothingElse) {
    form_->ShowOrRaise();
    std::vector<ZipEntry> shown;
    for (const char* part : {"versions.txt", "settings.txt", "book.txt", "trace.txt", "log.txt"}) {
        shown.push_back({part, Shown(part)});
    }
    const LocalTime made = console_.State.Outside.Clock.Now();
    // Whatever happens behind the look goes into the next report.
    console_.State.Recorder.SetPortOpen(false);
    const std::string path = JoinPath(folder_, "report.zip");
    console_.Outside.Dialogs.Picks.push_back(path);
    Press("cmdSave");
    ASSERT_EQ(console_.Outside.Dialogs.Queries.size(), 1U);
    EXPECT_EQ(console_.Outside.Dialogs.Queries[0].DefaultExtension, ".zip");
    EXPECT_TRUE(console_.Outside.Dialogs.Prompts[0]);
    EXPECT_EQ(FileContents(path),
              ZipOf(shown, {made.Year, made.Month, made.Day, made.Hour, made.Minute, made.Second}));
    EXPECT_EQ(FromQt(Control<QLabel>("lblState")->text()), "Saved as report.zip");
    EXPECT_TRUE(console_.Outside.Boxes.Shown.empty());
}

TEST_F(FrmSupportTest, NamesStayAwayIfWanted) {
    form_->ShowOrRaise();
    EXPECT_NE(Shown("log.txt").find("Site 1"), std::string::npos);
    Control<QCheckBox>("chkNames")->click();
    EXPECT_EQ(FromQt(Control<QPlainTextEdit>("txtPart")->toPlainText()),
              "Getting Sample of Logger 1...OK\n");
    const std::string path = JoinPath(folder_, "report.zip");
    console_.Outside.Dialogs.Picks.push_back(path);
    Press("cmdSave");
    const std::string zip = FileContents(path);
    EXPECT_NE(zip.find("Logger 1"), std::string::npos);
    EXPECT_EQ(zip.find("Site 1"), std::string::npos);
}

TEST_F(FrmSupportTest, EachTimeItIsOpenedItMakesANewReport) {
    form_->ShowOrRaise();
    const std::string before = Shown("trace.txt");
    console_.State.Recorder.SetPortOpen(false);
    form_->ShowOrRaise();
    const std::string after = Shown("trace.txt");
    EXPECT_EQ(before.find("port: close "), std::string::npos);
    EXPECT_NE(after.find("port: close "), std::string::npos);
    EXPECT_EQ(Control<QTabBar>("tabParts")->count(), 5);
}

TEST_F(FrmSupportTest, AFileThatCannotBeWrittenIsTold) {
    form_->ShowOrRaise();
    console_.Outside.Dialogs.Picks.push_back(JoinPath(folder_, "missing/report.zip"));
    Press("cmdSave");
    ASSERT_EQ(console_.Outside.Boxes.Shown.size(), 1U);
    EXPECT_EQ(console_.Outside.Boxes.Shown[0].Text, "The file could not be written.");
    EXPECT_EQ(FromQt(Control<QLabel>("lblState")->text()), "");
}

TEST_F(FrmSupportTest, TheEndOfTheProgramClosesItInsideItsFileDialogWithoutAWord) {
    form_->ShowOrRaise();
    const std::string path = JoinPath(folder_, "report.zip");
    console_.Outside.Dialogs.Picks.push_back(path);
    console_.Outside.Dialogs.WhileShown = [this] { form_->Unload(); };
    Press("cmdSave");
    EXPECT_FALSE(form_->isVisible());
    EXPECT_TRUE(console_.Outside.Boxes.Shown.empty());
    EXPECT_FALSE(FileExists(path));
    form_->ShowOrRaise();
    EXPECT_FALSE(form_->isVisible()) << "it does not come back";
}

}  // namespace
