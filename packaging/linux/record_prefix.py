#!/usr/bin/env python3
"""Writes into an installed program where it was installed to: record_prefix.py PROGRAM PREFIX"""
import sys

MARK = b"velmaro is installed in:"
ROOM = 1024


def main():
    program, prefix = sys.argv[1], sys.argv[2].rstrip("/").encode()
    with open(program, "rb") as file:
        image = file.read()
    if image.count(MARK) != 1:
        sys.exit(f"{program} has no place for its prefix")
    if len(prefix) >= ROOM:
        sys.exit(f"{sys.argv[2]} is too long")
    at = image.index(MARK) + len(MARK)
    with open(program, "wb") as file:
        file.write(image[:at] + prefix.ljust(ROOM, b"\0") + image[at + ROOM:])


main()
