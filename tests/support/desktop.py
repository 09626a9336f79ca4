"""Runs a program with a window on a desktop of the test's own and handles it as a person does: with
the pointer, with the keyboard, and through what a screen reader is told.

    with Desktop() as desktop:
        with desktop.start([binary], HOME=home) as program:
            program.wait_for("Library score", "heading")
            program.click("Health")
            program.key("Tab", "Return")
            program.press("Rescan")

The desktop is an X server without a screen, a message bus, and the accessibility service. It has no
window manager: a window gets the keyboard by a click.

Names, texts and roles are those that a screen reader gets, of what lies within the window, in
reading order. Every wait ends in a DesktopError that tells what is there instead.
"""

import contextlib
import ctypes
import dataclasses
import os
import shutil
import signal
import subprocess
import tempfile
import time

PATIENCE = 60  # seconds; a busy machine is slow
STEP = 0.2

# By their names in X.
KEYS = {
    "Tab": 0xFF09, "Return": 0xFF0D, "Enter": 0xFF8D, "Escape": 0xFF1B, "space": 0x20,
    "Home": 0xFF50, "End": 0xFF57, "Left": 0xFF51, "Up": 0xFF52, "Right": 0xFF53, "Down": 0xFF54,
    "Page_Up": 0xFF55, "Page_Down": 0xFF56, "BackSpace": 0xFF08, "Delete": 0xFFFF,
    **{f"F{number}": 0xFFBD + number for number in range(1, 13)},
    **{character: ord(character) for character in "123456789abcdefghijklmnopqrstuvwxyz"},
}
# Their key codes on the X server's own keyboard.
MODIFIERS = {"shift": 50, "ctrl": 37}

# The accessibility service's numbers.
STATES = {"ACTIVE": 1, "CHECKED": 4, "ENABLED": 8, "FOCUSED": 12, "SELECTED": 23, "SHOWING": 25,
          "READ_ONLY": 43}
KEY_PRESS, KEY_RELEASE, KEY_SYMBOL, KEY_TEXT = 0, 1, 3, 4
ON_SCREEN = 0
ROOT = ("org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root")
INPUT = ("org.a11y.atspi.Registry", "/org/a11y/atspi/registry/deviceeventcontroller")
BUS = ("org.freedesktop.DBus", "/org/freedesktop/DBus")
ACCESSIBLE = "org.a11y.atspi.Accessible"
PROPERTIES = "org.freedesktop.DBus.Properties"
ACTION = "org.a11y.atspi.Action"
TEXT = "org.a11y.atspi.Text"
COMPONENT = "org.a11y.atspi.Component"
DEVICES = "org.a11y.atspi.DeviceEventController"


class DesktopError(AssertionError):
    pass


def wait_until(condition, what, patience=PATIENCE):
    """The first true answer of `condition`; `what` tells what was waited for, or gives it."""
    end = time.monotonic() + patience
    while True:
        if answer := condition():
            return answer
        if time.monotonic() > end:
            raise DesktopError(f"waited in vain for {what() if callable(what) else what}")
        time.sleep(STEP)


class Desktop:
    def __init__(self, size=(1280, 900)):
        self._size = size
        self._stack = contextlib.ExitStack()

    def __enter__(self):
        with self._stack:
            for command in ("Xvfb", "dbus-daemon"):
                if not shutil.which(command):
                    raise DesktopError(f"{command} is not installed: run scripts/setup.sh --test")
            self.folder = self._stack.enter_context(
                tempfile.TemporaryDirectory(prefix="tarnwick-desktop-"))
            self.environment = {
                **{name: value for name, value in os.environ.items()
                   if not name.startswith(("TARNWICK_", "QT_", "DBUS_", "AT_SPI_"))
                   and name not in ("WAYLAND_DISPLAY", "XAUTHORITY", "XDG_SESSION_TYPE")},
                "XDG_RUNTIME_DIR": self.folder,
                "LC_ALL": "C.UTF-8",
                "TZ": "UTC",
            }
            self._start_display()
            self._start_bus()
            self._connect()
            self._stack = self._stack.pop_all()
        return self

    def __exit__(self, *_):
        self._stack.close()

    def start(self, command, **environment):
        """The program, once its window is there; `environment` adds to the desktop's."""
        return Program(self, command, environment)

    def largest_window(self):
        """Width and height on the screen of the largest window there is."""
        return largest_window(self.environment["DISPLAY"])

    def ask(self, questions):
        """The answers to (place, interface, method, parameters), all asked at once; None where
        there is none, since what was asked has gone meanwhile."""
        answers = [None] * len(questions)
        left = len(questions)

        def take(connection, result, index):
            nonlocal left
            left -= 1
            with contextlib.suppress(self.glib.Error):
                answers[index] = connection.call_finish(result).unpack()

        for index, ((name, path), interface, method, parameters) in enumerate(questions):
            self._connection.call(name, path, interface, method, parameters, None,
                                  self._gio.DBusCallFlags.NONE, 10_000, None, take, index)
        while left:
            self.glib.MainContext.default().iteration(True)
        return answers

    def ask_one(self, place, interface, method, signature=None, *parameters):
        given = self.glib.Variant(signature, parameters) if signature else None
        answer = self.ask([(place, interface, method, given)])[0]
        return answer[0] if answer else answer

    def _serve(self, command, **options):
        """Starts a server; its process group ends with the desktop."""
        server = subprocess.Popen(command, env=self.environment, stdin=subprocess.DEVNULL,
                                  stderr=subprocess.DEVNULL, start_new_session=True, **options)
        self._stack.callback(end_group, server)
        return server

    def _start_display(self):
        ours, theirs = os.pipe()
        width, height = self._size
        self._serve(["Xvfb", "-displayfd", str(theirs), "-screen", "0", f"{width}x{height}x24",
                     "-nolisten", "tcp", "-noreset"], pass_fds=[theirs],
                    stdout=subprocess.DEVNULL)
        os.close(theirs)
        with os.fdopen(ours) as answer:
            number = answer.readline().strip()
        if not number:
            raise DesktopError("Xvfb did not start")
        self.environment["DISPLAY"] = f":{number}"

    def _start_bus(self):
        bus = self._serve(["dbus-daemon", "--session", "--nofork", "--nopidfile",
                           "--print-address"], stdout=subprocess.PIPE, text=True)
        self._stack.callback(bus.stdout.close)
        address = bus.stdout.readline().strip()
        if not address:
            raise DesktopError("dbus-daemon did not start")
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = address

    def _connect(self):
        """To the bus of the accessibility service, which starts by being asked for."""
        try:
            from gi.repository import Gio, GLib
        except ImportError as error:
            raise DesktopError(f"{error}: run scripts/setup.sh --test") from error
        self._gio, self.glib = Gio, GLib
        self._connection = self._connection_to(self.environment["DBUS_SESSION_BUS_ADDRESS"])
        address = self.ask_one(("org.a11y.Bus", "/org/a11y/bus"), "org.a11y.Bus", "GetAddress")
        if not address:
            raise DesktopError("at-spi2-core is not installed: run scripts/setup.sh --test")
        self._connection = self._connection_to(address)
        wait_until(lambda: self.ask_one(ROOT, ACCESSIBLE, "GetChildren") is not None,
                   "the accessibility service")

    def _connection_to(self, address):
        flags = self._gio.DBusConnectionFlags
        connection = self._gio.DBusConnection.new_for_address_sync(
            address, flags.AUTHENTICATION_CLIENT | flags.MESSAGE_BUS_CONNECTION, None, None)
        connection.set_exit_on_close(False)
        self._stack.callback(connection.close_sync, None)
        return connection


@dataclasses.dataclass
class Item:
    """What stood on the window at the moment of asking."""
    place: tuple
    name: str
    description: str
    role: str
    states: int
    parent: "Item" = None

    def is_in(self, state):
        return bool(self.states >> STATES[state] & 1)


class Program:
    def __init__(self, desktop, command, environment):
        self._desktop = desktop
        self._log = tempfile.TemporaryFile()
        self._process = subprocess.Popen(
            [str(part) for part in command], stdin=subprocess.DEVNULL, stdout=self._log,
            stderr=self._log, start_new_session=True,
            env={**desktop.environment, "QT_QPA_PLATFORM": "xcb", "QT_QUICK_BACKEND": "software",
                 "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1", "QT_FORCE_STDERR_LOGGING": "1",
                 **{name: str(value) for name, value in environment.items()}})
        try:
            self._window = wait_until(self._find_window, lambda: f"the window ({self.output()})")
        except BaseException:
            self.end()
            raise

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.end()

    def end(self):
        end_group(self._process)
        self._log.close()

    def output(self):
        """What the program has written so far."""
        self._log.seek(0)
        return self._log.read().decode(errors="replace")

    def wait_for_end(self):
        """The status with which the program ends of its own accord."""
        try:
            return self._process.wait(PATIENCE)
        except subprocess.TimeoutExpired:
            raise DesktopError("the program does not end") from None

    # What is on show.

    def items(self):
        """All that lies within the window, in reading order."""
        level = self._look([(self._window, None)])
        children = {None: level}
        while level:
            asked = self._desktop.ask([(item.place, ACCESSIBLE, "GetChildren", None)
                                       for item in level])
            below = [(tuple(place), item) for item, answer in zip(level, asked)
                     for place in (answer[0] if answer else [])]
            level = self._look(below)
            for item in level:
                children.setdefault(item.parent.place, []).append(item)

        def in_order(item):
            yield item
            for child in children.get(item.place, []):
                yield from in_order(child)

        return [item for top in children[None] for item in in_order(top)][1:]

    def texts(self, role="label"):
        """The names of all items of a role, empty ones left out."""
        return [item.name for item in self.items() if item.role == role and item.name]

    def find(self, name, role=None, description=None):
        """The first item of that name, and of what else is given; nothing where there is none."""
        return next((item for item in self.items()
                     if item.name == name and role in (None, item.role)
                     and description in (None, item.description)), None)

    def wait_for(self, name, role=None, patience=PATIENCE, description=None):
        return wait_until(lambda: self.find(name, role, description),
                          lambda: f"{role or 'anything'} named “{name}”; there is {self}", patience)

    def wait_until_gone(self, name, role=None):
        wait_until(lambda: not self.find(name, role), lambda: f"“{name}” to go; there is {self}")

    def place(self, item):
        """Left, top, width and height on the screen."""
        place = self._desktop.ask_one(item.place, COMPONENT, "GetExtents", "(u)", ON_SCREEN)
        if not place:
            raise DesktopError(f"“{item.name}” has gone")
        return place

    def place_of_window(self):
        """Left, top, width and height on the screen."""
        return self._desktop.ask_one(self._window, COMPONENT, "GetExtents", "(u)", ON_SCREEN)

    def text_of(self, item):
        """What a screen reader can read of an item's own text."""
        answer = self._desktop.ask_one(item.place, TEXT, "GetText", "(ii)", 0, -1)
        return answer if isinstance(answer, str) else (answer or [""])[0]

    def actions(self, item):
        """The names of what a screen reader can do with an item."""
        return [action[0]
                for action in self._desktop.ask_one(item.place, ACTION, "GetActions") or []]

    # What a person does.

    def press(self, name, role="push button"):
        """As a screen reader presses."""
        item = self.wait_for(name, role)
        names = self.actions(item)
        if "Press" not in names or not self._desktop.ask_one(
                item.place, ACTION, "DoAction", "(i)", names.index("Press")):
            raise DesktopError(f"“{name}” can't be pressed; it offers {names}")

    def click(self, name, role="push button", description=None):
        """A click of the pointer into the middle, once the item has come to rest."""
        place = self._middle(self.wait_for(name, role, description=description))
        for _ in range(100):
            before = place
            time.sleep(0.1)
            place = self._middle(self.wait_for(name, role, description=description))
            if place == before:
                break
        self.click_at(*place)

    def click_at(self, x, y):
        self._pointer(x, y, "abs")
        self._pointer(x, y, "b1c")

    def scroll_to(self, name, x, role="push button"):
        """Turns the wheel, the pointer at `x` halfway down the window, until all of an item shows
        in its list."""
        left, top, _, height = self.place_of_window()
        x, y = left + x, top + height // 2
        self._pointer(x, y, "abs")
        for turn in range(80):
            item = self.find(name, role)
            side = self._side(item) if item else "below" if turn < 40 else "above"
            if not side:
                return
            self._pointer(x, y, "b5c" if side == "below" else "b4c")
        raise DesktopError(f"“{name}” does not come into view; there is {self}")

    def scroll_to_end(self, name):
        """Turns the wheel over a list until nothing more comes."""
        x, y = self._middle(self.wait_for(name, "list"))
        self._pointer(x, y, "abs")
        last = None
        while last != (last := self.texts()):
            for _ in range(10):
                self._pointer(x, y, "b5c")
            time.sleep(STEP)

    def take_the_keyboard(self):
        """By a click on an empty place, where a window manager would give the keyboard unasked."""
        left, top, _, height = self.place_of_window()
        self.click_at(left + 2, top + height // 2)
        # A key that is struck ahead of that goes nowhere.
        wait_until(self._has_the_keyboard, "the window to take the keyboard")

    def key(self, *names):
        """Strikes keys one after another; "shift+Tab" and "ctrl+q" hold a key meanwhile."""
        for name in names:
            *held, plain = name.split("+")
            for modifier in held:
                self._keyboard(MODIFIERS[modifier], "", KEY_PRESS)
            self._keyboard(KEYS[plain], "", KEY_SYMBOL)
            for modifier in held:
                self._keyboard(MODIFIERS[modifier], "", KEY_RELEASE)

    def type(self, text):
        self._keyboard(0, text, KEY_TEXT)

    def ask_to_end(self):
        """As the end of a session does."""
        self._process.terminate()

    def close(self):
        """As the title bar's button does."""
        close_windows(self._desktop.environment["DISPLAY"])

    def focused(self):
        """The name of what has the keyboard; nothing where nothing of a name has."""
        item = self.focused_item()
        return item.name or None if item else None

    def focused_item(self):
        """What has the keyboard; nothing where a screen reader is told of nothing."""
        # What lies around it counts as focused too: the innermost comes last.
        return next((item for item in reversed(self.items()) if item.is_in("FOCUSED")), None)

    def tab_to(self, name, description=None, key="Tab"):
        """Strikes Tab until the control of that name, and of that description where one is given,
        has the keyboard."""
        passed = []
        for _ in range(200):
            item = self.focused_item()
            if item and item.name == name and description in (None, item.description):
                return
            passed.append(item and item.name)
            self.key(key)
            time.sleep(0.05)
        raise DesktopError(f"{key} does not come to “{name}”, only to {passed}")

    def focus_after(self, key):
        """The name of what has the keyboard once a key has moved it on."""
        before = self.focused()
        self.key(key)
        return wait_until(lambda: (now := self.focused()) != before and now,
                          lambda: f"{key} to go on from “{before}”")

    def focus_order(self, key="Tab"):
        """The names of all that Tab goes through, from here to where it comes round."""
        order = [self.focus_after(key)]
        while (name := self.focus_after(key)) != order[0]:
            order.append(name)
        return order

    def __str__(self):
        return "; ".join(f"{item.role} “{item.name}”" for item in self.items() if item.name)

    # What stands behind.

    def _find_window(self):
        if self._process.poll() is not None:
            raise DesktopError(f"the program ended: {self.output()}")
        for place in self._desktop.ask_one(ROOT, ACCESSIBLE, "GetChildren") or []:
            process = self._desktop.ask_one(BUS, BUS[0], "GetConnectionUnixProcessID", "(s)",
                                            place[0])
            if process == self._process.pid:
                windows = self._desktop.ask_one(tuple(place), ACCESSIBLE, "GetChildren")
                return tuple(windows[0]) if windows else None
        return None

    def _look(self, places):
        """An Item for each (place, parent) within the window."""
        count = len(places)
        questions = [(ACCESSIBLE, "GetRoleName", None), (ACCESSIBLE, "GetState", None)]
        questions += [(PROPERTIES, "Get", self._desktop.glib.Variant("(ss)", (ACCESSIBLE, name)))
                      for name in ("Name", "Description")]
        answers = self._desktop.ask(
            [(place, *question) for question in questions for place, _ in places])
        items = []
        for index, (place, parent) in enumerate(places):
            facts = answers[index::count]
            if None in facts:
                continue
            role, (low, high), name, description = (fact[0] for fact in facts)
            item = Item(place, name, description, role, low | high << 32, parent)
            if item.is_in("SHOWING"):
                items.append(item)
        return items

    def _has_the_keyboard(self):
        low, _ = self._desktop.ask_one(self._window, ACCESSIBLE, "GetState")
        return bool(low >> STATES["ACTIVE"] & 1)

    def _side(self, item):
        """Whether an item lies "above" or "below" what its list shows; empty where it shows."""
        pane = item.parent
        while pane.role not in ("panel", "scroll pane", "list") and pane.parent:
            pane = pane.parent
        _, pane_top, _, pane_height = self.place(pane)
        _, top, _, height = self.place(item)
        if top < pane_top:
            return "above"
        return "below" if top + height > pane_top + pane_height else ""

    def _middle(self, item):
        left, top, width, height = self.place(item)
        return left + width // 2, top + height // 2

    def _pointer(self, x, y, what):
        self._desktop.ask_one(INPUT, DEVICES, "GenerateMouseEvent", "(iis)", x, y, what)

    def _keyboard(self, code, text, kind):
        self._desktop.ask_one(INPUT, DEVICES, "GenerateKeyboardEvent", "(isu)", code, text, kind)


class ClientMessage(ctypes.Structure):
    """An event of X from one program to another."""
    _fields_ = [("type", ctypes.c_int), ("serial", ctypes.c_ulong), ("send_event", ctypes.c_int),
                ("display", ctypes.c_void_p), ("window", ctypes.c_ulong),
                ("message_type", ctypes.c_ulong), ("format", ctypes.c_int),
                ("data", ctypes.c_long * 5), ("rest", ctypes.c_long * 12)]


@contextlib.contextmanager
def windows_of(display_name):
    """X's library, the open display, and the windows that lie directly on its screen."""
    x11 = ctypes.CDLL("libX11.so.6")
    x11.XOpenDisplay.restype = ctypes.c_void_p
    x11.XInternAtom.restype = ctypes.c_ulong
    x11.XDefaultRootWindow.restype = ctypes.c_ulong
    display = ctypes.c_void_p(x11.XOpenDisplay(display_name.encode()))
    root = ctypes.c_ulong(x11.XDefaultRootWindow(display))
    ignored = ctypes.c_ulong()
    children = ctypes.POINTER(ctypes.c_ulong)()
    count = ctypes.c_uint()
    x11.XQueryTree(display, root, ctypes.byref(ignored), ctypes.byref(ignored),
                   ctypes.byref(children), ctypes.byref(count))
    try:
        yield x11, display, children[:count.value]
    finally:
        x11.XCloseDisplay(display)


def close_windows(display_name):
    """Asks every window of a display to close, as a window manager does."""
    with windows_of(display_name) as (x11, display, windows):
        protocols, delete = (x11.XInternAtom(display, name, 0)
                             for name in (b"WM_PROTOCOLS", b"WM_DELETE_WINDOW"))
        for window in windows:
            message = ClientMessage(type=33, window=window, message_type=protocols, format=32)
            message.data[0] = delete
            x11.XSendEvent(display, ctypes.c_ulong(window), 0, ctypes.c_long(0),
                           ctypes.byref(message))


def largest_window(display_name):
    with windows_of(display_name) as (x11, display, windows):
        sizes = []
        for window in windows:
            root = ctypes.c_ulong()
            left, top = ctypes.c_int(), ctypes.c_int()
            width, height, border, depth = (ctypes.c_uint() for _ in range(4))
            if x11.XGetGeometry(display, ctypes.c_ulong(window), ctypes.byref(root),
                                ctypes.byref(left), ctypes.byref(top), ctypes.byref(width),
                                ctypes.byref(height), ctypes.byref(border), ctypes.byref(depth)):
                sizes.append((width.value, height.value))
        return max(sizes)


def end_group(process):
    """Ends a process and all that it has started."""
    with contextlib.suppress(ProcessLookupError):
        os.killpg(process.pid, signal.SIGKILL)
    process.wait()
