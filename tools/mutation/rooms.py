"""Which rooms there are, how they stand on each other, and which test program sees which file. All
of it is read from the includes."""

import re
from pathlib import Path

_INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"', re.MULTILINE)
_FORM = re.compile(r"frm[A-Z]")


class Includes:
    """The includes of the logic and its tests, file by file; those of forms too if asked."""

    def __init__(self, root, forms=False):
        self._root = Path(root)
        self._of = {}
        self._implements = {}  # header -> sources that define what it declares
        for folder in ("src", "tests"):
            for path in sorted(Path(root, folder).rglob("*")):
                if path.suffix in (".h", ".cpp") and (forms or not _needs_windows(path)):
                    self._take(path)

    def _take(self, path):
        name = path.relative_to(self._root).as_posix()
        found = [self._resolve(path, include)
                 for include in _INCLUDE.findall(path.read_text(encoding="utf-8"))]
        self._of[name] = [include for include in found if include]
        if path.suffix == ".cpp":
            # A source without a header of its own defines what headers beside it declare.
            own = path.with_suffix(".h")
            headers = [own.relative_to(self._root).as_posix()] if own.exists() else [
                include for include in self._of[name]
                if Path(include).parent == Path(name).parent]
            for header in headers:
                self._implements.setdefault(header, []).append(name)

    def _resolve(self, path, include):
        for folder in (path.parent, self._root / "src", self._root / "tests", self._root):
            target = folder / include
            if target.is_file():
                return target.resolve().relative_to(self._root.resolve()).as_posix()
        return None

    def seen_from(self, names):
        """All files that these include, over headers and over what stands behind them."""
        seen, pending = set(), list(names)
        while pending:
            name = pending.pop()
            if name not in seen:
                seen.add(name)
                pending += self._of.get(name, []) + self._implements.get(name, [])
        return seen

    def rooms(self):
        """Rooms from the lowest floor up: the fewer rooms one stands on, the lower it is."""
        on = {}
        for name, includes in self._of.items():
            if name.startswith("src/"):
                room = name.split("/")[1]
                on.setdefault(room, set()).update(
                    other.split("/")[1] for other in includes if other.startswith("src/"))
        def standing_on(room):
            below, pending = set(), [room]
            while pending:
                for other in on.get(pending.pop(), ()):
                    if other not in below:
                        below.add(other)
                        pending.append(other)
            return below
        return sorted(on, key=lambda room: (len(standing_on(room) - {room}), room))


def sources_of_program(root, program):
    """Sources of the test program of a room."""
    room = program.removesuffix("_tests")
    return [path.relative_to(root).as_posix()
            for path in sorted(Path(root, "tests", room).glob("*_test.cpp"))
            if not _needs_windows(path)]


def seen_by_forms(root):
    """Files that a form includes, or what runs the forms."""
    includes = Includes(root, forms=True)
    return includes.seen_from(path.relative_to(root).as_posix()
                              for path in sorted(Path(root, "src").rglob("*.cpp"))
                              if _needs_windows(path))


def _needs_windows(path):
    return bool(_FORM.match(path.name)) or path.parent.name == "qt" or path.name == "main.cpp"


def programs_seeing(root, includes, programs):
    """For each file of src, the test programs that see it."""
    seeing = {}
    for program in programs:
        for name in includes.seen_from(sources_of_program(root, program)):
            seeing.setdefault(name, []).append(program)
    return seeing
