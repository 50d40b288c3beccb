#!/usr/bin/env python3
"""The program's version. It stands in one place, the project's line in CMakeLists.txt; what cannot be made from that has to
agree with it.

    tools/version.py            prints it
    tools/version.py check      says who tells another one, and fails if anybody does"""

import re
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent

# Who tells the version too, and how.
TOLD = {
    "debian/changelog": r"\Aorvia \(([^)]+)\)",
    "packaging/desktop/org.example.orvia.metainfo.xml": r'<release version="([^"]+)"',
    "packaging/orvia.manifest": r'<assemblyIdentity [^>]*version="([^"]+)\.0"',
}


def found(root, path, pattern):
    match = re.search(pattern, (root / path).read_text(encoding="utf-8"))
    return match.group(1) if match else "nothing"


def version(root):
    return found(root, "CMakeLists.txt", r"\bproject\(\w+ VERSION ([0-9.]+)")


def disagreements(root):
    right = version(root)
    return [f"{path} tells {told}, and not {right}"
            for path, pattern in TOLD.items() if (told := found(root, path, pattern)) != right]


def main(words):
    if words not in ([], ["check"]):
        print(__doc__, file=sys.stderr)
        return 2
    if not words:
        print(version(ROOT))
        return 0
    wrong = disagreements(ROOT)
    for line in wrong:
        print(line)
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
