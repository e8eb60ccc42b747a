"""Interrupts, lost terminals, full disks and odd files: faults.py PROGRAM [SEED [NAME]].

CASES says what is done to the program and what must come of it. With a NAME only the cases whose
names begin so are tried.
"""

import dataclasses
import os
import random
import shutil
import signal
import subprocess
import sys
import time
from collections.abc import Callable

from terminal import (COMMENTS, DOWN, ENTER, F4, UP, Failure, Installation, Program, Skip,
                      attempt_all)

# What stands on the first line of the two messages.
UPDATED = b"Configuration for node <new> user <user> succe"
FAILED = b"Update of external node security configuration"


NO_DELETE = b"WLNSDeleteRec failed\n"


def no_update(error):
    return b"WLNSUpdateRec failed; rc=%d\n" % error


def add(node):
    return ENTER + node + DOWN + b"user" + ENTER + ENTER


def remove(node):
    return DOWN + DOWN + ENTER + node + DOWN + b"user" + ENTER + b"y" + UP + UP


def records(*nodes):
    return b"".join(b"-n=%b,user,E\n" % node for node in nodes)


ADD, REMOVE, NEW = add(b"new"), remove(b"new"), records(b"new")
OLD = COMMENTS + b"-n=old,user,W\n"
THOUSANDS = COMMENTS + records(*(b"node%d" % number for number in range(3_000)))
MANY = COMMENTS + records(*(b"node%d" % number for number in range(100_000)))

# Records come and go at the end of a long file; FILES is what it holds after each step.
KEYS = add(b"a") + add(b"b") + remove(b"a") + add(b"c") + remove(b"b") + remove(b"c")
FILES = tuple(THOUSANDS + records(*nodes) for nodes in
              ((), (b"a",), (b"a", b"b"), (b"b",), (b"b", b"c"), (b"c",)))

LONG = (b"#" * 10_000 + b"\n" + b" " * 10_000 + b"-n=x,y,D\n" + b"-n=" + b"m" * 10_000 + b",u,E\n" +
        b"-n=a,b,W" + b"." * 10_000 + b"-n=c,d,E\n")
ZEROS = b"-n=a,b,E\0-n=x,y,W\n-n=c\0,d,W\n\0-n=x,y,W\n\0\0\0" + OLD
CRLF = OLD.replace(b"\n", b"\r\n") + b"-n=a,b\r\n-n=c,d,\r\n\r\n"
SHORT = b"-n=a\n" * 2457  # three pages of 4096 bytes, which grow when they are rewritten


def fill_disk(place):
    """Leaves of a file system of 16 KB the pages that the file itself takes."""
    if subprocess.run(["mount", "-t", "tmpfs", "-o", "size=16k", "tmpfs", place.directory],
                      stderr=subprocess.DEVNULL, check=False).returncode != 0:
        raise Skip("no right to mount a small file system")
    place.file.write_bytes(SHORT)
    (place.directory / "full").write_bytes(b"x" * 4096)


def put_file_for_directory(place):
    place.directory.rmdir()
    place.directory.write_text("a file\n")


def at_random(end, start=b"\x1b"):
    """Lets `end` hit the program at a random moment after `start` is seen, while KEYS flow."""
    def action(session, rng):
        session.until(lambda: start in session.output, "does not start")
        session.send(KEYS)
        written = rng.randint(1, 16_000)
        session.until(lambda: len(session.output) > written or session.asleep(), "stands still")
        time.sleep(rng.uniform(0, 0.005))
        end(session, rng)
    return action


def while_writing(end):
    """Lets `end` hit the program between the opening of the file and the writing of its text."""
    def action(session, rng):
        session.settle()
        session.send(ADD)
        session.until(lambda: session.file.stat().st_size == 0, "does not write")
        end(session, rng)
    return action


def interrupt(session, rng):
    if rng.random() < 0.5:
        os.kill(session.pid, signal.SIGINT)
    else:
        session.send(b"\x03")


def terminate(session, _rng):
    os.kill(session.pid, signal.SIGTERM)


def quit_key(session, _rng):
    session.send(b"\x1c")


def hang_up(session, _rng):
    session.hang_up()


def hang_up_unnoticed(session, _rng):
    session.settle()
    session.hang_up()
    session.wait()
    took = session.usage.ru_utime + session.usage.ru_stime
    if took > 0.5:  # most of them spent in looking for keys
        raise Failure(f"needs {took:.3f} seconds of the processor to end")


@dataclasses.dataclass
class Case:
    name: str
    before: bytes | None = OLD  # the file before; None: there is none
    prepare: Callable | None = None  # does the rest to the installation
    start: dict = dataclasses.field(default_factory=dict)  # how the program is started
    fault: str = ""  # what strace makes of system calls on the file, or on the one of `at`
    at: str = "file"
    keys: bytes = b""  # typed, and acted on before anything else
    action: Callable = interrupt  # what then happens to the program
    status: int = 0
    seen: bytes = b""  # on the screen, after the keys
    trace: bytes | None = None  # in the trace; b"": it is empty; None: there is none
    after: bytes | tuple | None = OLD  # the file afterwards, or all that it may be
    times: int = 1


SCREENS = {"menu": b"", "form": ENTER + b"ab", "list": DOWN + ENTER + F4, "message": ENTER + ENTER}

CASES = [
    Case("interrupt", THOUSANDS, action=at_random(interrupt), after=FILES, times=500),
    Case("terminate", THOUSANDS, action=at_random(terminate), status=-signal.SIGTERM, after=FILES,
         times=20),
    Case("quit key", THOUSANDS, action=at_random(quit_key), status=-signal.SIGQUIT, after=FILES,
         times=20),
    Case("hang up", THOUSANDS, action=at_random(hang_up), status=-signal.SIGHUP, after=FILES,
         times=20),
    *(Case(f"{end.__name__} while writing", fault="ftruncate:delay_exit=200000",
           action=while_writing(end), status=status, after=OLD + NEW)
      for end, status in ((interrupt, 0), (terminate, -signal.SIGTERM), (hang_up, -signal.SIGHUP))),
    Case("all keys", THOUSANDS, keys=KEYS, after=THOUSANDS),
    *(Case(f"hang up unnoticed, {screen}", start={"ignored": [signal.SIGHUP]}, keys=keys,
           action=hang_up_unnoticed) for screen, keys in SCREENS.items()),
    Case("no input", start={"no_input": True}, action=lambda *_: None),

    Case("full disk", SHORT, prepare=fill_disk, keys=ADD, seen=FAILED, trace=no_update(28),
         after=SHORT),
    Case("quota, remove", OLD + NEW, fault="fallocate:error=EDQUOT", keys=REMOVE, trace=NO_DELETE,
         after=OLD + NEW),
    Case("no room can be set aside", fault="fallocate:error=EOPNOTSUPP", keys=ADD, seen=UPDATED,
         after=OLD + NEW),
    Case("file cannot be cut", fault="ftruncate:error=EIO", keys=ADD, seen=FAILED,
         trace=no_update(5)),
    Case("write error at once", fault="write:error=ENOSPC", keys=ADD, seen=UPDATED, after=b""),
    Case("short write", THOUSANDS, fault="write:retval=9999:when=1", keys=ADD, seen=UPDATED,
         after=(THOUSANDS + NEW)[9999:]),  # the one that is said to have been short writes nothing
    Case("disk that fills while writing", SHORT, prepare=fill_disk,
         fault="fallocate:error=EOPNOTSUPP", keys=ADD, seen=UPDATED,
         after=(COMMENTS + SHORT.replace(b"\n", b",,\n"))[:12_288]),
    Case("write error, remove", OLD + NEW, fault="write:error=ENOSPC", keys=REMOVE, after=b""),
    Case("full disk, no file", None, fault="openat:error=ENOSPC:when=2+", keys=ADD, seen=FAILED,
         trace=no_update(28), after=None),
    Case("read-only disk", fault="openat:error=EROFS:when=2+", keys=ADD, seen=FAILED,
         trace=no_update(30)),
    Case("read-only disk, remove", OLD + NEW, fault="openat:error=EROFS:when=3+", keys=REMOVE,
         trace=NO_DELETE, after=OLD + NEW),
    Case("unreadable file", fault="openat:error=EACCES:when=1", keys=ADD, seen=UPDATED,
         after=COMMENTS + NEW),
    *(Case(f"shortage, {error}", fault=f"openat:error={error}:when=1", keys=ADD, seen=FAILED,
           trace=no_update(number))
      for error, number in (("EMFILE", 24), ("ENFILE", 23), ("ENOMEM", 12), ("EINTR", 4),
                            ("EIO", 5), ("ESTALE", 116))),
    Case("shortage, remove", OLD + NEW, fault="openat:error=EMFILE:when=2", keys=REMOVE,
         trace=NO_DELETE, after=OLD + NEW),
    Case("shortage, list", fault="openat:error=EMFILE", keys=DOWN + ENTER + F4),
    Case("read error", fault="read:error=EIO", keys=ADD, seen=FAILED, trace=no_update(5)),
    Case("full disk for the trace", fault="write:error=ENOSPC", at="trace", keys=ADD, seen=UPDATED,
         trace=b"", after=OLD + NEW),
    Case("read-only disk for the trace", fault="openat:error=EROFS", at="trace", keys=ADD,
         seen=UPDATED, after=OLD + NEW),

    Case("directory is a file", None, prepare=put_file_for_directory, keys=ADD, seen=FAILED,
         trace=no_update(20), after=None),
    Case("no directory", None, prepare=lambda place: place.directory.rmdir(), keys=ADD,
         seen=UPDATED, after=COMMENTS + NEW),
    Case("no directory above", None, prepare=lambda place: shutil.rmtree(place.root / "opr"),
         keys=ADD, seen=FAILED, trace=no_update(2), after=None),
    Case("file is a directory", None, prepare=lambda place: place.file.mkdir(), keys=ADD,
         seen=FAILED, trace=no_update(21), after=None),

    Case("100,000 records, add", MANY, keys=ADD, seen=UPDATED, after=MANY + NEW),
    Case("100,000 records, remove", MANY + NEW, keys=REMOVE, after=MANY),
    Case("100,000 records, list", MANY, keys=DOWN + ENTER + F4, seen=b"[MORE...1014]", after=MANY),
    Case("long lines", LONG, keys=ADD, seen=UPDATED, after=COMMENTS + b"-n=x,y,D\n-n=" + b"m" * 64 +
         b",,\n-n=a,b,W\n" + NEW),
    Case("zero bytes", ZEROS, keys=ADD, seen=UPDATED,
         after=COMMENTS + b"-n=a,b,E\n-n=c,,\n-n=old,user,W\n" + NEW),
    Case("CR LF", CRLF, keys=ADD, seen=UPDATED, after=OLD + b"-n=a,b,\n-n=c,d,\n" + NEW),
]


def content(file):
    try:
        return file.read_bytes()
    except OSError:
        return None


def run(program, name, seed, number):
    case = next(case for case in CASES if case.name == name)
    rng = random.Random(f"{seed} {name} {number}")
    with Installation() as place:
        if case.before is not None:
            place.file.write_bytes(case.before)
        if case.prepare is not None:
            case.prepare(place)
        prefix, options = (), ()
        if case.fault:
            prefix = ("strace", "-D", "-o", place.root / "calls", "-P", getattr(place, case.at),
                      "-e", f"inject={case.fault}")
        if case.trace is not None or case.at == "trace":
            options = ("-d", "-f", place.trace)
        with Program(program, place, options=options, prefix=prefix, **case.start) as session:
            if case.keys:
                session.settle()
                session.send(case.keys)
                session.settle()
                if case.seen not in session.output:
                    raise Failure(f"{case.seen} is not on the screen: {session.output[-400:]}")
            case.action(session, rng)
            session.expect_end(case.status)
            if case.status == 0 and session.master is not None:
                session.expect_clear()
        trace = content(place.trace)
        if trace != case.trace and not (trace and case.trace and case.trace in trace):
            raise Failure(f"{case.trace} is not in the trace: {trace}")
        allowed = case.after if isinstance(case.after, tuple) else (case.after,)
        if content(place.file) not in allowed:
            raise Failure(f"the file is not as expected but: {content(place.file)}")


def main(program, seed="", start=""):
    seed = seed or str(random.randrange(10**9))
    print(f"seed {seed}", flush=True)
    attempt_all(run, [(program, case.name, seed, number) for case in CASES
                      if case.name.startswith(start) for number in range(case.times)])


if __name__ == "__main__":
    main(*sys.argv[1:])
