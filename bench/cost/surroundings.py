"""What the programs find: where they lie, whom they ask, and the home they start in."""
import dataclasses
import os
import shutil
import subprocess

from basics import Trouble
from one_run import Apart, running
from programs import Program
from service import Authority, Front, Service, no_campaigns

POLL_SECONDS = 300
# The service's shortest; the program asks no more often.
CYCLE_SECONDS = 60
REGISTER = "/api/mac/device/register"


@dataclasses.dataclass(frozen=True)
class Surroundings:
    service: Service
    front: Front
    places: dict
    homes: dict
    desktop: str = "none"
    theme: str = ""

    def home_for(self, program):
        return self.homes[program.home or "empty"]

    def variables_for(self, program):
        if self.desktop == "none":
            return {}
        variables = {"XDG_CURRENT_DESKTOP": self.desktop}
        if program.kit == "qt6" and self.theme:
            variables["QT_PLUGIN_PATH"] = self.theme
        return variables

    def on(self, desktop):
        return dataclasses.replace(self, desktop=desktop)

    def apart(self):
        """The same service, for one that is not alone with it."""
        front = self.service.front()
        return dataclasses.replace(self, front=front, places=self.places | {"service": front.address})


class Ground:
    """Makes surroundings, and ends what it started for them."""

    def __init__(self, options):
        self.options, self.folder, self.services = options, options.folder, []
        shutil.rmtree(self.folder, ignore_errors=True)
        self.homes = {name: os.path.join(self.folder, name + "-home") for name in ("empty", "registered")}
        for home in self.homes.values():
            os.makedirs(home)
        self.authority = Authority(self.folder)
        self.no_campaigns = no_campaigns(self.folder)

    def prepare(self, orvella):
        """A home whose device is registered and linked to a viewer, and fonts that nobody has to look for any more."""
        service = self.start_service("prepare", ["--campaigns", self.no_campaigns])
        Apart(self.register, orvella, self.surroundings(service)).result()
        service.link_device()
        service.close()
        self.services.remove(service)
        self.database = service.database
        for home in self.homes.values():
            subprocess.run(["fc-cache"], env={"HOME": home, "PATH": os.environ["PATH"]}, check=True)

    def register(self, orvella, surroundings):
        with running(orvella, surroundings) as (desktop, started, _):
            answers = surroundings.front.answers
            if not desktop.serve(20, lambda: answers(orvella.polls)):
                raise Trouble("did not register its device\n" + desktop.tail())
            if not answers(REGISTER):
                raise Trouble("polled without having registered")
            # Stores write a moment after what they are asked for.
            desktop.serve(1)
            desktop.end_program()
            shutil.copytree(desktop.env["HOME"], self.homes["registered"], symlinks=True, dirs_exist_ok=True)
        return {}

    def rest(self):
        options = ["--campaigns", self.no_campaigns, "--poll-seconds", str(POLL_SECONDS)]
        return self.surroundings(self.start_service("rest", options, self.database))

    def offers(self):
        # A service of its own for each: it offers a creative once.
        label = f"offer-{len(self.services)}"
        return self.surroundings(self.start_service(label, ["--poll-seconds", str(POLL_SECONDS)], self.database))

    def cycles(self, label):
        options = ["--campaigns", self.no_campaigns, "--poll-seconds", str(CYCLE_SECONDS)]
        return self.surroundings(self.start_service(label, options, self.database), CYCLE_SECONDS)

    def start_service(self, label, options, database=None):
        service = Service(self.options.programs, self.authority, self.folder, label, options, database)
        self.services.append(service)
        return service

    def surroundings(self, service, seconds=POLL_SECONDS):
        front = service.front()
        places = {"installed": self.options.installed, "floors": self.options.floors, "service": front.address,
                  "seconds": seconds}
        return Surroundings(service, front, places, self.homes, theme=self.options.theme)

    def close(self):
        for service in self.services:
            service.close()
