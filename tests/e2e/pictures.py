#!/usr/bin/python3
"""Takes a picture of each of the three windows.

Usage: pictures.py QUENMAR FOLDER PICTURES, with the sample folders in FOLDER/examples.
"""

import os
import subprocess
import sys
import time
from pathlib import Path

from desktop import Program
from display import xdotool
from users import MAIN, NEW, Keyboard


def take(title, width, height, picture):
    """Gives the window of that title its size, and takes it with its frame once it stays the same."""
    window = subprocess.run(
        ["xdotool", "search", "--onlyvisible", "--name", f"^{title}"],
        check=True, capture_output=True, text=True).stdout.split()[-1]
    xdotool("windowsize", "--sync", window, width, height)
    last = None
    while last is None or picture.read_bytes() != last:
        last = picture.read_bytes() if picture.exists() else b""
        time.sleep(0.3)
        subprocess.run(["import", "-frame", "-window", window, "-strip", f"png:{picture}"], check=True)
    subprocess.run(["optipng", "-quiet", "-o2", picture], check=True)
    print(f"{picture.name}: {picture.stat().st_size} bytes")


def main(quenmar, folder, pictures):
    pictures = Path(pictures)
    os.chdir(folder)  # so that short paths show
    with Program(quenmar, "examples/conf-dist", "examples/conf") as program:
        user = Keyboard(program)
        user.choose_file("world.conf")
        take(MAIN, 840, 480, pictures / "main.png")
        user.press(MAIN, "Edit")
        window = "Editing world.conf - examples/conf"
        program.find(window, "table cell", "world_listen_port")
        xdotool("key", "Down", "Down", "Down", "Right", "Return", "5")
        take(window, 960, 640, pictures / "editor.png")
        xdotool("key", "Return", "Escape")
        program.find(MAIN, "label", "Ignore Changes?")
        user.press(MAIN, "Yes")
        user.press(MAIN, "Check Changes")
        window = "Check Changes - world.conf"
        user.go_to(window, NEW, "shutdown_script")
        take(window, 960, 680, pictures / "updater.png")


if __name__ == "__main__":
    main(*sys.argv[1:])
