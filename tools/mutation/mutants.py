"""All mistakes that can be made in the logic, each with a name that stays the same while the file
around it changes."""

import hashlib
import re
from dataclasses import dataclass
from pathlib import Path

from .constants import Enumerators
from .operators import edits_of
from .source import Source

_FORM = re.compile(r"frm[A-Z]")


@dataclass(frozen=True)
class Mutant:
    id: str
    path: str  # from the root of the tree
    room: str
    operator: str
    line: int
    old: str  # the lines it touches, as they stand
    new: str  # and with the mistake
    start: int
    end: int
    replacement: str
    file_hash: str  # of the file as it stands

    def applied(self, code):
        return code[:self.start] + self.replacement + code[self.end:]


def logic_files(root):
    """Paths of the logic from the root of the tree: every room's snake_case files."""
    found = []
    for path in sorted(Path(root, "src").glob("*/*")):
        if path.suffix in (".h", ".cpp") and not _FORM.match(path.name) and \
                path.name != "main.cpp":
            found.append(path.relative_to(root).as_posix())
    return found


def all_mutants(root):
    """Every mutant of the tree, file by file."""
    sources = [Source(path, Path(root, path).read_text(encoding="utf-8"))
               for path in logic_files(root)]
    enumerators = Enumerators(sources)
    return [mutant for source in sources for mutant in mutants_of(source, enumerators)]


def mutants_of(source, enumerators):
    file_hash = _hash(source.code)
    seen, counts = set(), {}
    for edit in edits_of(source, enumerators):
        where = (edit.start, edit.end, edit.new)
        if where in seen or source.code[edit.start:edit.end] == edit.new:
            continue
        seen.add(where)
        old, new = _lines(source.code, edit)
        name = (source.path, edit.operator, old.strip(), new.strip())
        counts[name] = counts.get(name, 0) + 1
        yield Mutant(_hash("\0".join((*name, str(counts[name]))))[:10], source.path,
                     source.path.split("/")[1], edit.operator, source.line_of(edit.start), old,
                     new, edit.start, edit.end, edit.new, file_hash)


def _lines(code, edit):
    first = code.rfind("\n", 0, edit.start) + 1
    last = code.find("\n", edit.end)
    last = len(code) if last < 0 else last
    return code[first:last], code[first:edit.start] + edit.new + code[edit.end:last]


def _hash(text):
    return hashlib.sha1(text.encode("utf-8")).hexdigest()
