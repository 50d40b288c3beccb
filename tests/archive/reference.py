#!/usr/bin/env python3
"""Works out reports on its own, for the console's to be compared with.

    reference.py            writes the records and what is told of them, to stdout
    reference.py --check F  fails unless F holds just that

Nothing here is taken from the console but the rules. Sums are exact (fractions); a reading and a flow
are floating-point numbers, as the rules have them. Everything is looked up the plain way: each period
goes through all records.
"""
import datetime
import math
import random
import sys
from fractions import Fraction

EPOCH = datetime.datetime(2000, 1, 1)
DAY = 86400


def seconds(*fields):
    return int((datetime.datetime(*fields) - EPOCH).total_seconds())


def moment(second):
    return EPOCH + datetime.timedelta(seconds=second)


# ----- numbers as text


def round_even(value, places):
    """A fraction with so many decimals, as whole units of the last."""
    scaled = value * 10 ** places
    whole = scaled.numerator // scaled.denominator
    rest = scaled - whole
    if rest > Fraction(1, 2) or (rest == Fraction(1, 2) and whole % 2):
        whole += 1
    return whole


def fixed(value, places):
    units = round_even(Fraction(value), places)
    digits = str(abs(units)).rjust(places + 1, "0")
    text = digits[: len(digits) - places] + ("." + digits[len(digits) - places:] if places else "")
    return ("-" if units < 0 else "") + text


def significant(value, digits=6):
    if value == 0:
        return "0"
    exponent = 0
    while abs(value) >= Fraction(10) ** (exponent + 1):
        exponent += 1
    while abs(value) < Fraction(10) ** exponent:
        exponent -= 1
    units = round_even(value / Fraction(10) ** (exponent - digits + 1), 0)
    if abs(units) == 10 ** digits:
        units //= 10
        exponent += 1
    if exponent < -4:
        text = str(units)
        return "%s.%sE-%02d" % (text[0], text[1:], -exponent)
    return fixed(value, max(digits - 1 - exponent, 0))


# ----- a logger's settings


class Settings:
    def __init__(self, **given):
        self.interval = "15 minutes"
        self.style = 0
        self.analog = 2
        self.pulse = 1
        self.units = ["Feet", "Deg C", "Gal"]
        self.places = [3, 1, 0]
        self.rawlower = [0, 0]
        self.rawupper = [65535, 65535]
        self.lower = [0.0, -10.0]
        self.upper = [3.0, 40.0]
        self.pulseunit = 1.0
        self.flowmode = 0
        self.flowunits = 0
        self.velunits = 0
        self.n, self.s, self.stype, self.d, self.dtype = 0.014, 1.0, 1, 2.0, 0
        self.offset, self.offsettype = 0.0, 0
        self.a, self.b, self.c = 0.0, 1.5, 3.33
        self.table = []
        self.__dict__.update(given)

    def lines(self):
        yield "settings"
        for name, value in self.__dict__.items():
            if name == "table":
                value = [number for point in value for number in point]
            if isinstance(value, list):
                value = "|".join(str(item) for item in value)
            yield "%s\t%s" % (name, value)

    # ----- time

    def spacing(self):
        """('fixed', seconds), ('fast', 0) or ('none', 0)"""
        if self.style & 0x80 or self.style & 3 == 1:
            return "none", 0
        if self.style & 3 == 2:
            return "fast", 0
        count, word = self.interval.split()
        unit = {"second": 1, "minute": 60, "hour": 3600, "day": DAY}[word.rstrip("s")]
        return "fixed", int(count) * unit

    # ----- figures

    def reading(self, channel, raw):
        span = self.upper[channel] - self.lower[channel]
        width = float(self.rawupper[channel]) - float(self.rawlower[channel])
        part = (raw - float(self.rawlower[channel])) / width
        return span * part + self.lower[channel]

    def feet(self, length, code):
        if code == 1:
            return length / 12.0
        if code == 2:
            return length / 0.3048
        if code == 3:
            return length / 100.0 / 0.3048
        return length

    def flow(self, level, flowunits, velunits):
        """Flow and velocity; the console's own factors between the units."""
        code = {"i": 1, "m": 2, "c": 3}.get(self.units[0][0].lower(), 0)
        level = self.feet(level, code)
        if level <= 0:
            return 0.0, 0.0
        level = max(level + self.feet(self.offset, self.offsettype), 0.0)
        if level == 0:
            return 0.0, 0.0
        velocity = 0.0
        if self.flowmode == 1:
            diameter = max(self.feet(self.d, self.dtype), 0.01)
            radius = diameter / 2
            depth = min(level, diameter)
            # Half the angle of the wetted arc.
            if depth >= diameter:
                half = math.pi
            else:
                half = math.acos((radius - depth) / radius)
            area = radius * radius * (half - math.sin(half) * math.cos(half))
            wet = 2 * half * radius
            slope = self.s / 100.0 if self.stype else self.s
            velocity = math.sqrt(slope) * 1.486 / self.n * (area / wet) ** 0.667
            cfs = velocity * area
        elif self.flowmode in (2, 3):
            cfs = (level + self.a) ** self.b * self.c
        else:
            low, high = (0.0, 0.0), self.table[0]
            for index, point in enumerate(self.table):
                if level >= point[0]:
                    first = min(index, len(self.table) - 2)
                    low, high = self.table[first], self.table[first + 1]
            cfs = (high[1] - low[1]) * (level - low[0]) / (high[0] - low[0]) + low[1]
        factor = [1.0, 448.8, 0.6463, 0.02832, 7.4805 * 3.7854][flowunits]
        return cfs * factor, velocity * (0.3048 if velunits == 1 else 1.0)


FLOW_NAMES = ["CFS", "GPM", "MGD", "CMS", "LPS"]
CUBIC_INCH = Fraction("25.4") ** 3  # cubic millimetres
GALLON = 231 * CUBIC_INCH
CUBIC_FOOT = Fraction("304.8") ** 3
VOLUMES = {
    "Cubic Feet": CUBIC_FOOT,
    "Acre-Feet": 43560 * CUBIC_FOOT,
    "Gallons": GALLON,
    "Million Gallons": GALLON * 10 ** 6,
    "Cubic Meters": Fraction(10) ** 9,
    "Liters": Fraction(10) ** 6,
}
A_SECOND = [CUBIC_FOOT, GALLON / 60, GALLON * 10 ** 6 / DAY, Fraction(10) ** 9, Fraction(10) ** 6]


# ----- a series


class Series:
    """Records are (settings, moment, counts)."""

    def __init__(self, settings, records):
        self.settings = settings
        self.records = records
        flowing = [settings[r[0]] for r in records if settings[r[0]].flowmode]
        self.flowunits = flowing[-1].flowunits if flowing else 0
        self.velunits = flowing[-1].velunits if flowing else 0
        self.columns = []
        for number in sorted({r[0] for r in records}):
            for column in self.columns_of(settings[number]):
                if column not in self.columns:
                    self.columns.append(column)
        self.columns.sort(key=lambda column: (column[0], column[1]))
        self.cache = {}

    @staticmethod
    def columns_of(settings):
        for channel in range(settings.analog):
            yield 0, channel, settings.units[channel]
        for channel in range(settings.pulse):
            yield 1, channel, settings.units[settings.analog + channel]
        if settings.flowmode:
            yield 2, 0, ""
            if settings.flowmode == 1:
                yield 3, 0, ""

    def title(self, column):
        kind, channel, unit = column
        if kind == 0:
            return "Channel %d (%s)" % (channel + 1, unit)
        if kind == 1:
            return "Pulse Chan %d (%s)" % (channel + 1, unit)
        if kind == 2:
            return "Flow (%s)" % FLOW_NAMES[self.flowunits]
        return "Vel (%s)" % ["FPS", "MPS"][self.velunits]

    def places(self, column):
        for number, _, _ in reversed(self.records):
            settings = self.settings[number]
            if column in self.columns_of(settings):
                kind, channel, _ = column
                return settings.places[[channel, settings.analog + channel, 0, 0][kind]]
        raise LookupError(column)

    def has(self, record, column):
        return column in self.columns_of(self.settings[record[0]])

    def value(self, record, column):
        kind, channel, _ = column
        settings = self.settings[record[0]]
        if kind == 0:
            return Fraction(settings.reading(channel, record[2][channel]))
        key = (record[0], record[2][0])
        if key not in self.cache:
            level = settings.reading(0, record[2][0])
            self.cache[key] = settings.flow(level, self.flowunits, self.velunits)
        return Fraction(self.cache[key][kind - 2])

    def kind(self, before, after):
        step = after[1] - before[1]
        style, interval = self.settings[after[0]].spacing()
        if step < 0:
            return "back"
        if style == "fixed" and Fraction(step) > Fraction(3, 2) * interval:
            return "gap"
        return "gap" if style == "fast" and step >= 2 else "joined"

    def pairs(self):
        return zip(self.records, self.records[1:])


# ----- what is told of a period, from begin up to but without end


def attendance(series, begin, end):
    def inside(at):
        return begin <= at < end

    scheduled = [r for r in series.records if series.settings[r[0]].spacing()[0] != "none"]
    due = []
    previous = None
    for record in series.records:
        style, interval = series.settings[record[0]].spacing()
        if style != "none":
            due.append(record[1])
            if previous and series.kind(previous, record) == "gap":
                if style == "fast":
                    for second in range(previous[1] + 1, record[1]):
                        due += [second] * 10
                else:
                    at = record[1] - interval
                    while Fraction(at - previous[1]) >= Fraction(interval, 2):
                        due.append(at)
                        at -= interval
        previous = record
    first = min(series.records, key=lambda record: record[1])
    last = max(series.records, key=lambda record: record[1])
    style, interval = series.settings[first[0]].spacing()
    if style == "fixed":
        due += range(first[1] - interval, begin - 1, -interval)
    elif style == "fast":
        due += [second for second in range(begin, first[1]) for _ in range(10)]
    style, interval = series.settings[last[0]].spacing()
    if style == "fixed":
        due += range(last[1] + interval, end, interval)
    elif style == "fast":
        due += [second for second in range(last[1] + 1, end) for _ in range(10)]
    return {
        "records": sum(inside(r[1]) for r in series.records),
        "scheduled": sum(inside(r[1]) for r in scheduled),
        "due": sum(map(inside, due)),
        "gaps": sum(series.kind(a, b) == "gap" and inside(a[1]) for a, b in series.pairs()),
        "back": sum(series.kind(a, b) == "back" and inside(b[1]) for a, b in series.pairs()),
    }


def integral(series, column, begin, end):
    """Over time; with it the seconds covered and whether settings without an interval took part."""
    total, covered, timeless = Fraction(0), 0, False
    for before, after in series.pairs():
        if series.kind(before, after) != "joined" or before[1] == after[1]:
            continue
        low, high = max(before[1], begin), min(after[1], end)
        if low >= high or not series.has(before, column) or not series.has(after, column):
            continue
        first, last = series.value(before, column), series.value(after, column)

        def at(second):
            return first + (last - first) * Fraction(second - before[1], after[1] - before[1])

        total += (at(low) + at(high)) / 2 * (high - low)
        covered += high - low
        timeless = timeless or series.settings[after[0]].spacing()[0] == "none"
    return total, covered, timeless


def statistics(series, column, begin, end):
    inside = [r for r in series.records if begin <= r[1] < end and series.has(r, column)]
    values = [series.value(r, column) for r in inside]
    total, covered, timeless = integral(series, column, begin, end)
    timeless = timeless or any(series.settings[r[0]].spacing()[0] == "none" for r in inside)
    mean = None
    if timeless and covered:
        mean = total / covered
    elif inside:
        mean = sum(values) / len(values)
    least = inside[values.index(min(values))] if inside else None
    most = inside[values.index(max(values))] if inside else None
    return least, mean, most


def pulses(series, column, begin, end):
    total, known = Fraction(0), False
    for before, after in series.pairs():
        if not series.has(before, column) or not series.has(after, column):
            continue
        old = before[2][series.settings[before[0]].analog + column[1]]
        new = after[2][series.settings[after[0]].analog + column[1]]
        step = new - old
        if step < 0:
            step = step % 65536 if step % 65536 < 32768 else new
        if after[1] > before[1]:
            inside = min(after[1], end) - max(before[1], begin)
            if inside <= 0:
                continue
            part = Fraction(inside, after[1] - before[1])
        elif begin <= after[1] < end:
            part = Fraction(1)
        else:
            continue
        total += step * part * Fraction(series.settings[after[0]].pulseunit)
        known = True
    return total if known else None


def date_text(second):
    at = moment(second)
    return "%d/%d/%02d" % (at.month, at.day, at.year % 100)


def time_text(record):
    return date_text(record[1]) + moment(record[1]).strftime(" %H:%M:%S")


def row(series, begin, end, unit):
    first, last = date_text(begin), date_text(end - 1)
    present = attendance(series, begin, end)
    due, complete = "", ""
    if present["due"]:
        due = str(present["due"])
        share = Fraction(present["scheduled"], present["due"])
        shown = min(share * 100, Fraction("99.9")) if share < 1 else Fraction(100)
        complete = fixed(shown, 1) + " %"
    cells = [first if first == last else first + " - " + last, str(present["records"]), due,
             complete, str(present["gaps"]), str(present["back"])]
    for column in series.columns:
        places = series.places(column)
        if column[0] == 1:
            total = pulses(series, column, begin, end)
            cells.append("" if total is None else fixed(total, places))
            continue
        least, mean, most = statistics(series, column, begin, end)
        cells += [fixed(series.value(least, column), places), time_text(least)] if least else ["", ""]
        cells.append("" if mean is None else fixed(mean, places))
        cells += [fixed(series.value(most, column), places), time_text(most)] if most else ["", ""]
        if column[0] == 2:
            total, covered, _ = integral(series, column, begin, end)
            cells.append(significant(total * A_SECOND[series.flowunits] / VOLUMES[unit])
                         if covered else "")
    return cells


def columns(series, unit):
    names = ["Period", "Records", "Due", "Complete", "Gaps", "Clock Set Back"]
    for column in series.columns:
        title = series.title(column)
        if column[0] == 1:
            names.append(title + " Total")
            continue
        names += [title + " " + name for name in ("Minimum", "At", "Mean", "Maximum", "At")]
        if column[0] == 2:
            names.append("%s Volume (%s)" % (title, unit))
    return names


def split(begin, end, step):
    while begin < end:
        date = moment(begin).date()
        if step == "day":
            following = date + datetime.timedelta(days=1)
        elif step == "week":
            following = date + datetime.timedelta(days=7 - date.weekday())
        else:
            following = (date.replace(day=1) + datetime.timedelta(days=31)).replace(day=1)
        bound = min(seconds(following.year, following.month, following.day), end)
        yield begin, bound
        begin = bound


# ----- records


class Counter:
    """A pulse counter of 16 bits that rolls over, and may be reset."""

    def __init__(self, chance, start):
        self.chance, self.count = chance, start

    def next(self, most):
        self.count = (self.count + self.chance.randrange(most)) % 65536
        return self.count


def wave(chance, at, period, low, high):
    middle, swing = (low + high) / 2, (high - low) / 2
    raw = middle + swing * math.sin(2 * math.pi * at / period) + chance.uniform(-0.05, 0.05) * swing
    return max(0, min(65535, round(raw)))


def make(chance, start, steps, counter, number=0, pulses=200):
    records = []
    at = start
    for step in steps:
        at += step
        records.append((number, at, [wave(chance, at, DAY, 2000, 42000),
                                     wave(chance, at, DAY / 2, 10000, 50000),
                                     counter.next(pulses)]))
    return records


def drop(records, *stretches):
    return [r for i, r in enumerate(records) if not any(a <= i < b for a, b in stretches)]


def scenarios():
    chance = random.Random(20240114)

    settings = Settings(flowmode=1, flowunits=1)
    records = make(chance, seconds(2024, 1, 25), [900] * 700, Counter(chance, 50000))
    yield ("fixed_interval_with_gaps_and_roll_over", [settings],
           drop(records, (10, 11), (150, 290), (500, 502)),
           seconds(2024, 1, 24), seconds(2024, 2, 3), "Gallons")

    # The counter is set to nothing in the middle, and the interval does not divide the day.
    settings = Settings(interval="7 minutes", flowmode=3, flowunits=0, pulseunit=0.01,
                        places=[3, 1, 2])
    counter = Counter(chance, 1000)
    records = make(chance, seconds(2024, 2, 27, 13, 2, 11), [420] * 300, counter)
    counter.count = 0
    records += make(chance, records[-1][1], [420] * 300, counter)
    yield ("interval_of_seven_minutes_with_reset", [settings], drop(records, (333, 340)),
           seconds(2024, 2, 27), seconds(2024, 3, 2), "Acre-Feet")

    settings = Settings(style=1, flowmode=2, flowunits=0, c=1.2, b=1.55, a=0.1)
    steps = [max(1, int(1.03 ** i)) for i in range(420)]
    records = make(chance, seconds(2025, 12, 31, 22), steps, Counter(chance, 0))
    yield ("logarithmic_timing", [settings], records, seconds(2025, 12, 31), seconds(2026, 1, 9),
           "Cubic Feet")

    settings = Settings(style=128, flowmode=4, flowunits=4, units=["cm", "Deg C", "Gal"],
                        upper=[90.0, 40.0], places=[1, 1, 0],
                        table=[(0.5, 1.0), (1.0, 3.5), (2.0, 12.25), (2.5, 20.0)])
    steps = [chance.choice([1, 5, 60, 600, 3600, 30000]) for _ in range(250)]
    records = make(chance, seconds(2024, 2, 20), steps, Counter(chance, 65000))
    yield ("logging_on_change", [settings], records, seconds(2024, 2, 20), seconds(2024, 3, 20),
           "Liters")

    settings = Settings(interval="5 minutes", flowmode=1, flowunits=2, velunits=1, offset=-1.5,
                        offsettype=1)
    counter = Counter(chance, 60000)
    records = make(chance, seconds(2023, 3, 11, 20), [300] * 200, counter)
    records += make(chance, records[-1][1] - 3700, [300] * 200, counter)
    records += make(chance, records[-1][1] - 2 * DAY, [300] * 150, counter)
    yield ("clock_set_back", [settings], records, seconds(2023, 3, 9), seconds(2023, 3, 15),
           "Million Gallons")

    old = Settings(flowmode=3, flowunits=1, interval="1 hour", places=[2, 1, 0])
    new = Settings(flowmode=1, flowunits=3, velunits=1, units=["Meters", "Deg F", "Gal"],
                   upper=[0.9, 104.0], lower=[0.0, 14.0], pulseunit=0.5, places=[3, 2, 1])
    counter = Counter(chance, 300)
    records = make(chance, seconds(2024, 12, 30, 0, 30), [3600] * 100, counter)
    records += make(chance, records[-1][1], [900] * 300, counter, 1)
    yield ("changed_units_and_interval", [old, new], records, seconds(2024, 12, 30),
           seconds(2025, 1, 7), "Cubic Meters")

    settings = Settings(style=2, flowmode=3, flowunits=1)
    records = make(chance, seconds(2024, 6, 30, 23, 59, 30), ([0] * 9 + [1]) * 60,
                   Counter(chance, 0), pulses=3)
    yield ("fast_mode", [settings], drop(records, (100, 121), (300, 305), (400, 417)),
           seconds(2024, 6, 30, 23, 59), seconds(2024, 7, 1, 0, 1), "Gallons")

    first = Settings(flowmode=3, flowunits=0)
    second = Settings(flowmode=3, flowunits=0, style=129)
    counter = Counter(chance, 0)
    records = make(chance, seconds(2024, 9, 2, 12), [900] * 100, counter)
    records += make(chance, records[-1][1], [chance.randrange(1, 5000) for _ in range(60)], counter, 1)
    yield ("from_interval_to_on_change", [first, second], records, seconds(2024, 9, 1, 6),
           seconds(2024, 9, 6), "Million Gallons")


def lines():
    for name, settings, records, begin, end, unit in scenarios():
        yield "scenario\t" + name
        for each in settings:
            yield from each.lines()
        for number, at, counts in records:
            time = moment(at).strftime("%Y %m %d %H %M %S")
            yield "record\t%d %s %s" % (number, time, " ".join(map(str, counts)))
        series = Series(settings, records)
        yield "columns\t" + "\t".join(columns(series, unit))
        for step in ("day", "week", "month"):
            yield "report\t%s\t%d\t%d\t%s" % (step, begin, end, unit)
            for period in split(begin, end, step):
                yield "row\t" + "\t".join(row(series, *period, unit))
            yield "total\t" + "\t".join(row(series, begin, end, unit))


def main():
    text = "\n".join(lines()) + "\n"
    if sys.argv[1:2] == ["--check"]:
        with open(sys.argv[2], encoding="ascii") as file:
            if file.read() != text:
                sys.exit(sys.argv[2] + " is not what the rules give")
    else:
        sys.stdout.write(text)


main()
