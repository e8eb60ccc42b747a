"""The program on a pseudo-terminal, in an installation of its own, for tests and measurements.

Unlike the terminal of the C++ tests, which calls functions of the program and reads screens back,
this one runs the program below strace, valgrind and shells. Both know in the same way that it waits
for a key: from /proc/PID/syscall.
"""

import collections
import fcntl
import functools
import multiprocessing
import os
import pathlib
import platform
import re
import select
import shutil
import signal
import struct
import subprocess
import sys
import tempfile
import termios
import time

PAUSE = 0.001
# The system calls that wait for a key: ppoll, and read from a program that does nothing else.
PPOLL, READ = {"x86_64": ("271", "0")}.get(platform.machine(), ("73", "63"))

ENTER, UP, DOWN, RIGHT, LEFT = b"\r", b"\x1bOA", b"\x1bOB", b"\x1bOC", b"\x1bOD"
F3, F4 = b"\x1bOR", b"\x1bOS"
ERASE, DELETE, CTRL_H = b"\x7f", b"\x1b[3~", b"\x08"

COMMENTS = (b"#Event external security configuration\n"
            b"#Format: -n=nodemask,usermask,mode(D|E|W)\n")

# The terminal is cleared last of all; what may follow clears its history or fills time.
CLEARED = re.compile(rb"\x1b\[H\x1b\[2?J(?:\x1b\[3J|\0)*\Z")


class Failure(Exception):
    """The program did not do what was expected of it."""


class Skip(Exception):
    """What is needed is not there."""


def _attempt(function, task):
    try:
        function(*task)
        return "as expected"
    except (Failure, Skip) as reason:
        print(f"{task[1:]}: {type(reason).__name__}: {reason}"[:3000] + "\n", end="", flush=True)
        return "failed" if isinstance(reason, Failure) else "skipped"


def attempt_all(function, tasks):
    """Calls the function with each of the tasks, says what came of them, and exits."""
    with multiprocessing.Pool() as pool:
        counts = collections.Counter(
            pool.imap_unordered(functools.partial(_attempt, function), tasks))
    print(*(f"{count} {outcome}" for outcome, count in sorted(counts.items())), sep=", ")
    skipped = counts["skipped"] > 0 and "CI" in os.environ
    sys.exit(counts["as expected"] == 0 or counts["failed"] > 0 or skipped)


class Installation:
    """A directory for HLVHOME0000 and the program to work in, removed at the end."""

    def __init__(self):
        self.root = pathlib.Path(tempfile.mkdtemp(prefix="nodewarden."))
        self.directory = self.root / "opr/config" / os.uname().nodename
        self.directory.mkdir(parents=True)
        self.file = self.directory / "actnode.prf"

    def __enter__(self):
        return self

    def __exit__(self, *_):
        if self.directory.is_mount():
            subprocess.run(["umount", self.directory], check=True)
        shutil.rmtree(self.root)


class Program:
    """A run of the program. Leaving the "with" kills it if it is still there.

    `started` is when that was, `painted` when it last wrote something, `reader` the process that
    is to read the keys.
    """

    patience = 20  # seconds after which whatever is waited for counts as a hang
    finds_leaks = True  # where the sanitizers are built in

    def __init__(self, program, installation, size=(24, 80), term="tmux", options=(), prefix=(),
                 ignored=()):
        self.root, self.file = installation.root, installation.file
        self.output = b""
        self.status = None
        self.term = term
        self.master, self.slave = os.openpty()
        os.set_blocking(self.master, False)
        self.before = termios.tcgetattr(self.slave)
        self.resize(*size)
        command = [*prefix, os.path.realpath(program), *options]
        self.started = self.painted = time.perf_counter()
        self.pid = self.reader = os.fork()
        if self.pid == 0:
            try:
                self._become(command, ignored)
            finally:
                os._exit(127)

    def _become(self, command, ignored):
        os.login_tty(self.slave)
        for number in (signal.SIGINT, signal.SIGHUP, signal.SIGQUIT, signal.SIGPIPE,
                       signal.SIGTERM, signal.SIGTSTP, signal.SIGXFSZ):
            signal.signal(number, signal.SIG_IGN if number in ignored else signal.SIG_DFL)
        os.chdir(self.root)
        # Sanitizers report into files, not to the screen. Their search for leaks, which traces the
        # program, cannot do so while strace does.
        leaks = int(self.finds_leaks and "strace" not in command)
        report = f"log_path={self.root}/report:detect_leaks={leaks}"
        os.execvpe(command[0], command, {
            "PATH": os.environ["PATH"], "TERM": self.term, "LC_ALL": "C.UTF-8", "ESCDELAY": "25",
            "HLVHOME0000": str(self.root), "ASAN_OPTIONS": report,
            "UBSAN_OPTIONS": f"{report}:print_stacktrace=1"})

    def __enter__(self):
        return self

    def __exit__(self, _kind, failure, _trace):
        if not self.ended():
            os.kill(self.pid, signal.SIGKILL)
            os.waitpid(self.pid, 0)
        self.hang_up()
        reports = "".join(file.read_text(errors="replace") for file in self.root.glob("report*"))
        if reports:
            raise Failure(f"{failure or ''}\n{reports}")

    def resize(self, rows, columns):
        fcntl.ioctl(self.master, termios.TIOCSWINSZ, struct.pack("4H", rows, columns, 0, 0))

    def hang_up(self):
        for end in (self.master, self.slave):
            if end is not None:
                os.close(end)
        self.master = self.slave = None

    def drain(self):
        """Reads what the program has written, waiting a moment for it. Tells whether it was any."""
        ready, _, _ = select.select([self.master] if self.master is not None else [], [], [], PAUSE)
        if ready:
            self.output += os.read(self.master, 65536)
            self.painted = time.perf_counter()
        return bool(ready)

    def until(self, condition, what):
        deadline = time.monotonic() + self.patience
        while not condition():
            if time.monotonic() > deadline:
                raise Failure(f"hang: {what}; {self._proc('stat')[:40]} {self._proc('syscall')} "
                              f"{self.output[-300:]}")
            self.drain()

    def send(self, keys):
        rest = bytearray(keys)

        def sent():
            try:
                del rest[:os.write(self.master, rest)]
            except BlockingIOError:
                pass
            return not rest or self.ended()

        self.until(sent, "keys are not taken")

    def _proc(self, name):
        try:
            return pathlib.Path(f"/proc/{self.reader}/{name}").read_text()
        except OSError:
            return ""

    def asleep(self):
        """Whether no key is on its way, which only a poll can tell, and one is waited for."""
        unread, _, _ = select.select([self.slave], [], [], 0)
        call, *arguments = self._proc("syscall").split(" ")
        return not unread and (call == PPOLL or (call == READ and arguments[0] == "0x0"))

    def settle(self):
        """Waits until the program has taken all keys and waits for the next one."""
        self.until(lambda: self.ended() or (self.asleep() and not self.drain() and self.asleep()),
                   "does not come back to wait for a key")

    def press(self, *keys):
        """Sends the keys one by one and returns what each of them draws."""
        drawn = []
        for key in keys:
            begin = len(self.output)
            self.send(key)
            self.settle()
            drawn.append(self.output[begin:])
        return drawn

    def ended(self):
        if self.status is None:
            pid, status, self.usage = os.wait4(self.pid, os.WNOHANG)
            if pid != 0:
                self.status = os.waitstatus_to_exitcode(status)
        return self.status is not None

    def wait(self):
        """Waits for the end; returns the exit status, minus its number for a signal."""
        self.until(self.ended, "does not end")
        while self.drain():
            pass
        return self.status

    def expect_end(self, status):
        """Waits for the end; the modes of the terminal must be as they were before."""
        self.wait()
        if self.status != status:
            raise Failure(f"status {self.status} instead of {status}: {self.output[-300:]}")
        if self.slave is not None and termios.tcgetattr(self.slave) != self.before:
            raise Failure("the terminal's modes are not restored")

    def expect_clear(self):
        if not CLEARED.search(self.output):
            raise Failure(f"the screen is not cleared: {self.output[-200:]}")
