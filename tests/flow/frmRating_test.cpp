#include <QAction>
#include <QStyleOptionComboBox>
#include <set>

#include "frmRating_fixture.h"

namespace rating_testing {
namespace {

/// That no text of a list is cut off where the list is closed; rows that cannot be chosen never are
/// there.
void ExpectWholeTexts(const QComboBox& list) {
    QStyleOptionComboBox option;
    option.initFrom(&list);
    const QRect room = list.style()->subControlRect(QStyle::CC_ComboBox, &option,
                                                    QStyle::SC_ComboBoxEditField, &list);
    for (int i = 0; i < list.count(); ++i) {
        const bool chosen = (list.model()->index(i, 0).flags() & Qt::ItemIsSelectable) != 0;
        const int width = list.fontMetrics().horizontalAdvance(list.itemText(i));
        EXPECT_TRUE(!chosen || width <= room.width()) << FromQt(list.itemText(i));
    }
}

// ----- every kind shows its fields

class RatingFormKind : public RatingFormTest, public ::testing::WithParamInterface<std::size_t> {
 protected:
    const RatingKind& Kind() const { return RatingKinds()[GetParam()]; }
};

TEST_P(RatingFormKind, ShowsItsFieldsWithCaptionsUnitsAndHints) {
    Open();
    ChooseKind(Kind().Key);
    EXPECT_EQ(LabelText("lblKind"), Kind().Hint);
    for (std::size_t i = 0; i < Kind().Fields.size(); ++i) {
        const RatingField& told = Kind().Fields[i];
        const std::string index = "(" + std::to_string(i) + ")";
        auto* input = Control(InputOf(Kind().Key, told.Key));
        EXPECT_TRUE(input->isVisible());
        auto* caption = Control<QLabel>("lblDimension" + index);
        EXPECT_EQ(FromQt(caption->text()), std::string(told.Caption) + ":");
        EXPECT_EQ(caption->buddy(), input);
        EXPECT_GE(caption->width(), caption->sizeHint().width()) << told.Caption;
        if (auto* list = qobject_cast<QComboBox*>(input)) {
            EXPECT_EQ(list->count(), static_cast<int>(told.Choices.size()));
            ExpectWholeTexts(*list);
            continue;
        }
        const RatingDevice device = DefaultRatingDevice(Kind(), 0);
        EXPECT_EQ(Text("txtDimension" + index), RatingFieldText(device, i));
        EXPECT_EQ(LabelText("lblUnit" + index), RatingUnitText(device, told.Units));
        EXPECT_TRUE(input->toolTip().contains(ToQt(told.Hint)));
        EXPECT_TRUE(input->accessibleDescription().contains(ToQt(told.Hint)));
        EXPECT_FALSE(input->accessibleDescription().isEmpty());
    }
    EXPECT_EQ(Control("fraRows")->isVisible(), !Kind().Columns.empty());
}

TEST_P(RatingFormKind, ShowsARatingOrWhyThereIsNone) {
    Open();
    ChooseKind(Kind().Key);
    if (Kind().Columns.empty()) {
        EXPECT_GT(TableRows(), 10);
        EXPECT_TRUE(AboutSays("Range:") && AboutSays("Equations:") && AboutSays("Sources:"));
        EXPECT_NE(LabelText("lblCursor").find("flow"), std::string::npos);
    } else {
        EXPECT_EQ(TableRows(), 0);
        EXPECT_TRUE(AboutSays("No table can be made"));
    }
    EXPECT_FALSE(form_->isWindowModified());
    EXPECT_TRUE(Boxes().empty());
}

INSTANTIATE_TEST_SUITE_P(Kinds, RatingFormKind,
                         ::testing::Range(std::size_t{0}, RatingKinds().size()),
                         [](const auto& kind) {
                             std::string name(RatingKinds()[kind.param].Key);
                             std::replace(name.begin(), name.end(), '-', '_');
                             return name;
                         });

TEST_F(RatingFormTest, TheListOfKindsIsInGroupsWhoseHeadingsCannotBeChosen) {
    Open();
    auto* list = Control<QComboBox>("cmbKind");
    EXPECT_EQ(FromQt(list->itemText(0)), RatingGroupName(RatingGroup::ThinPlate));
    EXPECT_FALSE(list->model()->flags(list->model()->index(0, 0)) & Qt::ItemIsSelectable);
    ExpectWholeTexts(*list);
    list->setFocus();
    std::set<std::string> seen{FromQt(list->currentText())};
    for (std::size_t i = 1; i < RatingKinds().size(); ++i) {
        Press(Qt::Key_Down);
        seen.insert(LabelText("lblKind").empty() ? "" : FromQt(list->currentText()));
    }
    EXPECT_EQ(seen.size(), RatingKinds().size());
}

// ----- typing

TEST_F(RatingFormTest, TheRatingFollowsEveryKey) {
    Open();
    const std::string angle = InputOf("v-notch", "angle");
    auto* curve = Control("pctCurve");
    std::set<std::string> flows{Cell("lvwTable", 20, 1)};
    std::set<std::string> words{About()};
    Type(angle, "4");
    EXPECT_EQ(TableRows(), 0) << "4 degrees are too few";
    for (const char* key : {"0", ".", "5", "5"}) {
        const QImage before = curve->grab().toImage();
        QTest::keyClicks(Control<QLineEdit>(angle), QLatin1String(key));
        QCoreApplication::processEvents();
        EXPECT_EQ(curve->grab().toImage() == before, *key == '.') << key;
        flows.insert(Cell("lvwTable", 20, 1));
        words.insert(About());
    }
    EXPECT_EQ(flows.size(), 4U);
    EXPECT_GE(words.size(), 4U);
    EXPECT_TRUE(form_->isWindowModified());
}

TEST_F(RatingFormTest, ATextThatIsNoFigureIsToldBesideItsFieldAndStays) {
    Open();
    const std::string angle = InputOf("v-notch", "angle");
    Type(angle, "x9");
    auto* sign = form_->findChild<QAction*>(QStringLiteral("actSign(0)"));
    ASSERT_NE(sign, nullptr);
    EXPECT_TRUE(sign->isVisible());
    EXPECT_TRUE(
        Control(angle)->accessibleDescription().contains(QStringLiteral("\"x9\" is not a number")));
    EXPECT_TRUE(AboutSays("\"x9\" is not a number"));
    EXPECT_EQ(TableRows(), 0);
    EXPECT_EQ(LabelText("lblCursor"), "");
    EXPECT_EQ(Text(angle), "x9");
    Type(angle, "70");
    EXPECT_GT(TableRows(), 0);
    EXPECT_FALSE(sign->isVisible());
    EXPECT_TRUE(Boxes().empty());
}

TEST_F(RatingFormTest, AFigureOutsideItsLimitsIsToldWithThem) {
    Open();
    Type(InputOf("v-notch", "angle"), "1000");
    EXPECT_TRUE(AboutSays("has to lie within 10 to 150 degrees"));
    Type(InputOf("v-notch", "angle"), "");
    EXPECT_TRUE(AboutSays("Angle of the notch is missing."));
}

TEST_F(RatingFormTest, WhatIsOutsideTheLimitsOfTheMethodIsToldInWords) {
    Open();
    Type(InputOf("v-notch", "angle"), "140");
    EXPECT_TRUE(AboutSays("Outside the limits:"));
    EXPECT_GT(TableRows(), 0);
    EXPECT_FALSE(Control(InputOf("v-notch", "angle"))->toolTip().isEmpty());
}

TEST_F(RatingFormTest, UnitsTurnTheFiguresAndTheRating) {
    Open();
    ChooseKind("standard-weir");
    Control<QComboBox>("cmbLengthUnit")->setCurrentIndex(1);
    EXPECT_EQ(Text(InputOf("standard-weir", "crest")), "24");
    EXPECT_EQ(LabelText("lblUnit(0)"), "inches");
    Control<QComboBox>("cmbFlowUnit")->setCurrentIndex(4);
    EXPECT_NE(LabelText("lblCursor").find("LPS"), std::string::npos);
    EXPECT_TRUE(AboutSays("inches, "));
    const auto* model = Control<QTableView>("lvwTable")->model();
    EXPECT_EQ(FromQt(model->headerData(0, Qt::Horizontal).toString()), "Head, inches");
    EXPECT_EQ(FromQt(model->headerData(1, Qt::Horizontal).toString()), "Flow, LPS");
}

TEST_F(RatingFormTest, FiguresOfAKindAreThereWhenItComesBack) {
    Open();
    Type(InputOf("v-notch", "angle"), "77");
    ChooseKind("parshall");
    ChooseKind("v-notch");
    EXPECT_EQ(Text(InputOf("v-notch", "angle")), "77");
}

TEST_F(RatingFormTest, AChoiceMakesAnotherRating) {
    Open();
    ChooseKind("parshall");
    const std::string before = About();
    Control<QComboBox>(InputOf("parshall", "size"))->setCurrentIndex(9);
    EXPECT_NE(About(), before);
}

TEST_F(RatingFormTest, EnterInAFieldPressesNoButton) {
    Open();
    Type(InputOf("v-notch", "angle"), "70");
    Press(Qt::Key_Return);
    EXPECT_TRUE(form_->isVisible());
    EXPECT_TRUE(host_.Dialogs.Queries.empty());
}

TEST_F(RatingFormTest, TextsThatLookLikeMarkupAreShownAsTheyAre) {
    Open();
    Type(InputOf("v-notch", "angle"), "<i>9");
    EXPECT_TRUE(AboutSays("\"<i>9\" is not a number"));
}

// ----- rows

TEST_F(RatingFormTest, RowsAreTypedAndTheirResidualsShown) {
    Open();
    ChooseKind("points");
    EXPECT_TRUE(LabelText("lblColumns").find("Level in feet, Flow in CFS") != std::string::npos);
    auto* rows = Control<QPlainTextEdit>("txtRows");
    rows->setFocus();
    for (const char* row : {"0.1 0.12", "0.2 0.36", "0.4 1.1", "later", "0.6 2.13"}) {
        QTest::keyClicks(rows, QLatin1String(row));
        QTest::keyClick(rows, Qt::Key_Return);
    }
    EXPECT_EQ(LabelText("lblRows"), "4 rows; 1 line is no row and is passed over.");
    EXPECT_GT(TableRows(), 0);
    EXPECT_TRUE(Control<QTabWidget>("TabStrip")->isTabVisible(1));
    EXPECT_EQ(Control<QTableView>("lvwResiduals")->model()->rowCount(), 4);
    ChooseKind("v-notch");
    EXPECT_FALSE(Control<QTabWidget>("TabStrip")->isTabVisible(1));
    ChooseKind("points");
    EXPECT_NE(FromQt(rows->toPlainText()).find("later"), std::string::npos);
}

TEST_F(RatingFormTest, RowsComeFromAFileAndCanBeTakenBack) {
    WriteFile(PathOf("gauged.csv"), "Level,Flow\r\n0.5,1.2\r\n1.0,4.1\r\n2.0,13\r\n");
    Open();
    ChooseKind("points");
    auto* rows = Control<QPlainTextEdit>("txtRows");
    QTest::keyClicks(rows, QStringLiteral("1 2"));
    Pick("gauged.csv");
    Click("cmdRows");
    EXPECT_EQ(LabelText("lblRows"), "3 rows; 1 line is no row and is passed over.");
    EXPECT_GT(TableRows(), 0);
    rows->undo();
    EXPECT_EQ(FromQt(rows->toPlainText()), "1 2");
    Pick("missing.csv");
    Click("cmdRows");
    ASSERT_EQ(Boxes().size(), 1U);
    EXPECT_EQ(FromQt(rows->toPlainText()), "1 2");
}

// ----- curve and table

TEST_F(RatingFormTest, TheCursorOfTheCurveTellsItsValue) {
    Open();
    auto* curve = Control("pctCurve");
    auto* table = Control<QTableView>("lvwTable");
    curve->setFocus();
    Press(Qt::Key_Home);
    EXPECT_EQ(table->currentIndex().row(), 0);
    const std::string first = LabelText("lblCursor");
    for (const auto& [key, row] :
         std::initializer_list<std::pair<Qt::Key, int>>{{Qt::Key_Right, 1},
                                                        {Qt::Key_Up, 2},
                                                        {Qt::Key_PageUp, 12},
                                                        {Qt::Key_Left, 11},
                                                        {Qt::Key_Down, 10},
                                                        {Qt::Key_PageDown, 0},
                                                        {Qt::Key_Left, 0},
                                                        {Qt::Key_End, TableRows() - 1},
                                                        {Qt::Key_Right, TableRows() - 1}}) {
        Press(key);
        EXPECT_EQ(table->currentIndex().row(), row) << key;
        const std::string told = LabelText("lblCursor");
        EXPECT_NE(told.find("Head " + Cell("lvwTable", row, 0) + " feet"), std::string::npos);
        EXPECT_NE(told.find(Cell("lvwTable", row, 1) + " CFS"), std::string::npos);
        EXPECT_EQ(FromQt(curve->accessibleDescription()), told);
    }
    EXPECT_NE(LabelText("lblCursor"), first);
}

TEST_F(RatingFormTest, ARowOfTheTableMovesTheCursor) {
    Open();
    auto* table = Control<QTableView>("lvwTable");
    table->setFocus();
    Press(Qt::Key_Down);
    Press(Qt::Key_Down);
    EXPECT_NE(LabelText("lblCursor").find("Head " + Cell("lvwTable", 2, 0)), std::string::npos);
}

TEST_F(RatingFormTest, AClickIntoTheCurveMovesTheCursor) {
    Open();
    auto* curve = Control("pctCurve");
    QCoreApplication::processEvents();
    QTest::mouseClick(curve, Qt::LeftButton, {}, QPoint(curve->width() - 40, curve->height() / 2));
    const int right = Control<QTableView>("lvwTable")->currentIndex().row();
    QTest::mouseClick(curve, Qt::LeftButton, {}, QPoint(curve->width() / 2, curve->height() / 2));
    const int middle = Control<QTableView>("lvwTable")->currentIndex().row();
    EXPECT_GT(right, middle);
    EXPECT_GT(middle, TableRows() / 5);
}

TEST_F(RatingFormTest, LogarithmicAxesDrawOtherwise) {
    Open();
    auto* curve = Control("pctCurve");
    QCoreApplication::processEvents();
    const QImage straight = curve->grab().toImage();
    Click("chkLogarithmic");
    QCoreApplication::processEvents();
    EXPECT_TRUE(Control<QCheckBox>("chkLogarithmic")->isChecked());
    EXPECT_NE(curve->grab().toImage(), straight);
    Click("chkLogarithmic");
    QCoreApplication::processEvents();
    EXPECT_EQ(curve->grab().toImage(), straight);
}

TEST_F(RatingFormTest, EstimatesAreSlantedAndSayWhatTheyAre) {
    Open();
    const QAbstractItemModel& rows = *Control<QTableView>("lvwTable")->model();
    const QModelIndex below = rows.index(0, 1);
    const QModelIndex inside = rows.index(TableRows() - 2, 1);
    EXPECT_TRUE(below.data(Qt::FontRole).value<QFont>().italic());
    EXPECT_FALSE(inside.data(Qt::FontRole).value<QFont>().italic());
    EXPECT_EQ(FromQt(below.data(Qt::ToolTipRole).toString()), "an estimate");
    EXPECT_EQ(FromQt(below.data(Qt::AccessibleDescriptionRole).toString()), "an estimate");
    EXPECT_FALSE(inside.data(Qt::ToolTipRole).isValid());
}

TEST_F(RatingFormTest, TheCurveTakesTheColoursOfTheDesktopWhenTheyChange) {
    Open();
    auto* curve = Control("pctCurve");
    for (const QColor& ground : {QColor(35, 35, 35), QColor(250, 250, 240)}) {
        QPalette palette = form_->palette();
        palette.setColor(QPalette::Base, ground);
        form_->setPalette(palette);
        QCoreApplication::processEvents();
        const QImage picture = curve->grab().toImage();
        // Below the legend and left of the curve.
        EXPECT_EQ(picture.pixelColor(picture.width() / 4, picture.height() / 2).rgb(),
                  ground.rgb());
    }
}

// ----- files

TEST_F(RatingFormTest, SavesATableThatOpensAgain) {
    Open();
    ChooseKind("cipolletti");
    Type("txtName", "Mill & Co");
    Type(InputOf("cipolletti", "crest"), "3");
    Pick("mill.tbl");
    Click("cmdSave");
    EXPECT_FALSE(form_->isWindowModified());
    EXPECT_EQ(FromQt(form_->windowTitle()), "Flow Table - mill.tbl[*]");
    EXPECT_EQ(LabelText("lblState").substr(0, 7), "Saved: ");
    EXPECT_TRUE(Boxes().empty());
    form_->close();
    Open();
    EXPECT_EQ(FromQt(form_->windowTitle()), "New Flow Table[*]");
    Pick("mill.tbl");
    Click("cmdOpen");
    EXPECT_EQ(LabelText("lblKind"), FindRatingKind("cipolletti")->Hint);
    EXPECT_EQ(Text("txtName"), "Mill & Co");
    EXPECT_EQ(Text(InputOf("cipolletti", "crest")), "3");
    EXPECT_GT(TableRows(), 0);
    EXPECT_FALSE(form_->isWindowModified());
}

TEST_F(RatingFormTest, WhatIsRefusedIsNotSaved) {
    Open();
    Type(InputOf("v-notch", "angle"), "no");
    Click("cmdSave");
    ASSERT_EQ(Boxes().size(), 1U);
    EXPECT_TRUE(host_.Dialogs.Queries.empty());
    EXPECT_EQ(Text(InputOf("v-notch", "angle")), "no");
}

TEST_F(RatingFormTest, AFileThatIsNoTableLeavesTheWindowAsItIs) {
    WriteFile(PathOf("letter.tbl"), "Dear all,\n");
    Open();
    ChooseKind("h-flume");
    Pick("letter.tbl");
    Click("cmdOpen");
    ASSERT_EQ(Boxes().size(), 1U);
    EXPECT_EQ(LabelText("lblKind"), FindRatingKind("h-flume")->Hint);
}

// ----- closing

TEST_F(RatingFormTest, ClosesWithoutAQuestionIfNothingWasTyped) {
    Open();
    ChooseKind("points");
    Press(Qt::Key_Escape);
    EXPECT_FALSE(form_->isVisible());
    EXPECT_TRUE(Boxes().empty());
}

TEST_F(RatingFormTest, ClosingAsksAboutChanges) {
    Open();
    Type(InputOf("v-notch", "angle"), "80");
    host_.Boxes.Answers = {BoxAnswer::Cancel, BoxAnswer::No};
    Press(Qt::Key_Escape);
    EXPECT_TRUE(form_->isVisible());
    EXPECT_EQ(Text(InputOf("v-notch", "angle")), "80");
    Click("cmdClose");
    EXPECT_FALSE(form_->isVisible());
    EXPECT_EQ(Boxes().size(), 2U);
    EXPECT_TRUE(form_->MayClose()) << "what was given up is not asked about again";
    EXPECT_EQ(Boxes().size(), 2U);
    Open();
    EXPECT_EQ(Text(InputOf("v-notch", "angle")), "60");
}

TEST_F(RatingFormTest, AskedForAgainItComesToTheFrontAsItIs) {
    Open();
    Type(InputOf("v-notch", "angle"), "80");
    form_->ShowOrRaise();
    EXPECT_EQ(Text(InputOf("v-notch", "angle")), "80");
}

TEST_F(RatingFormTest, UnloadedItGoesWithoutAWordAndStaysAway) {
    Open();
    Type(InputOf("v-notch", "angle"), "80");
    form_->Unload();
    EXPECT_FALSE(form_->isVisible());
    EXPECT_TRUE(form_->close());
    form_->ShowOrRaise();
    EXPECT_FALSE(form_->isVisible());
    EXPECT_TRUE(Boxes().empty());
}

TEST_F(RatingFormTest, UnloadedUnderItsOwnQuestionItUnwinds) {
    Open();
    Type(InputOf("v-notch", "angle"), "80");
    Pick("late.tbl");
    host_.Boxes.WhileShown = [this] { form_->Unload(); };
    host_.Boxes.Answers = {BoxAnswer::Yes};
    Click("cmdClose");
    EXPECT_FALSE(form_->isVisible());
    EXPECT_TRUE(FileContents(PathOf("late.tbl")).empty());
}

}  // namespace
}  // namespace rating_testing
