#!/usr/bin/env python3
"""Plays a walkthrough on a line that is pulled when the walkthrough prints its first line.

    run_unplugged.py PROGRAM WALK FOLDER

The drive of the first line dies without a word, as behind a pulled cable. At the same path a second
drive waits, as the device of a cable that is plugged in again.
"""
import os
import pathlib
import shutil
import subprocess
import sys


def start_drive(simulator, data, link):
    drive = subprocess.Popen([simulator, "--data", data, "--link", link], stdout=subprocess.PIPE, text=True)
    line = drive.stdout.readline()
    if not line.startswith("line: "):
        sys.exit(f"drive-sim said {line!r}")
    return drive


def main():
    program, walk, folder = map(pathlib.Path, sys.argv[1:4])
    tree = program.parent
    shutil.rmtree(folder, ignore_errors=True)
    data = folder / "data"
    data.mkdir(parents=True)
    shutil.copytree(tree / "sys", data / "sys")
    for name in ("qorlan.dat", "Servo.dat", "modbus.txt", "sim"):
        if (tree / name).exists():
            (data / name).symlink_to(tree / name)

    first = start_drive(tree / "drive-sim", data, folder / "line")
    second = start_drive(tree / "drive-sim", data, folder / "spare")
    try:
        workstation = subprocess.Popen(
            [program, "--data", data, "--connect", folder / "line", "--walk", walk],
            stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, cwd=folder)
        printed = [workstation.stdout.readline()]
        first.kill()
        first.wait()
        os.replace(folder / "spare", folder / "line")
        rest, errors = workstation.communicate()
        print("".join(printed) + rest + errors)
        if workstation.returncode != 0 or printed != ["12\n"]:
            sys.exit(f"status {workstation.returncode}")
    finally:
        for drive in (first, second):
            drive.kill()
            drive.wait()


main()
