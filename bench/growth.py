"""How what something costs grows with what it is given: sizes, costs, and the exponent between them."""
import math
import os
import statistics
import subprocess
import time


def exponent(sizes, costs):
    """Between the two greatest sizes: 1 where the cost grows as the input does, once what it costs at the least is taken
    away. None where it does not grow by a tenth over all sizes."""
    least, before, last = costs[0], costs[-2], costs[-1]
    if last - least < 0.1 * least:
        return None
    if before - least < 0.1 * least:  # cannot be told from the least
        return math.log(last / before) / math.log(sizes[-1] / sizes[-2])
    return math.log((last - least) / (before - least)) / math.log((sizes[-1] - sizes[0]) / (sizes[-2] - sizes[0]))


def written(cost, digits):
    return f"{cost:.{digits}f}" if cost < 1000 else f"{cost:,.0f}"


def told(sizes, costs, unit, digits=1):
    found = exponent(sizes, costs)
    return f"{' / '.join(written(cost, digits) for cost in costs)} {unit}, {'none' if found is None else f'{found:.2f}'}"


def row(what, sizes, unit, costs):
    """`costs`: of each size, milliseconds and megabytes."""
    times, sizes_taken = zip(*costs)
    print(f"| {what}, {' / '.join(f'{size:,}' for size in sizes)} {unit} | {told(sizes, times, 'ms')} | "
          f"{told(sizes, sizes_taken, 'MB')} |", flush=True)


# A process counts the memory of the one that it was before it became another program: this one is small.
STARTER = """
import os, sys
child = os.fork()
if not child:
    null = os.open(os.devnull, os.O_RDWR)
    os.dup2(null, 1)
    os.dup2(null, 2)
    os.execv(sys.argv[1], sys.argv[1:])
_, status, used = os.wait4(child, 0)
print(os.waitstatus_to_exitcode(status), used.ru_utime + used.ru_stime, used.ru_maxrss)
"""


def command(words, environment, rounds=5, given=None, between=None):
    """Medians of processor milliseconds and most megabytes of a command that succeeds."""
    taken = []
    for _ in range(rounds):
        if between:
            between()
        run = subprocess.run(["/usr/bin/python3", "-I", "-S", "-c", STARTER, *map(str, words)], env=environment,
                             input=given or b"", stdout=subprocess.PIPE, check=True)
        status, seconds, kilobytes = run.stdout.split()
        if int(status) != 0:
            raise SystemExit(f"{words} ended with {int(status)}")
        taken.append((1000 * float(seconds), int(kilobytes) / 1024))
    return tuple(statistics.median(column) for column in zip(*taken))


def processor(process):
    """Milliseconds of processor time of all its threads so far, more exactly than its clock ticks."""
    total = 0
    for name in os.listdir(f"/proc/{process}/task"):
        try:
            with open(f"/proc/{process}/task/{name}/schedstat", encoding="ascii") as file:
                total += int(file.read().split()[0])
        except FileNotFoundError:
            pass  # a thread that ended
    return total / 1e6


def at_rest(process, pause=0.5):
    """Its processor time once it does nothing more."""
    before = processor(process)
    while True:
        time.sleep(pause)
        now = processor(process)
        if now - before < 2:
            return now
        before = now
