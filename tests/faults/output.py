"""Standard output, input and errors of both programs: closed, full, or without a reader."""

import dataclasses
import functools
import os
import signal

from bench import Cell, check
from writers import VIRTUAL



@dataclasses.dataclass(frozen=True)
class Case:
    name: str
    must: str
    shell: str | None  # what sh does to the descriptors; None: standard output has lost its reader
    status: int
    lines: int | None  # on standard error; None where it is closed


REFUSED_TUNER = "the commands are carried out, one line on standard error says so, and the status is 1"
REFUSED_ECU = "one line on standard error says so, the link is gone, and the status is 1"
TUNER = (
    Case("standard output full", REFUSED_TUNER, 'exec "$@" >/dev/full', 1, 1),
    Case("standard output closed", REFUSED_TUNER, 'exec "$@" >&-', 1, 1),
    Case("standard output without a reader", REFUSED_TUNER, None, 1, 1),
    Case("standard error closed", "it makes no difference", 'exec "$@" 2>&-', 0, None),
    Case("standard error full", "it makes no difference", 'exec "$@" 2>/dev/full', 0, None),
    Case("standard input closed", "it ends at once with status 0", 'exec "$@" <&-', 0, 0),
    Case("all three closed", "it ends at once", 'exec "$@" <&- >&- 2>&-', 0, None),
)
ECU = (
    Case("standard output full", REFUSED_ECU, 'exec "$@" >/dev/full', 1, 1),
    Case("standard output closed", REFUSED_ECU, 'exec "$@" >&-', 1, 1),
    Case("standard output without a reader", REFUSED_ECU, None, 1, 1),
    Case("all three closed", "the link is gone, and the status is 1", 'exec "$@" <&- >&- 2>&-', 1, None),
    Case("standard error closed", "it serves, and ends with status 0", 'exec "$@" 2>&-', 0, None),
    Case("standard input closed", "it serves, and ends with status 0", 'exec "$@" <&-', 0, 0),
)


def broken_pipe():
    read, write = os.pipe()
    os.close(read)
    return write


def started(start, case):
    if case.shell is None:
        write = broken_pipe()
        process = start(stdout=write)
        os.close(write)
        return process
    return start(shell=case.shell)


def judge(process, case):
    status, errors = process.end(10)
    check(status == case.status,
          f"status {status}, wanted {case.status}; on standard error: {errors[:3]}" + process.story())
    check(case.lines is None or len(errors) == case.lines, f"on standard error: {errors[:5]}" + process.story())


def tuner_case(case, bench, _):
    with bench.place() as place:
        trace = place.root / "trace"
        tuner = started(lambda **more: place.tuner(*VIRTUAL, "--trace", trace, **more), case)
        has_input = "<&-" not in (case.shell or "")
        if has_input:
            tuner.tell("now", *["get frmSarn2.Caption"] * 50, "choose frmSarn2.ComboPort 4", "quit")
        judge(tuner, case)
        check("ok" not in trace.read_text(), "replies stand in the trace" + tuner.story())
        preferences = place.home / "preferences.ini"
        check(not has_input or "Port=4" in preferences.read_text(), "the commands were not carried out" + tuner.story())


def ecu_case(case, bench, _):
    with bench.place() as place:
        link = place.root / "ecu"
        serves = case.status == 0
        more = {} if serves else {"stdout": -3}
        ecu = started(lambda **given: place.ecu(**{**more, **given}), case)
        if serves:
            check(ecu.path and ecu.path.startswith("/dev/"), f"says {ecu.path}" + ecu.story())
            ecu.kill(signal.SIGTERM)
        judge(ecu, case)
        check(not link.is_symlink(), "the link is still there")


def cells():
    for case in TUNER:
        yield Cell("output", f"korvane-tuner, {case.name}", case.must, (1, 1), functools.partial(tuner_case, case))
    for case in ECU:
        yield Cell("output", f"korvane-ecu, {case.name}", case.must, (1, 1), functools.partial(ecu_case, case))
