#!/usr/bin/env python3
"""Reads and writes that fail: what the programs say, and what they keep. Every call that takes part in writing a file
fails in its turn; the old file or the new one is then there whole, and nothing else. One line per difference; exit 1 when
there is any. Usage: check_file_faults.py KSHOCK FAULTS WRITE_SETTINGS [SHOCKSCOPE WRITE_IN_WINDOW]
"""
import json
import os
import shutil
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


CALLS = ["open", "write", "fsync", "rename", "lseek", "close", "mmap"]


def each_call():
    """1, 2, 3 …, and ever larger steps for the thousands of writes of a workbook."""
    number = 1
    while True:
        yield number
        number += 1 + number // 20


def wrong_files(old, now, new):
    """What a write that ended in any way must not leave. `new` is nothing where each run writes something else."""
    for name in old.keys() - now.keys():
        yield f"{name} is lost"
    for name, data in now.items():
        if name not in old and name not in (new or ()):
            if not name.endswith("-kept.ini"):  # a list of documents that cannot be read is kept so
                yield f"{name} is left"
        elif new is not None and data not in (old.get(name), new.get(name)):
            yield f"{name} is neither the old file nor the new one"
        elif new is None and len(data) < len(old.get(name, b"")) // 2:
            yield f"{name} is cut short"


def check_faults(library, folder, what, command, same=True):
    """`command` writes in `folder`, always the same if nothing fails, or with `same` False something else each time."""
    fresh, mark = folder + ".fresh", folder + ".mark"
    shutil.copytree(folder, fresh)
    old = files_in(folder)
    subprocess.run(command, check=True, capture_output=True)
    new = files_in(folder) if same else None
    for call in CALLS:
        for number in each_call():
            shutil.rmtree(folder)
            shutil.copytree(fresh, folder)
            faults = {"LD_PRELOAD": library, "FAULT": f"{call}:{number}", "FAULT_FOLDER": folder, "FAULT_MARK": mark}
            ended = subprocess.run(command, capture_output=True, text=True, timeout=60, check=False,
                                   env={**os.environ, **faults})
            if not os.path.exists(mark):
                if number == 1 and call not in ("lseek", "mmap"):
                    found.append(f"{what}: no {call} was made to fail")
                break
            os.remove(mark)
            wrong = list(wrong_files(old, files_in(folder), new))
            if ended.returncode not in (0, 4) or ended.returncode == 4 and not ended.stderr.strip():
                wrong.append(f"status {ended.returncode}, {ended.stderr!r:.300}")
            if ended.returncode == 0 and same and files_in(folder) != new:
                wrong.append("status 0, but not all is written")
            found.extend(f"{what}, {call} {number}: {line}" for line in wrong)
    shutil.rmtree(fresh)


def check_every_call(kshock, library, write_settings, top):
    """All that the programs write, over files of an earlier run."""
    recording, other = os.path.join(top, "mission.kshock"), os.path.join(top, "other.kshock")
    subprocess.run([kshock, "demo", recording, "--events", "3", "--sensors", "50"], check=True)
    subprocess.run([kshock, "demo", other, "--events", "4", "--sensors", "60", "--seed", "2"], check=True)
    folder = os.path.join(top, "written")
    os.mkdir(folder)
    shutil.copy(recording, folder)
    for what in ["settings", "recents", "report", "limits", "notes"]:
        subprocess.run([write_settings, folder, what], check=True)
        check_faults(library, folder, what, [write_settings, folder, what], same=False)
    out = os.path.join(folder, "out")
    commands = [(["export", recording, "--to", folder, what], ["export", other, "--to", folder, what])
                for what in ["events-csv", "peaks-csv", "shocks-csv", "events-xlsx", "shocks-xlsx"]]
    commands += [(["demo", out, "--events", "2"], ["demo", out, "--events", "4"]),
                 (["cut", recording, out, "--to", "2099-01-01"], ["cut", other, out, "--to", "2099-01-01"])]
    commands += [(["fleet", recording, "--format", kind, "--to", f"{out}.{kind}"],
                  ["fleet", recording, other, "--format", kind, "--to", f"{out}.{kind}"])
                 for kind in ["csv", "jsonl", "sqlite"]]
    for before, arguments in commands:
        shutil.rmtree(folder)
        os.mkdir(folder)
        subprocess.run([kshock, *before], check=True, capture_output=True)
        # The tables of a fleet say when a recording was read.
        check_faults(library, folder, " ".join(arguments), [kshock, *arguments], same=arguments[0] != "fleet")


def check_window(library, shockscope, write_in_window, top):
    os.environ.update(HOME=top, XDG_CONFIG_HOME=top, QT_QPA_PLATFORM="offscreen")
    folder = os.path.join(top, "window")
    for before, what in [("png", "svg"), ("logo", "layout"), ("layout", "logo")]:
        os.mkdir(folder)
        file = os.path.join(folder, "file")
        subprocess.run([write_in_window, file, before], check=True)
        check_faults(library, folder, what, [write_in_window, file, what])
        shutil.rmtree(folder)
    recording, folder = os.path.join(top, "mission.kshock"), os.path.join(top, "report")
    os.mkdir(folder)
    command = [shockscope, "--report", os.path.join(folder, "report.pdf"), recording]
    subprocess.run(command, check=True, capture_output=True)
    check_faults(library, folder, "--report", command, same=False)  # it says when it was made


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
    kshock, library, write_settings, *window = sys.argv[1:]
    # In memory where there is such a folder: hundreds of syncs to a disk take minutes.
    with tempfile.TemporaryDirectory(dir="/dev/shm" if os.path.isdir("/dev/shm") else None) as folder:
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
        check_every_call(kshock, library, write_settings, folder)
        if window:
            check_window(library, *window, folder)
    for line in found:
        print(line)
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
