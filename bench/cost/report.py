"""The tables, in Markdown, and the verdict."""
import os
import statistics

from required import REQUIRED, named, verdicts

COLUMNS = (  # figure, heading, decimals
    ("start", "start ms", 1), ("rested", "rested ms", 1), ("complete", "complete ms", 1),
    ("boot_cpu", "boot CPU ms", 0), ("anon", "anon MiB", 2), ("rss", "RSS MiB", 1), ("pss", "PSS MiB", 1),
    ("rss_clicked", "RSS after clicks", 1),
    ("cpu", "CPU ms/min", 2), ("ctx", "switches/min", 1), ("cycle_cpu", "poll CPU ms", 2), ("threads", "threads", 0),
    ("procs", "processes", 0), ("libs", "libraries", 0), ("click", "first click ms", 1),
    ("clicks", "later clicks ms", 1), ("offer", "offer ms", 1),
)
# Nobody else's work takes up more of the machine while it is measured.
CALM_PERCENT = 15
# Those whose ratio says something.
RATIOS = {"start", "rested", "boot_cpu", "anon", "rss", "pss", "rss_clicked", "cycle_cpu", "threads", "libs", "click",
          "clicks"}


def medians(results):
    """{program: {figure: median}} of one desktop's {program: [figures of a run]}"""
    return {name: {key: statistics.median(values) for key, values in gathered(runs).items()}
            for name, runs in results.items() if runs}


def gathered(runs):
    values = {}
    for run in runs:
        for key, value in run.items():
            if isinstance(value, (int, float)):
                values.setdefault(key, []).append(value)
            elif isinstance(value, list):
                values.setdefault(key, []).extend(value)
    return {key: found for key, found in values.items() if found}


def table(heads, rows):
    grid = [heads, *rows]
    widths = [max(len(row[column]) for row in grid) for column in range(len(heads))]

    def line(row):
        cells = [cell.ljust(width) if column == 0 else cell.rjust(width)
                 for column, (cell, width) in enumerate(zip(row, widths))]
        return "| " + " | ".join(cells) + " |"
    rules = ["-" * (width + 1) + ("-" if column == 0 else ":") for column, width in enumerate(widths)]
    print("\n".join([line(heads), "|" + "|".join(rules) + "|", *map(line, rows)]))


def figure_table(title, figures, cell, wanted):
    known = {key for row in figures.values() for key in row}
    columns = [column for column in COLUMNS if column[0] in wanted & known]
    print(f"\n### {title}\n")
    table(["program", *(heading for _, heading, _ in columns)],
          [[name, *(cell(row, key, decimals) if key in row else "–" for key, _, decimals in columns)]
           for name, row in figures.items()])


def print_desktop(desktop, figures):
    figure_table(f"Medians, {named(desktop)}", figures, lambda row, key, decimals: f"{row[key]:.{decimals}f}",
                 {key for key, *_ in COLUMNS})
    for floor in ("floor-qt6", "floor-qt6poll"):
        base = figures.get(floor, {})
        figure_table(f"Ratios to {floor}, {named(desktop)}", figures,
                     lambda row, key, _: f"{row[key] / base[key]:.2f}", RATIOS & {key for key in base if base[key]})


def print_spread(results):
    """How far the runs of a program lie apart, and how busy others kept the machine."""
    spans = {}
    for programs in results.values():
        for name, runs in programs.items():
            starts = gathered(runs).get("start", [])
            if len(starts) > 1:
                spans.setdefault(name, []).append((max(starts) - min(starts)) / statistics.median(starts))
    if spans:
        worst = max(max(values) for values in spans.values())
        middle = statistics.median(value for values in spans.values() for value in values)
        print(f"\nSpread of the starts, (longest - shortest) / median: {100 * middle:.0f} % in the median over the"
              f" programs, {100 * worst:.0f} % at worst.")
    every = [run for programs in results.values() for runs in programs.values() for run in runs]
    for key, when in (("busy_start", "before the starts"), ("busy_rest", "during the rest")):
        values = [run[key] for run in every if key in run]
        if values:
            print(f"Machine busy {when}: {statistics.median(values):.0f} % in the median, {min(values):.0f} to"
                  f" {max(values):.0f} %, of {os.cpu_count()} processors.")
            if statistics.median(values) > CALM_PERCENT:
                print("That is too busy for the times to be relied on, also where they are good enough.")


def print_required(found):
    desktops = list(dict.fromkeys(verdict.desktop for verdict in found))
    print("\n### Required\n")
    rows = []
    for required in REQUIRED:
        cells = []
        for desktop in desktops:
            verdict = next((each for each in found if each.required is required and each.desktop == desktop), None)
            cells.append(cell_of(verdict) if verdict else "")
        relation = "less than" if required.below else "at most"
        unit = f"x {required.program}" if required.program else required.unit
        rows.append([required.title, f"{relation} {required.limit:g} {unit}".rstrip(), *cells])
    table(["figure", "required", *map(named, desktops)], rows)


def cell_of(verdict):
    if verdict.value is None or verdict.limit is None:
        return "not measured"
    # What is missed by little must not read as what is allowed.
    decimals = 2 if verdict.is_met else 3
    text = f"{verdict.value:.{decimals}f}"
    if verdict.required.program:
        text += f" = {verdict.value / verdict.limit * verdict.required.limit:.{decimals}f} x"
    return text if verdict.is_met else text + " (missed)"


def report(results, troubles, size_mib):
    """Prints everything; returns whether all that is required is met."""
    every = {desktop: medians(programs) for desktop, programs in results.items()}
    for desktop, figures in every.items():
        print_desktop(desktop, figures)
    print(f"\nThe program and its own libraries, stripped: {size_mib:.2f} MiB.")
    print_spread(results)
    for trouble in troubles:
        print(f"\nNot measured: {trouble}")
    found = verdicts(every, size_mib)
    print_required(found)
    missed = [verdict for verdict in found if not verdict.is_met]
    print()
    for verdict in missed:
        print(f"missed: {verdict.sentence()}")
    if not missed:
        print("All required figures are met.")
    return not missed
