#!/usr/bin/env python3
"""Makes small mistakes in the logic, one at a time, and tells which of them the tests let through.

Each is made in a copy of the tree that has a build of its own (build/mutate), where only what
changed is built and the tests of the rooms that see it are run. docs/testing.md tells more."""

import argparse
import fcntl
import signal
import sys
import threading
from pathlib import Path

sys.dont_write_bytecode = True

from mutation import report
from mutation.bench import Bench, BenchError, Stopped, files_of
from mutation.mutants import all_mutants
from mutation.rooms import Includes, programs_seeing, seen_by_forms, sources_of_program
from mutation.sample import Results, Sample, drawn
from mutation.trial import SURVIVED, Plan, baseline, try_mutant

ROOT = Path(__file__).resolve().parent.parent


def arguments():
    parser = argparse.ArgumentParser(description=__doc__.split("\n", maxsplit=1)[0])
    add = parser.add_argument
    add("--sample", type=int, metavar="N", help="make N mistakes that count, not all")
    add("--seed", type=int, default=1, help="another number draws another sample (1)")
    add("--room", action="append", default=[], help="only in this room of src; may be repeated")
    add("--file", action="append", default=[], help="only in files whose path ends so")
    add("--operator", action="append", default=[], help="only mistakes of this kind")
    add("--only", default="", metavar="ID,...", help="only these mistakes, tried anew")
    add("--again", nargs="?", const="", metavar="FILE",
        help="try anew what survived in earlier runs, or what a list of survivors names")
    add("--list", action="store_true", help="print the mistakes and make none")
    add("--forms", action="store_true", help="let the tests of forms look at the survivors too")
    add("--fresh", action="store_true", help="forget earlier results of what is tried")
    add("--survivors", metavar="FILE", help="where the survivors are listed as the run goes on")
    add("--require", type=float, metavar="SHARE", help="fail if less of a hundred is noticed")
    add("--workers", type=int, default=2, help="copies of the tree to work in at a time (2)")
    add("--folder", type=Path, default=ROOT / "build" / "mutate", help="where all of it is kept")
    return parser.parse_args()


def wanted(options, results, root):
    """The mutants of a tree to choose from, and whether they are tried anew."""
    mutants = [mutant for mutant in all_mutants(root)
               if (not options.room or mutant.room in options.room) and
               (not options.file or mutant.path.endswith(tuple(options.file))) and
               (not options.operator or mutant.operator in options.operator)]
    ids = set(options.only.split(",")) if options.only else None
    if options.again is not None:
        ids = report.ids_in(Path(options.again).read_text(encoding="utf-8")) if options.again \
            else results.survivors()
    if ids is None:
        return mutants, options.fresh
    return [mutant for mutant in mutants if mutant.id in ids], True


class Run:
    def __init__(self, options):
        self.options = options
        self.folder = options.folder.resolve()
        self.trouble = []
        self.stopped = False
        self._printing = threading.Lock()
        # Whoever goes on writing code meanwhile does not disturb a run.
        self._files = files_of(ROOT)
        self.benches = [self._bench(f"worker{number}") for number in range(options.workers)]
        root = self.benches[0].tree
        self.includes = Includes(root)
        self.rooms = self.includes.rooms()
        results = Results(self.folder / "results.jsonl")
        mutants, anew = wanted(options, results, root)
        self.size = min(options.sample or len(mutants), len(mutants))
        self.sample = Sample(drawn(mutants, options.seed), results, self.size, anew)

    def survivors_file(self):
        return Path(self.options.survivors or self.folder / "survivors.txt")

    def _bench(self, name, forms=False):
        bench = Bench(self.folder / name, self.options.workers, forms)
        bench.copy(self._files)
        return bench

    def _prepare(self, bench):
        self.say(f"building {bench.tree}")
        bench.prepare()
        bench.jobs = 1

    def try_all(self):
        for bench in self.benches:
            self._prepare(bench)
        first = self.benches[0]
        programs = [program for program in first.programs()
                    if sources_of_program(first.tree, program)]
        seeing = programs_seeing(first.tree, self.includes, programs)
        used = sorted({program for seen in seeing.values() for program in seen})
        self.say("running the tests without a mistake")
        plan = Plan(seeing, baseline(first, used, self.folder / "baseline.json"),
                    seen_by_forms(first.tree))
        threads = [threading.Thread(target=self._work, args=(bench, plan))
                   for bench in self.benches]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        self._keep_survivors()

    def _work(self, bench, plan):
        try:
            while mutant := self.sample.take():
                outcome, by, seconds = try_mutant(bench, plan, mutant)
                self.sample.record(mutant, outcome, by, seconds)
                self._tell(mutant)
        except Stopped:
            pass
        except Exception as trouble:  # whatever it was, the other copies need not go on
            self.trouble.append(trouble)
            self.stop()

    def _tell(self, mutant):
        entry = next(entry for other, entry in self.sample.made if other is mutant)
        with self._printing:
            print(report.progress_line(self.sample.counted(), self.size, mutant, entry),
                  flush=True)
            self._keep_survivors()

    def _keep_survivors(self):
        text = report.survivors_text(self.sample.survivors(), self.rooms)
        self.survivors_file().write_text(text, encoding="utf-8")

    def ask_forms(self):
        """Lets the tests that need windows look at what survived."""
        survivors = self.sample.survivors()
        if not survivors:
            return
        bench = self._bench("forms", forms=True)
        self.benches.append(bench)
        self._prepare(bench)
        bench.jobs = self.options.workers
        programs = [program for program in bench.programs()
                    if program in ("forms_tests", "platform_tests")]
        self.say("running the tests of forms without a mistake")
        times = baseline(bench, programs, self.folder / "baseline_forms.json")
        plan = Plan({mutant.path: programs for mutant in survivors}, times)
        for mutant in survivors:
            outcome, by, seconds = try_mutant(bench, plan, mutant)
            if outcome != SURVIVED:
                self.sample.replace(mutant, outcome, by, seconds)
            self.say(f"forms, {outcome} {by}: {mutant.path}:{mutant.line} {mutant.id}")
        self._keep_survivors()

    def say(self, text):
        with self._printing:
            print(text, flush=True)

    def stop(self):
        self.stopped = True
        self.sample.abandon()
        for bench in self.benches:
            bench.stop.set()

    def close(self):
        print(f"\n{report.table(self.sample.made, self.rooms)}\n")
        survivors = self.sample.survivors()
        print(report.survivors_text(survivors, self.rooms))
        print(f"{len(self.sample.made)} tried, {self.sample.reused} of them in earlier runs; "
              f"survivors are listed in {self.survivors_file()}")


def main():
    options = arguments()
    options.folder.mkdir(parents=True, exist_ok=True)
    if options.list:
        return list_all(options)
    lock = open(options.folder / "lock", "w", encoding="utf-8")
    try:
        fcntl.flock(lock, fcntl.LOCK_EX | fcntl.LOCK_NB)
    except BlockingIOError:
        print(f"another run works in {options.folder}", file=sys.stderr)
        return 2
    return run(options, Run(options))


def list_all(options):
    mutants, _ = wanted(options, Results(options.folder / "results.jsonl"), ROOT)
    if options.sample:
        mutants = drawn(mutants, options.seed)[:options.sample]
    for entry in report.listing(mutants):
        print(entry)
    print(f"{len(mutants)} mutants")
    return 0


def run(options, task):
    for name in (signal.SIGINT, signal.SIGTERM):
        signal.signal(name, lambda *_: task.stop())
    try:
        task.try_all()
        if options.forms and not task.stopped:
            task.ask_forms()
    except Stopped:
        pass
    except BenchError as trouble:
        task.trouble.append(trouble)
    task.close()
    if task.trouble:
        print(f"broken off: {task.trouble[0]}", file=sys.stderr)
        return 2
    if task.stopped:
        return 130
    if options.require is not None and report.share(task.sample.made) < options.require:
        print(f"less than {options.require} % noticed", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
