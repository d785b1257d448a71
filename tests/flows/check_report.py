#!/usr/bin/env python3
"""Reads the PDF of `shockscope --report` back with poppler's tools and compares it with `kshock info`. One line per
difference; exit 1 when there is any.
"""
import argparse
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import unicodedata

COMPANY = "Gesellschaft für Transportüberwachung und Prüftechnik mbH"
SETTINGS = f"[Date]\nDate Format=1\n[Company]\nName={COMPANY}\n[Alarm]\nLoad Acc. from File=0\n"
LANDSCAPE = "[Page]\nPaper = Letter\nOrientation = landscape\n[Event cards]\nWorst = 7\nA page = 6\n"
PROFILE = "[Profile]\nName = Glass\n[Alarm]\nAcc. Max = 3\n[Allowed]\nAcc. Max = 1 event\n"
NAMESPACE = re.compile(r'<(page|word)[^>]*?(?: width="([\d.]+)" height="([\d.]+)"|xMin="([-\d.]+)" yMin="([-\d.]+)"'
                       r' xMax="([-\d.]+)" yMax="([-\d.]+)")[^>]*>(?:([^<]*)</word>)?')
SIDE, TOP, FOOT = 45, 45, 20  # pt; tick labels of charts may reach a little beyond their axes
found = []


def expect(what, want, got):
    if want != got:
        found.append(f"{what}: expected {want!r:.300}, got {got!r:.300}")


class Program:
    """The two programs with a home folder of their own."""

    def __init__(self, shockscope, kshock, folder):
        self.shockscope, self.kshock, self.folder = shockscope, kshock, pathlib.Path(folder)
        settings = self.folder / "Documents/Korvex/settings"
        settings.mkdir(parents=True)
        (settings / "settings.ini").write_text(SETTINGS, encoding="utf-8")
        self.environment = {**os.environ, "HOME": folder, "XDG_CONFIG_HOME": folder}

    def run(self, *arguments):
        return subprocess.run(arguments, capture_output=True, timeout=300, check=False, env=self.environment)

    def report(self, pdf, recording, *more, status=0):
        result = self.run(self.shockscope, "--report", pdf, recording, *more)
        expect(f"status of {recording} {more}", status, result.returncode)
        return result.stderr.decode()

    def write(self, name, text):
        (self.folder / name).write_text(text, encoding="utf-8")
        return self.folder / name

    def raw(self, pdf):
        return self.run("pdftotext", "-layout", pdf, "-").stdout.decode()

    def text(self, pdf):
        """In the form in which characters can be compared."""
        return unicodedata.normalize("NFKC", self.raw(pdf))


def packed(text):
    return re.sub(r"\s+", "", unicodedata.normalize("NFKC", text))


def check_pages(program, pdf, width, height):
    """Numbers in the footers, and every word inside the margins."""
    pages = program.text(pdf).split("\f")[:-1]
    for number, page in enumerate(pages, 1):
        expect(f"footer of page {number}", 1, page.count(f"page {number} of {len(pages)}"))
    boxes = program.run("pdftotext", "-bbox", pdf, "-").stdout.decode()
    count = 0
    for kind, page_width, page_height, left, top, right, bottom, word in NAMESPACE.findall(boxes):
        if kind == "page":
            expect("paper", (width, height), (round(float(page_width)), round(float(page_height))))
            continue
        count += 1
        inside = float(left) > SIDE - 1 and float(right) < width - SIDE + 1 and float(top) > TOP - 2 and float(bottom) < height - FOOT
        if not inside:
            found.append(f"{pdf}: {word!r} stands outside the margins: {left} … {right}, {top} … {bottom}")
    expect("words", True, count > 300)
    return pages


def check_figures(program, recording):
    """What `kshock info` prints without limits is in the report; the groups are tables there."""
    pdf = program.folder / "a4.pdf"
    program.report(pdf, recording)
    text = packed("".join(check_pages(program, pdf, 595, 842)))
    figures = 0
    for line in program.run(program.kshock, "info", recording).stdout.decode().splitlines()[1:]:
        label, value = line[2:25].strip(), line[25:].strip()
        group = re.match(r"(\d+) events?, peak up to ([\d.]+) g in event (\d+), IoT up to", value)
        if group:
            label, value = label.split()[-1], group.group(1)
        figures += 1
        expect(f"{recording}: {label} {value}", True, packed(label + value) in text)
    expect("figures", True, figures > 12)
    metrics = text[text.index(packed("What the figures mean")):]
    for figure in ["Δv, ", "Duration, ", "Direction: ", "Dew point: ", "A circle with a number"]:
        expect(f"explanation of {figure}", True, packed(figure) in metrics)
    digest = program.run("sha256sum", recording).stdout.decode().split()[0]
    expect("ligatures", [], sorted(set(re.findall("[\ufb00-\ufb06]", program.raw(pdf)))))
    for part in [digest, f"{os.path.getsize(recording):,} bytes", COMPANY, "No limits are set", "The recording is complete"]:
        expect(f"{part} in {recording}", True, packed(part) in text)


def check_choices(program, recording):
    """Configuration and limits, and what the file says of itself."""
    pdf = program.folder / "letter.pdf"
    config, limits = program.write("c.ini", LANDSCAPE), program.write("l.ini", PROFILE)
    program.report(pdf, recording, "--limits", limits, "--config", config)
    pages = check_pages(program, pdf, 792, 612)
    judged = program.run(program.kshock, "info", recording, "--limits", limits).stdout.decode()
    judgement = re.search(r"Judgement +(.*)", judged).group(1)
    expect("judgement on the cover", True, packed(judgement)[1:] in packed(pages[0]))
    expect("pages with cards", 2, sum("Direction" in page or "ToT max" in page and "Event " in page for page in pages[-3:]))
    expect("key of the curves", True, "X solid, Y dashed, Z dotted" in program.text(pdf))
    about = program.run("pdfinfo", pdf).stdout.decode()
    for part in [f"Author: +{COMPANY}", "Title: +Shock report · ", "Creator: +ShockScope", r"CreationDate: +\w"]:
        expect(f"{part} in {about}", True, re.search(part, about) is not None)
    outline = program.run("pdftohtml", "-xml", "-i", "-stdout", pdf).stdout.decode()
    bookmarks = re.findall(r'<item page="(\d+)">([^<]*)</item>', outline)
    expect("first bookmarks", [("1", "Cover"), ("2", "Mission details"), ("2", "Verdict")], bookmarks[:3])
    for page, title in bookmarks[1:]:
        expect(f"bookmark {title}", True, title in pages[int(page) - 1])
    fonts = program.run("pdffonts", pdf).stdout.decode().splitlines()[2:]
    bare = program.write("b.ini", "[Sections]\nSelected event = 1\n[Time]\nFrom = 2000-01-01\n")
    program.report(pdf, recording, "--config", bare)
    page = packed(program.text(pdf))
    for part in ["Shock Report: event ", os.path.basename(recording), "filtered: time from 2000-01-01 00:00:00", "page 1 of 1"]:
        expect(f"{part} without a cover", True, packed(part) in page)
    program.report(pdf, recording, "--limits", program.write("humidity.ini", "[Alarm]\nRH Max = 50\n"))
    expect("levels that nobody set", False, "INF" in program.text(pdf))
    expect("fonts embedded", [], [font for font in fonts if not re.search(r"yes +(yes|no) +yes", font)])


def check_failures(program, recording):
    """Status and words of what fails; an older PDF stays."""
    pdf = program.write("old.pdf", "older")
    cut = program.folder / "cut.kshock"
    cut.write_bytes(pathlib.Path(recording).read_bytes()[:-200])
    bad = program.write("bad.ini", "[Sections]\nCover = maybe\n")
    text = program.write("text.kshock", "no recording at all")
    fails = [((pdf, program.folder / "missing.kshock"), 3), ((pdf, text), 1), ((pdf, recording, "--config", bad), 3),
             ((pdf, recording, "--limits", bad), 3), ((program.folder / "none/x.pdf", recording), 4),
             ((program.folder, recording), 4), ((pdf, recording, "--confg", bad), 2), ((pdf, recording, "--config"), 2),
             ((cut, cut), 2), ((bad, recording, "--config", bad), 2)]
    for arguments, status in fails:
        expect(f"words for {arguments}", True, len(program.report(*arguments, status=status)) > 20)
        expect("the older PDF", "older", pdf.read_text())
    expect("the recording", pathlib.Path(recording).read_bytes()[:-200], cut.read_bytes())
    pictures = program.folder / "pictures"
    expect("status of pictures of no recording", 1, program.run(program.shockscope, "--snapshot", pictures, text).returncode)
    expect("pictures of no recording", False, pictures.exists())
    kept = program.write("Documents/Korvex/settings/report.ini", "[Sections]\nMetrics = 1\n")
    expect("words", "", program.report(pdf, recording))
    expect("the kept choice", True, "What the figures mean" in program.text(pdf).split("\f")[0])
    kept.write_text("?\n", encoding="utf-8")
    expect("words for an unusable choice", True, "report.ini" in program.report(pdf, recording))
    expect("the defaults", True, "Whole recording" in program.text(pdf))
    kept.unlink()
    program.report(pdf, cut, status=5)
    expect("damage on the cover", True, "This recording is damaged or cut short" in program.text(pdf).split("\f")[0])
    settings = program.folder / "Documents/Korvex/settings"
    expect("the settings folder", ["settings.ini"], [file.name for file in settings.iterdir()])
    expect("what is left", [], [file.name for file in program.folder.iterdir() if file.name.startswith(".shock")])


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("shockscope")
    parser.add_argument("kshock")
    parser.add_argument("recordings", nargs="+")
    options = parser.parse_args()
    with tempfile.TemporaryDirectory() as folder:
        program = Program(options.shockscope, options.kshock, folder)
        for recording in options.recordings:
            check_figures(program, recording)
        check_choices(program, options.recordings[-1])
        check_failures(program, options.recordings[-1])
    for text in found:
        print(text)
    print(f"{len(found)} differences")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
