#!/usr/bin/env python3
"""Plays a download whose line dies in the middle, and the way back that the form's note tells.

    run_flash_cut.py PROGRAM MAKE_FIRMWARE FOLDER

In each of some steps the drive dies without a word, as behind a pulled cable. It is powered up again at the
same path, in its bootloader when it had begun to erase. Download is pressed, and then the link is opened.
"""
import pathlib
import shutil
import subprocess
import sys

# Step in which the line dies, what the box says, and what the line of state says.
CUTS = [
    (3, "Shake hands with no response!", "untouched"),
    (6, "Erase failed!", "no complete firmware"),
    (8, "Programing overtime!", "no complete firmware"),
]

WALK = """
until toolbar.commx CommOKpic
until toolbar.Errorx errorgreen
close Form1
open Download
until Download.Label18 *
file a.servo
click Download.Command1
click Download.Command4
until engine.download_step {step} within 30000
print engine.download_step
until engine.download_active 0 within 60000
expect-message {message}
print Download.LabelH
expect Download.Command1.enabled false
expect Download.Command4.enabled false
# Nothing answers: the misses close the link, and its dialog comes up.
until toolbar.commx Commerrorpic within 60000
click Download.CommandA
click Download.Command4
until Download.LabelC Waiting: open the link now
click Form1.Command1
expect Form1.Command1 CLOSE
until engine.download_active 0 within 60000
expect-message Download Finished!
close Form1
until Download.LabelC Finished; the drive answers again
until Download.Label18 SW 9.99
"""


def start_drive(tree, data, folder, *more):
    drive = subprocess.Popen(
        [tree / "drive-sim", "--data", data, "--link", folder / "line", "--baud", "115200", *more],
        stdout=subprocess.PIPE, text=True)
    line = drive.stdout.readline()
    if not line.startswith("line: "):
        sys.exit(f"drive-sim said {line!r}")
    return drive


def play(program, data, folder, step, message, state):
    walk = folder / f"cut_{step}.walk"
    walk.write_text(WALK.format(step=step, message=message))
    tree = program.parent
    drives = [start_drive(tree, data, folder)]
    workstation = subprocess.Popen(
        [program, "--data", data, "--connect", folder / "line", "--baud", "115200", "--walk", walk],
        stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, cwd=folder)
    try:
        printed = workstation.stdout.readline()
        drives[0].kill()
        drives[0].wait()
        printed += workstation.stdout.readline() + workstation.stdout.readline()
        drives.append(start_drive(tree, data, folder, *(["--bootloader"] if step > 5 else [])))
        rest, errors = workstation.communicate()
        print(printed + rest + errors)
        if workstation.returncode != 0 or state not in printed:
            sys.exit(f"step {step}: status {workstation.returncode}")
    finally:
        workstation.kill()
        for drive in drives:
            drive.kill()
            drive.wait()


def main():
    program, make_firmware, folder = map(pathlib.Path, sys.argv[1:4])
    tree = program.parent
    shutil.rmtree(folder, ignore_errors=True)
    data = folder / "data"
    data.mkdir(parents=True)
    shutil.copytree(tree / "sys", data / "sys")
    for name in ("qorlan.dat", "Servo.dat", "modbus.txt", "sim"):
        if (tree / name).exists():
            (data / name).symlink_to(tree / name)
    subprocess.run([sys.executable, make_firmware, "--version", "SW 9.99", "--blocks", "4", folder / "a.servo"],
                   check=True)
    for step, message, state in CUTS:
        play(program, data, folder, step, message, state)


main()
