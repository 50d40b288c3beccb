"""The project from which a compiled help file, Orvia.chm, is made of the HTML pages."""

from pathlib import Path

from . import html, markup, pages as manual

HELP_FILE = "Orvia.chm"


def project(written):
    """The project file; `written` are the names of all files of the manual."""
    files = "\n".join(written)
    return f"""[OPTIONS]
Compatibility=1.1 or later
Compiled file={HELP_FILE}
Contents file=orvia.hhc
Index file=orvia.hhk
Default topic={manual.CONTENTS}.html
Default window=main
Title=Orvia
Language=0x409 English (United States)
Full-text search=Yes

[WINDOWS]
main="Orvia","orvia.hhc","orvia.hhk","{manual.CONTENTS}.html","{manual.CONTENTS}.html",,,,,0x63520,222,0x304e,,,,,,,,0

[FILES]
{files}
"""


def _frame(body):
    return ('<!DOCTYPE HTML PUBLIC "-//IETF//DTD HTML//EN">\n<HTML><HEAD></HEAD><BODY>\n'
            + body + "</BODY></HTML>\n")


def _entry(name, *files):
    params = f'<param name="Name" value="{html.escape(name)}">'
    params += "".join(f'<param name="Local" value="{file}">' for file in files)
    return f'<LI><OBJECT type="text/sitemap">{params}</OBJECT>\n'


def _title(pages, name):
    return markup.plain_text(pages[name].title)


def contents(pages):
    """The tree of the contents."""
    made = "<UL>\n" + _entry(_title(pages, manual.CONTENTS), pages[manual.CONTENTS].html)
    for chapter in manual.chapters(pages):
        made += _entry(chapter.heading) + "<UL>\n"
        made += "".join(_entry(_title(pages, name), pages[name].html) for name in chapter.pages)
        made += "</UL>\n"
    return _frame(made + "</UL>\n")


def keywords(pages):
    """The index: of a keyword with several pages each is listed under its title."""
    made = "<UL>\n"
    for word, names in manual.index(pages):
        params = f'<param name="Name" value="{html.escape(word)}">'
        for name in names:
            params += f'<param name="Name" value="{html.escape(_title(pages, name))}">'
            params += f'<param name="Local" value="{pages[name].html}">'
        made += f'<LI><OBJECT type="text/sitemap">{params}</OBJECT>\n'
    return _frame(made + "</UL>\n")


def write(pages, out, written):
    """The three files beside the pages; `chmcmd orvia.hhp` makes the help file of them."""
    out = Path(out)
    for name, text in (("orvia.hhp", project(written)), ("orvia.hhc", contents(pages)),
                       ("orvia.hhk", keywords(pages))):
        # The viewer reads all three in the system's code page.
        (out / name).write_bytes(text.replace("\n", "\r\n").encode("ascii"))
