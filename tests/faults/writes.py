"""Write fault x writer: the place can't be written, or something else is there."""

import dataclasses
import functools
import os
import stat
import threading
from typing import Callable

from bench import Cell, Skipped, check, content, files_in
from kills import OLD, NEW, old_is_kept, torn
from writers import WRITERS, reference

FULL = threading.Lock()  # there is one small file system for all


@dataclasses.dataclass(frozen=True)
class Fault:
    """`spoil` runs between an old file, if there is to be one, and the write. What it returns is checked at the end."""

    name: str
    must: str
    spoil: Callable[[object, object], Callable[[], None] | None]  # of writer and place
    old: bool  # there is an old file
    limit: int | None = None  # of the size of files, in blocks of 512 bytes
    written: bool | None = None  # whether the write has to succeed; None: it may


def nothing(*_):
    return None


def seal(_, place):
    place.home.chmod(0o500)


def fill(_, place):
    """The disk has not one byte left."""
    with open(place.root / "filler", "wb", buffering=0) as filler:
        for size in (65536, 4096, 512, 1):
            try:
                while True:
                    filler.write(b"x" * size)
            except OSError:
                pass


def put_folder(writer, place):
    path = writer.path(place)
    path.mkdir()
    return lambda: check(path.is_dir() or writer.keeps_old, "the folder is gone")


def put_pipe(writer, place):
    path = writer.path(place)
    os.mkfifo(path)
    return lambda: check(stat.S_ISFIFO(path.lstat().st_mode) or writer.keeps_old, "the pipe is gone")


def put_link(writer, place):
    path = writer.path(place)
    real = place.root / "real"
    path.rename(real)
    path.symlink_to(real)

    def stays():
        check(writer.keeps_old or path.is_symlink(), "the link has been replaced by a file")
    return stays


def plant(writer, place):
    """Links at the names that a program might write through."""
    precious = place.root / "precious"
    precious.write_text("precious")
    path = writer.path(place)
    for end in (".part", ".tmp", ".new", ".bak", "~", ".korvane-000000000000", ".000000000000"):
        path.with_name(path.name + end).symlink_to(precious)

    def untouched():
        check(precious.read_text() == "precious", "a file has been written through a planted link")
        left = sum(name.is_symlink() for name in path.parent.iterdir())
        check(left == 7, f"{7 - left} planted links are gone")
    return untouched


FAULTS = (
    Fault("full disk, new", "no file, or the beginning of a tune file; the failure is reported",
          fill, False, written=False),
    Fault("full disk, replaced", "the old file, that of a tune under another name; the failure is reported", fill, True, written=False),
    Fault("size limit, new", "as with a full disk; the program is not ended by a signal", nothing, False, limit=0,
          written=False),
    Fault("size limit, replaced", "as with a full disk; the program is not ended by a signal", nothing, True, limit=0,
          written=False),
    Fault("read-only folder", "the old file and a report of the failure, or the new one", seal, True),
    Fault("folder in its place", "the folder stays; the failure is reported", put_folder, False),
    Fault("pipe in its place", "nothing waits, the pipe stays; the failure is reported", put_pipe, False),
    Fault("link in its place", "the link stays, and the new content is there", put_link, True, written=True),
    Fault("planted links", "nothing is written through them, the new file is complete", plant, True, written=True),
)


def parent_of(bench, fault):
    if fault.spoil is not fill:
        return None
    if bench.full is None:
        raise Skipped("only the superuser can mount a small file system; see size limit")
    return bench.full


def write_into(writer, fault, bench, _):
    with FULL if fault.spoil is fill else threading.Lock():
        with bench.place(parent_of(bench, fault)) as place:
            if fault.old:
                writer.whole(place, OLD)
            old = content(writer.path(place))
            process = writer.start(place, NEW, size_limit=fault.limit)
            still_so = fault.spoil(writer, place)
            before = files_in(place.root)
            writer.set_off(process, NEW)
            told = writer.finish(process, NEW)
            if still_so:
                still_so()
            judge(writer, fault, bench, place, old, told)
            rest = set(files_in(place.root)) - set(before) - {f"home/{writer.target}", "home/preferences.ini"}
            if writer.cut_when_full and not fault.written:
                rest = {name for name in rest if ".older-" not in name}
            check(writer.keeps_old or not rest, f"left behind: {sorted(rest)}")
            return f"told: {told.splitlines()[0][:60]}" if told else None


def judge(writer, fault, bench, place, old, told):
    new = reference(bench, writer, *([OLD] if fault.old else []), NEW)
    found = content(writer.path(place))
    written = found == new
    check(fault.written is not True or written, f"the new content is not there; told: {told}")
    if written:
        return
    check(told or not writer.tells, "nothing is written, and the failure is not reported")
    cut = writer.cut_when_full and found is not None and new.startswith(found)
    problem = None if cut else torn(writer, found, old, new)
    check(not problem or old_is_kept(place, old), f"torn: {problem}")
    check(not cut or old is None or old_is_kept(place, old), "the old file is gone")


def cells():
    for fault in FAULTS:
        for writer in WRITERS:
            yield Cell("write", f"{fault.name}, {writer.name}", fault.must, (1, 1),
                       functools.partial(write_into, writer, fault))
