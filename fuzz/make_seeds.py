#!/usr/bin/env python3
"""Writes seeds for the recording fuzzer: the first blocks of real recordings, inflated, behind a byte that says what
the target does with them. Usage: make_seeds.py FOLDER RECORDING..."""
import pathlib
import struct
import sys
import zlib

HEADER_SIZE = 19


def count_strings(body):
    count = position = 0
    while position + 1 < len(body):
        position += 2 + struct.unpack_from("<H", body, position)[0]
        count += 1
    return count


def main():
    folder = pathlib.Path(sys.argv[1])
    folder.mkdir(parents=True, exist_ok=True)
    for name in sys.argv[2:]:
        content = zlib.decompress(pathlib.Path(name).read_bytes())
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
        stem = pathlib.Path(name).stem
        (folder / stem).write_bytes(b"\0" + blocks)
        (folder / f"{stem}-own-header").write_bytes(b"\1" + content[:HEADER_SIZE] + blocks)
        (folder / f"{stem}-cut").write_bytes(b"\2" + blocks)


if __name__ == "__main__":
    main()
