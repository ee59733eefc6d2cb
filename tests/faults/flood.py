"""Flood x frame x rate: the other end of the line sends without end, and nothing has been asked for."""

import dataclasses
import functools
import os
import pty
import random
import select
import time
import tty

from bench import Cell, check

RATES = (5_700, 23_000, None)  # bytes a second: 57600 baud, 230400 baud, as fast as the system takes them
NOW_WITHIN = {5_700: 1.0, 23_000: 1.0, None: 5.0}  # seconds
RECOVERS_WITHIN = 5.0
MOST_GROWTH = 64  # MB
SECONDS = (1.5, 20)  # bounded, long
LONGEST_ANSWER = 15.0  # then the measuring is given up
BLOCK = 1 << 16


def frame(command, payload=b""):
    code = command if isinstance(command, int) else ord(command)
    return bytes([code, len(payload)]) + payload + bytes([0xFF - code])


def live(rpm):
    return frame("R", rpm.to_bytes(2, "big") + bytes.fromhex("844b8a801e3f590223202801020304050607")[:17])


FRAMES = {
    "random bytes": None,
    "live frames 'R'": live(2450),
    "fuel maps 'f'": frame("f", bytes(range(160))),
    "misc blocks 'm'": frame("m", bytes.fromhex("001c001d0300149406")),
    "settings blocks 'e'": frame("e", bytes(range(19))),
    "alarms '!'": frame("!"),
    "identities 'y'": frame("y", bytes.fromhex("ffff0d3a0b")),
    "refusals 'F'": frame("F", b"\0"),
    "debug words 'S'": frame("S", bytes.fromhex("5555f00a54552c01")),
}


def flood_of(kind):
    """64 KB of it, to be sent over and over."""
    chance = random.Random(1)
    if kind == "random bytes":
        return chance.randbytes(BLOCK)
    frames = [FRAMES[kind]] if kind in FRAMES else [each or chance.randbytes(9) for each in FRAMES.values()]
    block = b""
    while len(block) < BLOCK:
        block += chance.choice(frames)
    return block


class Line:
    """A pseudo-terminal whose far end is this script."""

    def __init__(self):
        self.master, self.slave = pty.openpty()
        tty.setraw(self.slave)
        os.set_blocking(self.master, False)
        self.path = os.ttyname(self.slave)

    def close(self):
        os.close(self.master)
        os.close(self.slave)

    def send(self, data):
        """As much as the system takes."""
        try:
            return os.write(self.master, data) if data else 0
        except BlockingIOError:
            return 0

    def drop_requests(self):
        try:
            os.read(self.master, BLOCK)
        except BlockingIOError:
            pass


class Pace:
    """What to send next of a block that goes round and round."""

    def __init__(self, block, rate):
        self.block = block
        self.rate = rate
        self.begin = time.monotonic()
        self.sent = 0

    def step(self, line):
        wanted = len(self.block)
        if self.rate:
            wanted = min(int((time.monotonic() - self.begin) * self.rate) - self.sent, wanted)
        at = self.sent % len(self.block)
        self.sent += line.send(self.block[at:at + max(wanted, 0)])


@dataclasses.dataclass
class Measured:
    worst: float = 0.0
    recovery: float = 0.0
    growth: float = 0.0
    sent: int = 0

    def __str__(self):
        return (f"{self.sent} bytes, worst answer {self.worst:.3f} s, recovered within {self.recovery:.2f} s, "
                f"grew {self.growth:.0f} MB")


def ask_during(tuner, line, pace, seconds, measured):
    """Asks for the time over and over; each answer must have come before the next question. True if all came."""
    end = time.monotonic() + seconds
    asked = None
    while time.monotonic() < end or asked:
        now = time.monotonic()
        if asked is None:
            tuner.tell("now")
            asked = now
        elif now - asked > LONGEST_ANSWER:
            measured.worst = LONGEST_ANSWER
            return False
        if now < end:
            pace.step(line)
        line.drop_requests()
        ready, _, _ = select.select([tuner.popen.stdout], [], [], 0.002)
        if ready:
            tuner.answer()
            measured.worst = max(measured.worst, time.monotonic() - asked)
            asked = None
    return True


def recovers(tuner, line, measured):
    """A new value shows. The line may have cut its last frame, so the new one is sent again and again."""
    begin = time.monotonic()
    while time.monotonic() - begin < RECOVERS_WITHIN:
        line.send(live(1234))
        line.drop_requests()
        shown = tuner.value("get frmSarn2.lblValue(0).Caption", LONGEST_ANSWER)
        measured.recovery = time.monotonic() - begin
        if shown == "1234" and measured.recovery <= RECOVERS_WITHIN:
            return True
        time.sleep(0.05)
    return False


def connect(place, line):
    tuner = place.tuner("--port", f"COM1={line.path}")
    tuner.all(("choose frmSarn2.ComboPort 0", "click frmSarn2.btnConnect",
               "set frmMisc.TimerInitialGetData.Enabled false"))
    line.send(FRAMES["identities 'y'"])
    # Maps, the misc block and the debug words want their window.
    tuner.all(("wait 400", "click frmSarn2.btnKartat", "wait 700", "click frmSarn2.Command5"))
    return tuner


def flood(kind, rate, bench, tries):
    seconds = SECONDS[0] if tries == 1 else SECONDS[1]
    line = Line()
    measured = Measured()
    try:
        with bench.place() as place:
            tuner = connect(place, line)
            before = tuner.memory()
            pace = Pace(flood_of(kind), rate)
            answered = ask_during(tuner, line, pace, seconds, measured)
            measured.sent = pace.sent
            measured.growth = tuner.memory("VmHWM") - before
            check(answered and measured.worst <= NOW_WITHIN[rate], f"too late: {measured}")
            check(recovers(tuner, line, measured), f"no new value shows: {measured}")
            check(measured.growth < MOST_GROWTH, f"grows: {measured}")
            return str(measured)
    finally:
        line.close()


def name_of(rate):
    return f"{rate / 1000:g} kB/s" if rate else "without a limit"


def cells():
    for kind in (*FRAMES, "all mixed"):
        for rate in RATES:
            yield Cell("flood", f"{kind}, {name_of(rate)}",
                       f"`now` is answered within {NOW_WITHIN[rate]:g} s; {RECOVERS_WITHIN:g} s after the end a new "
                       f"live value shows; memory grows less than {MOST_GROWTH} MB",
                       (1, 2), functools.partial(flood, kind, rate), alone=True)
