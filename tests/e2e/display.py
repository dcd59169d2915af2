"""What the tests on a display have in common: waiting, and events through the X server."""

import subprocess
import time

LIMIT = 60  # seconds that anything may take, on a busy machine too


def wait_for(what, condition, limit=LIMIT):
    """Waits until condition() gives something true and returns that; fails after the limit."""
    end = time.monotonic() + limit
    while time.monotonic() < end:
        result = condition()
        if result:
            return result
        time.sleep(0.02)
    raise AssertionError(f"waited in vain for {what}")


def xdotool(*words, check=True):
    """Sends events or asks for something; returns the answer, an empty text when there is none."""
    command = ["xdotool", *map(str, words)]
    return subprocess.run(command, capture_output=True, check=check, text=True).stdout.strip()
