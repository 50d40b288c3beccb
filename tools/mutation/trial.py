"""One mistake, from the edit to the verdict: which programs are built and run, in which order."""

import hashlib
import json
import math
import time
from pathlib import Path

from .bench import LEAST_LIMIT, SLOW_TEST, TIMES_BASELINE

NOTICED = "noticed"
SURVIVED = "survived"
STILLBORN = "stillborn"  # does not compile
EQUAL = "equal"  # compiles to the same code


class Plan:
    """What to run for a file: its own room's tests first, then of the others the quick ones first;
    and of each program the slow tests after all quick ones."""

    def __init__(self, seeing, measured, of_forms=frozenset()):
        self._seeing = seeing
        self._baseline = measured
        self._of_forms = of_forms  # files that forms see

    def programs_for(self, mutant):
        own = mutant.room + "_tests"
        return sorted(self._seeing.get(mutant.path, []),
                      key=lambda program: (program != own, self._quick_seconds(program), program))

    def without_trace(self, mutant):
        """The verdict on a mistake in a header that changes nothing built: forms were not."""
        return (SURVIVED, "only a form could show it") if mutant.path in self._of_forms else (EQUAL, "")

    def phases(self, program):
        """Filters for the quick tests and for the slow ones, which may be none."""
        slow = self._slow(program)
        return ("-" + ":".join(slow), ":".join(slow)) if slow else (None, "")

    def limit(self, program):
        return max(LEAST_LIMIT, math.ceil(TIMES_BASELINE * self._baseline[program]["seconds"]))

    def _slow(self, program):
        tests = self._baseline[program]["tests"]
        return sorted(name for name, seconds in tests.items() if seconds >= SLOW_TEST)

    def _quick_seconds(self, program):
        tests = self._baseline[program]["tests"].values()
        return sum(seconds for seconds in tests if seconds < SLOW_TEST)


def baseline(bench, programs, kept_in):
    """How long each program and each test takes without a mistake. Kept for the same tree."""
    state = hashlib.sha1()
    for path in sorted(bench.tree.rglob("*")):
        inside = path.relative_to(bench.tree)
        if inside.parts[0] != "build" and path.is_file():
            state.update(inside.as_posix().encode() + b"\0" + path.read_bytes())
    kept = Path(kept_in)
    if kept.exists():
        known = json.loads(kept.read_text())
        if known["tree"] == state.hexdigest() and set(programs) <= set(known["programs"]):
            return known["programs"]
    measured = {program: bench.measure(program) for program in programs}
    kept.write_text(json.dumps({"tree": state.hexdigest(), "programs": measured}))
    return measured


def try_mutant(bench, plan, mutant):
    """The verdict, what noticed the mistake, and the seconds it took."""
    begin = time.monotonic()
    original = (bench.tree / mutant.path).read_text(encoding="utf-8")
    mutated = mutant.applied(original)
    bench.write(mutant.path, mutated)
    try:
        outcome, by = _judge(bench, plan, mutant)
        if outcome == SURVIVED and mutant.path.endswith(".cpp") and \
                bench.same_when_optimized(mutant.path, mutated, original):
            outcome = EQUAL
    finally:
        bench.write(mutant.path, original)
    return outcome, by, time.monotonic() - begin


def _judge(bench, plan, mutant):
    programs = plan.programs_for(mutant)
    if not programs:
        return SURVIVED, "no test program sees it"
    since = time.time_ns()
    first, rest = programs[:1], programs[1:]
    if not bench.build(first):
        return STILLBORN, ""
    changed = bench.changed_objects(since)
    if not changed and mutant.path.endswith(".cpp"):
        return EQUAL, ""  # its one object is the same
    by = _run(bench, plan, first, 0) if changed else None
    if by:
        return NOTICED, by
    if rest and not bench.build(rest):
        return STILLBORN, ""
    if not changed and not bench.changed_objects(since):
        return plan.without_trace(mutant)
    by = _run(bench, plan, rest, 0) or _run(bench, plan, programs, 1)
    return (NOTICED, by) if by else (SURVIVED, "")


def _run(bench, plan, programs, phase):
    """Runs a phase of some programs until one fails; tells what failed."""
    for program in programs:
        only = plan.phases(program)[phase]
        if only == "":
            continue
        done = bench.run_tests(program, only, plan.limit(program))
        if done.status != 0:
            return f"{program} {done.reason()}"
    return None
