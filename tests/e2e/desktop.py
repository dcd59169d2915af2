"""Drives a program from outside, as a user does: reads the screen through the accessibility bus, as a
screen reader does, and sends mouse and keyboard events through the X server (xdotool)."""

import os
import subprocess

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

import display  # noqa: E402
from display import xdotool  # noqa: E402


def wait_for(what, condition, **limit):
    """Waits until condition() gives something true. What goes while it is looked at is not there."""

    def look():
        try:
            return condition()
        except GLib.GError:
            return None

    return display.wait_for(what, look, **limit)


class Control:
    """One node of the accessibility tree."""

    def __init__(self, node):
        self.node = node
        self.name = node.get_name()
        self.first_line = next(iter(self.name.splitlines()), "")
        self.role = node.get_role_name()

    def has(self, state):
        return self.node.get_state_set().contains(getattr(Atspi.StateType, state))

    @property
    def text(self):
        return Atspi.Text.get_text(self.node, 0, -1)

    def children(self):
        nodes = (self.node.get_child_at_index(i) for i in range(self.node.get_child_count()))
        return [Control(node) for node in nodes if node is not None]

    def showing(self):
        """Yields this control and all in it that are on the screen."""
        yield self
        for child in self.children():
            if child.has("SHOWING"):
                yield from child.showing()

    @property
    def place(self):
        return self.node.get_extents(Atspi.CoordType.SCREEN)

    def click(self, x=None, button=1):
        """Clicks the middle, or x pixels from the left edge."""
        place = self.place
        left = place.x + (place.width // 2 if x is None else x)
        xdotool("mousemove", left, place.y + place.height // 2, "click", button)


class Program:
    """A running program with windows. Ends it when the context ends."""

    def __init__(self, *command):
        environment = os.environ | {"QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"}
        self.process = subprocess.Popen(command, env=environment)
        self.node = wait_for("the program on the accessibility bus", self._find)
        Atspi.Accessible.set_cache_mask(self.node, Atspi.Cache.NONE)

    def _find(self):
        assert self.process.poll() is None, "the program has ended"
        desktop = Atspi.get_desktop(0)
        nodes = (desktop.get_child_at_index(i) for i in range(desktop.get_child_count()))
        return next((n for n in nodes if n and n.get_process_id() == self.process.pid), None)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.kill()
        self.process.wait()

    def windows(self):
        return Control(self.node).children()

    def active(self, title):
        """Waits for the window of that title (a mark of changes aside) to have the focus."""

        def find():
            titled = (w for w in self.windows() if w.name.removesuffix("*") == title)
            return next((w for w in titled if w.has("ACTIVE")), None)

        return wait_for(f'an active window "{title}"', find)

    def find(self, window, role, name, description=None):
        """Waits for a control of the active window, whose name begins with that line."""

        def find():
            hits = (c for c in self.active(window).showing() if (c.role, c.first_line) == (role, name))
            return next((c for c in hits if description in (None, c.node.get_description())), None)

        return wait_for(f'{role} "{name}" in "{window}"', find)

    def menu(self):
        """Waits for a context menu and returns its X window; the accessibility bus has none of it."""

        def find():
            # No other window of a program that is on the screen is without a name.
            pid = self.process.pid
            words = ("--all", "--onlyvisible", "--pid", pid, "--name", "^$")
            return xdotool("search", *words, check=False)

        return wait_for("a context menu", find)

    def tab_to(self, window, role, name, description=None):
        """Presses Tab until the control has the focus, as every control gets it sometime."""
        for _ in range(40):
            if self.find(window, role, name, description).has("FOCUSED"):
                return
            before = self._focus(window)
            xdotool("key", "Tab")
            wait_for("the focus to move", lambda: self._focus(window) != before)
        raise AssertionError(f'Tab never reaches {role} "{name}" in "{window}"')

    def _focus(self, window):
        # Every list calls its current item focused, whether the list has the focus or not.
        parts = ("list item", "page tab", "table cell")
        for control in self.active(window).showing():
            if control.has("FOCUSED") and control.role not in parts:
                return control.role, control.name, control.place.x, control.place.y
        return None
