#!/usr/bin/env python3
"""Tests of what the installer for Windows is made with, none of which needs Windows."""

import struct
import subprocess
import sys
import tempfile
import time
import unittest
from pathlib import Path

sys.dont_write_bytecode = True
HERE = Path(__file__).resolve().parent
sys.path.insert(0, str(HERE))

import make_icon
import sim_post
import stage


def png(width, height, rest=b"rest"):
    return make_icon.SIGNATURE + struct.pack(">I", 13) + b"IHDR" + struct.pack(">II", width, height) + rest


class IconTest(unittest.TestCase):
    def test_names_each_picture_and_where_it_lies(self):
        small, large = png(16, 16), png(256, 256, b"much longer")
        icon = make_icon.icon([("a", small), ("b", large)])
        self.assertEqual(struct.unpack("<HHH", icon[:6]), (0, 1, 2))
        first, second = (struct.unpack("<BBBBHHII", icon[at:at + 16]) for at in (6, 22))
        self.assertEqual(first, (16, 16, 0, 0, 1, 32, len(small), 38))
        self.assertEqual(second, (0, 0, 0, 0, 1, 32, len(large), 38 + len(small)))
        self.assertEqual(icon[38:], small + large)

    def test_takes_nothing_but_pictures_of_a_size_that_fits(self):
        for bad in (b"GIF89a" + bytes(30), png(257, 16), b""):
            with self.assertRaises(ValueError):
                make_icon.icon([("bad", bad)])


class ListsTest(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.stage = Path(self.folder.name)
        (self.stage / "plugins" / "deep").mkdir(parents=True)
        for name in ("orvia.exe", "flumes.lst", "plugins/a.dll", "plugins/deep/b.dll"):
            (self.stage / name).touch()

    def tearDown(self):
        self.folder.cleanup()

    def test_each_file_goes_into_its_folder(self):
        put, _ = stage.lists(self.stage)
        self.assertEqual(put, ['SetOutPath "$INSTDIR"', f'File "{self.stage}/flumes.lst"', f'File "{self.stage}/orvia.exe"',
                               'SetOutPath "$INSTDIR\\plugins"', f'File "{self.stage}/plugins/a.dll"',
                               'SetOutPath "$INSTDIR\\plugins\\deep"', f'File "{self.stage}/plugins/deep/b.dll"'])

    def test_what_was_put_is_taken_away_by_name_and_folders_only_if_empty(self):
        _, taken = stage.lists(self.stage)
        self.assertEqual(taken, ['Delete "$INSTDIR\\flumes.lst"', 'Delete "$INSTDIR\\orvia.exe"',
                                 'Delete "$INSTDIR\\plugins\\a.dll"', 'Delete "$INSTDIR\\plugins\\deep\\b.dll"',
                                 'RMDir "$INSTDIR\\plugins\\deep"', 'RMDir "$INSTDIR\\plugins"', 'RMDir "$INSTDIR"'])
        self.assertFalse([line for line in taken if "/r" in line or "*" in line])


class PostTest(unittest.TestCase):
    def test_arguments_become_those_of_this_system(self):
        ports = Path("/some/ports")
        self.assertEqual(sim_post.here("Z:\\work\\site.net", ports), "/work/site.net")
        self.assertEqual(sim_post.here("z:/work/site.net", ports), "/work/site.net")
        self.assertEqual(sim_post.here("COM2", ports), "/some/ports/com2")
        self.assertEqual(sim_post.here("--baud", ports), "--baud")

    def test_who_asks_gets_a_program_and_is_told_what_it_says(self):
        with tempfile.TemporaryDirectory() as folder:
            post = Path(folder)
            serving = subprocess.Popen([sys.executable, HERE / "sim_post.py", post, "/bin/cat", post], stdin=subprocess.PIPE)
            box = post / "1"
            box.mkdir()
            (box / "said").write_text("first\n")
            (box / "order.new").write_text("-")
            (box / "order.new").rename(box / "order")
            self.assertTrue(self.comes(lambda: (box / "heard").exists() and (box / "heard").read_text() == "first\n"))
            with open(box / "said", "a", encoding="utf-8") as said:
                said.write("second\n")
            self.assertTrue(self.comes(lambda: (box / "heard").read_text() == "first\nsecond\n"))
            serving.stdin.close()
            self.assertEqual(serving.wait(10), 0)

    @staticmethod
    def comes(done):
        end = time.monotonic() + 20
        while not done():
            if time.monotonic() > end:
                return False
            time.sleep(0.005)
        return True


if __name__ == "__main__":
    unittest.main()
