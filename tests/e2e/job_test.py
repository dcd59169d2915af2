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

from desktop import Program, wait_for
from display import xdotool
from users import CURRENT, MAIN, NEW, OBSOLETE, Keyboard, Mouse, answer, apply_and_close


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
        decisions = job(user, mine / "conf") if job is edit else job(user)
        mistype(user)
        user.press(MAIN, "Close")
        assert program.process.wait(timeout=30) == 0
    # What edits only is a merge with a distribution that has the same settings in the same order.
    distribution = other / ("conf-dist" if job is merge else "conf")
    server = other / "conf" if job is merge else shutil.copytree(other / "conf", other / "edited")
    expect_same(quenmarctl, distribution, server, decisions, mine / "conf" / "login.conf")


def main(quenmar, quenmarctl, examples):
    for make_user, job in ((Mouse, merge), (Keyboard, merge), (Keyboard, edit)):
        with tempfile.TemporaryDirectory() as scratch:
            run(quenmar, quenmarctl, examples, Path(scratch), make_user, job)
        print(f"{job.__name__} by {make_user.__name__.lower()}: the same bytes")


if __name__ == "__main__":
    main(*sys.argv[1:])
