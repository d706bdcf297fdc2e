"""The older status area, by XEmbed, over the bare X protocol; it also sees windows come and go, and closes them."""
import socket
import struct

from basics import Trouble, now


class XTray:
    """Owner of _NET_SYSTEM_TRAY_S0, over the bare X protocol."""

    def __init__(self, display, seen):
        self.seen, self.inbox = seen, b""
        self.mapped, self.on_window = {}, None
        self.sock = socket.socket(socket.AF_UNIX)
        self.sock.settimeout(10)
        self.sock.connect(f"/tmp/.X11-unix/X{display}")
        self.sock.sendall(struct.pack("<cxHHHHxx", b"l", 11, 0, 0, 0))
        head = self.read(8)
        data = self.read(4 * struct.unpack("<H", head[6:8])[0])
        if head[0] != 1:
            raise Trouble("the X server refused the connection")
        self.next_id, = struct.unpack_from("<I", data, 4)
        vendor, = struct.unpack_from("<H", data, 16)
        screen = 32 + vendor + -vendor % 4 + 8 * data[21]
        self.root, = struct.unpack_from("<I", data, screen)
        self.atoms = {name: self.atom(name) for name in (
            "_NET_SYSTEM_TRAY_S0", "_NET_SYSTEM_TRAY_OPCODE", "_XEMBED", "MANAGER", "WM_PROTOCOLS", "WM_DELETE_WINDOW")}
        self.window = self.next_id
        # override-redirect, and tell us about the children being mapped
        self.request(1, 0, struct.pack("<IIhhHHHHIIII", self.window, self.root, 0, 0, 400, 24,
                                       0, 1, 0, 0x200 | 0x800, 1, 0x80000))
        self.request(2, 0, struct.pack("<III", self.root, 0x800, 0x80000))
        self.request(8, 0, struct.pack("<I", self.window))
        self.request(22, 0, struct.pack("<III", self.window, self.atoms["_NET_SYSTEM_TRAY_S0"], 0))
        self.client_message(self.root, "MANAGER",
                            (0, self.atoms["_NET_SYSTEM_TRAY_S0"], self.window, 0, 0), 0x20000)
        self.atom("MANAGER")                # a round trip: all of it has been done

    def fileno(self):
        return self.sock.fileno()

    def request(self, opcode, detail, body):
        body += b"\0" * (-len(body) % 4)
        self.sock.sendall(struct.pack("<BBH", opcode, detail, 1 + len(body) // 4) + body)

    def read(self, size):
        data = b""
        while len(data) < size:
            part = self.sock.recv(size - len(data))
            if not part:
                raise Trouble("the X server closed the connection")
            data += part
        return data

    def atom(self, name):
        raw = name.encode()
        self.request(16, 0, struct.pack("<HH", len(raw), 0) + raw)
        return struct.unpack_from("<I", self.reply(), 8)[0]

    def children(self, window):
        self.request(15, 0, struct.pack("<I", window))
        reply = self.reply()
        # A window that has just gone has no children.
        if reply is None:
            return []
        return struct.unpack_from(f"<{struct.unpack_from('<H', reply, 16)[0]}I", reply, 32)

    def reply(self):
        """The answer to the request just made, or None where the server refused it; events in between are seen to."""
        while True:
            packet = self.next_packet()
            if packet[0] == 0:
                return None
            if packet[0] == 1:
                more = 4 * struct.unpack_from("<I", packet, 4)[0]
                body, self.inbox = self.inbox[:more], self.inbox[more:]
                return packet + body + self.read(more - len(body))
            self.event(packet, now())

    def next_packet(self):
        packet, self.inbox = self.inbox[:32], self.inbox[32:]
        return packet + self.read(32 - len(packet))

    def ask_to_close(self, frame):
        """As the button of a window's frame does; the window manager has put the window into `frame`."""
        for window in self.children(frame) or (frame,):
            self.client_message(window, "WM_PROTOCOLS", (self.atoms["WM_DELETE_WINDOW"], 0, 0, 0, 0), 0)

    def client_message(self, window, kind, values, mask):
        event = struct.pack("<BBHII5I", 33, 32, 0, window, self.atoms[kind], *values)
        self.request(25, 0, struct.pack("<II", window, mask) + event)

    def pump(self):
        data = self.sock.recv(1 << 16)
        stamp = now()
        if not data:
            raise Trouble("the X server closed the connection")
        self.inbox += data
        while len(self.inbox) >= 32:
            packet, self.inbox = self.inbox[:32], self.inbox[32:]
            self.event(packet, stamp)

    def event(self, packet, stamp):
        kind = packet[0] & 127
        if kind == 33 and packet[1] == 32:
            values = struct.unpack_from("<II5I", packet, 4)
            if values[1] == self.atoms.get("_NET_SYSTEM_TRAY_OPCODE") and values[3] == 0:
                self.dock(values[4], stamp)
        elif kind in (17, 18, 19, 21):      # destroyed, unmapped, mapped, reparented
            parent, window, other = struct.unpack_from("<III", packet, 4)
            if parent == getattr(self, "window", 0) and kind == 19:
                self.seen.complete(stamp)
            elif parent == self.root and window != getattr(self, "window", 0):
                if kind == 19:
                    self.mapped[window] = stamp
                    if self.on_window:
                        self.on_window(stamp)
                elif kind != 21 or other != self.root:
                    self.mapped.pop(window, None)

    def dock(self, icon, stamp):
        self.seen.registered(stamp, "xembed")
        self.request(7, 0, struct.pack("<IIhh", icon, self.window, 0, 0))
        self.request(12, 0, struct.pack("<IHxxII", icon, 4 | 8, 22, 22))
        self.client_message(icon, "_XEMBED", (0, 0, 0, self.window, 0), 0)
        self.request(8, 0, struct.pack("<I", icon))


