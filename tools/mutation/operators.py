"""The kinds of mistakes. Each takes a source and tells edits: what stands where, and what would
stand there by mistake."""

from .constants import changed_char, changed_number, changed_text
from .source import BLOCK, ENUM, VALUES, is_subscript

_TURNED = {"==": "!=", "!=": "==", "<": ">", ">": "<", "<=": ">=", ">=": "<="}
_MOVED = {"<": "<=", "<=": "<", ">": ">=", ">=": ">"}
_LOGIC = {"&&": "||", "||": "&&"}
_ARITHMETIC = {"+": "-", "-": "+", "*": "/", "/": "*", "%": "/", "&": "|", "|": "&", "^": "&",
               "<<": ">>", ">>": "<<", "+=": "-=", "-=": "+=", "*=": "/=", "/=": "*=",
               "|=": "&=", "&=": "|=", "^=": "|="}
_STEPS = {"++": "--", "--": "++"}
_OPPOSITE = {"true": "false", "false": "true", "True": "False", "False": "True"}

# Words that no statement of a call or an assignment begins with.
_OTHER_STATEMENTS = {
    "return", "break", "continue", "throw", "goto", "using", "typedef", "static_assert", "const",
    "constexpr", "static", "auto", "struct", "class", "enum", "union", "if", "else", "for",
    "while", "do", "switch", "case", "default", "try", "catch", "template", "namespace", "friend",
    "public", "private", "protected", "inline", "thread_local"}
_WITH_BODY = {"if", "else", "for", "while", "do", "switch", "try", "catch"}
_ASSIGNMENTS = {"=", "+=", "-=", "*=", "/=", "%=", "&=", "|=", "^=", "<<=", ">>="}
_ORDERLESS = {"min", "max", "minmax"}
_NO_CALLEES = {"if", "for", "while", "switch", "return", "catch", "sizeof", "alignof", "decltype",
               "noexcept", "static_assert", "operator", "template", "requires", "explicit"}
_TYPE_WORDS = {"const", "constexpr", "auto", "int", "bool", "double", "float", "char", "unsigned",
               "void", "typename", "class"}


class Edit:
    """Replaces the code from `start` to `end`."""

    def __init__(self, operator, start, end, new):
        self.operator, self.start, self.end, self.new = operator, start, end, new


def edits_of(source, enumerators):
    """All edits of a file in the order of its text; `enumerators` tells the neighbour of one."""
    mutator = _Mutator(source, enumerators)
    edits = [edit for operator in OPERATORS for edit in operator(mutator)]
    return sorted(edits, key=lambda edit: (edit.start, edit.end, edit.operator, edit.new))


class _Mutator:
    def __init__(self, source, enumerators):
        self.source = source
        self.tokens = source.tokens
        self.enumerators = enumerators
        self.excluded = _excluded(source)
        self.silent = _texts_nobody_reads(source)

    def operators(self, known):
        """Binary operators among `known`, told by the blanks around them."""
        for i, token in enumerate(self.tokens):
            if token.kind == "sign" and token.text in known and not token.in_template and \
                    i not in self.excluded and self.source.spaced(token) and \
                    self.tokens[i - 1].text != "operator":
                yield i, token

    def edit(self, operator, first, last, new):
        return Edit(operator, self.tokens[first].start, self.tokens[last].end, new)


def _excluded(source):
    """Tokens that are no rule of their own: what the compiler checks, other names for types,
    attributes, the members of an enumeration, the bounds of an array that is declared."""
    tokens, found = source.tokens, set()
    for i, token in enumerate(tokens):
        last = None
        if token.text in ("static_assert", "noexcept", "alignas") and \
                tokens[i + 1].text == "(":
            last = source.partner[i + 1]
        elif token.text == "using":
            last = next(j for j in range(i, len(tokens)) if tokens[j].text == ";")
        elif token.text == "[" and i in source.partner and _declares_array(source, i):
            last = source.partner[i]
        elif token.text == "{" and source.holds.get(i) == ENUM:
            last = source.partner[i]
        if last is not None:
            found.update(range(i, last + 1))
    return found


def _declares_array(source, opener):
    if source.tokens[opener + 1].text == "[" or not is_subscript(source, opener):
        return source.tokens[opener + 1].text == "["  # an attribute
    before = source.tokens[opener - 2] if opener > 1 else None
    return before is not None and before.kind == "name" and \
        before.text not in ("return", "case", "else", "throw", "not", "and", "or")


def _texts_nobody_reads(source):
    """Texts of faults, which no screen shows, and those that only go to a log."""
    tokens, found = source.tokens, set()
    for i, token in enumerate(tokens):
        if token.text in ("Fault", "AppendLog") and tokens[i + 1].text in ("(", "{"):
            found.update(range(i + 1, source.partner[i + 1]))
    return found


def comparison(m):
    for i, token in m.operators(_TURNED):
        yield m.edit("comparison", i, i, _TURNED[token.text])


def bound(m):
    for i, token in m.operators(_MOVED):
        yield m.edit("bound", i, i, _MOVED[token.text])


def logic(m):
    for i, token in m.operators(_LOGIC):
        yield m.edit("logic", i, i, _LOGIC[token.text])


def arithmetic(m):
    for i, token in m.operators(_ARITHMETIC):
        beside = (m.tokens[i - 1].kind, m.tokens[i + 1].kind)
        if "text" not in beside and "char" not in beside:
            yield m.edit("arithmetic", i, i, _ARITHMETIC[token.text])
    heads = _heads_of_loops(m.source)
    for i, token in enumerate(m.tokens):
        if token.text in _STEPS and i not in heads and m.tokens[i - 1].text != "operator":
            yield m.edit("arithmetic", i, i, _STEPS[token.text])


def _heads_of_loops(source):
    """What stands in the brackets of `for`: a loop that steps back never ends, and says nothing."""
    found = set()
    for i, token in enumerate(source.tokens):
        if token.text == "for":
            found.update(range(i, source.partner[i + 1]))
    return found


def constant(m):
    for i, token in enumerate(m.tokens):
        if token.in_template or i in m.excluded:
            continue
        for new in _changed_constant(m, i, token):
            yield m.edit("constant", i, i, new)


def _changed_constant(m, i, token):
    if token.kind == "number":
        if _is_whole_index(m, i) or _is_pure(m, i):
            return []
        return changed_number(token.text)
    if token.kind == "char":
        return changed_char(token.text)
    if token.kind != "name":
        return []
    if token.text in _OPPOSITE:
        return [_OPPOSITE[token.text]]
    neighbour = m.enumerators.neighbour(m.source, i)
    return [neighbour] if neighbour else []


def _is_whole_index(m, i):
    return m.tokens[i - 1].text == "[" and m.tokens[i + 1].text == "]"


def _is_pure(m, i):
    """`= 0` behind a member function that has no body."""
    return m.tokens[i].text == "0" and m.tokens[i - 1].text == "=" and \
        m.tokens[i - 2].text in (")", "const", "noexcept", "override")


def text(m):
    for i, token in enumerate(m.tokens):
        if token.kind == "text" and i not in m.excluded and i not in m.silent:
            new = changed_text(token.text)
            if new:
                yield m.edit("text", i, i, new)


def index(m):
    for i, token in enumerate(m.tokens):
        if token.text != "[" or token.kind != "sign" or i in m.excluded or \
                i not in m.source.partner or not is_subscript(m.source, i):
            continue
        first, last = i + 1, m.source.partner[i] - 1
        if first > last or m.tokens[first].kind == "text":
            continue
        for new in _other_indices(m, first, last):
            yield m.edit("index", first, last, new)


def _other_indices(m, first, last):
    old = m.source.text_between(first, last)
    if first == last and m.tokens[first].kind == "number":
        return [changed_number(old)[0]] + (["0"] if old != "0" else [])
    if m.tokens[first].text in ("++", "--") or m.tokens[last].text in ("++", "--"):
        return []
    joined = any(m.tokens[i].text in ("?", "&", "|", "^", "<<", ">>")
                 for i in m.source.top_level(first, last))
    return [f"({old}) + 1" if joined else f"{old} + 1", "0"]


def negate(m):
    for i, token in enumerate(m.tokens):
        if token.text in ("if", "while", "for") and token.kind == "name" and \
                m.tokens[i + 1].text == "(":
            yield from _negated_condition(m, i)
        elif token.text == "?":
            yield from _exchanged_branches(m, i)
        elif token.text == "!" and not _begins_plain_condition(m, i):
            yield m.edit("negate", i, i, "")


def _negated_condition(m, i):
    parts = m.source.split(i + 2, m.source.partner[i + 1] - 1, ";")
    if m.tokens[i].text == "for" and len(parts) != 3:
        return
    first, last = parts[1] if m.tokens[i].text == "for" else parts[-1]
    if first > last:
        return
    signs = [m.tokens[j].text for j in m.source.top_level(first, last)
             if not m.tokens[j].in_template]
    plain = "&&" not in signs and "||" not in signs
    if "=" in signs or (plain and ("==" in signs or "!=" in signs)):
        return  # declares what it looks at, or is a comparison that turns by itself
    if plain and m.tokens[first].text == "!":
        yield m.edit("negate", first, first, "")
    else:
        yield m.edit("negate", first, last, f"!({m.source.text_between(first, last)})")


def _begins_plain_condition(m, i):
    """Whether dropping this `!` is what negating the condition as a whole does."""
    if m.tokens[i - 1].text not in ("(", ";"):
        return False
    opener = i - 1
    while opener >= 0 and not (m.tokens[opener].text == "(" and
                               m.source.partner.get(opener, -1) > i):
        opener -= 1
    if opener < 1 or m.tokens[opener - 1].text not in ("if", "while", "for"):
        return False
    signs = {m.tokens[j].text for j in m.source.top_level(i, m.source.partner[opener] - 1)}
    return not signs & {"&&", "||", "==", "!="}


def _exchanged_branches(m, i):
    depth, colon, end = 0, None, None
    for j in m.source.top_level(i + 1, len(m.tokens) - 1):
        sign = m.tokens[j].text
        if colon is None:
            depth += 1 if sign == "?" else 0
            if sign == ":":
                colon, depth = (j, 0) if depth == 0 else (None, depth - 1)
        elif sign in (",", ";", ")", "}", "]") or (sign == ":" and depth == 0):
            end = j - 1
            break
        elif sign in ("?", ":"):
            depth += 1 if sign == "?" else -1
    if colon is None or end is None:
        return
    one = m.source.text_between(i + 1, colon - 1)
    two = m.source.text_between(colon + 1, end)
    if one != two:
        one, two = (f"({part})" if "?" in part else part for part in (one, two))
        yield m.edit("negate", i + 1, end, f"{two} : {one}")


def swap(m):
    for i, token in enumerate(m.tokens):
        if token.text not in ("(", "{") or token.kind != "sign" or token.in_template or \
                i in m.excluded or i == 0 or i not in m.source.partner or not _is_call(m, i):
            continue
        parts = m.source.split(i + 1, m.source.partner[i] - 1, ",")
        if any(_is_parameter(m, first, last) for first, last in parts):
            continue
        for one, two in zip(parts, parts[1:]):
            old = [m.source.text_between(*part) for part in (one, two)]
            if old[0] != old[1]:
                between = m.source.code[m.tokens[one[1]].end:m.tokens[two[0]].start]
                yield m.edit("swap", one[0], two[1], old[1] + between + old[0])


def _is_call(m, opener):
    before = m.tokens[opener - 1]
    if m.tokens[opener].text == "{" and m.source.holds.get(opener) != VALUES:
        return False
    named = before.kind == "name" and before.text not in _NO_CALLEES | _ORDERLESS
    return named or (before.text in (">", ">>") and before.in_template) or before.text == "]"


def _is_parameter(m, first, last):
    """Whether this is a parameter that is declared, a member set by name, or nothing at all."""
    if first > last or m.tokens[first].text in (".", "{") or m.tokens[last].text in ("&", "*"):
        return True
    if m.tokens[first].text in _TYPE_WORDS:
        return True
    inside = list(m.source.top_level(first, last))
    for one, two in zip(inside, inside[1:]):
        a, b = m.tokens[one], m.tokens[two]
        if b.kind == "name" and two == one + 1 and not b.in_template and \
                (a.kind == "name" or (a.text in ("&", "*", "&&") and not m.source.spaced(a) and
                                      not m.source.code[a.start - 1].isspace()
                                      and m.tokens[one - 1].text not in ("(", ",", "=")
                                      and one > first)):
            return True
    return False


def drop(m):
    for brace, kind in m.source.holds.items():
        if kind == BLOCK and brace in m.source.partner:
            for first, last in _statements(m, brace):
                if _only_acts(m, first, last) or _guards(m, first, last, brace):
                    yield Edit("drop", m.tokens[first].start, m.tokens[last].start, "")


def _statements(m, brace):
    """Ranges of the statements right in a block that end with a semicolon, that included."""
    begin, i, end = brace + 1, brace + 1, m.source.partner[brace]
    while i < end:
        token = m.tokens[i]
        if token.text in ("(", "[", "{") and i in m.source.partner:
            is_body = token.text == "{" and (i == begin or m.tokens[begin].text in _WITH_BODY)
            i = m.source.partner[i]
            if is_body:
                begin = i + 1
        elif token.text == ";":
            if i > begin:
                yield begin, i
            begin = i + 1
        elif token.text == ":" and m.tokens[begin].text in ("case", "default"):
            begin = i + 1
        i += 1


def _only_acts(m, first, last):
    """Whether a statement is a call or an assignment, and declares nothing."""
    head = m.tokens[first]
    if head.text in _OTHER_STATEMENTS or _names_declared(m, first, last) is not None:
        return False
    inside = list(m.source.top_level(first, last - 1))
    texts = {m.tokens[i].text for i in inside}
    if any(m.tokens[i].text in ("reserve", "shrink_to_fit") for i in inside):
        return False  # gives room and changes nothing
    return bool(texts & (_ASSIGNMENTS | {"(", "++", "--"}))


def _names_declared(m, first, last):
    """The token that a declaration `Type name...` names, or None if the statement is none."""
    i = first
    while i < last:
        if m.tokens[i].text in ("const", "constexpr", "static", "unsigned"):
            i += 1
            continue
        if m.tokens[i].text == "::":
            i += 1
        if m.tokens[i].kind != "name":
            return None
        i += 1
        while i < last and m.tokens[i].in_template:
            i += 1
        if m.tokens[i].text == "::":
            continue
        break
    while i < last and m.tokens[i].text in ("*", "&", "const"):
        if m.source.spaced(m.tokens[i]):
            return None
        i += 1
    return i if i > first and i < last and m.tokens[i].kind == "name" else None


def _guards(m, first, last, brace):
    """Whether a statement makes an object for what it does from here to the end of the block."""
    name = _names_declared(m, first, last)
    if name is None or m.tokens[first].text in _OTHER_STATEMENTS - {"const"} or \
            m.tokens[name + 1].text not in ("(", "{") or \
            m.source.partner[name + 1] != last - 1:
        return False
    rest = range(last, m.source.partner[brace])
    return all(m.tokens[i].text != m.tokens[name].text for i in rest)


OPERATORS = (comparison, bound, logic, arithmetic, constant, text, index, negate, swap, drop)
