#include "archive/page_layout.h"

#include <gmock/gmock.h>

namespace testing_support {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class PageLayoutTest : public testing::Test {
 protected:
    PageLayoutTest() {
        Measures.Width = 100;
        Measures.Height = 100;
        Measures.Gap = 5;
        Measures.Headings = 10;
        Measures.Row = 5;
        Measures.Total = 10;
        Measures.Columns = {20, 10, 10};
        Measures.Groups = {{0, 1}, {1, 1}, {2, 1}};
        Measures.Rows = 3;
    }
    /// Adds a group of `count` columns of a width.
    void AddGroup(std::size_t count, double width) {
        Measures.Groups.push_back({Measures.Columns.size(), count});
        Measures.Columns.insert(Measures.Columns.end(), count, width);
    }
    std::vector<Page> Pages() const { return LayOutPages(Measures); }

    PageMeasures Measures;
};

IndexRange ColumnsOf(const PagePart& part) {
    return part.Columns;
}

// ----- columns

TEST_F(PageLayoutTest, ColumnsThatFitStandInOnePiece) {
    AddGroup(4, 15);
    EXPECT_THAT(ColumnPieces(Measures), ElementsAre(IndexRange{1, 6}));
}

TEST_F(PageLayoutTest, AGroupThatFindsNoRoomBeginsThePieceBehind) {
    AddGroup(4, 15.1);
    AddGroup(2, 10);
    EXPECT_THAT(ColumnPieces(Measures),
                ElementsAre(IndexRange{1, 2}, IndexRange{3, 4}, IndexRange{7, 2}));
}

TEST_F(PageLayoutTest, AGroupWiderThanAPageIsPartedBetweenColumns) {
    AddGroup(5, 30);
    EXPECT_THAT(ColumnPieces(Measures),
                ElementsAre(IndexRange{1, 4}, IndexRange{5, 2}, IndexRange{7, 1}));
}

TEST_F(PageLayoutTest, AColumnWiderThanAPageIsMadeSmaller) {
    AddGroup(1, 180);
    const std::vector<Page> pages = Pages();
    ASSERT_THAT(pages, SizeIs(1));
    ASSERT_THAT(pages[0], SizeIs(2));
    EXPECT_EQ(pages[0][0].Scale, 1);
    EXPECT_EQ(pages[0][1].Columns, (IndexRange{3, 1}));
    EXPECT_EQ(pages[0][1].Scale, 0.5);
}

TEST_F(PageLayoutTest, NoColumnsMakeNoTable) {
    Measures.Columns.clear();
    Measures.Groups.clear();
    EXPECT_THAT(Pages(), ElementsAre(IsEmpty()));
}

TEST(WidenColumns, ToTheHeadingsOfTheirGroups) {
    std::vector<double> widths{10, 10, 20, 5};
    WidenColumns(std::vector<IndexRange>{{0, 1}, {1, 2}, {3, 1}}, std::vector<double>{4, 36, 8},
                 widths);
    EXPECT_THAT(widths, ElementsAre(10, 13, 23, 8));
}

// ----- rows

TEST_F(PageLayoutTest, LinesPlotAndTableFollowEachOther) {
    Measures.Lines = {8, 6};
    Measures.Plot = 20;
    const std::vector<Page> pages = Pages();
    ASSERT_THAT(pages, SizeIs(1));
    const Page& page = pages[0];
    ASSERT_THAT(page, SizeIs(4));
    EXPECT_EQ(page[0].What, PagePart::Kind::Line);
    EXPECT_EQ(page[1].Line, 1U);
    EXPECT_EQ(page[1].Top, 8);
    EXPECT_EQ(page[2].What, PagePart::Kind::Plot);
    EXPECT_EQ(page[2].Top, 19);
    EXPECT_EQ(page[3].What, PagePart::Kind::Table);
    EXPECT_EQ(page[3].Top, 44);
    EXPECT_EQ(page[3].Columns, (IndexRange{1, 2}));
    EXPECT_EQ(page[3].Rows, (IndexRange{0, 3}));
    EXPECT_TRUE(page[3].HasTotal);
    EXPECT_EQ(page[3].Scale, 1);
}

TEST_F(PageLayoutTest, RowsThatFillAPageStayOnIt) {
    Measures.Rows = 16;
    const std::vector<Page> pages = Pages();
    ASSERT_THAT(pages, SizeIs(1));
    EXPECT_TRUE(pages[0][0].HasTotal);
}

TEST_F(PageLayoutTest, TheTotalTakesARowAlong) {
    Measures.Rows = 17;
    const std::vector<Page> pages = Pages();
    ASSERT_THAT(pages, SizeIs(2));
    EXPECT_EQ(pages[0][0].Rows, (IndexRange{0, 16}));
    EXPECT_FALSE(pages[0][0].HasTotal);
    EXPECT_EQ(pages[1][0].Rows, (IndexRange{16, 1}));
    EXPECT_TRUE(pages[1][0].HasTotal);
    EXPECT_EQ(pages[1][0].Top, 0);
}

TEST_F(PageLayoutTest, WithoutATotalRowsFillThePage) {
    Measures.Total = 0;
    Measures.Rows = 18;
    EXPECT_THAT(Pages(), SizeIs(1));
    EXPECT_FALSE(Pages()[0][0].HasTotal);
    Measures.Rows = 19;
    ASSERT_THAT(Pages(), SizeIs(2));
    EXPECT_EQ(Pages()[1][0].Rows, (IndexRange{18, 1}));
}

TEST_F(PageLayoutTest, TheFirstTableBeginsUnderThePlot) {
    Measures.Plot = 50;
    Measures.Rows = 12;
    const std::vector<Page> pages = Pages();
    ASSERT_THAT(pages, SizeIs(2));
    ASSERT_THAT(pages[0], SizeIs(2));
    EXPECT_EQ(pages[0][1].Rows, (IndexRange{0, 7}));
    EXPECT_EQ(pages[1][0].Rows, (IndexRange{7, 5}));
}

TEST_F(PageLayoutTest, FewRowsDoNotBeginATableAtTheFoot) {
    Measures.Plot = 65;
    Measures.Rows = 12;
    EXPECT_EQ(Pages()[0][1].Rows, (IndexRange{0, 4}));
    Measures.Plot = 66;
    const std::vector<Page> pages = Pages();
    ASSERT_THAT(pages, SizeIs(2));
    EXPECT_THAT(pages[0], SizeIs(1));
    EXPECT_EQ(pages[1][0].Rows, (IndexRange{0, 12}));
}

TEST_F(PageLayoutTest, FurtherTablesFollowBelowAsLongAsTheyStayWhole) {
    AddGroup(4, 18);
    AddGroup(4, 18);
    Measures.Rows = 3;
    const std::vector<Page> pages = Pages();
    ASSERT_THAT(pages, SizeIs(2));
    ASSERT_THAT(pages[0], SizeIs(2));
    EXPECT_EQ(pages[0][1].Top, 40);
    EXPECT_EQ(ColumnsOf(pages[0][1]), (IndexRange{3, 4}));
    ASSERT_THAT(pages[1], SizeIs(1));
    EXPECT_EQ(ColumnsOf(pages[1][0]), (IndexRange{7, 4}));
    EXPECT_EQ(pages[1][0].Rows, (IndexRange{0, 3}));
    EXPECT_TRUE(pages[1][0].HasTotal);
}

TEST_F(PageLayoutTest, OnlyTheFirstTableBeginsWhereItDoesNotFit) {
    AddGroup(4, 18);
    Measures.Rows = 12;
    Measures.Plot = 50;
    const std::vector<Page> pages = Pages();
    ASSERT_THAT(pages, SizeIs(3));
    EXPECT_EQ(pages[0][1].Rows, (IndexRange{0, 7}));
    // Its end leaves room for six rows of the second table, which needs a page.
    ASSERT_THAT(pages[1], SizeIs(1));
    EXPECT_EQ(pages[1][0].Rows, (IndexRange{7, 5}));
    EXPECT_EQ(pages[2][0].Rows, (IndexRange{0, 12}));
}

TEST_F(PageLayoutTest, ATableThatNoPageHoldsBeginsBelowTheOneBefore) {
    AddGroup(4, 18);
    Measures.Rows = 17;
    Measures.Plot = 30;
    const std::vector<Page> pages = Pages();
    ASSERT_THAT(pages, SizeIs(3));
    ASSERT_THAT(pages[1], SizeIs(2));
    EXPECT_EQ(pages[1][0].Rows, (IndexRange{11, 6}));
    EXPECT_EQ(pages[1][1].Rows, (IndexRange{0, 7}));
    EXPECT_EQ(pages[2][0].Rows, (IndexRange{7, 10}));
}

TEST_F(PageLayoutTest, LinesGoOnOverThePage) {
    Measures.Lines.assign(5, 30);
    const std::vector<Page> pages = Pages();
    ASSERT_THAT(pages, SizeIs(2));
    EXPECT_THAT(pages[0], SizeIs(3));
    EXPECT_EQ(pages[1][0].Line, 3U);
    EXPECT_EQ(pages[1][0].Top, 0);
}

TEST_F(PageLayoutTest, APlotThatFindsNoRoomGoesOver) {
    Measures.Lines = {60};
    Measures.Plot = 40;
    ASSERT_THAT(Pages(), SizeIs(2));
    EXPECT_EQ(Pages()[1][0].Top, 0);
    Measures.Plot = 35;
    EXPECT_EQ(Pages()[0][1].Top, 65);
}

TEST_F(PageLayoutTest, ThePlotLeavesRoomForTheFirstTable) {
    Measures.Lines = {8, 6};
    // 86 are left of the lines, 35 for the table, 10 for the gaps.
    EXPECT_EQ(PlotHeightFor(Measures, 20, 80), 41);
    EXPECT_EQ(PlotHeightFor(Measures, 20, 40), 40);
    EXPECT_EQ(PlotHeightFor(Measures, 42, 80), 80);
    Measures.Plot = 41;
    EXPECT_THAT(Pages(), SizeIs(1));
    Measures.Lines.clear();
    EXPECT_EQ(PlotHeightFor(Measures, 20, 80), 60);
    Measures.Plot = 60;
    EXPECT_THAT(Pages(), SizeIs(1));
    Measures.Plot = 60.1;
    EXPECT_THAT(Pages(), SizeIs(2));
}

// ----- every row and column, whatever the page

struct PageCase {
    double Height;
    std::size_t Rows;
    std::size_t GroupCount;
    double Plot;
};

class PageLayoutSweep : public PageLayoutTest, public testing::WithParamInterface<PageCase> {};

TEST_P(PageLayoutSweep, HoldsEachRowOfEachColumnOnce) {
    Measures.Height = GetParam().Height;
    Measures.Rows = GetParam().Rows;
    Measures.Plot = GetParam().Plot;
    for (std::size_t i = 0; i < GetParam().GroupCount; ++i) {
        AddGroup(1 + i % 5, 12 + static_cast<double>(i));
    }
    std::vector<std::vector<int>> seen(Measures.Columns.size(),
                                       std::vector<int>(Measures.Rows + 1, 0));
    for (const Page& page : Pages()) {
        EXPECT_FALSE(page.empty());
        double bottom = 0;
        for (const PagePart& part : page) {
            EXPECT_GE(part.Top, bottom);
            bottom = part.Top + 1;
            for (std::size_t column = part.Columns.First; column < part.Columns.End(); ++column) {
                for (std::size_t row = part.Rows.First; row < part.Rows.End(); ++row) {
                    ++seen[column][row];
                }
                seen[column].back() += part.HasTotal ? 1 : 0;
            }
            if (part.What == PagePart::Kind::Table && Measures.Height >= 30) {
                const double height = 10 + 5 * static_cast<double>(part.Rows.Count);
                EXPECT_LE(part.Top + height + (part.HasTotal ? 10 : 0), Measures.Height + 1e-6);
                EXPECT_TRUE(part.Rows.Count > 0 || Measures.Rows == 0);
            }
        }
    }
    for (std::size_t column = 1; column < seen.size(); ++column) {
        EXPECT_THAT(seen[column], testing::Each(1)) << column;
    }
}

INSTANTIATE_TEST_SUITE_P(Pages, PageLayoutSweep,
                         testing::Values(PageCase{100, 31, 0, 0}, PageCase{100, 31, 12, 40},
                                         PageCase{100, 0, 3, 0}, PageCase{100, 1, 9, 85},
                                         PageCase{31, 7, 4, 0}, PageCase{4, 3, 2, 3},
                                         PageCase{15, 2, 1, 0}, PageCase{1000, 3650, 20, 300}));

}  // namespace
}  // namespace testing_support
