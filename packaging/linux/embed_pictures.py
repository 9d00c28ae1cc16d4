#!/usr/bin/env python3
"""Turns the project's pictures into a source file: embed_pictures.py FOLDER_OF_DRAW_ICONS OUTPUT."""
import pathlib
import sys

NAMES = ('app', 'priority', 'memory', 'resources', 'editor')  # numbered from 1 in this order


def main():
    folder, output = sys.argv[1:]
    sys.path.insert(0, folder)
    sys.dont_write_bytecode = True
    from draw_icons import GRID, PICTURES
    arrays, rows = [], []
    for number, name in enumerate(NAMES, 1):
        for colour, outlines in PICTURES[name]:
            for outline in outlines:
                corners = ','.join(f'{{{x / GRID:.6f}, {y / GRID:.6f}}}' for x, y in outline)
                arrays.append(f'constexpr Corner outline{len(rows)}[] = {{{corners}}};')
                rows.append(f'    {{{number}, 0x{bytes(colour).hex()}, outline{len(rows)}}},')
    pathlib.Path(output).write_text('\n'.join([
        '#include "platform/linux/qt/PictureData.h"', '', 'namespace onlinux {', 'namespace {', '', *arrays, '',
        'constexpr Area areas[] = {', *rows, '};', '', '}  // namespace', '',
        'std::span<const Area> PictureAreas() { return areas; }', '', '}  // namespace onlinux', '']))


if __name__ == '__main__':
    main()
