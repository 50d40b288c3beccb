#!/usr/bin/env python3
"""Lays out the folder that is installed on Windows, and writes the lists by which it is installed and taken away.

    stage.py --program orvia.exe --prefix LIBRARIES --runtime FOLDER... --beside FILE... STAGE LISTS

What the program and its plug-ins load is found by asking each file, and comes from PREFIX/bin and the compiler's folders
(--runtime); what is in none of them is the system's. --beside names what else lies beside the program."""

import argparse
import shutil
import subprocess
import sys
from pathlib import Path

TRIPLET = "x86_64-w64-mingw32"

# Loaded by name while the program runs, so that no file says it: windows, their look, pictures, the archive.
PLUGINS = ("platforms/qwindows.dll", "styles/qwindowsvistastyle.dll", "sqldrivers/qsqlite.dll")


def loaded_by(file):
    said = subprocess.run([f"{TRIPLET}-objdump", "-p", file], check=True, capture_output=True, text=True)
    return [line.split()[-1] for line in said.stdout.splitlines() if "DLL Name:" in line]


def closure(files, folders):
    """All libraries, found in one of the folders, that the files load, directly or not."""
    found, pending = {}, list(files)
    while pending:
        for name in loaded_by(pending.pop()):
            if name in found:
                continue
            path = next((folder / name for folder in folders if (folder / name).exists()), None)
            if path is not None:
                found[name] = path
                pending.append(path)
    return list(found.values())


def lists(stage):
    """The two lists: each folder with its files to install; each file, then each folder if empty, to take away."""
    put, taken, folders = [], [], []
    for folder in [stage] + sorted(path for path in stage.rglob("*") if path.is_dir()):
        inside = "\\".join(("$INSTDIR",) + folder.relative_to(stage).parts)
        put.append(f'SetOutPath "{inside}"')
        folders.append(f'RMDir "{inside}"')
        for file in sorted(path for path in folder.iterdir() if path.is_file()):
            put.append(f'File "{file}"')
            taken.append(f'Delete "{inside}\\{file.name}"')
    return put, taken + folders[::-1]


def main(words):
    parser = argparse.ArgumentParser(prog="stage.py")
    parser.add_argument("--program", type=Path, required=True)
    parser.add_argument("--prefix", type=Path, required=True)
    parser.add_argument("--runtime", type=Path, action="append", required=True)
    parser.add_argument("--beside", type=Path, action="append", required=True)
    parser.add_argument("stage", type=Path)
    parser.add_argument("lists", type=Path)
    told = parser.parse_args(words)
    stage = told.stage.resolve()
    shutil.rmtree(stage, ignore_errors=True)
    stage.mkdir(parents=True)
    plugins = [told.prefix / "plugins" / name for name in PLUGINS]
    libraries = closure([told.program] + plugins, [told.prefix / "bin"] + told.runtime)
    programs = []
    for source, name in ([(told.program, told.program.name)] + [(path, path.name) for path in libraries]
                         + list(zip(plugins, PLUGINS))):
        target = stage / name
        target.parent.mkdir(exist_ok=True)
        shutil.copyfile(source, target)
        programs.append(target)
    subprocess.run([f"{TRIPLET}-strip", *programs], check=True)
    for file in told.beside:
        shutil.copyfile(file, stage / file.name)
    put, taken = lists(stage)
    told.lists.mkdir(parents=True, exist_ok=True)
    (told.lists / "install.nsh").write_text("\n".join(put) + "\n", encoding="utf-8")
    (told.lists / "uninstall.nsh").write_text("\n".join(taken) + "\n", encoding="utf-8")
    size = sum(path.stat().st_size for path in stage.rglob("*") if path.is_file())
    print(f"{len(taken)} entries, {size / 1e6:.1f} MB")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
