#!/usr/bin/env python3
"""Works out what `kshock filter`, `spectrum`, `srs` and `pulse` have to print for events of the recordings and of a generated
one of odd shocks, and compares.

Reads the recordings as check_dump.py does and sums the transform's definition line by line. One line per difference; exit 1
when there is any.
"""
import argparse
import bisect
import cmath
import itertools
import math
import os
import random
import statistics
import struct
import subprocess
import sys
import tempfile
import zlib

sys.dont_write_bytecode = True  # no __pycache__ among the sources
from check_dump import END_OF_EVENT, HEADER, Recording, text  # noqa: E402

WINDOWS = {  # by the place in 0 … 1
    "Rectangle": lambda t: 1, "Triangle": lambda t: min(2 * t, 2 - 2 * t), "Cos2": lambda t: math.sin(math.pi * t) ** 2,
    "Gauss": lambda t: math.exp(-12.5 * (t - 0.5) ** 2), "Hamming": lambda t: 0.08 + 0.92 * math.sin(math.pi * t) ** 2,
    "Blackman": lambda t: cosines(t, 0.42, 0.5, 0.08), "BlkmHarris": lambda t: cosines(t, 0.35875, 0.48829, 0.14128, 0.01168),
    "BlkmNuttall": lambda t: cosines(t, 0.3635819, 0.4891775, 0.1365995, 0.0106411),
    "Tukey": lambda t: math.sin(2 * math.pi * min(t, 1 - t, 0.25)) ** 2}


def cosines(t, *parts):
    return sum((-1) ** i * a * math.cos(2 * math.pi * i * t) for i, a in enumerate(parts))


def spectrum_size(count):
    return next((size for size, most in ((128, 150), (256, 256), (512, 512), (1024, 1024), (2048, 2048), (4096, 4096))
                 if count <= most), 8192)


def line(values, k, size):
    """Spectral line k, from 0."""
    turns = [cmath.exp(-2j * math.pi * i / size) for i in range(size)]
    return sum(value * turns[i * k % size] for i, value in enumerate(values))


def expected_filter(samples):
    size = spectrum_size(len(samples))
    samples = samples[:size]
    axes = []
    for axis in zip(*(sample[2] for sample in samples)):
        mean, slow = line(axis, 0, size).real / size, line(axis, 1, size) / size
        axes.append([value - mean - (slow * cmath.exp(2j * math.pi * i / size)).real for i, value in enumerate(axis)])
    return [(time, x, y, z, math.hypot(x, y, z)) for time, x, y, z in
            zip((sample[0] - samples[0][0] for sample in samples), *axes)]


def fitted(times):
    """The grid's begin and step, each sample's place on it, and the distance of the farthest in steps."""
    places = list(range(len(times)))
    while True:
        step, start = statistics.linear_regression(places, times)
        again = [0]
        for a, b in zip(times, times[1:]):
            again.append(again[-1] + max(1, round((b - a) / step)))
        if again == places:
            return start, step, places, max(abs(t - start - n * step) for n, t in zip(places, times)) / step
        places = again


def on_grid(samples):
    """The step, three axes of even samples, and what has to be said about them."""
    times = [sample[0] - samples[0][0] for sample in samples]
    start, step, places, farthest = fitted(times)
    standing = {} if farthest > 0.5 else {n: sample[2] for n, sample in zip(places, samples)}
    points = []
    for n in range(places[-1] + 1):
        time = start + n * step
        after = min(max(bisect.bisect_right(times, time), 1), len(times) - 1)
        part = min(max((time - times[after - 1]) / (times[after] - times[after - 1]), 0), 1)
        points.append(standing.get(n) or [a + part * (b - a) for a, b in zip(samples[after - 1][2], samples[after][2])])
    missing = len(points) - len(samples)
    said = [f"off the grid by up to {farthest:.2f}".rstrip("0")] if farthest > 0.01 else []
    said += [f"interpolated, {missing} "] if farthest > 0.5 else [f"{missing} missing"] if missing else []
    return step, list(zip(*points)), said


def expected_lines(grid, kind, window, chosen):
    """The chosen lines."""
    step, axes, _ = grid
    size = spectrum_size(len(axes[0]))
    axes = [axis[:size] for axis in axes]
    rate = 1000 / step
    weights = [WINDOWS[window](i / len(axes[0])) for i in range(len(axes[0]))]
    axes = [[w * value for w, value in zip(weights, axis)] for axis in axes]
    gain, noise = sum(weights), sum(w * w for w in weights)
    out = []
    for k in chosen:
        sides = 1 if k in (0, size // 2) else 2
        # Of each axis the amplitude of the sine that is there; all else follows from it.
        amplitudes = [sides * abs(line(axis, k, size)) / gain for axis in axes]
        amplitudes.append(math.hypot(*amplitudes))
        power = [a * a / sides for a in amplitudes]
        out.append((k * rate / size, *{
            "Amplitude": amplitudes, "Power": power, "PSD": [p / (rate * noise / gain ** 2) for p in power],
            "Decibel": [max(20 * math.log10(a), -200) if a else -200 for a in amplitudes]}[kind]))
    return out


def oscillated(axis, hertz, quality, seconds):
    """Displacement and absolute acceleration at each sample, by the exponential of the matrix that moves displacement,
    velocity, base acceleration and its slope by one step."""
    omega = 2 * math.pi * hertz
    matrix = [[0, 1, 0, 0], [-omega ** 2, -omega / quality, -1, 0], [0, 0, 0, 1], [0] * 4]
    step = term = [[float(i == j) for j in range(4)] for i in range(4)]
    for k in range(1, 40):
        term = [[sum(row[m] * matrix[m][j] for m in range(4)) * seconds / k for j in range(4)] for row in term]
        step = [[a + b for a, b in zip(*rows)] for rows in zip(step, term)]
    state, base, out = (0.0, 0.0), 0.0, []
    for value in axis:
        moved = (*state, base, (value - base) / seconds)
        state = [sum(a * b for a, b in zip(row, moved)) for row in step[:2]]
        base = value
        out.append((state[0], -omega ** 2 * state[0] - omega / quality * state[1]))
    return out


def means_before(samples, level):
    before = next((i for i, sample in enumerate(samples) if math.hypot(*sample[2]) >= level), 0)
    return [statistics.fmean(axis) if before >= 8 else 0 for axis in zip(*(s[2] for s in samples[:max(before, 1)]))]


def expected_srs(samples, level, hertz, quality, signs):
    """Acceleration lines of the chosen frequencies."""
    step, axes, _ = on_grid(samples)
    means = means_before(samples, level)
    rate, out = 1000 / step, []
    zeros = [0.0] * math.ceil(1.5 * rate / min(hertz))
    for one in hertz:
        responses = [[a for _, a in oscillated([value - mean for value in axis] + zeros, one, quality, step / 1000)]
                     for axis, mean in zip(axes, means)]
        out.append((one, *(max(0.0, *(sign * a for a in response for sign in signs)) for response in responses),
                    max(math.hypot(*three) for three in zip(*responses)), "valid" if one <= rate / 10 else "rough"))
    return out


def check_srs(kshock, path, event, samples, level):
    times = [sample[0] for sample in samples]
    rate = 1000 * (len(times) - 1) / (times[-1] - times[0])
    hertz = [rate / 200, rate / 11, rate / 5]
    sign, signs = (("maximax", (1, -1)), ("positive", (1,)), ("negative", (-1,)))[event % 3]
    status, _, rows, _ = printed(kshock, "srs", path, "--event", str(event), "--q", "25", "--sign", sign,
                                 "--frequencies", ",".join(map(repr, hertz)))
    want = expected_srs(samples, level, hertz, 25, signs)
    if status or [row[-1:] for row in rows] != [[row[-1]] for row in want]:
        return [f"srs: status {status}, {rows}"]
    return ["srs: " + text for text in differences([row[:-1] for row in want], [row[:-1] for row in rows])]


def is_flat(values):
    """Three neighbours at the end of a side that comes near the largest value of all axes."""
    floor = 0.9 * max(abs(value) for axis in values for value in axis)
    sides = [[sign * value for value in axis] for axis in values for sign in (1, -1)]
    ends = [(max(side), zip(side, side[1:], side[2:])) for side in sides]
    return any(end > floor and any(a == b == c == end for a, b, c in threes) for end, threes in ends)


def nearest_side(vector):
    sides = [side for side in itertools.product((-1, 0, 1), repeat=3) if any(side)]
    return max(sides, key=lambda side: sum(a * b for a, b in zip(side, vector)) / math.hypot(*side))


def side_text(side):
    return " ".join(f"{axis}-{'pos' if sign > 0 else 'neg'}" for axis, sign in zip("XYZ", side) if sign)


def expected_pulse(samples, level):
    """The figures of the pulse by the titles of the columns, or how the reason for none begins."""
    times = [sample[0] for sample in samples]
    if len(samples) < 2:
        return "There are fewer than two samples"
    if any(b <= a for a, b in zip(times, times[1:])):
        return "The times of the samples repeat"
    step, recorded, _ = on_grid(samples)
    if 10 * (len(recorded[0]) - len(samples)) > len(recorded[0]):
        return "The times leave more than a tenth"
    if not all(math.isfinite(value) for sample in samples for value in sample[2]):
        return "A sample is no finite number"
    axes = [[value - mean for value in axis] for axis, mean in zip(recorded, means_before(samples, level))]
    sizes = [math.hypot(*point) for point in zip(*axes)]
    peak = max(range(len(sizes)), key=sizes.__getitem__)

    def run_above(part):
        first = last = peak
        while first > 0 and sizes[first - 1] >= part * sizes[peak]:
            first -= 1
        while last + 1 < len(sizes) and sizes[last + 1] >= part * sizes[peak]:
            last += 1
        return first, last

    def duration(part):
        (first, last), height = run_above(part), part * sizes[peak]
        before = (sizes[first] - height) / (sizes[first] - sizes[first - 1]) if first else 0
        after = (sizes[last] - height) / (sizes[last] - sizes[last + 1]) if last + 1 < len(sizes) else 0
        return step * (last - first + before + after)
    first, last = run_above(0.1)
    if last - first < 4:
        return "Fewer than 5 samples"
    inside = [sample[2] for sample, n in zip(samples, fitted([t - times[0] for t in times])[2]) if first <= n <= last]
    if is_flat(list(zip(*inside))):
        return "The pulse is clipped"
    flanked = slice(max(first - 1, 0), last + 2)
    velocity = [9.80665 * step / 1000 * sum((a + b) / 2 for a, b in itertools.pairwise(axis[flanked])) for axis in axes]
    change, side = math.hypot(*velocity), nearest_side(velocity)
    clear = side == nearest_side([axis[peak] for axis in axes])
    return {"Delta-v X (m/s)": velocity[0], "Delta-v Y (m/s)": velocity[1], "Delta-v Z (m/s)": velocity[2],
            "Delta-v (m/s)": change, "Duration 10 % (ms)": duration(0.1), "Duration 1/3 (ms)": duration(1 / 3),
            "Half-sine (ms)": 1000 * math.pi * change / (2 * sizes[peak] * 9.80665),
            "Direction": side_text(side) if clear else "unclear",
            "Hit side": side_text([-sign for sign in side]) if clear else "unclear",
            "Drop min (mm)": 1000 * change ** 2 / (8 * 9.80665), "Drop max (mm)": 1000 * change ** 2 / (2 * 9.80665)}


def expected_fall(samples):
    """mm, and what it is; or how the reason for none begins."""
    step, axes, _ = on_grid(samples)
    sizes = [math.hypot(*point) for point in zip(*axes)]
    rest = sizes[-max(8, len(sizes) // 10):]
    if len(sizes) < 8 or not all(0.7 <= size <= 1.3 for size in rest):
        return "It cannot tell rest from fall"
    runs, begin = [(0, 0)], 0
    for below, run in itertools.groupby(sizes[:sizes.index(max(sizes))], lambda size: size < 0.3):
        count = len(list(run))
        runs += [(count, begin)] if below else []
        begin += count
    count, begin = max(runs)  # of equal ones the last
    if count < 5:
        return "There is no free fall"
    seconds = step / 1000 * (count if begin else count - 1)
    return 1000 * 9.80665 * seconds ** 2 / 2, "measured" if begin else "least"


def check_pulses(kshock, path, recording):
    """Every event has a pulse or a reason."""
    level = recording.mission["adxl_level_on"]
    status, titles, rows, _ = printed(kshock, "pulse", path)
    found = [] if status == 0 and len(rows) == len(recording.events) else [f"pulse: status {status}, {len(rows)} rows"]
    for samples, cells in zip(recording.events, rows):
        row, want = dict(zip(titles[0], cells)), expected_pulse(samples, level)
        if isinstance(want, str):
            if not (row["Reason"].startswith(want) and row["Delta-v (m/s)"] == row["Direction"] == row["Drop min (mm)"] == ""):
                found.append(f"pulse: expected {want}, got {row}")
        else:
            largest = want["Delta-v (m/s)"]
            found += [f"pulse of event {row['ID']}: {title} {value}, got {row[title]}" for title, value in want.items()
                      if not (row[title] == value if isinstance(value, str) else
                              math.isclose(row[title], value, rel_tol=1e-9, abs_tol=1e-9 * largest))]
        if isinstance(want, str) and not want.startswith(("Fewer", "The pulse")):
            continue
        fall = expected_fall(samples)
        if isinstance(fall, str):
            found += [] if fall in row["Reason"] and row["Fall is"] == "" else [f"fall: expected {fall}, got {row}"]
        elif row["Fall is"] != fall[1] or not math.isclose(row["Fall (mm)"], fall[0], rel_tol=1e-9):
            found.append(f"fall: expected {fall}, got {row}")
    return found


def odd_shocks(path, count=60):
    """Shocks of random shape, rate and direction: uneven times, missing samples, none before, none at rest, clipped ones,
    a clock that jumps, times that repeat, samples that are no numbers."""
    rng, records = random.Random(17), []
    for event in range(count):
        rate, kind = rng.choice([200, 500, 1600]), event % 12
        before, fall = (0, rng.choice([0, 60])) if kind == 3 else (rng.randint(9, 40), rng.choice([0, 0, 3, 5, 60]))
        length, height = rng.randint(2, 40), rng.uniform(5, 200)
        toward = [rng.choice([-1, -0.3, 0, 0.5, 1]) for _ in range(3)]
        toward[rng.randrange(3)] = 1
        skew, shape, days = rng.uniform(0.3, 3), rng.choice([1, 2]), 1 + event / 100
        off = {1: 0.02, 2: 0.4}.get(kind, 0)
        for i in range(1 if kind == 4 else before + fall + length + 60):
            if kind in (5, 6) and i and rng.random() < (0.03 if kind == 5 else 0.4):
                continue
            hit = i - before - fall
            g = height * math.sin(math.pi * ((hit + 1) / (length + 1)) ** skew) ** shape if 0 <= hit < length else 0
            axes = [g * part + rng.uniform(-0.02, 0.02) for part in toward]
            axes[2] += 0.05 if before <= i < before + fall or kind == 7 else 1
            if kind == 1 and hit == 1:
                axes[event % 3] -= 2 * height
            if kind == 8:
                axes = [max(-0.6 * height, min(0.6 * height, value)) for value in axes]
            if kind == 9 and i == before:
                axes[1] = rng.choice([math.inf, -math.inf])
            late = 0.45 * min(max(i - 15, 0), 3) if kind == 11 else 0
            time = (i + late + rng.uniform(-off, off) / 2 - (kind == 10 and i == 20)) / rate
            records.append(struct.pack("<d3f", days + time / 86400, *axes))
        records.append(struct.pack("<d", days + 0.001) + 3 * END_OF_EVENT)
    header = b"".join(text(b"x") if code == "s" else struct.pack("<" + code, 3 if code == "f" else 0) for _, code in HEADER)
    blocks = [(0, text(b"HALVORNIC") + b"\1\0\0\0"), (1, text(b"korvex165_reader.exe")), (2, struct.pack("<d", 8000.25)),
              (27, header), (6, b"".join(text(name) for name in (b"ACC x", b"ACC y", b"ACC z")))]
    blocks += [(8, b"".join(records[i:i + 500])) for i in range(0, len(records), 500)]
    with open(path, "wb") as file:
        file.write(zlib.compress(b"".join(struct.pack("<HH", kind, len(part)) + part for kind, part in blocks)))


def number(cell):
    try:
        return float(cell)
    except ValueError:
        return cell


def printed(kshock, *arguments):
    """Status, titles, rows and complaints."""
    run = subprocess.run([kshock, *arguments], capture_output=True, timeout=60, check=False)
    rows = run.stdout.decode("utf-8").split("\r\n")[:-1]
    rows = [row.removeprefix('"').removesuffix('",').split('","') for row in rows]
    return run.returncode, rows[:1], [[number(cell) for cell in row] for row in rows[1:]], run.stderr.decode("utf-8")


def differences(want, got):
    if len(want) != len(got):
        return [f"expected {len(want)} rows, got {len(got)}"]
    largest = max((abs(value) for row in want for value in row[1:]), default=0)
    return [f"row {i}: expected {a}, got {b}" for i, (a, b) in enumerate(zip(want, got))
            if not all(math.isclose(p, q, rel_tol=1e-9, abs_tol=1e-12 * largest) for p, q in zip(a, b))][:3]


def check_event(kshock, path, event, samples):
    found = []
    status, titles, rows, _ = printed(kshock, "filter", path, "--event", str(event))
    if status or titles != [["Time (msec)", "X (g)", "Y (g)", "Z (g)", "Total (g)"]]:
        found.append(f"filter: status {status}, titles {titles}")
    found += differences(expected_filter(samples), rows)
    grid = on_grid(samples[:spectrum_size(len(samples))])
    half = spectrum_size(len(grid[1][0])) // 2
    chosen = sorted({0, 1, 2, 3, half - 1, half, *range(event, half, half // 8)})
    for i, window in enumerate(WINDOWS):
        kind = ("Amplitude", "Power", "PSD", "Decibel")[(event + i) % 4]
        want = expected_lines(grid, kind, window, chosen)
        status, titles, rows, complaints = printed(kshock, "spectrum", path, "--event", str(event), "--type", kind,
                                                   "--window", window)
        if not all(text in complaints for text in grid[2]) or (complaints and not grid[2]):
            found.append(f"spectrum: expected {grid[2]}, got {complaints}")
        if status or titles != [["HZ", "X", "Y", "Z", "Total"]] or len(rows) != half + 1:
            found.append(f"spectrum: status {status}, titles {titles}, {len(rows)} rows")
        else:
            found += [f"{kind} by {window}: {text}" for text in differences(want, [rows[k] for k in chosen])]
    return found


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("kshock")
    parser.add_argument("recordings", nargs="+")
    options = parser.parse_args()
    failed = passed = 0
    with tempfile.TemporaryDirectory() as folder:
        odd_shocks(path := os.path.join(folder, "odd.kshock"))
        recording = Recording(path)
        for found in (problems := check_pulses(options.kshock, path, recording)):
            print(f"odd shocks: {found}")
        for event, samples in enumerate(recording.events):
            if not isinstance(expected_pulse(samples, 3), dict):
                continue
            for found in check_srs(options.kshock, path, event, samples, 3):
                problems.append(print(f"odd shocks, event {event}: {found}"))
        failed += bool(problems)
    for path in options.recordings:
        recording = Recording(path)
        events, level = recording.events, recording.mission["adxl_level_on"]
        found = check_pulses(options.kshock, path, recording)
        complaints = printed(options.kshock, "srs", path, "--event", "all")[3]
        if "left out" in complaints:
            found.append(f"srs: every event has a spectrum: {complaints}")
        for problem in found:
            print(f"{path}: {problem}")
        failed += bool(found)
        for event in range(0, len(events), max(1, len(events) // 12)):
            found = check_event(options.kshock, path, event, events[event])
            if len(events[event]) < 2000:
                found += check_srs(options.kshock, path, event, events[event], level)
            passed, failed = passed + (not found), failed + bool(found)
            for text in found:
                print(f"{path}, event {event}: {text}")
    print(f"{passed} passed, {failed} failed")
    return 1 if failed or not passed else 0


if __name__ == "__main__":
    sys.exit(main())
