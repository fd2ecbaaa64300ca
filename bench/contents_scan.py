#!/usr/bin/env python3
"""Measures Find Contents on a scan: the first pages of a document, drawn as images of 200 dots an inch.

The document has an outline that its author made; what leads to these pages should be found from the images
alone, their text recognised by ocrmypdf. Entries are compared as by contents.py. What is written must begin with
the scan's own bytes. Needs pdftoppm and ocrmypdf, which takes some seconds a page.
Exit status: 0 done, 1 less than was wanted, 2 not run.
"""

import argparse
import shutil
import subprocess
import sys
import tempfile
import time
import zlib
from pathlib import Path
from typing import Iterable, Iterator

from contents import entries, score
from runner import CannotRun, Cli

RESOLUTION = 200  # dots an inch


def drawn_pages(pdf: Path, pages: int, folder: Path) -> Iterator[tuple[int, int, bytes]]:
    """Width, height and grey pixels of the first pages."""
    subprocess.run(["pdftoppm", "-r", str(RESOLUTION), "-l", str(pages), "-gray", pdf, folder / "page"], check=True)
    for image in sorted(folder.glob("page-*.pgm")):
        header, pixels = image.read_bytes().split(b"\n255\n", 1)
        width, height = header.split()[1:]
        yield int(width), int(height), pixels


def write_scan(images: Iterable[tuple[int, int, bytes]], out: Path) -> None:
    """Writes a PDF with a page for each image."""
    objects = [b"<< /Type /Catalog /Pages 2 0 R >>", b""]
    kids = []
    for width, height, pixels in images:
        box = f"{width * 72 / RESOLUTION:.2f} {height * 72 / RESOLUTION:.2f}"
        image, content, page = (len(objects) + k for k in (1, 2, 3))
        kids.append(f"{page} 0 R")
        look = f"/Subtype /Image /Width {width} /Height {height} /ColorSpace /DeviceGray /BitsPerComponent 8"
        objects.append(stream(look, pixels))
        objects.append(stream("", f"{box.replace(' ', ' 0 0 ')} 0 0 cm /Im Do".encode()))
        objects.append(
            f"<< /Type /Page /Parent 2 0 R /MediaBox [0 0 {box}] /Contents {content} 0 R "
            f"/Resources << /XObject << /Im {image} 0 R >> >> >>".encode()
        )
    objects[1] = f"<< /Type /Pages /Count {len(kids)} /Kids [{' '.join(kids)}] >>".encode()
    file = b"%PDF-1.4\n"
    places = []
    for number, content in enumerate(objects, start=1):
        places.append(len(file))
        file += b"%d 0 obj\n%s\nendobj\n" % (number, content)
    table = "".join(f"{place:010} 00000 n \n" for place in places)
    count = len(objects) + 1
    end = f"trailer\n<< /Size {count} /Root 1 0 R >>\nstartxref\n{len(file)}\n%%EOF\n"
    out.write_bytes(file + f"xref\n0 {count}\n0000000000 65535 f \n{table}{end}".encode())


def stream(dictionary: str, data: bytes) -> bytes:
    packed = zlib.compress(data)
    head = f"<< {dictionary} /Filter /FlateDecode /Length {len(packed)} >>\nstream\n"
    return head.encode() + packed + b"\nendstream"


def parsed_arguments() -> argparse.Namespace:
    parser = argparse.ArgumentParser(
        description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter
    )
    parser.add_argument("file", metavar="FILE", type=Path, help="a PDF with an outline")
    parser.add_argument("--cli", default="leafwright-cli", metavar="PATH", help="the program to measure")
    parser.add_argument("--pages", type=int, default=60, metavar="N", help="how many of its pages (60)")
    parser.add_argument("--least", type=float, default=0.8, metavar="F1", help="what is wanted (0.8)")
    return parser.parse_args()


def run(options: argparse.Namespace) -> bool:
    for program in ("pdftoppm", "ocrmypdf"):
        if not shutil.which(program):
            raise CannotRun(f"{program} is not installed")
    cli = Cli(options.cli)
    wanted = [entry for entry in entries(cli.outline(options.file)) if entry.page < options.pages]
    if not wanted:
        raise CannotRun(f"{options.file} has no outline to compare with")
    with tempfile.TemporaryDirectory(prefix="leafwright-scan-") as scratch:
        images, out = Path(scratch) / "scan.pdf", Path(scratch) / "out.pdf"
        write_scan(drawn_pages(options.file, options.pages, Path(scratch)), images)
        start = time.monotonic()
        found = list(entries(cli.contents(images, out, "--ocr")))
        seconds = time.monotonic() - start
        is_kept = out.read_bytes().startswith(images.read_bytes())
    result = score(wanted, found)
    print(f"{options.file.name}: {options.pages} pages, {len(wanted)} entries, {len(found)} found in {seconds:.0f} s")
    print(" ".join(f"{name} {value:.3f}" for name, value in result._asdict().items()))
    print("the scan's bytes stand in front" if is_kept else "the scan's bytes have changed")
    return is_kept and result.f1 >= options.least


def main() -> int:
    try:
        return 0 if run(parsed_arguments()) else 1
    except (CannotRun, OSError, subprocess.CalledProcessError) as reason:
        print(f"contents_scan.py: {reason}", file=sys.stderr)
        return 2


if __name__ == "__main__":
    sys.exit(main())
