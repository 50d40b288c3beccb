// The pages of a report, read back from what was saved and printed.
#include <gmock/gmock.h>

#include <QLocale>
#include <QPrinter>
#include <QRegularExpression>
#include <QXmlStreamReader>

#include "frmReport_fixture.h"

namespace testing_support {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

/// A word on a page and where it stands, in points.
struct Word {
    int Page = 0;
    QRectF Box;
    std::string Text;
};

class ReportPagesTest : public ReportFormTest {
 protected:
    ~ReportPagesTest() override { QLocale::setDefault(before_); }

    void Save() {
        Pick("report.pdf");
        Click("cmdPdf");
        ASSERT_THAT(Boxes(), IsEmpty());
        ASSERT_EQ(FileContents(PathOf("report.pdf")).substr(0, 5), "%PDF-");
    }
    std::string Text() const { return TextOfPdf(PathOf("report.pdf")); }
    std::vector<std::string> Pages(const std::string& file = "report.pdf") const {
        std::vector<std::string> pages;
        for (const QString& page : ToQt(TextOfPdf(PathOf(file))).split(QLatin1Char('\f'))) {
            pages.push_back(FromQt(page));
        }
        pages.pop_back();
        return pages;
    }
    /// The words of all pages; takes the size of a page.
    std::vector<Word> Words(QSizeF& size) const {
        QXmlStreamReader reader(
            ToQt(Run(QStringLiteral("pdftotext"),
                     {QStringLiteral("-bbox"), ToQt(PathOf("report.pdf")), QStringLiteral("-")}))
                .remove(QRegularExpression(QStringLiteral("<!DOCTYPE[^>]*>"))));
        std::vector<Word> words;
        int page = 0;
        while (!reader.atEnd()) {
            if (reader.readNext() != QXmlStreamReader::StartElement) {
                continue;
            }
            const auto number = [&reader](const char* name) {
                return reader.attributes().value(QLatin1String(name)).toDouble();
            };
            if (reader.name() == QStringLiteral("page")) {
                ++page;
                size = {number("width"), number("height")};
            } else if (reader.name() == QStringLiteral("word")) {
                const QRectF box(QPointF(number("xMin"), number("yMin")),
                                 QPointF(number("xMax"), number("yMax")));
                words.push_back({page, box, FromQt(reader.readElementText())});
            }
        }
        EXPECT_FALSE(reader.hasError()) << FromQt(reader.errorString());
        return words;
    }

 private:
    const QLocale before_;
};

int CountOf(const std::string& text, const std::string& part) {
    return static_cast<int>(ToQt(text).count(ToQt(part)));
}

TEST_F(ReportPagesTest, HoldAllTextsOfTheReport) {
    Open();
    Type("txtSite", "Dam 4 & <Mill>");
    Type("txtMadeBy", "J. Smith");
    Save();
    const std::string text = Text();
    const Report report = Expected(TwoWeeksSpan, PeriodStep::Day, {}, "Dam 4 & <Mill>", "J. Smith");
    EXPECT_THAT(text, HasSubstr("Daily Report"));
    for (const ReportLine& line : PageHeadOf(report)) {
        EXPECT_THAT(text, HasSubstr(line.Label));
        EXPECT_THAT(text, HasSubstr(line.Text));
    }
    for (const ReportColumn& column : report.Columns) {
        EXPECT_THAT(text, HasSubstr(column.Group));
    }
    for (const std::vector<std::string>& row : report.Rows) {
        for (const std::string& cell : row) {
            EXPECT_THAT(text, HasSubstr(cell));
        }
    }
    for (const std::string& cell : report.Total) {
        EXPECT_THAT(text, HasSubstr(cell));
    }
}

TEST_F(ReportPagesTest, ARowStandsInOneLine) {
    SeriesMaker maker(1, 0);
    maker.Add(SomeDay, {7});
    maker.Add(SomeDay + 900, {9});
    Open(maker, {SomeDay, SomeDay + 2 * SecondsPerDay});
    Save();
    const QString text = ToQt(Text()).simplified();
    for (const std::vector<std::string>& row :
         Expected({SomeDay, SomeDay + 2 * SecondsPerDay}).Rows) {
        QString line;
        for (const std::string& cell : row) {
            line += ToQt(cell) + QLatin1Char(' ');
        }
        EXPECT_TRUE(text.contains(line.simplified())) << FromQt(line);
    }
}

TEST_F(ReportPagesTest, AreNumberedAndRepeatTheirHeadings) {
    Open(TwoWeeks(8, 2));
    Save();
    const std::vector<std::string> pages = Pages();
    ASSERT_GT(pages.size(), 2U);
    for (std::size_t i = 0; i < pages.size(); ++i) {
        EXPECT_THAT(pages[i], HasSubstr("Page " + std::to_string(i + 1) + " of " +
                                        std::to_string(pages.size())));
        EXPECT_THAT(pages[i], HasSubstr("Daily Report - Pump 3"));
        EXPECT_THAT(pages[i], HasSubstr("Period"));
        EXPECT_THAT(pages[i], HasSubstr("Mean"));
    }
}

TEST_F(ReportPagesTest, EachPieceOfAWideTableHasAllRowsAndTheTotal) {
    Open(TwoWeeks(8, 2));
    Save();
    const std::string text = Text();
    const Report report = Expected();
    const int pieces = CountOf(text, report.Total[0]);
    EXPECT_GT(pieces, 3);
    for (const ColumnGroup& group : GroupsOf(report.Columns)) {
        EXPECT_THAT(text, HasSubstr(group.Name));
    }
    // What stands at the left heads a row.
    constexpr double FirstColumn = 50;
    std::map<std::string, int> heads;
    QSizeF size;
    for (const Word& word : Words(size)) {
        heads[word.Text] += word.Box.left() < FirstColumn ? 1 : 0;
    }
    for (const std::vector<std::string>& row : report.Rows) {
        // The total begins with the first date, too.
        const int more = row[0] == report.Rows[0][0] ? pieces : 0;
        EXPECT_EQ(heads[row[0]], pieces + more) << row[0];
    }
}

TEST_F(ReportPagesTest, NoWordLeavesThePageOrLiesOnAnother) {
    Open(TwoWeeks(8, 2));
    Type("txtSite",
         "A site whose name is so long that it has to be broken into several lines, as "
         "it tells the way from the road, over the bridge and past the old mill, too");
    Save();
    QSizeF size;
    const std::vector<Word> words = Words(size);
    ASSERT_GT(words.size(), 1000U);
    constexpr double Margin = 12 / 25.4 * 72;
    const QRectF room = QRectF(QPointF(0, 0), size).adjusted(Margin, Margin, -Margin, -Margin);
    for (const Word& word : words) {
        EXPECT_TRUE(room.adjusted(-1, -1, 1, 1).contains(word.Box))
            << word.Text << " on page " << word.Page << " ends at " << word.Box.right() << ", "
            << word.Box.bottom();
    }
    for (std::size_t i = 0; i < words.size(); ++i) {
        for (std::size_t k = i + 1; k < words.size() && words[k].Page == words[i].Page; ++k) {
            const QRectF common = words[i].Box & words[k].Box;
            EXPECT_TRUE(common.width() < 1 || common.height() < 4)
                << words[i].Text << " and " << words[k].Text << " on page " << words[i].Page;
        }
    }
}

TEST_F(ReportPagesTest, ThousandsOfRowsAreAllThere) {
    SeriesMaker maker(1, 0);
    maker.Add(SomeDay, {7});
    const Period span{SomeDay, SomeDay + 3000 * SecondsPerDay};
    Open(maker, span);
    Save();
    const std::string text = Text();
    for (const std::vector<std::string>& row : Expected(span).Rows) {
        EXPECT_THAT(text, HasSubstr(row[0] + " "));
    }
    const std::vector<std::string> pages = Pages();
    EXPECT_GT(pages.size(), 40U);
    for (const std::string& page : pages) {
        EXPECT_THAT(page, HasSubstr("Channel 1 (Feet)"));
        EXPECT_THAT(page, HasSubstr("Maximum"));
    }
}

TEST_F(ReportPagesTest, AreUprightOnlyWhereAllColumnsFindRoom) {
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    SeriesMaker maker(1, 0);
    maker.Add(SomeDay, {7});
    Open(maker);
    Save();
    EXPECT_THAT(FactsOfPdf(PathOf("report.pdf")), HasSubstr("595 x 842 pts (A4)"));
    Open(TwoWeeks());
    Save();
    EXPECT_THAT(FactsOfPdf(PathOf("report.pdf")), HasSubstr("842 x 595 pts (A4)"));
}

TEST_F(ReportPagesTest, AreOfThePaperOfTheLand) {
    SeriesMaker maker(1, 0);
    maker.Add(SomeDay, {7});
    Open(maker);
    for (const QLocale& locale : {QLocale(QLocale::English, QLocale::UnitedStates),
                                  QLocale(QLocale::French, QLocale::Canada)}) {
        QLocale::setDefault(locale);
        Save();
        EXPECT_THAT(FactsOfPdf(PathOf("report.pdf")), HasSubstr("612 x 792 pts (letter)"));
    }
    QLocale::setDefault(QLocale::c());
    Save();
    EXPECT_THAT(FactsOfPdf(PathOf("report.pdf")), HasSubstr("(A4)"));
}

TEST_F(ReportPagesTest, SayWhatTheyAre) {
    Open();
    Choose("cmbStep", 2);
    Save();
    const std::string facts = FactsOfPdf(PathOf("report.pdf"));
    EXPECT_TRUE(QRegularExpression(QStringLiteral("Title: +Monthly Report - Pump 3\n"))
                    .match(ToQt(facts))
                    .hasMatch())
        << facts;
    EXPECT_THAT(facts, HasSubstr("Orvia"));
}

TEST_F(ReportPagesTest, TheFirstOneHasThePlotOfTheFlow) {
    Open();
    Save();
    const std::vector<std::string> pages = Pages();
    EXPECT_THAT(pages[0], HasSubstr("1/14/24 00:00:00 to 1/27/24 23:59:59"));
    EXPECT_THAT(pages[0], HasSubstr("Flow (GPM)"));
    EXPECT_THAT(pages[1], Not(HasSubstr(" to ")));
}

TEST_F(ReportPagesTest, WithoutAFlowThePlotIsOfTheFirstChannel) {
    SeriesMaker maker(2, 0);
    maker.Add(SomeDay, {7, 2});
    Open(maker, {SomeDay, SomeDay + SecondsPerDay});
    Save();
    const std::string text = Text();
    // Over its columns, beside the axis and in the legend.
    EXPECT_EQ(CountOf(text, "Channel 1 (Feet)"), 3);
    EXPECT_EQ(CountOf(text, "Channel 2 (Deg C)"), 1);
    EXPECT_THAT(text, HasSubstr("1/14/24 00:00:00 to 1/14/24 23:59:59"));
}

TEST_F(ReportPagesTest, AreDrawnAndHoldNoPictures) {
    Open();
    Save();
    const std::string images =
        Run(QStringLiteral("pdfimages"), {QStringLiteral("-list"), ToQt(PathOf("report.pdf"))});
    EXPECT_EQ(CountOf(images, "\n"), 2) << images;
}

TEST_F(ReportPagesTest, OfAPeriodWithoutRecordsSaySo) {
    Open(TwoWeeks(), {SomeDay + 30 * SecondsPerDay, SomeDay + 32 * SecondsPerDay});
    Save();
    EXPECT_THAT(Text(), HasSubstr("There are no records in this period."));
    EXPECT_THAT(Text(), Not(HasSubstr(" to "))) << "there is nothing to plot";
}

// ----- printing

class ReportPrintTest : public ReportPagesTest {
 protected:
    void PrintTo(const std::string& file, const std::function<void(QPrinter&)>& set = {}) {
        form_->AskForPrinter = [this, file, set](QPrinter& printer, QWidget* parent) {
            EXPECT_EQ(parent, form_);
            EXPECT_EQ(FromQt(printer.docName()), "Daily Report - Pump 3");
            printer.setOutputFormat(QPrinter::PdfFormat);
            printer.setOutputFileName(ToQt(PathOf(file)));
            if (set) {
                set(printer);
            }
            return true;
        };
        Click("cmdPrint");
    }
};

TEST_F(ReportPrintTest, PrintsThePages) {
    Open();
    PrintTo("printed.pdf");
    EXPECT_EQ(LabelText("lblState"), "Printed.");
    EXPECT_THAT(Boxes(), IsEmpty());
    const std::string text = TextOfPdf(PathOf("printed.pdf"));
    for (const std::string& cell : Expected().Total) {
        EXPECT_THAT(text, HasSubstr(cell));
    }
}

TEST_F(ReportPrintTest, PrintsOnThePaperOfThePrinter) {
    Open();
    PrintTo("printed.pdf", [](QPrinter& printer) {
        printer.setPageLayout(QPageLayout(QPageSize(QPageSize::A5), QPageLayout::Portrait,
                                          QMarginsF(10, 10, 10, 10), QPageLayout::Millimeter));
    });
    EXPECT_THAT(FactsOfPdf(PathOf("printed.pdf")), HasSubstr("420 x 595 pts (A5)"));
    EXPECT_THAT(TextOfPdf(PathOf("printed.pdf")), HasSubstr(Expected().Total.back()));
}

TEST_F(ReportPrintTest, PrintsThePagesThatWereAskedFor) {
    Open(TwoWeeks(8, 2));
    PrintTo("printed.pdf", [](QPrinter& printer) {
        printer.setPrintRange(QPrinter::PageRange);
        printer.setFromTo(2, 3);
    });
    const std::vector<std::string> pages = Pages("printed.pdf");
    ASSERT_THAT(pages, SizeIs(2));
    EXPECT_THAT(pages[0], HasSubstr("Page 2 of "));
    EXPECT_THAT(pages[1], HasSubstr("Page 3 of "));
}

TEST_F(ReportPrintTest, CancelledItPrintsNothing) {
    Open();
    form_->AskForPrinter = [](QPrinter&, QWidget*) { return false; };
    Click("cmdPrint");
    EXPECT_THAT(Boxes(), IsEmpty());
    EXPECT_EQ(LabelText("lblState"), "");
}

TEST_F(ReportPrintTest, APrinterThatDoesNotTakeItIsTold) {
    Open();
    PrintTo("no such folder/printed.pdf");
    ASSERT_THAT(Boxes(), SizeIs(1));
    EXPECT_EQ(Boxes()[0].Title, "Print");
    EXPECT_EQ(Boxes()[0].Icon, BoxIcon::Stop);
    EXPECT_THAT(Boxes()[0].Text, HasSubstr("was not printed"));
    EXPECT_EQ(LabelText("lblState"), "");
}

TEST_F(ReportPrintTest, AWindowThatGoesUnderTheQuestionPrintsNothing) {
    Open();
    form_->AskForPrinter = [this](QPrinter&, QWidget*) {
        delete form_;
        return true;
    };
    Control<QPushButton>("cmdPrint")->click();
    EXPECT_TRUE(form_.isNull());
    EXPECT_THAT(Boxes(), IsEmpty());
}

}  // namespace
}  // namespace testing_support
