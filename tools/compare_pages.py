"""Compares PDF files of the same names in two folders, line by line. Used by compare_letters."""

import os
import re
import subprocess
import sys

WORD = re.compile(r'<word xMin="([\d.-]+)" yMin="([\d.-]+)" xMax="([\d.-]+)" yMax="([\d.-]+)">(.*?)</word>')
ON_ONE_LINE = 3  # points


def lines_of(path):
    """The lines of each page, as (text, x, y)."""
    pages = []
    html = subprocess.run(['pdftotext', '-bbox', path, '-'], capture_output=True, text=True, check=False).stdout
    for part in html.split('<page ')[1:]:
        words = [(float(x), float(bottom), text) for x, _, _, bottom, text in WORD.findall(part)]
        words.sort(key=lambda word: (word[1], word[0]))
        lines = []
        for x, y, text in words:
            if lines and abs(lines[-1][0][1] - y) <= ON_ONE_LINE:
                lines[-1].append((x, y, text))
            else:
                lines.append([(x, y, text)])
        pages.append([(''.join(word[2] for word in sorted(line)), min(line)[0], min(line)[1]) for line in lines])
    return pages


def common(ours, theirs):
    """Pairs of lines with the same text, in sequence."""
    a = [line[0] for line in ours]
    b = [line[0] for line in theirs]
    longest = [[0] * (len(b) + 1) for _ in range(len(a) + 1)]
    for i in range(len(a) - 1, -1, -1):
        for j in range(len(b) - 1, -1, -1):
            longest[i][j] = longest[i + 1][j + 1] + 1 if a[i] == b[j] else max(longest[i + 1][j], longest[i][j + 1])
    pairs, i, j = [], 0, 0
    while i < len(a) and j < len(b):
        if a[i] == b[j]:
            pairs.append((ours[i], theirs[j]))
            i, j = i + 1, j + 1
        elif longest[i + 1][j] >= longest[i][j + 1]:
            i += 1
        else:
            j += 1
    return pairs


def compare(ours, theirs):
    """Lines, those that agree in text, those that agree in place too, and the largest differences."""
    flat = [[(text, x, y, page) for page, lines in enumerate(pages) for text, x, y in lines] for pages in (ours, theirs)]
    pairs = common(*flat)
    dx = dy = 0.0
    placed = 0
    for mine, other in pairs:
        if mine[3] != other[3]:
            continue
        dx = max(dx, abs(mine[1] - other[1]))
        dy = max(dy, abs(mine[2] - other[2]))
        placed += abs(mine[1] - other[1]) <= 1.5 and abs(mine[2] - other[2]) <= 3
    return max(len(flat[0]), len(flat[1])), len(pairs), placed, dx, dy


def main():
    ours, theirs = sys.argv[1:]
    names = sorted({name for folder in (ours, theirs) for name in os.listdir(folder) if name.endswith('.pdf')})
    print(f'{"document":58} {"pages":>9} {"lines":>6} {"alike":>6} {"placed":>6} {"dx":>6} {"dy":>6}')
    good = 0
    for name in names:
        paths = [os.path.join(folder, name) for folder in (ours, theirs)]
        missing = [who for who, path in zip(('ours', 'theirs'), paths) if not os.path.exists(path)]
        if missing:
            print(f'{name[:-4][:58]:58} no pages of {" and ".join(missing)}')
            continue
        mine, other = map(lines_of, paths)
        lines, alike, placed, dx, dy = compare(mine, other)
        well = len(mine) == len(other) and alike >= 0.97 * lines and placed == alike
        good += well
        print(f'{name[:-4][-58:]:58} {len(mine):>4}/{len(other):<4} {lines:>6} {alike:>6} {placed:>6} {dx:>6.2f} {dy:>6.2f}'
              + ('' if well else '  *'))
    print(f'{good} of {len(names)} documents agree: pages, 97 lines of 100, places within 1.5 and 3 points')


main()
