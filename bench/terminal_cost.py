#!/usr/bin/env python3
"""Runs a program on a pseudo-terminal of 24 lines by 80 columns and measures it.

terminal_cost.py start RUNS COMMAND...  times RUNS starts to the painted screen, ended by F3
terminal_cost.py keys PROGRAM           counts the bytes that each key of nodewarden draws
"""

import fcntl
import os
import pty
import select
import statistics
import struct
import sys
import tempfile
import termios
import time

F3, F4, ENTER = b"\x1bOR", b"\x1bOS", b"\r"
UP, DOWN, RIGHT, LEFT = b"\x1bOA", b"\x1bOB", b"\x1bOC", b"\x1bOD"
ERASE, DELETE, CTRL_H = b"\x7f", b"\x1b[3~", b"\x08"
DEADLINE = 120  # seconds; an instrumented program is slow


class Terminal:
    """A command on a terminal of its own; `painted` is when it last wrote something."""

    def __init__(self, command, term="xterm-256color", home=None):
        self.master, slave = pty.openpty()
        fcntl.ioctl(slave, termios.TIOCSWINSZ, struct.pack("HHHH", 24, 80, 0, 0))
        self.line = os.open(os.ttyname(slave), os.O_RDWR | os.O_NOCTTY)
        self.started = self.painted = time.perf_counter()
        self.sleeps = 0  # how often it had slept when it last waited for a key
        self.pid = os.fork()
        if self.pid == 0:
            os.close(self.master)
            self._login(slave)
            os.environ.update({"TERM": term, "HLVHOME0000": home or "."})
            os.execvp(command[0], command)
        os.close(slave)

    @staticmethod
    def _login(slave):
        os.setsid()
        fcntl.ioctl(slave, termios.TIOCSCTTY, 0)
        for descriptor in range(3):
            os.dup2(slave, descriptor)

    def _sleeps(self):
        """How often it has slept, if it has read all there is and waits for a key; else 0."""
        unread = struct.unpack("i", fcntl.ioctl(self.line, termios.FIONREAD, b"\0" * 4))[0]
        with open(f"/proc/{self.pid}/status", encoding="ascii", errors="replace") as file:
            status = dict(line.split(":", 1) for line in file)
        with open(f"/proc/{self.pid}/task/{self.pid}/children", encoding="ascii") as file:
            children = file.read()
        waits = not unread and not children and status["State"].split()[0] == "S"
        return int(status["voluntary_ctxt_switches"]) if waits else 0

    def settle(self):
        """Returns what the program writes until it waits for a key."""
        written, end = b"", time.monotonic() + DEADLINE
        while time.monotonic() < end:
            if select.select([self.master], [], [], 0.0005)[0]:
                written += os.read(self.master, 65536)
                self.painted = time.perf_counter()
            elif self.painted > self.started and (sleeps := self._sleeps()) > self.sleeps:
                if not select.select([self.master], [], [], 0)[0]:
                    self.sleeps = sleeps
                    return written
        sys.exit(f"the program did not settle within {DEADLINE} seconds")

    def press(self, *keys):
        """Sends the keys one by one and returns what each of them draws."""
        drawn = []
        for key in keys:
            os.write(self.master, key)
            drawn.append(self.settle())
        return drawn

    def leave(self):
        """Presses F3 and returns the exit status."""
        os.write(self.master, F3)
        os.close(self.line)
        try:
            while os.read(self.master, 65536):
                pass
        except OSError:
            pass  # the last user of the terminal has gone
        os.close(self.master)
        return os.waitstatus_to_exitcode(os.waitpid(self.pid, 0)[1])


def show_start(runs, command):
    painted, ended = [], []
    for _ in range(runs):
        terminal = Terminal(command, os.environ.get("TERM", "xterm-256color"))
        terminal.settle()
        painted.append(terminal.painted - terminal.started)
        pressed = time.perf_counter()
        if terminal.leave() != 0:
            sys.exit(f"{command[0]} failed")
        ended.append(time.perf_counter() - pressed)
    print(f"median of {runs}: painted after {1000 * statistics.median(painted):.1f} ms, "
          f"ended {1000 * statistics.median(ended):.1f} ms after F3")


def write_records(home, count):
    """An installation whose file names `count` nodes as a site would."""
    sites, roles = ("berlin", "lyon", "osaka", "leeds", "porto"), ("db", "web", "mail", "build")
    folder = os.path.join(home, "opr/config", os.uname().nodename)
    os.makedirs(folder, exist_ok=True)
    with open(os.path.join(folder, "actnode.prf"), "w", encoding="ascii") as file:
        for number in range(count):
            site, role = sites[number % len(sites)], roles[number // len(sites) % len(roles)]
            file.write(f"-n={role}{number + 1:02d}.{site}.example.net,operator,E\n")


def draw_keys(program, term, home):
    """Returns what the keys draw, as lists of outputs by the name of the key."""
    drawn = {}
    terminal = Terminal([program], term, home)
    terminal.settle()
    if os.geteuid() != 0:
        terminal.press(ENTER)  # the notice of read-only use
    drawn["menu move"] = terminal.press(*[DOWN] * 8, *[UP] * 7)
    drawn["screen opened"] = terminal.press(ENTER)
    drawn["typed at the end of a field"] = terminal.press(*(bytes([c]) for c in b"db01.lyon.example"))
    drawn["cursor left in a field"] = terminal.press(*[LEFT] * 12)
    drawn["typed in the middle of a field"] = terminal.press(b"x", b"y", b"z")
    drawn["cursor right in a field"] = terminal.press(*[RIGHT] * 2)
    drawn["Backspace in a field"] = terminal.press(ERASE, ERASE)
    drawn["Delete in a field"] = terminal.press(DELETE, DELETE)
    drawn["Ctrl-H in a field"] = terminal.press(CTRL_H, CTRL_H)
    drawn["to the next field"] = terminal.press(DOWN, UP, DOWN, UP)
    terminal.press(*[DELETE] * 20, *[CTRL_H] * 20)
    for records in (25, 20000):
        write_records(home, records)
        drawn[f"list of {records} records opened"] = terminal.press(F4)
        drawn[f"cursor in a list of {records}"] = terminal.press(*[DOWN] * 9)
        drawn[f"scroll in a list of {records}"] = terminal.press(*[DOWN] * 15)
        terminal.press(*[UP] * 9)
        drawn[f"scroll back in a list of {records}"] = terminal.press(*[UP] * 15)
        terminal.press(F3)
    terminal.press(F3)
    if terminal.leave() != 0:
        sys.exit("the program failed")
    return drawn


def show_keys(program):
    print(f"{'mean and most bytes per key':36}{'xterm-256color':>16}{'tmux':>16}")
    columns = []
    for term in ("xterm-256color", "tmux"):
        with tempfile.TemporaryDirectory() as home:
            columns.append(draw_keys(program, term, home))
    for name in columns[0]:
        print(f"  {name:34}", end="")
        for column in columns:
            sizes = [len(output) for output in column[name]]
            print(f"{statistics.mean(sizes):9.1f} {max(sizes):6}", end="")
        print()


def main(arguments):
    if len(arguments) > 2 and arguments[0] == "start":
        show_start(int(arguments[1]), arguments[2:])
    elif len(arguments) == 2 and arguments[0] == "keys":
        show_keys(arguments[1])
    else:
        sys.exit(__doc__)


if __name__ == "__main__":
    main(sys.argv[1:])
