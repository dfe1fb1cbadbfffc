"""Compares PDF files of the same names in two folders, line by line, and tells from the documents' sources what
in them accounts for a difference. Used by compare_letters."""

import collections
import html
import os
import re
import subprocess
import sys

WORD = re.compile(r'<word xMin="([\d.-]+)" yMin="([\d.-]+)" xMax="([\d.-]+)" yMax="([\d.-]+)">(.*?)</word>')
ON_ONE_LINE = 3  # points
MOST_ASIDE, MOST_BELOW = 1.5, 3
ENOUGH = 0.97
LEADER = re.compile(r'([._=·-])\1{2,}')
SYMBOLS = re.compile('[\uf020-\uf0ff]')

Line = collections.namedtuple('Line', 'text x y page')


def lines_of(path):
    """The lines of all pages. Where a line stands is told by the middle of its first word's box: the two
    programs write other heights of the same font. How many dots lead to a tab stop isn't compared."""
    boxes = subprocess.run(['pdftotext', '-bbox', path, '-'], capture_output=True, text=True, check=False).stdout
    lines = []
    pages = boxes.split('<page ')[1:]
    for page, part in enumerate(pages):
        words = [(float(left), float(top), float(bottom), text) for left, top, _, bottom, text in WORD.findall(part)]
        words.sort(key=lambda word: (word[2], word[0]))
        grouped = []
        for word in words:
            if grouped and abs(grouped[-1][0][2] - word[2]) <= ON_ONE_LINE:
                grouped[-1].append(word)
            else:
                grouped.append([word])
        for group in grouped:
            group.sort()
            text = LEADER.sub('…', html.unescape(''.join(word[3] for word in group)))
            lines.append(Line(text, group[0][0], (group[0][1] + group[0][2]) / 2, page))
    return lines, len(pages)


def alike(mine, other):
    """Whether two lines have the same text. For a symbol font's letter the one program writes the character that
    looks like it, the other the font's own number."""
    if mine == other or not SYMBOLS.search(mine + other):
        return mine == other
    return len(mine) == len(other) and all(
        a == b or SYMBOLS.match(a) or SYMBOLS.match(b) for a, b in zip(mine, other))


def common(ours, theirs):
    """Pairs of lines with the same text, in sequence."""
    same = [[alike(mine.text, other.text) for other in theirs] for mine in ours]
    longest = [[0] * (len(theirs) + 1) for _ in range(len(ours) + 1)]
    for i in range(len(ours) - 1, -1, -1):
        for j in range(len(theirs) - 1, -1, -1):
            longest[i][j] = longest[i + 1][j + 1] + 1 if same[i][j] else max(longest[i + 1][j], longest[i][j + 1])
    pairs, i, j = [], 0, 0
    while i < len(ours) and j < len(theirs):
        if same[i][j]:
            pairs.append((ours[i], theirs[j]))
            i, j = i + 1, j + 1
        elif longest[i + 1][j] >= longest[i][j + 1]:
            i += 1
        else:
            j += 1
    return pairs


class Comparison:
    """How far the pages of one document agree."""

    def __init__(self, ours, theirs):
        mine, self.our_pages = lines_of(ours)
        other, self.their_pages = lines_of(theirs)
        pairs = common(mine, other)
        on_one_page = [(a, b) for a, b in pairs if a.page == b.page]
        aside = [abs(a.x - b.x) for a, b in on_one_page]
        below = [abs(a.y - b.y) for a, b in on_one_page]
        self.lines = max(len(mine), len(other))
        self.alike = len(pairs)
        self.placed = sum(x <= MOST_ASIDE and y <= MOST_BELOW for x, y in zip(aside, below))
        self.dx, self.dy = max(aside, default=0), max(below, default=0)
        self.is_moved_aside = self.dx > MOST_ASIDE
        self.is_moved_over = any(a.page != b.page for a, b in pairs)
        self.texts_differ = self.alike < ENOUGH * self.lines
        self.agrees = (self.our_pages == self.their_pages and not self.texts_differ and self.placed == self.alike)
        paired = {id(line) for pair in pairs for line in pair}
        self.astray = '\n'.join(line.text for line in mine + other if id(line) not in paired)
        self.missing = set(''.join(line.text for line in other)) - set(''.join(line.text for line in mine))


def lacks_font(characters):
    """Whether a character stands in none of the fonts."""
    return any(
        not subprocess.run(['fc-list', f':charset={ord(character):x}'], capture_output=True, check=False).stdout
        for character in characters if not SYMBOLS.match(character))


def has_fields(source):
    """Whether there are fields that LibreOffice fills in itself."""
    instructions = re.findall(r'\\fldinst\b(?:[{}\s]|\\[a-z*]+-?\d* ?)*([A-Za-z]+)', source)
    return any(word.upper() not in ('HYPERLINK', 'SYMBOL') for word in instructions)


# What accounts for a difference: the cause, whether it moves lines aside, and its sign in the source.
CAUSES = [
    ('headers and footers, not shown', False, r'\{\s*\\(header|footer)[lrf]?\b'),
    ('footnotes, not shown', False, r'\\footnote\b'),
    ('columns, set as one', False, r'\\cols[2-9]'),
    ('list numbers, shown as the source tells', False, r'\\(ls[1-9]|pntext\b)'),
    ('letters in relief, drawn twice by LibreOffice', False, r'\\(shad|embo|impr)\b(?!0)'),
    ('a page break ahead of \\pard, a line more in LibreOffice', False, r'\\page\s*\\pard\b'),
    ('pictures of other kinds, shown as a frame', False, r'\\(wmetafile|emfblip|macpict|dibitmap|wbitmap)'),
    ('nested tables, shown as text', False, r'\\itap[2-9]'),
    ('UTF-8, not known to LibreOffice', False, r'cpg65001'),
    ('East Asian letters, of their own size in LibreOffice', False, r'\\dbch\\f'),
    ('no font table, another font in LibreOffice', True, r'\A(?!.*\\fonttbl)'),
    ('cells, moved left by LibreOffice', True, r'\\trgaph0*[1-9]'),
    ('borders of paragraphs, text moved in by LibreOffice', True,
     r'\\brdr[lr](?=[\\\s]).{0,60}?\\brsp[1-9]'),
    ('list indents, of the list in LibreOffice', True, r'\\ls[1-9]'),
]


def causes(source, found):
    """What in the source accounts for the difference that was found."""
    differs_otherwise = found.texts_differ or found.dy > MOST_BELOW
    named = [cause for cause, moves_aside, sign in CAUSES
             if (found.is_moved_aside if moves_aside else differs_otherwise) and re.search(sign, source, re.DOTALL)]
    if differs_otherwise and has_fields(source):
        named.append('fields, shown as the source tells')
    if found.texts_differ and (SYMBOLS.search(found.astray) or lacks_font(found.missing)):
        named.append('letters that no font here has')
    if found.is_moved_over and not re.search(r'\\wid(ow)?ct', source):
        named.append('lone lines, taken over the page by LibreOffice')
    if 'http://' in found.astray:
        named.append('web addresses, not broken by LibreOffice')
    return named or ['other']


def refusal(source, missing):
    """Why a program has printed nothing."""
    if not source.lstrip().startswith('{\\rtf'):
        return f'no rich text, refused by {missing}'
    plain = re.sub(r'\\[\\{}]', '', source)
    if plain.count('{') != plain.count('}'):
        return f'unbalanced braces, refused by {missing}'
    return f'refused by {missing}'


def main():
    ours, theirs, sources = sys.argv[1:]
    names = sorted(name[:-4] for name in os.listdir(sources))
    print(f'{"document":58} {"pages":>9} {"lines":>6} {"alike":>6} {"placed":>6} {"dx":>6} {"dy":>6}')
    good, counts = 0, collections.Counter()
    for name in names:
        with open(os.path.join(sources, name + '.rtf'), encoding='latin-1') as file:
            source = file.read()
        paths = [os.path.join(folder, name + '.pdf') for folder in (ours, theirs)]
        missing = [who for who, path in zip(('us', 'LibreOffice'), paths) if not os.path.exists(path)]
        if missing:
            why = [refusal(source, ' and '.join(missing))]
            print(f'{name[-58:]:58} {"none":>9}{"":35}  * {why[0]}')
        else:
            found = Comparison(*paths)
            why = [] if found.agrees else causes(source, found)
            good += found.agrees
            print(f'{name[-58:]:58} {found.our_pages:>4}/{found.their_pages:<4} {found.lines:>6} {found.alike:>6} '
                  f'{found.placed:>6} {found.dx:>6.2f} {found.dy:>6.2f}' + (f'  * {"; ".join(why)}' if why else ''))
        counts.update(why)
    print(f'{good} of {len(names)} documents agree: pages, {100 * ENOUGH:.0f} lines of 100, places within '
          f'{MOST_ASIDE} and {MOST_BELOW} points')
    for cause, count in counts.most_common():
        print(f'{count:>4}  {cause}')


if __name__ == '__main__':
    main()
