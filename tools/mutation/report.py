"""What a run prints and keeps."""

import re

from .trial import EQUAL, NOTICED, STILLBORN, SURVIVED

_COLUMNS = ("made", NOTICED, SURVIVED, STILLBORN, EQUAL)


def one_line(code):
    return re.sub(r"\s+", " ", code).strip()


def change_of(mutant):
    """The old line and the new one."""
    new = one_line(mutant.new)
    return one_line(mutant.old), "(dropped)" if new == ";" else new


def progress_line(number, size, mutant, entry):
    old, new = change_of(mutant)
    by = f" by {entry['by']}" if entry["outcome"] == NOTICED else entry["by"] and \
        f" ({entry['by']})"
    change = f"\n        - {old}\n        + {new}" if entry["outcome"] == SURVIVED else ""
    return f"[{number:4}/{size}] {entry['outcome']}{by}: {mutant.path}:{mutant.line} " \
           f"{mutant.operator} {mutant.id} ({entry['seconds']:.1f} s){change}"


def listing(mutants):
    for mutant in mutants:
        old, new = change_of(mutant)
        yield f"{mutant.id}  {mutant.path}:{mutant.line}  {mutant.operator}\n" \
              f"    - {old}\n    + {new}"


def survivors_text(survivors, rooms):
    """The survivors by room; an id is what --only and --again take."""
    lines = []
    for room in rooms:
        of_room = sorted((mutant for mutant in survivors if mutant.room == room),
                         key=lambda mutant: (mutant.path, mutant.line))
        if of_room:
            lines += [f"== {room}: {len(of_room)}", *listing(of_room), ""]
    return "\n".join(lines) + "\n" if lines else "none survived\n"


def ids_in(text):
    return set(re.findall(r"^([0-9a-f]{10})\b", text, re.MULTILINE))


def table(made, rooms):
    """By room: mutants made (those that count), noticed, survived, and the share noticed."""
    rows = {room: dict.fromkeys(_COLUMNS, 0) for room in rooms}
    for mutant, entry in made:
        row = rows[mutant.room]
        row[entry["outcome"]] += 1
        row["made"] += entry["outcome"] in (NOTICED, SURVIVED)
    rows["all"] = {name: sum(row[name] for row in rows.values()) for name in _COLUMNS}
    lines = [f"{'room':10}" + "".join(f"{name:>11}" for name in _COLUMNS) + f"{'share':>11}"]
    for room, row in rows.items():
        if room == "all" or any(row.values()):
            lines.append(f"{room:10}" + "".join(f"{row[name]:11}" for name in _COLUMNS) +
                         f"{share_text(row):>11}")
    return "\n".join(lines)


def share_text(row):
    return f"{100 * row['noticed'] / row['made']:.1f} %" if row["made"] else "-"


def share(made):
    """Noticed of a hundred that count; 100 if none does."""
    outcomes = [entry["outcome"] for _, entry in made]
    noticed, survived = outcomes.count(NOTICED), outcomes.count(SURVIVED)
    return 100 * noticed / (noticed + survived) if noticed + survived else 100.0

