#!/usr/bin/env python3
"""Prints every include that goes against the table in docs/architecture.md; exit 1 when there is one. Run from the
project's root."""
import re
import subprocess
import sys

LOGIC = ["base", "model", "analysis", "navigation", "export", "platform", "shell"]
MAY = {
    "base": set(), "model": {"base"}, "analysis": {"base", "model"}, "navigation": {"base"},
    "export": {"base", "model", "analysis", "platform"}, "platform": {"base"}, "shell": set(LOGIC),
    "gui": set(LOGIC), "app": {"base", "platform", "shell", "gui"}, "cli": set(LOGIC),
}
SHARED_GUI = {"common": set(), "platform": {"common"}, "charts": {"common", "platform"}}
LIBRARIES = [  # header pattern, places that may include it
    (r"(Q[A-Z]\w*|Qt\w+/.*|q[a-z]\w*\.h)$", ("gui/", "app/")),
    (r"qcustomplot\.h$", ("gui/charts/",)),
    (r"zlib\.h$", ("model/uDataFile1V0", "export/uPackage")),
    (r"xlsxwriter", ("export/uWorkbook",)),
    (r"SimpleIni\.h$", ("base/uIniFile",)),
    (r"(CLI/|nlohmann/)", ("cli/",)),
    (r"[Ww]indows\.h$|[Ss]hl[Oo]bj", ("platform/",)),
]
INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]')


def breaches(path, text):
    inside = path[len("src/"):]
    parts = inside.split("/")
    room = parts[0]
    if room not in MAY:
        yield 1, f"src/{room}/ is not a room of the house"
        return
    for number, line in enumerate(text.splitlines(), 1):
        found = INCLUDE.match(line)
        if not found:
            continue
        quoted, name = found.group(1) == '"', found.group(2)
        target = name.split("/")
        if quoted and target[0] not in MAY and not name.endswith(".moc"):
            yield number, f'"{name}": write the path from src/'
        for pattern, places in LIBRARIES:
            if not quoted and re.match(pattern, name) and not inside.startswith(places):
                yield number, f"<{name}> belongs in {', '.join(places)}"
        if target[0] in MAY and target[0] != room and target[0] not in MAY[room]:
            yield number, f"src/{room}/ must not include {target[0]}/"
        if room == "gui" and target[0] == "gui" and len(target) > 2 and len(parts) > 2:
            view, other = parts[1], target[1]
            if view not in (other, "mainform") and other not in SHARED_GUI.get(view, set(SHARED_GUI)):
                yield number, f"src/gui/{view}/ must not include gui/{other}/"
        if inside == "gui/mainform/KorvexMainForm.h" and target[0] == "gui":
            yield number, "the main form's header forward-declares its views"


def main():
    listed = subprocess.run(["git", "ls-files", "-co", "--exclude-standard", "src"], capture_output=True, text=True, check=True).stdout.split()
    bad = 0
    for path in listed:
        if path.endswith((".h", ".cpp")):
            with open(path, encoding="utf-8") as file:
                for number, rule in breaches(path, file.read()):
                    bad += 1
                    print(f"{path}:{number}: {rule}")
    print(f"{bad} breaches")
    return bad > 0


if __name__ == "__main__":
    sys.exit(main())
