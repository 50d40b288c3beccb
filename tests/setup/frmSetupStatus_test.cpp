// What the set-up tells beside its buttons while the logger is spoken to.
#include "frmSetup_fixture.h"

namespace setup_testing {
namespace {

class SetupStatus : public SetupFormTest {
 protected:
    [[nodiscard]] bool Tells(const std::string& text) {
        return TimerPasses([&] { return TextOf("lblStatus").find(text) != std::string::npos; });
    }
};

TEST_F(SetupStatus, WhatCameOfProgrammingIsTold) {
    Open();
    opened->Answer(BoxAnswer::Yes);
    Click("cmdOK");
    EXPECT_TRUE(Tells("  Settings of Site 1 programmed"));
}

TEST_F(SetupStatus, AFailedProgrammingIsTold) {
    Open();
    opened->Logger().Silence();
    opened->Answer(BoxAnswer::Yes);
    Click("cmdOK");
    EXPECT_TRUE(Tells("  Programming Site 1 failed"));
}

TEST_F(SetupStatus, ALoggerThatCouldNotBeReadIsToldInTheDialog) {
    Open();
    opened->console.State.Status.Came("Site 1 did not answer: these are not its settings of now");
    EXPECT_TRUE(Tells("Site 1 did not answer: these are not its settings of now"));
}

TEST_F(SetupStatus, TheLineTakesNoRoomFromTheDialog) {
    Open();
    const auto* line = Find("lblStatus");
    EXPECT_LE(line->height(), Find("cmdOK")->height());
    EXPECT_LT(line->geometry().right(), Find("cmdOK")->geometry().left());
    const QSize before = form->sizeHint();
    opened->console.State.Status.Came(std::string(400, 'W'));
    ASSERT_TRUE(Tells("WWW"));
    EXPECT_EQ(form->sizeHint(), before);
    EXPECT_FALSE(line->toolTip().isEmpty());
}

}  // namespace
}  // namespace setup_testing
