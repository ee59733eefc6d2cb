"""Bad line x operation of the ignition boxes' windows: bytes are lost or change, or the ECU is away, in virtual time."""

import dataclasses
import functools

from bench import Cell, check

CONNECT = ("choose frmSarn2.ComboPort 0", "click frmSarn2.btnConnect",
           "set frmMisc.TimerInitialGetData.Enabled false", "wait 1500")
OPEN = ("click frmSarn2.btnKartat", "wait 4000")
MENDED = ("ecu lose 0", "ecu flip 0", "ecu add 0", "ecu silent 0", "ecu late 0", "ecu restart 0", "wait 5000")
CELL = "frmMaps_QV_ign.txtIgn(17).ToolTipText"  # the ECU's own number
TRIES = 5


@dataclasses.dataclass(frozen=True)
class Operation:
    """Done on the bad line, and again on a good one: then `proof` must have the value."""

    name: str
    type: int
    prepare: tuple[str, ...]
    steps: tuple[str, ...]
    check: tuple[str, ...]  # brings to `proof` what the ECU has
    proof: str
    value: str


def save(window, box, write, read, value):
    """A box is saved, changed, and read back."""
    text = f"set {window}.{box}.Text"
    return ((f'{text} "{value}"', f"click {window}.{write}", "wait 4000"),
            (f'{text} "0"', f"click {window}.{read}", "wait 500"), f"get {window}.{box}.Text", value)


DEBUG = (*CONNECT, "click frmSarn2.Command5")
START, STOP = "click frmIGNDebug.Command1", "click frmIGNDebug.Command2"
MAP = ("click frmMaps_QV_ign.btnReadIgn", "wait 500")

OPERATIONS = (
    Operation("map read of an ignition-only box", 30, (*CONNECT, *OPEN), MAP, (), f"get {CELL}", "87"),
    Operation("map send of an ignition-only box", 30, (*CONNECT, *OPEN),
              ("set IgnMapOut(17) 91", "click frmMaps_QV_ign.btnWriteIgn", "wait 3000"),
              ("set IgnMapOut(17) 0", *MAP), f"get {CELL}", "91"),
    Operation("its idle advance", 30, (*CONNECT, *OPEN),
              *save("frmMaps_QV_ign", "txtIdleAdv(2)", "btnSaveIdleAdv", "btnReadIdleAdv", "19")),
    Operation("its launch control", 30, (*CONNECT, *OPEN),
              *save("frmMaps_QV_ign", "txtLaunchControlLimit", "btnSaveLaunch", "btnReadLaunch", "4321")),
    Operation("limiter read", 112, (*CONNECT, *OPEN), ("click frmMaps_ign_limiter.btnReadData",), (),
              "get frmMaps_ign_limiter.txtrpmlimitHIGH.Text", "7200"),
    Operation("limiter send and restart", 112, (*CONNECT, *OPEN),
              *save("frmMaps_ign_limiter", "txtrpmlimitHIGH", "btnSendSettings", "btnReadData", "6789")),
    Operation("limiter launch control", 112, (*CONNECT, *OPEN),
              ('set frmMaps_ign_limiter.txtMaxAccel.Text "77"', "click frmMaps_ign_limiter.btnSaveLaunch"),
              ("set EEImage(974) 0", "click frmMaps_ign_limiter.btnReadLaunch"), "get EEImage(974)", "77"),
    # The words' good patterns can keep a receiver that has lost its place from finding it; live frames do not.
    Operation("debug poll", 30, DEBUG, (STOP, "wait 500", START, "wait 1000"), ('set frmIGNDebug.lblRPMticks.Caption "-"', "wait 100"),
              "get frmIGNDebug.lblRPMticks.Caption", "number"),
    Operation("end of the debug poll", 30, (*DEBUG, START, "wait 500"), (STOP, "wait 1000"),
              ('set frmSarn2.lblValue(0).Caption "-"', "wait 1000"), "get frmSarn2.lblValue(0).Caption", "number"),
)

# Set before the operation and taken back behind it.
FAULTS = {
    "lost bytes": ("ecu lose 0.05",),
    "flipped bits": ("ecu flip 0.05",),
    "stray bytes": ("ecu add 0.1",),
    "late answers": ("ecu late 400",),
    "a silent ECU": ("ecu silent 1",),
    "a restart of the ECU": ("ecu restart 12",),
    "a port that is closed": ("at 60 click frmSarn2.btnConnect",),
}


def proved(operation, answer):
    return str(answer).isdigit() if operation.value == "number" else str(answer) == operation.value


def connect_again(tuner):
    if tuner.value("get frmSarn2.MSComm1.PortOpen") is False:
        tuner.all(CONNECT)


def works(operation, tuner):
    """A receiver that has lost its place in the stream may need some frames to find it, so that an answer is missed."""
    for _ in range(TRIES):
        tuner.all((*operation.steps, *operation.check))
        if proved(operation, tuner.value(operation.proof)):
            return True
        tuner.value("wait 3000")
    return False


def disturbed(operation, fault, bench, tries):
    for seed in range(tries):
        with bench.place() as place:
            tuner = place.tuner("--virtual-time", "--ecu", f"type={operation.type},seed={seed}",
                                program=bench.sanitized)
            tuner.all((*operation.prepare, *FAULTS[fault], *operation.steps, *MENDED))
            connect_again(tuner)
            check(works(operation, tuner), f"{operation.proof} is not {operation.value}, seed {seed}" + tuner.story())
            tuner.quit()


def cells():
    for operation in OPERATIONS:
        for fault in FAULTS:
            yield Cell("bad line", f"{fault}, {operation.name}",
                       "the program and the window answer; the same on a good line does its work", (1, 30),
                       functools.partial(disturbed, operation, fault))
