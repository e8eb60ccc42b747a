"""Random keys on a terminal that is resized all the while: scripts/abuse keys [SECONDS [SEED]].

Every run of the program has a seed of its own, which is printed when it fails: with 0 seconds and
that seed just this run is made again. "scripts/abuse memory" adds the command that watches the
program.
"""

import multiprocessing
import os
import random
import re
import signal
import sys
import time

from terminal import (COMMENTS, DOWN, ENTER, F3, F4, LEFT, RIGHT, UP, Failure, Installation,
                      Program)

RECORDS = b"-n=alpha,ops,E\n-n=beta*,root,W\n-n=*,*,D\n"
# What the screens can store: no '?' and no ',' in a mask, a '*' only at its end, and a mode.
MASK = rb"[ -)+\-.->@-~]*\*?"
FILE = re.compile(re.escape(COMMENTS) +
                  rb"(?:-n=(?=[^,]{1,64},[^,]{1,32},)%b,%b,[DEW]\n)*" % (MASK, MASK))

# Left out are the keys that end or stop the terminal by intention: ^C, ^S (but before ^Q), ^\.
BYTES = bytes(set(range(256)) - {3, 19, 28})
PRINTABLE = bytes(range(32, 127))
# The margins of "ansi" and "screen" are automatic and cannot be switched off.
TERMS = ("tmux", "xterm", "vt100", "linux", "ansi", "screen")
MOVES = (UP, DOWN, LEFT, RIGHT, ENTER, ENTER, F3, F4)


def some(rng, alphabet, most):
    return bytes(rng.choices(alphabet, k=rng.randint(1, most)))


def masks(rng):
    node, user = rng.choice(((b"alpha", b"ops"), (b"beta*", b"root"), (b"*", b"*")))
    if rng.random() < 0.5:
        node, user = some(rng, PRINTABLE, 70), some(rng, b"abcXYZ 019.-_*", 34)
    return node + DOWN + user


KINDS = (
    lambda rng: b"".join(rng.choices(MOVES, k=rng.randint(1, 8))),
    lambda rng: b"".join(rng.choices(MOVES, k=rng.randint(1, 8))),
    lambda rng: some(rng, PRINTABLE, 80),
    lambda rng: some(rng, b"DEWdewyno", 3),
    lambda rng: some(rng, BYTES, 8),
    lambda rng: b"\x1b" + some(rng, BYTES, 2),
    lambda rng: b"\x1b[%d~" % rng.randint(1, 34),
    lambda rng: b"\x1b" + some(rng, b"O[", 1) + some(rng, PRINTABLE, 1),
    lambda rng: b"\x13\x11",
    lambda rng: ENTER + masks(rng) + DOWN + some(rng, b"DEW", 1) + ENTER + ENTER,
    lambda rng: DOWN + ENTER + masks(rng) + ENTER + some(rng, b"DEW", 1) + ENTER + ENTER + F3 + UP,
    lambda rng: DOWN + DOWN + ENTER + masks(rng) + ENTER + some(rng, b"yn", 1) + F3 + UP + UP,
)


def size(rng):
    kinds = ((24, 80), (rng.randint(1, 60), rng.randint(1, 300)),
             (rng.randint(1, 24), rng.randint(1, 80)), (rng.randint(1, 24), rng.randint(1, 3)))
    return rng.choice(kinds) if rng.random() < 0.99 else (300, 500)


def send(session, rng, keys):
    """Types the keys; now and then the terminal is resized between any of their bytes."""
    while keys and rng.random() < 0.2:
        cut = rng.randint(0, len(keys))
        session.send(keys[:cut])
        session.resize(*size(rng))
        keys = keys[cut:]
    session.send(keys)


def expect_well_formed(file):
    text = file.read_bytes()
    if not FILE.fullmatch(text):
        raise Failure(f"the file is not well-formed: {text}")


def run(program, prefix, seed):
    """One run; returns the number of bytes typed and whether the file was changed."""
    rng = random.Random(seed)
    typed = 0
    with Installation() as place:
        place.file.write_bytes(COMMENTS + RECORDS)
        term = rng.choice(TERMS)
        options = ("-d", "-f", "trace") if rng.random() < 0.5 else ()
        with Program(program, place, size(rng), term, options, prefix) as session:
            session.settle()
            for _ in range(rng.randint(20, 200)):
                keys = rng.choice(KINDS)(rng)
                typed += len(keys)
                send(session, rng, keys)
                if rng.random() < 0.3:
                    session.settle()
                    expect_well_formed(place.file)
                if session.ended():
                    break
            session.settle()
            interrupted = not session.ended()
            if interrupted:
                os.kill(session.pid, signal.SIGINT)
            session.expect_end(0)
            if interrupted:  # after an end that keys brought about, the terminal echoes the rest
                session.expect_clear()
            expect_well_formed(place.file)
            return typed, place.file.read_bytes() != COMMENTS + RECORDS


def work(program, prefix, seconds, first, step):
    """Runs one seed after another; returns runs, bytes typed, files changed, and what failed."""
    deadline = time.monotonic() + seconds
    runs = typed = changed = 0
    for seed in range(first, sys.maxsize, step):
        try:
            keys, change = run(program, prefix, seed)
        except Failure as failure:
            return runs, typed, changed, [f"seed {seed}: {failure}"]
        runs, typed, changed = runs + 1, typed + keys, changed + change
        if time.monotonic() >= deadline:
            return runs, typed, changed, []


def main(program, seconds="60", seed="", *prefix):
    first = int(seed) if seed else random.randrange(10**9)
    workers = os.cpu_count() if int(seconds) > 0 else 1
    print(f"seed {first}", flush=True)
    with multiprocessing.Pool(workers) as pool:
        results = pool.starmap(
            work, [(program, prefix, int(seconds), first + worker, workers)
                   for worker in range(workers)])
    runs, typed, changed, failures = (sum(column[1:], column[0]) for column in zip(*results))
    print(f"{runs} runs, {typed} bytes typed, the file changed in {changed} runs", flush=True)
    sys.exit("\n".join(failures) or 0)


if __name__ == "__main__":
    main(*sys.argv[1:])
