"""D-Bus, as much of it as the host of a status area needs."""
import collections
import os
import select
import socket
import struct

from basics import Trouble, now

ALIGN = {"y": 1, "b": 4, "n": 2, "q": 2, "i": 4, "u": 4, "x": 8, "t": 8, "d": 8,
         "s": 4, "o": 4, "g": 1, "a": 4, "(": 8, "{": 8, "v": 1}
FIXED = {"y": "B", "b": "I", "n": "h", "q": "H", "i": "i", "u": "I", "x": "q",
         "t": "Q", "d": "d"}


def split_signature(sig):
    """'sa{sv}u' -> ['s', 'a{sv}', 'u']"""
    out, i = [], 0
    while i < len(sig):
        start = i
        while sig[i] == "a":
            i += 1
        if sig[i] in "({":
            depth = 0
            while True:
                depth += (sig[i] in "({") - (sig[i] in ")}")
                i += 1
                if depth == 0:
                    break
        else:
            i += 1
        out.append(sig[start:i])
    return out


def marshal(buf, sig, value):
    """Append one complete value; a variant is given as (signature, value)."""
    kind = sig[0]
    buf.extend(b"\0" * (-len(buf) % ALIGN[kind]))
    if kind in FIXED:
        buf += struct.pack("<" + FIXED[kind], value)
    elif kind in "so":
        raw = value.encode()
        buf += struct.pack("<I", len(raw)) + raw + b"\0"
    elif kind == "g":
        buf += bytes([len(value)]) + value.encode() + b"\0"
    elif kind == "v":
        marshal(buf, "g", value[0])
        marshal(buf, value[0], value[1])
    elif kind == "a":
        at = len(buf)
        buf += b"\0\0\0\0"
        buf.extend(b"\0" * (-len(buf) % ALIGN[sig[1]]))
        start = len(buf)
        items = value.items() if isinstance(value, dict) else value
        for item in items:
            marshal(buf, sig[1:], item)
        struct.pack_into("<I", buf, at, len(buf) - start)
    else:                                   # struct or dict entry
        for part, item in zip(split_signature(sig[1:-1]), value):
            marshal(buf, part, item)


def unmarshal(data, pos, sig):
    """-> (value, next position); variants come back as their bare value."""
    kind = sig[0]
    pos += -pos % ALIGN[kind]
    if kind in FIXED:
        size = struct.calcsize(FIXED[kind])
        return struct.unpack_from("<" + FIXED[kind], data, pos)[0], pos + size
    if kind in "so":
        size = struct.unpack_from("<I", data, pos)[0]
        return data[pos + 4:pos + 4 + size].decode("utf-8", "replace"), pos + 5 + size
    if kind == "g":
        size = data[pos]
        return data[pos + 1:pos + 1 + size].decode(), pos + 2 + size
    if kind == "v":
        inner, pos = unmarshal(data, pos, "g")
        return unmarshal(data, pos, inner)
    if kind == "a":
        size = struct.unpack_from("<I", data, pos)[0]
        pos += 4
        pos += -pos % ALIGN[sig[1]]
        end = pos + size
        if sig[1] == "y":
            return data[pos:end], end
        out = []
        while pos < end:
            item, pos = unmarshal(data, pos, sig[1:])
            out.append(item)
        return (dict(out) if sig[1] == "{" else out), end
    out = []
    for part in split_signature(sig[1:-1]):
        item, pos = unmarshal(data, pos, part)
        out.append(item)
    return tuple(out), pos


Message = collections.namedtuple(
    "Message", "stamp type serial path interface member error reply_to dest sender body")
CALL, RETURN, ERROR, SIGNAL = 1, 2, 3, 4


class Bus:
    """A D-Bus connection just large enough for a tray host."""

    def __init__(self, socket_path):
        self.sock = socket.socket(socket.AF_UNIX)
        self.sock.settimeout(10)
        self.sock.connect(socket_path)
        self.sock.sendall(b"\0AUTH EXTERNAL " + str(os.getuid()).encode().hex().encode() + b"\r\n")
        answer = b""
        while not answer.endswith(b"\r\n"):
            answer += self.sock.recv(4096)
        if not answer.startswith(b"OK "):
            raise Trouble("the session bus refused the connection")
        self.sock.sendall(b"BEGIN\r\n")
        self.inbox, self.serial, self.waiting = b"", 0, {}
        self.on_call = self.on_signal = lambda message: None
        self.name = self.ask("org.freedesktop.DBus", "/org/freedesktop/DBus",
                             "org.freedesktop.DBus", "Hello")[0]

    def fileno(self):
        return self.sock.fileno()

    def send(self, type_, fields, sig="", args=()):
        self.serial += 1
        body = bytearray()
        for part, value in zip(split_signature(sig), args):
            marshal(body, part, value)
        head = bytearray(struct.pack("<cBBBII", b"l", type_, 0, 1, len(body), self.serial))
        codes = {"path": (1, "o"), "interface": (2, "s"), "member": (3, "s"),
                 "error": (4, "s"), "reply_to": (5, "u"), "dest": (6, "s")}
        rows = [(codes[k][0], (codes[k][1], v)) for k, v in fields.items()]
        if sig:
            rows.append((8, ("g", sig)))
        marshal(head, "a(yv)", rows)
        head += b"\0" * (-len(head) % 8)
        self.sock.sendall(head + body)
        return self.serial

    def call(self, dest, path, interface, member, sig="", args=(), then=None):
        """Ask without waiting; then(message) gets the reply or the error."""
        serial = self.send(CALL, {"path": path, "interface": interface, "member": member,
                                  "dest": dest}, sig, args)
        if then:
            self.waiting[serial] = then

    def reply(self, call, sig="", args=()):
        self.send(RETURN, {"reply_to": call.serial, "dest": call.sender}, sig, args)

    def fail(self, call, name):
        self.send(ERROR, {"reply_to": call.serial, "dest": call.sender, "error": name},
                  "s", (name,))

    def signal(self, path, interface, member, sig="", args=()):
        self.send(SIGNAL, {"path": path, "interface": interface, "member": member}, sig, args)

    def ask(self, dest, path, interface, member, sig="", args=(), timeout=5.0):
        """Ask and wait; -> the reply's body, or raises Trouble."""
        box = []
        self.call(dest, path, interface, member, sig, args, box.append)
        deadline = now() + int(timeout * 1e9)
        while not box:
            left = (deadline - now()) / 1e9
            if left <= 0 or not select.select([self], [], [], left)[0]:
                raise Trouble(f"no answer to {member}")
            self.pump()
        if box[0].type == ERROR:
            raise Trouble(f"{member}: {box[0].error}")
        return box[0].body

    def pump(self):
        """Read what is there and deal with every whole message in it."""
        data = self.sock.recv(1 << 20)
        stamp = now()
        if not data:
            raise Trouble("the session bus closed the connection")
        self.inbox += data
        while len(self.inbox) >= 16:
            body_size, serial, fields_size = struct.unpack_from("<III", self.inbox, 4)
            head_size = 16 + fields_size
            head_size += -head_size % 8
            if len(self.inbox) < head_size + body_size:
                return
            whole, self.inbox = (self.inbox[:head_size + body_size],
                                 self.inbox[head_size + body_size:])
            fields = dict(unmarshal(whole, 12, "a(yv)")[0])
            body, pos = [], 0
            for part in split_signature(fields.get(8, "")):
                value, pos = unmarshal(whole[head_size:], pos, part)
                body.append(value)
            self.dispatch(Message(stamp, whole[1], serial, fields.get(1), fields.get(2),
                                  fields.get(3), fields.get(4), fields.get(5),
                                  fields.get(6), fields.get(7), body))

    def dispatch(self, message):
        if message.type == CALL:
            self.on_call(message)
        elif message.type == SIGNAL:
            self.on_signal(message)
        elif message.reply_to in self.waiting:
            self.waiting.pop(message.reply_to)(message)


