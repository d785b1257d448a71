#!/usr/bin/env python3
"""Files that fail to be read after some of them, and disks that do not take what is synced: what `kshock` says, and what
it keeps. The shared library that makes calls fail is given. One line per difference; exit 1 when there is any.
"""
import json
import os
import subprocess
import sys
import tempfile

REASON = "Input/output error"
SENTENCE = f"The file could not be read to its end: {REASON}"
found = []


def expect(what, want, got):
    if want != got:
        found.append(f"{what}: expected {want!r:.200}, got {got!r:.200}")


def run(kshock, library, after, *arguments):
    faults = {**os.environ, "LD_PRELOAD": library, "READ_FAULT_AFTER": str(after)}
    return subprocess.run([kshock, *arguments], capture_output=True, text=True, timeout=60, check=False, env=faults)


def files_in(folder):
    return {name: open(os.path.join(top, name), "rb").read() for top, _, names in os.walk(folder) for name in names}


def check_sync(kshock, library, folder):
    """What the disk does not take replaces nothing and leaves nothing."""
    path, out = os.path.join(folder, "small.kshock"), os.path.join(folder, "out")
    subprocess.run([kshock, "demo", path, "--events", "3"], check=True)
    os.mkdir(out)
    for what in ["shocks-csv", "shocks-xlsx", "events-csv"]:
        subprocess.run([kshock, "export", path, "--to", out, what, "--date-format", "yyyy"], check=True)
        before = files_in(out)
        os.environ["SYNC_FAULT"] = "1"
        failed = run(kshock, library, 0, "export", path, "--to", out, what)
        del os.environ["SYNC_FAULT"]
        expect(f"status of {what} without a sync", 4, failed.returncode)
        if REASON not in failed.stderr:
            found.append(f"{what}: {failed.stderr!r} does not say why")
        expect(f"files of {what} without a sync", before, files_in(out))


def main():
    kshock, library = sys.argv[1:]
    with tempfile.TemporaryDirectory() as folder:
        path = os.path.join(folder, "mission.failing")
        subprocess.run([kshock, "demo", path, "--events", "200"], check=True)
        size = os.path.getsize(path)
        whole = json.loads(run(kshock, library, size + 1, "dump", path).stdout)
        expect("without a fault", ("", False), (whole["readError"], whole["damaged"]))

        half = run(kshock, library, size // 2, "dump", path)
        dump = json.loads(half.stdout)
        expect("status", 5, half.returncode)
        expect("complaint", f"kshock: {path}: {SENTENCE}\n", half.stderr)
        expect("reason and damage", (REASON, False), (dump["readError"], dump["damaged"]))
        events = len(dump["events"])
        if not 60 < events < 140:
            found.append(f"{events} of 200 events were kept of half a file")
        expect("events before the fault", whole["events"][: events - 1], dump["events"][: events - 1])
        expect("message", {"wParam": 1, "lParam": 0}, dump["message"])
        blocks = run(kshock, library, size // 2, "blocks", path)
        expect("blocks", (5, f"kshock: {path}: {SENTENCE}\n"), (blocks.returncode, blocks.stderr))

        first = run(kshock, library, 0, "info", path)
        expect("in the first block", (3, f"kshock: {path}: The file cannot be read: {REASON}.\n"),
               (first.returncode, first.stderr))
        check_sync(kshock, library, folder)
    for line in found:
        print(line)
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
