#!/usr/bin/env python3
"""`kshock`, and `shockscope --report` where it is given, in poor surroundings: little memory, small or full disks, no home
folder, other locales. They say what is wrong or do the same as ever. Usage: check_surroundings.py KSHOCK [SHOCKSCOPE]. One
line per difference; exit 1 when there is any.
"""
import os
import re
import resource
import shutil
import subprocess
import sys
import tempfile

found = []


def expect(what, want, got):
    if want != got:
        found.append(f"{what}: expected {want!r:.300}, got {got!r:.300}")


def run(command, limits=(), **environment):
    """With each limit (kind, value); an environment variable that is None is taken away."""
    def limit():
        for kind, value in limits:
            resource.setrlimit(kind, (value, value))
    all_of_it = {**os.environ, "QT_QPA_PLATFORM": "offscreen", **environment}
    return subprocess.run(command, capture_output=True, timeout=300, check=False, preexec_fn=limit,
                          env={name: value for name, value in all_of_it.items() if value is not None})


def files_in(folder):
    return {name: open(os.path.join(top, name), "rb").read() for top, _, names in os.walk(folder) for name in names}


def check_memory(kshock, top):
    large = os.path.join(top, "large.kshock")
    run([kshock, "demo", large, "--events", "2", "--samples", "4000000"])
    ended = run([kshock, "info", large], [(resource.RLIMIT_AS, 150 * 2**20)])
    expect("status with too little memory", 3, ended.returncode)
    if b"memory" not in ended.stderr:
        found.append(f"with too little memory: {ended.stderr!r:.300}")
    os.remove(large)


def check_disks(kshock, shockscope, recording, top):
    """A file that may not grow, and a disk that is full: status 4, and the files of before."""
    def check(what, folder, limits=()):
        commands = {kind: [kshock, "export", recording, "--to", folder, kind]
                    for kind in ["events-csv", "shocks-csv", "events-xlsx"]}
        commands["cut"] = [kshock, "cut", recording, os.path.join(folder, "cut"), "--to", "2099-01-01"]
        for program in shockscope:
            commands["the report"] = [program, "--report", os.path.join(folder, "report.pdf"), recording]
        for kind, command in commands.items():
            before = files_in(folder)
            ended = run(command, limits, HOME=top)
            expect(f"status of {kind} {what}", 4, ended.returncode)
            if not ended.stderr:
                found.append(f"{kind} {what}: no word")
            expect(f"files of {kind} {what}", sorted(before), sorted(files_in(folder)))

    folder = os.path.join(top, "small")
    os.mkdir(folder)
    check("with a file-size limit", folder, [(resource.RLIMIT_FSIZE, 2048)])
    full = os.path.join(top, "full")
    os.mkdir(full)
    if subprocess.run(["mount", "-t", "tmpfs", "-o", "size=4k", "none", full], capture_output=True,
                      check=False).returncode == 0:
        try:
            check("on a full disk", full)
            for program in shockscope:
                ended = run([program, "--report", os.path.join(full, "report.pdf"), recording], HOME=top)
                expect("status of the report on a full disk", 4, ended.returncode)
                if b"No space left on device" not in ended.stderr:
                    found.append(f"the report on a full disk: {ended.stderr!r:.300}")
                expect("files of the report on a full disk", {}, files_in(full))
        finally:
            subprocess.run(["umount", full], check=True)
    ended = run([kshock, "export", recording, "--to", folder, "events-xlsx"], [(resource.RLIMIT_NOFILE, 20)])
    expect("status of a workbook with few open files", 4, ended.returncode)


def check_homes(kshock, recording, top):
    usual = run([kshock, "info", recording], HOME=top)
    for home in [None, "", "/proc", "/nowhere", recording]:
        ended = run([kshock, "info", recording], HOME=home, XDG_CONFIG_HOME=None)
        expect(f"info with the home {home}", (usual.returncode, usual.stdout), (ended.returncode, ended.stdout))


def make_locales(folder):
    """de_DE and tr_TR in UTF-8, where the system can make them."""
    for name in ["de_DE", "tr_TR"]:
        made = shutil.which("localedef") and subprocess.run(
            ["localedef", "-i", name, "-f", "UTF-8", os.path.join(folder, name + ".UTF-8")], capture_output=True, check=False)
        if made and os.path.isdir(os.path.join(folder, name + ".UTF-8")):
            yield name + ".UTF-8"


def words(pdf):
    text = subprocess.run(["pdftotext", "-layout", pdf, "-"], capture_output=True, check=True).stdout.decode("utf-8")
    # All but the line that says when the report was made.
    return [line for line in map(str.strip, text.splitlines()) if not re.search(r"\d\d:\d\d:\d\d, ShockScope", line)]


def check_locales(kshock, shockscope, recording, top):
    folder = os.path.join(top, "locales")
    os.mkdir(folder)
    results = {}
    for name in ["C.UTF-8", *make_locales(folder)]:
        where = {"LOCPATH": folder if name != "C.UTF-8" else None, "LC_ALL": name, "HOME": top}
        out = os.path.join(top, "out-" + name)
        os.mkdir(out)
        run([kshock, "export", recording, "--to", out, "events-csv", "shocks-csv", "shocks-xlsx"], **where)
        results[name] = [files_in(out), run([kshock, "dump", recording], **where).stdout]
        for program in shockscope:
            pdf = os.path.join(top, name + ".pdf")
            expect(f"status of the report in {name}", 0, run([program, "--report", pdf, recording], **where).returncode)
            results[name].append(words(pdf))
    for name, result in results.items():
        if result != results["C.UTF-8"]:
            found.append(f"{name}: other numbers or texts than in C.UTF-8")
    print(f"locales: {', '.join(results)}")


def main():
    kshock, *shockscope = map(os.path.abspath, sys.argv[1:])
    with tempfile.TemporaryDirectory(dir="/dev/shm" if os.path.isdir("/dev/shm") else None) as top:
        recording = os.path.join(top, "mission.kshock")
        run([kshock, "demo", recording, "--events", "20", "--sensors", "200"])
        check_memory(kshock, top)
        check_disks(kshock, shockscope, recording, top)
        check_homes(kshock, recording, top)
        check_locales(kshock, shockscope, recording, top)
    for line in found:
        print(line)
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
