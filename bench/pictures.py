# SPDX-FileCopyrightText: 2026 The pxcl developers
# SPDX-License-Identifier: Apache-2.0

"""The two pictures of docs/performance.md as SVG, on a ground of their own for light and dark pages."""

import html
import math

INK, FAINT, GRID, GROUND = "#1f2328", "#59636e", "#d1d9e0", "#ffffff"
QUICKER, SLOWER = "#1f77b4", "#d9730d"
KIND_COLOURS = ["#1f77b4", "#d9730d", "#2a8a4a", "#9a4fb5", "#59636e"]


class Canvas:
    def __init__(self, width, height, title):
        self.size = f'width="{width}" height="{height}" viewBox="0 0 {width} {height}"'
        self.parts = [f"<title>{html.escape(title)}</title>",
                      f'<rect x="0.5" y="0.5" width="{width - 1}" height="{height - 1}" rx="6" fill="{GROUND}" '
                      f'stroke="{GRID}"/>']

    def text(self, x, y, text, size=11, anchor="start", colour=INK, more=""):
        self.parts.append(f'<text x="{x:.1f}" y="{y:.1f}" font-size="{size}" text-anchor="{anchor}" '
                          f'fill="{colour}" {more}>{html.escape(text)}</text>')

    def bar(self, x, y, width, height, colour):
        self.parts.append(f'<rect x="{x:.1f}" y="{y:.1f}" width="{width:.1f}" height="{height}" '
                          f'fill="{colour}"/>')

    def line(self, points, colour, width=1.0, more=""):
        places = " ".join(f"{x:.1f},{y:.1f}" for x, y in points)
        self.parts.append(f'<polyline points="{places}" fill="none" stroke="{colour}" '
                          f'stroke-width="{width}" {more}/>')

    def svg(self):
        return ("<!-- SPDX-FileCopyrightText: 2026 The pxcl developers -->\n"
                "<!-- SPDX-License-Identifier: Apache-2.0 -->\n"
                f'<svg xmlns="http://www.w3.org/2000/svg" {self.size} role="img" '
                'font-family="Helvetica, Arial, sans-serif">\n' + "\n".join(self.parts) + "\n</svg>\n")


class LogScale:
    """Places of values, from the decade of the least to that of the largest, or to what holds them just so."""

    def __init__(self, values, begin, end, just=False):
        self.low, self.high = math.log10(min(values)), math.log10(max(values))
        if not just:
            self.low, self.high = math.floor(self.low), math.ceil(self.high)
        self.high = max(self.high, self.low + 1)
        self.begin, self.end = begin, end

    def __call__(self, value):
        part = (math.log10(value) - self.low) / (self.high - self.low)
        return self.begin + part * (self.end - self.begin)

    def decades(self):
        return [10.0 ** power for power in range(math.ceil(self.low), math.floor(self.high) + 1)]


# ---- Bars against the peers ----

PITCH, TITLE, GAP, NAME, VALUE = 12, 16, 9, 54, 36
COLUMN, TOP, BOTTOM, MARGIN = 400, 124, 12, 20


def height_of(groups):
    return sum(TITLE + PITCH * len(bars) + GAP for _, bars in groups)


def times(ratio):
    return f"{ratio:.0f}" if ratio >= 100 else f"{ratio:.1f}" if ratio >= 10 else f"{ratio:.2f}"


def speed(columns):
    """`columns`: two of (heading, [(title, [(who, its time over ours)])])."""
    width, end = 2 * COLUMN + 3 * MARGIN, TOP + max(height_of(groups) for _, groups in columns)
    canvas = Canvas(width, end + BOTTOM, "How long other XML libraries take for the same work, pxcl = 1")
    canvas.text(MARGIN, 28, "How long others take for the same work, pxcl = 1", 16, more='font-weight="bold"')
    for x, colour, what in ((MARGIN, QUICKER, "the peer takes longer than pxcl"),
                            (MARGIN + 210, SLOWER, "the peer takes less than pxcl")):
        canvas.bar(x, 42, 12, 10, colour)
        canvas.text(x + 18, 51, what, colour=FAINT)
    canvas.text(width - MARGIN, 51, "logarithmic", anchor="end", colour=FAINT)
    ratios = [ratio for _, groups in columns for _, bars in groups for _, ratio in bars] + [0.5, 10]
    for column, (heading, groups) in enumerate(columns):
        x = MARGIN + column * (COLUMN + MARGIN)
        canvas.text(x, 82, heading, 14, more='font-weight="bold"')
        speed_column(canvas, x, groups, ratios)
    return canvas.svg()


def speed_column(canvas, x, groups, ratios):
    scale = LogScale(ratios, x + NAME + VALUE, x + COLUMN - VALUE, just=True)
    end = TOP + height_of(groups) - GAP
    for decade in scale.decades():
        place = scale(decade)
        canvas.line([(place, TOP - 12), (place, end)], INK if decade == 1 else GRID)
        canvas.text(place, TOP - 18, f"{decade:g}", anchor="middle", colour=FAINT)
    y = TOP
    for title, bars in groups:
        # The ground behind the title keeps the lines of the scale out of it.
        canvas.bar(x, y - 2, COLUMN, TITLE, GROUND)
        canvas.text(x, y + 10, title, 12, more='font-weight="bold"')
        y += TITLE
        for who, ratio in bars:
            begin, stop = sorted((scale(1), scale(ratio)))
            canvas.text(x + NAME - 4, y + 9, who, 10.5, "end")
            canvas.bar(begin, y + 1, max(stop - begin, 1), PITCH - 2, QUICKER if ratio >= 1 else SLOWER)
            if ratio >= 1:
                canvas.text(stop + 4, y + 9.5, times(ratio), 10)
            else:
                canvas.text(begin - 4, y + 9.5, times(ratio), 10, "end")
            y += PITCH
        y += GAP


# ---- Growth ----

PLOT_LEFT, PLOT_TOP, PLOT_RIGHT, PLOT_BOTTOM = 70, 78, 700, 560
UNITS = ((1e9, "G"), (1e6, "M"), (1e3, "k"), (1, ""), (1e-3, "m"), (1e-6, "µ"), (1e-9, "n"))


def with_unit(value, unit):
    factor, prefix = next((row for row in UNITS if value >= row[0] * 0.999), UNITS[-1])
    return f"{value / factor:g} {prefix}{unit}"


def growth(shapes):
    """`shapes`: (kind, name, [(bytes, seconds)]); those whose document does not grow are left out."""
    shapes = [(kind, name, sorted(points)) for kind, name, points in shapes]
    shapes = [shape for shape in shapes if shape[2][-1][0] >= 2 * shape[2][0][0]]
    points = [point for _, _, some in shapes for point in some]
    canvas = Canvas(780, 620, "Time against document size for odd and hostile documents, log-log")
    canvas.text(PLOT_LEFT, 28, "Time against document size", 16, more='font-weight="bold"')
    canvas.text(PLOT_LEFT, 46, f"{len(shapes)} odd and hostile shapes of documents, from a 64th of their size. Dotted: in proportion "
                "to the size.", colour=FAINT)
    x = LogScale([size for size, _ in points], PLOT_LEFT, PLOT_RIGHT)
    y = LogScale([seconds for _, seconds in points], PLOT_BOTTOM, PLOT_TOP)
    growth_axes(canvas, x, y)
    growth_diagonals(canvas, x, y, [size / seconds for size, seconds in points])
    growth_lines(canvas, x, y, shapes)
    return canvas.svg()


def growth_axes(canvas, x, y):
    for decade in x.decades():
        canvas.line([(x(decade), PLOT_TOP), (x(decade), PLOT_BOTTOM)], GRID, 0.6)
        canvas.text(x(decade), PLOT_BOTTOM + 18, with_unit(decade, "B"), anchor="middle", colour=FAINT)
    for decade in y.decades():
        canvas.line([(PLOT_LEFT, y(decade)), (PLOT_RIGHT, y(decade))], GRID, 0.6)
        canvas.text(PLOT_LEFT - 8, y(decade) + 4, with_unit(decade, "s"), anchor="end", colour=FAINT)
    canvas.text((PLOT_LEFT + PLOT_RIGHT) / 2, PLOT_BOTTOM + 40, "size of the document", anchor="middle",
                colour=FAINT)


def growth_diagonals(canvas, x, y, speeds):
    """Of constant speed, each ten times the next one's."""
    left, right = 10.0 ** x.low, 10.0 ** x.high
    bottom, top = 10.0 ** y.low, 10.0 ** y.high
    for pace in LogScale(speeds, 0, 1).decades():
        begin, end = max(left, bottom * pace), min(right, top * pace)
        canvas.line([(x(begin), y(begin / pace)), (x(end), y(end / pace))], FAINT, 0.8,
                    'stroke-dasharray="2 4"')
        if end == right:
            canvas.text(PLOT_RIGHT + 8, y(end / pace) + 4, with_unit(pace, "B/s"), 11, colour=FAINT)
        else:
            canvas.text(x(end), PLOT_TOP - 8, with_unit(pace, "B/s"), 11, "middle", FAINT)


def growth_lines(canvas, x, y, shapes):
    kinds = list(dict.fromkeys(kind for kind, _, _ in shapes))
    for kind, name, points in shapes:
        colour = KIND_COLOURS[kinds.index(kind) % len(KIND_COLOURS)]
        places = [(x(size), y(seconds)) for size, seconds in points]
        canvas.parts.append(f"<g><title>{html.escape(name)}</title>")
        canvas.line(places, colour, 1.4, 'stroke-opacity="0.85" stroke-linejoin="round"')
        canvas.parts.append("</g>")
    for row, kind in enumerate(kinds):
        height = PLOT_TOP + 16 + 18 * row
        canvas.bar(PLOT_LEFT + 12, height - 11, 190, 18, GROUND)
        canvas.line([(PLOT_LEFT + 16, height - 4), (PLOT_LEFT + 40, height - 4)],
                    KIND_COLOURS[row % len(KIND_COLOURS)], 2.5)
        canvas.text(PLOT_LEFT + 48, height, kind)
