#!/usr/bin/env python3
"""Prints what a player on Windows needs of the documents, as plain text: player_text.py README [DOCUMENT...]"""
import pathlib
import re
import sys
import textwrap

LEFT_OUT = ('In two minutes on Linux', 'Where more stands', 'For developers', 'On Linux')
UNDERLINES = '=-~'
WIDTH = 78


def sections(text):
    """Yields (title, body) for each section of the second level; what stands in front of them has no title."""
    parts = re.split(r'(?m)^## (.+)\n', text)
    yield '', parts[0]
    yield from zip(parts[1::2], parts[2::2])


def heading(title, level):
    return f'{title}\n{UNDERLINES[level] * len(title)}'


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


def blocks(body, level):
    for block in re.split(r'\n{2,}', body.strip('\n')):
        lines = block.split('\n')
        if any('![' in line for line in lines):
            continue
        if lines[0].startswith('|'):
            yield '\n'.join(table(lines))
        elif lines[0].startswith('    '):
            yield block
        elif re.match(r'- |\d+\. ', lines[0]):
            for mark, item in re.findall(r'(?ms)^(- |\d+\. )(.*?)(?=^(?:- |\d+\. )|\Z)', block):
                yield textwrap.fill(plain(' '.join(item.split())), WIDTH, initial_indent=mark,
                                    subsequent_indent=' ' * len(mark))
        else:
            text = plain(' '.join(block.lstrip('# ').split()))
            yield heading(text, level) if lines[0].startswith('#') else textwrap.fill(text, WIDTH)


def main():
    parts = []
    left_out = set()
    for at, path in enumerate(sys.argv[1:]):
        level = min(at, 1)  # all documents behind the first are sections of it
        for title, body in sections(pathlib.Path(path).read_text(encoding='utf-8')):
            if title in LEFT_OUT:
                left_out.add(title)
                continue
            if title:
                parts.append(heading(title, level + 1))
            parts += blocks(body, level)
    if missing := set(LEFT_OUT) - left_out:
        sys.exit(f'No section is called: {", ".join(sorted(missing))}')
    print('\n\n'.join(parts))


if __name__ == '__main__':
    main()
