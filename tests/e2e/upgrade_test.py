#!/usr/bin/python3
"""The monthly upgrade in the windows, with what finds the work: the sorted table of all files, the find
bar, the marks of a new release. What the windows write with both layouts that keep comments equals
byte for byte what the console program writes.

Usage: upgrade_test.py QUENMAR QUENMARCTL EXAMPLES, on a display with a window manager and a session bus.
"""

import json
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

from desktop import Program, wait_for
from display import xdotool
from users import CURRENT, MAIN, Keyboard, apply_and_close

COLUMNS = ("File", "State", "New", "Changed", "Inactive", "Obsolete", "Defaults")
CHOICES = ("All", "Only changed", "Changed by the release")


class Console:
    """The console program, on folders and options of its own."""

    def __init__(self, program, folder):
        self.command = [program, "--yes", "--registry", folder / "options.reg"]
        self.folder = folder

    def run(self, *words):
        command = [*self.command, *words]
        result = subprocess.run(command, cwd=self.folder, capture_output=True, check=False)
        assert result.returncode < 2, result.stderr
        return result.stdout


def choose_layout(user, layout):
    user.program.find(MAIN, "table cell", "login.conf")  # the folders are there
    user.program.tab_to(MAIN, "combo box", "Settings only")  # a list is named by its text
    xdotool("type", layout.split()[0])  # a blank would open the list
    user.program.find(MAIN, "combo box", layout)


def overview(program):
    """Returns the texts in the table of all files, row for row as on the screen, by file."""
    table = program.find(MAIN, "table", "Config File:")
    rows = {}
    for cell in (c for c in table.children() if c.role == "table cell"):
        rows.setdefault(cell.place.y, []).append((cell.place.x, cell.name))
    names = [[name for _, name in sorted(row)] for _, row in sorted(rows.items())]
    return {row[0]: dict(zip(COLUMNS, row)) for row in names}


def wait_for_order(program, *files):
    wait_for(f"the order {files}", lambda: tuple(overview(program))[:len(files)] == files)


def wait_for_cell(program, file, column, text):
    wait_for(f"{column} of {file} to be {text}", lambda: overview(program)[file][column] == text)


def expect_rows(program, window, shown, hidden):
    """Waits until a list or grid shows one setting and not the other."""

    def filtered():
        names = [c.name for c in program.active(window).showing()]
        return shown in names and hidden not in names

    wait_for(f"{shown} without {hidden}", filtered)


def filter_by(user, window, choice, shown, hidden):
    """Lets the bar to find settings show only one kind of them, which is on its list."""
    xdotool("key", "ctrl+f", "ctrl+a", "BackSpace", "Tab")

    def chosen():
        boxes = [c for c in user.program.active(window).showing() if c.role == "combo box"]
        box = next(c for c in boxes if c.name in CHOICES)
        if box.has("FOCUSED") and box.name != choice:
            xdotool("key", "Down")
        return box.name == choice

    wait_for(choice, chosen)
    expect_rows(user.program, window, shown, hidden)


def upkeep(user, mine, console):
    """Sorts the table of all files by changes and opens a file from it; finds a setting by
    its comment and gives it its original value; that shows in the table. The file keeps its lines."""
    program = user.program
    choose_layout(user, "Keep this file's comments")
    wait_for_cell(program, "char.conf", "Changed", "9")
    # At two places, or it could be a double click.
    for x, files in ((15, ("events.conf", "network.conf")), (35, ("world.conf", "char.conf"))):
        program.find(MAIN, "table column header", "Changed").click(x)
        wait_for_order(program, *files)
    program.tab_to(MAIN, "table", "Config File:")
    xdotool("key", "ctrl+Home", "Down", "ctrl+Return")
    window = f"Editing char.conf - {mine / 'conf'}"
    address, other = "hub_public_address", "newcomer_map"
    program.find(window, "table cell", address)
    xdotool("key", "ctrl+f")
    xdotool("type", "told to the clients")
    expect_rows(program, window, address, other)
    xdotool("key", "Return", "ctrl+r")
    filter_by(user, window, "Only changed", other, address)
    xdotool("key", "Escape", "ctrl+z")
    filter_by(user, window, "Only changed", address, "hub_listen_port")
    xdotool("key", "Escape", "ctrl+shift+z")
    filter_by(user, window, "Only changed", other, address)
    xdotool("key", "Escape")
    apply_and_close(user, window)
    wait_for_cell(program, "char.conf", "Changed", "8")
    # What edits only is a merge with a distribution that has the same settings.
    shutil.copytree(console.folder / "conf", console.folder / "same")
    console.run("merge", "same", "conf", "char.conf", "--layout", "server", "--set", f"{address}=")


def take_release(folder, name):
    """Puts a release where the server's owner keeps the distribution."""
    for file in ("login.conf", "drops.conf"):
        shutil.copy(folder / name / file, folder / "release" / file)


def follow(user, mine, console):
    """Saves a file with one release, edits it and follows the next release, whose comments the file
    takes on: the defaults that nobody has touched become the new ones."""
    program = user.program
    window = "Check Changes - login.conf"
    merge = ("merge", "release", "conf", "login.conf", "--layout", "distribution")
    user.choose_file("login.conf")
    choose_layout(user, "New release's comments")
    user.press(MAIN, "Check Changes")
    apply_and_close(user, window)
    console.run(*merge)
    for folder in (mine, console.folder):
        take_release(folder, "conf-dist")
    # Now the table tells the old release from the new one, as the console does.
    wait_for_cell(program, "login.conf", "Defaults", "1 (1)")
    (report,) = json.loads(console.run("check", "release", "conf", "login.conf", "--json"))
    told = {setting["name"]: setting["kind"] for setting in report["defaults"]}
    assert told == {"client_oldest": "default", "account_save_seconds": "both"}, told

    user.press(MAIN, "Check Changes")
    user.turn_to(window, "Current Fields", "Changes")
    program.tab_to(window, "list", CURRENT)
    filter_by(user, window, "Changed by the release", "client_oldest", "gate_port")
    program.find(window, "list item", "account_save_seconds")
    xdotool("key", "Escape", "ctrl+shift+d")
    apply_and_close(user, window)
    wait_for_cell(program, "login.conf", "Defaults", "")
    console.run(*merge, "--take-defaults")

    release = (mine / "release" / "login.conf").read_bytes()
    written = (mine / "conf" / "login.conf").read_bytes()
    assert b"client_oldest: 31" in written and b"account_save_seconds: 60" in written, written
    comments = [line for line in release.splitlines() if line.startswith(b"// ")]
    assert all(comment in written for comment in comments), written


def run(quenmar, quenmarctl, examples, scratch, job):
    """Does one job on a copy of the samples, the console's on another."""
    mine, other = (shutil.copytree(examples, scratch / name) for name in ("window", "console"))
    for folder in (mine, other):
        shutil.copytree(folder / "conf-dist", folder / "release")
        if job is follow:
            take_release(folder, "conf-dist-old")
    registry = ("--registry", scratch / "options.reg")
    with Program(quenmar, *registry, mine / "release", mine / "conf") as program:
        user = Keyboard(program)
        job(user, mine, Console(quenmarctl, other))
        user.press(MAIN, "Close")
        assert program.process.wait(timeout=30) == 0
    subprocess.run(["diff", "-r", "--text", mine / "conf", other / "conf"], check=True)


def main(quenmar, quenmarctl, examples):
    for job in (upkeep, follow):
        with tempfile.TemporaryDirectory() as scratch:
            run(quenmar, quenmarctl, examples, Path(scratch), job)
        print(f"{job.__name__}: the same bytes")


if __name__ == "__main__":
    main(*sys.argv[1:])
