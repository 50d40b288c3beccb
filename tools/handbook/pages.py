"""The pages of the manual and their order."""

import re
from dataclasses import dataclass, field
from pathlib import Path

from . import markup

CONTENTS = "index"


@dataclass
class Page:
    """One page: its name is that of its file, without an ending."""

    name: str
    source: str
    blocks: list = field(default_factory=list)

    @property
    def file(self):
        return self.name + ".md"

    @property
    def html(self):
        return self.name + ".html"

    @property
    def title(self):
        first = self.blocks[0] if self.blocks else None
        if first is None or first.kind != "heading" or first.level != 1:
            raise markup.MarkupError(1, "a page begins with its title")
        return first.text

    @property
    def keywords(self):
        """What the index lists the page under, from its comment `keywords: one; two`."""
        found = re.search(r"<!--\s*keywords:(.*?)-->", self.source, re.DOTALL)
        words = found.group(1).split(";") if found else []
        return [" ".join(word.split()) for word in words if word.strip()]

    @property
    def anchors(self):
        return [anchor(block.text) for block in self.blocks
                if block.kind == "heading" and block.level > 1]

    def pieces(self):
        """All pieces of the page's texts, with their line."""
        for text, line, _ in markup.texts(self.blocks):
            for piece in markup.pieces(text, line):
                yield piece, line


def anchor(text):
    """What a link calls a heading."""
    words = re.sub(r"[^a-z0-9 -]", "", markup.plain_text(text).lower())
    return "-".join(words.split())


def read_page(path):
    source = path.read_text(encoding="utf-8")
    try:
        page = Page(path.stem, source, markup.parse(source))
        for _ in page.pieces():
            pass
        return page
    except markup.MarkupError as wrong:
        raise markup.MarkupError(wrong.line, f"{path.name}: {wrong.what}") from wrong


def read_manual(folder):
    """All pages by name. The contents is one of them."""
    return {path.stem: read_page(path) for path in sorted(Path(folder).glob("*.md"))}


@dataclass(frozen=True)
class Chapter:
    """A heading of the contents and the names of the pages below it."""

    heading: str
    pages: tuple


def chapters(pages):
    """The order of the manual, which its contents tells."""
    found = []
    heading, names = "", []
    for block in pages[CONTENTS].blocks:
        if block.kind == "heading" and block.level == 2:
            if names:
                found.append(Chapter(heading, tuple(names)))
            heading, names = markup.plain_text(block.text), []
        elif block.kind == "list":
            names += [target.removesuffix(".md") for target in _link_targets(block)]
    if names:
        found.append(Chapter(heading, tuple(names)))
    return found


def _link_targets(block):
    return [piece.target for text, line, _ in markup.texts([block])
            for piece in markup.pieces(text, line) if piece.kind == "link"]


def order(pages):
    """The names of the pages as one reads them, the contents first."""
    return [CONTENTS] + [name for chapter in chapters(pages) for name in chapter.pages]


def index(pages):
    """Keywords, as an alphabet has them, each with the names of its pages in reading order."""
    entries = {}
    for name in order(pages):
        for word in pages[name].keywords:
            entries.setdefault(word, []).append(name)
    return sorted(entries.items(), key=lambda entry: (entry[0].lower(), entry[0]))
