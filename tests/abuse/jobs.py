"""The program as a job of interactive shells: scripts/abuse jobs [NAME].

STORIES says what is done to it and what must come of it. With a NAME only the stories whose names
begin so are played.
"""

import os
import re
import signal
import subprocess
import sys
import termios

from terminal import F3, Installation, Program, Skip, attempt_all

# Without editors of their own, which set modes of their own while they read a line.
SHELLS = {"bash": ("--norc", "--noprofile", "--noediting", "-i"), "dash": ("-i",),
          "mksh": ("-i", "+o", "emacs"), "zsh": ("-f", "-i", "+o", "zle")}
PROMPT, MENU = b"ready# ", b"F3=Quit"
CONTAINER = ("unshare", "--pid", "--fork")

LINE_DROPS = object()  # instead of keys: the terminal is lost
THE_END = object()  # instead of what appears: the program ends

# The steps of a story: keys that are typed or a signal for the program, and what then appears. A
# shell may continue what it kills, and complain of "bg".
START, START_IN_BACKGROUND = (b"modes=$(stty -g); $PROGRAM\r", MENU), (b"$PROGRAM &\r", PROMPT)
CTRL_Z = (b"\x1a", PROMPT)
# No program can prepare for SIGSTOP, and not every shell restores the terminal after it: the prompt
# in brackets comes with any modes.
STOP = ((signal.SIGSTOP, b"(" + PROMPT + b")"), (b"stty $modes\n", PROMPT))
# The program stops again, which the shell must know before "fg".
CONTINUE = b"bg\r"
BG = ((CONTINUE, PROMPT), (b"jobs\r", b"([Ss]topped|[Ss]uspended).*" + PROMPT))
FG, QUIT = (b"fg\r", MENU), (F3, PROMPT)
KILL = ((b"kill %1; bg\r", THE_END), (b"jobs\r", b"[Tt]erminated.*" + PROMPT))
INTERRUPT = ((b"kill -INT %1; bg\r", THE_END), (b"jobs\r", b"[Dd]one.*" + PROMPT))
RAW = (b"sh -c 'old=$(stty -g); stty raw -echo; printf %s=raw mode; head -c1; stty $old'\r",
       b"mode=raw")
START_FIRST = (" ".join(CONTAINER).encode() + b" $PROGRAM; echo status $?\r", MENU)
HANG_UP = (LINE_DROPS, THE_END)
# More than the program reads before the signal key that follows. Whoever reads it, it is two lines.
PASTE = b"x" * 2500 + b"\ntouch pasted\n"
NOTHING_RAN = (b"test -e pasted || echo nothing 'ran'\r", b"nothing ran.*" + PROMPT)

STORIES = {
    "killed in the background": (START, CTRL_Z, *BG, *KILL),
    "killed after SIGSTOP": (START, *STOP, *BG, *KILL),
    "painted after SIGSTOP": (START, *STOP, FG, QUIT),
    "killed when stopped": (START, CTRL_Z, *KILL),
    "interrupted when stopped": (START, CTRL_Z, *INTERRUPT),
    "started in the background, killed": (START_IN_BACKGROUND, *KILL),
    "started in the background, quit": (START_IN_BACKGROUND, FG, QUIT),
    "background and foreground": (START, CTRL_Z, *BG, FG, QUIT),
    "15 rounds": (START, *(CTRL_Z, FG) * 15, QUIT),
    "continued while another has raw modes":
        (START, CTRL_Z, RAW, (signal.SIGCONT, b""), (b"x", PROMPT), FG, QUIT),
    "pasted before Ctrl-C": (START, (PASTE + b"\x03", PROMPT), NOTHING_RAN),
    "pasted before Ctrl-Z": (START, (PASTE + b"\x1a", PROMPT), NOTHING_RAN, *KILL),
    "pasted before Ctrl-\\": (START, (PASTE + b"\x1c", PROMPT), NOTHING_RAN),
    "typed after F3": (START, (F3 + b"echo for the 'shell'\n", b"for the shell.*" + PROMPT)),
    "first process, terminated": (START_FIRST, (signal.SIGTERM, b"status 143.*" + PROMPT)),
    "hang up": (START, HANG_UP),
    "hang up, stopped": (START, CTRL_Z, HANG_UP),
    "hang up, in the background": (START, CTRL_Z, *BG, HANG_UP),
    "hang up, ignored": ((b"trap '' HUP; $PROGRAM\r", MENU), HANG_UP),
}


class Shell(Program):
    # The search stops the program by SIGSTOP; the SIGCONT that a hang-up brings takes that back,
    # and both wait for ever.
    finds_leaks = False

    def __init__(self, program, place, shell):
        super().__init__("/usr/bin/env", place,
                         options=(b"PS1=" + PROMPT, f"PROGRAM={os.path.realpath(program)}", shell,
                                  *SHELLS[shell]))
        self.until(lambda: PROMPT in self.output, "no prompt")
        self.output = b""
        self.before = termios.tcgetattr(self.slave)

    def state(self):
        """Returns the letter for the state of the program, X when it is gone."""
        return (self._proc("stat").rpartition(") ")[2] or "X")[0]

    def switches(self):
        """Returns how often the program has slept or stopped."""
        return re.findall(r"^voluntary_ctxt_switches:.*", self._proc("status"), re.MULTILINE)

    def play(self, act, pattern):
        before = self.switches() if act == CONTINUE else None  # else any number will do
        if act is LINE_DROPS:
            self.hang_up()
        elif isinstance(act, bytes):
            self.send(act)
        else:
            os.kill(self.reader, act)
        if pattern is THE_END:
            self.until(lambda: self.state() in "XZ", "does not end")
            return
        self.until(lambda: re.search(pattern, self.output, re.DOTALL), f"no {pattern}")
        self.output = b""
        # From the shell down to the program, which has no children while it waits.
        while children := self._proc(f"task/{self.reader}/children").split():
            self.reader = int(children[-1])
        self.until(lambda: (self.switches() != before and self.state() in "TXZ") or self.asleep(),
                   "does not rest")
        if pattern.endswith(PROMPT):
            self.until(lambda: termios.tcgetattr(self.slave) == self.before, "modes not restored")


def play(program, story, shell):
    if START_FIRST in STORIES[story] and subprocess.run(
            [*CONTAINER, "true"], stderr=subprocess.DEVNULL, check=False).returncode != 0:
        raise Skip("no right to make a container")
    with Installation() as place, Shell(program, place, shell) as session:
        for act, pattern in STORIES[story]:
            session.play(act, pattern)


def main(program, start=""):
    attempt_all(play, [(program, name, shell) for name in STORIES if name.startswith(start)
                       for shell in SHELLS])


if __name__ == "__main__":
    main(*sys.argv[1:])
