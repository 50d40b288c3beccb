"""Which mistakes are made, in which order, and what is known of them from earlier runs."""

import hashlib
import json
import threading
from pathlib import Path

from .trial import NOTICED, SURVIVED


def drawn(mutants, seed):
    """All mutants in the order in which they are drawn. Each room and operator is spread evenly
    over the whole order, so that any beginning of it holds its share of each."""
    strata = {}
    for mutant in mutants:
        strata.setdefault((mutant.room, mutant.operator), []).append(mutant)
    placed = []
    for stratum, members in strata.items():
        members.sort(key=lambda mutant: _chance(seed, mutant.id))
        shift = _chance(seed, *stratum)
        placed += [((i + shift) / len(members), mutant.id, mutant)
                   for i, mutant in enumerate(members)]
    return [mutant for _, _, mutant in sorted(placed, key=lambda place: place[:2])]


def _chance(seed, *names):
    digest = hashlib.sha256("\0".join((str(seed), *names)).encode()).digest()
    return int.from_bytes(digest[:8], "big") / 2 ** 64


class Results:
    """What became of each mutant, kept line by line so that a run that ends early loses nothing."""

    def __init__(self, path):
        self._path = Path(path)
        self._known = {}
        if self._path.exists():
            for line in self._path.read_text(encoding="utf-8").splitlines():
                try:
                    entry = json.loads(line)
                except ValueError:
                    continue  # cut off by the end of an earlier run
                self._known[entry["id"], entry["file_hash"]] = entry

    def of(self, mutant):
        return self._known.get((mutant.id, mutant.file_hash))

    def survivors(self):
        """Ids of those that were not noticed when last tried."""
        last = {entry["id"]: entry["outcome"] for entry in self._known.values()}
        return {name for name, outcome in last.items() if outcome == SURVIVED}

    def add(self, mutant, outcome, by, seconds):
        entry = {"id": mutant.id, "file_hash": mutant.file_hash, "outcome": outcome, "by": by,
                 "seconds": round(seconds, 2), "file": mutant.path, "line": mutant.line,
                 "operator": mutant.operator, "old": mutant.old, "new": mutant.new}
        self._known.pop((mutant.id, mutant.file_hash), None)
        self._known[mutant.id, mutant.file_hash] = entry
        with open(self._path, "a", encoding="utf-8") as kept:
            kept.write(json.dumps(entry) + "\n")
        return entry


class Sample:
    """Hands mutants out in their order until as many count as were asked for. One that does not
    compile, or compiles to the same code, does not count, and the next in the order is drawn."""

    def __init__(self, order, results, size=None, anew=False):
        self._order = iter(order)
        self._results = results
        self._size = len(order) if size is None else size
        self._anew = anew
        self._running = 0
        self._changed = threading.Condition()
        self.made = []  # pairs of a mutant and its result
        self.reused = 0

    def counted(self):
        return sum(counts(entry) for _, entry in self.made)

    def take(self):
        """The next mutant to try, None when there is no more."""
        with self._changed:
            while True:
                counted = self.counted()
                if counted >= self._size:
                    return None
                if counted + self._running >= self._size:
                    self._changed.wait()
                    continue
                mutant = next(self._order, None)
                if mutant is None:
                    return None
                known = None if self._anew else self._results.of(mutant)
                if known is None:
                    self._running += 1
                    return mutant
                self.made.append((mutant, known))
                self.reused += 1

    def record(self, mutant, outcome, by, seconds):
        with self._changed:
            entry = self._results.add(mutant, outcome, by, seconds)
            self.made.append((mutant, entry))
            self._running -= 1
            self._changed.notify_all()

    def replace(self, mutant, outcome, by, seconds):
        """Another verdict on a mutant that was tried already."""
        with self._changed:
            entry = self._results.add(mutant, outcome, by, seconds)
            self.made = [(other, entry if other is mutant else known)
                         for other, known in self.made]

    def survivors(self):
        with self._changed:
            return [mutant for mutant, entry in self.made if entry["outcome"] == SURVIVED]

    def abandon(self):
        """Lets nobody wait for a mutant that will not come back."""
        with self._changed:
            self._size = 0
            self._changed.notify_all()


def counts(entry):
    return entry["outcome"] in (NOTICED, SURVIVED)
