"""What the two programs write, as data: how a write is set off, where it goes, and how its failure is told."""

import dataclasses
import json
import signal
from typing import Callable

from bench import Failed, check, content, files_in

VIRTUAL = ("--virtual-time", "--ecu", "type=11,drive=off")
CONNECT = ("choose frmSarn2.ComboPort 1", "click frmSarn2.btnConnect",
           "set frmMisc.TimerInitialGetData.Enabled false", "wait 2000")
MAPS = (*CONNECT, "click frmSarn2.btnKartat", "wait 1000")


@dataclasses.dataclass(frozen=True)
class Writer:
    """A kind of file. `mark` is a number from 1 to 9 that makes one content differ from another."""

    name: str
    prepare: tuple[str, ...]
    write: Callable[[object, int], list[str]]  # of target and mark: the commands of the console that write it
    target: str  # under the program's own folder
    keeps_old: bool = False  # an older file gets another name
    cut_when_full: bool = False  # a full disk leaves the beginning of the new content, and the old file another name
    tells: bool = True  # a failure is told

    def path(self, place):
        return place.home / self.target

    def start(self, place, mark, **more):
        """The program with all done but the write; then the write is set off and not waited for."""
        tuner = place.tuner(*VIRTUAL, **more)
        tuner.all(self.prepare)
        return tuner

    def set_off(self, tuner, mark):
        tuner.tell(*self.write(self.path(tuner.place), mark))

    def finish(self, tuner, mark):
        """What the write has told of a failure; None for nothing."""
        answers = [tuner.answer() for _ in self.write(self.path(tuner.place), mark)]
        wrong = [answer for answer in answers if answer.startswith("error")]
        check(not wrong, "unexpected answer: " + "; ".join(wrong) + tuner.story())
        if self is INI:
            return None if answers[-1] == "ok 0" else answers[-1]
        if self is PREFERENCES:
            status, errors = tuner.end()
            check(status == 0, f"ended with status {status}" + tuner.story())
            return "; ".join(errors) or None
        told = [text for text in tuner.messages() if not text.startswith(" EEPROM saved")]
        tuner.answers()
        return "; ".join(told) or None

    def whole(self, place, mark, **more):
        """One write from start to end, undisturbed or not. Returns what it has told of a failure."""
        tuner = self.start(place, mark, **more)
        self.set_off(tuner, mark)
        told = self.finish(tuner, mark)
        if tuner.alive():
            tuner.quit()
        return told


def commands(*texts):
    return lambda target, mark: [text.format(target=json.dumps(str(target)), mark=mark) for text in texts]


def ini_commands(target, mark):
    lines = [f"line {number} {'x' * mark * 9}" for number in range(400)]
    return [f'call WriteIniSection {json.dumps(target.name)} "[Own]" {json.dumps(lines)}']


TUNE = Writer("tune file", MAPS, commands("set FuelMapOut(0) {mark}", "file {target}", "click frmMaps.btnSave"),
              "car.txt", cut_when_full=True)
SETPOINTS = Writer("setpoint file", (*MAPS, "click frmMaps.chkInjAnal"),
                   commands("set clsInjAnalyser.Setpoint(0) 1{mark}", "file {target}",
                            "click frmMaps.btnSaveLambdaSetpoint"), "targets.lam")
IMAGE = Writer("EEPROM image", CONNECT, commands("call WriteEE 1000 {mark}", "click frmSarn2.btnBackup"),
               "EEPROM_12_02_21.txt", keeps_old=True)
INI = Writer("ini file", (), ini_commands, "own.ini")
CAR = Writer("car file", ("click frmSarn2.btnTuningHelp",),
             commands('set frmPowerCalc.txtPaino.Text "1{mark}50"', "file {target}", "click frmPowerCalc.Command2"),
             "own.par")
PREFERENCES = Writer("preferences", (),
                     commands("choose frmSarn2.ComboPort {mark}", "choose frmSarn2.ComboBaud {mark}", "quit"),
                     "preferences.ini", tells=False)


class EcuWriter:
    """korvane-ecu --save: the EEPROM goes out at the end."""

    name = "korvane-ecu --save"
    target = "saved.txt"
    keeps_old = cut_when_full = False
    tells = True

    def path(self, place):
        return place.home / self.target

    def start(self, place, mark, **more):
        given = place.root / f"given{mark}.txt"
        given.write_text(f"{mark}\n" * 3001)
        return place.ecu("--eeprom", given, "--save", self.path(place), **more)

    def set_off(self, ecu, _):
        ecu.kill(signal.SIGTERM)

    def finish(self, ecu, _):
        status, errors = ecu.end()
        if status == 0 and not errors:
            return None
        if status != 1 or len(errors) != 1:
            raise Failed(f"status {status}, on standard error: {errors}" + ecu.story())
        return errors[0]

    def whole(self, place, mark, **more):
        ecu = self.start(place, mark, **more)
        self.set_off(ecu, mark)
        return self.finish(ecu, mark)


WRITERS = (IMAGE, TUNE, SETPOINTS, CAR, INI, PREFERENCES, EcuWriter())


def reference(bench, writer, *marks):
    """The content after undisturbed writes of these marks, one after the other."""
    with bench.place() as place:
        for mark in marks:
            told = writer.whole(place, mark)
            check(told is None, f"an undisturbed write told: {told}")
        made = content(writer.path(place))
        check(made is not None, f"an undisturbed write made no {writer.target}; there is {files_in(place.home)}")
        return made
