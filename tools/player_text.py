#!/usr/bin/env python3
"""Prints what a player on Windows needs of the README, as plain text: player_text.py README"""
import pathlib
import re
import sys
import textwrap

LEFT_OUT = ('Build it and run it', 'On Linux', 'For developers')
WIDTH = 78


def sections(text):
    """Yields (title, body) for each section of the second level; what stands in front of them has no title."""
    parts = re.split(r'(?m)^## (.+)\n', text)
    yield '', parts[0]
    yield from zip(parts[1::2], parts[2::2])


def plain(line):
    line = re.sub(r'!\[.*?\]\(.*?\)', '', line)
    line = re.sub(r'\[([^][]+)\]\([^)]*\)', r'\1', line)
    return re.sub(r'[`]|\*\*', '', line)


def table(rows):
    """Lines of two columns: what stands in the first, and behind it the rest, filled."""
    cells = [[plain(cell.strip()) for cell in row.strip('|').split('|')] for row in rows]
    for first, *rest in cells:
        if not ''.join([first, *rest]).strip(' -'):
            continue
        yield textwrap.fill(f'{first}  {" ".join(rest)}', WIDTH, subsequent_indent='      ', initial_indent='  ',
                            break_long_words=False)


def blocks(body):
    for block in re.split(r'\n{2,}', body.strip('\n')):
        lines = block.split('\n')
        if any('![' in line for line in lines):
            continue
        if lines[0].startswith('|'):
            yield '\n'.join(table(lines))
        elif lines[0].startswith('    '):
            yield block
        elif lines[0].startswith('- '):
            for item in re.split(r'(?m)^- ', block)[1:]:
                yield textwrap.fill(plain(' '.join(item.split())), WIDTH, initial_indent='- ', subsequent_indent='  ')
        else:
            title = lines[0].startswith('#')
            text = plain(' '.join(block.lstrip('# ').split()))
            yield text + '\n' + '=' * len(text) if title else textwrap.fill(text, WIDTH)


def main():
    text = pathlib.Path(sys.argv[1]).read_text(encoding='utf-8')
    parts = []
    for title, body in sections(text):
        if title in LEFT_OUT:
            continue
        if title:
            parts.append(f'{title}\n{"-" * len(title)}')
        parts += blocks(body)
    print('\n\n'.join(parts))


if __name__ == '__main__':
    main()
