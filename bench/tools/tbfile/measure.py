#!/usr/bin/env python3
"""Processor time of tbfile beside `cat`, and beside `cp` for what makes a file. On files of 1 GiB made
for it, and on smaller ones of blocks whose sizes are odd:

    bench/tools/tbfile/measure.py PROGRAM FOLDER

FOLDER needs room for 2 GiB; /dev/shm leaves the disk out. The ways take turns, the median of 5 rounds
counts, of processor time (user and system), so that other work on the machine disturbs little.
"""
import array
import os
import pathlib
import statistics
import subprocess
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "tests/support"))
sys.dont_write_bytecode = True
from block_file import INDEX, Block, header, record, words

ROUNDS = 5
GIB = 1 << 30
# Bytes of data of each block, and of the file.
FILES = ((65536, GIB), (4096, GIB), (64, GIB), (422, GIB // 4), (65, GIB // 4), (27, GIB // 4))


def make(path, length, size):
    count = (size - 160) // (length + 148)
    block = bytearray(record(210, Block(0, os.urandom(length), "a block")))
    entries = array.array("I")
    with open(path, "wb") as file:
        file.write(header(210, 0 if len(block) % 4 else 1, 160 + count * len(block)))
        for number in range(count):
            block[:4] = words(number + 1)
            entries.extend((number + 1, 160 + number * len(block)))
            file.write(block)
        file.write(record(210, Block(INDEX, entries.tobytes(), "Master index")))
    return count


def measured(command):
    """Seconds of processor time of one run."""
    child = subprocess.Popen(command, stdout=subprocess.DEVNULL)
    _, status, usage = os.wait4(child.pid, 0)
    if status:
        sys.exit(f"{command} ended with {status}")
    return usage.ru_utime + usage.ru_stime


def main():
    program, folder = sys.argv[1], pathlib.Path(sys.argv[2])
    name, out = str(folder / "measured.tbf"), str(folder / "measured_out.tbf")
    for length, size in FILES:
        count = make(name, length, size)
        ways = {"cat": ["cat", name], "ls": [program, "ls", name],
                "ls --json": [program, "ls", "--json", name],
                "ls --sort length": [program, "ls", "--sort", "length", name],
                "verify": [program, "verify", name],
                "verify --quick": [program, "verify", "--quick", name],
                "cp": ["cp", name, out],
                "recover": [program, "recover", name, out]}
        times = {way: [] for way in ways}
        for _ in range(ROUNDS):
            for way, command in ways.items():
                pathlib.Path(out).unlink(missing_ok=True)
                times[way].append(measured(command))
        base = statistics.median(times["cat"])
        for way, runs in times.items():
            seconds = statistics.median(runs)
            print(f"{count} blocks of {length} bytes: {way}: {seconds:.2f} s, "
                  f"{seconds / base:.1f} of cat", flush=True)
    os.remove(name)
    os.remove(out)


if __name__ == "__main__":
    main()
