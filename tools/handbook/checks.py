"""What is wrong with the manual, one line each."""

import re
from pathlib import Path

from . import captions, html, markup, pages as manual

MAPPING = "src/app/help_pages.cpp"
TOUR = "tests/whole_program"
WINDOW_BASES = {"QDialog", "QMainWindow", "QMdiSubWindow", "QMessageBox", "QWizard"}
WINDOW_FLAGS = re.compile(r"Qt::(?:SplashScreen|Window|Dialog|Tool)\b")


def check(root):
    """All that is wrong with the manual of the project at `root`."""
    root = Path(root)
    folder = root / "docs/manual"
    try:
        pages = manual.read_manual(folder)
        for page in pages.values():
            _ = page.title
    except markup.MarkupError as wrong:
        return [f"{wrong.what}, line {wrong.line}"]
    if manual.CONTENTS not in pages:
        return [f"{manual.CONTENTS}.md is missing"]
    screen = captions.screen_of(root / "src")
    return (contents_wrong(pages) + links_wrong(pages, folder) + keywords_wrong(pages)
            + pictures_wrong(pages, kept_pictures(root / TOUR))
            + windows_wrong(pages, windows_of(root / "src"), mapping_of(root / MAPPING), screen)
            + captions_wrong(pages, screen))


# ----- contents, index, links

def contents_wrong(pages):
    found = []
    listed = manual.order(pages)[1:]
    for name in listed:
        if listed.count(name) > 1:
            found.append(f"index.md: lists {name}.md twice")
    for name in pages:
        if name != manual.CONTENTS and name not in listed:
            found.append(f"{name}.md: is not in the contents")
    for piece, line in pages[manual.CONTENTS].pieces():
        name = piece.target.removesuffix(".md")
        if piece.kind == "link" and name in pages:
            title = markup.plain_text(pages[name].title)
            if piece.text != title:
                found.append(f'index.md:{line}: calls "{title}" "{piece.text}"')
    return sorted(set(found))


def links_wrong(pages, folder):
    """Links lead to pages of the manual, to headings in them, or to the outside."""
    found = []
    for page in pages.values():
        for piece, line in page.pieces():
            if piece.kind != "link" or re.match(r"https?://", piece.target):
                continue
            file, _, mark = piece.target.partition("#")
            name = file.removesuffix(".md") if file else page.name
            if file and (not file.endswith(".md") or name not in pages):
                found.append(f"{page.file}:{line}: {piece.target} leads nowhere")
            elif mark and mark not in pages[name].anchors:
                found.append(f"{page.file}:{line}: {name}.md has no heading #{mark}")
    return found


def keywords_wrong(pages):
    found = []
    for page in pages.values():
        if page.name != manual.CONTENTS and not page.keywords:
            found.append(f"{page.file}: has no keywords")
        for text in [page.title, *page.keywords]:
            # The viewer of compiled help reads titles and keywords in the system's code page.
            if not text.isascii():
                found.append(f'{page.file}: "{text}" is not ASCII')
    return found


# ----- pictures

def kept_pictures(folder):
    """The names of the pictures that the tour keeps, as patterns."""
    patterns = []
    for path in sorted(Path(folder).glob("*.cpp")):
        for call in re.finditer(r'\bKeep\(\s*QStringLiteral\("([^"]+)"\)',
                                path.read_text(encoding="utf-8")):
            pieces = re.split(r"%\d", call.group(1))
            patterns.append(re.compile(r"\w+".join(map(re.escape, pieces)) + r"\.png"))
    return patterns


def pictures_wrong(pages, kept):
    found = []
    for page in pages.values():
        for piece, line in page.pieces():
            if piece.kind != "picture":
                continue
            folder, _, name = piece.target.rpartition("/")
            if folder != "pictures" or not any(one.fullmatch(name) for one in kept):
                found.append(f"{page.file}:{line}: the tour makes no {piece.target}")
            if not piece.text.strip():
                found.append(f"{page.file}:{line}: {piece.target} has no words")
    return found


# ----- windows

def windows_of(folder):
    """The classes that are windows of their own: by what they are made from, or by their flags."""
    found = {}
    for path in sorted(Path(folder).rglob("frm*.h")):
        for match in re.finditer(r"^class (frm\w+)\b[^;{:]*:([^{;]*)\{",
                                 path.read_text(encoding="utf-8"), re.MULTILINE):
            bases = set(re.findall(r"\bQ\w+", match.group(2)))
            source = path.with_suffix(".cpp")
            code = source.read_text(encoding="utf-8") if source.exists() else ""
            if bases & WINDOW_BASES or (bases and WINDOW_FLAGS.search(code)):
                found[match.group(1)] = path.name
    return found


def mapping_of(path):
    """Which page the program opens for a window or a part of one."""
    if not path.exists():
        return {}
    return dict(re.findall(r'\{"([^"]+)",\s*"([^"]+)"\}', path.read_text(encoding="utf-8")))


def windows_wrong(pages, windows, mapping, screen):
    found = [f"{file}: {name} has no page ({MAPPING})"
             for name, file in windows.items() if name not in mapping]
    made = {page.html for page in pages.values()} | {html.INDEX + ".html"}
    found += [f"{MAPPING}: {name} leads to {page}, which is missing"
              for name, page in mapping.items() if page not in made]
    found += [f"{MAPPING}: {name} is no window"
              for name in mapping if name.startswith("frm") and name not in windows]
    # "Frames(0)" is made of its name and a number.
    found += [f"{MAPPING}: no control is called {name}" for name in mapping
              if not name.startswith("frm") and name.partition("(")[0] not in screen.whole]
    return found


# ----- words

def captions_wrong(pages, screen):
    """Bold words are on the screen so, and quotes are what the program says."""
    found = []
    for page in pages.values():
        for text, line, kind in markup.texts(page.blocks):
            for piece in markup.pieces(text, line):
                if piece.kind == "caption" and not screen.has_caption(piece.text):
                    found.append(f'{page.file}:{line}: no window has "{piece.text}"')
            if kind == "quote" and not screen.says(markup.plain_text(text)):
                found.append(f'{page.file}:{line}: nothing says "{markup.plain_text(text)}"')
    return found
