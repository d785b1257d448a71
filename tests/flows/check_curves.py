#!/usr/bin/env python3
"""Works out what `kshock filter`, `spectrum` and `srs` have to print for events of the recordings, and compares.

Reads the recordings as check_dump.py does and sums the transform's definition line by line. One line per difference; exit 1
when there is any.
"""
import argparse
import bisect
import cmath
import math
import statistics
import subprocess
import sys

sys.dont_write_bytecode = True  # no __pycache__ among the sources
from check_dump import Recording  # noqa: E402

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


def expected_srs(samples, level, hertz, quality, signs):
    """Acceleration lines of the chosen frequencies."""
    step, axes, _ = on_grid(samples)
    before = next((i for i, sample in enumerate(samples) if math.hypot(*sample[2]) >= level), 0)
    means = [statistics.fmean(axis) if before >= 8 else 0 for axis in zip(*(s[2] for s in samples[:max(before, 1)]))]
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


def check_pulses(kshock, path, count):
    """Every event has a pulse or a reason, and a response spectrum."""
    status, titles, rows, _ = printed(kshock, "pulse", path)
    figures = slice(titles[0].index("Delta-v (m/s)"), titles[0].index("Direction"))
    found = [] if status == 0 and len(rows) == count else [f"pulse: status {status}, {len(rows)} rows"]
    for row in rows:
        if not (row[-1] if row[figures][0] == "" else all(0 < value < 1e4 for value in row[figures])):
            found.append(f"pulse: {row}")
    complaints = printed(kshock, "srs", path, "--event", "all")[3]
    return found + ([f"srs: {complaints}"] if "left out" in complaints else [])


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
    for path in options.recordings:
        recording = Recording(path)
        events, level = recording.events, recording.mission["adxl_level_on"]
        for text in (found := check_pulses(options.kshock, path, len(events))):
            print(f"{path}: {text}")
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
