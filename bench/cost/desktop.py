"""A desktop of its own for one run: display, buses, window manager, status area and, if wanted, an unlocked keyring."""
import os
import select
import shutil
import signal
import subprocess
import tempfile
import time

from basics import Trouble, now, read_file
from bus import Bus
from processes import MARK, Tree, cpu_ns, descendants, end, parents, reap
from status_host import Host
from x_tray import XTray

BUS_CONFIG = """<busconfig><type>session</type><keep_umask/>
<listen>unix:path={path}</listen><auth>EXTERNAL</auth>{services}
<policy context="default"><allow send_destination="*" eavesdrop="true"/>
<allow eavesdrop="true"/><allow own="*"/></policy></busconfig>"""


class Desktop:
    """One run's: a program finds it as a viewer's session, with the home as it was left in `home`, or an empty one."""

    def __init__(self, seen, home=None, with_keyring=False):
        self.dir = tempfile.mkdtemp(prefix="orvella-cost-")
        self.children, self.tree = [], None
        try:
            self.make_folders(home)
            self.start_display()
            self.start_buses()
            if with_keyring:
                self.start_keyring()
            self.spawn(["evilwm"])
            self.bus = Bus(self.at("session.bus"))
            self.host = Host(self.bus, seen)
            self.tray = XTray(self.env["DISPLAY"][1:], seen)
        except BaseException:
            self.close()
            raise

    def at(self, name):
        return os.path.join(self.dir, name)

    def make_folders(self, home):
        at = self.at
        if home:
            shutil.copytree(home, at("home"), symlinks=True)
        for name in ("home", "tmp", "run", "home/.config", "home/.cache", "home/.local",
                     "home/.local/share", "home/.local/state"):
            os.makedirs(at(name), 0o700, exist_ok=True)
        self.env = {
            "PATH": os.environ.get("PATH", "/usr/bin:/bin"), "LANG": "C.UTF-8",
            "USER": "root" if os.getuid() == 0 else os.environ.get("USER", "user"),
            "SHELL": "/bin/sh", "HOME": at("home"), "TMPDIR": at("tmp"),
            "XDG_RUNTIME_DIR": at("run"), "XDG_CONFIG_HOME": at("home/.config"),
            "XDG_CACHE_HOME": at("home/.cache"), "XDG_DATA_HOME": at("home/.local/share"),
            "XDG_STATE_HOME": at("home/.local/state"), "XDG_SESSION_TYPE": "x11",
            # The accessibility bus would be started by the first program that asks.
            "NO_AT_BRIDGE": "1",
        }
        self.env["LOGNAME"] = self.env["USER"]
        self.log = open(at("desktop.log"), "wb")

    def start_display(self):
        read_end, write_end = os.pipe()
        self.spawn(["Xvfb", "-displayfd", str(write_end), "-screen", "0", "1280x800x24",
                    "-nolisten", "tcp", "-noreset"], pass_fds=[write_end])
        os.close(write_end)
        with os.fdopen(read_end, "rb") as pipe:
            if not select.select([pipe], [], [], 20)[0]:
                raise Trouble("Xvfb did not start")
            display = pipe.readline().decode().strip()
        if not display:
            raise Trouble("Xvfb did not start")
        self.env["DISPLAY"] = ":" + display

    def start_buses(self):
        at = self.at
        for name, services in (("session", "<standard_session_servicedirs/>"), ("system", "")):
            with open(at(name + ".conf"), "w") as file:
                file.write(BUS_CONFIG.format(path=at(name + ".bus"), services=services))
            self.env[f"DBUS_{name.upper()}_BUS_ADDRESS"] = "unix:path=" + at(name + ".bus")
            self.spawn(["dbus-daemon", "--nofork", "--config-file=" + at(name + ".conf")])
        self.wait_for(lambda: os.path.exists(at("session.bus")) and os.path.exists(at("system.bus")),
                      "dbus-daemon did not start")

    def start_keyring(self):
        self.spawn(["gnome-keyring-daemon", "--foreground", "--unlock", "--components=secrets"], secret=b"desktop")
        owned = ["gdbus", "call", "--session", "--dest", "org.freedesktop.DBus", "--object-path",
                 "/org/freedesktop/DBus", "--method", "org.freedesktop.DBus.NameHasOwner", "org.freedesktop.secrets"]
        self.wait_for(lambda: b"true" in subprocess.run(owned, env=self.env, capture_output=True).stdout,
                      "the keyring did not start")

    @staticmethod
    def wait_for(condition, reason):
        deadline = now() + 10 * 10**9
        while not condition():
            if now() > deadline:
                raise Trouble(reason)
            time.sleep(0.005)

    def spawn(self, argv, secret=None, **more):
        child = subprocess.Popen(argv, env=self.env, cwd=self.dir, stdout=self.log, stderr=self.log,
                                 stdin=subprocess.DEVNULL if secret is None else subprocess.PIPE,
                                 start_new_session=True, **more)
        self.children.append(child)
        if secret is not None:
            child.stdin.write(secret)
            child.stdin.close()

    def launch(self, argv, mark):
        """Forks, holds the child at a gate and opens it; returns the time of the exec."""
        path = shutil.which(argv[0], path=self.env["PATH"])
        if not path:
            raise Trouble("command not found")
        env = dict(self.env, **{MARK: mark})
        self.output = os.path.join(self.dir, "output")
        gate_in, gate_out = os.pipe()
        pid = os.fork()
        if pid == 0:
            try:
                os.setsid()
                os.chdir(env["HOME"])
                out = os.open(self.output, os.O_WRONLY | os.O_CREAT, 0o600)
                null = os.open("/dev/null", os.O_RDONLY)
                for source, target in ((null, 0), (out, 1), (out, 2)):
                    os.dup2(source, target)
                for number in (signal.SIGINT, signal.SIGTERM, signal.SIGPIPE):
                    signal.signal(number, signal.SIG_DFL)
                os.read(gate_in, 1)
                os.execve(path, argv, env)
            except BaseException as e:
                os.write(2, f"exec failed: {e}\n".encode())
            os._exit(127)
        self.tree = Tree(pid, mark, [c.pid for c in self.children])
        time.sleep(0.02)                    # let the child reach the gate
        self.cpu_before_exec = cpu_ns(pid)
        started = now()
        os.write(gate_out, b"x")
        os.close(gate_in)
        os.close(gate_out)
        return started

    def serve(self, seconds, until=lambda: False, check=lambda: None):
        """Be the tray for a while; check() may raise and is called now and then."""
        deadline = now() + int(seconds * 1e9)
        while not until():
            left = (deadline - now()) / 1e9
            if left <= 0:
                return False
            for ready in select.select([self.bus, self.tray], [], [], min(left, 0.25))[0]:
                ready.pump()
            check()
        return True

    def tail(self, lines=12):
        try:
            text = read_file(self.output).decode("utf-8", "replace")
        except (OSError, AttributeError):
            return ""
        return "\n".join("    | " + line for line in text.splitlines()[-lines:])

    def end_program(self):
        if not self.tree:
            return
        for grace in (3.0, 0.0):
            mine, helpers = self.tree.split()
            end(mine + helpers, grace)

    def close(self):
        """Ends everything this run started, by pid, and removes its files."""
        own = [child.pid for child in self.children]
        self.end_program()
        for child in reversed(self.children):
            child.terminate()
            try:
                child.wait(5)
            except subprocess.TimeoutExpired:
                child.kill()
                child.wait()
        end([p for p in descendants(parents(), os.getpid()) if p not in own], 0.5)
        reap()
        for name in ("bus", "tray"):
            if hasattr(self, name):
                getattr(self, name).sock.close()
        if hasattr(self, "log"):
            self.log.close()
        shutil.rmtree(self.dir, ignore_errors=True)
