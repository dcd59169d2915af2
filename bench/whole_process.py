"""whole_process.py QUENMARCTL FOLDER: measures whole processes on the sample files in FOLDER/5000 and
FOLDER/50000: `quenmarctl compare` beside git's diff and a script, from start to end, output included.
"""
import os
import statistics
import subprocess
import sys
import time
from pathlib import Path

RUNS = 15  # of each program, in turn, after one that warms up the disk cache

quenmarctl, folder = os.path.abspath(sys.argv[1]), Path(sys.argv[2])


def programs(settings):
    pair = [str(folder / settings / name) for name in ("dist.conf", "server.conf")]
    return {
        "quenmarctl compare": [quenmarctl, "--registry", str(folder / "options.reg"), "compare", *pair],
        "git diff --stat": ["git", "diff", "--no-index", "--stat", *pair],
        "dict_compare.py": ["/usr/bin/python3", str(Path(__file__).with_name("dict_compare.py")), *pair],
    }


def run(command):
    """Runs it once; returns milliseconds."""
    start = time.perf_counter()
    status = subprocess.run(command, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL).returncode
    elapsed = time.perf_counter() - start
    if status > 1:  # as diff has it: 1 tells of differences
        sys.exit(f"{command[0]} failed with status {status}")
    return elapsed * 1000


def peak(command):
    """Runs it once; returns its peak resident memory in MiB."""
    # Started by a small program: what Python starts counts Python's own memory before the start.
    report = folder / "peak"
    subprocess.run(["/usr/bin/time", "-q", "-f", "%M", "-o", str(report), *command],
                   stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL)
    return int(report.read_text()) / 1024


def measure(settings, runs):
    commands = programs(settings)
    times = {name: [] for name in commands}
    for turn in range(runs + 1):
        for name, command in commands.items():
            elapsed = run(command)
            if turn > 0:
                times[name].append(elapsed)
    medians = {name: statistics.median(values) for name, values in times.items()}
    ours = medians["quenmarctl compare"]
    print(f"\n{settings} settings, median of {runs}:")
    print(f"{'':22}{'wall time':>12}{'ours is':>14}{'peak memory':>14}")
    for name, command in commands.items():
        ratio = f"{ours / medians[name]:.2f} times"
        print(f"{name:22}{medians[name]:9.1f} ms{ratio:>14}{peak(command):10.1f} MiB")


measure("5000", RUNS)
measure("50000", 1)
