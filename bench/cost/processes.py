"""What processes cost, read from the kernel."""
import collections
import os
import re
import signal
import time

from basics import now, read_file

MARK = "ORVELLA_COST_RUN"


def cpu_ns(pid):
    """CPU time of a whole process, its ended threads included, to the nanosecond."""
    return time.clock_gettime_ns((~pid << 3) | 2)       # CPUCLOCK_SCHED of that pid


def parents():
    """-> {pid: parent pid} of every process that is not a zombie."""
    out = {}
    for entry in os.listdir("/proc"):
        if entry.isdigit():
            try:
                rest = read_file(f"/proc/{entry}/stat").rpartition(b")")[2].split()
                if rest[0] != b"Z":
                    out[int(entry)] = int(rest[1])
            except OSError:
                pass
    return out


def descendants(table, root):
    children = collections.defaultdict(list)
    for pid, parent in table.items():
        children[parent].append(pid)
    out, todo = [], list(children[root])
    while todo:
        pid = todo.pop()
        out.append(pid)
        todo += children[pid]
    return out


class Tree:
    """The processes of one command, however they detach."""

    def __init__(self, pid, mark, own):
        self.pid, self.mark, self.own = pid, f"{MARK}={mark}".encode(), own

    def split(self):
        """-> (pids of the command, pids of bus-started helpers)"""
        table = parents()
        mine = set(descendants(table, self.pid))
        if self.pid in table:
            mine.add(self.pid)
        helpers = []
        for pid in descendants(table, os.getpid()):
            if pid in mine or pid in self.own:
                continue
            try:
                marked = self.mark in read_file(f"/proc/{pid}/environ").split(b"\0")
            except OSError:
                marked = False
            if marked:
                mine.add(pid)
            else:
                helpers.append(pid)
        return sorted(mine), sorted(helpers)

    @staticmethod
    def memory(pids):
        """-> MiB, summed over the processes."""
        sums = collections.Counter()
        for pid in pids:
            try:
                for line in read_file(f"/proc/{pid}/smaps_rollup").decode().splitlines()[1:]:
                    key, value = line.split()[:2]
                    sums[key] += int(value)
            except OSError:
                pass
        return {"rss": sums["Rss:"] / 1024, "pss": sums["Pss:"] / 1024,
                "uss": (sums["Private_Clean:"] + sums["Private_Dirty:"]) / 1024,
                "anon": sums["Anonymous:"] / 1024}

    @staticmethod
    def mapped(pids):
        """-> (number of shared libraries mapped, their size on disk in MiB)"""
        paths = set()
        for pid in pids:
            try:
                for line in read_file(f"/proc/{pid}/maps").decode().splitlines():
                    path = line.split(None, 5)[5:]
                    if path and re.search(r"\.so(\.[0-9.]+)?$", path[0].strip()):
                        paths.add(os.path.realpath(path[0].strip()))
            except OSError:
                pass
        size = sum(os.path.getsize(p) for p in paths if os.path.exists(p))
        return len(paths), size / (1 << 20)

    @staticmethod
    def activity(pids):
        """-> (CPU ns, reaped children's CPU ns, {(pid, tid): (voluntary, involuntary)})"""
        cpu, dead, switches = {}, {}, {}
        tick = 1_000_000_000 // os.sysconf("SC_CLK_TCK")
        for pid in pids:
            try:
                cpu[pid] = cpu_ns(pid)
                rest = read_file(f"/proc/{pid}/stat").rpartition(b")")[2].split()
                dead[pid] = (int(rest[13]) + int(rest[14])) * tick
                for tid in os.listdir(f"/proc/{pid}/task"):
                    text = read_file(f"/proc/{pid}/task/{tid}/status").decode()
                    found = dict(re.findall(r"^(\w*voluntary_ctxt_switches):\s+(\d+)", text, re.M))
                    switches[pid, tid] = (int(found["voluntary_ctxt_switches"]),
                                          int(found["nonvoluntary_ctxt_switches"]))
            except (OSError, KeyError):
                pass
        return cpu, dead, switches

    @staticmethod
    def threads(pids):
        count = 0
        for pid in pids:
            try:
                count += len(os.listdir(f"/proc/{pid}/task"))
            except OSError:
                pass
        return count


def machine_busy():
    """-> (busy ticks, all ticks) of the whole machine."""
    ticks = [int(x) for x in read_file("/proc/stat").split(b"\n")[0].split()[1:9]]
    return sum(ticks) - ticks[3] - ticks[4], sum(ticks)


def busy_percent(before, after):
    return 100.0 * (after[0] - before[0]) / max(1, after[1] - before[1])


def reap():
    try:
        while os.waitpid(-1, os.WNOHANG)[0]:
            pass
    except ChildProcessError:
        pass


def end(pids, grace):
    """SIGTERM, up to grace seconds, then SIGKILL."""
    def send(number):
        for pid in pids:
            try:
                os.kill(pid, number)
            except ProcessLookupError:
                pass

    def alive():
        for pid in pids:
            try:                            # only our own orphans and children
                os.waitpid(pid, os.WNOHANG)
            except ChildProcessError:
                pass
        table = parents()
        return [p for p in pids if p in table]

    if not pids:
        return
    send(signal.SIGTERM)
    deadline = now() + int(grace * 1e9)
    while alive() and now() < deadline:
        time.sleep(0.02)
    send(signal.SIGKILL)
    deadline = now() + 2 * 10**9
    while alive() and now() < deadline:
        time.sleep(0.01)
