"""What the rows of the fault matrix share: folders, the two programs as processes, and what a cell is."""

import ctypes
import dataclasses
import functools
import json
import os
import pathlib
import select
import shutil
import signal
import struct
import subprocess
import tempfile
import time
from typing import Callable

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
CHANNELS = (ROOT / "packaging" / "Settings_par.ini").read_bytes()
PATIENCE = 20.0  # seconds after which a program counts as hanging


class Failed(Exception):
    """What must hold in a cell did not."""


class Skipped(Exception):
    """The machine does not let this cell be tried."""


@dataclasses.dataclass(frozen=True)
class Cell:
    row: str
    name: str
    must: str  # what must hold
    tries: tuple[int, int]  # bounded, long
    run: Callable[["Bench", int], str | None]  # gets the number of tries; raises Failed; may return a remark
    alone: bool = False  # measures times, so nothing may run beside it

    def title(self):
        return f"{self.row}: {self.name}"


@dataclasses.dataclass
class Bench:
    """Where the programs are, and where a run may write."""

    bin: pathlib.Path
    work: pathlib.Path
    full: pathlib.Path | None  # a small file system of its own, if it could be mounted
    sanitized: pathlib.Path | None  # the folder of the programs that were built with the sanitizers

    def place(self, parent=None):
        return Place(self, parent or self.work)


def check(holds, text):
    if not holds:
        raise Failed(text)


class Place:
    """A folder for one try, gone at its end: the program's own folder, one for temporary files, one for all else."""

    def __init__(self, bench, parent):
        self.bench = bench
        self.root = pathlib.Path(tempfile.mkdtemp(prefix="try.", dir=parent))
        self.home = self.root / "home"
        self.tmp = self.root / "tmp"
        for folder in (self.home, self.tmp):
            folder.mkdir()
        (self.home / "Settings_par.ini").write_bytes(CHANNELS)  # without it the program begins with a message
        self.running = []

    def __enter__(self):
        return self

    def __exit__(self, *_):
        for process in self.running:
            process.kill()
        for folder, _, _ in os.walk(self.root):
            os.chmod(folder, 0o700)
        shutil.rmtree(self.root)

    def environment(self):
        return {"PATH": os.environ.get("PATH", ""), "LANG": "C.UTF-8", "HOME": str(self.root), "TMPDIR": str(self.tmp),
                "XDG_RUNTIME_DIR": str(self.root), "XDG_CONFIG_HOME": str(self.root), "QT_QPA_PLATFORM": "offscreen"}

    def tuner(self, *options, **more):
        return Tuner(self, *options, **more)

    def ecu(self, *options, **more):
        return Ecu(self, *options, **more)


class Process:
    """One of the programs, with its standard error read in the background by the system's pipe."""

    def __init__(self, place, command, size_limit=None, stdout=subprocess.PIPE, stdin=subprocess.PIPE, shell=None):
        self.place = place
        self.said = []  # for the report of a failure
        self.buffer = b""
        self.command = [str(word) for word in command]
        if size_limit is not None:
            shell = f"ulimit -f {size_limit}; exec \"$@\""
        wrapped = ["sh", "-c", shell, "sh", *self.command] if shell else self.command
        self.popen = subprocess.Popen(wrapped, stdin=stdin, stdout=stdout, stderr=subprocess.PIPE, cwd=place.root,
                                      env=place.environment(), close_fds=True)
        place.running.append(self)

    @property
    def pid(self):
        return self.popen.pid

    def alive(self):
        return self.popen.poll() is None

    def kill(self, how=signal.SIGKILL):
        if self.alive():
            self.popen.send_signal(how)
            if how == signal.SIGKILL:
                self.popen.wait()

    def line(self, timeout=PATIENCE):
        """The next line of standard output; None at its end. Fails when none comes in time."""
        end = time.monotonic() + timeout
        while b"\n" not in self.buffer:
            ready, _, _ = select.select([self.popen.stdout], [], [], max(end - time.monotonic(), 0))
            if not ready:
                raise Failed(f"no answer within {timeout:g} s" + self.story())
            block = os.read(self.popen.stdout.fileno(), 65536)
            if not block:
                return None
            self.buffer += block
        line, self.buffer = self.buffer.split(b"\n", 1)
        return line.decode("utf-8", "replace")

    def end(self, timeout=PATIENCE):
        """The exit status, and the lines on standard error."""
        try:
            if self.popen.stdin and not self.popen.stdin.closed:
                self.popen.stdin.close()
        except BrokenPipeError:
            pass
        end = time.monotonic() + timeout
        while self.alive():
            check(time.monotonic() < end, f"did not end within {timeout:g} s" + self.story())
            time.sleep(0.005)
        return self.popen.returncode, self.errors()

    def errors(self):
        return self.popen.stderr.read().decode("utf-8", "replace").splitlines()

    def memory(self, what="VmRSS"):
        """In megabytes."""
        for line in pathlib.Path(f"/proc/{self.pid}/status").read_text().splitlines():
            if line.startswith(what + ":"):
                return int(line.split()[1]) / 1024
        return 0

    def story(self):
        """How it was started and what was said last, for a report."""
        lines = [" ".join(self.command), *self.said[-24:]]
        names = ((str(self.place.root), "$PLACE"), (str(self.place.bench.bin), "$BIN"))
        return "".join("\n    " + functools.reduce(lambda text, name: text.replace(*name), names, line)[:200]
                       for line in lines)


class Tuner(Process):
    """korvane-tuner without a display, answering on its console."""

    def __init__(self, place, *options, program=None, **more):
        super().__init__(place, [(program or place.bench.bin) / "korvane-tuner", "--headless", "--folder", place.home,
                                 *options], **more)

    def tell(self, *lines):
        self.said += lines
        try:
            self.popen.stdin.write("".join(line + "\n" for line in lines).encode())
            self.popen.stdin.flush()
        except BrokenPipeError:
            raise self.dead()

    def dead(self):
        status = self.popen.wait()
        return Failed(f"the program ended with status {status}: {self.errors()[:4]}" + self.story())

    def answer(self, timeout=PATIENCE):
        line = self.line(timeout)
        if line is None:
            raise self.dead()
        self.said.append("-> " + line)
        return line

    def ask(self, line, timeout=PATIENCE):
        self.tell(line)
        return self.answer(timeout)

    def value(self, line, timeout=PATIENCE):
        """The value of an answer that must be "ok"; None where it has none."""
        answer = self.ask(line, timeout)
        check(answer.startswith("ok"), "unexpected answer: " + answer + self.story())
        return json.loads(answer[3:]) if answer[3:] else None

    def all(self, lines):
        for line in lines:
            self.value(line)

    def answers(self, timeout=5):
        return self.value("now", timeout)

    def messages(self):
        return [message["text"] for message in self.value("messages")]

    def quit(self):
        """Ends it as a user does; it must have nothing to complain of but one line."""
        self.value("quit")
        status, errors = self.end()
        check(status == 0, f"ended with status {status}: {errors}" + self.story())
        return errors


class Ecu(Process):
    """korvane-ecu, whose terminal is there when this object is."""

    def __init__(self, place, *options, **more):
        self.link = place.root / "ecu"
        super().__init__(place, [place.bench.bin / "korvane-ecu", "--pty", self.link, *options], **more)
        self.path = self.line() if more.get("stdout", subprocess.PIPE) == subprocess.PIPE else None


class FolderEvents:
    """What happens to the files of a folder, event by event."""

    WANTED = 0x2 | 0x8 | 0x40 | 0x80 | 0x100 | 0x4  # modify, close after write, moves, create, attributes

    def __init__(self, *folders):
        libc = ctypes.CDLL(None, use_errno=True)
        self.file = libc.inotify_init1(os.O_NONBLOCK | os.O_CLOEXEC)
        for folder in folders:
            libc.inotify_add_watch(self.file, os.fsencode(folder), self.WANTED)

    def close(self):
        os.close(self.file)

    def wait(self, count, begins, process):
        """Until that many events of files whose names begin so, or until no more come. How many there were."""
        seen = 0
        end = time.monotonic() + PATIENCE
        while seen < count and time.monotonic() < end:
            ready, _, _ = select.select([self.file], [], [], 0.1)
            if not ready and (seen or not process.alive()):
                return seen
            if ready:
                seen += sum(name.startswith(begins) for name in self.names())
        return seen

    def names(self):
        events = os.read(self.file, 65536)
        while events:
            length = struct.unpack_from("iIII", events)[3]
            yield os.fsdecode(events[16:16 + length].rstrip(b"\0"))
            events = events[16 + length:]


def content(path):
    """The bytes of a regular file, None where there is none."""
    return path.read_bytes() if path.is_file() else None


def files_in(folder):
    return sorted(str(path.relative_to(folder)) for path in folder.rglob("*"))
