"""Extreme values on every name that the console can set, with frames, time and clicks behind them."""

import functools
import itertools
import json
import re

from bench import Cell, Failed, ROOT, check
from flood import frame

VALUES = [json.dumps(value) for value in (
    -1, 0, 1, -2**31, 2**31 - 1, -2**63, 2**63 - 1, 1e308, -1e308, 5e-324, "", "-99999999999999999999", "x" * 100_000,
    None, True, False, [], {})]
BOUNDED = 3  # runs, each with a value for each name
AT_ONCE = 40  # names between two steps of time

# These end the program, as they should.
ENDINGS = {"frmSarn2.TimerExit.Enabled", "frmSarn2.TimerExit.Interval"}

PREPARE = ("choose frmSarn2.ComboPort 0", "click frmSarn2.btnConnect", "set frmMisc.TimerInitialGetData.Enabled false",
           "receive 7905FFFF0D3A{type:02X}86", "wait 400", "click frmSarn2.btnKartat", "wait 500",
           "click {maps}.btnInjScale", "click {maps}.btnShow3D", "click frmSarn2.btnAsetukset", "click frmSarn2.Command5",
           "click frmSarn2.Command6", "click frmSarn2.Command8", "click frmSarn2.btnTuningHelp")
PAYLOADS = (("R", b"\x09\x92" + bytes(17)), ("R", b"\xFF" * 19), ("f", b"\xFF" * 160), ("a", bytes(160)),
            ("m", b"\xFF" * 9), ("e", b"\x80" * 19), ("l", b"\xFF" * 20), ("S", b"\xAA" * 8), ("!", b""),
            ("F", b"\x01"), ("T", b"\xFF\xFF\x01\x02"), ("U", b"\xFF\xFF\xB8\x0B"), ("y", bytes.fromhex("ffff0d3a0b")))
FRAMES = tuple("receive " + frame(command, payload).hex() for command, payload in PAYLOADS)

TYPES = {"frmSarn2": (11, "frmMaps"), "frmMisc": (11, "frmMaps"), "frm3Dmap": (11, "frmMaps"),
         "frmInjScale": (11, "frmMaps"), "frmMaps": (11, "frmMaps"), "frmMaps_Large": (14, "frmMaps_Large"),
         "frmMaps_QV_ign": (30, "frmMaps_QV_ign"), "frmMaps_ign_limiter": (112, "frmMaps_ign_limiter"),
         "frmIGNDebug": (30, "frmMaps_QV_ign"), "frmBigText": (11, "frmMaps"), "frmMeter": (11, "frmMaps"),
         "frmPowerCalc": (11, "frmMaps")}
NO_CLICK = ("btnBackup", "btnUploadEEPROM", "btnConnect")  # minutes of waiting each, or the end of the connection


def property_names():
    """All that controls and windows have, as the tables in the source name them."""
    found = set()
    for path in sorted((ROOT / "src" / "controls").glob("*.cpp")):
        text = path.read_text(encoding="utf-8")
        found |= set(re.findall(r'(?:\bp|\blimitedP)roperty<[^>]*>\("(\w+)"', text))
        found |= set(re.findall(r'PropertyInfo\{\s*"(\w+)"', text))
    check(len(found) > 30, f"only {len(found)} properties found in src/controls")
    return sorted(found)


def shared_words():
    """What could be a name in the sources of the console and of the table of parameters, with brackets filled in."""
    texts = [path.read_text(encoding="utf-8") for path in sorted((ROOT / "src" / "console").glob("*Names.cpp"))]
    texts += [path.read_text(encoding="utf-8") for path in sorted((ROOT / "src" / "core").glob("*.cpp"))]
    words = set(re.findall(r'"([A-Za-z][\w.]*(?:\(\))?(?:\.\w+)?)"', "\n".join(texts)))
    words |= {"clsInjAnalyser." + word for word in words}
    return sorted(filled for word in words for filled in with_indices(word))


def with_indices(word):
    if "()" not in word:
        return [word]
    return [word.replace("()", f"({index})") for index in ("0", "17", "159", "0,3")]


# Read before the rights to do so are dropped.
PROPERTIES = property_names()
SHARED = shared_words()


def batch(tuner, lines):
    """Many commands at once, and their answers."""
    answers = []
    for start in range(0, len(lines), 200):
        part = lines[start:start + 200]
        tuner.tell(*part)
        answers += [tuner.answer(60) for _ in part]
    return answers


def readable(tuner, names):
    answers = batch(tuner, ["get " + name for name in names])
    return [name for name, answer in zip(names, answers) if answer.startswith("ok")]


def names_of(window, tuner):
    """Each property of each control; of an array the first and the last."""
    controls = [window]
    for form in tuner.value(f"controls {window}"):
        name, _, span = form.partition("(")
        ends = sorted({int(end) for end in span.rstrip(")").split("..")}) if span else [None]
        controls += [f"{window}.{name}" if end is None else f"{window}.{name}({end})" for end in ends]
    return [f"{control}.{name}" for control in controls for name in PROPERTIES]


def begin(place, bench, window):
    kind, maps = TYPES.get(window, (11, "frmMaps"))
    tuner = place.tuner("--virtual-time", "--ecu", "none", program=bench.sanitized or bench.bin)
    batch(tuner, [line.format(type=kind, maps=maps) for line in PREPARE])
    return tuner


def shake(tuner, clickable):
    """Frames, time and clicks. Whether each is accepted does not matter."""
    batch(tuner, [*FRAMES, "wait 300", *(f"click {name}" for name in clickable), "wait 300", *FRAMES, "wait 1000",
                  "messages", "dialogs"])


def clickable_in(tuner, window):
    if window not in TYPES:
        return []
    forms = tuner.value(f"controls {window}")
    return [f"{window}.{form.split('(')[0]}" + ("(0)" if "(" in form else "") for form in forms
            if form.startswith(("btn", "Command", "chk", "opt", "Check")) and form not in NO_CLICK]


def rounds(names, tries):
    """What is assigned in one run of the program: a value for each name, the values taking turns; in the long form each
    value to all names of one kind as well, where the rest of the program is as usual."""
    for turn in range(tries):
        yield [(name, VALUES[(at * 5 + turn * 7) % len(VALUES)]) for at, name in enumerate(names)]
    if tries < len(VALUES):
        return
    for kind, value in itertools.product(sorted({kind_of(name) for name in names}), VALUES):
        yield [(name, value) for name in names if kind_of(name) == kind]


def kind_of(name):
    return name.rpartition(".")[2].partition("(")[0]


def torment(bench, window, assignments, step):
    """Assigns, a step of time after every few. Returns the last commands if the program does not live through it."""
    with bench.place() as place:
        tuner = begin(place, bench, window)
        try:
            clickable = clickable_in(tuner, window)
            for start in range(0, len(assignments), step):
                batch(tuner, [f"set {name} {value}" for name, value in assignments[start:start + step]] + ["wait 50"])
            shake(tuner, clickable)
            tuner.answers()
            status, errors = tuner.end(60)
            check(status == 0, f"status {status}: {errors[:20]}" + tuner.story())
        except Failed as failure:
            return failure
    return None


def narrowed(bench, window, assignments):
    """As few of the assignments as halving finds that the program does not live through."""
    while len(assignments) > 1:
        middle = len(assignments) // 2
        halves = (assignments[:middle], assignments[middle:])
        worse = next((half for half in halves if torment(bench, window, half, AT_ONCE)), None)
        if worse is None:
            break
        assignments = worse
    return assignments


def known_names(bench, window, names):
    with bench.place() as place:
        tuner = begin(place, bench, window)
        return readable(tuner, names(tuner))


def extremes(window, names, bench, tries):
    known = [name for name in known_names(bench, window, names) if name not in ENDINGS]
    check(known, "no names found")
    count = 0
    for assignments in rounds(known, tries):
        failure = torment(bench, window, assignments, AT_ONCE)
        if failure:
            few = narrowed(bench, window, assignments)
            sets = "; ".join(f"set {name} {value[:40]}" for name, value in few[:9])
            raise Failed(f"{len(few)} assignments are enough: {sets}\n    {torment(bench, window, few, 1) or failure}")
        count += len(assignments)
    return f"{len(known)} names, {count} values" + (", under the sanitizers" if bench.sanitized else "")


def cells():
    must = "the program survives frames, timers and clicks, and answers"
    for window in TYPES:
        yield Cell("extremes", f"controls of {window}", must, (BOUNDED, len(VALUES)),
                   functools.partial(extremes, window, functools.partial(names_of, window)))
    yield Cell("extremes", "shared tables and values", must, (BOUNDED, len(VALUES)),
               functools.partial(extremes, "shared", lambda _: SHARED))
