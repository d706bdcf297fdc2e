"""What is measured, as programs.ini lists it."""
import configparser
import dataclasses
import os
import shlex

DESKTOPS = ("none", "XFCE", "GNOME")


@dataclasses.dataclass(frozen=True)
class Program:
    name: str
    command: str
    setup: str = ""
    home: str = ""
    kit: str = ""
    clicks: int = 0
    close: str = "frame"
    polls: str = ""
    on: str = ""

    def argv(self, places):
        return [word.format_map(places) for word in shlex.split(self.command)]

    def is_measured_on(self, desktop):
        return desktop == "none" or self.on == "all"


def load():
    ini = configparser.ConfigParser(interpolation=None)
    with open(os.path.join(os.path.dirname(os.path.abspath(__file__)), "programs.ini")) as file:
        ini.read_file(file)
    programs = []
    for name in ini.sections():
        entries = dict(ini[name])
        entries["clicks"] = int(entries.get("clicks", 0))
        programs.append(Program(name, **entries))
    return programs
