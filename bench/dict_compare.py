"""Compares two configuration files as a script does it in a hurry: one dictionary per file."""
import json
import sys


def read(path):
    settings = {}
    with open(path, encoding="cp1252", newline="\r\n") as file:
        for line in file:
            name, colon, value = line.strip().partition(":")
            if colon and not name.startswith("//"):
                settings[name] = value.split("//")[0].strip()
    return settings


dist, server = read(sys.argv[1]), read(sys.argv[2])
json.dump({"new": {name: value for name, value in dist.items() if name not in server},
           "actual": {name: server[name] for name in dist if name in server},
           "deleted": {name: value for name, value in server.items() if name not in dist}},
          sys.stdout, indent=1)
