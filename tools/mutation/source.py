"""A light reader of C++ as clang-format lays it out: tokens, pairs of brackets, what braces hold.

It leans on the layout: a template's angle brackets touch their neighbours, a comparison's stand
between blanks; a reference's ampersand touches the type, an operator's stands between blanks.
"""

import re
from dataclasses import dataclass

BLOCK = "block"
NAMESPACE = "namespace"
CLASS = "class"
ENUM = "enum"
VALUES = "values"  # an initializer's braces

_TOKEN = re.compile(
    r"""(?P<comment>//(?:\\\n|[^\n])*|/\*.*?\*/)
    |(?P<preprocessor>^[ \t]*\#(?:\\\n|[^\n])*)
    |(?P<raw>(?:u8|[uUL])?R"(?P<fence>[^()\\\s]{0,16})\(.*?\)(?P=fence)")
    |(?P<text>(?:u8|[uUL])?"(?:\\.|[^"\\\n])*")
    |(?P<char>'(?:\\.|[^'\\\n])+')
    |(?P<number>(?:0[xX][0-9a-fA-F']+|0[bB][01']+|
                (?:\d[\d']*\.?\d*|\.\d+)(?:[eE][+-]?\d+)?)[uUlLfFzZ]*)
    |(?P<name>[A-Za-z_]\w*)
    |(?P<sign><=>|->\*|\.\.\.|<<=|>>=|::|->|\+\+|--|<<|>>|<=|>=|==|!=|&&|\|\||[-+*/%&|^]=|[^\s])""",
    re.VERBOSE | re.DOTALL | re.MULTILINE)

_OPENERS = {"(": ")", "[": "]", "{": "}"}
_BEFORE_BLOCK = {"else", "do", "try", "const", "noexcept", "override", "final", "mutable"}


@dataclass
class Token:
    kind: str  # name, number, text, raw, char or sign
    text: str
    start: int
    end: int
    in_template: bool = False  # between a template's angle brackets, or one of them

    def __repr__(self):
        return self.text


class Source:
    """A file's tokens with, for each, its partner bracket and the braces around it."""

    def __init__(self, path, code):
        self.path = path
        self.code = code
        self.tokens = _tokens_of(code)
        self._mark_templates()
        self.partner = {}
        self.holds = {}  # what the braces opened at a token hold
        self.brace_of = []  # for each token, the innermost open brace around it or None
        self._match()

    def spaced(self, token):
        """Whether an operator stands between blanks, as a binary one does."""
        return self.code[token.start - 1:token.start].isspace() and \
            self.code[token.end:token.end + 1].isspace()

    def scope_of(self, index):
        brace = self.brace_of[index]
        return NAMESPACE if brace is None else self.holds[brace]

    def line_of(self, offset):
        return self.code.count("\n", 0, offset) + 1

    def text_between(self, first, last):
        """The code from token `first` to token `last`, both included."""
        return self.code[self.tokens[first].start:self.tokens[last].end]

    def split(self, first, last, separator):
        """Ranges (first, last) of tokens between separators at their own level."""
        parts, begin, i = [], first, first
        while i <= last:
            token = self.tokens[i]
            if token.text == separator and not token.in_template:
                parts.append((begin, i - 1))
                begin = i + 1
            i = self.partner[i] + 1 if token.text in _OPENERS and i in self.partner else i + 1
        parts.append((begin, last))
        return parts

    def top_level(self, first, last):
        """Tokens from `first` to `last`, without what stands in brackets among them."""
        i = first
        while i <= last:
            yield i
            opens = self.tokens[i].text in _OPENERS and i in self.partner
            i = self.partner[i] + 1 if opens else i + 1

    def _mark_templates(self):
        depth = 0
        for i, token in enumerate(self.tokens):
            before = self.code[token.start - 1:token.start]
            if token.text in ("<", ">", ">>"):
                if token.text == "<" and self._opens_template(i):
                    depth += 1
                elif token.text != "<" and depth and not before.isspace():
                    token.in_template = True
                    depth = max(0, depth - len(token.text))
                    continue
            elif token.text in (";", "{") and depth:
                depth = 0  # no template argument holds one: it was no template after all
            token.in_template = depth > 0

    def _opens_template(self, index):
        token, code = self.tokens[index], self.code
        if index == 0 or self.tokens[index - 1].text == "operator":
            return False
        if self.tokens[index - 1].text == "template":
            return True
        return self.tokens[index - 1].kind == "name" and \
            not code[token.start - 1].isspace() and not code[token.end:token.end + 1].isspace()

    def _match(self):
        stack, braces = [], []
        for i, token in enumerate(self.tokens):
            self.brace_of.append(braces[-1] if braces else None)
            if token.kind != "sign":
                continue
            if token.text in _OPENERS:
                stack.append(i)
                if token.text == "{":
                    self.holds[i] = self._what_opens(i, stack)
                    braces.append(i)
            elif token.text in ")]}" and stack:
                opener = stack.pop()
                self.partner[opener] = i
                self.partner[i] = opener
                if token.text == "}" and braces:
                    braces.pop()
                    self.brace_of[i] = braces[-1] if braces else None

    def _what_opens(self, index, stack):
        """What the braces that open at a token will hold, told from what stands before them."""
        before = self.tokens[index - 1] if index else None
        outer = self.scope_of(index)
        if before is None or before.text in (";", "{"):
            return VALUES if outer == VALUES else BLOCK
        if before.text == ")" or before.text in _BEFORE_BLOCK:
            return BLOCK
        if before.text == "}":
            return VALUES if outer == VALUES else BLOCK  # a constructor's body after its members
        if before.text == "]" and self._is_lambda(index - 1):
            return BLOCK
        return self._told_by_head(index, in_brackets=len(stack) > 1 and
                                  self.tokens[stack[-2]].text != "{")

    def _is_lambda(self, closing):
        opener = self.partner.get(closing)
        return opener is not None and not _is_subscript(self.tokens, opener)

    def _told_by_head(self, index, in_brackets):
        words, i = set(), index - 1
        if self.tokens[i].text == ":" and not in_brackets:
            return BLOCK  # of a case
        while i >= 0 and self.tokens[i].text not in (";", "{", "}"):
            if self.tokens[i].text == ")" and i in self.partner:
                i = self.partner[i]
            if self.tokens[i].text == "->" and not words & {"=", "return", ","} and \
                    self.tokens[i - 1].text in (")", "const", "mutable", "noexcept"):
                return BLOCK  # of a function that tells its type behind its parameters
            words.add(self.tokens[i].text)
            i -= 1
        if not in_brackets and "=" not in words:
            for word, kind in (("namespace", NAMESPACE), ("enum", ENUM), ("struct", CLASS),
                               ("class", CLASS), ("union", CLASS)):
                if word in words:
                    return kind
        return VALUES


def _tokens_of(code):
    tokens = []
    for found in _TOKEN.finditer(code):
        kind = found.lastgroup if found.lastgroup != "fence" else "raw"
        if kind not in ("comment", "preprocessor"):
            tokens.append(Token(kind, found.group(), found.start(), found.end()))
    return tokens


def _is_subscript(tokens, opener):
    """Whether a square bracket takes an element, and is no lambda, attribute or capture."""
    if opener == 0 or tokens[opener + 1].text == "[" or tokens[opener - 1].text == "[":
        return False
    before = tokens[opener - 1]
    if before.kind == "name":
        return before.text not in ("return", "case", "throw", "delete", "operator", "auto")
    return before.text in (")", "]")


def is_subscript(source, opener):
    return _is_subscript(source.tokens, opener)
