#!/usr/bin/env python3
"""Runs leafwright-cli side by side with its peers on a PDF and prints a Markdown table.

Three jobs are compared: making an outline out of the headings (which reads the text of every page) with
mutool's reading of the text, finding the contents with making that outline, and writing an outline of 5,000
entries with qpdf's writing of the same file.
The two of a pair take turns, so that whatever else the machine does hits both; the middle one of the runs
counts. Exit status: 0 all targets met, 1 a target missed, 2 not run.
"""

import argparse
import json
import os
import shutil
import statistics
import subprocess
import sys
import tempfile
import time
from pathlib import Path
from typing import NamedTuple

ENTRIES = 5000
SECTIONS_PER_CHAPTER = 49
MEMORY_TARGET_MB = 250
CORES = 2


class Run(NamedTuple):
    seconds: float
    megabytes: float


class Pair(NamedTuple):
    job: str
    ours: list[str]
    theirs: list[str]
    target: float  # the highest ratio of our time to theirs


class CannotRun(Exception):
    """Why there is nothing to measure, in words for people."""


def measure(command: list[str]) -> Run:
    """Runs a command once. The memory is the most that was resident at any one time."""
    with tempfile.TemporaryFile() as messages:
        begin = time.perf_counter()
        process = subprocess.Popen(
            command, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=messages
        )
        _, status, usage = os.wait4(process.pid, 0)
        seconds = time.perf_counter() - begin
        process.returncode = os.waitstatus_to_exitcode(status)
        # qpdf exits with 3 when it has warnings and has done the job all the same.
        if process.returncode not in ((0, 3) if Path(command[0]).name == "qpdf" else (0,)):
            messages.seek(0)
            text = messages.read().decode(errors="replace").strip()
            raise CannotRun(f"{' '.join(command)} failed with {process.returncode}: {text}")
    return Run(seconds, usage.ru_maxrss / 1024)


def middle(runs: list[Run]) -> Run:
    return Run(statistics.median(run.seconds for run in runs), max(run.megabytes for run in runs))


def take_turns(pair: Pair, count: int) -> tuple[Run, Run]:
    """Runs both in turns, after one run each that only warms the file cache."""
    measure(pair.ours)
    measure(pair.theirs)
    ours, theirs = [], []
    for _ in range(count):
        ours.append(measure(pair.ours))
        theirs.append(measure(pair.theirs))
    return middle(ours), middle(theirs)


def tree(cli: str, pdf: str) -> list[dict]:
    """An outline of ENTRIES entries in two levels, spread over the pages of the PDF."""
    labels = json.loads(subprocess.run([cli, "labels", pdf], check=True, stdout=subprocess.PIPE).stdout)
    chapters: list[dict] = []
    for i in range(ENTRIES):
        node = {
            "title": f"Section {i + 1}",
            "pageLabel": labels[i * len(labels) // ENTRIES],
            "point": [72, 700],
            "children": [],
        }
        if i % (SECTIONS_PER_CHAPTER + 1) == 0:
            chapters.append(node)
        else:
            chapters[-1]["children"].append(node)
    return chapters


def needed(program: str, package: str) -> str:
    path = shutil.which(program)
    if not path:
        raise CannotRun(f"{program} is missing; it is in the package {package}")
    return path


def pin() -> str:
    """Keeps this process and what it starts on the first of its cores."""
    if not hasattr(os, "sched_setaffinity"):
        return "cores: not pinned"
    cores = sorted(os.sched_getaffinity(0))[:CORES]
    os.sched_setaffinity(0, cores)
    return f"cores: {', '.join(map(str, cores))}"


def pairs(cli: str, pdf: str, folder: str) -> list[Pair]:
    mutool = needed("mutool", "mupdf-tools")
    qpdf = needed("qpdf", "qpdf")
    try:
        entries = tree(cli, pdf)
    except subprocess.CalledProcessError as error:
        raise CannotRun(f"{cli} can't read {pdf}") from error
    tree_file = os.path.join(folder, "tree.json")
    Path(tree_file).write_text(json.dumps(entries), encoding="utf-8")
    ours, theirs = os.path.join(folder, "ours.pdf"), os.path.join(folder, "theirs.pdf")
    return [
        Pair(
            "`autotoc` / `mutool draw -F text`",
            [cli, "autotoc", pdf, "-o", ours],
            [mutool, "draw", "-F", "text", "-o", "/dev/null", pdf],
            0.8,
        ),
        Pair(
            "`contents` / `autotoc`",
            [cli, "contents", pdf, "-o", ours],
            [cli, "autotoc", pdf, "-o", theirs],
            1.5,
        ),
        Pair(
            f"`apply`, {ENTRIES:,} entries / `qpdf`",
            [cli, "apply", pdf, tree_file, "-o", ours],
            [qpdf, pdf, theirs],
            0.1,
        ),
    ]


def report(pair: Pair, ours: Run, theirs: Run) -> bool:
    """Prints the two rows of a pair. Tells whether its targets are met."""

    def verdict(met: bool) -> str:
        return "met" if met else "**missed**"

    ratio = ours.seconds / theirs.seconds
    fast, small = ratio < pair.target, ours.megabytes < MEMORY_TARGET_MB
    print(
        f"| {pair.job} | time | {ours.seconds * 1000:.0f} ms | {theirs.seconds * 1000:.0f} ms "
        f"| {ratio:.3f} | ratio below {pair.target} | {verdict(fast)} |"
    )
    print(
        f"| | peak memory | {ours.megabytes:.0f} MB | {theirs.megabytes:.0f} MB "
        f"| {ours.megabytes / theirs.megabytes:.2f} | below {MEMORY_TARGET_MB} MB | {verdict(small)} |"
    )
    return fast and small


def arguments() -> argparse.Namespace:
    def positive(text: str) -> int:
        number = int(text)
        if number < 1:
            raise ValueError
        return number

    parser = argparse.ArgumentParser(
        description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter
    )
    parser.add_argument(
        "pdf",
        metavar="PDF",
        help="a large manual; the targets are meant for the one of the package r-doc-pdf, "
        "/usr/share/R/doc/manual/refman.pdf",
    )
    parser.add_argument("--cli", default="leafwright-cli", metavar="PATH", help="the program to measure")
    parser.add_argument(
        "--runs", type=positive, default=5, metavar="N", help="timed runs of each command (5)"
    )
    return parser.parse_args()


def main() -> int:
    options = arguments()
    try:
        cli = shutil.which(options.cli)
        if not cli:
            raise CannotRun(f"{options.cli} is no program; build leafwright-cli and name it with --cli")
        if not os.path.isfile(options.pdf):
            raise CannotRun(f"{options.pdf}: there is no such file")
        cores = pin()
        with tempfile.TemporaryDirectory(prefix="leafwright-compare-") as folder:
            all_pairs = pairs(cli, options.pdf, folder)
            print(f"{os.path.basename(options.pdf)}, median of {options.runs} runs, {cores}\n")
            print("| job | | leafwright-cli | peer | ratio | target | |")
            print("|---|---|---:|---:|---:|---|---|")
            met = [report(pair, *take_turns(pair, options.runs)) for pair in all_pairs]
    except CannotRun as reason:
        print(f"compare.py: {reason}", file=sys.stderr)
        return 2
    return 0 if all(met) else 1


if __name__ == "__main__":
    sys.exit(main())
