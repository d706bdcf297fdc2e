"""The desktop's status area: watcher and host of status-notifier items, and notifications that are shown to nobody."""
import os

from basics import Trouble, now
from bus import RETURN

WATCHER = "org.kde.StatusNotifierWatcher"
ITEM = "org.kde.StatusNotifierItem"
PROPERTIES = "org.freedesktop.DBus.Properties"
MENU = "com.canonical.dbusmenu"
NOTIFY = "org.freedesktop.Notifications"
WATCHER_XML = f"""<node><interface name="{WATCHER}">
<method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
<method name="RegisterStatusNotifierHost"><arg type="s" direction="in"/></method>
<property name="RegisteredStatusNotifierItems" type="as" access="read"/>
<property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
<property name="ProtocolVersion" type="i" access="read"/>
<signal name="StatusNotifierItemRegistered"><arg type="s"/></signal>
<signal name="StatusNotifierItemUnregistered"><arg type="s"/></signal>
<signal name="StatusNotifierHostRegistered"/>
</interface></node>"""


class Host:
    """Watcher and host of status-notifier items, and a silent notification server."""

    def __init__(self, bus, seen):
        self.bus, self.seen, self.items = bus, seen, {}
        bus.on_call, bus.on_signal = self.on_call, self.on_signal
        for name in (WATCHER, f"org.kde.StatusNotifierHost-{os.getpid()}", NOTIFY):
            bus.ask("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                    "RequestName", "su", (name, 4))
        bus.ask("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                "AddMatch", "s", (f"type='signal',interface='{ITEM}'",))

    def watcher_properties(self):
        return {"RegisteredStatusNotifierItems": ("as", [s + p for s, p in self.items]),
                "IsStatusNotifierHostRegistered": ("b", True),
                "ProtocolVersion": ("i", 0)}

    def on_call(self, m):
        key = (m.interface, m.member)
        if m.member == "RegisterStatusNotifierItem":
            self.register(m)
        elif m.member == "RegisterStatusNotifierHost":
            self.bus.reply(m)
        elif key == (PROPERTIES, "GetAll"):
            props = self.watcher_properties() if m.body[0] == WATCHER else {}
            self.bus.reply(m, "a{sv}", (props,))
        elif key == (PROPERTIES, "Get"):
            value = self.watcher_properties().get(m.body[1])
            if value:
                self.bus.reply(m, "v", (value,))
            else:
                self.bus.fail(m, "org.freedesktop.DBus.Error.UnknownProperty")
        elif m.member == "Introspect":
            self.bus.reply(m, "s", (WATCHER_XML,))
        elif m.member == "Ping":
            self.bus.reply(m)
        elif key == (NOTIFY, "GetServerInformation"):
            self.bus.reply(m, "ssss", ("cost", "cost", "1", "1.2"))
        elif key == (NOTIFY, "GetCapabilities"):
            self.bus.reply(m, "as", (["body", "actions"],))
        elif key == (NOTIFY, "Notify"):
            self.bus.reply(m, "u", (1,))
        elif key == (NOTIFY, "CloseNotification"):
            self.bus.reply(m)
        else:
            self.bus.fail(m, "org.freedesktop.DBus.Error.UnknownMethod")

    def register(self, m):
        name = m.body[0]
        # Either a bus name, or (Ayatana) the item's object path on the sender.
        item = (m.sender, name) if name.startswith("/") else (name, "/StatusNotifierItem")
        self.seen.registered(m.stamp, "sni")
        self.items[item] = {}
        self.bus.reply(m)
        self.bus.signal("/StatusNotifierWatcher", WATCHER, "StatusNotifierItemRegistered",
                        "s", (item[0] + item[1],))
        self.fetch(item)

    def fetch(self, item):
        def got(message):
            if message.type == RETURN:
                self.items[item] = properties = message.body[0]
                if properties.get("Title") and (properties.get("IconName") or properties.get("IconPixmap")):
                    self.seen.complete(message.stamp)
        self.bus.call(item[0], item[1], PROPERTIES, "GetAll", "s", (ITEM,), got)

    def on_signal(self, m):
        """A host redraws on NewIcon, NewTitle ... by asking for the properties again."""
        if m.interface == ITEM and (m.member or "").startswith("New"):
            for item in self.items:
                if item[1] == m.path:
                    self.fetch(item)

    def describe(self):
        """-> a dictionary saying what the item shows, or None."""
        for item, p in self.items.items():
            pixmaps = [f"{w}x{h}" for w, h, _ in p.get("IconPixmap") or []]
            return {"id": p.get("Id"), "title": p.get("Title"), "status": p.get("Status"),
                    "icon_name": p.get("IconName"), "icon_pixmaps": pixmaps,
                    "item_is_menu": p.get("ItemIsMenu"), "menu": p.get("Menu")}
        return None

    def open_menu(self):
        """Ask for the whole menu as a host does on a click -> (ms, labels) or None."""
        for item, p in self.items.items():
            path = p.get("Menu")
            if not path or path == "/NO_DBUSMENU":
                continue
            start = now()
            try:
                _, root = self.bus.ask(item[0], path, MENU, "GetLayout", "iias", (0, -1, []))
            except Trouble:
                return None
            ms = (now() - start) / 1e6
            labels = [str(child[1].get("label", "")) for child in root[2]]
            return ms, [label for label in labels if label]
        return None


