#!/usr/bin/env python3
"""Recordings and notes that hold hostile texts (tests/data/hostile_texts.json): nothing is written outside the chosen
folder, names and printed lines are harmless, and every table reads back. With SHOCKSCOPE also the report: markup is
text. Usage: check_hostile_texts.py KSHOCK TEXTS [SHOCKSCOPE]. One line per difference; exit 1 when there is any.
"""
import csv
import json
import os
import re
import sqlite3
import subprocess
import sys
import tempfile
import unicodedata

import openpyxl

DEVICES = re.compile(r"(con|prn|aux|nul|conin\$|conout\$|com\d|lpt\d) *(\.|$)", re.IGNORECASE)
FIELDS = ["sID", "sTitle", "sOperator", "sKorvexType", "sKorvexVersion"]
EXPORTS = ["events-csv", "peaks-csv", "shocks-csv", "sensors-csv", "shocks-xlsx", "events-xlsx"]
found = []


def in_recording(text):
    """What a recording can hold of the text."""
    return text.encode("cp1252", "replace").decode("cp1252")


def is_control(char):
    return unicodedata.category(char) == "Cc"


class Checker:
    def __init__(self, kshock, top):
        self.kshock, self.top = kshock, top
        self.out = os.path.join(top, "chosen", "out")
        os.makedirs(self.out)
        self.recording = os.path.join(top, "chosen", "mission.kshock")
        self.what = ""

    def wrong(self, line):
        found.append(f"{self.what[:60]!r}: {line}")

    def run(self, *arguments, statuses=(0,)):
        ended = subprocess.run([self.kshock, *arguments], capture_output=True, timeout=120, check=False)
        if ended.returncode not in statuses:
            self.wrong(f"{arguments[0]}: status {ended.returncode}, {ended.stderr!r:.200}")
        text = (ended.stdout + ended.stderr).decode("utf-8")
        allowed = "\n\t" if arguments[0] == "notes" else "\n"
        if arguments[0] not in ("dump", "table") and any(is_control(char) and char not in allowed for char in text):
            self.wrong(f"{arguments[0]} prints control characters")
        return ended.stdout.decode("utf-8")

    def make(self, text):
        folder = os.path.dirname(self.recording)
        with open(os.path.join(folder, "r.csv"), "w", encoding="utf-8") as file:
            file.write("time_ms,ACC x,ACC y,ACC z,T\n" + "".join(f"{i},{i},1,1,20\n" for i in range(20)))
        source = {"startTime": 45123, "channels": ["ACC x", "ACC y", "ACC z", "T"], "records": "r.csv",
                  "mission": {field: in_recording(text) for field in FIELDS}}
        with open(os.path.join(folder, "d.json"), "w", encoding="utf-8") as file:
            json.dump(source, file)
        self.run("make", os.path.join(folder, "d.json"), self.recording)
        notes = {"schema": 1, "recording": {}, "notes": [{"id": text, "text": text, "author": text, "tags": [text]}]}
        with open(self.recording + ".notes.json", "w", encoding="utf-8") as file:
            json.dump(notes, file)

    def files(self):
        return {os.path.join(folder, name) for folder, _, names in os.walk(self.top) for name in names}

    def check_exports(self):
        before = self.files()
        self.run("export", self.recording, "--to", self.out, *EXPORTS)
        for path in self.files() - before:
            if not path.startswith(self.out + os.sep):
                self.wrong(f"{path} is outside the folder")
            for part in os.path.relpath(path, self.out).split(os.sep):
                if any(is_control(c) or c in '\\:*?"<>|' for c in part) or part.endswith((".", " ")) or DEVICES.match(part):
                    self.wrong(f"{part!r} is no name for every system")
            if path.endswith(".xlsx"):
                book = openpyxl.load_workbook(path)
                if any(cell.data_type == "f" for sheet in book for row in sheet.iter_rows() for cell in row):
                    self.wrong("a text became a formula")
            os.remove(path)

    def check_tables(self, text):
        got = json.loads(self.run("dump", self.recording))["mission"]["sID"]
        if got != in_recording(text):
            self.wrong(f"the ID reads back as {got!r:.60}")
        table = os.path.join(self.out, "fleet")
        self.run("fleet", self.recording, "--format", "csv", "--to", table + ".csv")
        with open(table + ".csv", encoding="utf-8", newline="") as file:
            titles, *rows = csv.reader(file)
        if len(rows) != 1 or rows[0][titles.index("mission_id")] != got:
            self.wrong("the fleet's CSV has another ID")
        self.run("fleet", self.recording, "--to", table + ".sqlite")
        with sqlite3.connect(table + ".sqlite") as database:
            if database.execute("select mission_id from recording").fetchall() != [(got,)]:
                self.wrong("the fleet's database has another ID")
        for name in os.listdir(self.out):
            if name.startswith("fleet"):
                os.remove(os.path.join(self.out, name))

    def check(self, text):
        self.what = text
        self.make(text)
        self.run("info", self.recording)
        self.run("blocks", self.recording)
        self.run("notes", self.recording, statuses=(0, 6))
        self.check_exports()
        self.check_tables(text)

    def check_name(self, text):
        """As the name of a recording, and as an argument."""
        self.what = text
        for name in (text, text + ".kshock"):
            path = os.path.join(self.top, "chosen", name)
            if "/" in name or "\0" in name or len(os.fsencode(name)) > 250 or name in (".", ".."):
                continue
            os.replace(self.recording, path)
            self.run("info", path)
            self.run("blocks", path)
            os.replace(path, self.recording)
        if "\0" not in text:
            self.run("table", self.recording, text, statuses=range(7))
            self.run("info", text, statuses=range(7))

    def check_report(self, shockscope):
        pdf = os.path.join(self.out, "report.pdf")
        home = {**os.environ, "HOME": self.top, "XDG_CONFIG_HOME": self.top, "QT_QPA_PLATFORM": "offscreen"}
        for text in ["<b>bold</b><img src=x>", "&amp;&lt;", "x" * 10000]:
            self.what = text
            self.make(text)
            ended = subprocess.run([shockscope, "--report", pdf, self.recording], capture_output=True, timeout=300,
                                   check=False, env=home)
            if ended.returncode != 0:
                self.wrong(f"--report: status {ended.returncode}, {ended.stderr!r:.200}")
                continue
            words = subprocess.run(["pdftotext", pdf, "-"], capture_output=True, check=True).stdout.decode("utf-8")
            if text[:12] not in words:
                self.wrong("the report does not show it as it is")


def main():
    kshock, texts, *shockscope = sys.argv[1:]
    with open(texts, encoding="utf-8") as file:
        lines = [line if isinstance(line, str) else line["repeat"] * line["times"] for line in json.load(file)]
    with tempfile.TemporaryDirectory(dir="/dev/shm" if os.path.isdir("/dev/shm") else None) as top:
        checker = Checker(os.path.abspath(kshock), top)
        for line in lines:
            checker.check(line)
            checker.check_name(line)
        if shockscope:
            checker.check_report(os.path.abspath(shockscope[0]))
    for line in found:
        print(line)
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
