#!/usr/bin/env python3
"""Reads the XLSX files of `kshock export` back with openpyxl and compares them with the recording and with the tables that
`kshock table` prints. One line per difference; exit 1 when there is any.
"""
import argparse
import datetime
import json
import math
import os
import re
import resource
import subprocess
import sys
import tempfile
import zipfile

import openpyxl

sys.dont_write_bytecode = True  # no __pycache__ among the sources
from check_dump import Recording  # noqa: E402

EPOCH = datetime.datetime(1899, 12, 30)
MOST_ROWS = 1048576
ALL = ["shocks-xlsx", "sensors-xlsx", "battery-xlsx", "analysis-xlsx"]
found = []


def expect(what, want, got):
    if want != got:
        found.append(f"{what}: expected {want!r:.300}, got {got!r:.300}")


def run(*arguments, **more):
    return subprocess.run(arguments, capture_output=True, timeout=300, check=False, **more)


def export(kshock, path, folder, *what, status=0, **more):
    result = run(kshock, "export", path, "--to", folder, *what, **more)
    expect(f"status of {what}", status, result.returncode)
    return result.stderr.decode("utf-8")


def rows_of(sheet):
    return [list(row) for row in sheet.iter_rows()]


def check_table(kshock, recording, name, cells):
    """Titles and records against the CSV lines; the second column is a date."""
    lines = run(kshock, "table", recording, name).stdout.decode("utf-8").split("\r\n")[:-1]
    want = [line[1:-2].split('","') if line else [] for line in lines]
    if not want[0]:
        return expect(f"{name} without a sensor", [], cells)
    expect(f"{name} titles", want[0], [cell.value for cell in cells[0]])
    expect(f"{name} rows", len(want), len(cells))
    for number, (texts, row) in enumerate(zip(want[1:], cells[1:]), 1):
        stamp = row[1]
        if not stamp.is_date or stamp.number_format != "yyyy-mm-dd hh:mm:ss.000":
            found.append(f"{name}, row {number}: {stamp.value!r} is no date")
        elif stamp.value.replace(microsecond=0) != datetime.datetime.fromisoformat(texts[1]):
            found.append(f"{name}, row {number}: {texts[1]} is {stamp.value}")
        got = [cell.value or "" for i, cell in enumerate(row) if i != 1]
        if got != texts[:1] + texts[2:] or any(cell.data_type not in "sn" for i, cell in enumerate(row) if i != 1):
            return expect(f"{name}, row {number}", texts, got)
    return None


def check_look(book_file, number, sheet, title_row):
    """Columns as wide as what they hold, bold titles with filters, numbers on the right and not warned of."""
    cells = rows_of(sheet)
    last = f"{openpyxl.utils.get_column_letter(len(cells[-1]))}{len(cells)}"
    expect("filter", f"A{title_row}:{last}", sheet.auto_filter.ref)
    for i, title in enumerate(cells[title_row - 1]):
        expect("bold title", True, title.font.b)
        longest = min(60, max(len(str(row[i].value or "")) for row in cells))
        width = sheet.column_dimensions[openpyxl.utils.get_column_letter(i + 1)].width
        if not longest < width <= longest + 8 and not title.value == "Timestamp":
            found.append(f"column {title.value}: {width} wide for {longest} characters")
        for row in cells[title_row:title_row + 3]:
            expect("to the right", None if row[i].is_date or row[i].value is None else "right", row[i].alignment.horizontal)
    xml = zipfile.ZipFile(book_file).read(f"xl/worksheets/sheet{number}.xml").decode("utf-8")
    expect("no warnings", [f"A1:{last}"], re.findall('<ignoredError sqref="([^"]*)" numberStoredAsText="1"/>', xml))


def check_event(sheet, number, samples, recording, metrics):
    cells = [[cell.value for cell in row] for row in rows_of(sheet)]
    start = EPOCH + datetime.timedelta(days=recording.start_time, milliseconds=samples[0][0])
    label, begin, _, id_label, event_id = cells[0]
    expect("start and ID", ("Start Time:", "Event ID:", number), (label, id_label, event_id))
    if abs(datetime.datetime.fromisoformat(begin) - start) > datetime.timedelta(milliseconds=0.6):
        found.append(f"event {number} starts {start}, not {begin}")
    expect("labels", [["Acceleration max:", "IoT total:"], ["ToT total:", "IoT max:"], [None] * 2],
           [row[::3] for row in cells[1:4]])
    expect("titles", ["Time (msec)", "X (g)", "Y (g)", "Z (g)", "Total (g)"], cells[4])
    figures = [metrics[key] for key in ("Max", "iotTotal", "totTotal", "iotMax")]
    if not all(math.isclose(a, b, rel_tol=1e-6) for a, b in zip(figures, cells[1][1::3] + cells[2][1::3])):
        found.append(f"metrics of event {number}: expected {figures}, got {cells[1:3]}")
    expect("frozen", "A6", sheet.freeze_panes)
    expect(f"samples of event {number}", len(samples), len(cells) - 5)
    for sample, row in zip(samples, cells[5:]):
        want = [sample[0] - samples[0][0], *sample[2], math.hypot(*sample[2])]
        if not all(math.isclose(a, b, rel_tol=1e-9, abs_tol=1e-9) for a, b in zip(want, row)):
            return expect(f"sample of event {number}", want, row)
    return None


def check_recording(kshock, path, folder):
    recording = Recording(path)
    mission = recording.mission["sID"]
    dump = json.loads(run(kshock, "dump", path, "--rows", "0").stdout)
    has_battery = dump["tables"]["battery"]["fields"] != []
    export(kshock, path, folder, *ALL, "events-xlsx", status=0 if has_battery else 6)
    for name, file in (("events", "Shocks of "), ("sensors", "Sensors "), ("battery", "Battery "), ("analysis", "Analysis ")):
        if name == "battery" and not has_battery:
            expect("battery", False, os.path.exists(f"{folder}/Battery Mission-{mission}.xlsx"))
            continue
        book = openpyxl.load_workbook(f"{folder}/{file}Mission-{mission}.xlsx")
        expect("sheets", [f"Mission-{mission}"], book.sheetnames)
        cells = rows_of(book.worksheets[0])
        expect("mission", ["Mission ID:", mission], [cell.value for cell in cells[0]][:2])
        expect("frozen", "A3", book.worksheets[0].freeze_panes)
        check_table(kshock, path, name, cells[1:])
        check_look(f"{folder}/{file}Mission-{mission}.xlsx", 1, book.worksheets[0], 2)

    book = openpyxl.load_workbook(f"{folder}/Mission-{mission}.xlsx")
    expect("event sheets", [f"Event {i}" for i in range(len(recording.events))], book.sheetnames)
    for i in range(0, len(recording.events), max(1, len(recording.events) // 12)):
        check_event(book.worksheets[i], i, recording.events[i], recording, dump["events"][i])

    export(kshock, path, folder, "measurements-xlsx")
    book = openpyxl.load_workbook(f"{folder}/Mission-{mission}.xlsx")
    expect("sheets", ["Sensors", "Battery"], book.sheetnames)
    check_table(kshock, path, "sensors", rows_of(book["Sensors"]))
    check_look(f"{folder}/Mission-{mission}.xlsx", 1, book["Sensors"], 1)


def make(kshock, folder, mission, records, channels=("ACC x", "ACC y", "ACC z", "T")):
    with open(f"{folder}/records.csv", "w", encoding="utf-8") as file:
        file.write("time_ms," + ",".join(channels) + "\n" + records)
    with open(f"{folder}/source.json", "w", encoding="utf-8") as file:
        json.dump({"startTime": 45123.25, "mission": {"sID": mission}, "channels": channels, "records": "records.csv"}, file)
    expect("make", 0, run(kshock, "make", f"{folder}/source.json", f"{folder}/made.kshock").returncode)
    return f"{folder}/made.kshock"


def check_hostile_texts(kshock, folder):
    """What a header says is text: no formula, no escape, no sheet name that a spreadsheet refuses."""
    for mission, sheet in (("=1+1/[x]:*?\\", "Mission-=1+1__x_____"), ("_x0041_<b>&amp;€", "Mission-_x0041_<b>&amp;€"),
                           ("x" * 40000, "Mission-" + "x" * 23)):
        path = make(kshock, folder, mission, "0,1,2,3,21.5\n1,END,,,\n")
        export(kshock, path, folder, "shocks-xlsx")
        (file,) = [name for name in os.listdir(folder) if name.endswith(".xlsx")]
        book = openpyxl.load_workbook(f"{folder}/{file}")
        expect("sheet", [sheet], book.sheetnames)
        cell = book.worksheets[0]["B1"]
        expect("text", ("s", mission[:32767]), (cell.data_type, re.sub("_x005F_", "_", cell.value)))
        os.remove(f"{folder}/{file}")


def check_odd_values(kshock, folder):
    """An event of one sample with an infinity; times before spreadsheets count days."""
    path = make(kshock, folder, "odd", "0,inf,0,0,21.5\n1,END,,,\n")
    export(kshock, path, folder, "events-xlsx")
    cells = [[cell.value for cell in row] for row in rows_of(openpyxl.load_workbook(f"{folder}/Mission-odd.xlsx").worksheets[0])]
    expect("infinity", [0, "INF", 0, 0, "INF"], cells[5])
    export(kshock, path, folder, "events-xlsx", "measurements-xlsx", status=2)


def limits_for(file):
    """Some of little room, then all between what the rows of the first sheet take and what the whole part takes."""
    sheet = zipfile.ZipFile(file).read("xl/worksheets/sheet1.xml")
    rows = sheet.index(b"</sheetData>") - sheet.index(b"<sheetData>") - len("<sheetData>")
    return [0, 3000, 20000, *range(rows - 100, len(sheet) + 100, 100)]


def check_no_room(kshock, folder, path):
    """A workbook whose file or temporary files do not fit is not written, and the older one stays. The rows of a table
    may fit, but not the sheet with them; the compressed file that lacks some would always."""
    for name in ("events-xlsx", "shocks-xlsx"):
        export(kshock, path, folder, name)
        for limit in limits_for(max((f"{folder}/{file}" for file in os.listdir(folder)), key=os.path.getmtime)):
            before = {file: open(f"{folder}/{file}", "rb").read() for file in os.listdir(folder)}
            small = run(kshock, "export", path, "--to", folder, name,
                        preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (limit, limit)))
            expect(f"files after {name} with {limit} bytes", sorted(before), sorted(os.listdir(folder)))
            if small.returncode == 4:
                message = small.stderr.decode("utf-8")
                expect(f"{name} with {limit} bytes", True, "File too large" in message or "No space left" in message)
                expect(f"lines of the library with {limit} bytes", 1, message.count("\n"))
                for file, content in before.items():
                    expect(f"{file} with {limit} bytes", True, content == open(f"{folder}/{file}", "rb").read())
            else:
                expect(f"status with {limit} bytes", 0, small.returncode)
                for file in before:
                    for sheet in openpyxl.load_workbook(f"{folder}/{file}", read_only=True):
                        sum(1 for _ in sheet.rows)
    expect("room for nothing", 4, run(kshock, "export", path, "--to", f"{folder}/none", *ALL).returncode)


def rows_in(book, sheet):
    """Counted without reading cells, which takes too long for a million."""
    with zipfile.ZipFile(book).open(f"xl/worksheets/{sheet}.xml") as file:
        count, tail = 0, b""
        while piece := file.read(1 << 20):
            count += (tail + piece).count(b"<row ")
            tail = (tail + piece)[-4:]
        return count


def check_long(kshock, folder):
    path = f"{folder}/long.kshock"
    run(kshock, "demo", path, "--events", "1", "--samples", str(MOST_ROWS - 2), "--sensors", "0")
    export(kshock, path, folder, "events-xlsx", "--filter", "acc=0..")
    (file,) = [f"{folder}/{name}" for name in os.listdir(folder) if name.endswith(".xlsx")]
    names = re.findall('<sheet name="([^"]*)"', zipfile.ZipFile(file).read("xl/workbook.xml").decode("utf-8"))
    expect("sheets of a long event", ["Event 0", "Event 0 (2)"], names)
    # The empty row of the head is not written.
    expect("rows", [MOST_ROWS - 1, 4 + 3], [rows_in(file, sheet) for sheet in ("sheet1", "sheet2")])
    os.remove(file)
    path = make(kshock, folder, "long", "".join(f"{i},1\n" for i in range(MOST_ROWS)), ["T"])
    for name in ("sensors-xlsx", "measurements-xlsx"):
        expect("too many rows", True, "as CSV" in export(kshock, path, folder, name, status=4))
    expect("files", [], [name for name in os.listdir(folder) if name.endswith(".xlsx")])


def check_many_sheets(kshock, folder):
    """The program raises its limit of open files itself; where the system allows too few, nothing is written."""
    path = f"{folder}/many.kshock"
    run(kshock, "demo", path, "--events", "3000", "--samples", "10", "--sensors", "1")
    before = os.listdir(folder)

    def limited(soft, hard):
        return lambda: resource.setrlimit(resource.RLIMIT_NOFILE, (soft, hard))

    message = export(kshock, path, folder, "events-xlsx", "--filter", "acc=0..", status=4, preexec_fn=limited(1000, 1000))
    expect("reason", (True, 1), ("3000 sheets" in message, message.count("\n")))
    expect("files after a refusal", before, os.listdir(folder))
    hard = resource.getrlimit(resource.RLIMIT_NOFILE)[1]
    export(kshock, path, folder, "events-xlsx", "--filter", "acc=0..", preexec_fn=limited(200, hard))
    (file,) = [f"{folder}/{name}" for name in os.listdir(folder) if name.endswith(".xlsx")]
    sheets = re.findall('<sheet name="([^"]*)"', zipfile.ZipFile(file).read("xl/workbook.xml").decode("utf-8"))
    expect("many sheets", [f"Event {i}" for i in range(3000)], sheets)
    expect("rows of the last", 4 + 10, rows_in(file, "sheet3000"))


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("kshock")
    parser.add_argument("recordings", nargs="+")
    options = parser.parse_args()
    checks = [lambda folder, path=path: check_recording(options.kshock, path, folder) for path in options.recordings]
    checks += [lambda folder: check_hostile_texts(options.kshock, folder), lambda folder: check_odd_values(options.kshock, folder),
               lambda folder: check_no_room(options.kshock, folder, options.recordings[-1]),
               lambda folder: check_long(options.kshock, folder), lambda folder: check_many_sheets(options.kshock, folder)]
    for check in checks:
        with tempfile.TemporaryDirectory() as folder:
            check(folder)
    for text in found:
        print(text)
    print(f"{len(found)} differences")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
