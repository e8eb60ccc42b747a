"""Interrupts, lost terminals, full disks and odd files: scripts/abuse faults [SEED [NAME]].

CASES says what is done to the program and what must come of it. With a NAME only the cases whose
names begin so are tried.
"""

import dataclasses
import os
import random
import signal
import subprocess
import sys
import time
from collections.abc import Callable

from terminal import (COMMENTS, DOWN, ENTER, F3, F4, UP, Failure, Installation, Program, Skip,
                      attempt_all)

# What stands on the first line of the two messages.
UPDATED = b"Configuration for node <new> user <user> succe"
FAILED = b"Update of external node security configuration"


def add(node):
    return ENTER + node + DOWN + b"user" + ENTER + ENTER


def remove(node):
    return DOWN + DOWN + ENTER + node + DOWN + b"user" + ENTER + b"y" + UP + UP


def records(*nodes):
    return b"".join(b"-n=%b,user,E\n" % node for node in nodes)


ADD, NEW = add(b"new"), records(b"new")
LIST = DOWN + ENTER + F4
OLD = COMMENTS + b"-n=old,user,W\n"
THOUSANDS = COMMENTS + records(*(b"node%d" % number for number in range(3_000)))
MANY = COMMENTS + records(*(b"node%d" % number for number in range(100_000)))
SHORT = b"-n=a\n" * 2457  # three pages of 4096 bytes, which grow when they are rewritten

# Records come and go at the end of a long file; FILES is what it holds after each step.
KEYS = add(b"a") + add(b"b") + remove(b"a") + add(b"c") + remove(b"b") + remove(b"c")
FILES = tuple(THOUSANDS + records(*nodes) for nodes in
              ((), (b"a",), (b"a", b"b"), (b"b",), (b"b", b"c"), (b"c",)))


def fill_disk(place):
    """Leaves of a file system of 16 KB three pages of 4096 bytes."""
    if subprocess.run(["mount", "-t", "tmpfs", "-o", "size=16k", "tmpfs", place.directory],
                      stderr=subprocess.DEVNULL, check=False).returncode != 0:
        raise Skip("no right to mount a small file system")
    (place.directory / "full").write_bytes(b"x" * 4096)


def at_random(end):
    """Lets `end` hit the program at a random moment while KEYS flow."""
    def action(session):
        session.until(lambda: b"\x1b" in session.output, "does not start")
        session.send(KEYS)
        written = random.randint(1, 16_000)
        session.until(lambda: len(session.output) > written or session.asleep(), "stands still")
        time.sleep(random.uniform(0, 0.005))
        end(session)
    return action


def while_writing(end):
    """Lets `end` hit the program between the opening of the file and the writing of its text."""
    def action(session):
        session.settle()
        session.send(ADD)
        session.until(lambda: session.file.stat().st_size == 0, "does not write")
        end(session)
    return action


def interrupt(session):
    session.send(b"\x03")


def terminate(session):
    os.kill(session.pid, signal.SIGTERM)


def quit_key(session):
    session.send(b"\x1c")


def hang_up(session):
    session.hang_up()


def hang_up_unnoticed(session):
    session.hang_up()
    session.wait()
    took = session.usage.ru_utime + session.usage.ru_stime
    if took > 0.5:  # as it would by polling in a loop
        raise Failure(f"needs {took:.3f} seconds of the processor to end")


ENDS = ((interrupt, 0), (terminate, -signal.SIGTERM), (quit_key, -signal.SIGQUIT),
        (hang_up, -signal.SIGHUP))


@dataclasses.dataclass
class Case:
    name: str
    before: bytes = OLD  # the file before
    prepare: Callable = lambda place: None  # what else is done to the installation
    ignored: tuple = ()  # signals that the program is started with
    fault: str = ""  # what strace makes of system calls on the file
    keys: bytes = b""  # typed, and acted on before anything else
    action: Callable = interrupt  # what then happens to the program
    status: int = 0
    seen: bytes = b""  # on the screen, after the keys
    after: bytes | tuple = OLD  # the file afterwards, or all that it may be
    times: int = 1


CASES = [
    *(Case(end.__name__, THOUSANDS, action=at_random(end), status=status, after=FILES,
           times=500 if end is interrupt else 20) for end, status in ENDS),
    *(Case(f"{end.__name__} while writing", fault="ftruncate:delay_exit=200000",
           action=while_writing(end), status=status, after=OLD + NEW) for end, status in ENDS),
    Case("hang up unnoticed", ignored=(signal.SIGHUP,), keys=ENTER + b"ab",
         action=hang_up_unnoticed),
    Case("all keys", THOUSANDS, keys=KEYS, after=THOUSANDS),
    Case("100,000 records", MANY + NEW, keys=LIST + F3 + F3 + UP + remove(b"new"),
         seen=b"[MORE...1014]", after=MANY),

    Case("full disk", SHORT, prepare=fill_disk, keys=ADD, seen=FAILED, after=SHORT),
    Case("disk that fills while writing", SHORT, prepare=fill_disk,
         fault="fallocate:error=EOPNOTSUPP", keys=ADD, seen=UPDATED,
         after=(COMMENTS + SHORT.replace(b"\n", b",,\n"))[:12_288]),
    Case("write error at once", fault="write:error=ENOSPC", keys=ADD, seen=UPDATED, after=b""),
    Case("short write", THOUSANDS, fault="write:retval=9999:when=1", keys=ADD, seen=UPDATED,
         after=(THOUSANDS + NEW)[9999:]),  # the one that is said to have been short writes nothing
    Case("file cannot be cut", fault="ftruncate:error=EIO", keys=ADD, seen=FAILED),
    *(Case(f"shortage, {error}", fault=f"openat:error={error}:when=1", keys=ADD, seen=FAILED)
      for error in ("ENFILE", "ENOMEM", "EINTR", "EIO", "ESTALE")),
    Case("shortage, list", fault="openat:error=EMFILE", keys=LIST),
]


def run(program, name, seed, number):
    case = next(case for case in CASES if case.name == name)
    random.seed(f"{seed} {name} {number}")
    with Installation() as place:
        case.prepare(place)
        place.file.write_bytes(case.before)
        prefix = ()
        if case.fault:
            prefix = ("strace", "-D", "-o", place.root / "calls", "-P", place.file,
                      "-e", f"inject={case.fault}")
        with Program(program, place, prefix=prefix, ignored=case.ignored) as session:
            if case.keys:
                session.settle()
                session.send(case.keys)
                session.settle()
                if case.seen not in session.output:
                    raise Failure(f"{case.seen} is not on the screen: {session.output[-400:]}")
            case.action(session)
            session.expect_end(case.status)
            if case.status == 0 and session.master is not None:
                session.expect_clear()
        allowed = case.after if isinstance(case.after, tuple) else (case.after,)
        if place.file.read_bytes() not in allowed:
            raise Failure(f"the file is not as expected but: {place.file.read_bytes()}")


def main(program, seed="", start=""):
    seed = seed or str(random.randrange(10**9))
    print(f"seed {seed}", flush=True)
    attempt_all(run, [(program, case.name, seed, number) for case in CASES
                      if case.name.startswith(start) for number in range(case.times)])


if __name__ == "__main__":
    main(*sys.argv[1:])
