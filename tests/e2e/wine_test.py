"""The whole job in the Windows program under Wine, by keyboard: what it writes equals byte for byte what
the console program of this machine writes from the same files, and Wine's registry holds its options.

Usage: wine_test.py WINE WINDOWS_PROGRAMS PROGRAMS EXAMPLES PICTURES, the last four being folders, on a
display with a window manager and with a WINEPREFIX of its own. Pictures of the windows go to PICTURES.
"""

import json
import os
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

from display import wait_for, xdotool

MAIN = "Talsk/Orvanth .conf Editor"  # the message boxes', too
OPTIONS = r"HKLM\Software\Quenmar\Options"
HEADER = 228  # pixels: where the main window has the heads of its table
CHANGED_COLUMN = (355, 385)  # places in the head of that column
DEFAULTS = {
    "AlwaysIgnoreDupParam": "0",
    "SaveCommentedSeries": "1",
    "Series": "{map}{npc}{addon}{import}",
}


def active_window():
    """Returns the active window once keys reach it, too; else an empty text."""
    active = xdotool("getactivewindow", check=False)
    return active if active == xdotool("getwindowfocus", check=False) else ""


def keys(*names):
    """Presses keys; a text in quotes is typed."""
    for name in names:
        if name.startswith('"'):
            xdotool("type", name.strip('"'))
        else:
            xdotool("key", name)


class Wine:
    def __init__(self, program):
        state = os.environ["QUENMAR_STATE"]
        self.command = ["env", f"QUENMAR_STATE=Z:{state}", program]
        self.prefix = Path(os.environ["WINEPREFIX"])

    def run(self, *words, **places):
        command = [*self.command, *words]
        return subprocess.run(command, capture_output=True, check=False, **places)

    def mount(self, device, folder):
        """Makes a folder a drive such as "q:", or a share such as "unc/server/share"."""
        link = self.prefix / "dosdevices" / device
        link.parent.mkdir(parents=True, exist_ok=True)
        link.unlink(missing_ok=True)
        link.symlink_to(folder)

    def forget(self):
        """Forgets the options and the windows' sizes."""
        self.run("reg", "delete", OPTIONS, "/f")
        for state in self.prefix.glob("drive_c/users/*/AppData/Roaming/quenmar/windows.ini"):
            state.unlink()

    def set_option(self, name, value):
        self.run("reg", "add", OPTIONS, "/v", name, "/d", value, "/f")

    def options(self):
        """Returns the options in the registry by name."""
        lines = self.run("reg", "query", OPTIONS).stdout.decode().splitlines()
        rows = [line.split(None, 2) for line in lines if "REG_SZ" in line]
        return {row[0]: row[2] if len(row) > 2 else "" for row in rows}


class Windows:
    """The windows of a running program, each opened by the one before. Ends it when the context ends."""

    def __init__(self, pictures, *command):
        self.pictures = pictures
        self.open = ["none"]
        self.process = subprocess.Popen(command)
        self.opens(MAIN)

    def __enter__(self):
        return self

    def __exit__(self, failure, *_):
        if failure:
            subprocess.run(["import", "-window", "root", self.pictures / "failure.png"], check=True)
        self.process.kill()
        self.process.wait()

    def opens(self, title):
        """Waits for another window of that title (or beginning of one) to become the active one."""

        def new():
            active = active_window()
            name = xdotool("getwindowname", active, check=False) if active else ""
            return active if active and active not in self.open and name.startswith(title) else None

        self.open.append(wait_for(f'a window "{title}"', new))

    def closes(self):
        """Waits until another window than the latest is the active one."""
        closed = self.open.pop()
        wait_for("a window to close", lambda: active_window() not in ("", closed))

    def is_modified(self, modified):
        """Waits until the title tells whether there are unsaved changes."""
        wait_for(
            f"the mark of changes to be {modified}",
            lambda: xdotool("getwindowname", self.open[-1], check=False).endswith("*") == modified,
        )

    def answer(self, key, title=MAIN):
        self.opens(title)
        keys(key)
        self.closes()

    def picture(self, name):
        """Takes the window, once two pictures of it are the same."""
        pictures = []

        def settled():
            command = ["import", "-frame", "-window", self.open[-1], "-strip", "png:-"]
            pictures.append(subprocess.run(command, stdout=subprocess.PIPE, check=True).stdout)
            return pictures[-2:-1] == pictures[-1:]

        wait_for("the window to stop changing", settled)
        (self.pictures / f"{name}.png").write_bytes(pictures[-1])

    def end(self):
        wait_for("the program to end", lambda: self.process.poll() is not None)
        assert self.process.returncode == 0


def go_to(names, name):
    """In a list of these names: goes to one of them."""
    keys("Home", *["Down"] * names.index(name))


def pick_folders(windows):
    """In the main window as it comes up: has the picker give back the folders that it begins with."""
    for _ in range(2):
        keys("Tab", "space")
        windows.opens("Browse for Folder")
        keys("Return")
        windows.closes()
        keys("Tab")
    keys("Tab", "Tab", "Tab", "space")


def edit(windows):
    """In the main window as it comes up: gives the second setting of network.conf another value."""
    keys("Tab", "Tab", "Tab", "Tab", '"network"')
    windows.picture("windows-main")
    keys("Tab", "space")
    windows.opens("Editing network.conf")
    keys("Down", "Right", "Return", "ctrl+a", '"75"', "Return")
    windows.is_modified(True)
    windows.picture("windows-editor")
    apply(windows, "Tab", "Tab", "Tab")  # over the comments and the bar that makes them higher
    keys("Escape")
    windows.closes()


def update(windows, names):
    """In the main window, on its Edit button: merges login.conf.
    Restores a setting, adds one, removes some (with every answer to the question), changes a value."""
    keys("shift+Tab", '"login"', "Tab", "Tab", "space")
    windows.opens("Check Changes - login.conf")
    keys(*["Tab"] * 6)
    go_to(names["DeletedFields"], "list_sort")
    windows.picture("windows-updater")
    keys("space", "Tab", "space", *["shift+Tab"] * 6)
    windows.is_modified(True)
    go_to(names["NewFields"], "client_newest")
    keys("Tab", "space", "ctrl+Tab")
    for name in ("gate_waiting_clients", "back_port", "account_backup_file", "wrong_tries"):
        go_to(names["ActualFields"], name)
        keys("space")
    keys("Tab", "space")
    for answer in ("y", "n", "Escape"):
        windows.answer(answer)
    removed = ("gate_waiting_clients", "account_backup_file")
    left = [name for name in names["ActualFields"] if name not in removed]
    go_to(left, "client_oldest")
    keys("Tab", "ctrl+a", '"30"')
    apply(windows, "Tab", "Tab")
    keys("Tab", "space")
    windows.closes()


def sort_by_changes(windows):
    """Clicks the head of the column "Changed" twice, which puts the most first: at two places, or it
    could be a double click."""
    for x in CHANGED_COLUMN:
        xdotool("mousemove", "--window", windows.open[-1], x, HEADER, "click", 1)
    windows.picture("windows-sorted")


def apply(windows, *ways):
    """Presses Apply, to which these keys lead."""
    keys(*ways, "space")
    windows.answer("y")
    windows.answer("Return")
    windows.is_modified(False)


def upkeep(windows):
    """In the main window as it comes up: opens the second file of the sorted table; finds a setting by
    its comment, gives it its original value, with undo and redo, and keeps the file's lines. Then shows
    only what is changed, and takes the next such setting's original value, too."""
    keys("shift+Tab", "shift+Tab", '"Keep"', "Tab")
    sort_by_changes(windows)
    keys("ctrl+Home", "Down", "ctrl+Return")
    windows.opens("Editing char.conf")
    keys("ctrl+f", '"told to the clients"', "Return", "ctrl+r")
    windows.is_modified(True)
    keys("ctrl+z")
    windows.is_modified(False)
    keys("ctrl+y")
    windows.is_modified(True)
    keys("ctrl+f", "ctrl+a", "BackSpace", "Tab", "Down")
    windows.picture("windows-found")
    keys("shift+Tab", "Return", "ctrl+Home", "ctrl+r", "ctrl+f", "Escape")
    apply(windows, "Tab", "Tab", "Tab")
    keys("Escape")
    windows.closes()


def follow(windows, take_next_release):
    """In the main window, on its table: saves login.conf with one release and takes the new defaults of
    the next one, with its comments."""
    keys("shift+Tab", '"New"', *["shift+Tab"] * 4, '"login"', "Tab", "Tab", "space")
    windows.opens("Check Changes - login.conf")
    keys("ctrl+Tab")
    apply(windows, "Tab", "Tab", "Tab", "Tab")  # over what takes defaults: the last release was newer
    keys("Tab", "space")
    windows.closes()
    take_next_release()
    keys("space")
    windows.opens("Check Changes - login.conf")
    keys("ctrl+Tab")
    windows.picture("windows-release")
    keys("ctrl+shift+d")
    windows.is_modified(True)
    apply(windows, "Tab", "Tab", "Tab")
    keys("Tab", "space")
    windows.closes()


def compare_consoles(wine, windows_programs, console, files):
    """Both console programs, with one registry file, say and return the same, whatever names a folder."""
    messages = '"LNG25"="\u00bfBorrar %1? \u20ac"\r\n"LNG41"="\u00a1Guardado!"\r\n'
    key = "[HKEY_LOCAL_MACHINE\\Software\\Quenmar\\Language]"
    registry = f"REGEDIT4\r\n\r\n{key}\r\n{messages}".encode("windows-1252")
    for name in ("mine.reg", "theirs.reg"):
        (files / name).write_bytes(registry)
    merge = ("merge", "conf-dist", "conf", "login.conf", "--remove", "back_port", "--output", "-")
    for words, other_words in (
        (("check", "conf-dist", "conf"),) * 2,
        (merge,) * 2,
        (("check", "conf-dist", "conf", "--json"), ("check", "r:\\", "//quenmar/conf", "--json")),
    ):
        mine = console(*words, registry="mine.reg")
        program = f"{windows_programs}/quenmarctl.exe"
        theirs = wine.run(program, "--registry", "theirs.reg", "--yes", *other_words, cwd=files)
        assert theirs.returncode == mine.returncode, (theirs, mine)
        assert theirs.stdout == mine.stdout, (theirs.stdout, mine.stdout)
        errors = theirs.stderr.decode().replace("\r\n", "\n").replace("\\", "/")
        assert errors == mine.stderr.decode(), (errors, mine.stderr.decode())
    assert (files / "mine.reg").read_bytes() == (files / "theirs.reg").read_bytes()


def main(wine, windows_programs, programs, examples, pictures):
    wine, pictures, programs = Wine(wine), Path(pictures), Path(programs).absolute()
    program = [pictures, *wine.command, f"{windows_programs}/quenmar.exe"]
    with tempfile.TemporaryDirectory() as scratch:
        files = Path(scratch)
        shutil.copytree(examples, files, dirs_exist_ok=True)
        shutil.copytree(files / "conf", files / "expected")
        for device, folder in (("q:", "."), ("r:", "conf-dist"), ("unc/quenmar/conf", "conf")):
            wine.mount(device, files / folder)

        def console(*words, registry="options.reg"):
            command = [programs / "quenmarctl", "--registry", registry, "--yes", *words]
            return subprocess.run(command, cwd=files, capture_output=True, check=False)

        compare_consoles(wine, Path(windows_programs).absolute(), console, files)

        wine.forget()
        with Windows(*program) as windows:
            keys(*["shift+Tab"] * 4, "space")
            windows.end()
        assert wine.options() == DEFAULTS, wine.options()

        stored = {"SVNPath": "Q:\\conf-dist", "ServerPath": "Q:\\conf"}
        with Windows(*program, *stored.values()) as windows:
            pick_folders(windows)
            windows.end()
        assert wine.options() == DEFAULTS | stored, wine.options()

        wine.set_option("SVNPath", "r:")
        wine.set_option("ServerPath", r"\\quenmar\conf")
        trees = json.loads(console("compare", "conf-dist/login.conf", "conf/login.conf").stdout)
        names = {tree: [field["name"] for field in fields] for tree, fields in trees.items()}
        with Windows(*program) as windows:
            edit(windows)
            update(windows, names)
            keys("Tab", "space")
            windows.end()

        console("merge", "conf-dist", "expected", "network.conf", "--set", "net_silent_seconds=75")
        console(
            *("merge", "conf-dist", "expected", "login.conf", "--restore", "list_sort"),
            *("--add", "client_newest", "--set", "client_oldest=30"),
            *("--remove", "gate_waiting_clients", "--remove", "account_backup_file"),
        )
        next_release = (files / "conf-dist/login.conf").read_bytes()

        def take_release(content):
            (files / "conf-dist/login.conf").write_bytes(content)

        take_release((files / "conf-dist-old/login.conf").read_bytes())
        with Windows(*program) as windows:
            upkeep(windows)
            follow(windows, lambda: take_release(next_release))
            keys("Tab", "space")
            windows.end()

        # What edits only is a merge with a distribution that has the same settings.
        shutil.copytree(files / "expected", files / "same")
        reset = ("--set", "hub_public_address=", "--set", "login_secret=changeme")
        console("merge", "same", "expected", "char.conf", "--layout", "server", *reset)
        merge = ("merge", "conf-dist", "expected", "login.conf", "--layout", "distribution")
        take_release((files / "conf-dist-old/login.conf").read_bytes())
        console(*merge)
        take_release(next_release)
        console(*merge, "--take-defaults")
        subprocess.run(["diff", "-r", "--text", files / "expected", files / "conf"], check=True)


if __name__ == "__main__":
    main(*sys.argv[1:])
