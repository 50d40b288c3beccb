"""The pages as HTML: one file a page, contents, index, one style for all."""

import html
import re
import shutil
from pathlib import Path

from . import markup, pages as manual

INDEX = "keywords"

# Plain enough for the viewer of compiled help, whose browser is old: what it does not know, as the
# dark colours, it passes over.
STYLE = """\
body { font: 15px/1.5 "Segoe UI", "DejaVu Sans", sans-serif; max-width: 46em; margin: 0 auto;
       padding: 1em 1.2em; color: #1c1c1c; background: #ffffff; }
h1 { font-size: 1.5em; margin: 0.6em 0; }
h2 { font-size: 1.2em; margin: 1.4em 0 0.4em; border-bottom: 1px solid #c8c8c8; }
h3 { font-size: 1em; margin: 1.2em 0 0.3em; }
a { color: #0b57a4; }
code, pre { font-family: Consolas, "DejaVu Sans Mono", monospace; font-size: 0.92em; }
pre { background: #f1f1f1; padding: 0.6em; overflow: auto; }
blockquote { margin: 0.6em 0; padding: 0.4em 0.8em; border-left: 4px solid #b06000;
             background: #f6f1e8; }
table { border-collapse: collapse; margin: 0.8em 0; }
th, td { border: 1px solid #c8c8c8; padding: 0.25em 0.6em; text-align: left;
         vertical-align: top; }
img { max-width: 100%; border: 1px solid #c8c8c8; }
p.picture { margin: 1em 0; }
nav { font-size: 0.9em; margin: 0.4em 0 1em; }
nav a { margin-right: 1em; }
@media (prefers-color-scheme: dark) {
  body { color: #e6e6e6; background: #1b1d1f; }
  a { color: #8ec5ff; }
  pre { background: #2a2d30; }
  blockquote { background: #2e2a22; border-color: #d79a3c; }
  h2, th, td, img { border-color: #4a4e52; }
}
@media print {
  body { max-width: none; color: #000000; background: #ffffff; }
  nav { display: none; }
  a { color: #000000; text-decoration: none; }
  img, tr, blockquote { page-break-inside: avoid; }
  h1, h2, h3 { page-break-after: avoid; }
}
"""


def escape(text):
    return html.escape(text, quote=True)


def target_of(link):
    """Where a link to a source page leads among the pages made."""
    return re.sub(r"\.md(?=#|$)", ".html", link)


def inline(text, shows_pictures, line=0):
    made = ""
    for piece in markup.pieces(text, line):
        words = escape(piece.text)
        if piece.kind == "caption":
            made += f"<b>{words}</b>"
        elif piece.kind == "stress":
            made += f"<em>{words}</em>"
        elif piece.kind == "code":
            made += f"<code>{words}</code>"
        elif piece.kind == "link":
            made += f'<a href="{escape(target_of(piece.target))}">{words}</a>'
        elif piece.kind == "picture":
            if shows_pictures:
                made += f'<img src="{escape(piece.target)}" alt="{words}">'
        else:
            made += words
    return made


class Writer:
    """Blocks as HTML; pictures are left out where there are none."""

    def __init__(self, shows_pictures):
        self.shows_pictures = shows_pictures

    def inline(self, text, line=0):
        return inline(text, self.shows_pictures, line)

    def blocks(self, blocks):
        return "".join(getattr(self, block.kind)(block) for block in blocks)

    def heading(self, block):
        words = self.inline(block.text, block.line)
        mark = f' id="{manual.anchor(block.text)}"' if block.level > 1 else ""
        return f"<h{block.level}{mark}>{words}</h{block.level}>\n"

    def paragraph(self, block):
        words = self.inline(block.text, block.line)
        kinds = {piece.kind for piece in markup.pieces(block.text)}
        style = ' class="picture"' if kinds == {"picture"} else ""
        return f"<p{style}>{words}</p>\n" if words else ""

    def quote(self, block):
        return f"<blockquote>{self.inline(block.text, block.line)}</blockquote>\n"

    def code(self, block):
        return f"<pre>{escape(block.text)}</pre>\n"

    def list(self, block):
        name = "ol" if block.counts else "ul"
        items = "".join(f"<li>{self.item(item)}</li>\n" for item in block.items)
        return f"<{name}>\n{items}</{name}>\n"

    def item(self, blocks):
        """An item of one paragraph needs no frame around it."""
        if blocks and blocks[0].kind == "paragraph":
            first = self.inline(blocks[0].text, blocks[0].line)
            return first + ("\n" + self.blocks(blocks[1:]) if blocks[1:] else "")
        return self.blocks(blocks)

    def table(self, block):
        head, rows = block.rows[0], block.rows[1:]
        made = "<table>\n"
        if any(head):
            made += self.row(head, "th", block.line)
        for row in rows:
            made += self.row(row, "td", block.line)
        return made + "</table>\n"

    def row(self, cells, name, line):
        return "<tr>" + "".join(f"<{name}>{self.inline(cell, line)}</{name}>"
                                for cell in cells) + "</tr>\n"


def frame(title, body, before="", after=""):
    return f"""<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>{escape(title)}</title>
<link rel="stylesheet" href="manual.css">
</head>
<body>
<nav><a href="{manual.CONTENTS}.html">Contents</a><a href="{INDEX}.html">Index</a></nav>
{body}<nav>{before}{after}</nav>
</body>
</html>
"""


def neighbours(pages, name):
    """Links to the pages before and behind this one."""
    names = manual.order(pages)
    at = names.index(name)
    links = []
    for step, word in ((-1, "Back"), (1, "On")):
        there = at + step
        if 0 <= there < len(names):
            page = pages[names[there]]
            title = escape(markup.plain_text(page.title))
            links.append(f'<a href="{page.html}">{word}: {title}</a>')
        else:
            links.append("")
    return links


def page_html(pages, name, shows_pictures):
    page = pages[name]
    return frame(markup.plain_text(page.title), Writer(shows_pictures).blocks(page.blocks),
                 *neighbours(pages, name))


def index_html(pages):
    rows = ""
    for word, names in manual.index(pages):
        links = ", ".join(
            f'<a href="{pages[name].html}">{escape(markup.plain_text(pages[name].title))}</a>'
            for name in names)
        rows += f"<tr><td>{escape(word)}</td><td>{links}</td></tr>\n"
    return frame("Index", f"<h1>Index</h1>\n<table>\n{rows}</table>\n")


def pictures_of(pages):
    """The names of all pictures that the pages show, in order."""
    return sorted({piece.target for page in pages.values() for piece, _ in page.pieces()
                   if piece.kind == "picture"})


def build(pages, out, pictures=None):
    """Writes all files; gives their names. `pictures` is the folder that has the pictures; without
    one the pages show none."""
    out = Path(out)
    out.mkdir(parents=True, exist_ok=True)
    written = ["manual.css", INDEX + ".html"]
    (out / "manual.css").write_text(STYLE, encoding="utf-8")
    (out / (INDEX + ".html")).write_text(index_html(pages), encoding="utf-8")
    for name in manual.order(pages):
        (out / pages[name].html).write_text(page_html(pages, name, pictures is not None),
                                            encoding="utf-8")
        written.append(pages[name].html)
    if pictures is not None:
        written += _copy_pictures(pages, out, Path(pictures))
    return written


def _copy_pictures(pages, out, pictures):
    named = pictures_of(pages)
    missing = [name for name in named if not (pictures / Path(name).name).is_file()]
    if missing:
        raise FileNotFoundError(f"{pictures} lacks {', '.join(missing)}")
    for name in named:
        (out / name).parent.mkdir(parents=True, exist_ok=True)
        shutil.copyfile(pictures / Path(name).name, out / name)
    return named
