"""What the program costs, beside what does the same with less around it.

costs.py start PROGRAM BARE   start and stop, beside curses alone; the program's times include the
                              command "clear", which it runs at both
costs.py keys PROGRAM BARE    a move in the menu and the system calls of a key, beside curses alone;
                              the bytes that keys draw
costs.py store BENCHMARK      look up, replace and delete among 100,000 records, beside mawk and sed

Instructions are those of one process in user space: they and system calls repeat, times do not.
What is over its limit, a ratio of instructions or a number of calls, is a failure.
"""

import os
import pathlib
import re
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

from terminal import (CTRL_H, DELETE, DOWN, ENTER, ERASE, F3, F4, LEFT, RIGHT, UP, Installation,
                      Program)

RUNS = 25
MOVES = 100
TYPED = 50  # keys, which a field has room for
MOST_CALLS = 10  # for a typed key
RECORDS = 100_000
TERMS = ("xterm-256color", "tmux")
COUNT = ("valgrind", "--tool=callgrind", "--callgrind-out-file=/dev/null", "--log-file=count")

Program.patience = 120  # an instrumented program is slow
exceeded = []


def show(name, ours, theirs, limit=None, form="12,.0f", most=None):
    """Prints a figure beside its peer's; remembers one over `most`, or a ratio over the limit."""
    ratio = ours / theirs
    bound = f"  at most {limit:.2f}" if limit else f"  at most {most}" if most else ""
    print(f"{name:42} {ours:{form}} {theirs:{form}} {ratio:7.2f}{bound}", flush=True)
    if (limit and ratio > limit) or (most and ours > most):
        exceeded.append(name)


def counted(folder):
    """Returns the instructions of the process that COUNT has counted in the folder."""
    return int(re.search(r"Collected : (\d+)", (folder / "count").read_text())[1])


# --- At the terminal ---


def count_run(program, term, keys=()):
    """Returns the instructions of a run in which the keys and F3 are pressed."""
    with Installation() as place:
        with Program(program, place, term=term, prefix=COUNT) as session:
            session.settle()
            session.press(*keys)
            session.send(F3)
            session.expect_end(0)
        return counted(place.root)


def time_run(program, term):
    """Returns the milliseconds from the start to the painted screen, and from F3 to the end."""
    with Installation() as place, Program(program, place, term=term) as session:
        session.settle()
        painted, pressed = session.painted - session.started, time.perf_counter()
        session.send(F3)
        session.expect_end(0)
        return 1000 * painted, 1000 * (time.perf_counter() - pressed)


def start(program, bare):
    print(f"{'':42} {'program':>12} {'bare curses':>12}   ratio")
    for term in TERMS:
        show(f"{term}, start and stop, instructions", count_run(program, term),
             count_run(bare, term), 1.10)
        runs = [(time_run(program, term), time_run(bare, term)) for _ in range(RUNS)]
        for index, what in enumerate(("start to the painted screen", "F3 to the end")):
            ours, theirs = (statistics.median(run[side][index] for run in runs) for side in (0, 1))
            show(f"{term}, {what}, ms", ours, theirs, form="12.1f")


def move_cost(program, term):
    moves = [DOWN] * MOVES
    return (count_run(program, term, moves) - count_run(program, term)) / MOVES


def calls_of(program, key, before=(), after=(F3,)):
    """Returns the system calls of a key pressed after `before`; `after` ends the program."""
    counts = []
    for times in (0, TYPED):
        with Installation() as place:
            calls = place.root / "calls"
            with Program(program, place, prefix=("strace", "-D", "-o", calls)) as session:
                session.settle()
                session.press(*before, *[key] * times)
                session.send(b"".join(after))
                session.expect_end(0)
                session.until(lambda: "+++ exited" in calls.read_text(), "strace does not end")
            counts.append(len(calls.read_text().splitlines()))
    return (counts[1] - counts[0]) / TYPED


def bytes_of(program, term, keys):
    with Installation() as place, Program(program, place, term=term) as session:
        session.settle()
        return statistics.mean(map(len, session.press(*keys)))


def write_nodes(file, count):
    """A file whose records name `count` nodes as a site would."""
    sites, roles = ("berlin", "lyon", "osaka", "leeds", "porto"), ("db", "web", "mail", "build")
    file.write_text("".join(
        f"-n={roles[number // len(sites) % len(roles)]}{number + 1:02d}."
        f"{sites[number % len(sites)]}.example.net,operator,E\n" for number in range(count)))


def draw_keys(program, term):
    """Returns what the keys draw, as lists of outputs by the name of the key."""
    drawn = {}
    with Installation() as place, Program(program, place, term=term) as session:
        press = session.press
        session.settle()
        drawn["menu move"] = press(*[DOWN] * 8, *[UP] * 7)
        drawn["screen opened"] = press(ENTER)
        drawn["typed at the end of a field"] = press(*(bytes([c]) for c in b"db01.lyon.example"))
        drawn["cursor left in a field"] = press(*[LEFT] * 12)
        drawn["typed in the middle of a field"] = press(b"x", b"y", b"z")
        drawn["cursor right in a field"] = press(*[RIGHT] * 2)
        drawn["Backspace in a field"] = press(ERASE, ERASE)
        drawn["Delete in a field"] = press(DELETE, DELETE)
        drawn["Ctrl-H in a field"] = press(CTRL_H, CTRL_H)
        drawn["to the next field"] = press(DOWN, UP, DOWN, UP)
        press(*[DELETE] * 20, *[CTRL_H] * 20)
        for records in (25, 20000):
            write_nodes(place.file, records)
            drawn[f"list of {records} records opened"] = press(F4)
            drawn[f"cursor in a list of {records}"] = press(*[DOWN] * 9)
            drawn[f"scroll in a list of {records}"] = press(*[DOWN] * 15)
            press(*[UP] * 9)
            drawn[f"scroll back in a list of {records}"] = press(*[UP] * 15)
            press(F3)
        session.send(F3 + F3)
        session.expect_end(0)
    return drawn


def keys(program, bare):
    print(f"{'':42} {'program':>12} {'bare curses':>12}   ratio")
    for term in TERMS:
        show(f"{term}, menu move, instructions", move_cost(program, term), move_cost(bare, term),
             1.10)
        moves = [DOWN] * 8 + [UP] * 8
        show(f"{term}, menu move, bytes", bytes_of(program, term, moves),
             bytes_of(bare, term, moves), 1.10, "12.1f")
    show("typed key, system calls", calls_of(program, b"a", (DOWN, ENTER), (F3, F3)),
         calls_of(bare, b"a"), form="12.1f", most=MOST_CALLS)
    show("menu move, system calls", calls_of(program, DOWN), calls_of(bare, DOWN), form="12.1f")
    print(f"\n{'mean and most bytes per key':36}{TERMS[0]:>16}{TERMS[1]:>16}")
    columns = [draw_keys(program, term) for term in TERMS]
    for name in columns[0]:
        print(f"  {name:34}", end="")
        for column in columns:
            sizes = [len(output) for output in column[name]]
            print(f"{statistics.mean(sizes):9.1f} {max(sizes):6}", end="")
        print()


# --- In the store ---


def run(command, file):
    """Runs the command on a fresh copy of the file; returns processor and wall time in ms."""
    shutil.copyfile("pristine", file)
    begin = time.perf_counter()
    output = (os.POSIX_SPAWN_OPEN, 1, "output", os.O_WRONLY | os.O_CREAT | os.O_TRUNC, 0o600)
    process = os.posix_spawnp(command[0], command, os.environ, file_actions=[output])
    _, status, usage = os.wait4(process, 0)
    if status != 0:
        sys.exit(f"failed: {command}")
    return 1000 * (usage.ru_utime + usage.ru_stime), 1000 * (time.perf_counter() - begin)


def count_command(command, file):
    run([*COUNT, *command], file)
    return counted(pathlib.Path())


def middle(values):
    """The mean of the middle half."""
    return statistics.mean(sorted(values)[len(values) // 4:-(len(values) // 4)])


def store(benchmark):
    last = "last.site.net"
    replace, delete = rf"s/^\(-n={last},root\),E$/\1,W/", f"/^-n={last},root,/d"
    find = f'$1 == "-n={last}" && $2 == "root" {{ print $3; exit }}'
    os.environ["LC_ALL"] = "C"
    with tempfile.TemporaryDirectory() as folder:
        os.chdir(folder)
        subprocess.run([benchmark, "write", str(RECORDS)], check=True)
        file, = pathlib.Path().rglob("actnode.prf")
        file.rename("pristine")
        print(f"{'':42} {'store':>12} {'peer':>12}   ratio")
        for operation, peer, limit in (("lookup", ("mawk", "-F,", find, file), 0.35),
                                       ("update", ("sed", "-i", replace, file), 1.15),
                                       ("delete", ("sed", "-i", delete, file), 1.15)):
            ours, name = (benchmark, operation), f"{operation} beside {peer[0]}"
            show(f"{name}, instructions", count_command(ours, file), count_command(peer, file),
                 limit)
            runs = [(run(ours, file), run(peer, file)) for _ in range(RUNS)]
            for index, what in enumerate(("processor", "wall")):
                show(f"{name}, {what} ms", middle([pair[0][index] for pair in runs]),
                     middle([pair[1][index] for pair in runs]), form="12.1f")


def main(what, *programs):
    {"start": start, "keys": keys, "store": store}[what](*programs)
    sys.exit("over the limit: " + ", ".join(exceeded) if exceeded else 0)


if __name__ == "__main__":
    main(*sys.argv[1:])
