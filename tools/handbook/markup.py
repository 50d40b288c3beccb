"""The part of Markdown that the manual is written in, as blocks and pieces of text.

A page knows headings, paragraphs, lists, tables, quotes, code and comments; a text knows **words on
the screen**, *stress*, `code`, [links](page.md) and ![pictures](pictures/name.png). A quote is what
the program says, word by word. What is none of this is a mistake, not text."""

import re
from dataclasses import dataclass, field


class MarkupError(Exception):
    """What is no markup of the manual, and in which line."""

    def __init__(self, line, what):
        super().__init__(f"line {line}: {what}")
        self.line = line
        self.what = what


@dataclass(frozen=True)
class Piece:
    """A stretch of text: kind is text, caption, stress, code, link or picture."""

    kind: str
    text: str
    target: str = ""


@dataclass
class Block:
    """kind is heading, paragraph, list, table, quote or code. A list holds in `items` the blocks of
    each item, a table in `rows` the cells of each row; a heading has a level, a list may count."""

    kind: str
    line: int
    text: str = ""
    level: int = 0
    counts: bool = False
    items: list = field(default_factory=list)
    rows: list = field(default_factory=list)


ITEM = re.compile(r"(?P<mark>- |\d+\. )(?P<text>.*)")
HEADING = re.compile(r"(?P<marks>#{1,3}) (?P<text>.+)")
RULE = re.compile(r"\|(\s*:?-+:?\s*\|)+")
INLINE = re.compile(
    r"\\(?P<escaped>[\\`*_\[\]|<>#-])"
    r"|`(?P<code>[^`]+)`"
    r"|\*\*(?P<caption>.+?)\*\*"
    r"|\*(?P<stress>[^*\s](?:[^*]*[^*\s])?)\*"
    r"|!\[(?P<picture>[^\]]*)\]\((?P<source>[^)\s]+)\)"
    r"|\[(?P<link>[^\]]+)\]\((?P<target>[^)\s]+)\)")


def pieces(text, line=0):
    """The pieces of a text, in their order."""
    found = []
    plain = ""
    at = 0
    for match in INLINE.finditer(text):
        plain += text[at:match.start()]
        at = match.end()
        if match["escaped"]:
            plain += match["escaped"]
            continue
        if plain:
            found.append(_plain(plain, line))
            plain = ""
        found.append(_marked(match))
    plain += text[at:]
    if plain:
        found.append(_plain(plain, line))
    return found


def _marked(match):
    if match["picture"] is not None:
        return Piece("picture", match["picture"], match["source"])
    if match["link"]:
        return Piece("link", match["link"], match["target"])
    kind = next(kind for kind in ("code", "caption", "stress") if match[kind])
    text = match[kind]
    return Piece(kind, text if kind == "code" else re.sub(r"\\(.)", r"\1", text))


def _plain(text, line):
    stray = re.search(r"\*\*|`|\]\(|<[a-zA-Z/!]", text)
    if stray:
        raise MarkupError(line, f"{stray.group()!r} marks nothing")
    return Piece("text", text)


def plain_text(text):
    """The text without its marks."""
    return "".join(piece.text for piece in pieces(text))


def parse(source):
    """The blocks of a page."""
    return _Parser(_without_comments(source).split("\n")).blocks()


def _without_comments(source):
    """Comments become empty lines, so that lines keep their numbers."""
    return re.sub(r"<!--.*?-->", lambda match: "\n" * match.group().count("\n"), source,
                  flags=re.DOTALL)


class _Parser:
    def __init__(self, lines, first=1):
        self.lines = lines
        self.first = first
        self.at = 0

    def blocks(self):
        found = []
        while self.at < len(self.lines):
            if not self.lines[self.at].strip():
                self.at += 1
            else:
                found.append(self._block())
        return found

    def _block(self):
        line = self.lines[self.at]
        if line.startswith("```"):
            return self._code()
        if line.startswith("#"):
            return self._heading()
        if line.startswith("|"):
            return self._table()
        if line.startswith(">"):
            return self._quote()
        if ITEM.match(line):
            return self._list()
        if line.startswith(" "):
            raise MarkupError(self._number(), "an indented line that continues nothing")
        return self._paragraph()

    def _number(self, at=None):
        return self.first + (self.at if at is None else at)

    def _take(self, holds):
        """The lines from here on for which it holds."""
        begin = self.at
        while self.at < len(self.lines) and holds(self.lines[self.at]):
            self.at += 1
        return begin, self.lines[begin:self.at]

    def _code(self):
        begin = self.at
        self.at += 1
        _, lines = self._take(lambda line: not line.startswith("```"))
        if self.at == len(self.lines):
            raise MarkupError(self._number(begin), "code that does not end")
        self.at += 1
        return Block("code", self._number(begin), "\n".join(lines))

    def _heading(self):
        match = HEADING.fullmatch(self.lines[self.at].rstrip())
        if not match:
            raise MarkupError(self._number(), "no heading of level 1 to 3")
        self.at += 1
        return Block("heading", self._number(self.at - 1), match["text"],
                     level=len(match["marks"]))

    def _table(self):
        begin, lines = self._take(lambda line: line.startswith("|"))
        if len(lines) < 2 or not RULE.fullmatch(lines[1].strip()):
            raise MarkupError(self._number(begin), "a table without a rule below its heading")
        rows = [_cells(line) for line in lines[:1] + lines[2:]]
        for number, row in enumerate(rows):
            if len(row) != len(rows[0]):
                raise MarkupError(self._number(begin) + number + 1, "a row of another width")
        return Block("table", self._number(begin), rows=rows)

    def _quote(self):
        begin, lines = self._take(lambda line: line.startswith(">"))
        return Block("quote", self._number(begin),
                     " ".join(line[1:].strip() for line in lines).strip())

    def _paragraph(self):
        starts = ("#", "|", ">", "```")
        begin, lines = self._take(lambda line: line.strip() and not line.startswith(starts)
                                  and not ITEM.match(line))
        return Block("paragraph", self._number(begin), " ".join(line.strip() for line in lines))

    def _list(self):
        counts = self.lines[self.at][0].isdigit()
        block = Block("list", self._number(), counts=counts)
        while self.at < len(self.lines):
            match = ITEM.match(self.lines[self.at])
            if not match or match["mark"][0].isdigit() != counts:
                break
            block.items.append(self._item(match))
        return block

    def _item(self, match):
        begin = self.at
        indent = len(match["mark"])
        self.at += 1

        def belongs(line):
            return not line.strip() or line.startswith(" " * indent)
        _, lines = self._take(belongs)
        while lines and not lines[-1].strip():
            lines.pop()
        inner = [match["text"]] + [line[indent:] for line in lines]
        return _Parser(inner, self._number(begin)).blocks()


def _cells(line):
    inner = line.strip().removeprefix("|").removesuffix("|")
    return [cell.strip() for cell in re.split(r"(?<!\\)\|", inner)]


def texts(blocks):
    """Every text that is shown, with its line and the kind of its block."""
    for block in blocks:
        if block.kind == "list":
            for item in block.items:
                yield from texts(item)
        elif block.kind == "table":
            for number, row in enumerate(block.rows):
                for cell in row:
                    yield cell, block.line + number + (1 if number else 0), block.kind
        elif block.kind != "code":
            yield block.text, block.line, block.kind
