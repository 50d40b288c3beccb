"""Constants a little off: numbers, characters, texts, and the neighbours of enumerators."""

import re
from decimal import Decimal

from .source import ENUM

_WHOLE = re.compile(r"(0[xX][0-9a-fA-F']+|0[bB][01']+|\d[\d']*)([uUlLzZ]*)$")
_REAL = re.compile(r"([\d']*\.?\d*)([eE][+-]?\d+)?([fFlL]?)$")
_CHARACTERS = re.compile(
    r"\\(?:x[0-9a-fA-F]+|[0-7]{1,3}|u[0-9a-fA-F]{4}|U[0-9a-fA-F]{8}|.)|[\x00-\x7f]|[^\x00-\x7f]+",
    re.DOTALL)
_USING = re.compile(r"^\s*using enum (?:\w+::)*(\w+);", re.MULTILINE)
_OTHER_ESCAPE = {"\\r": "\\n", "\\n": "\\r", "\\t": " ", "\\0": "\\1", "\\\\": "/", "\\'": "\\\""}


def changed_number(number):
    """A whole number and its neighbours, a real one with its last digit one more."""
    whole = _WHOLE.match(number)
    if whole:
        digits, suffix = whole.group(1), whole.group(2)
        return [_as(value, digits) + suffix for value in _neighbours(_value_of(digits))]
    real = _REAL.match(number)
    if not real:
        return []
    digits = real.group(1).replace("'", "")
    places = len(digits.partition(".")[2].rstrip("0"))
    value = Decimal(digits) + Decimal(1).scaleb(-places)
    shown = f"{value:.{max(places, 1)}f}"
    return [shown + (real.group(2) or "") + real.group(3)]


def _value_of(digits):
    digits = digits.replace("'", "")
    octal = digits[0] == "0" and digits.isdigit()
    return int(digits, 8 if octal else 0)


def _neighbours(value):
    return [value + 1, value - 1] if value > 0 else [value + 1]


def _as(value, pattern):
    if pattern[:2] in ("0x", "0X"):
        return f"0x{value:0{len(pattern) - 2}X}"
    if pattern[:2] in ("0b", "0B"):
        return f"0b{value:0{len(pattern) - 2}b}"
    return str(value)


def changed_char(char):
    inner = char[1:-1]
    if inner.startswith("\\"):
        other = _OTHER_ESCAPE.get(inner)
        return [f"'{other}'"] if other else []
    if len(inner) != 1 or not 32 <= ord(inner) < 126:
        return []
    following = chr(ord(inner) + 1)
    return [f"'\\{following}'" if following in "'\\" else f"'{following}'"]


def changed_text(literal):
    """A text with the letter or digit in its middle changed; without any, one character short."""
    quote = literal.index('"')
    units = _CHARACTERS.findall(literal[quote + 1:-1])
    if not units:
        return None
    plain = [i for i, unit in enumerate(units)
             if unit.isascii() and unit.isalnum() and not _follows_number(units, i)]
    if plain:
        middle = plain[len(plain) // 2]
        units[middle] = "x" if units[middle] != "x" else "y"
    else:
        units.pop()
    return literal[:quote + 1] + "".join(units) + '"'


def _follows_number(units, i):
    """Whether a character stands behind one given by its number, and may be read as part of it."""
    return i > 0 and len(units[i - 1]) > 2 and units[i - 1].startswith("\\")


class Enumerators:
    """Which enumerators there are, and which stands beside each."""

    def __init__(self, sources):
        self._of_type = {}  # name of the enumeration -> lists of members; a name may return
        self._plain = {}  # member of an enumeration without scope -> its neighbour
        self._used = {}  # path -> what that file may name without the enumeration
        for source in sources:
            for brace, kind in source.holds.items():
                if kind == ENUM:
                    self._take(source, brace)

    def _take(self, source, brace):
        head = brace - 1
        while source.tokens[head].text != "enum":
            head -= 1
        scoped = source.tokens[head + 1].text in ("class", "struct")
        name = source.tokens[head + (2 if scoped else 1)].text
        last = source.partner[brace] - 1
        members = [source.tokens[first].text
                   for first, end in source.split(brace + 1, last, ",") if first <= end]
        if len(members) < 2:
            return
        self._of_type.setdefault(name, []).append(members)
        if not scoped:
            self._plain.update(zip(members, members[1:] + members[:1]))

    def neighbour(self, source, i):
        """What could stand by mistake for the enumerator at a token, None if it is none."""
        tokens = source.tokens
        if i + 1 < len(tokens) and tokens[i + 1].text in ("::", "("):
            return None
        if tokens[i - 1].text == "::" and i > 1:
            for members in self._of_type.get(tokens[i - 2].text, []):
                if tokens[i].text in members:
                    return _beside(members, tokens[i].text)
            return None
        declared = tokens[i - 1].kind == "name" and tokens[i - 1].text not in ("return", "case")
        if declared or tokens[i - 1].text in (".", "->"):
            return None
        if source.path not in self._used:
            self._used[source.path] = self._used_by(source)
        return self._used[source.path].get(tokens[i].text) or self._plain.get(tokens[i].text)

    def _used_by(self, source):
        """The enumerators that `using enum` lets a file name alone, each with its neighbour."""
        return {member: _beside(members, member)
                for name in _USING.findall(source.code)
                for members in self._of_type.get(name, []) for member in members}


def _beside(members, member):
    return members[(members.index(member) + 1) % len(members)]

