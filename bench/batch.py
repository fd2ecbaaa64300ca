#!/usr/bin/env python3
"""Measures leafwright-cli batch on very many files, and prints a Markdown table.

    bench/batch.py make FOLDER COUNT [--from CORPUS]    makes the files: copies of the corpus's and generated ones,
                                                        one in a hundred broken, and five that hang or ask for memory
    bench/batch.py run FOLDER --program PROGRAM         does them, by one worker and by as many as there are cores

The same numbers make the same files. A first run, which has the files read into memory, is not counted.
Exit status: 0 all targets met, 1 a target missed, 2 not run.
"""

import argparse
import json
import os
import random
import shutil
import subprocess
import sys
import tempfile
import time
import zlib
from pathlib import Path

COMMAND = "contents"
TIMEOUT = 20
MEMORY_MB = 1024
LARGE_BYTES = 1 << 20
GROWTH_TARGET = 1.8  # files a second of two workers, beside those of one
LARGE_TARGET = 1.2  # CPU time of a large file in a batch, beside that of the bare command
SMALL_TARGET = 0.5
SAMPLE = 40  # files that are done by the bare command


def pdf(contents: list[bytes], filters: bytes = b"") -> bytes:
    """A file of pages with these contents, in Helvetica."""
    kids = b" ".join(b"%d 0 R" % (4 + 2 * i) for i in range(len(contents)))
    objects = [
        b"<< /Type /Catalog /Pages 2 0 R >>",
        b"<< /Type /Pages /Kids [%s] /Count %d >>" % (kids, len(contents)),
        b"<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>",
    ]
    for i, content in enumerate(contents):
        objects.append(
            b"<< /Type /Page /Parent 2 0 R /MediaBox [0 0 612 792] /Contents %d 0 R "
            b"/Resources << /Font << /F1 3 0 R >> >> >>" % (5 + 2 * i)
        )
        objects.append(b"<< /Length %d %s >>\nstream\n%s\nendstream" % (len(content), filters, content))
    out, offsets = b"%PDF-1.5\n", []
    for number, body in enumerate(objects, 1):
        offsets.append(len(out))
        out += b"%d 0 obj\n%s\nendobj\n" % (number, body)
    table = b"".join(b"%010d 00000 n \n" % offset for offset in offsets)
    return out + b"xref\n0 %d\n0000000000 65535 f \n%strailer\n<< /Size %d /Root 1 0 R >>\nstartxref\n%d\n%%%%EOF\n" % (
        len(objects) + 1, table, len(objects) + 1, len(out))


def book(dice: random.Random) -> bytes:
    """Chapters with sections over running text."""
    pages = []
    for page in range(dice.randint(2, 40)):
        lines = [b"BT"]
        if page % 4 == 0:
            lines.append(b"/F1 18 Tf 1 0 0 1 72 740 Tm (Chapter %d) Tj" % (page // 4 + 1))
        lines.append(b"/F1 14 Tf 1 0 0 1 72 700 Tm (Section %d of it) Tj /F1 10 Tf" % (page + 1))
        for line in range(40):
            words = b" ".join(bytes(dice.choices(b"aeiourstlnm", k=dice.randint(2, 9))) for _ in range(9))
            lines.append(b"1 0 0 1 72 %d Tm (%s) Tj" % (680 - 14 * line, words))
        pages.append(b"\n".join(lines + [b"ET"]))
    return pdf(pages)


def bad_file(number: int) -> bytes:
    """One that takes minutes, or asks for gigabytes."""
    if number % 2 == 0:
        return pdf([zlib.compress(b"BT /F1 12 Tf ET " * 2_000_000)] * 200, b"/Filter /FlateDecode")
    return pdf([zlib.compress(b"BT [" + b"1 " * (1 << 28))], b"/Filter /FlateDecode")


def make(folder: Path, count: int, corpus: Path | None) -> None:
    folder.mkdir(parents=True)
    real = sorted(corpus.rglob("*.pdf")) if corpus else []
    dice = random.Random(20260101)
    bad = set(dice.sample(range(count), 5))
    for number in range(count):
        path = folder / f"{number:06}.pdf"
        if number in bad:
            path.write_bytes(bad_file(number))
        elif real and number % 2 == 0:
            shutil.copyfile(dice.choice(real), path)
        else:
            path.write_bytes(book(dice))
        if number % 100 == 50 and number not in bad:
            whole = path.read_bytes()
            path.write_bytes(whole[: len(whole) // 3] + dice.randbytes(200))


def cpu_seconds(before: os.times_result) -> float:
    now = os.times()
    return now.children_user + now.children_system - before.children_user - before.children_system


def run_batch(program: str, files: list[Path], workers: int) -> tuple[list[dict], float, float]:
    """@return the results, and how long it took by the clock and by the processor"""
    with tempfile.TemporaryDirectory() as out:
        before, begin = os.times(), time.perf_counter()
        done = subprocess.run(
            [program, "batch", "--jobs", str(workers), "--timeout", str(TIMEOUT), "--memory", str(MEMORY_MB),
             "--out-dir", out, COMMAND],
            input="".join(f"{path}\n" for path in files).encode(), stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
        )
        seconds = time.perf_counter() - begin
        return [json.loads(line) for line in done.stdout.splitlines()], seconds, cpu_seconds(before)


def run_bare(program: str, files: list[Path]) -> float:
    """@return the CPU time of a command a file"""
    with tempfile.TemporaryDirectory() as out:
        before = os.times()
        for path in files:
            subprocess.run([program, COMMAND, str(path), "-o", f"{out}/out.pdf"], stdout=subprocess.DEVNULL,
                           stderr=subprocess.DEVNULL)
        return cpu_seconds(before)


def per_file_ratio(program: str, files: list[Path]) -> float:
    """CPU time in a batch of one worker, beside that of bare commands."""
    return run_batch(program, files, 1)[2] / run_bare(program, files)


def run(folder: Path, program: str) -> int:
    files = sorted(folder.glob("*.pdf"))
    if not files:
        print(f"batch.py: there are no files in {folder}", file=sys.stderr)
        return 2
    cores = os.cpu_count() or 1
    run_batch(program, files, cores)
    alone, one, _ = run_batch(program, files, 1)
    together, many, _ = run_batch(program, files, cores)
    good = [Path(line["file"]) for line in alone if line["status"] == "done"]
    large = [path for path in good if path.stat().st_size >= LARGE_BYTES][:SAMPLE]
    small = [path for path in good if path.stat().st_size < LARGE_BYTES // 10][:SAMPLE]
    rows = [
        ("lines of all files", f"{len(together)} of {len(files)}", len(together) == len(files) == len(alone)),
        ("failed", str(sum(line["status"] == "failed" for line in together)), True),
        ("files an hour and core", f"{3600 * len(files) / one:,.0f}", True),
        (f"files a second of {cores} workers, beside one", f"{one / many:.2f}", one / many >= GROWTH_TARGET),
        ("longest", f"{max(line['seconds'] or 0 for line in together):.1f} s",
         max(line["seconds"] or 0 for line in together) <= TIMEOUT + 6),
        ("most memory", f"{max(line['peakMB'] or 0 for line in together):,.0f} MB", True),
    ]
    for name, sample, target in (("large", large, LARGE_TARGET), ("small", small, SMALL_TARGET)):
        if sample:
            ratio = per_file_ratio(program, sample)
            rows.append((f"CPU time of {len(sample)} {name} files, beside the bare command", f"{ratio:.2f}",
                         ratio <= target))
    print("| | measured | target met |\n|---|---:|---|")
    for name, value, is_met in rows:
        print(f"| {name} | {value} | {'yes' if is_met else 'NO'} |")
    return 0 if all(is_met for _, _, is_met in rows) else 1


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    commands = parser.add_subparsers(dest="what", required=True)
    maker = commands.add_parser("make", help="makes the files")
    maker.add_argument("folder", type=Path)
    maker.add_argument("count", type=int)
    maker.add_argument("--from", dest="corpus", type=Path, help="a folder with real files")
    runner = commands.add_parser("run", help="does them")
    runner.add_argument("folder", type=Path)
    runner.add_argument("--program", default="build/bench/bin/leafwright-cli")
    arguments = parser.parse_args()
    if arguments.what == "make":
        make(arguments.folder, arguments.count, arguments.corpus)
        return 0
    return run(arguments.folder, arguments.program)


if __name__ == "__main__":
    sys.exit(main())
