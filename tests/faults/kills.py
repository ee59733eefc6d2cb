"""Kill x file: SIGKILL at many moments of a write."""

import functools
import random
import time

from bench import Cell, FolderEvents, check, content, files_in
from writers import PREFERENCES, WRITERS, reference

OLD, NEW = 1, 2


def torn(writer, found, old, new):
    """What is wrong with what a kill has left; None for nothing."""
    if found == old or found == new:
        return None
    if found is None:
        return "the file is gone"
    if writer is PREFERENCES and set(found.splitlines()) <= set((old or b"").splitlines()) | set(new.splitlines()):
        return None  # several values are written one after the other, each with a complete file
    return f"{len(found)} bytes that are neither the old content nor the new one"


def kill_once(bench, writer, contents, existing, moment, delay):
    """Kills at the event of that number and a moment more; then writes undisturbed."""
    with bench.place() as place:
        if existing:
            writer.whole(place, OLD)
        process = writer.start(place, NEW)
        before = files_in(place.root)
        events = FolderEvents(place.home, place.tmp)
        writer.set_off(process, NEW)
        seen = events.wait(moment, writer.target[:6], process)
        time.sleep(delay)
        process.kill()
        events.close()
        old = contents[OLD] if existing else None
        problem = torn(writer, content(writer.path(place)), old, contents[NEW])
        left = sorted(set(files_in(place.root)) - set(before))
        check(not problem or writer.keeps_old and old_is_kept(place, old),
              f"killed at event {seen}: {problem}; new files: {left}" + process.story())
        writer.whole(place, NEW)
        after_next_write(place, writer, contents, before, seen)


def old_is_kept(place, old):
    return any(content(path) == old for path in place.home.iterdir())


def after_next_write(place, writer, contents, before, seen):
    found = content(writer.path(place))
    check(found == contents[NEW], f"killed at event {seen}: the next write is not whole")
    expected = set(before) | {f"home/{writer.target}", "home/preferences.ini"}
    left = [name for name in files_in(place.root) if name not in expected and not kept(writer, name)]
    check(not left, f"killed at event {seen}: after the next write there still is {left}")


def kept(writer, name):
    # A restore point is there to stay; a temporary file of one has another end.
    if name == "home/restore" or name.startswith("home/restore/") and name.endswith(".point"):
        return True
    return writer.keeps_old and name.endswith(".txt") and name.startswith(f"home/{writer.target[:6]}")


def contents_of(bench, writer, existing):
    """By mark. What is written may depend on what was there."""
    if not existing:
        return {OLD: None, NEW: reference(bench, writer, NEW)}
    return {OLD: reference(bench, writer, OLD), NEW: reference(bench, writer, OLD, NEW)}


def kill_often(writer, existing, bench, tries):
    chance = random.Random(1)
    contents = contents_of(bench, writer, existing)
    for number in range(tries):
        moment = 1 + number % 6
        delay = chance.random() * 0.0005 if number >= 6 else 0
        kill_once(bench, writer, contents, existing, moment, delay)


def cells():
    for writer in WRITERS:
        for existing in (False, True):
            left = "the old file" if existing else "no file"
            kept = "; the old one under another name" if writer.keeps_old and existing else ""
            must = f"{left} or the whole new one{kept}; no temporary files after the next write"
            yield Cell("kill", f"{writer.name}, {'replaced' if existing else 'new'}", must, (6, 200),
                       functools.partial(kill_often, writer, existing))
