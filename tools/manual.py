#!/usr/bin/env python3
"""Makes the help pages of docs/manual, and says what is wrong with them.

    tools/manual.py check                             dead links, windows without a page, captions that no window has
    tools/manual.py build OUT                         the pages as HTML, without pictures
    tools/manual.py build OUT --pictures FOLDER       the same with the pictures that the tour left in FOLDER
    tools/manual.py build OUT --chm [--pictures ...]  and the project beside them from which chmcmd makes Orvia.chm

The pictures are made by `orvia-tour --screenshots FOLDER`, which `./demo.sh --tour` runs."""

import argparse
import sys
from pathlib import Path

sys.dont_write_bytecode = True

from handbook import checks, chm, html, pages as manual

ROOT = Path(__file__).resolve().parent.parent


def build(arguments):
    pages = manual.read_manual(arguments.root / "docs/manual")
    written = html.build(pages, arguments.out, arguments.pictures)
    if arguments.chm:
        chm.write(pages, arguments.out, written)
    return 0


def check(arguments):
    wrong = checks.check(arguments.root)
    for line in wrong:
        print(line)
    return 1 if wrong else 0


def main(words):
    parser = argparse.ArgumentParser(prog="tools/manual.py")
    parser.add_argument("--root", type=Path, default=ROOT, help=argparse.SUPPRESS)
    commands = parser.add_subparsers(required=True)
    checking = commands.add_parser("check")
    checking.set_defaults(run=check)
    building = commands.add_parser("build")
    building.add_argument("out", type=Path)
    building.add_argument("--pictures", type=Path)
    building.add_argument("--chm", action="store_true")
    building.set_defaults(run=build)
    arguments = parser.parse_args(words)
    return arguments.run(arguments)


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
