#!/usr/bin/env python3
"""Prints every include that the table in docs/architecture.md forbids, and every place outside src/platform that asks which
system it is built for; exit 1 if there is one. Run from the project's root. Benches, fuzz targets and tools may include
every folder; LIBRARIES and SYSTEMS list what else each of them may include."""
import re
import subprocess
import sys

LOGIC = ["base", "model", "analysis", "navigation", "export", "platform", "shell", "fleet"]
MAY = {
    "base": set(), "model": {"base"}, "analysis": {"base", "model"}, "navigation": {"base"},
    "export": {"base", "model", "analysis", "platform"}, "platform": {"base"}, "shell": set(LOGIC) - {"fleet"}, "fleet": set(LOGIC),
    "gui": set(LOGIC), "app": {"base", "platform", "shell", "gui"}, "cli": set(LOGIC),
}
SHARED_GUI = {"common": set(), "platform": {"common"}, "charts": {"common", "platform"}}
HARNESSES = ("bench/", "fuzz/", "tools/")
LIBRARIES = [  # header pattern, places that may include it
    (r"(Q[A-Z]\w*|Qt\w+/.*|q[a-z]\w*\.h)$", ("src/gui/", "src/app/", "tools/", "bench/uWindowBench", "bench/uChartBench", "fuzz/FuzzLayout")),
    (r"qcustomplot\.h$", ("src/gui/charts/",)),
    (r"zlib\.h$", ("src/model/uDataFile1V0Zip", "src/model/uInflate_zlib", "bench/uBenchMain", "fuzz/")),
    (r"isa-l/", ("src/model/uInflate_isal",)),
    (r"minizip/", ("src/export/uPackage",)),
    (r"xlsxwriter", ("src/export/uWorkbook", "bench/uExportBenches")),
    (r"SimpleIni\.h$", ("src/base/uIniFile",)),
    (r"CLI/", ("src/cli/",)),
    (r"nlohmann/", ("src/cli/", "src/shell/uNotes", "src/fleet/uFleetText")),
    (r"openssl/", ("src/platform/uSha256_posix",)),
    (r"qpdf/", ("src/gui/report/uReportPdf",)),
    (r"sqlite3\.h$", ("src/fleet/uFleetDatabase",)),
]
# Headers of one system, the C library's own extensions among them.
POSIX = re.compile(r"(sys/|linux/|arpa/|net|(aio|dirent|dlfcn|fnmatch|ftw|glob|grp|langinfo|malloc|poll|pthread|pwd|sched"
                   r"|semaphore|spawn|strings|syslog|termios|unistd|utime|wordexp)\.h$)")
BOTH = re.compile(r"fcntl\.h$")
WINDOWS = re.compile(r"([Ww]indows|[Ww]in\w+|[Ss]h(l|ell|obj)\w+|[Pp]si\w+|io|direct|process|conio|crtdbg|[Ww]\w+api)\.h$")
SYSTEMS = [  # headers, ending of the units in src/platform that may include them, places of a harness that may
    (BOTH, ("_posix.cpp", "_windows.cpp"), {}),
    (POSIX, "_posix.cpp", {"fuzz/FuzzRecording.cpp": {"sys/mman.h", "unistd.h"}}),
    (WINDOWS, "_windows.cpp", {}),
]
SYSTEM_ASKED = re.compile(r"^\s*#\s*(el)?if.*\b(_WIN\w+|WIN32|__linux__|__unix__|__APPLE__|Q_OS_\w+)\b")
INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]')


def foreign(path, name):
    """What is wrong with <name>, a header of a library or a system."""
    for pattern, places in LIBRARIES:
        if re.match(pattern, name) and not path.startswith(places):
            yield f"<{name}> may be included only in {', '.join(places)}"
    for headers, ending, harnesses in SYSTEMS:
        at_home = path.startswith("src/platform/") and path.endswith(ending)
        if headers.match(name) and not at_home and name not in harnesses.get(path, ()):
            yield f"<{name}> may be included only in src/platform, in units that end in {ending}"


def own(path, name):
    """What is wrong with "name", a header of this project."""
    target = name.split("/")
    if path.startswith(HARNESSES):
        if target[0] not in MAY and not name.startswith(HARNESSES):
            yield f'"{name}": write the path from src/ or from the root'
        return
    parts = path.split("/")[1:]
    room = parts[0]
    if target[0] not in MAY and not name.endswith(".moc"):
        yield f'"{name}": write the path from src/'
    if target[0] in MAY and target[0] != room and target[0] not in MAY[room]:
        yield f"src/{room}/ must not include {target[0]}/"
    if room == "gui" and target[0] == "gui" and len(target) > 2 and len(parts) > 2:
        view, other = parts[1], target[1]
        if view not in (other, "mainform") and other not in SHARED_GUI.get(view, set(SHARED_GUI)):
            yield f"src/gui/{view}/ must not include gui/{other}/"
    if path == "src/gui/mainform/KorvexMainForm.h" and target[0] == "gui":
        yield "KorvexMainForm.h must forward-declare its views instead of including them"


def breaches(path, text):
    if path.startswith("src/") and path.split("/")[1] not in MAY:
        yield 1, f"src/{path.split('/')[1]}/ is not in the table of docs/architecture.md"
        return
    for number, line in enumerate(text.splitlines(), 1):
        found = INCLUDE.match(line)
        if found:
            for rule in own(path, found.group(2)) if found.group(1) == '"' else foreign(path, found.group(2)):
                yield number, rule
        if SYSTEM_ASKED.match(line) and not path.startswith("src/platform/"):
            yield number, "only src/platform/ may ask for the system"


def main():
    listed = subprocess.run(["git", "ls-files", "-co", "--exclude-standard", "src", *HARNESSES], capture_output=True, text=True, check=True).stdout.split()
    bad = 0
    for path in listed:
        if path.endswith((".h", ".cpp")):
            with open(path, encoding="utf-8") as file:
                for number, rule in breaches(path, file.read()):
                    bad += 1
                    print(f"{path}:{number}: {rule}")
    print(f"{bad} forbidden includes and questions for the system")
    return bad > 0


if __name__ == "__main__":
    sys.exit(main())
