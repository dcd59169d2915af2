#!/usr/bin/python3
"""The whole job in the windows, by mouse alone and by keyboard alone: what the windows write equals byte
for byte what the console program writes.

Usage: job_test.py QUENMAR QUENMARCTL EXAMPLES, on a display with a window manager and a session bus.
"""

import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

from desktop import Program
from display import wait_for, xdotool

MAIN = "Talsk/Orvanth .conf Editor"  # the title of message boxes, too
NEW = "[x] New Settings / [ ] optional settings:"
OBSOLETE = "NonStandard / Obsolete Settings:"
CURRENT = "Parameters:"


class Mouse:
    """Does the job without a key."""

    def __init__(self, program):
        self.program = program

    def choose_file(self, name):
        self.program.find(MAIN, "combo box", "Config File:").click()
        self.program.find(MAIN, "list item", name).click()

    def press(self, window, button, description=None):
        self.program.find(window, "push button", button, description).click()

    def go_to(self, window, _, item):
        self.program.find(window, "list item", item).click()

    def tick(self, window, _, item):
        self.program.find(window, "list item", item).click(8)  # pixels: in the check box

    def turn_to(self, window, page, _):
        self.program.find(window, "page tab", page).click()


class Keyboard:
    """Does the job without a mouse."""

    def __init__(self, program):
        self.program = program

    def choose_file(self, name):
        self.program.tab_to(MAIN, "combo box", "Config File:")
        xdotool("type", name)

    def press(self, window, button, description=None):
        self.program.tab_to(window, "push button", button, description)
        xdotool("key", "space")

    def go_to(self, window, group, item):
        self.program.tab_to(window, "list", group)
        xdotool("type", item)
        wait_for(item, lambda: self.program.find(window, "list item", item).has("SELECTED"))

    def tick(self, window, group, item):
        self.go_to(window, group, item)
        xdotool("key", "space")

    def turn_to(self, window, page, from_page):
        self.program.tab_to(window, "page tab list", from_page)
        xdotool("key", "Right")

    def replace(self, window, editor, text):
        self.program.tab_to(window, "text", editor)
        xdotool("key", "ctrl+a")
        xdotool("type", text)
        wait_for(text, lambda: self.program.find(window, "text", editor).text == text)


def answer(user, message, button):
    """Waits for a message box and presses a button of it."""
    user.program.find(MAIN, "label", message)
    user.press(MAIN, button)


def apply_and_close(user, window):
    user.press(window, "Apply")
    answer(user, "Apply Changes?", "Yes")
    answer(user, "Saved!", "OK")
    user.press(window, "Close")


def merge(user):
    """Checks a file and decides. Returns what the console program has to be told for the same."""
    window = "Check Changes - login.conf"
    user.choose_file("login.conf")
    user.press(MAIN, "Check Changes")
    user.tick(window, OBSOLETE, "list_sort")
    user.press(window, "Restore     ->")
    user.go_to(window, NEW, "client_newest")
    decisions = ["--restore", "list_sort", "--add", "client_newest", "--remove", "gate_port"]
    if isinstance(user, Keyboard):
        user.replace(window, "Original Value:", "41")
        decisions += ["--set", "client_newest=41"]
    user.press(window, "Add       ->")
    user.turn_to(window, "Current Fields", "Changes")
    if isinstance(user, Keyboard):
        user.go_to(window, CURRENT, "back_port")
        user.replace(window, "Actual Value:", "7999")
        decisions += ["--set", "back_port=7999"]
    user.tick(window, CURRENT, "gate_port")
    user.press(window, "<-        Remove")
    question = "The gate_port parameter is mandatory, delete anyway?"
    answer(user, question, "No")
    user.press(window, "<-        Remove")
    answer(user, question, "Yes")
    apply_and_close(user, window)
    return decisions


def expect_copied(program, window, name):
    """Pastes into the value of the setting whose name was copied, and takes that back."""
    xdotool("key", "Right", "Return", "ctrl+a", "ctrl+v")

    def pasted():
        shown = program.active(window).showing()
        return [c.name for c in shown if c.role == "table cell"].count(name) == 2

    wait_for("the copied name", pasted)
    xdotool("key", "Escape", "Return", "Left")


def copy_by_menus(program, window):
    """Copies names by the grid's context menu, which comes by the mouse and by the Menu key."""
    program.find(window, "table cell", "back_port").click(button=3)
    xdotool("mousemove", "--window", program.menu(), 12, 12, "click", 1)  # its only entry
    expect_copied(program, window, "back_port")
    xdotool("key", "Up", "Menu")
    program.menu()
    xdotool("key", "Down", "Return")
    expect_copied(program, window, "gate_waiting_clients")


def edit(user, folder):
    """Edits a value in the grid, by keyboard: values are typed. Returns what the console program has to
    be told for the same."""
    window = f"Editing login.conf - {folder}"
    user.choose_file("login.conf")
    user.press(MAIN, "Edit")
    user.program.find(window, "table cell", "gate_port")
    xdotool("key", "Right", "Return", "5", "Escape")  # which takes it back
    xdotool("key", "Escape")
    answer(user, "Ignore Changes?", "Yes")
    user.press(MAIN, "Edit")
    copy_by_menus(user.program, window)
    xdotool("key", "ctrl+Home", "Right", "Down")
    xdotool("type", "7200")
    xdotool("key", "Down", "End")
    xdotool("type", "5")
    wait_for("the value", lambda: user.program.find(window, "table cell", "1285"))
    apply_and_close(user, window)
    return ["--set", "gate_port=7200", "--set", "gate_waiting_clients=1285"]


def keep(user, folder):
    """Edits a value that is found by its comment, with undo and redo, and keeps the file's own lines.
    Returns what the console program has to be told for the same."""
    window = f"Editing login.conf - {folder}"
    user.program.find(MAIN, "table cell", "login.conf")
    user.choose_file("login.conf")
    user.program.tab_to(MAIN, "combo box", "Settings only")  # a list is named by its text
    xdotool("type", "Keep")
    user.press(MAIN, "Edit")
    user.program.find(window, "table cell", "gate_port")
    xdotool("key", "ctrl+f")
    xdotool("type", "clients are expected")
    wait_for("the rows found", lambda: not any(
        c.name == "back_port" for c in user.program.active(window).showing()))
    xdotool("key", "Return", "ctrl+Home", "Right", "Down")
    xdotool("type", "7200")
    xdotool("key", "Return", "ctrl+z")
    user.program.find(window, "table cell", "7110")
    xdotool("key", "ctrl+shift+z")
    user.program.find(window, "table cell", "7200")
    apply_and_close(user, window)
    return ["--layout", "server", "--set", "gate_port=7200"]


def mistype(user):
    """Types a wrong folder and leaves the box by a click: the message comes, and the click counts."""
    user.program.tab_to(MAIN, "text", "Server Conf:")
    xdotool("key", "ctrl+a")
    xdotool("type", "/nowhere")
    caption = "Select a config file from the list."
    user.program.find(MAIN, "check box", caption).click(8)
    answer(user, 'Please, select your "conf" folder inside your Server Root.', "OK")
    wait_for("a tick", lambda: user.program.find(MAIN, "check box", caption).has("CHECKED"))


def expect_same(quenmarctl, distribution, server, decisions, written):
    """Compares what was written with the console program's merge of the same files."""
    subprocess.run(
        [quenmarctl, "--yes", "merge", distribution, server, "login.conf", *decisions],
        check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    expected = (server / "login.conf").read_bytes()
    assert written.read_bytes() == expected, f"{written} differs from the console program's"


def run(quenmar, quenmarctl, examples, scratch, make_user, job):
    """Does one job on a copy of the samples, the console's on another."""
    mine, other = (shutil.copytree(examples, scratch / name) for name in ("window", "console"))
    registry = scratch / "options.reg"
    with Program(quenmar, "--registry", registry, mine / "conf-dist", mine / "conf") as program:
        user = make_user(program)
        decisions = job(user, mine / "conf") if job in (edit, keep) else job(user)
        if job is not keep:  # whose layout greys the box that is clicked
            mistype(user)
        user.press(MAIN, "Close")
        assert program.process.wait(timeout=30) == 0
    # What edits only is a merge with a distribution that has the same settings in the same order.
    distribution = other / ("conf-dist" if job is merge else "conf")
    server = other / "conf" if job is merge else shutil.copytree(other / "conf", other / "edited")
    expect_same(quenmarctl, distribution, server, decisions, mine / "conf" / "login.conf")


def main(quenmar, quenmarctl, examples):
    for make_user, job in ((Mouse, merge), (Keyboard, merge), (Keyboard, edit), (Keyboard, keep)):
        with tempfile.TemporaryDirectory() as scratch:
            run(quenmar, quenmarctl, examples, Path(scratch), make_user, job)
        print(f"{job.__name__} by {make_user.__name__.lower()}: the same bytes")


if __name__ == "__main__":
    main(*sys.argv[1:])
