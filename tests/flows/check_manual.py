#!/usr/bin/env python3
"""Checks the manual: its PDFs against its texts, and its examples against the programs.

usage: check_manual.py TEXTS PDFS KSHOCK DEMO RECORDING...
"""
import os
import re
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ET

MARGIN = 19.5 * 72 / 25.4  # points
XHTML = "{http://www.w3.org/1999/xhtml}"
failures = []


def expect(true, what):
    if not true:
        failures.append(what)


def squeezed(text):
    return re.sub(r"[\s*`]+", "", text)


def check_pdf(text, pdf):
    name = os.path.basename(pdf)
    pages = subprocess.run(["pdftotext", "-layout", pdf, "-"], capture_output=True, text=True, check=True).stdout.split("\f")[:-1]
    for number, page in enumerate(pages, 1):
        expect(f"Page {number} of {len(pages)}" in page, f"{name}: page {number} has no number")
        expect(len(page.split()) > 20 or number == len(pages), f"{name}: page {number} is empty")
    plain = "".join(squeezed(re.sub(r"ShockScope [\d.]+ +Page \d+ of \d+", "", page)) for page in pages)
    # The picture's own words, links and the lines of tables are left out.
    prose = [line for line in text.splitlines() if line and not re.match(r"[#!|\s-]|\d+\.", line)]
    for line in prose:
        expect(squeezed(line)[:60] in plain, f"{name}: does not say: {line[:60]}")
    for chapter in re.findall(r"^## (.+)$", text, re.M):
        places = [n for n, page in enumerate(pages, 1) if re.search(rf"^\s*{re.escape(chapter)}\s*$", page, re.M)]
        told = re.search(rf"^\s*{re.escape(chapter)}\s+(\d+)\s*$", pages[0], re.M)
        expect(told and int(told[1]) in places, f"{name}: the contents do not lead to {chapter}")
        for page in (pages[n - 1] for n in places):
            rest = page[re.search(rf"^\s*{re.escape(chapter)}\s*$", page, re.M).end():]
            expect(len(rest.strip().splitlines()) > 1, f"{name}: {chapter} stands alone at the end of a page")
    boxes = ET.fromstring(subprocess.run(["pdftotext", "-bbox", pdf, "-"], capture_output=True, check=True).stdout)
    for page in boxes.iter(XHTML + "page"):
        width = float(page.get("width"))
        for word in page.iter(XHTML + "word"):
            inside = float(word.get("xMin")) >= MARGIN and float(word.get("xMax")) <= width - MARGIN
            expect(inside, f"{name}: {word.text} lies outside the margins")
    for font in subprocess.run(["pdffonts", pdf], capture_output=True, text=True, check=True).stdout.splitlines()[2:]:
        expect(font.split()[-5] == "yes", f"{name}: a font is not embedded: {font}")


def examples(text):
    """The commands of indented blocks with the lines that they print; "…" stands for anything."""
    for block in re.findall(r"(?:^    .*\n|^\n(?=    ))+", text, re.M):
        command, printed = None, []
        for line in re.sub(r"^    ", "", block, flags=re.M).splitlines():
            if line.startswith("$ "):
                if command:
                    yield command, printed
                command, printed = line[2:], []
            elif command and line:
                printed.append(line)
        if command:
            yield command, printed


def check_examples(text, kshock, demo, recordings):
    with tempfile.TemporaryDirectory() as folder:
        os.symlink(demo, os.path.join(folder, "demo.kshock"))
        for recording in recordings:
            os.symlink(recording, os.path.join(folder, os.path.basename(recording)))
        with open(demo, "rb") as whole, open(os.path.join(folder, "cut.kshock"), "wb") as cut:
            cut.write(whole.read(1000000))
        for name in ("source.json", "records.csv", "limits.ini", "recording.json"):
            found = re.search(rf"`{re.escape(name)}`[^\n]*\n\n((?:    .*\n|\n(?=    ))+)", text)
            if found:
                with open(os.path.join(folder, name), "w", encoding="utf-8") as file:
                    file.write(re.sub(r"^    ", "", found[1], flags=re.M))
        path = os.path.dirname(kshock) + os.pathsep + os.environ["PATH"]
        for command, printed in examples(text):
            done = subprocess.run(["bash", "-c", command], cwd=folder, env={**os.environ, "PATH": path}, text=True,
                                  capture_output=True, check=False)
            said = [" ".join(line.split()) for line in (done.stdout + done.stderr).splitlines()]
            at = 0
            for line in printed:
                form = ".*".join(re.escape(part) for part in " ".join(line.split()).split("…"))
                found = next((n for n in range(at, len(said)) if re.fullmatch(form, said[n])), None)
                expect(found is not None, f"{command}: does not print: {line}\n    but: {said}")
                at = found + 1 if found is not None else at


def main():
    texts, pdfs, kshock, demo, *recordings = sys.argv[1:]
    names = sorted(name[:-3] for name in os.listdir(texts) if name.endswith(".md"))
    expect(len(names) == 5, f"the documents are {names}")
    for name in names:
        with open(os.path.join(texts, name + ".md"), encoding="utf-8") as file:
            text = file.read()
        check_pdf(text, os.path.join(pdfs, name + ".pdf"))
        check_examples(text, kshock, demo, recordings)
    print("\n".join(failures) or "the manual is as it says")
    return len(failures) > 0


if __name__ == "__main__":
    sys.exit(main())
