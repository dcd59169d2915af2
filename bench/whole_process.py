"""whole_process.py QUENMARCTL FOLDER: measures whole processes, from start to end, output included:
`quenmarctl compare` beside other programs on the sample files in FOLDER/5000 and FOLDER/50000, and
the commands on large and odd files, which are written to FOLDER.
"""
import os
import re
import statistics
import subprocess
import sys
import time
from pathlib import Path

RUNS = 15  # of each program, in turn, after one that warms up the disk cache

folder = Path(sys.argv[2])
quenmarctl = [os.path.abspath(sys.argv[1]), "--registry", str(folder / "options.reg"), "--no"]


def programs(settings):
    pair = [str(folder / settings / name) for name in ("dist.conf", "server.conf")]
    return {
        "quenmarctl compare": [*quenmarctl, "compare", *pair],
        "diff -u": ["diff", "-u", *pair],
        "git diff --stat": ["git", "diff", "--no-index", "--stat", *pair],
        "dict_compare.py": ["/usr/bin/python3", str(Path(__file__).with_name("dict_compare.py")), *pair],
    }


def run(command):
    """Runs it once; returns milliseconds."""
    start = time.perf_counter()
    status = subprocess.run(command, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL).returncode
    elapsed = time.perf_counter() - start
    if status > 1:  # as for diff: 1 means differences
        sys.exit(f"{command[0]} failed with status {status}")
    return elapsed * 1000


def peak(command):
    """Runs it once; returns its peak resident memory in MiB."""
    # Started by a small program: what Python starts counts Python's own memory before the start.
    report = folder / "peak"
    subprocess.run(["/usr/bin/time", "-q", "-f", "%M", "-o", str(report), *command],
                   stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL)
    return int(report.read_text()) / 1024


def instructions(command):
    """Runs it once; returns how many million instructions it executes."""
    counted = subprocess.run(["valgrind", "--tool=callgrind", "--callgrind-out-file=/dev/null", *command],
                             stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE,
                             text=True)
    return int(re.search(r"Collected : (\d+)", counted.stderr).group(1)) / 1e6


def in_turn(commands, runs):
    """Runs the commands in turn; returns the median of each in milliseconds."""
    times = {name: [] for name in commands}
    for turn in range(runs + 1):
        for name, command in commands.items():
            elapsed = run(command)
            if turn > 0:
                times[name].append(elapsed)
    return {name: statistics.median(values) for name, values in times.items()}


def compare_programs(settings, runs):
    commands = programs(settings)
    medians = in_turn(commands, runs)
    ours = medians["quenmarctl compare"]
    print(f"\n{settings} settings, median of {runs}:")
    print(f"{'':22}{'wall time':>12}{'ours is':>14}{'peak memory':>14}")
    for name, command in commands.items():
        ratio = f"{ours / medians[name]:.2f} times"
        print(f"{name:22}{medians[name]:9.1f} ms{ratio:>14}{peak(command):10.1f} MiB")
    print(f"quenmarctl compare executes {instructions(commands['quenmarctl compare']):.1f} million instructions")


def write_pair(name, distribution, server):
    """Writes both versions of one file; returns their folders."""
    folders = [folder / name / version for version in ("dist", "server")]
    for version, content in zip(folders, (distribution, server)):
        version.mkdir(parents=True)
        (version / "odd.conf").write_bytes(content)
    return [str(version) for version in folders]


def measure_layouts(settings, runs):
    contents = [(folder / settings / name).read_bytes() for name in ("dist.conf", "server.conf")]
    merge = [*quenmarctl, "merge", *write_pair("layouts", *contents), "odd.conf", "--dry-run", "--layout"]
    medians = in_turn({layout: [*merge, layout] for layout in ("settings", "server", "distribution")}, runs)
    print(f"\nmerge --dry-run of {settings} settings, median of {runs}:")
    for layout, median in medians.items():
        print(f"--layout {layout:13}{median:9.1f} ms{median / medians['settings']:8.2f} times settings")


def measure_odd_file(title, folders, commands):
    size = os.path.getsize(Path(folders[0]) / "odd.conf") / 2**20
    print(f"\n{title}, {size:.1f} MiB:")
    for command in commands:
        arguments = [folders[0] + "/odd.conf"] if command[0] == "dump" else [*folders, "odd.conf"]
        full = [*quenmarctl, *command, *arguments]
        most = peak(full)
        print(f"{' '.join(command):22}{run(full):9.1f} ms{most:10.1f} MiB, {most / size:.1f} times the file")


compare_programs("5000", RUNS)
compare_programs("50000", 5)
measure_layouts("5000", RUNS)

block = b"".join(b"// line %d of a long block of comments, which every setting below it has\r\n" % i
                 for i in range(14_000))
names = [b"name_%d: %%d\r\n" % i for i in range(2_000)]
pair = [block + b"".join(name % (i * factor) for i, name in enumerate(names)) for factor in (1, 2)]
measure_odd_file("14000 comment lines, then 2000 settings", write_pair("block", *pair),
                 [["check"], ["merge", "--dry-run"], ["dump"]])
line = b"a: " + b"x" * 100_000_000 + b"\r\n"
measure_odd_file("One line", write_pair("line", line, line), [["check"], ["dump"]])
comments = b"".join(b"// line %d of a file that has nothing but comments, and many of them\r\n" % i
                    for i in range(1_300_000))
measure_odd_file("1.3 million comment lines", write_pair("comments", comments, comments),
                 [["check"], ["dump"]])
