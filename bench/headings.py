#!/usr/bin/env python3
"""Measures how well leafwright-cli finds the headings of four manuals, and prints a Markdown table.

The outline that a manual's author gave it is what should be found. An entry is found when the generated
outline has one of the same title, after folding blanks and case, on the same page. Authors leave out what
stands in front of a heading on the page ("1.2", "Appendix A", "Part I") and write other quotes, so a second
pair of columns sets those aside. A manual without an outline is measured by its printed contents.

Precision is the share of the generated entries that are the author's, recall the share of the author's that
were found. With --into, the table takes the place of the one in that file. Exit status: 0 done, 2 not run.
"""

import argparse
import re
import sys
import tempfile
from collections import Counter
from pathlib import Path
from typing import Iterator, NamedTuple

from runner import CannotRun, Cli, replace_table

MARKERS = ("<!-- table of headings.py -->\n", "<!-- end of the table -->\n")
QUOTES = str.maketrans({"‘": "'", "’": "'", "`": "'", "“": '"', "”": '"'})
NUMBER = re.compile(r"^(?:(?:appendix )?(?:[a-z]?[0-9.]*[0-9]\.?|[a-z](?:\.[0-9.]*[0-9])?)|part [ivx]+) +")


class Manual(NamedTuple):
    name: str
    samples: list[tuple[int, str]]  # for minitoc: a heading of each kind, and its page from 1
    contents_page: int | None = None  # of the printed contents, from 1, where there is no outline


MANUALS = [
    Manual("R-exts", [(9, "1 Creating R packages"), (10, "1.1 Package structure"), (16, "1.1.2 Licensing")]),
    Manual(
        "R-intro",
        [(8, "1 Introduction and preliminaries"), (8, "1.1 The R environment"), (30, "5.7.1 Matrix")],
    ),
    Manual("gnuplot", [(21, "Gnuplot"), (21, "Copyright"), (23, "Features introduced in version 5.4")]),
    Manual("tutorial", [(4, "1. Greetings!")], contents_page=3),
]

Entry = tuple[str, int]  # title, page index


def entries(nodes: list[dict]) -> Iterator[Entry]:
    for node in nodes:
        yield node["title"], node["pageIndex"]
        yield from entries(node["children"])


def printed_contents(text: str) -> Iterator[Entry]:
    """The lines "1. Title . . . . 4" of a printed contents; the page number is the label of page index + 1."""
    for found in re.finditer(r"^([0-9.]+ .+?)\s*(?:\. ?){3,}\s*([0-9]+)$", text, re.MULTILINE):
        yield re.sub(r"\s+", " ", found[1]), int(found[2]) - 1


def folded(entry: Entry) -> Entry:
    return " ".join(entry[0].casefold().split()), entry[1]


def loosened(entry: Entry) -> Entry:
    title, page = folded(entry)
    title = title.translate(QUOTES)
    return NUMBER.sub("", title) or title, page


def generated(cli: Cli, pdf: Path, manual: Manual, out: Path) -> Iterator[tuple[str, list[Entry]]]:
    """Each generator's name with what it finds."""
    for name, options in (
        ("AutoTOC", []),
        ("AutoTOC, depth 6", ["--max-depth", "6"]),
        ("self-calibrating", ["--calibrate"]),
    ):
        yield name, list(entries(cli.autotoc(pdf, out, *options)))
    found: list[Entry] = []
    for page, text in manual.samples:
        found += entries(cli.minitoc(pdf, out, page, text))
    yield f"MiniTOC, {len(manual.samples)} sample{'s' if len(manual.samples) > 1 else ''}", found


def row(manual: str, name: str, wanted: list[Entry], found: list[Entry]) -> str:
    cells = [manual, name, str(len(wanted)), str(len(found))]
    for fold in (folded, loosened):
        hits = (Counter(map(fold, wanted)) & Counter(map(fold, found))).total()
        precision = hits / len(found) if found else 0
        cells += [str(hits), str(len(found) - hits), f"{precision:.2f}", f"{hits / len(wanted):.2f}"]
    return f"| {' | '.join(cells)} |\n"


def table(cli: Cli, folder: Path) -> str:
    text = (
        "| manual | generator | author's | generated | found | added | precision | recall "
        "| found\\* | added\\* | precision\\* | recall\\* |\n|---|---|" + "---:|" * 10 + "\n"
    )
    with tempfile.TemporaryDirectory(prefix="leafwright-headings-") as scratch:
        for manual in MANUALS:
            pdf = folder / f"{manual.name}.pdf"
            if manual.contents_page:
                wanted = list(printed_contents(cli.text(pdf, manual.contents_page)))
            else:
                wanted = list(entries(cli.outline(pdf)))
            if not wanted:
                raise CannotRun(f"{pdf} has neither an outline nor printed contents")
            for name, found in generated(cli, pdf, manual, Path(scratch) / "out.pdf"):
                text += row(manual.name, name, wanted, found)
    return text


def main() -> int:
    parser = argparse.ArgumentParser(
        description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter
    )
    names = ", ".join(f"{manual.name}.pdf" for manual in MANUALS)
    parser.add_argument("folder", metavar="FOLDER", type=Path, help=f"where {names} are")
    parser.add_argument("--cli", default="leafwright-cli", metavar="PATH", help="the program to measure")
    parser.add_argument("--into", type=Path, metavar="FILE", help="a Markdown file that has the table")
    options = parser.parse_args()
    try:
        text = table(Cli(options.cli), options.folder)
        if options.into:
            replace_table(options.into, MARKERS, text)
        else:
            print(text, end="")
    except (CannotRun, OSError) as reason:
        print(f"headings.py: {reason}", file=sys.stderr)
        return 2
    return 0


if __name__ == "__main__":
    sys.exit(main())
