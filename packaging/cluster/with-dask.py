#!/usr/bin/env python3
"""Does a list of jobs by Dask: with-dask.py [--scheduler HOST:PORT] LIST LOGS COMMAND...

A bag of pieces of the list, which the scheduler gives to other workers when one is gone. Without a scheduler, this
machine's cores are the workers. README.md tells the rest.
"""
import argparse
import os
import pathlib
import subprocess
import sys


def do_piece(piece, list_path, logs, number, command, lines, program):
    """Runs on a worker. @return the number of the piece, and why it failed; None where it did not"""
    environment = dict(os.environ, LEAFWRIGHT_PIECE=str(lines), LEAFWRIGHT_CLI=program)
    done = subprocess.run([piece, list_path, logs, str(number), *command], env=environment, capture_output=True)
    if done.returncode == 0:
        return number, None
    return number, done.stderr.decode(errors="replace").strip() or f"ended with {done.returncode}"


def count_lines(path):
    with open(path, "rb") as file:
        return sum(block.count(b"\n") for block in iter(lambda: file.read(1 << 20), b""))


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--scheduler", help="where the scheduler listens, as HOST:PORT")
    parser.add_argument("list", type=pathlib.Path)
    parser.add_argument("logs", type=pathlib.Path)
    parser.add_argument("command", nargs=argparse.REMAINDER)
    arguments = parser.parse_args()
    if not arguments.command:
        parser.error("COMMAND is missing")

    from dask import bag
    from distributed import Client

    arguments.logs.mkdir(parents=True, exist_ok=True)
    list_path, logs = arguments.list.resolve(), arguments.logs.resolve()
    lines = int(os.environ.get("LEAFWRIGHT_PIECE", "1000"))
    program = os.environ.get("LEAFWRIGHT_CLI", "leafwright-cli")
    piece = pathlib.Path(__file__).resolve().parent / "piece"
    pieces = -(-count_lines(list_path) // lines)
    if pieces == 0:
        return 0
    with Client(arguments.scheduler) if arguments.scheduler else Client(threads_per_worker=1):
        results = (
            bag.from_sequence(range(pieces), npartitions=pieces)
            .map(lambda number: do_piece(str(piece), str(list_path), str(logs), number, arguments.command, lines, program))
            .compute()
        )
    failed = [(number, reason) for number, reason in results if reason]
    for number, reason in failed:
        print(f"with-dask.py: piece {number}: {reason}", file=sys.stderr)
    with open(logs / "all.log", "wb") as merged:
        for number in range(pieces):
            log = logs / f"{number}.log"
            if log.exists():
                merged.write(log.read_bytes())
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
