#!/usr/bin/env python3
"""Writes seeds for the fuzz targets, a folder for each: the first blocks of real recordings, inflated and as files, and
small examples of each other kind of file. Usage: make_seeds.py FOLDER RECORDING..."""
import argparse
import json
import pathlib
import struct
import zlib

HEADER_SIZE = 19


def count_strings(body):
    count = position = 0
    while position + 1 < len(body):
        position += 2 + struct.unpack_from("<H", body, position)[0]
        count += 1
    return count


def first_blocks(content):
    """The blocks behind the header, of records only the first."""
    blocks, position, columns = b"", HEADER_SIZE, 0
    while position < len(content) and len(blocks) < 4096:
        kind, size = struct.unpack_from("<HH", content, position)
        body = content[position + 4:position + 4 + size]
        if kind == 6:
            columns = count_strings(body)
        if kind == 8:
            body = body[:20 * (8 + 4 * columns)]
        blocks += struct.pack("<HH", kind, len(body)) + body
        position += 4 + size
    return blocks


SETTINGS = """[Date]
Date Format = 1
[Company]
Name = Korvex
[Alarm]
Active = 1
Acc. Min = -6
Acc. Max = 6.5
RH Max = 60
[Colors]
clX = clRed
"""
RECENTS = """[FullPath]
0 = /a/b.kshock
1 = /c/d.kshock
[Pinned]
0 = 1
1 = 0
[About]
0 = 3 events
[FolderFullPath]
0 = /a
[PinnedFolder]
0 = 0
"""
REPORT = """[Sections]
Verdict = 1
Cover = 1
[Page]
Paper = Letter
Orientation = landscape
[Tables]
Events = 1
[Event cards]
Events = worst
Worst = 7
A page = 6
[Time]
From = 2026-03-04 06:00
"""
LIMITS = """[Profile]
Name = Fragile
[Alarm]
Acc. Max = 10
RH Max = 60
[Allowed]
Acc. Max = 3 events
RH Max = 2 h
"""
NOTES = {"schema": 1, "recording": {"size": 0, "sha256": ""},
         "notes": [{"id": "a1", "event": 0, "from": "2026-03-04 06:00:00.000", "to": "2026-03-04 06:00:01.000",
                    "text": "hit", "author": "Ann", "tags": ["damage"], "time": "2026-03-05T10:00:00Z"}]}
REFERENCE = """[Reference]
Recording = /a/b.kshock
Events = 4
Days = 2.5
Hours = 4 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0
Directions = 1 0 0 3, 0 -1 1 1
Peak = 2.5 3 x2 1e3
[Reference sensors]
Temperature = -4 40
"""
CURVE = "Hz,g\n# transport\n10,2\n100,50.5\n1e3,50\n"
LAYOUT = """[Panels]
Space = 1280x600
dxDockPanelMissionDetails = right, 420x150, open
dxDockPanelSensorGridTemp = below dxDockPanelMissionDetails, 420x400, open
dxDockPanelSensorGridBattery = tabbed with dxDockPanelSensorGridTemp, 420x400, closed, in front
dxDockPanelNavigator = bottom, 1280x130, open, floating 500x200+60+70
"""
DESCRIPTION = {"startTime": 45123.25, "channels": ["ACC x", "ACC y", "ACC z", "T"], "records": "t.csv",
               "creator": "korvex165_reader.exe", "mission": {"sID": "A1", "rec_fast_rate": 0.001, "adxl_level_on": 2.5}}
RECORDS = "time_ms,ACC x,ACC y,ACC z,T\n0,1,2,3,20\n1,4,5,6,\n2,END,,,\n3,1e-3,-7,8,21.5\n"
ARGUMENTS = ["info a.kshock --limits t.csv", "dump a.kshock --rows 3", "blocks a.kshock", "table a.kshock events --order MaxAccDesc",
             "table a.kshock analysis", "export a.kshock --to out events-csv shocks-xlsx --filter acc=1..20,axis=X-pos --date-format yyyy",
             "filter a.kshock --event 1", "spectrum a.kshock --event 0 --type PSD --window Hann",
             "srs a.kshock --event all --q 10 --octave 6 --from 10 --to 500", "srs a.kshock --event 0 --frequencies 10,20,50 --baseline none",
             "pulse a.kshock --event 2", "cut a.kshock b.kshock --from 2026-03-04", "notes a.kshock --to n.tsv",
             "notes a.kshock --from t.csv", "fleet a.kshock --to f --format jsonl", "fleet . --to f --analysis --shard 1/2",
             "demo b.kshock --events 2 --seed 7", "make t.csv b.kshock", "--help", "--version"]


def write(folder, name, data):
    folder.mkdir(parents=True, exist_ok=True)
    (folder / name).write_bytes(data)


def main():
    arguments = argparse.ArgumentParser(description="Writes a folder of seeds for each fuzz target.")
    arguments.add_argument("folder", type=pathlib.Path)
    arguments.add_argument("recordings", nargs="+", type=pathlib.Path)
    arguments = arguments.parse_args()
    folder = arguments.folder
    for name in arguments.recordings:
        content = zlib.decompress(name.read_bytes())
        blocks, stem = first_blocks(content), name.stem
        write(folder / "recording", stem, b"\0" + blocks)
        write(folder / "recording", f"{stem}-own-header", b"\1" + content[:HEADER_SIZE] + blocks)
        write(folder / "recording", f"{stem}-cut", b"\2" + blocks)
        for level in [0, 1, 9]:
            write(folder / "stream", f"{stem}-{level}", zlib.compress(content[:HEADER_SIZE] + blocks, level))
    for number, text in enumerate([SETTINGS, RECENTS, REPORT, LIMITS, json.dumps(NOTES), REFERENCE, CURVE]):
        write(folder / "settings", str(number), bytes([number]) + text.encode())
    write(folder / "settings", "before-1900", b"\2" + REPORT.replace("2026", "1013").encode())
    write(folder / "layout", "panels", LAYOUT.encode())
    write(folder / "kshock", "make", b"\0" + json.dumps(DESCRIPTION).encode() + b"\0" + RECORDS.encode())
    for number, line in enumerate(ARGUMENTS):
        write(folder / "kshock", f"arguments-{number}", b"\1" + line.replace(" ", "\n").encode())


if __name__ == "__main__":
    main()
