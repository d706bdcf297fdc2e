"""One program, once, in a desktop of its own."""
import contextlib
import ctypes
import json
import os
import signal
import subprocess
import time
import traceback

from basics import Trouble, now
from desktop import Desktop
from processes import busy_percent, cpu_ns, machine_busy
from status_host import ITEM

PRIVATE_IPC = 0x08000000
SUBREAPER = 36
REGISTERED_WITHIN = 30
# Between the desktop being up and the start; it has to come to rest.
CALM = 0.3
# By then the first poll is over, and what it has left behind is done.
BOOT_SECONDS = 3
VIEW_BEGINS = "/api/mac/ads/session/start"


class Seen:
    """When the item was first registered, and first complete."""

    def __init__(self):
        self.at = self.kind = self.complete_at = None

    def registered(self, stamp, kind):
        if self.at is None:
            self.at, self.kind = stamp, kind

    def complete(self, stamp):
        if self.complete_at is None and self.at is not None:
            self.complete_at = stamp


class Apart:
    """A measurement in a process of its own, which reaps what the program leaves behind."""

    def __init__(self, job, *arguments):
        read_end, write_end = os.pipe()
        self.pid = os.fork()
        if self.pid == 0:
            os.close(read_end)
            self.work(write_end, job, arguments)
        os.close(write_end)
        self.pipe = os.fdopen(read_end)

    @staticmethod
    def work(write_end, job, arguments):
        answer = {}
        try:
            ctypes.CDLL(None).prctl(SUBREAPER, 1, 0, 0, 0)
            # What guards against a second instance leaves shared memory behind that the next run would find.
            ctypes.CDLL(None).unshare(PRIVATE_IPC)
            for number in (signal.SIGINT, signal.SIGTERM):
                signal.signal(number, signal.default_int_handler)
            answer = {"figures": job(*arguments)}
        except (Trouble, subprocess.TimeoutExpired) as trouble:
            answer = {"trouble": str(trouble)}
        except KeyboardInterrupt:
            answer = {"trouble": "interrupted"}
        except BaseException:
            answer = {"trouble": "the measurement has a fault: " + traceback.format_exc()}
        os.write(write_end, json.dumps(answer).encode())
        os._exit(0)

    def result(self):
        try:
            text = self.pipe.read()
        except KeyboardInterrupt:
            self.end()
            raise
        self.pipe.close()
        os.waitpid(self.pid, 0)
        answer = json.loads(text or '{"trouble": "the measurement ended early"}')
        if "trouble" in answer:
            raise Trouble(answer["trouble"])
        return answer["figures"]

    def end(self):
        os.kill(self.pid, signal.SIGINT)
        os.waitpid(self.pid, 0)


@contextlib.contextmanager
def running(program, surroundings, rest=CALM, more=()):
    """Starts the program after `rest` seconds and waits for its item: (desktop, time of the start, seen, figures)."""
    seen = Seen()
    desktop = Desktop(seen, surroundings.home_for(program), with_keyring=program.home == "registered")
    try:
        desktop.env.update(surroundings.variables_for(program))
        if program.setup:
            subprocess.run(["sh", "-ec", program.setup], env=desktop.env, cwd=desktop.env["HOME"], timeout=30,
                           stdin=subprocess.DEVNULL, check=True)
        busy = machine_busy()
        desktop.serve(rest)
        others = busy_percent(busy, machine_busy())
        started = desktop.launch(program.argv(surroundings.places) + list(more), mark=f"{os.getpid()}-{now()}")

        def check():
            if now() - started > 10**9 and not desktop.tree.split()[0]:
                raise Trouble("ended before it registered a status item\n" + desktop.tail())
        if not desktop.serve(REGISTERED_WITHIN, lambda: seen.at is not None, check):
            raise Trouble("registered no status item\n" + desktop.tail())
        figures = {"start": (seen.at - started) / 1e6, "busy_start": others, "kind": seen.kind}
        if desktop.serve(3, lambda: seen.complete_at is not None):
            figures["complete"] = (seen.complete_at - seen.at) / 1e6
        yield desktop, started, figures
    finally:
        desktop.close()


def start(program, surroundings, rest=CALM):
    with running(program, surroundings, rest) as (desktop, _, figures):
        return figures


def boot(program, surroundings):
    with running(program, surroundings) as (desktop, started, _):
        return {"boot_cpu": boot_cpu(program, surroundings, desktop, started)}


def boot_cpu(program, surroundings, desktop, started):
    pids = settled(program, surroundings, desktop, started, BOOT_SECONDS)
    cpu, reaped, _ = desktop.tree.activity(pids)
    return (sum(cpu.values()) + sum(reaped.values()) - desktop.cpu_before_exec) / 1e6


def full(program, surroundings, settle, rest=CALM):
    """What the start has cost, memory, and what clicks take and leave behind."""
    with running(program, surroundings, rest) as (desktop, started, figures):
        figures["boot_cpu"] = boot_cpu(program, surroundings, desktop, started)
        pids = settled(program, surroundings, desktop, started, settle)
        memory = desktop.tree.memory(pids)
        # The rest is taken at rest; these two only where nothing else runs that shares pages.
        figures.update({key: memory[key] for key in ("pss", "uss")})
        executable = os.readlink(f"/proc/{desktop.tree.pid if desktop.tree.pid in pids else pids[0]}/exe")
        figures["exe_kib"] = os.path.getsize(executable) / 1024
        figures["item"] = desktop.host.describe()
        click_often(program, desktop, figures)
        return figures


def settled(program, surroundings, desktop, started, seconds):
    """The program's processes, once it has been running for so long and has polled."""
    desktop.serve(seconds - (now() - started) / 1e9)
    pids, _ = desktop.tree.split()
    if not pids:
        raise Trouble("ended while it settled\n" + desktop.tail())
    if program.polls and not surroundings.front.answers(program.polls, since=started):
        raise Trouble(f"did not poll within {seconds} seconds\n" + desktop.tail())
    return pids


def at_rest(program, surroundings, settle, window, delay):
    """What it does and has while it has nothing to do, between two polls."""
    time.sleep(delay)
    with running(program, surroundings) as (desktop, started, _):
        tree = desktop.tree
        pids = settled(program, surroundings, desktop, started, settle)
        busy = machine_busy()
        cpu0, reaped0, switches0 = tree.activity(pids)
        begin = now()
        desktop.serve(window)
        pids = settled(program, surroundings, desktop, started, 0)
        cpu1, reaped1, switches1 = tree.activity(pids)
        minutes = (now() - begin) / 60e9
        used = sum(ns - cpu0.get(pid, 0) for pid, ns in cpu1.items())
        used += sum(ns - reaped0.get(pid, 0) for pid, ns in reaped1.items())
        vol, invol = (sum(pair[index] - switches0.get(key, (0, 0))[index] for key, pair in switches1.items()) / minutes
                      for index in (0, 1))
        # A thread that has ended since takes its count along; it had slept, so its end was one more.
        vol += len(switches0.keys() - switches1.keys()) / minutes
        if program.polls and len(surroundings.front.answers(program.polls, since=begin)) > 0:
            raise Trouble("polled while it was to rest")
        memory = tree.memory(pids)
        libs, libs_mib = tree.mapped(pids)
        return {"cpu": used / 1e6 / minutes, "vol": vol, "invol": invol, "ctx": vol + invol,
                "rss": memory["rss"], "anon": memory["anon"], "procs": len(pids), "threads": tree.threads(pids),
                "libs": libs, "libs_mib": libs_mib, "busy_rest": busy_percent(busy, machine_busy())}


def click_often(program, desktop, figures):
    """Each click opens a window, which is closed again before the next."""
    if not program.clicks or not desktop.host.items:
        return
    item = next(iter(desktop.host.items))
    times = []
    for _ in range(program.clicks):
        before = set(desktop.tray.mapped)
        clicked = now()
        activate(desktop, item)
        if not desktop.serve(3, lambda: set(desktop.tray.mapped) - before):
            raise Trouble(f"showed nothing after click {len(times) + 1}\n" + desktop.tail())
        times.append((min(desktop.tray.mapped[window] for window in set(desktop.tray.mapped) - before) - clicked) / 1e6)
        if program.clicks > 1:
            close_windows(program, desktop, item, before)
    figures["click"], figures["clicks"] = times[0], times[1:]
    if times[1:]:
        desktop.serve(1)
        figures["rss_clicked"] = desktop.tree.memory(desktop.tree.split()[0])["rss"]


def activate(desktop, item):
    desktop.bus.call(*item, ITEM, "Activate", "ii", (10, 10))


def close_windows(program, desktop, item, before):
    # A viewer looks at it; some windows ignore what happens as they appear.
    desktop.serve(0.4)
    if program.close == "click":
        activate(desktop, item)
    else:
        for window in set(desktop.tray.mapped) - before:
            desktop.tray.ask_to_close(window)
    if not desktop.serve(3, lambda: not set(desktop.tray.mapped) - before):
        raise Trouble("what the click opened did not close\n" + desktop.tail())
    desktop.serve(0.2)


def offer(program, surroundings):
    """From the answer with an ad to the panel that opens by itself."""
    with running(program, surroundings, more=("--set", "autoOpenAds=true")) as (desktop, started, figures):
        if not desktop.serve(15, lambda: desktop.tray.mapped):
            raise Trouble("the ad did not open\n" + desktop.tail())
        shown = min(desktop.tray.mapped.values())
        if not desktop.serve(5, lambda: surroundings.front.answers(VIEW_BEGINS, since=started)):
            raise Trouble("a window was shown, but no ad")
        offered = [stamp for stamp in surroundings.front.answers(program.polls, since=started) if stamp < shown]
        if not offered:
            raise Trouble("a window was there before an ad was offered")
        return {"offer": (shown - offered[-1]) / 1e6}


def cycles(program, surroundings, count, interval, delay):
    """CPU of each of the polls after the first, for which the program has slept as it does all day."""
    time.sleep(delay)
    answers = surroundings.front.answers
    with running(program, surroundings) as (desktop, started, figures):
        def poll_after(stamp, seconds):
            if not desktop.serve(seconds, lambda: answers(program.polls, since=stamp)):
                raise Trouble("did not poll\n" + desktop.tail())
            return answers(program.polls, since=stamp)[-1]

        last = poll_after(started, 20)
        costs = []
        for _ in range(count):
            desktop.serve(interval - 4 - (now() - last) / 1e9)
            before = used(desktop)
            last = poll_after(now(), 10)
            desktop.serve(2)
            costs.append((used(desktop) - before) / 1e6)
        return {"cycle_cpu": costs}


def used(desktop):
    return sum(cpu_ns(pid) for pid in desktop.tree.split()[0])


def rested(program, surroundings, rest):
    return {"rested": start(program, surroundings, rest)["start"]}
