"""Draws charts as SVG, side by side, each with axes of its own."""
import math
from collections.abc import Callable
from dataclasses import dataclass, field
from xml.sax.saxutils import escape

BLUE, ORANGE, GREY = "#1f5fa8", "#c2570c", "#8a8f98"
INK, FAINT, PAPER = "#20242b", "#dfe3e8", "#ffffff"
HEIGHT = 300
LEFT, RIGHT, TOP, BOTTOM = 68, 32, 50, 48


@dataclass
class Series:
    name: str
    points: list
    colour: str = BLUE
    has_marks: bool = False
    is_dashed: bool = False


def counted(value):
    """A number as a tick has it: 300, 10,000, 1M."""
    return f"{value / 1_000_000:g}M" if value >= 1_000_000 else f"{value:,g}"


def timed(seconds):
    for unit, size in (("s", 1), ("ms", 1e-3), ("µs", 1e-6)):
        if seconds >= size * 0.999:
            return f"{seconds / size:g} {unit}"
    return f"{seconds * 1e9:g} ns"


def binary(count):
    """Bytes."""
    return f"{count >> 20} MiB" if count >= 1 << 20 else f"{count >> 10} KiB"


@dataclass
class Chart:
    title: str
    across: str
    up: str
    series: list
    is_across_logarithmic: bool = False
    is_up_logarithmic: bool = True
    note: str = ""
    # Chosen where the axis does not choose well.
    ticks_across: list = field(default_factory=list)
    name_across: Callable = counted
    name_up: Callable = counted
    width: int = 460

    def end(self):
        return self.width - RIGHT


class Axis:
    def __init__(self, values, is_logarithmic, start, end, ticks=()):
        self.is_logarithmic = is_logarithmic
        self.start, self.end = start, end
        self.least, self.greatest = (min(ticks), max(ticks)) if ticks else self.bounds(values)
        self.ticks = list(ticks) or self.own_ticks()

    def bounds(self, values):
        if not self.is_logarithmic:
            return min(0, *values), max(values)
        least = 10 ** math.floor(math.log10(min(values)) + 1e-9)
        greatest = 10 ** math.ceil(math.log10(max(values)) - 1e-9)
        return least, max(greatest, least * 10)

    def own_ticks(self):
        if self.is_logarithmic:
            first, last = round(math.log10(self.least)), round(math.log10(self.greatest))
            return [10 ** power for power in range(first, last + 1)]
        step = 10 ** math.floor(math.log10(self.greatest - self.least))
        if (self.greatest - self.least) / step < 4:
            step /= 2
        return [number * step for number in range(int(self.greatest / step) + 1)]

    def place(self, value):
        scale = math.log10 if self.is_logarithmic else float
        part = (scale(value) - scale(self.least)) / (scale(self.greatest) - scale(self.least))
        return self.start + part * (self.end - self.start)


def text(x, y, content, size=13, anchor="middle", colour=INK, more=""):
    return (f'<text x="{x:.1f}" y="{y:.1f}" font-size="{size}" text-anchor="{anchor}" fill="{colour}"{more}>'
            f"{escape(content)}</text>")


def line(x1, y1, x2, y2, colour=FAINT):
    return f'<line x1="{x1:.1f}" y1="{y1:.1f}" x2="{x2:.1f}" y2="{y2:.1f}" stroke="{colour}"/>'


def drawn_series(series, across, up):
    places = [(across.place(x), up.place(y)) for x, y in series.points]
    path = " ".join(f"{x:.1f},{y:.1f}" for x, y in places)
    dashes = ' stroke-dasharray="6 4"' if series.is_dashed else ""
    yield f'<polyline points="{path}" fill="none" stroke="{series.colour}" stroke-width="1.6"{dashes}/>'
    if series.has_marks:
        for x, y in places:
            yield f'<circle cx="{x:.1f}" cy="{y:.1f}" r="3.2" fill="{series.colour}"/>'


def drawn_key(chart):
    x = LEFT
    for series in chart.series:
        y = TOP - 12
        dashes = ' stroke-dasharray="6 4"' if series.is_dashed else ""
        yield (f'<line x1="{x}" y1="{y - 4}" x2="{x + 22}" y2="{y - 4}" stroke="{series.colour}" '
               f'stroke-width="2.4"{dashes}/>')
        yield text(x + 28, y, series.name, 12, "start")
        x += 44 + 6.6 * len(series.name)


def drawn_chart(chart):
    xs = [x for series in chart.series for x, _ in series.points]
    ys = [y for series in chart.series for _, y in series.points]
    across = Axis(xs, chart.is_across_logarithmic, LEFT, chart.end(), chart.ticks_across)
    up = Axis(ys, chart.is_up_logarithmic, HEIGHT - BOTTOM, TOP)
    yield text(LEFT, 20, chart.title, 15, "start", more=' font-weight="600"')
    yield from drawn_key(chart)
    for tick in across.ticks:
        x = across.place(tick)
        yield line(x, TOP, x, HEIGHT - BOTTOM)
        yield text(x, HEIGHT - BOTTOM + 17, chart.name_across(tick))
    for tick in up.ticks:
        y = up.place(tick)
        yield line(LEFT, y, chart.end(), y)
        yield text(LEFT - 8, y + 4, chart.name_up(tick), anchor="end")
    yield line(LEFT, HEIGHT - BOTTOM, chart.end(), HEIGHT - BOTTOM, INK)
    yield line(LEFT, TOP, LEFT, HEIGHT - BOTTOM, INK)
    for series in chart.series:
        yield from drawn_series(series, across, up)
    yield text((LEFT + chart.end()) / 2, HEIGHT - 10, chart.across)
    middle = (TOP + HEIGHT - BOTTOM) / 2
    yield text(16, middle, chart.up, more=f' transform="rotate(-90 16 {middle:.1f})"')
    if chart.note:
        yield text(chart.end() - 6, HEIGHT - BOTTOM - 8, chart.note, 12, "end")


def draw(path, charts, columns):
    """Writes the charts, which are equally wide, into one picture, row by row."""
    rows = math.ceil(len(charts) / columns)
    width, height = columns * charts[0].width, rows * HEIGHT
    parts = [f'<svg xmlns="http://www.w3.org/2000/svg" width="{width}" height="{height}" '
             f'viewBox="0 0 {width} {height}" font-family="sans-serif">',
             f'<rect width="{width}" height="{height}" fill="{PAPER}"/>']
    for number, chart in enumerate(charts):
        x, y = number % columns * chart.width, number // columns * HEIGHT
        parts += [f'<g transform="translate({x} {y})">', *drawn_chart(chart), "</g>"]
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text("\n".join([*parts, "</svg>"]) + "\n")
