#!/usr/bin/env python3
"""Kills programs at random moments while they write: every file is then the old or the new one, and the next run leaves
nothing behind. Usage: check_kills.py KSHOCK WRITE_SETTINGS [KILLS], 200 unless given. One line per difference; exit 1 when
there is any.
"""
import os
import random
import shutil
import subprocess
import sys
import tempfile
import time

found = []


def files_in(folder):
    return {name: open(os.path.join(top, name), "rb").read() for top, _, names in os.walk(folder) for name in names}


def is_unfinished(name):
    return name.startswith(".shockscope-") or name.startswith("lxw")


def check_kills(what, folder, before, command, kills):
    """`before` and `command` write files of the same names, or names of their own, into `folder`."""
    subprocess.run(before, check=True, capture_output=True)
    old = files_in(folder)
    shutil.copytree(folder, folder + ".old")
    started = time.monotonic()
    subprocess.run(command, check=True, capture_output=True)
    duration = time.monotonic() - started
    new = files_in(folder)
    killed = 0
    for number in range(kills):
        shutil.rmtree(folder)
        shutil.copytree(folder + ".old", folder)
        running = subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        time.sleep(random.uniform(0, duration * 1.1))
        running.kill()
        killed += running.wait() != 0
        for name, data in files_in(folder).items():
            if not is_unfinished(name) and data not in (old.get(name), new.get(name)):
                found.append(f"{what}, kill {number}: {name} is neither the old file nor the new one")
        ended = subprocess.run(command, capture_output=True, check=False)
        now = files_in(folder)
        if ended.returncode != 0 or any(map(is_unfinished, now)) or not new.items() <= now.items():
            found.append(f"{what}, after kill {number}: status {ended.returncode}, {sorted(set(now) - set(new))} left")
    shutil.rmtree(folder + ".old")
    print(f"{what}: {killed} of {kills} runs were killed before their end")


def main():
    kshock, write_settings, *count = sys.argv[1:]
    kills = int(count[0]) if count else 200
    random.seed(1)
    with tempfile.TemporaryDirectory(dir="/dev/shm" if os.path.isdir("/dev/shm") else None) as top:
        recording, other = os.path.join(top, "mission.kshock"), os.path.join(top, "other.kshock")
        subprocess.run([kshock, "demo", recording, "--events", "40", "--samples", "200", "--sensors", "50"], check=True)
        subprocess.run([kshock, "demo", other, "--events", "40", "--samples", "200", "--sensors", "50", "--seed", "2"], check=True)
        out = os.path.join(top, "out")
        commands = {what: ["export", "{}", "--to", out, what] for what in ["events-csv", "shocks-csv", "events-xlsx"]}
        commands["cut"] = ["cut", "{}", os.path.join(out, "cut"), "--to", "2099-01-01"]
        commands["settings"] = None
        for what, arguments in commands.items():
            os.mkdir(out)
            before, command = ([kshock, *(file if word == "{}" else word for word in arguments)]
                               for file in (other, recording)) if arguments else (
                                   [write_settings, out, "settings", company] for company in ("Old", "New"))
            check_kills(what, out, before, command, -(-kills // len(commands)))
            shutil.rmtree(out)
    for line in found:
        print(line)
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
