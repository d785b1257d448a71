#!/usr/bin/env python3
"""Several files of a folder are compiled as one (CMAKE_UNITY_BUILD), so a name in a file's unnamed namespace must be no
name of another such file of the folder, nor one that a header declares which files of the folder include. Prints each
such name; exit status 1 if any."""
import collections
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
FOLDERS = [path for path in [*(ROOT / "src").rglob("*"), ROOT / "tests/gui"] if path.is_dir()]
NOT_A_DECLARATION = (" ", "/", "#", "\n", "}", "TEST", "INSTANTIATE_TEST", "Q_")


def names_in(line):
    """What a line that begins a declaration declares: a type, constants, or a function."""
    line = line.split("//")[0]
    kind = re.match(r"(?:template ?<.*> ?)?(?:class|struct|enum class|enum) (\w+)", line) or re.match(r"using (\w+) =", line)
    if kind:
        return [kind.group(1)]
    if re.match(r"(inline |static )?const", line) and not re.match(r".*?\b[A-Z]\w+\(.*\) \{$", line):
        return re.findall(r"[ *](k[A-Z]\w*) ?[={\[(]", line)
    return re.findall(r"\b(?:[a-z]\w*::)*([A-Z]\w*)\(", line)[:1]


def own_names(path):
    """The names in the file's unnamed namespace."""
    inside = False
    # A list of constants may take several lines.
    text = re.sub(r",\n +(?=\*?k[A-Z]\w* =)", ", ", path.read_text())
    for line in text.splitlines(keepends=True):
        if line.startswith("namespace {"):
            inside = True
        elif line.startswith("}  // namespace"):
            inside = False
        elif inside and not line.startswith(NOT_A_DECLARATION):
            yield from names_in(line)


def included(paths):
    """The program's own headers that the files include, also through each other."""
    found = set()
    while paths:
        names = re.findall(r'^#include "(.+)"', paths.pop().read_text(), re.MULTILINE)
        for header in (base / name for name in names for base in (ROOT / "src", ROOT)):
            if header.exists() and header not in found:
                found.add(header)
                paths.append(header)
    return found


def main():
    found = 0
    for folder in FOLDERS:
        files = [path for path in folder.glob("*.cpp") if not path.stem.endswith("_windows")]
        owners = collections.defaultdict(set)
        for path in files:
            for name in own_names(path):
                owners[name].add(path)
        for header in included([*files]):
            for line in header.read_text().splitlines(keepends=True):
                for name in [] if line.startswith(NOT_A_DECLARATION) else names_in(line):
                    if name in owners:
                        owners[name].add(header)
        for name, paths in sorted(owners.items()):
            if len(paths) > 1:
                print(f"{name}:", *sorted(str(path.relative_to(ROOT)) for path in paths))
                found += 1
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
