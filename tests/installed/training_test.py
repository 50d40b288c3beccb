#!/usr/bin/env python3
"""Tries packaging/orvia-training with stand-ins for console and simulator: what the console is given,
what is touched, what is left."""

import os
import signal
import subprocess
import sys
import tempfile
import time
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent.parent
TRAINING = ROOT / "packaging/orvia-training"

SIMULATOR = """#!/bin/sh
echo "$$" >"$TOLD/simulator"
echo "$@" >"$TOLD/arguments"
[ -z "$FAILS" ] || exit 3
ln -s /dev/null "$3"
echo "ready: $3"
echo "an exchange"
trap 'exit 0' TERM
while :; do sleep 0.05; done
"""
CONSOLE = """#!/bin/sh
echo "$XDG_CONFIG_HOME" >"$TOLD/config"
cp "$XDG_CONFIG_HOME/Orvia/Orvia.conf" "$TOLD/Orvia.conf"
readlink "$XDG_CONFIG_HOME/Orvia/ports/COM1" >"$TOLD/port"
ls -A "$XDG_CONFIG_HOME" >"$TOLD/configured"
ls -A "$XDG_CONFIG_HOME/Orvia" >"$TOLD/own"
ls -A "$XDG_DATA_HOME" >"$TOLD/data"
cat "$XDG_CONFIG_HOME/theme" >"$TOLD/theme"
book=$(sed -n 's/^AddressBook=//p' "$TOLD/Orvia.conf")
cp "$book" "$TOLD/book"
echo changed >>"$book"
[ -z "$STAYS" ] || exec sleep 30
exit 7
"""


class Training(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        for name, text in (("orvia-sim", SIMULATOR), ("orvia", CONSOLE)):
            self.write(f"programs/{name}", text).chmod(0o755)
        self.write("site/site.net", "[network]\n")
        self.write("site/site.obk", '"Tank", 10, 00A096100001\n').chmod(0o444)
        self.write("home/.config/theme", "dark")
        self.write("home/.config/Orvia/Orvia.conf", "of a true site")
        self.write("home/.local/share/Orvia/archive.sqlite", "true records")
        self.write("home/.local/share/fonts/one", "")
        for name in ("told", "temporary"):
            (self.folder / name).mkdir()

    def write(self, name, text):
        path = self.folder / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text)
        return path

    def started(self, *words, **environment):
        known = {name: value for name, value in os.environ.items()
                 if not name.startswith("XDG_")}
        known |= {"HOME": f"{self.folder}/home", "TMPDIR": f"{self.folder}/temporary",
                  "TOLD": f"{self.folder}/told", "ORVIA_PROGRAMS": f"{self.folder}/programs",
                  "ORVIA_PRACTICE": f"{self.folder}/site", "FAILS": "", "STAYS": ""}
        return subprocess.Popen([TRAINING, *words], env=known | environment,
                                stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)

    def run_to_its_end(self, *words, **environment):
        process = self.started(*words, **environment)
        said, complained = process.communicate(timeout=30)
        return process.returncode, said, complained

    def told(self, name):
        return (self.folder / "told" / name).read_text()

    def assert_nothing_left(self):
        self.assertEqual(list((self.folder / "temporary").iterdir()), [])
        number = int(self.told("simulator"))
        for _ in range(100):
            if not Path(f"/proc/{number}").exists():
                return
            time.sleep(0.05)
        self.fail("the simulator still runs")

    def test_the_console_finds_the_site(self):
        status, said, _ = self.run_to_its_end()
        self.assertEqual(status, 7, "the console's status")
        self.assertEqual(said, "")
        self.assertIn("Port=COM1\nBaud=38400\n", self.told("Orvia.conf"))
        self.assertEqual(self.told("port"), "/dev/null\n")
        self.assertEqual(self.told("book"), '"Tank", 10, 00A096100001\n')
        self.assertEqual(self.told("arguments").split()[:2],
                         [f"{self.folder}/site/site.net", "--link"])
        self.assert_nothing_left()

    def test_a_true_site_is_neither_seen_nor_touched(self):
        self.run_to_its_end()
        home = self.folder / "home"
        self.assertNotIn("of a true site", self.told("Orvia.conf"))
        self.assertEqual(self.told("own").split(), ["Orvia.conf", "ports"])
        self.assertEqual((home / ".config/Orvia/Orvia.conf").read_text(), "of a true site")
        self.assertEqual((home / ".local/share/Orvia/archive.sqlite").read_text(), "true records")
        self.assertEqual((self.folder / "site/site.obk").read_text(),
                         '"Tank", 10, 00A096100001\n')

    def test_the_rest_of_the_desktop_is_the_usual_one(self):
        self.run_to_its_end()
        self.assertEqual(self.told("configured").split(), ["Orvia", "theme"])
        self.assertEqual(self.told("data").split(), ["Orvia", "fonts"])
        self.assertEqual(self.told("theme"), "dark")
        self.assertEqual((self.folder / "home/.config/theme").read_text(), "dark")

    def test_an_empty_home_does_as_well(self):
        (self.folder / "bare").mkdir()
        status, _, _ = self.run_to_its_end(HOME=f"{self.folder}/bare")
        self.assertEqual(status, 7)
        self.assertEqual(list((self.folder / "bare").iterdir()), [])

    def test_exchanges_are_printed_if_asked_for(self):
        _, said, _ = self.run_to_its_end("--trace")
        self.assertTrue(said.startswith("ready: "), said)
        self.assertTrue(self.told("arguments").endswith("--trace\n"))

    def test_a_simulator_that_does_not_start_is_told(self):
        status, _, complained = self.run_to_its_end(FAILS="yes")
        self.assertEqual(status, 1)
        self.assertIn("the simulator did not start", complained)
        self.assert_nothing_left()

    def test_a_wrong_word_is_told(self):
        status, _, complained = self.run_to_its_end("--verbose")
        self.assertEqual(status, 2)
        self.assertIn("usage", complained)
        self.assertFalse((self.folder / "told/simulator").exists())

    def test_nothing_is_left_when_it_is_stopped(self):
        process = self.started(STAYS="yes")
        while not (self.folder / "told/book").exists():
            time.sleep(0.02)
        process.send_signal(signal.SIGTERM)
        process.communicate(timeout=30)
        self.assertEqual(process.returncode, 143)
        self.assert_nothing_left()


if __name__ == "__main__":
    unittest.main(argv=sys.argv)
