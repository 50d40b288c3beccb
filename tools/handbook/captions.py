"""What the windows say: the texts in the program's sources, as the screen shows them."""

import re
from pathlib import Path

# A text, possibly of several pieces, or what could be taken for one.
TOKEN = re.compile(
    r"(?P<comment>//[^\n]*|/\*.*?\*/)"
    r'|(?P<raw>R"(?P<mark>[^(\s]*)\((?P<body>.*?)\)(?P=mark)")'
    r"|(?P<char>'(?:\\.|[^'\\\n])+')"
    r'|(?P<text>"(?:\\.|[^"\\\n])*")'
    r"|(?P<include>#\s*include[^\n]*)",
    re.DOTALL)

ESCAPES = {"n": "\n", "t": "\t", '"': '"', "'": "'", "\\": "\\", "0": "\0", "r": "\r"}
WILD = re.compile(r"%\d")


def texts_of(source):
    """The texts in C++ code; pieces with nothing but blanks between them are one."""
    found = []
    end = None
    for match in TOKEN.finditer(source):
        if match["text"] is None and match["raw"] is None:
            continue
        text = match["body"] if match["raw"] is not None else _unescaped(match["text"][1:-1])
        if end is not None and not source[end:match.start()].strip():
            found[-1] += text
        else:
            found.append(text)
        end = match.end()
    return found


def _unescaped(text):
    return re.sub(r"\\(x[0-9A-Fa-f]+|.)",
                  lambda match: ESCAPES.get(match.group(1), match.group()), text)


def plain(words):
    """Words in single blanks and without the colon behind a caption."""
    return " ".join(words.split()).removesuffix(":").rstrip()


def shown(text):
    """A text of the program as it is read on the screen: without marks of keys."""
    return plain(re.sub(r"&(\S)", r"\1", text))


class Screen:
    """All that the program can say."""

    def __init__(self, texts):
        self.whole = set()
        self.patterns = []
        self.parts = []
        for text in texts:
            read = shown(text)
            if not read:
                continue
            self.whole.add(read)
            self.parts.append(" ".join(text.split()))
            if not re.search(r"[A-Za-z]{2}", WILD.sub("", read)):
                continue
            if WILD.search(read):
                self.patterns.append(re.compile(".+".join(map(re.escape, WILD.split(read)))))
            elif text.endswith(" "):
                # A number follows: "Channel 1".
                self.patterns.append(re.compile(re.escape(read) + r" \d+"))

    def has_caption(self, words):
        """Whether a control, a title or a row of a menu reads so."""
        words = plain(words)
        return words in self.whole or any(one.fullmatch(words) for one in self.patterns)

    def says(self, message):
        """Whether a message can read so; "…" stands for what changes in it. The program may put it
        together from sentences."""
        pieces = [" ".join(piece.split()) for piece in message.split("…")]
        return all(self._says_piece(piece) for piece in pieces if piece)

    def _says_piece(self, piece):
        if any(piece in part for part in self.parts):
            return True
        return any(self._says_piece(piece[:end.end()].rstrip()) and
                   self._says_piece(piece[end.end():])
                   for end in re.finditer(r"[.:?!] (?=.)", piece))


def screen_of(folder):
    """What the sources below the folder say."""
    texts = []
    for path in sorted(Path(folder).rglob("*")):
        if path.suffix in (".h", ".cpp"):
            texts += texts_of(path.read_text(encoding="utf-8"))
    return Screen(texts)
