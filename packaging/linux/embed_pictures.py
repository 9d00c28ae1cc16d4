#!/usr/bin/env python3
"""Turns the project's pictures into a source file: embed_pictures.py DRAW_ICONS OUTPUT."""
import pathlib
import subprocess
import sys
import tempfile

NAMES = ('app', 'priority', 'memory', 'resources', 'editor')  # numbered from 1 in this order
SIZES = (16, 24, 32, 48, 64, 96, 128)


def draw(draw_icons, name, size, folder):
    file = pathlib.Path(folder, f'{name}-{size}.png')
    subprocess.run([sys.executable, draw_icons, '--png', name, str(size), str(file)], check=True)
    return file.read_bytes()


def main():
    draw_icons, output = sys.argv[1:]
    arrays, rows = [], []
    with tempfile.TemporaryDirectory() as folder:
        for number, name in enumerate(NAMES, 1):
            for size in SIZES:
                data = draw(draw_icons, name, size, folder)
                array = f'{name}{size}'
                arrays.append(f'constexpr unsigned char {array}[] = {{{",".join(map(str, data))}}};')
                rows.append(f'    {{{number}, {array}}},')
    pathlib.Path(output).write_text('\n'.join([
        '#include "platform/linux/qt/PictureData.h"', '', 'namespace onlinux {', 'namespace {', '', *arrays, '',
        'constexpr Drawing drawings[] = {', *rows, '};', '', '}  // namespace', '',
        'std::span<const Drawing> DrawnPictures() { return drawings; }', '', '}  // namespace onlinux', '']))


if __name__ == '__main__':
    main()
