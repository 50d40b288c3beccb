#!/usr/bin/env python3
"""Installs the console where its user may not write, and has it walk there: connected, read, flows,
dialogs that start among the user's documents, a flume of the user's own, an upload that is kept.

    unprivileged_test.py BUILD"""

import os
import pwd
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

PATIENCE = 240  # seconds
NOBODY = pwd.getpwnam("nobody")


def listing(folder):
    """All that lies below a folder, with its size and time."""
    return {path: (path.lstat().st_size, path.lstat().st_mtime_ns) for path in folder.rglob("*")}


def forget_locks():
    """Consoles that were killed have left locks of pseudo-terminals. Whoever they belong to removes them by the next start;
    another user cannot."""
    for lock in Path("/var/lock").glob("LCK..pts_*"):
        owner = lock.read_text(errors="replace").split()
        if os.geteuid() == 0 and owner and not Path("/proc", owner[0]).exists():
            lock.unlink()


class Unprivileged(unittest.TestCase):
    build = None

    def setUp(self):
        self.folder = Path(tempfile.mkdtemp())
        self.addCleanup(self.remove)
        self.folder.chmod(0o755)
        self.prefix = self.folder / "prefix"
        self.home = self.folder / "home"
        subprocess.run(["cmake", "--install", self.build, "--prefix", self.prefix],
                       check=True, stdout=subprocess.DEVNULL)
        plugin = self.build / "guide/generic/liborvia-guide.so"
        (self.folder / "guide/generic").mkdir(parents=True)
        shutil.copy(plugin, self.folder / "guide/generic")
        (self.home / "Documents").mkdir(parents=True)
        (self.home / ".local/share/Orvia").mkdir(parents=True)
        (self.home / ".local/share/Orvia/flumes.lst").write_text(
            '[MILL] "Mill flume" F "mill.tbl"\r\n')
        (self.home / ".local/share/Orvia/mill.tbl").write_text("0.5 1.2\r\n1.0 4.1\r\n")
        self.take_rights()
        forget_locks()

    def take_rights(self):
        if os.geteuid() == 0:
            for path in [self.home, *self.home.rglob("*")]:
                os.chown(path, NOBODY.pw_uid, NOBODY.pw_gid)
        else:
            for path in [self.prefix, *self.prefix.rglob("*")]:
                if path.is_dir() and not path.is_symlink():
                    path.chmod(0o555)

    def remove(self):
        for path in [self.prefix, *self.prefix.rglob("*")]:
            if path.is_dir() and not path.is_symlink():
                path.chmod(0o755)
        shutil.rmtree(self.folder)

    def walk(self, **more):
        known = {name: value for name, value in os.environ.items()
                 if not name.startswith(("XDG_", "ORVIA_", "QT_"))}
        known |= {"HOME": str(self.home), "TMPDIR": str(self.home), "QT_QPA_PLATFORM": "offscreen",
                  "QT_PLUGIN_PATH": str(self.folder / "guide"),
                  "QT_QPA_GENERIC_PLUGINS": "orviaguide", "ASAN_OPTIONS": "detect_leaks=0",
                  "ORVIA_GUIDE_FOLDER": str(self.home / "Documents"),
                  "ORVIA_GUIDE_DEVICE": "Mill flume"}
        who = {}
        if os.geteuid() == 0:
            who = {"user": NOBODY.pw_uid, "group": NOBODY.pw_gid, "extra_groups": []}
        return subprocess.run([self.prefix / "bin/orvia"], env=known | more, cwd=self.home,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                              timeout=PATIENCE, **who)

    def test_the_console_does_its_work_where_its_user_may_not_write(self):
        before = listing(self.prefix)
        walked = self.walk()
        self.assertEqual(walked.returncode, 0, walked.stdout)
        self.assertIn("The console did all of it.", walked.stdout)
        self.assertIn(f"Files go to {self.home}/Documents", walked.stdout)
        self.assertEqual(listing(self.prefix), before, "the program's folder has changed")
        print(walked.stdout, file=sys.stderr)

    def test_a_dialog_that_starts_elsewhere_is_told(self):
        walked = self.walk(ORVIA_GUIDE_FOLDER="/elsewhere")
        self.assertEqual(walked.returncode, 1, walked.stdout)
        self.assertIn("should go to /elsewhere", walked.stdout)


if __name__ == "__main__":
    Unprivileged.build = Path(sys.argv.pop(1)).resolve()
    unittest.main(argv=sys.argv)
