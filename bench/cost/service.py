"""The service that the programs ask: the sandbox behind HTTPS, whose certificate they check as they would any other."""
import ctypes
import json
import os
import re
import shutil
import signal
import subprocess
import sys
import time
import urllib.parse
import urllib.request

from basics import Trouble, read_file

HERE = os.path.dirname(os.path.abspath(__file__))
TRUSTED = "/etc/ssl/certs"
PRIVATE_MOUNTS = 0x20000
BIND, RECURSIVE_PRIVATE = 0x1000, 0x4000 | 0x40000


class Authority:
    """A certificate for localhost, which this process and its children trust and nobody else does."""

    def __init__(self, folder):
        self.key, self.certificate = os.path.join(folder, "key"), os.path.join(folder, "certificate")
        self.run("req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "2", "-subj", "/CN=localhost",
                 "-addext", "subjectAltName=DNS:localhost", "-keyout", self.key, "-out", self.certificate)
        trusted = os.path.join(folder, "trusted")
        shutil.copytree(TRUSTED, trusted)
        name = self.run("x509", "-hash", "-noout", "-in", self.certificate).strip()
        shutil.copy(self.certificate, os.path.join(trusted, name + ".0"))
        with open(os.path.join(trusted, "ca-certificates.crt"), "ab") as every:
            every.write(read_file(self.certificate))
        self.hide_behind(trusted)

    @staticmethod
    def run(*arguments):
        return subprocess.run(["openssl", *arguments], check=True, capture_output=True, text=True).stdout

    @staticmethod
    def hide_behind(trusted):
        system = ctypes.CDLL(None, use_errno=True)

        def done(result):
            if result != 0:
                raise Trouble("no mounts of its own: " + os.strerror(ctypes.get_errno()))
        done(system.unshare(PRIVATE_MOUNTS))
        done(system.mount(b"none", b"/", None, RECURSIVE_PRIVATE, None))
        done(system.mount(trusted.encode(), TRUSTED.encode(), None, BIND, None))


class Process:
    """One of ours that says on its first line where it listens."""

    def __init__(self, argv, log, more_variables=None):
        self.log = log
        with open(log, "wb") as out:
            self.child = subprocess.Popen(argv, env=os.environ | (more_variables or {}), stdin=subprocess.DEVNULL,
                                          stdout=out, stderr=out)
        deadline = time.monotonic() + 10
        while b"\n" not in read_file(log):
            if time.monotonic() > deadline or self.child.poll() is not None:
                raise Trouble(f"{argv[0]} did not start; see {log}")
            time.sleep(0.01)

    def lines(self):
        return read_file(self.log).decode("utf-8", "replace").splitlines()

    def close(self):
        self.child.send_signal(signal.SIGTERM)
        self.child.wait(10)


def library_copies(program, folder):
    """Variables by which the program maps copies of its libraries.

    A service runs elsewhere; here it would bear half of the pages of each program that uses the same libraries.
    """
    if not os.path.isdir(folder):
        os.makedirs(folder)
        listed = subprocess.run(["ldd", program], check=True, capture_output=True, text=True).stdout
        for library in re.findall(r" => (/\S+)", listed):
            shutil.copy(library, folder)
    return {"LD_LIBRARY_PATH": folder}


class Front:
    """Speaks HTTPS in front of a sandbox and notes the time of every answer."""

    def __init__(self, authority, address, log):
        argv = [sys.executable, os.path.join(HERE, "front"), authority.certificate, authority.key, address]
        self.process = Process(argv, log)
        self.address = self.process.lines()[0]

    def answers(self, path, since=0):
        """When answers to requests for this path had been sent, in ns; the clock is that of basics.now."""
        found = []
        for line in self.process.lines()[1:]:
            stamp, asked, *_ = line.split(" ", 2)
            if asked == path and int(stamp) >= since:
                found.append(int(stamp))
        return found

    def close(self):
        self.process.close()


class Service:
    """A sandbox with its fronts: programs that run side by side have one each, which tells their requests apart."""

    def __init__(self, programs, authority, folder, label, options=(), database=None):
        self.authority, self.fronts = authority, []
        self.at = at = lambda name: os.path.join(folder, f"{label}.{name}")
        self.database = at("db")
        if database:
            shutil.copy(database, self.database)
        sandbox = os.path.join(programs, "orvella-sandbox")
        self.sandbox = Process([sandbox, "--database", self.database, *options], at("sandbox.log"),
                               library_copies(sandbox, os.path.join(folder, "libraries")))
        self.address = next(line for line in self.sandbox.lines() if line.startswith("http"))

    def front(self):
        front = Front(self.authority, self.address, self.at(f"front-{len(self.fronts)}.log"))
        self.fronts.append(front)
        return front

    def link_device(self):
        for line in self.sandbox.lines():
            page = re.search(r" registered; link it at (\S+)", line)
            if page:
                code = urllib.parse.parse_qs(urllib.parse.urlparse(page[1]).query)["code"][0]
                body = urllib.parse.urlencode({"code": code}).encode()
                urllib.request.urlopen(self.address + "/activate", body, timeout=10).close()
                return
        raise Trouble("no device registered; see " + self.sandbox.log)

    def close(self):
        for process in (*self.fronts, self.sandbox):
            process.close()


def no_campaigns(folder):
    path = os.path.join(folder, "no-campaigns.json")
    with open(path, "w") as file:
        json.dump({"campaigns": []}, file)
    return path
