#!/usr/bin/env python3
"""Checks `kshock fleet` by other commands of kshock, by Python's SQLite, CSV and JSON readers, and by killing it; runs the
example queries of docs/fleet.md. Prints what is wrong; exit 1 when something is."""
import argparse
import contextlib
import csv
import json
import os
import random
import re
import shutil
import signal
import sqlite3
import subprocess
import sys
import tempfile
import time

TABLES = {"recording": "path", "event": "recording", "sensor": "recording"}
LEFT_OUT = {"analysed_at"}
FAILURES = []


def check(holds, what):
    if not holds:
        FAILURES.append(what)
        print("FAILED:", what)


def run(*words, status=0, **more):
    done = subprocess.run([str(word) for word in words], capture_output=True, text=True, timeout=300, **more)
    check(done.returncode == status, f"{words[1:4]} ended with {done.returncode}: {done.stderr}")
    return done.stdout


def rows(out):
    """Every row of the three tables, without what differs from run to run."""
    database = sqlite3.connect(out)
    database.row_factory = sqlite3.Row
    check(database.execute("PRAGMA integrity_check").fetchone()[0] == "ok", f"{out} is damaged")
    return {table: [{key: row[key] for key in row.keys() if key not in LEFT_OUT}
                    for row in database.execute(f"SELECT * FROM {table} ORDER BY {path}, rowid")]
            for table, path in TABLES.items()}


def make_recordings(kshock, folder, count):
    os.makedirs(folder)
    for seed in range(count):
        run(kshock, "demo", f"{folder}/{seed:03}.kshock", "--events", 12, "--sensors", 200, "--seed", seed)


def check_figures(kshock, folder, out):
    """The rows say what dump, pulse and info say."""
    path = f"{folder}/001.kshock"
    run(kshock, "fleet", folder, "--to", out, "--analysis")
    found = rows(out)
    recording = next(row for row in found["recording"] if row["path"] == path)
    dump = json.loads(run(kshock, "dump", path))
    events = dump["events"]
    check(recording["events"] == len(events) and recording["samples"] == sum(e["samples"] for e in events), "counts")
    peak = max(events, key=lambda event: event["Max"])
    check((recording["peak_g"], recording["peak_event"], recording["peak_axis"]) ==
          (sqlite3_single(peak["Max"]), peak["ID"], peak["MaxAxis"]), "peak")
    check(recording["tot_total_ms"] == sum(e["totTotal"] for e in events), "ToT is the sum over the events")
    check(recording["title"] == dump["mission"]["sTitle"] and recording["status"] == 0, "header")
    check(recording["sha256"] == run("sha256sum", path).split()[0], "checksum")
    pulses = list(csv.DictReader(run(kshock, "pulse", path).splitlines()))
    own = [row for row in found["event"] if row["recording"] == path]
    fields = [field["name"] if isinstance(field, dict) else field for field in dump["tables"]["events"]["fields"]]
    table = sorted((dict(zip(fields, row)) for row in dump["tables"]["events"]["rows"]), key=lambda row: row["ID"])
    for row, pulse, event, line in zip(own, pulses, events, table, strict=True):
        check(str(row["delta_v_m_s"] or "") == pulse["Delta-v (m/s)"], f"velocity change of event {row['event_id']}")
        check((row["reason"] or "") == pulse["Reason"] and (row["fall_is"] or "") == pulse["Fall is"], "reason and fall")
        check(row["tot_total_ms"] == event["totTotal"] and row["iot_max_g_ms"] == event["iotMax"], "metrics")
        for column, field in (("temperature_c", "Temp."), ("humidity_rh", "Humidity"), ("dew_point_c", "Dew Point")):
            check(row[column] == sqlite3_single(line[field]), f"{column} at event {row['event_id']}")
    largest = max((float(pulse["Delta-v (m/s)"] or 0) for pulse in pulses))
    check(recording["delta_v_max_m_s"] == largest, "largest velocity change")
    sensors = [row for row in found["sensor"] if row["recording"] == path]
    check([row["readings"] for row in sensors] == [sensor["samples"] for sensor in dump["sensors"]], "readings")
    check("above_limit" in recording and recording["above_limit"] is None and sensors[0]["above_limit_s"] is None,
          "nothing is judged without limits")


def sqlite3_single(value):
    """The double of a single that was printed as its shortest text."""
    import struct
    return struct.unpack("f", struct.pack("f", value))[0]


def check_limits(kshock, folder, out):
    limits = f"{out}.ini"
    with open(limits, "w") as file:
        file.write("[Profile]\nName=Glass\n[Alarm]\nAcc. Max=12\nTemp. Max=20\n[Allowed]\nTemp. Max=300 d\n")
    run(kshock, "fleet", folder, "--to", out, "--limits", limits)
    found = rows(out)
    for row in found["recording"]:
        above = sum(event["peak_g"] > 12 for event in found["event"] if event["recording"] == row["path"])
        check(row["above_limit"] == above and row["verdict"] == ("failed" if above else "passed"), "verdict")
    warm = [row for row in found["sensor"] if row["name"] == "Temperature"]
    check(all(0 < row["above_limit_s"] < 864000 and row["below_limit_s"] == 0 for row in warm), "time above the limit")


def check_ways(kshock, folder, out):
    """Jobs, shards, formats and second runs give the rows of one plain run."""
    run(kshock, "fleet", folder, "--to", out)
    plain = rows(out)
    run(kshock, "fleet", folder, "--to", f"{out}.jobs", "--jobs", 3)
    check(rows(f"{out}.jobs") == plain, "--jobs gives other rows")
    names = "".join(f"{folder}/{name}\0" for name in sorted(os.listdir(folder), reverse=True))
    for shard in (1, 2, 3):
        run(kshock, "fleet", "--files-from", "-", "-0", "--to", f"{out}.{shard}", "--shard", f"{shard}/3", input=names)
    run(kshock, "fleet", "--merge", *(f"{out}.{shard}" for shard in (1, 2, 3, 1)), "--to", f"{out}.merged")
    check(rows(f"{out}.merged") == plain, "merged shards give other rows")
    run(kshock, "fleet", "--merge", f"{out}.1", f"{out}.none", "--to", f"{out}.merged", status=3)
    check(rows(f"{out}.merged") == plain, "a part that is missing costs OUT")
    for form in ("csv", "jsonl"):
        text = f"{out}.{form}"
        run(kshock, "fleet", folder, "--to", text, "--format", form)
        check(run(kshock, "fleet", folder, "--to", text, "--format", form).endswith("as before, 0 read\n"), f"{form} again")
        run(kshock, "fleet", "--merge", text, "--to", f"{text}.sqlite")
        check(rows(f"{text}.sqlite") == plain, f"{form} does not read back the same")
        run(kshock, "fleet", folder, "--to", f"{out}.new.{form}")
        check(os.path.getsize(f"{out}.new.{form}") == os.path.getsize(text), f"a new .{form} is another format")
    with open(f"{out}.csv", newline="") as file:
        check([row["path"] for row in csv.DictReader(file)] == [row["path"] for row in plain["recording"]], "CSV")
    with open(f"{out}.jsonl") as file:
        check(sum(json.loads(line)["table"] == "event" for line in file) == len(plain["event"]), "JSON lines")
    changed = f"{folder}/002.kshock"
    run(kshock, "demo", changed, "--events", 3, "--seed", 99)
    os.remove(f"{folder}/003.kshock")
    count = len(plain["recording"])
    check(run(kshock, "fleet", folder, "--to", out) == f"{count - 1} recordings: {count - 2} as before, 1 read\n", "second run")
    again = rows(out)
    for table, path in TABLES.items():
        same = [row for row in plain[table] if not row[path].endswith(("002.kshock", "003.kshock"))]
        check([row for row in again[table] if row[path] != changed] == same, f"unchanged rows of {table}")
    check(sum(row["recording"] == changed for row in again["event"]) == 3, "the changed file is read again")
    check(" 0 as before" in run(kshock, "fleet", folder, "--to", out, "--analysis"), "other options read all files again")
    run(kshock, "fleet", folder, "--to", f"{out}.csv")
    with open(f"{out}-event.csv", newline="") as file:
        check(sum(1 for _ in csv.DictReader(file)) == len(again["event"]), "OUT does not keep its format")


def check_oddities(kshock, folder, out):
    odd = os.fsencode(f"{out}.odd")
    os.makedirs(odd + b"/sub")
    good = f"{folder}/000.kshock"
    for name in (b"line\nbreak.kshock", b"latin-\xe4.KSHOCK", b"-0.kshock", b"quo'te\".kshock", b"sub/\xf0\x9f\x93\xa6.kshock"):
        shutil.copy(good, odd + b"/" + name)
    with open(good, "rb") as file, open(odd + b"/cut.kshock", "wb") as cut:
        cut.write(file.read(20000))
    os.symlink("..", odd + b"/sub/up")
    os.symlink("self.kshock", odd + b"/self.kshock")
    os.mkfifo(odd + b"/pipe.kshock")
    os.mkdir(odd + b"/locked.kshock", 0)
    open(odd + b"/empty.kshock", "w").close()
    locked = {"locked.kshock": 3} if os.geteuid() else {}  # root reads every folder
    for jobs in (1, 2):
        result = f"{out}.odd{jobs}.sqlite"
        said = subprocess.run([kshock, "fleet", os.fsdecode(odd), "/no/such.kshock", "--to", result, "--jobs", str(jobs)],
                              capture_output=True, text=True, timeout=300)
        status = {os.path.basename(row["path"]): row["status"] for row in rows(result)["recording"]}
        check(status == {"line\nbreak.kshock": 0, "latin-\\xE4.KSHOCK": 0, "-0.kshock": 0, "quo'te\".kshock": 0,
                         "\U0001F4E6.kshock": 0, "cut.kshock": 5, "up": 3, "self.kshock": 3, "pipe.kshock": 3,
                         "empty.kshock": 1, "such.kshock": 3} | locked, f"odd files: {status}")
        unusable = sum(s in (1, 3) for s in status.values())
        check(said.returncode == 0 and f"{unusable} recordings cannot be read or shown" in said.stdout, said.stdout)
        check(all(row["reason"] for row in rows(result)["recording"] if row["status"]), "every status has a reason")
    shutil.copy(good, f"{out}.precious")
    run(kshock, "fleet", folder, "--to", f"{out}.precious", status=4)
    check(open(good, "rb").read() == open(f"{out}.precious", "rb").read(), "a file that is no table is never replaced")


def check_kills(kshock, folder, out):
    run(kshock, "fleet", f"{folder}/000.kshock", "--to", out)
    old, everything = rows(out), None
    for i in range(12):
        process = subprocess.Popen([kshock, "fleet", folder, "--to", out, "--jobs", str(1 + i % 2)], stdout=subprocess.DEVNULL)
        time.sleep(random.uniform(0, 0.25))
        process.send_signal(signal.SIGKILL)
        process.wait()
        now = rows(out)
        if now != old:
            check(everything is None or now == everything, "OUT is neither the old nor the new one")
            everything = now
            run(kshock, "fleet", f"{folder}/000.kshock", "--to", out)


def check_lost_processes(kshock, folder, out):
    """A process that is killed costs no row, and a file that never keeps still costs nothing else."""
    process = subprocess.Popen([kshock, "fleet", folder, "--to", out, "--jobs", "2"], stdout=subprocess.DEVNULL)
    killed = 0
    while process.poll() is None and killed < 3:
        for task in os.listdir(f"/proc/{process.pid}/task"):
            try:
                with open(f"/proc/{process.pid}/task/{task}/children") as file:
                    children = file.read().split()
            except OSError:
                continue
            for child in children:
                with contextlib.suppress(ProcessLookupError):
                    os.kill(int(child), signal.SIGKILL)
                    killed += 1
    check(process.wait() == 0 and killed > 0, "processes were killed")
    found = rows(out)["recording"]
    lost = [row for row in found if row["status"] == 3]
    check(len(found) == len(os.listdir(folder)), "every file has a row")
    check(len(lost) <= killed and all("ended early" in row["reason"] for row in lost), "lost files say so")
    restless = f"{folder}/999.kshock"
    run(kshock, "demo", restless, "--events", 300)
    writer = subprocess.Popen([sys.executable, "-c", "import sys\nwhile True:\n  open(sys.argv[1], 'ab').write(b'x')", restless])
    time.sleep(0.2)
    run(kshock, "fleet", folder, "--to", out)
    writer.kill()
    writer.wait()
    changed = [row["path"] for row in rows(out)["recording"] if row["status"] == 3]
    check(changed == [restless], f"the file that changes: {changed}")
    check("changed while" in rows(out)["recording"][-1]["reason"], "its reason")
    os.remove(restless)


def check_replaced_program(kshock, folder, out):
    """The file of a program that runs is replaced, as by an update; the processes that it starts are what it is."""
    program = f"{out}.kshock"
    shutil.copy(kshock, program)
    process = subprocess.Popen([program, "fleet", "--files-from", "-", "--to", out, "--jobs", "2"], stdin=subprocess.PIPE,
                               stdout=subprocess.DEVNULL, text=True)
    with open(f"{program}.new", "w") as file:
        file.write("#!/bin/sh\nexit 9\n")
    os.chmod(f"{program}.new", 0o755)
    os.replace(f"{program}.new", program)
    process.communicate("".join(f"{folder}/{name}\n" for name in os.listdir(folder)))
    check(process.returncode == 0 and all(row["status"] == 0 for row in rows(out)["recording"]), "a replaced program")


def check_queries(out, document):
    """The examples run, and each finds something in a table with analysis."""
    with open(document) as file:
        queries = re.findall(r"```sql\n(.*?)```", file.read(), re.DOTALL)
    check(len(queries) >= 3, "docs/fleet.md has queries")
    for query in queries:
        try:
            check(sqlite3.connect(out).execute(query).fetchall(), f"nothing found by\n{query}")
        except sqlite3.Error as error:
            check(False, f"{error}:\n{query}")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("kshock")
    parser.add_argument("document")
    args = parser.parse_args()
    with tempfile.TemporaryDirectory() as folder:
        os.environ["TMPDIR"] = folder  # for what killed runs leave
        make_recordings(args.kshock, f"{folder}/in", 12)
        check_figures(args.kshock, f"{folder}/in", f"{folder}/figures.sqlite")
        check_queries(f"{folder}/figures.sqlite", args.document)
        check_limits(args.kshock, f"{folder}/in", f"{folder}/limits.sqlite")
        check_kills(args.kshock, f"{folder}/in", f"{folder}/kills.sqlite")
        check_lost_processes(args.kshock, f"{folder}/in", f"{folder}/lost.sqlite")
        check_replaced_program(args.kshock, f"{folder}/in", f"{folder}/replaced.sqlite")
        check_oddities(args.kshock, f"{folder}/in", f"{folder}/odd.sqlite")
        check_ways(args.kshock, f"{folder}/in", f"{folder}/ways.sqlite")
    return bool(FAILURES)


if __name__ == "__main__":
    sys.exit(main())
