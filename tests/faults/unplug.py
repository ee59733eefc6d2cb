"""Unplug x operation: one side is lost in the middle, in real time and on a pseudo-terminal."""

import contextlib
import dataclasses
import functools
import os
import pathlib
import time

from bench import Cell, check
SOON = 5.0  # seconds
QUIET = "set frmMisc.TimerInitialGetData.Enabled false"


@dataclasses.dataclass(frozen=True)
class Operation:
    name: str
    before: tuple[str, ...]
    start: str  # runs while the line is lost
    moment: float = 0.3  # seconds between the two
    then: str = "now"  # runs 20 ms behind the start
    ecu: tuple[str, ...] = ()  # options of korvane-ecu
    again: bool = False  # takes seconds: is done once more when the line is there again


OPEN_MAPS = ("click frmSarn2.btnKartat", "wait 700")
PORT = ("choose frmSarn2.ComboPort 0",)
CONNECTED = (*PORT, "click frmSarn2.btnConnect", QUIET, "wait 300")
BOX, LIMITER = ("--type", "30"), ("--type", "112")
OPEN_BOX = (*CONNECTED, "wait 800", *OPEN_MAPS)  # by the firmware's type, which has to be known

OPERATIONS = (
    Operation("connect", PORT, "click frmSarn2.btnConnect", 0.0, QUIET),
    Operation("live polling", CONNECTED, "get frmSarn2.Caption"),
    Operation("read of all settings", PORT, "click frmSarn2.btnConnect", 1.0),
    Operation("map read", (*CONNECTED, *OPEN_MAPS), "click frmMaps.btnReadFuel", 0.1),
    Operation("map send", (*CONNECTED, *OPEN_MAPS), "click frmMaps.btnWriteFuel", 0.1),
    Operation("EEPROM backup", CONNECTED, "click frmSarn2.btnBackup"),
    Operation("EEPROM upload", CONNECTED, "click frmSarn2.btnUploadEEPROM"),
    Operation("map send of an ignition-only box", OPEN_BOX, "click frmMaps_QV_ign.btnWriteIgn", 0.1, ecu=BOX,
              again=True),
    Operation("save of its launch control", OPEN_BOX, "click frmMaps_QV_ign.btnSaveLaunch", 0.1, ecu=BOX, again=True),
    Operation("limiter read", OPEN_BOX, "click frmMaps_ign_limiter.btnReadData", ecu=LIMITER, again=True),
    Operation("limiter send", OPEN_BOX, "click frmMaps_ign_limiter.btnSendSettings", ecu=LIMITER, again=True),
    Operation("restart by the limiter", OPEN_BOX, "click frmMaps_ign_limiter.btnSendSettings", 3.3, ecu=LIMITER),
    Operation("debug poll", (*CONNECTED, "click frmSarn2.Command5"), "click frmIGNDebug.Command1", ecu=BOX, again=True),
)


def until(holds, what, tuner, timeout=SOON):
    end = time.monotonic() + timeout
    while not holds():
        check(time.monotonic() < end, f"not within {timeout:g} s: {what}" + tuner.story())
        time.sleep(0.02)


def start(place, operation):
    ecu = place.ecu(*operation.ecu)
    tuner = place.tuner("--port", f"COM1={ecu.link}")
    image = place.root / "image.txt"
    image.write_text(" 7 \r\n" * 3001)
    tuner.value(f'file "{image}"')
    return ecu, tuner


def has_open(process, path):
    try:
        return any(os.readlink(file) == path for file in pathlib.Path(f"/proc/{process.pid}/fd").iterdir())
    except FileNotFoundError:  # closed since it was listed
        return False


def set_off(ecu, tuner, operation, later):
    """From an alarm of the console, so that it answers other commands meanwhile. No command may be under way then: the
    operation would become a part of it."""
    tuner.all(operation.before)
    tuner.messages()
    tuner.tell(f"at 50 {operation.start}", f"at 70 {operation.then}")
    check([tuner.answer(), tuner.answer()] == ["ok", "ok"], "no alarms" + tuner.story())
    until(lambda: has_open(tuner, ecu.path), operation.start, tuner)
    time.sleep(0.06 + operation.moment + later)


def connected(tuner):
    """A live frame has come since now."""
    packets = tuner.value("get frmSarn2.lblPackets.Caption", SOON)
    until(lambda: tuner.value("get frmSarn2.lblPackets.Caption", SOON) not in ("0", packets), "live frames", tuner)


def reconnect(tuner):
    tuner.value(QUIET)
    if tuner.value("get frmSarn2.MSComm1.PortOpen") is False:
        tuner.value("click frmSarn2.btnConnect", SOON)
    tuner.value(QUIET)
    tuner.value("set frmSarn2.TimerRequestData.Enabled true")
    connected(tuner)


@contextlib.contextmanager
def under_way(operation, bench, number):
    """A little later in the operation with each number."""
    with bench.place() as place:
        ecu, tuner = start(place, operation)
        set_off(ecu, tuner, operation, 0.01 * number)
        yield place, ecu, tuner


def ecu_dies(operation, bench, tries):
    for number in range(tries):
        with under_way(operation, bench, number) as (place, ecu, tuner):
            ecu.kill()
            until(lambda: not tuner.value("get frmSarn2.MSComm1.PortOpen", SOON), "the port is closed", tuner)
            told = tuner.messages()
            check(any("Error" in text for text in told), f"the lost line is not reported: {told}" + tuner.story())
            tuner.answers(1)
            place.ecu(*operation.ecu)
            reconnect(tuner)
            if operation.again:
                tuner.value(operation.start)
            tuner.answers(1)


def program_dies(operation, bench, tries):
    for number in range(tries):
        with under_way(operation, bench, number) as (place, ecu, tuner):
            tuner.kill()
            again = place.tuner("--port", f"COM1={ecu.link}")
            again.all(PORT)
            until(lambda: opened(again), "the port opens again", again, 2)
            reconnect(again)
            again.quit()


def opened(tuner):
    tuner.value("click frmSarn2.btnConnect")
    return tuner.value("get frmSarn2.MSComm1.PortOpen")


def cells():
    for operation in OPERATIONS:
        yield Cell("unplug", f"korvane-ecu is killed, {operation.name}",
                   "the program goes on, shows an error within 5 s, answers, and connects again", (1, 30),
                   functools.partial(ecu_dies, operation))
        yield Cell("unplug", f"the program is killed, {operation.name}",
                   "an ordinary user connects again within 2 s, without a restart of korvane-ecu", (1, 30),
                   functools.partial(program_dies, operation))
