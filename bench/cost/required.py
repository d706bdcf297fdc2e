"""What Orvella may cost: each required figure once, with its limit."""
import dataclasses


@dataclasses.dataclass(frozen=True)
class Required:
    title: str
    figure: str
    limit: float
    # Of which program's figure the limit is a multiple; of none, it is in `unit`.
    program: str = ""
    of: str = ""
    unit: str = ""
    # Whether the limit itself is too much.
    below: bool = False
    # A figure of the build, not of a run.
    is_of_build: bool = False


REQUIRED = (
    Required("start to registered item", "start", 1.0, "floor-qt6", "start", "ms"),
    Required("the same, rested", "rested", 1.0, "floor-qt6", "rested", "ms"),
    Required("item complete after its registration", "complete", 4, unit="ms"),
    Required("CPU to the end of the first poll cycle", "boot_cpu", 1.3, "floor-qt6poll", "boot_cpu", "ms"),
    Required("memory at rest: anonymous", "anon", 1.15, "floor-qt6poll", "anon", "MiB"),
    Required("memory at rest: RSS", "rss", 1.1, "floor-qt6poll", "rss", "MiB"),
    Required("memory at rest: PSS", "pss", 1.1, "floor-qt6poll", "pss", "MiB"),
    Required("RSS after the popover was open 20 times", "rss_clicked", 1.3, "floor-qt6poll", "rss", "MiB"),
    Required("CPU between polls", "cpu", 0.31, unit="ms a minute"),
    Required("context switches between polls", "ctx", 3, unit="a minute"),
    Required("CPU of a poll cycle", "cycle_cpu", 2.0, "floor-qt6poll", "cycle_cpu", "ms"),
    Required("threads at rest", "threads", 5),
    Required("processes at rest", "procs", 1),
    Required("first click to the popover mapped", "click", 1.0, "copyq", "click", "ms", below=True),
    # As in the first click's row: a window that another program merely shows again has no layout to do.
    Required("later clicks", "clicks", 0.5, "copyq", "click", "ms"),
    Required("offer received to the panel mapped", "offer", 50, unit="ms"),
    Required("program and its own libraries", "size", 1.6, unit="MiB", is_of_build=True),
)


@dataclasses.dataclass(frozen=True)
class Verdict:
    required: Required
    desktop: str
    value: float | None
    limit: float | None

    @property
    def is_met(self):
        if self.value is None or self.limit is None:
            return False
        return self.value < self.limit if self.required.below else self.value <= self.limit

    def sentence(self):
        where = "" if self.required.is_of_build else f" [{named(self.desktop)}]"
        if self.value is None or self.limit is None:
            return f"{self.required.title}{where}: not measured"
        reference = f" ({self.required.limit:g} x {self.required.program})" if self.required.program else ""
        relation = "less than" if self.required.below else "at most"
        return (f"{self.required.title}{where}: {self.value:.2f} {self.required.unit}".rstrip()
                + f", required {relation} {self.limit:.2f}{reference}")


def named(desktop):
    return "no desktop name" if desktop == "none" else desktop


def limit_on(required, desktop, medians):
    """A floor that a desktop's name makes heavier is no gift: the lighter one counts, of this desktop and of none."""
    if not required.program:
        return required.limit
    without, here = (medians[place].get(required.program, {}).get(required.of) for place in ("none", desktop))
    # Some floors are not measured again on every desktop.
    return None if without is None else required.limit * min(without, here or without)


def verdicts(medians, size_mib):
    out = []
    for required in REQUIRED:
        if required.is_of_build:
            out.append(Verdict(required, "none", size_mib, required.limit))
            continue
        for desktop, programs in medians.items():
            value = programs.get("orvella", {}).get(required.figure)
            out.append(Verdict(required, desktop, value, limit_on(required, desktop, medians)))
    return out
