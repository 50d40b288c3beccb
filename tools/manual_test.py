#!/usr/bin/env python3
"""Tries tools/manual.py on small manuals: what its markup becomes, and that each of its checks finds
what it is there for."""

import io
import sys
import tempfile
import unittest
from contextlib import redirect_stdout
from pathlib import Path

sys.dont_write_bytecode = True

import manual as program
from handbook import captions, checks, chm, html, markup, pages

HEADER = """#include <QDialog>
class frmPump final : public QDialog {
 public:
    explicit frmPump(QWidget* parent);
};
"""
FORM = """#include "frmPump.h"
frmPump::frmPump(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmPump"));
    button("cmdStart", "&Start Pump");
    Show("Error: the pump is dry.\\n"
         "Fill it.");
}
"""
MAPPING = 'constexpr X Pages{{\n    {"frmPump", "pump.html"},\n}};\n'
TOUR = 'tour.Keep(QStringLiteral("pump"), &form);\ntour.Keep(QStringLiteral("flow-%1").arg(n));\n'
INDEX = "# Manual\n\n## Windows\n\n- [Pump](pump.md)\n"
PUMP = """# Pump
<!-- keywords: pump; start -->

Press **Start Pump**. ![The pump](pictures/pump.png)

> Error: the pump is dry. Fill it.
"""


class Manual:
    """A project with a manual of one page, in a folder of its own."""

    def __init__(self, test):
        self.folder = tempfile.TemporaryDirectory()
        test.addCleanup(self.folder.cleanup)
        self.root = Path(self.folder.name)
        self.write("src/room/frmPump.h", HEADER)
        self.write("src/room/frmPump.cpp", FORM)
        self.write("src/app/help_pages.cpp", MAPPING)
        self.write("tests/whole_program/tour.cpp", TOUR)
        self.page("index", INDEX)
        self.page("pump", PUMP)

    def write(self, path, text):
        (self.root / path).parent.mkdir(parents=True, exist_ok=True)
        (self.root / path).write_text(text, encoding="utf-8")

    def page(self, name, text):
        self.write(f"docs/manual/{name}.md", text)

    def wrong(self):
        return checks.check(self.root)

    def pages(self):
        return pages.read_manual(self.root / "docs/manual")


def as_html(source):
    return html.Writer(True).blocks(markup.parse(source))


class Markup(unittest.TestCase):
    def test_paragraphs_and_headings(self):
        self.assertEqual(as_html("# A & b\n\nOne\ntwo.\n"), "<h1>A &amp; b</h1>\n<p>One two.</p>\n")

    def test_a_heading_can_be_linked_to(self):
        self.assertEqual(as_html("## What can go wrong?\n"),
                         '<h2 id="what-can-go-wrong">What can go wrong?</h2>\n')

    def test_marks_in_a_text(self):
        self.assertEqual(as_html("**B** *e* `a<b` [l](p.md#x) ![w](pictures/p.png)"),
                         '<p><b>B</b> <em>e</em> <code>a&lt;b</code> <a href="p.html#x">l</a> '
                         '<img src="pictures/p.png" alt="w"></p>\n')

    def test_signs_that_mark_nothing(self):
        self.assertEqual(as_html("2 * 3 * 4 and \\*.set"), "<p>2 * 3 * 4 and *.set</p>\n")

    def test_a_list_goes_on_in_indented_lines(self):
        self.assertEqual(as_html("- one\n  more\n- two\n"),
                         "<ul>\n<li>one more</li>\n<li>two</li>\n</ul>\n")

    def test_a_list_in_a_counted_list(self):
        self.assertEqual(as_html("1. one\n   - a\n   - b\n2. two\n"),
                         "<ol>\n<li>one\n<ul>\n<li>a</li>\n<li>b</li>\n</ul>\n</li>\n"
                         "<li>two</li>\n</ol>\n")

    def test_a_table_without_a_heading(self):
        self.assertEqual(as_html("| | |\n|---|---|\n| a | b\\|c |\n"),
                         "<table>\n<tr><td>a</td><td>b|c</td></tr>\n</table>\n")

    def test_a_quote_is_one_text(self):
        self.assertEqual(as_html("> one\n> two\n"), "<blockquote>one two</blockquote>\n")

    def test_code_stands_as_it_is(self):
        self.assertEqual(as_html("```\na  **b** <c>\n```\n"), "<pre>a  **b** &lt;c&gt;</pre>\n")

    def test_comments_are_left_out(self):
        self.assertEqual(as_html("a\n<!-- b\nc -->\n\nd\n"), "<p>a</p>\n<p>d</p>\n")

    def test_what_is_no_markup_is_told_with_its_line(self):
        for source, line in (("a\n\n**b", 3), ("a\n<!-- b\nc -->\n\n`d", 5), ("<b>x</b>", 1), ("a `b", 1), ("#### a", 1),
                             ("- a\n\n    b", 3), ("a\n\n  d", 3), ("| a |\n| b |", 1),
                             ("\n```\na", 2), ("| a | b |\n|---|---|\n| c |", 3)):
            with self.assertRaises(markup.MarkupError, msg=source) as raised:
                as_html(source)
            self.assertEqual(raised.exception.line, line, source)

    def test_a_picture_is_left_out_where_there_are_none(self):
        blocks = markup.parse("a\n\n![p](pictures/p.png)\n")
        self.assertEqual(html.Writer(False).blocks(blocks), "<p>a</p>\n")


class Texts(unittest.TestCase):
    def test_pieces_of_a_text_are_joined(self):
        self.assertEqual(captions.texts_of('f("a "\n  "b", "c");'), ["a b", "c"])

    def test_what_is_no_text_is_passed_over(self):
        code = """// "no"\n/* "no" */ #include "no.h"\nx = '"'; y = "yes \\"1\\" \\\\ \\n"; R"(raw "2")";"""
        self.assertEqual(captions.texts_of(code), ['yes "1" \\ \n', 'raw "2"'])

    def test_captions_are_compared_as_they_are_read(self):
        screen = captions.Screen(["&Get Sample", "Radio &Name:", "  For &All...  ", "...", "A && B"])
        for words in ("Get Sample", "Radio Name:", "Radio Name", "For All...", "...", "A & B"):
            self.assertTrue(screen.has_caption(words), words)
        for words in ("Get", "get sample", "Radio", "For All"):
            self.assertFalse(screen.has_caption(words), words)

    def test_numbers_in_captions(self):
        screen = captions.Screen(["Pulse Channel %1", "Channel ", "%1", " ", "Pump"])
        for words in ("Pulse Channel 1", "Channel 8"):
            self.assertTrue(screen.has_caption(words), words)
        for words in ("Pulse Channel", "Channel x", "anything", "Pump 1"):
            self.assertFalse(screen.has_caption(words), words)

    def test_messages_are_found_in_parts(self):
        screen = captions.Screen(["Failed.", " Received ", " records of ", "No \"", "\" here"])
        for words in ("Failed. Received … records of …", 'No "…" here', "Failed."):
            self.assertTrue(screen.says(words), words)
        for words in ("Failed. Sent …", "Failed Received", "Yes"):
            self.assertFalse(screen.says(words), words)


class Checks(unittest.TestCase):
    def setUp(self):
        self.manual = Manual(self)

    def assert_wrong(self, *parts):
        wrong = self.manual.wrong()
        self.assertEqual(len(wrong), 1, wrong)
        for part in parts:
            self.assertIn(part, wrong[0])

    def test_a_good_manual_has_nothing_wrong(self):
        self.assertEqual(self.manual.wrong(), [])

    def test_a_caption_that_no_window_has(self):
        self.manual.page("pump", PUMP.replace("**Start Pump**", "**Start the Pump**"))
        self.assert_wrong("pump.md:4", '"Start the Pump"')

    def test_a_message_that_nothing_says(self):
        self.manual.page("pump", PUMP.replace("is dry", "is wet"))
        self.assert_wrong("pump.md:6", "is wet")

    def test_a_window_without_a_page(self):
        self.manual.write("src/room/frmTank.h", HEADER.replace("frmPump", "frmTank"))
        self.assert_wrong("frmTank has no page")

    def test_a_window_by_its_flags(self):
        self.manual.write("src/room/frmTank.h", "class frmTank : public QLabel {\n};\n")
        self.assertEqual(self.manual.wrong(), [])
        self.manual.write("src/room/frmTank.cpp", "frmTank::frmTank() : QLabel(Qt::SplashScreen) {}")
        self.assert_wrong("frmTank has no page")

    def test_a_class_that_is_made_from_several(self):
        self.manual.write("src/room/frmTank.h",
                          "class frmTank final : public QMdiSubWindow,\n"
                          "    public std::enable_shared_from_this<frmTank> {\n};\n")
        self.assert_wrong("frmTank has no page")

    def test_a_mapping_that_leads_nowhere(self):
        self.manual.write("src/app/help_pages.cpp", MAPPING.replace("pump.html", "gone.html"))
        self.assert_wrong("frmPump", "gone.html")

    def test_a_mapping_of_what_is_no_window(self):
        self.manual.write("src/app/help_pages.cpp",
                          MAPPING.replace("}};", '    {"frmGone", "pump.html"},\n}};'))
        self.assert_wrong("frmGone is no window")

    def test_a_mapping_of_what_no_control_is_called(self):
        self.manual.write("src/app/help_pages.cpp",
                          MAPPING.replace("}};", '    {"Pages(0)", "pump.html"},\n}};'))
        self.assert_wrong("Pages(0)")
        self.manual.write("src/room/frmPump.cpp", FORM + 'Indexed("Pages", 0);\n')
        self.assertEqual(self.manual.wrong(), [])

    def test_a_link_to_a_page_that_is_missing(self):
        self.manual.page("pump", PUMP + "\n[x](gone.md)\n")
        self.assert_wrong("pump.md:8", "gone.md leads nowhere")

    def test_a_page_that_the_contents_has_in_vain(self):
        self.manual.page("index", INDEX + "- [Gone](gone.md)\n")
        self.assert_wrong("index.md:6", "gone.md leads nowhere")

    def test_a_link_out_of_the_manual(self):
        self.manual.write("docs/other.md", "# Other\n")
        self.manual.page("pump", PUMP + "\n[x](../other.md)\n")
        self.assert_wrong("../other.md leads nowhere")

    def test_a_link_to_a_heading_that_is_missing(self):
        self.manual.page("pump", PUMP + "\n[x](#gone)\n\n[y](pump.md#here)\n\n## Here\n")
        self.assert_wrong("#gone")

    def test_a_picture_that_the_tour_does_not_make(self):
        self.manual.page("pump", PUMP + "\n![x](pictures/gone.png) ![y](pictures/flow-3.png)\n")
        self.assert_wrong("pictures/gone.png")

    def test_a_picture_that_is_looked_for_elsewhere(self):
        self.manual.page("pump", PUMP.replace("pictures/", "images/"))
        self.assert_wrong("images/pump.png")

    def test_a_picture_without_words(self):
        self.manual.page("pump", PUMP.replace("The pump", ""))
        self.assert_wrong("has no words")

    def test_a_page_that_is_not_in_the_contents(self):
        self.manual.page("lost", PUMP)
        self.assert_wrong("lost.md: is not in the contents")

    def test_a_contents_that_lists_too_much(self):
        self.manual.page("index", INDEX + "- [Pump](pump.md)\n")
        self.assert_wrong("lists pump.md twice")

    def test_a_contents_that_calls_a_page_otherwise(self):
        self.manual.page("index", INDEX.replace("[Pump]", "[The pump]"))
        self.assert_wrong("index.md:5", '"The pump"')

    def test_a_page_without_keywords(self):
        self.manual.page("pump", PUMP.replace("keywords", "words"))
        self.assert_wrong("pump.md: has no keywords")

    def test_a_title_that_the_help_viewer_cannot_read(self):
        self.manual.page("pump", PUMP.replace("start", "dépt"))
        self.assert_wrong("is not ASCII")

    def test_markup_that_is_none(self):
        self.manual.page("pump", PUMP + "\n**x\n")
        self.assert_wrong("pump.md", "line 8")

    def test_a_page_without_a_title(self):
        for beginning in ("Text\n", "## Pump\n"):
            self.manual.page("pump", beginning)
            self.assert_wrong("begins with its title")

    def test_the_program_tells_and_fails(self):
        said = io.StringIO()
        with redirect_stdout(said):
            self.assertEqual(program.main(["--root", str(self.manual.root), "check"]), 0)
            self.manual.page("lost", PUMP)
            self.assertEqual(program.main(["--root", str(self.manual.root), "check"]), 1)
        self.assertIn("lost.md", said.getvalue())


class Building(unittest.TestCase):
    def setUp(self):
        self.manual = Manual(self)
        self.out = self.manual.root / "out"

    def build(self, *options):
        return program.main(["--root", str(self.manual.root), "build", str(self.out), *options])

    def text(self, name):
        return (self.out / name).read_text(encoding="utf-8")

    def test_makes_pages_contents_index_and_style(self):
        self.assertEqual(self.build(), 0)
        self.assertEqual(sorted(path.name for path in self.out.iterdir()),
                         ["index.html", "keywords.html", "manual.css", "pump.html"])
        self.assertIn('<a href="pump.html">Pump</a>', self.text("index.html"))
        self.assertIn('<td>start</td><td><a href="pump.html">Pump</a></td>',
                      self.text("keywords.html"))
        self.assertIn("On: Pump", self.text("index.html"))
        self.assertNotIn("<img", self.text("pump.html"))

    def test_takes_the_pictures_that_it_shows(self):
        self.manual.write("shots/pump.png", "png")
        self.manual.write("shots/other.png", "png")
        self.build("--pictures", str(self.manual.root / "shots"))
        self.assertIn('<img src="pictures/pump.png"', self.text("pump.html"))
        self.assertEqual([path.name for path in (self.out / "pictures").iterdir()], ["pump.png"])

    def test_a_picture_that_is_missing_stops_it(self):
        (self.manual.root / "shots").mkdir()
        with self.assertRaisesRegex(FileNotFoundError, "pictures/pump.png"):
            self.build("--pictures", str(self.manual.root / "shots"))

    def test_makes_the_project_of_a_compiled_help_file(self):
        self.manual.write("shots/pump.png", "png")
        self.build("--pictures", str(self.manual.root / "shots"), "--chm")
        project = (self.out / "orvia.hhp").read_bytes().decode("ascii").split("\r\n")
        self.assertIn("Compiled file=Orvia.chm", project)
        self.assertIn("Default topic=index.html", project)
        files = project[project.index("[FILES]") + 1:]
        self.assertEqual(sorted(filter(None, files)),
                         ["index.html", "keywords.html", "manual.css", "pictures/pump.png",
                          "pump.html"])
        self.assertIn('value="Pump"><param name="Local" value="pump.html"',
                      self.text("orvia.hhc"))
        self.assertIn('<param name="Name" value="start">', self.text("orvia.hhk"))

    def test_the_tree_of_the_contents_has_its_headings(self):
        tree = chm.contents(self.manual.pages())
        self.assertLess(tree.index('value="Windows"'), tree.index('value="Pump"'))
        self.assertEqual(tree.count("<UL>"), tree.count("</UL>"))

    def test_words_of_the_index_are_in_their_order(self):
        self.manual.page("pump", PUMP.replace("pump; start", "Start; zero; dry  run"))
        self.assertEqual([word for word, _ in pages.index(self.manual.pages())],
                         ["dry run", "Start", "zero"])


if __name__ == "__main__":
    unittest.main()
