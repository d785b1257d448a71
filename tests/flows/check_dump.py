#!/usr/bin/env python3
"""Works out what `kshock dump FILE` has to print, from the recording's bytes alone, and compares.

Shares no code with the program: own block reader, own metrics, own tables. Checks the given recordings and a
number of generated ones, odd and damaged ones among them. Compares all but the four mission texts. One line per failing
recording; exit 1 when any failed.
"""
import argparse
import ctypes
import ctypes.util
import json
import math
import os
import random
import struct
import subprocess
import sys
import tempfile
import zlib

NO_VALUE, END_OF_EVENT = b"\xff\xff\xff\xff", b"\xfe\xff\xff\xff"
DAY_MS = 86400000
AXES = ("ACC x", "ACC y", "ACC z")
ANALOG = ("A1", "A2", "A3", "A4")
SENSOR_NAMES = {"T": "Temperature", "T(RH)": "Temperature RH", "T(p)": "Temperature p", "RH": "RH", "L": "L",
                "p": "Pressure", "BAT": "Battery", "Marker": "Marker", **{name: name for name in ANALOG}}
CREATORS = ("korvex_createShockFile.exe", "korvex165_reader.exe", "korvexCARD_reader.exe (kshock)")
HEADER = [tuple(item.split(":")) for item in (
    "fileVersion:H version:H sKorvexType:s sKorvexVersion:s sID:s sTitle:s sOperator:s rec_starttime:d rec_endtime:d "
    "rec_ctrl:H options:H rec_startmode:H rec_stopmode:H rtc_starttime:d rtc_stoptime:d adxl_level_on:f "
    "adxl_level_off:f rec_fast_rate:d buffer_pre_cnts:H buffer_post_cnts:H rec_std_mask:H tb_meas_rate:d").split()]
METRICS = ["Acceleration max", "ToT total", "ToT max", "IoT total", "IoT max"]
SLOW = {"Temp.": "Temperature", "Temp. P": "Temperature p", "Temp. RH": "Temperature RH", "Humidity": "RH",
        "Light": "L", "Pressure": "Pressure", "Battery": "Battery", **{name: name for name in ANALOG}}
EVENT_SLOW = ["Temp.", "Temp. P", "Temp. RH", "Humidity", "Dew Point", "Light", "Pressure", "Battery", *ANALOG]
ROW_SLOW = ["Temp.", "Temp. P", "Temp. RH", "Humidity", "Dew Point", "Pressure", "Light", *ANALOG]
CARD_SLOW = {"Temperature": "Temp.", "Temperature (Pressure)": "Temp. P", "Temperature (Humidity)": "Temp. RH",
             **{name: name for name in EVENT_SLOW[3:8]}}
SKIP = object()  # stands for a value that is not compared


class Single(float):
    """A single: the printed number may be the shortest one that reads back as the same single."""


class Short(Exception):
    """The body ends inside a value."""


def single(value):
    return ctypes.c_float(value).value


class ZStream(ctypes.Structure):
    _fields_ = [("next_in", ctypes.c_char_p), ("avail_in", ctypes.c_uint), ("total_in", ctypes.c_ulong),
                ("next_out", ctypes.c_void_p), ("avail_out", ctypes.c_uint), ("total_out", ctypes.c_ulong),
                *[(name, ctypes.c_void_p) for name in ("msg", "state", "zalloc", "zfree", "opaque")],
                ("data_type", ctypes.c_int), ("adler", ctypes.c_ulong), ("reserved", ctypes.c_ulong)]


def inflate(data):
    """The content and whether the stream is good. Python's zlib module drops what a failing call put out."""
    lib = ctypes.CDLL(ctypes.util.find_library("z"))
    stream, room, content = ZStream(next_in=data, avail_in=len(data)), ctypes.create_string_buffer(1 << 16), b""
    lib.inflateInit_(ctypes.byref(stream), zlib.ZLIB_VERSION.encode(), ctypes.sizeof(stream))
    while True:
        stream.next_out, stream.avail_out = ctypes.addressof(room), len(room)
        state = lib.inflate(ctypes.byref(stream), 0)
        content += room.raw[:len(room) - stream.avail_out]
        if state != 0 or stream.avail_out:
            lib.inflateEnd(ctypes.byref(stream))
            return content, state == 1


class Body:
    def __init__(self, data):
        self.data, self.pos = data, 0

    def take(self, count):
        if self.pos + count > len(self.data):
            raise Short
        self.pos += count
        return self.data[self.pos - count:self.pos]

    def read(self, code):
        if code == "s":
            data = self.take(self.read("H")) or b" "
            return "".join(chr(c) if c in b"\x81\x8d\x8f\x90\x9d" else bytes([c]).decode("cp1252") for c in data)
        value = struct.unpack("<" + code, self.take(struct.calcsize(code)))[0]
        return Single(value) if code == "f" else value


class Recording:
    def __init__(self, path):
        self.mission = {name: "" if code == "s" else 0 for name, code in HEADER} | {"bValid": False}
        self.start_time, self.creator, self.damaged, self.message, self.blocks = 0.0, False, False, (1, 0), 0
        self.events, self.sensors, self.new_event = [], [], False
        self.index, self.current, self.columns = {}, {}, 0
        try:
            with open(path, "rb") as file:
                data = file.read()
        except OSError:
            self.message = (2, 1000)
            return
        content, good = inflate(data)
        stream = self.each_block(content, good)
        kind, body, cut = next(stream, (None, b"", True))
        if kind != 0 or cut or len(body) != 15 or body[:11] not in (b"\t\0HALVORNIC", b"\t\0TREMALINE"):
            self.damaged |= not good
            return
        for kind, body, cut in stream:
            try:
                self.take_block(kind, Body(body))
            except Short:
                if not cut:
                    self.message, self.damaged = (2, 0), True
                break

    def each_block(self, content, good):
        pos = 0
        while pos + 4 <= len(content):
            kind, size = struct.unpack_from("<HH", content, pos)
            body = content[pos + 4:pos + 4 + size]
            pos += 4 + size
            self.damaged = len(body) < size
            if body:
                yield kind, body, self.damaged
            if self.damaged:
                return
            if not body:
                break
        else:
            self.damaged = pos < len(content)
        self.damaged |= not good

    def take_block(self, kind, body):
        if kind == 1:
            self.creator |= body.read("s") in CREATORS
        elif kind == 2:
            self.start_time = body.read("d") + 36526
        elif kind == 6:
            self.columns = 0
            while body.pos + 1 < len(body.data):
                name = body.read("s")
                if name in SENSOR_NAMES or name in AXES:
                    self.index[name] = self.columns
                if name in SENSOR_NAMES:
                    self.sensors.append((name, []))
                self.columns += 1
        elif kind == 8:
            self.take_records(body)
        elif kind == 27:
            for name, code in HEADER:
                self.mission[name] = body.read(code)
            self.mission["bValid"] = True

    def take_records(self, body):
        self.new_event |= self.blocks == 0
        self.blocks += 1
        while body.pos + 1 < len(body.data):
            days = body.read("d")
            if not 0 <= days <= 36500:
                return
            time, row = days * DAY_MS, body.take(4 * self.columns)
            for name, column in self.index.items():
                if column < self.columns:
                    self.current[name] = row[4 * column:4 * column + 4]
            axes = [self.current.get(name, NO_VALUE) for name in AXES]
            if END_OF_EVENT in axes:
                self.new_event = True
            elif NO_VALUE not in axes:
                self.events += [[]] if self.new_event else []
                self.new_event = False
                x, y, z = (struct.unpack("<f", item)[0] for item in axes)
                self.events[-1].append((time, math.sqrt(x * x + y * y + z * z), (x, y, z)))
            for name, values in self.sensors:
                item = self.current.get(name, NO_VALUE)
                value = struct.unpack("<f", item)[0]
                if item not in (NO_VALUE, END_OF_EVENT) and not (name in ANALOG and math.isnan(value)):
                    values.append((time, value))

    def date(self, time):
        return self.start_time + time / DAY_MS


def peaks(samples):
    most, most_single, axis = 0.0, 0.0, "None"
    for _, size, axes in samples:
        for letter, value in zip("XYZ", axes):
            if abs(value) > most_single:
                most_single, axis = abs(value), letter + ("-pos" if value >= 0 else "-neg")
        most = max(most, most_single, single(size))
    return most, most_single, axis


def time_over(samples, on, off):
    total = most = 0.0
    began = None
    for i, (time, size, _) in enumerate(samples):
        tau = time - samples[0][0]
        if began is None:
            began = tau if size >= on else None
        elif size < off or i == len(samples) - 1:
            total, most, began = total + (tau - began), max(most, tau - began), None
    return total, most


def integral_over(samples, level):
    total = most = run = 0.0
    running = False
    for (t0, size0, _), (t1, size1, _) in zip(samples, samples[1:]):
        a, b = size0 - level, size1 - level
        if a > 0 and b > 0:
            area = (a + b) * (t1 - t0) / 2
            run, total, running = (run if running else 0.0) + area, total + area, True
        else:
            most, running = max(most, run), False
    return total, most


def dew_point(temperature, humidity):
    if temperature is None or humidity is None:
        return None
    v = humidity * (61.1 * 7.5 * temperature / (temperature + 237.7)) / 100
    if not v > 0:
        return None
    scaled = single((237.7 * math.log(v) - 430.22) / (19.08 - math.log(v))) * 100
    if not math.isfinite(scaled):
        return scaled
    whole = math.floor(abs(scaled))
    return single(math.copysign(whole + (abs(scaled) - whole >= 0.5), scaled) / 100)


def value_at(dates, values, date):
    j = next((k for k, own in enumerate(dates) if own >= date), None)
    if j is None:
        return values[-1][1]
    if dates[j] == date or j == 0:
        return values[j][1]
    return values[j - 1 if abs(date - dates[j]) > abs(date - dates[j - 1]) else j][1]


def in_order(rows, column, descending=False):
    return sorted(rows, key=lambda row: (not math.isnan(row[column]), row[column] if row[column] == row[column] else 0),
                  reverse=descending)


def build_tables(rec, metrics):
    present = {SENSOR_NAMES[name] for name, _ in rec.sensors}
    shown = {column for column, name in SLOW.items() if name in present}
    shown |= {"Dew Point"} if {"Temp.", "Humidity"} <= shown else set()
    first, last = {}, {}
    for name, values in rec.sensors:
        first.setdefault(SENSOR_NAMES[name], values)
        if values:
            last[SENSOR_NAMES[name]] = [rec.date(time) for time, _ in values], values
    event_fields = [column for column in EVENT_SLOW if column in shown]
    events, cards = [], []
    for i, (samples, numbers) in enumerate(zip(rec.events, metrics)):
        date = rec.date(samples[0][0])
        slow = {column: value_at(*last[name], date) for column, name in SLOW.items() if name in last}
        slow["Dew Point"] = dew_point(slow.get("Temp."), slow.get("Humidity"))
        row = [i, date, peaks(samples)[0], *map(single, numbers)]
        events.append(row + [slow.get(column) for column in event_fields])
        cards.append(row + [slow.get(column) for column in CARD_SLOW.values()])
    row_fields = [column for column in ROW_SLOW if column in shown]
    driving = next((values for name, values in rec.sensors if name not in ("BAT", "Marker", "p")), [])
    rows = []
    for j, (time, _) in enumerate(driving):
        slow = {column: first[name][j][1] for column, name in SLOW.items() if j < len(first.get(name, []))}
        slow["Dew Point"] = dew_point(slow.get("Temp."), slow.get("Humidity"))
        rows.append([j, rec.date(time), *(slow.get(column) for column in row_fields)])
    battery = [[j, rec.date(time), value] for j, (time, value) in enumerate(first.get("Battery", []))]

    def table(fields, rows):
        return {"fields": fields, "rowCount": len(rows), "rows": rows}
    event_fields = ["ID", "Timestamp", *METRICS, *event_fields]
    return {"events": table(event_fields, in_order(events, 1)),
            "important": table(event_fields, in_order(events, 6, descending=True)[:10]),
            "cards": table(["ID", "Date and Time", *METRICS, *CARD_SLOW], cards),
            "sensors": table(["ID", "Timestamp", *row_fields], in_order(rows, 1)),
            "battery": table(["ID", "Timestamp", "Battery"] if "Battery" in shown else [], in_order(battery, 1))}


def expected_answer(path, limit):
    rec = Recording(path)
    mission, valid = rec.mission, rec.mission["bValid"]
    on, off, level = [mission[f"adxl_level_{name}"] for name in ("on", "off", "on")] if valid else (6.0, 6.0, 1.0)
    metrics = [(*time_over(e, on, off), *integral_over(e, level)) for e in rec.events]
    tables = build_tables(rec, metrics)
    for table in tables.values():
        table["rows"] = table["rows"][:limit]
    shown = valid and rec.creator
    status = 3 if rec.message[0] == 2 else 1 if not shown else 5 if rec.damaged else 0
    events = [{"ID": i, "samples": len(e), "startTime": e[0][0], "Max": Single(most), "MaxSingle": Single(most_single),
               "MaxAxis": axis, **dict(zip(("totTotal", "totMax", "iotTotal", "iotMax"), numbers))}
              for i, (e, numbers) in enumerate(zip(rec.events, metrics)) for most, most_single, axis in [peaks(e)]]
    sensors = [{"ID": i, "Name": SENSOR_NAMES[name], "samples": len(v), "startTime": v[0][0] if v else 0,
                "first": Single(v[0][1]) if v else None, "last": Single(v[-1][1]) if v else None}
               for i, (name, v) in enumerate(rec.sensors)]
    return status, {"message": dict(zip(("wParam", "lParam"), rec.message)), "displayable": shown,
                    "damaged": rec.damaged, "readError": "", "blocks": rec.blocks, "mission": mission, "startTime": rec.start_time,
                    "validCreator": rec.creator, "events": events, "sensors": sensors, "texts": SKIP,
                    "tables": tables}


def differences(path, want, got):
    """Yields (JSON path, expected, got). A printed zero has to bear its sign."""
    want = None if isinstance(want, float) and math.isnan(want) else want
    if isinstance(want, (dict, list)):
        names, others = (sorted(item) if isinstance(item, dict) else
                         [*range(len(item))] if isinstance(item, list) else item for item in (want, got))
        if type(want) is not type(got) or names != others:
            yield path, names, others
        else:
            for name in names:
                yield from differences(f"{path}.{name}", want[name], got[name])
    elif isinstance(got, float) and type(want) in (int, float, Single):
        near = single(got) if isinstance(want, Single) else got
        if near != want or math.copysign(1, near) != math.copysign(1, want):
            yield path, float(want), got
    elif want is not SKIP and (type(want) is not type(got) or want != got):
        yield path, want, got


def check(kshock, path, limit=None):
    status, want = expected_answer(path, limit)
    command = [kshock, "dump", path] + ([] if limit is None else ["--rows", str(limit)])
    try:
        run = subprocess.run(command, capture_output=True, timeout=120, check=False)
        # Every number as a float, as an integer would lose the sign of -0; a bare NaN stays text and so differs.
        got = json.loads(run.stdout.decode("utf-8"), parse_int=float, parse_constant=str)
    except (OSError, ValueError, subprocess.TimeoutExpired) as error:
        return [("$", "one JSON object", str(error))]
    found = [("exit status", status, run.returncode)] if run.returncode != status else []
    return found + list(differences("$", want, got))


ALL = [*AXES, *SENSOR_NAMES]
ODD = [NO_VALUE, END_OF_EVENT, *(struct.pack("<I", bits) for bits in (
    0xFFFFFFFD, 0x7FC00000, 0xFFC00000, 0x7F800001, 0x7F800000, 0xFF800000, 1, 0x80000000, 0x7F7FFFFF, 0xFF7FFFFF))]
ODD_TIMES = [math.nan, math.inf, -1.0, -0.0, 0.0, 5e-324, 36500.0, 36500.1, 40000.0]
DATES = [45123.25, 45123 + 1 / 3, 45123.999999999, 0.0, 0.5, -1.25, 1e9, math.nan, math.inf, -math.inf]
STRINGS = [b"", b" ", b"165-00007", b"Pr\xfcfstand \x80\x81\x8d\x8f\x90\x9d\xff", b"\"\\\t\0\x01\x7f", b"x" * 300]
LEVELS = [2.5, 2.5, 1.5, 4.65, 0.0, -0.0, -1.0, math.nan, math.inf, 1e-40]
# What is special about each kind of generated recording; `build` reads the options.
CASES = [
    {}, {"events": 25, "ties": True}, {"events": 12}, {"events": 1}, {"samples": 1}, {"odd": 0.02}, {"odd": 0.3},
    {"channels": [*AXES, "T", "foo", "", "p"]}, {"channels": ["T", *AXES, "RH", "T", "ACC x"]}, {"channels": []},
    {"channels": ["ACC z", "T", "ACC x", "RH"]}, {"channels": [*AXES]}, {"channels": ["T", "RH", "BAT"]},
    {"channels": [*AXES, *ANALOG], "odd": 0.1}, {"channels": ["BAT", "Marker", "p", "L", "T", "RH", *AXES]},
    {"channels": ["BAT", "Marker", "p", *AXES]}, {"channels": [*AXES, "T", "t", "ACC X", "T(RH)", "Acc y"]},
    {"late": True}, {"second": [*AXES, "T"]}, {"second": [*ALL, "T", "bar"]}, {"second": ["RH", "ACC y"]},
    {"starts": [8000.25, 9000.5]}, {"starts": []}, {"starts": [math.nan]}, {"starts": [math.inf]}, {"starts": [-1e5]},
    {"headers": 0}, {"headers": 2}, {"creators": []}, {"creators": [b"korvex165_reader.exe "]}, {"odd_times": 0.2},
    {"creators": [CREATORS[2].encode(), b"other"]}, {"headers": 0, "creators": []}, {"odd_times": 0.05, "events": 25},
    {"cold": True}, {"cold": True, "channels": ["RH", *AXES, "T"], "events": 20}, {"magic": b"TREMALINE"},
    {"magic": b"HALVORNIX"}, {"magic": b"HALVORNIC "}, *({"blocks": edit} for edit in (
        "rest", "bad rest", "shorten", "shorten", "shorten", "empty", "unknown", "longer", "tail")),
    *({"bytes": edit} for edit in ("cut", "cut", "cut", "flip", "flip", "flip", "adler", "rubbish", "no zlib", "none")),
    {"bytes": "flip", "pack": 0}, {"bytes": "cut", "blocks": "shorten"}, {"bytes": "adler", "blocks": "empty"}]


def text(data):
    return struct.pack("<H", len(data)) + data


def records(rng, case, channels):
    """Sensor rows at even steps, events between them: a start may lie exactly midway between two rows."""
    exact, step, out = rng.random() < 0.5, 0, []

    def record(days, values):
        days = rng.choice(ODD_TIMES + [days / 2]) if rng.random() < case.get("odd_times", 0) else days
        for i, name in enumerate(channels):
            values[i] = rng.choice(ODD) if rng.random() < case.get("odd", 0) else values[i]
        out.append(struct.pack("<d", days) + b"".join(values))

    def slow(name):
        cold = {"T": [0, -5, -237.5, -300, 25], "RH": [0, -3, 50, 1e-30]}.get(name) if case.get("cold") else None
        value = rng.choice(cold) if cold else rng.uniform(20, 60)
        return NO_VALUE if name in AXES or rng.random() < 0.15 else struct.pack("<f", value)
    for _ in range(case.get("events", rng.randint(1, 6))):
        for _ in range(rng.randint(0, 3)):
            step += 2
            record(step / 1024 if exact else step / 1000 + rng.random() / 5000, [slow(name) for name in channels])
        count = case.get("samples", rng.randint(1, 12))
        for i in range(count):
            days = (step + 1) / 1024 + i / 2 ** 27 if exact else (step + 1) / 1000 + i * 0.0005 / 86400
            size = 4.5 if case.get("ties") and i % 4 else rng.choice([0, 1, 1, 2, 3, 5])
            record(days, [struct.pack("<f", size * rng.choice([1, -1, 0.5])) if name in AXES else
                          slow(name) if rng.random() < 0.2 else NO_VALUE for name in channels])
        record((step + 1.5) / 1024, [END_OF_EVENT if name in AXES else NO_VALUE for name in channels])
    return out


def header(rng):
    def value(name, code):
        if code == "s":
            return text(rng.choice(STRINGS))
        pool = {"d": DATES, "f": LEVELS, "H": [0, 1, 7, 128, 65535, rng.randrange(65536)]}[code]
        pool = {"rec_fast_rate": [0.001, 5e-5, 0.4, 3.0, 0.0, 1e-320, math.nan], "tb_meas_rate": [0.5, 60.0, 2.4999],
                "rec_startmode": range(6), "rec_stopmode": range(6)}.get(name, pool)
        return struct.pack("<" + code, rng.choice(pool))
    return b"".join(value(name, code) for name, code in HEADER)


def build(rng, case):
    channels = case.get("channels", rng.sample(ALL, rng.randint(5, len(ALL))) if rng.random() < 0.2 else
                        rng.sample([*AXES, *rng.sample(ALL[3:], 4)], 7))
    lists = [(6, b"".join(text(name.encode()) for name in names)) for names in (channels, case.get("second", []))]
    head = [(1, text(name)) for name in case.get("creators", [rng.choice(CREATORS).encode()])]
    head += [(2, struct.pack("<d", start)) for start in case.get("starts", [8000.25])]
    head += [(27, header(rng)) for _ in range(case.get("headers", 1))]
    rng.shuffle(head)

    def data(names):
        rows, size = records(rng, case, names), rng.randint(1, 20)
        return [(8, b"".join(rows[i:i + size])) for i in range(0, len(rows), size)]
    body = data(channels)
    body = body + [lists[0]] if case.get("late") else [lists[0]] + body
    body += [lists[1]] + data(case["second"]) if "second" in case else []
    blocks = [block for block in head + body if block[1]]
    k = rng.randrange(len(blocks)) if blocks else 0
    kind, own = blocks[k] if blocks else (0, b"")
    edited = {"rest": own + b"\1", "bad rest": own + struct.pack("<d", 40000) + b"\1", "longer": own + bytes(9),
              "shorten": own[:rng.randint(1, max(1, len(own) - 1))]}.get(case.get("blocks"), own)
    added = {"empty": [(kind, b"")], "unknown": [(rng.choice([0, 3, 7, 9, 28, 65535]), b"\xff" * rng.randint(1, 50))]}
    blocks[k:k + 1] = added.get(case.get("blocks"), []) + [(kind, edited)]
    magic = text(case.get("magic", b"HALVORNIC")) + b"\1\0\0\0"
    content = b"".join(struct.pack("<HH", kind, len(part)) + part for kind, part in [(0, magic), *blocks])
    content += bytes(rng.randint(1, 3)) if case.get("blocks") == "tail" else b""
    stream = zlib.compress(content, case.get("pack", rng.choice([0, 1, 1, 9])))
    at = rng.randrange(len(stream))
    return {"cut": stream[:at], "flip": stream[:at] + bytes([stream[at] ^ 1 << rng.randrange(8)]) + stream[at + 1:],
            "adler": stream[:-1] + bytes([stream[-1] ^ 1]), "rubbish": stream + b"\x78\x01rubbish", "none": b"",
            "no zlib": b"HALVORNIC, but not packed"}.get(case.get("bytes"), stream)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("kshock")
    parser.add_argument("--recordings", nargs="+", default=[], metavar="FILE")
    parser.add_argument("--count", type=int, default=150, help="generated recordings; default 150")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--keep", metavar="DIR", help="folder that keeps the generated recordings")
    options = parser.parse_args()
    if absent := [path for path in options.recordings if not os.path.isfile(path)]:
        parser.error(f"no such recording: {absent}")
    failed = passed = 0
    with tempfile.TemporaryDirectory() as folder:
        folder = options.keep or folder
        os.makedirs(folder, exist_ok=True)
        jobs = [(path, None) for path in options.recordings + [os.path.join(folder, "missing.kshock"), folder]]
        for i in range(options.count):
            case = CASES[i % len(CASES)]
            path = os.path.join(folder, f"{i:04}.kshock")
            with open(path, "wb") as file:
                file.write(build(random.Random(f"{options.seed}/{i}"), case))
            jobs.append((path, 3 if i % 10 == 9 else None))
        for path, limit in jobs:
            found = check(options.kshock, path, limit)
            passed, failed = passed + (not found), failed + bool(found)
            if found:
                print(f"{path}: " + "; ".join(f"{at}: expected {want!r}, got {got!r}" for at, want, got in found[:5]))
    print(f"{passed} passed, {failed} failed")
    return 1 if failed or not passed else 0


if __name__ == "__main__":
    sys.exit(main())
