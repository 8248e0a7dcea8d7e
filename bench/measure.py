"""Runs commands several times, one after the other in each round, and prints a table of the medians.

  measure.py ROUNDS COUNT NAME COMMAND [NAME COMMAND...]

COUNT is what the time is divided by. A command is for the shell. The ratios are to the first one."""
import os
import statistics
import sys
import time


def run(command):
    """Returns the seconds of processor time and of the clock, and the peak memory in MiB."""
    start = time.monotonic()
    child = os.posix_spawn("/bin/sh", ["sh", "-c", command], os.environ)
    _, status, usage = os.wait4(child, 0)
    if status != 0:
        sys.exit(f"{command}: status {os.waitstatus_to_exitcode(status)}")
    return usage.ru_utime + usage.ru_stime, time.monotonic() - start, usage.ru_maxrss / 1024


def main():
    rounds, count, *rest = sys.argv[1:]
    commands = dict(zip(rest[::2], rest[1::2]))
    runs = {name: [] for name in commands}
    for _ in range(int(rounds)):
        for name, command in commands.items():
            runs[name].append(run(command))
    print("| | µs of processor time each | ratio | µs of the clock each | ratio | peak MiB |")
    print("|---|---:|---:|---:|---:|---:|")
    first = None
    for name in commands:
        processor, clock, memory = map(statistics.median, zip(*runs[name]))
        first = first or (processor, clock)
        print(f"| {name} | {1e6 * processor / int(count):.2f} | {processor / first[0]:.2f} | "
              f"{1e6 * clock / int(count):.2f} | {clock / first[1]:.2f} | {memory:.0f} |")


main()
