#include "platform/qt/qt_message_boxes.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <QWindow>
#include <memory>

#include "platform/qt/text_qt.h"
#include "support/qt/modal_answer.h"
#include "support/qt/pictures_on_buttons.h"

namespace {

using testing_support::PicturesOnButtons;

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

TEST(MessageBoxesTest, NoButtonHasAPictureWhateverTheStyleGives) {
    const PicturesOnButtons style;
    for (const BoxButtons buttons : {BoxButtons::Ok, BoxButtons::YesNoCancel}) {
        BoxContent box{"Text", "Title"};
        box.Buttons = buttons;
        Answer(box, [](QMessageBox& shown) {
            for (const QAbstractButton* button : shown.buttons()) {
                EXPECT_TRUE(button->icon().isNull()) << FromQt(button->text());
            }
            shown.close();
        });
    }
}

TEST(MessageBoxesTest, AnEmptyTitleShowsNoProgramName) {
    Answer({"Text", ""}, [](QMessageBox& shown) {
        EXPECT_TRUE(shown.windowTitle().isEmpty());
        EXPECT_EQ(shown.windowHandle()->title(), QStringLiteral(" "));
        shown.close();
    });
}

TEST(MessageBoxesTest, DetailsStandBelowTheTextAndCanBeCopied) {
    const BoxContent box{
        .Text = "Told text,\nin two lines.",
        .Title = "Title",
        .Icon = BoxIcon::Exclamation,
        .Details = "Why <b>it</b> is so & what helps:\n    sudo rm '/var/lock/x'\n"};
    Answer(box, [&box](QMessageBox& shown) {
        const auto* text = shown.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
        const auto* details =
            shown.findChild<QLabel*>(QStringLiteral("qt_msgbox_informativelabel"));
        ASSERT_NE(details, nullptr);
        EXPECT_EQ(shown.text(), ToQt(box.Text));
        EXPECT_EQ(details->text(), ToQt(box.Details));
        EXPECT_EQ(details->textFormat(), Qt::PlainText);
        EXPECT_TRUE(details->textInteractionFlags().testFlag(Qt::TextSelectableByMouse));
        EXPECT_GE(details->geometry().top(), text->geometry().bottom());
        EXPECT_GE(details->height(), details->heightForWidth(details->width()));
        EXPECT_TRUE(shown.rect().contains(details->geometry()));
        shown.close();
    });
}

/// Lines that the text of the box takes on the screen.
int LinesShown(const QMessageBox& box) {
    const auto* label = box.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
    const QRect room = label->contentsRect().adjusted(label->margin(), 0, -label->margin(), 0);
    const int flags = label->wordWrap() ? Qt::TextWordWrap : 0;
    const QRect taken = label->fontMetrics().boundingRect(room, flags, label->text());
    EXPECT_LE(taken.width(), room.width()) << FromQt(label->text());
    EXPECT_LE(taken.height(), room.height()) << FromQt(label->text());
    return taken.height() / label->fontMetrics().lineSpacing();
}

TEST(MessageBoxesTest, TheBreaksOfTheTextAreItsOnlyOnes) {
    const std::string told =
        "Before adding a new client, you need to open an existing address book file\nor create a "
        "new address book file. Use the \"File\" pulldown menu.";
    const std::string one =
        "Error: the following client radio already has the same channel and MAC number:\n\n    A";
    for (const BoxIcon icon : {BoxIcon::None, BoxIcon::Exclamation}) {
        Answer({told, "Title", icon}, [](QMessageBox& shown) {
            EXPECT_EQ(LinesShown(shown), 2);
            shown.close();
        });
        Answer({one, "", icon, BoxButtons::YesNoCancel}, [](QMessageBox& shown) {
            EXPECT_EQ(LinesShown(shown), 3);
            // Another layout finds the same.
            QMessageBox& box = shown;
            QEvent again(QEvent::LayoutRequest);
            const QRect before = box.geometry();
            QCoreApplication::sendEvent(&box, &again);
            EXPECT_EQ(LinesShown(box), 3);
            EXPECT_EQ(box.geometry(), before);
            box.close();
        });
    }
}

TEST(MessageBoxesTest, ALineThatNoScreenHoldsIsWrapped) {
    std::string line = "begin";
    for (int word = 0; word < 100; ++word) {
        line += " and so on";
    }
    Answer({line + "\nend", "Title"}, [](QMessageBox& shown) {
        EXPECT_GT(LinesShown(shown), 2);
        EXPECT_LE(shown.width(), shown.screen()->availableGeometry().width());
        shown.close();
    });
}

TEST(MessageBoxesTest, AWordThatNoScreenHoldsMakesNoBoxWiderThanTheScreen) {
    Answer({std::string(1000, 'm') + "\nend", "Title"}, [](QMessageBox& shown) {
        EXPECT_LE(shown.width(), shown.screen()->availableGeometry().width());
        EXPECT_TRUE(shown.rect().contains(shown.button(QMessageBox::Ok)->geometry()));
        shown.close();
    });
}

TEST(MessageBoxesTest, AShortTextInAnyFontStaysOnItsLine) {
    const QFont before = QApplication::font();
    QFont large = before;
    large.setPixelSize(30);
    QApplication::setFont(large);
    Answer({"This entry cannot be deleted, its window is", "Title"}, [](QMessageBox& shown) {
        EXPECT_EQ(LinesShown(shown), 1);
        shown.close();
    });
    QApplication::setFont(before);
}

TEST(MessageBoxesTest, AWideBoxStandsInTheMiddleOfItsWindow) {
    QWidget window;
    window.setGeometry(50, 100, 700, 500);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    std::string line = "wide";
    for (int word = 0; word < 16; ++word) {
        line += " wide";
    }
    Answer({line, "Title"}, [&window](QMessageBox& shown) {
        EXPECT_NEAR(shown.geometry().center().x(), window.geometry().center().x(), 12);
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
