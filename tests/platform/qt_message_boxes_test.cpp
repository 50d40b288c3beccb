#include "platform/qt/qt_message_boxes.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QWindow>
#include <memory>

#include "platform/qt/text_qt.h"
#include "support/qt/modal_answer.h"

namespace {

using Act = std::function<void(QMessageBox&)>;

BoxAnswer Answer(const BoxContent& box, Act act) {
    const ModalAnswer<QMessageBox> answer(std::move(act));
    const BoxAnswer given = QtMessageBoxes().Show(box);
    EXPECT_TRUE(answer.Given());
    return given;
}

Act Press(QMessageBox::StandardButton button) {
    return [button](QMessageBox& box) { box.button(button)->click(); };
}
void CloseFrame(QMessageBox& box) {
    box.close();
}
void PressEscape(QMessageBox& box) {
    QTest::keyClick(&box, Qt::Key_Escape);
}
void PressEnter(QMessageBox& box) {
    QTest::keyClick(&box, Qt::Key_Return);
}

TEST(MessageBoxesTest, TextAndTitleStandAsGiven) {
    const BoxContent box{"<b>R&D</b> 100% &file\nsecond line", "Tom & Jerry [*]"};
    Answer(box, [&box](QMessageBox& shown) {
        EXPECT_EQ(shown.text(), ToQt(box.Text));
        EXPECT_EQ(shown.textFormat(), Qt::PlainText);
        EXPECT_EQ(shown.windowHandle()->title(), ToQt(box.Title));
        const auto* label = shown.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
        ASSERT_NE(label, nullptr);
        EXPECT_EQ(label->textFormat(), Qt::PlainText);
        EXPECT_EQ(label->text(), ToQt(box.Text));
        EXPECT_EQ(label->buddy(), nullptr);
        shown.close();
    });
}

TEST(MessageBoxesTest, AnEmptyTitleShowsNoProgramName) {
    Answer({"Text", ""}, [](QMessageBox& shown) {
        EXPECT_TRUE(shown.windowTitle().isEmpty());
        EXPECT_EQ(shown.windowHandle()->title(), QStringLiteral(" "));
        shown.close();
    });
}

struct IconCase {
    BoxIcon Asked;
    QMessageBox::Icon Shown;
};
class BoxIcons : public ::testing::TestWithParam<IconCase> {};

TEST_P(BoxIcons, ShowTheirSign) {
    Answer({"Text", "Title", GetParam().Asked}, [](QMessageBox& shown) {
        EXPECT_EQ(shown.icon(), GetParam().Shown);
        shown.close();
    });
}

INSTANTIATE_TEST_SUITE_P(All, BoxIcons,
                         ::testing::Values(IconCase{BoxIcon::None, QMessageBox::NoIcon},
                                           IconCase{BoxIcon::Stop, QMessageBox::Critical},
                                           IconCase{BoxIcon::Exclamation, QMessageBox::Warning},
                                           IconCase{BoxIcon::Information, QMessageBox::Information},
                                           IconCase{BoxIcon::Question, QMessageBox::Question}));

struct AnswerCase {
    BoxButtons Buttons;
    Act Does;
    BoxAnswer Expected;
};
class BoxAnswers : public ::testing::TestWithParam<AnswerCase> {};

TEST_P(BoxAnswers, AreTheButtonThatClosedTheBox) {
    const BoxContent box{"Text", "Title", BoxIcon::None, GetParam().Buttons};
    EXPECT_EQ(Answer(box, GetParam().Does), GetParam().Expected);
}

INSTANTIATE_TEST_SUITE_P(
    Pressed, BoxAnswers,
    ::testing::Values(
        AnswerCase{BoxButtons::Ok, Press(QMessageBox::Ok), BoxAnswer::Ok},
        AnswerCase{BoxButtons::OkCancel, Press(QMessageBox::Ok), BoxAnswer::Ok},
        AnswerCase{BoxButtons::OkCancel, Press(QMessageBox::Cancel), BoxAnswer::Cancel},
        AnswerCase{BoxButtons::YesNo, Press(QMessageBox::Yes), BoxAnswer::Yes},
        AnswerCase{BoxButtons::YesNo, Press(QMessageBox::No), BoxAnswer::No},
        AnswerCase{BoxButtons::YesNoCancel, Press(QMessageBox::Yes), BoxAnswer::Yes},
        AnswerCase{BoxButtons::YesNoCancel, Press(QMessageBox::No), BoxAnswer::No},
        AnswerCase{BoxButtons::YesNoCancel, Press(QMessageBox::Cancel), BoxAnswer::Cancel}));

INSTANTIATE_TEST_SUITE_P(
    ClosedByTheFrame, BoxAnswers,
    ::testing::Values(AnswerCase{BoxButtons::Ok, CloseFrame, BoxAnswer::Ok},
                      AnswerCase{BoxButtons::OkCancel, CloseFrame, BoxAnswer::Cancel},
                      AnswerCase{BoxButtons::YesNo, CloseFrame, BoxAnswer::No},
                      AnswerCase{BoxButtons::YesNoCancel, CloseFrame, BoxAnswer::Cancel}));

INSTANTIATE_TEST_SUITE_P(
    Escape, BoxAnswers,
    ::testing::Values(AnswerCase{BoxButtons::Ok, PressEscape, BoxAnswer::Ok},
                      AnswerCase{BoxButtons::OkCancel, PressEscape, BoxAnswer::Cancel},
                      AnswerCase{BoxButtons::YesNo, PressEscape, BoxAnswer::No},
                      AnswerCase{BoxButtons::YesNoCancel, PressEscape, BoxAnswer::Cancel}));

INSTANTIATE_TEST_SUITE_P(
    Enter, BoxAnswers,
    ::testing::Values(AnswerCase{BoxButtons::Ok, PressEnter, BoxAnswer::Ok},
                      AnswerCase{BoxButtons::OkCancel, PressEnter, BoxAnswer::Ok},
                      AnswerCase{BoxButtons::YesNo, PressEnter, BoxAnswer::Yes},
                      AnswerCase{BoxButtons::YesNoCancel, PressEnter, BoxAnswer::Yes}));

TEST(MessageBoxesTest, StandsOverTheActiveWindowAndIsModal) {
    QWidget window;
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    Answer({"Text", "Title"}, [&window](QMessageBox& shown) {
        EXPECT_EQ(shown.parentWidget(), &window);
        EXPECT_TRUE(shown.isModal());
        shown.close();
    });
}

TEST(MessageBoxesTest, ABoxWhoseWindowGoesIsClosedByItsFrame) {
    auto window = std::make_unique<QWidget>();
    window->show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    const BoxContent box{"Text", "Title", BoxIcon::Question, BoxButtons::YesNo};
    EXPECT_EQ(Answer(box, [&window](QMessageBox&) { window.reset(); }), BoxAnswer::No);
}

}  // namespace
