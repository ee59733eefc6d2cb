"""Odd input x reader: what is in the place of a file."""

import dataclasses
import functools
import json
import os
import pathlib
import random
import time
from typing import Callable

from bench import Cell, check
from writers import CONNECT, MAPS, VIRTUAL

MOST_MEMORY = 256  # MB; the program takes about 60 for itself
QUICK = 5.0  # seconds
ENDLESS, HELD, FOLDER, HUGE, NOISE, EMPTY = "/dev/zero", "pipe", "folder", "2 GB sparse file", "noise", "empty file"
NO_FILES = (ENDLESS, HELD, FOLDER, HUGE)  # refused everywhere


def put(kind, path):
    """Makes what `kind` says at `path`; returns where it really is."""
    if kind == ENDLESS:
        path.symlink_to("/dev/zero")
    elif kind == HELD:
        os.mkfifo(path)
    elif kind == FOLDER:
        path.mkdir()
    else:
        path.write_bytes(random.Random(1).randbytes(65536) if kind == NOISE else b"")
        if kind == HUGE:
            os.truncate(path, 2 << 30)
    return path


@dataclasses.dataclass(frozen=True)
class Reader:
    name: str
    must: str
    read: Callable[[object, pathlib.Path, str], None]  # of place, path and kind


def small(process):
    peak = process.memory("VmHWM")
    check(peak < MOST_MEMORY, f"takes {peak:.0f} MB" + process.story())


def refused(process):
    """Ends by itself at once, with one line on standard error and status 2, and none on standard output."""
    peak = 0
    end = time.monotonic() + QUICK
    while process.alive() and time.monotonic() < end:
        try:
            peak = max(peak, process.memory("VmHWM"))
        except (FileNotFoundError, ProcessLookupError):
            break
        time.sleep(0.002)
    status, errors = process.end(timeout=max(end - time.monotonic(), 0.1))
    check(status == 2, f"status {status}, on standard error {errors}" + process.story())
    check(len(errors) == 1, f"{len(errors)} lines on standard error: {errors}" + process.story())
    check(peak < MOST_MEMORY, f"took {peak:.0f} MB" + process.story())


def lives(tuner):
    tuner.answers(QUICK)
    small(tuner)
    tuner.quit()


def script(place, path, kind):
    tuner = place.tuner(*VIRTUAL, "--script", path)
    if kind in NO_FILES:
        refused(tuner)
        return
    status, errors = tuner.end(QUICK)
    check(status == 0, f"status {status}, on standard error {errors[:3]}" + tuner.story())


def preferences(place, path, kind):
    tuner = place.tuner(*VIRTUAL, "--preferences", path)
    if kind in (ENDLESS, HELD, FOLDER):
        refused(tuner)
    else:
        lives(tuner)


def channels(place, path, _):
    place.home.joinpath("Settings_par.ini").unlink()
    path.rename(place.home / "Settings_par.ini")
    lives(place.tuner(*VIRTUAL))


def eeprom_of_ecu(place, path, _):
    refused(place.ecu("--eeprom", path))


def eeprom_of_tuner(place, path, _):
    refused(place.tuner("--virtual-time", "--ecu", f"eeprom={path}"))


def by_dialog(prepare, button):
    def read(place, path, kind):
        tuner = place.tuner(*VIRTUAL)
        tuner.all(prepare)
        tuner.messages()
        tuner.value("file " + json.dumps(str(path)))
        tuner.value("click " + button, QUICK)
        check(kind not in NO_FILES or tuner.messages(), "nothing is reported" + tuner.story())
        lives(tuner)
    return read


REFUSED = "within 5 s one line on standard error and status 2; less than 256 MB"
LIVES = "within 5 s the program answers; less than 256 MB"
DIALOG = LIVES + "; what is no file or is too large is reported"
READERS = (
    Reader("--script", REFUSED + "; noise and an empty file are scripts", script),
    Reader("--preferences", REFUSED + "; with noise, an empty file or one that is too large the program runs",
           preferences),
    Reader("Settings_par.ini", LIVES, channels),
    Reader("korvane-ecu --eeprom", REFUSED, eeprom_of_ecu),
    Reader("--ecu eeprom=", REFUSED, eeprom_of_tuner),
    Reader("tune file, map window", DIALOG, by_dialog(MAPS, "frmMaps.btnLoad")),
    Reader("tune file, settings window", DIALOG,
           by_dialog((*CONNECT, "click frmSarn2.btnAsetukset"), "frmMisc.btnReadFromFile")),
    Reader("setpoint file", DIALOG, by_dialog((*MAPS, "click frmMaps.chkInjAnal"), "frmMaps.btnloadLambdaSetpoint")),
    Reader("EEPROM image", DIALOG, by_dialog(CONNECT, "frmSarn2.btnUploadEEPROM")),
    Reader("car file", DIALOG, by_dialog(("click frmSarn2.btnTuningHelp",), "frmPowerCalc.Command3")),
)


def feed(reader, kind, bench, _):
    with bench.place() as place:
        reader.read(place, put(kind, place.root / "odd"), kind)


def cells():
    for reader in READERS:
        for kind in (*NO_FILES, NOISE, EMPTY):
            yield Cell("read", f"{kind}, {reader.name}", reader.must, (1, 1), functools.partial(feed, reader, kind))
