#include <QClipboard>
#include <QLineEdit>
#include <QPushButton>

#include "console/frmAddClient1.h"
#include "console/frmAddClient2.h"
#include "console/frmEditClient.h"
#include "forms_bench.h"
#include "support/virtual_host.h"

namespace {

using namespace forms_bench;
using testing_support::ScriptedBoxes;

QString TextOf(const QWidget& window, const std::string& name) {
    return Find<QLineEdit>(window, name)->text();
}

// ----- the first page

class frmAddClient1Test : public ::testing::Test {
 protected:
    frmAddClient1Test() {
        ClientRadio entry;
        entry.Name = "Pump 3";
        book.Entries.Append(entry);
        Show(form);
    }

    AddressBook book;
    ScriptedBoxes boxes;
    frmAddClient1 form{book, boxes, nullptr};
};

TEST_F(frmAddClient1Test, StartsEmptyWithTheFocusInTheName) {
    EXPECT_EQ(form.windowTitle(), QStringLiteral("Add New Client Radio"));
    EXPECT_EQ(Focused(), "txtClientRadioName");
    EXPECT_EQ(form.Name(), "");
    EXPECT_EQ(Find<QLineEdit>(form, "txtClientRadioName")->maxLength(), 32);
}

TEST_F(frmAddClient1Test, EnterGoesOnWithAGoodName) {
    Type("Weir");
    Press(Qt::Key_Return);
    EXPECT_EQ(form.Tag, "NEXT");
    EXPECT_FALSE(form.isVisible());
    EXPECT_EQ(form.Name(), "Weir");
    EXPECT_TRUE(boxes.Shown.empty());
}

TEST_F(frmAddClient1Test, NextIsRefusedWithoutAName) {
    Click(form, "cmdNext");
    EXPECT_TRUE(form.isVisible());
    EXPECT_EQ(Focused(), "txtClientRadioName");
    ASSERT_EQ(boxes.Shown.size(), 1U);
    EXPECT_EQ(boxes.Shown[0].Title, "Missing Client Name");
}

TEST_F(frmAddClient1Test, EnterAndTabAreRefusedWithATakenName) {
    Type("pump 3");
    Press(Qt::Key_Return);
    EXPECT_TRUE(form.isVisible());
    EXPECT_EQ(boxes.Shown.size(), 1U);
    Press(Qt::Key_Tab);
    EXPECT_EQ(Focused(), "txtClientRadioName");
    EXPECT_EQ(boxes.Shown.size(), 2U);
}

TEST_F(frmAddClient1Test, NameIsTakenInEitherCaseOfAnyLetter) {
    book.Entries[1].Name = "Düker Süd";
    Find<QLineEdit>(form, "txtClientRadioName")->setText(QStringLiteral("DÜKER SÜD"));
    Press(Qt::Key_Return);
    EXPECT_TRUE(form.isVisible());
    ASSERT_EQ(boxes.Shown.size(), 1U);
    EXPECT_EQ(boxes.Shown[0].Title, "Name not Unique");
}

TEST_F(frmAddClient1Test, NameOfBytesThatAreNoTextIsThatOfNoOther) {
    book.Entries[1].Name =
        "S\xFC"
        "d";
    Find<QLineEdit>(form, "txtClientRadioName")->setText(ToQt(book.Entries[1].Name));
    Press(Qt::Key_Return);
    EXPECT_EQ(form.Tag, "NEXT");
    EXPECT_TRUE(boxes.Shown.empty());
}

TEST_F(frmAddClient1Test, CancelLeavesWithoutValidating) {
    Click(form, "cmdCancel");
    EXPECT_FALSE(form.isVisible());
    EXPECT_EQ(form.Tag, "CANCEL");
    EXPECT_TRUE(boxes.Shown.empty());
}

TEST_F(frmAddClient1Test, ShiftTabToCancelValidatesNothing) {
    Press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(Focused(), "cmdCancel");
    EXPECT_TRUE(boxes.Shown.empty());
    Press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(Focused(), "txtClientRadioName") << "past it no missing name is carried";
    EXPECT_EQ(boxes.Shown.size(), 1U);
}

TEST_F(frmAddClient1Test, EnterPressesTheButtonThatHasTheFocus) {
    Type("Weir");
    Press(Qt::Key_Backtab, Qt::ShiftModifier);
    ASSERT_EQ(Focused(), "cmdCancel");
    Press(Qt::Key_Return);
    EXPECT_FALSE(form.isVisible());
    EXPECT_EQ(form.Tag, "CANCEL");
    Show(form);
    Find(form, "txtClientRadioName")->setFocus();
    Press(Qt::Key_Tab);
    ASSERT_EQ(Focused(), "cmdNext");
    Press(Qt::Key_Return);
    EXPECT_FALSE(form.isVisible());
    EXPECT_EQ(form.Tag, "NEXT");
}

TEST_F(frmAddClient1Test, EscapeAndTheFrameLeaveWithoutValidating) {
    Press(Qt::Key_Escape);
    EXPECT_FALSE(form.isVisible());
    Show(form);
    form.close();
    EXPECT_EQ(form.Tag, "CANCEL");
    EXPECT_TRUE(boxes.Shown.empty());
}

TEST_F(frmAddClient1Test, ReachesEverybody) {
    ExpectReach(form);
    EXPECT_EQ(TabOrder(form, "txtClientRadioName"),
              (std::vector<std::string>{"txtClientRadioName", "cmdNext", "cmdCancel"}));
    KeepPictures(form);
}

// ----- the second page

class frmAddClient2Test : public ::testing::Test {
 protected:
    frmAddClient2Test() { Show(form); }

    [[nodiscard]] QString Text(const std::string& name) const { return TextOf(form, name); }

    ScriptedBoxes boxes;
    frmAddClient2 form{TextsOf(0x10, {0x00, 0xA0, 0x96, 0, 0, 0}), boxes, nullptr};
};

TEST_F(frmAddClient2Test, StartsWithWhatIsOfferedAndTheChannelSelected) {
    EXPECT_EQ(form.windowTitle(), QStringLiteral("Add New Client Radio"));
    EXPECT_EQ(Find<QPushButton>(form, "cmdNext")->text(), QStringLiteral("&Finish"));
    EXPECT_EQ(Text("txtChannel"), QStringLiteral("10"));
    EXPECT_EQ(Text("txtMAC(1)"), QStringLiteral("A0"));
    EXPECT_EQ(Text("txtMAC(5)"), QStringLiteral("00"));
    EXPECT_EQ(Focused(), "txtChannel");
    EXPECT_EQ(Find<QLineEdit>(form, "txtChannel")->selectedText(), QStringLiteral("10"));
}

TEST_F(frmAddClient2Test, TypingTwoDigitsMovesTheFocusThroughAllFields) {
    Type("2a00a0961f2e3d");
    EXPECT_EQ(Focused(), "cmdNext");
    const AddressTexts texts = form.Texts();
    EXPECT_EQ(texts.Channel, "2A");
    EXPECT_EQ(texts.Mac, (std::array<std::string, 6>{"00", "A0", "96", "1F", "2E", "3D"}));
    EXPECT_TRUE(boxes.Shown.empty());
    Press(Qt::Key_Return);
    EXPECT_EQ(form.Tag, "FINISH");
}

TEST_F(frmAddClient2Test, LowerCaseAbInTheChannelIsRefusedAsAB) {
    Type("ab");
    EXPECT_EQ(Text("txtChannel"), QStringLiteral("AB"));
    EXPECT_EQ(Focused(), "txtChannel");
    ASSERT_EQ(boxes.Shown.size(), 1U);
    EXPECT_EQ(boxes.Shown[0].Title, "Bad Channel Number");
}

TEST_F(frmAddClient2Test, RefusedFieldStaysArmed) {
    Type("ab");
    Press(Qt::Key_Backspace);
    Press(Qt::Key_Backspace);
    Type("12");
    EXPECT_EQ(Focused(), "txtMAC(0)");
}

TEST_F(frmAddClient2Test, Typing15InMac2MovesToMac3WithItsWholeTextSelected) {
    Click(form, "txtMAC(2)");
    EXPECT_EQ(Find<QLineEdit>(form, "txtMAC(2)")->selectedText(), QStringLiteral("96"));
    Type("15");
    EXPECT_EQ(Focused(), "txtMAC(3)");
    EXPECT_EQ(Find<QLineEdit>(form, "txtMAC(3)")->selectedText(), QStringLiteral("00"));
    EXPECT_EQ(Text("txtMAC(2)"), QStringLiteral("15"));
}

TEST_F(frmAddClient2Test, PastedTextThatDoesNotFitTheChannelIsRefusedWhole) {
    for (const QString& pasted : {QStringLiteral("1 2"), QStringLiteral("123")}) {
        boxes.Shown.clear();
        Find<QLineEdit>(form, "txtChannel")->selectAll();
        QApplication::clipboard()->setText(pasted);
        Press(Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(Text("txtChannel"), pasted);
        EXPECT_EQ(Focused(), "txtChannel");
        ASSERT_EQ(boxes.Shown.size(), 1U);
        EXPECT_EQ(boxes.Shown[0].Title, "Bad Channel Number");
    }
    Press(Qt::Key_Tab);
    EXPECT_EQ(Focused(), "txtChannel") << "nor is it left";
}

TEST_F(frmAddClient2Test, PasteBesideADigitOfTheChannelIsRefusedToo) {
    Press(Qt::Key_End);
    QApplication::clipboard()->setText(QStringLiteral("3"));
    Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Text("txtChannel"), QStringLiteral("103"));
    EXPECT_EQ(boxes.Shown.size(), 1U);
}

TEST_F(frmAddClient2Test, PastedTextThatFitsTheChannelMovesOn) {
    QApplication::clipboard()->setText(QStringLiteral("2A"));
    Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Text("txtChannel"), QStringLiteral("2A"));
    EXPECT_EQ(Focused(), "txtMAC(0)");
    EXPECT_TRUE(boxes.Shown.empty());
}

TEST_F(frmAddClient2Test, TheChannelTakesNoThirdKey) {
    Type("ab");
    boxes.Shown.clear();
    Type("1f");
    EXPECT_EQ(Text("txtChannel"), QStringLiteral("AB"));
    Press(Qt::Key_Home);
    Type("2");
    EXPECT_EQ(Text("txtChannel"), QStringLiteral("AB"));
    EXPECT_TRUE(boxes.Shown.empty());
    Press(Qt::Key_Right, Qt::ShiftModifier);
    Type("2");
    EXPECT_EQ(Text("txtChannel"), QStringLiteral("2B")) << "in place of what is selected";
    EXPECT_EQ(Focused(), "txtMAC(0)");
}

TEST_F(frmAddClient2Test, AMacFieldTakesNoNinthKey) {
    QLineEdit* const field = Find<QLineEdit>(form, "txtMAC(0)");
    Find(form, "cmdNext")->setFocus();
    field->setText(QStringLiteral("1234567"));
    field->setFocus();
    Press(Qt::Key_End);
    Type("8");
    EXPECT_EQ(Text("txtMAC(0)"), QStringLiteral("12345678"));
    EXPECT_EQ(boxes.Shown.size(), 1U);
    Type("9");
    EXPECT_EQ(Text("txtMAC(0)"), QStringLiteral("12345678"));
    EXPECT_EQ(boxes.Shown.size(), 1U);
}

TEST_F(frmAddClient2Test, PastedLetterOfTwoBytesIsOneCharacter) {
    Find<QLineEdit>(form, "txtMAC(0)")->setFocus();
    QApplication::clipboard()->setText(QStringLiteral("ä"));
    Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Text("txtMAC(0)"), QStringLiteral("ä"));
    EXPECT_TRUE(boxes.Shown.empty());
    EXPECT_EQ(Focused(), "txtMAC(0)");
    Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(boxes.Shown.size(), 1U);
}

TEST_F(frmAddClient2Test, LetterWithAltOrMetaIsNoTypedKey) {
    for (const Qt::KeyboardModifier held : {Qt::AltModifier, Qt::MetaModifier}) {
        for (const Qt::Key key : {Qt::Key_G, Qt::Key_A, Qt::Key_5}) {
            Press(key, held);
            EXPECT_EQ(Text("txtChannel"), QStringLiteral("10"));
        }
    }
    EXPECT_TRUE(boxes.Shown.empty());
    Press(Qt::Key_M, Qt::AltModifier);
    EXPECT_EQ(Focused(), "txtMAC(0)") << "the letter of its caption";
}

TEST_F(frmAddClient2Test, ControlWithAltTypesAsItDoesOnSomeKeyboards) {
    Press(Qt::Key_Q, Qt::ControlModifier | Qt::AltModifier);
    EXPECT_EQ(Text("txtChannel"), QStringLiteral("10"));
    EXPECT_EQ(boxes.Shown.size(), 1U);
}

TEST_F(frmAddClient2Test, PastedTextWithABlankReachesTheValidation) {
    Find<QLineEdit>(form, "txtMAC(0)")->setFocus();
    QApplication::clipboard()->setText(QStringLiteral("1 2"));
    Press(Qt::Key_V, Qt::ControlModifier);
    ASSERT_EQ(boxes.Shown.size(), 1U);
    EXPECT_EQ(boxes.Shown[0].Title, "Bad MAC Number");
    EXPECT_EQ(Focused(), "txtMAC(0)");
    EXPECT_EQ(Text("txtMAC(0)"), QStringLiteral("1 2"));
}

TEST_F(frmAddClient2Test, KeysThatAreNoDigitsAreToldAndDropped) {
    Type("g");
    EXPECT_EQ(Text("txtChannel"), QStringLiteral("10"));
    ASSERT_EQ(boxes.Shown.size(), 1U);
    EXPECT_EQ(boxes.Shown[0].Title, "");
    Type(" ");
    EXPECT_EQ(Text("txtChannel"), QStringLiteral("10"));
    EXPECT_EQ(boxes.Shown.size(), 1U);
}

TEST_F(frmAddClient2Test, EditingKeysPass) {
    Press(Qt::Key_Delete);
    EXPECT_EQ(Text("txtChannel"), QString());
    EXPECT_TRUE(boxes.Shown.empty());
}

TEST_F(frmAddClient2Test, SingleDigitGetsItsZeroWhenTheFieldIsLeft) {
    Type("7");
    Press(Qt::Key_Tab);
    EXPECT_EQ(Text("txtChannel"), QStringLiteral("07"));
    EXPECT_EQ(Focused(), "txtMAC(0)");
}

TEST_F(frmAddClient2Test, BadFieldIsNotLeft) {
    Press(Qt::Key_Delete);
    Press(Qt::Key_Tab);
    EXPECT_EQ(Focused(), "txtChannel");
    Press(Qt::Key_Return);
    EXPECT_TRUE(form.isVisible());
    Click(form, "txtMAC(4)");
    EXPECT_EQ(Focused(), "txtChannel");
    EXPECT_EQ(boxes.Shown.size(), 3U);
}

TEST_F(frmAddClient2Test, CancelAndEscapeLeaveABadField) {
    Press(Qt::Key_Delete);
    Click(form, "cmdCancel");
    EXPECT_FALSE(form.isVisible());
    Show(form);
    Press(Qt::Key_Escape);
    EXPECT_FALSE(form.isVisible());
    EXPECT_EQ(form.Tag, "CANCEL");
    EXPECT_TRUE(boxes.Shown.empty());
}

TEST_F(frmAddClient2Test, ShiftTabFromABadChannelReachesCancelWhichEnterPresses) {
    Press(Qt::Key_Delete);
    Press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(Focused(), "cmdCancel");
    Press(Qt::Key_Return);
    EXPECT_FALSE(form.isVisible());
    EXPECT_EQ(form.Tag, "CANCEL");
    EXPECT_TRUE(boxes.Shown.empty());
}

TEST_F(frmAddClient2Test, MacFieldsTakeEightCharactersAndRefuseMoreThanTwo) {
    EXPECT_EQ(Find<QLineEdit>(form, "txtMAC(0)")->maxLength(), 8);
    Find<QLineEdit>(form, "txtMAC(0)")->setFocus();
    QApplication::clipboard()->setText(QStringLiteral("123456789"));
    Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Text("txtMAC(0)"), QStringLiteral("12345678"));
    EXPECT_EQ(boxes.Shown.size(), 1U);
}

TEST_F(frmAddClient2Test, AnotherWindowInFrontLeavesTheFieldAsItIs) {
    Type("1");
    QDialog other;
    Show(other);
    other.close();
    form.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
    EXPECT_EQ(Find<QLineEdit>(form, "txtChannel")->selectedText(), QString());
    Type("5");
    EXPECT_EQ(Text("txtChannel"), QStringLiteral("15"));
    EXPECT_EQ(Focused(), "txtMAC(0)");
}

TEST_F(frmAddClient2Test, ReachesEverybody) {
    ExpectReach(form);
    EXPECT_EQ(
        TabOrder(form, "txtChannel"),
        (std::vector<std::string>{"txtChannel", "txtMAC(0)", "txtMAC(1)", "txtMAC(2)", "txtMAC(3)",
                                  "txtMAC(4)", "txtMAC(5)", "cmdNext", "cmdCancel"}));
    KeepPictures(form);
}

// ----- the edit dialog

class frmEditClientTest : public ::testing::Test {
 protected:
    ScriptedBoxes boxes;
};

TEST_F(frmEditClientTest, ShowsTheEntryAndTakesAnyName) {
    frmEditClient form({"Pump & 3", TextsOf(0x37, {1, 2, 3, 4, 5, 6})}, boxes, nullptr);
    Show(form);
    EXPECT_EQ(form.windowTitle(), QStringLiteral("Edit Logger Radio Settings"));
    EXPECT_EQ(TextOf(form, "txtClientRadioName"), QStringLiteral("Pump & 3"));
    EXPECT_EQ(TextOf(form, "txtChannel"), QStringLiteral("37"));
    EXPECT_EQ(TextOf(form, "txtMAC(5)"), QStringLiteral("06"));
    EXPECT_EQ(form.Tag, "CANCEL");
    Find<QLineEdit>(form, "txtClientRadioName")->clear();
    Click(form, "cmdNext");
    EXPECT_EQ(form.Tag, "FINISH");
    EXPECT_EQ(form.Texts().Name, "");
    EXPECT_TRUE(boxes.Shown.empty());
}

TEST_F(frmEditClientTest, EnterOnCancelKeepsTheEntry) {
    frmEditClient form({"Pump", TextsOf(0x37, {1, 2, 3, 4, 5, 6})}, boxes, nullptr);
    Show(form);
    Find(form, "cmdCancel")->setFocus();
    Press(Qt::Key_Return);
    EXPECT_FALSE(form.isVisible());
    EXPECT_EQ(form.Tag, "CANCEL");
}

TEST_F(frmEditClientTest, NameLeftAsItIsKeepsItsBytes) {
    const std::string latin = "Gr\xFC\xDF";
    frmEditClient form({latin, TextsOf(1, {})}, boxes, nullptr);
    EXPECT_EQ(form.Texts().Name, latin);
    Find<QLineEdit>(form, "txtClientRadioName")->setText(QStringLiteral("New"));
    EXPECT_EQ(form.Texts().Name, "New");
}

TEST_F(frmEditClientTest, LongNameIsCutToWhatTheFieldTakes) {
    frmEditClient form({std::string(5000, 'x'), TextsOf(1, {})}, boxes, nullptr);
    EXPECT_EQ(form.Texts().Name, std::string(32, 'x'));
}

TEST_F(frmEditClientTest, ChannelOfTheFileAbove37MustBeMendedBeforeItIsLeft) {
    frmEditClient form({"Site", TextsOf(0x7F, {})}, boxes, nullptr);
    Show(form);
    Press(Qt::Key_Tab);
    Press(Qt::Key_Tab);
    EXPECT_EQ(Focused(), "txtChannel");
    EXPECT_EQ(boxes.Shown.size(), 1U);
}

TEST_F(frmEditClientTest, ReachesEverybody) {
    frmEditClient form({"North outfall", TextsOf(0x10, {0x00, 0xA0, 0x96, 0x1F, 0x2E, 0x3D})},
                       boxes, nullptr);
    Show(form);
    ExpectReach(form);
    EXPECT_EQ(TabOrder(form, "txtClientRadioName"),
              (std::vector<std::string>{"txtClientRadioName", "txtChannel", "txtMAC(0)",
                                        "txtMAC(1)", "txtMAC(2)", "txtMAC(3)", "txtMAC(4)",
                                        "txtMAC(5)", "cmdNext", "cmdCancel"}));
    KeepPictures(form);
}

}  // namespace
