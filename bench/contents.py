#!/usr/bin/env python3
"""Measures how well leafwright-cli finds the outlines of documents whose authors made one.

Each document loses its outline first; then every generator makes one, and what it makes is compared with
the author's. An entry is right when it is on the same page and has the same title, after folding what
authors and typesetters write differently: case, blanks, quotes, accents, dashes, a final stop, and the
number in front ("1.2", "Chapter 3"). The level of a right entry is right when the nearest right entry
above it is the author's. Precision, recall and F1 are those of each document; the means are over documents.

MiniTOC is given samples as a user would pick them: of each of the author's first levels the first heading that
stands on its page as the author wrote it. What the samples find is taken together.

With --check, nothing is measured: what Find Contents makes of each document, with all evidence and of the text
alone, is compared with what --record noted in contents-results.txt, to the last entry. So nobody changes a result
unawares; who means to, measures, and records anew. The figures of each document are noted beside.

Nothing is fetched: the documents lie below FOLDER, as listed in a file. Exit status: 0 done, 1 documents differ,
2 not run.
"""

import argparse
import hashlib
import json
import re
import sys
import tempfile
import time
import unicodedata
from collections import defaultdict
from concurrent.futures import ThreadPoolExecutor
from itertools import islice
from pathlib import Path
from typing import Iterable, Iterator, NamedTuple

from runner import CannotRun, Cli, replace_table

MARKERS = ("<!-- table of contents.py -->\n", "<!-- end of the table of contents.py -->\n")

WORDS = (
    "chapter chap\\. appendix part section sect\\. annex kapitel anhang teil abschnitt chapitre annexe partie "
    "cap[ií]tulo ap[eé]ndice parte capitolo appendice hoofdstuk bijlage глава приложение часть rozdział dodatek "
    "kapitola příloha část część sección"
).replace(" ", "|")
NUMBER_WORDS = "one|two|three|four|five|six|seven|eight|nine|ten|eleven|twelve|thirteen|fourteen|fifteen"
# What may stand in front of a title: each of these forms is one that authors leave out.
IN_FRONT = [
    re.compile(
        rf"(?:{WORDS})\s*(?:\d+|{NUMBER_WORDS}|[ivxlcdm]{{1,7}}|[a-z])(?:\.\d+)*\s*[.:)\-–—]?\s+(?=\S)", re.I
    ),
    re.compile(
        r"(?:§\s*)?(?:\d+|[A-Z](?=\.\d)|[IVXLC]+(?=[.:)]))(?:[.\-]\d+|\.[A-Za-z](?=[\s.]))*[.:)]?\s+(?=\S)"
    ),
    re.compile(r"(?:\d+|[A-Z])(?:\.\d+)+\.?\s*(?=[^\W\d])"),
    re.compile(r"(?:[A-Z]|[IVX]+|[a-z](?=\)))[.:)]?\s+(?=\S)"),
    re.compile(r"第\s*[0-9一二三四五六七八九十百]+\s*[章節节部编編]\s*(?=\S)"),
    re.compile(r"(?:付録|附录|附錄)?\s*(?:\d+|[A-Z])(?:\.\d+)*[.:)]?\s*(?=[^\x00-\u2fff])"),
]
ACCENTS = "\u00ad\u00b4\u00a8\u00b8ˇ˘˙˚˝˛ˆ˜"  # drawn as characters of their own
QUOTES = "\\\"'`‘’‚‛“”„‟«»‹›′″＂＇"
DASHES = "‐‑‒–—―−﹣－"
FOLDING = {ord(c): None for c in QUOTES} | {ord(c): "-" for c in DASHES} | {ord("_"): " "}
SPLITTING = {ord(c): None for c in ACCENTS} | {ord("ı"): "i"}

Titles = frozenset[str]  # the forms of one title, folded


class Entry(NamedTuple):
    level: int
    titles: Titles
    page: int


class Score(NamedTuple):
    precision: float
    recall: float
    f1: float
    f1_with_level: float


def folded(title: str) -> str:
    text = unicodedata.normalize("NFKD", title.translate(SPLITTING))
    text = unicodedata.normalize("NFKC", "".join(c for c in text if not "\u0300" <= c <= "\u036f"))
    text = re.sub(r"-+", "-", text.translate(FOLDING).casefold())
    return re.sub(r"[\s\u200b-\u200f\ufeff\x00-\x1f\ufffd]+", "", text).strip(".:")


def forms(title: str) -> Titles:
    text = unicodedata.normalize("NFKC", re.sub(r"[\s\x00-\x1f\u200b]+", " ", title)).strip()
    found = {folded(text)}
    for number in IN_FRONT:
        if match := number.match(text):
            found.add(folded(text[match.end() :]))
    return frozenset(found - {""})


def entries(nodes: Iterable[dict], level: int = 1) -> Iterator[Entry]:
    """Those of an outline's JSON that have a title and lead to a page."""
    for node in nodes:
        titles = forms(node["title"])
        if titles and node["pageIndex"] is not None:
            yield Entry(level, titles, node["pageIndex"])
        yield from entries(node["children"], level + 1)


def matches(wanted: list[Entry], found: list[Entry]) -> dict[int, int]:
    """Which of the found entries stands for which of those wanted, one for one."""
    places: dict[tuple[str, int], list[int]] = defaultdict(list)
    for index, entry in enumerate(found):
        for title in entry.titles:
            places[title, entry.page].append(index)
    used: set[int] = set()
    result: dict[int, int] = {}
    for index, entry in enumerate(wanted):
        fitting = {k for title in entry.titles for k in places[title, entry.page]} - used
        if fitting:
            result[index] = min(fitting)
            used.add(result[index])
    return result


def ancestors(outline: list[Entry]) -> list[list[int]]:
    """For each entry those above it, from the top."""
    above: list[int] = []
    result = []
    for index, entry in enumerate(outline):
        while above and outline[above[-1]].level >= entry.level:
            above.pop()
        result.append(list(above))
        above.append(index)
    return result


def measures(right: int, wanted: int, found: int) -> tuple[float, float, float]:
    precision = right / found if found else 0.0
    recall = right / wanted if wanted else 0.0
    return precision, recall, 2 * precision * recall / (precision + recall) if right else 0.0


def score(wanted: list[Entry], found: list[Entry]) -> Score:
    pairs = matches(wanted, found)
    back = {theirs: ours for ours, theirs in pairs.items()}
    above_wanted, above_found = ancestors(wanted), ancestors(found)
    in_place = 0
    for ours, theirs in pairs.items():
        expected = next((k for k in reversed(above_wanted[ours]) if k in pairs), None)
        given = next((back[k] for k in reversed(above_found[theirs]) if k in back), None)
        in_place += expected == given
    precision, recall, f1 = measures(len(pairs), len(wanted), len(found))
    return Score(precision, recall, f1, measures(in_place, len(wanted), len(found))[2])


class Generator(NamedTuple):
    name: str
    command: str
    options: tuple[str, ...] = ()


AUTOTOC = [
    Generator("AutoTOC", "autotoc"),
    Generator("AutoTOC, depth 6", "autotoc", ("--max-depth", "6")),
    Generator("self-calibrating", "autotoc", ("--calibrate",)),
]
MINITOC = Generator("MiniTOC, 3 samples", "minitoc")
CONTENTS = [
    Generator("Find Contents, text only", "contents", ("--text-only",)),
    Generator("Find Contents", "contents"),
]


RESULTS = Path(__file__).with_name("contents-results.txt")
RESULTS_HEAD = """\
# What Find Contents makes of the documents of contents.txt, noted by contents.py --record: digests of the outline with
# all evidence, and of that by the text alone; then the figures of both: F1, F1 with level, precision, recall.
"""
RESULTS_LINE = re.compile(r"(?P<path>.+?) (?P<digests>(?:[0-9a-f]{16}|none) (?:[0-9a-f]{16}|none))(?: [0-9. ]+)?")


class Measured(NamedTuple):
    document: str
    wanted: int
    scores: dict[str, Score]
    seconds: dict[str, float]


def samples(nodes: Iterable[dict], level: int = 1) -> Iterator[tuple[int, str, int]]:
    """The author's entries that may show MiniTOC a kind of heading: level, title and page from 1."""
    for node in nodes:
        if node["title"].strip() and node["pageIndex"] is not None:
            yield level, node["title"], node["pageIndex"] + 1
        yield from samples(node["children"], level + 1)


def found_by_samples(cli: Cli, pdf: Path, out: Path, author: list[dict]) -> list[Entry]:
    """What looks like the samples, in the order of the pages and without doubles; each has the level of its sample."""
    levels, tries = 3, 5
    found: dict[tuple[str, int], tuple[int, float, Entry]] = {}
    for level in range(1, levels + 1):
        for _, title, page in islice((s for s in samples(author) if s[0] == level), tries):
            try:
                nodes = cli.minitoc(pdf, out, page, title)
            except CannotRun:
                continue  # The author wrote it otherwise than the page shows it.
            for node in nodes:
                for entry in entries([node], level):
                    place = (entry.page, -(node["point"] or (0, 0))[1], entry)
                    found.setdefault((node["title"], entry.page), place)
            break
    return [entry for _, _, entry in sorted(found.values(), key=lambda each: each[:2])]


def made(cli: Cli, generator: Generator, bare: Path, out: Path, author: list[dict]) -> list[Entry]:
    """What a generator makes of a document without its outline."""
    if generator.command == "minitoc":
        return found_by_samples(cli, bare, out, author)
    make = cli.contents if generator.command == "contents" else cli.autotoc
    return list(entries(make(bare, out, *generator.options)))


def measure(cli: Cli, folder: Path, path: str, generators: list[Generator]) -> Measured:
    """What the generators make of one document; one that fails has found nothing, and says why."""
    with tempfile.TemporaryDirectory(prefix="leafwright-contents-") as scratch:
        bare, out = Path(scratch) / "bare.pdf", Path(scratch) / "out.pdf"
        author = cli.outline(folder / path)
        wanted = list(entries(author))
        if not wanted:
            raise CannotRun(f"{path} has no outline to compare with")
        cli.without_outline(folder / path, bare)
        scores, seconds = {}, {}
        for generator in generators:
            start = time.monotonic()
            try:
                found = made(cli, generator, bare, out, author)
            except CannotRun as reason:
                print(f"{path}: {generator.name}: {reason}", file=sys.stderr)
                found = []
            seconds[generator.name] = time.monotonic() - start
            scores[generator.name] = score(wanted, found)
    print(f"{path}: {scores[generators[-1].name].f1:.3f}", file=sys.stderr)
    return Measured(path, len(wanted), scores, seconds)


def compared(cli: Cli, folder: Path, measured: list[Measured], name: str, results: Path) -> None:
    """Adds what another program made: {PATH: [[LEVEL, TITLE, PAGE FROM 1], ...], ...}."""
    outlines = json.loads(results.read_text(encoding="utf-8"))
    for document in measured:
        found = [
            Entry(level, titles, page - 1)
            for level, title, page in outlines.get(document.document, [])
            if page >= 1 and (titles := forms(title))
        ]
        wanted = list(entries(cli.outline(folder / document.document)))
        document.scores[name] = score(wanted, found)


def essence(nodes: Iterable[dict]) -> Iterator[list]:
    """What there is to an outline, without what reckoning may change in the last digits."""
    for node in nodes:
        place = [node["pageIndex"], *(round(part) for part in node["point"])]
        yield [node["level"], node["title"], place, node["evidence"], round(node["confidence"], 2)]
        yield from essence(node["children"])


def reports(cli: Cli, file: Path) -> list[list[dict] | None]:
    """What Find Contents makes of a document, with all evidence and of the text alone; none where it fails, which it
    says."""
    found: list[list[dict] | None] = []
    with tempfile.TemporaryDirectory(prefix="leafwright-contents-") as scratch:
        for generator in reversed(CONTENTS):
            try:
                found.append(cli.contents(file, Path(scratch) / "out.pdf", *generator.options))
            except CannotRun as reason:
                print(f"{file}: {generator.name}: {reason}", file=sys.stderr)
                found.append(None)
    return found


def digests(found: list[list[dict] | None]) -> str:
    def digest(report: list[dict] | None) -> str:
        if report is None:
            return "none"
        return hashlib.sha256(json.dumps(list(essence(report))).encode()).hexdigest()[:16]

    return " ".join(digest(report) for report in found)


def noted_figures(cli: Cli, file: Path, found: list[list[dict] | None]) -> str:
    """How well the author's outline was found, in the order of contents-results.txt."""
    wanted = list(entries(cli.outline(file)))
    scores = [score(wanted, list(entries(report or []))) for report in found]
    columns = [value for s in scores for value in (s.f1, s.f1_with_level, s.precision, s.recall)]
    return " ".join(f"{value:.3f}" for value in columns)


def recorded_results() -> dict[str, str]:
    """The noted digests by the documents' paths."""
    lines = [RESULTS_LINE.fullmatch(line) for line in listed_documents(RESULTS)]
    return {line["path"]: line["digests"] for line in lines if line}


def check(options: argparse.Namespace, documents: list[str]) -> bool:
    """Names the documents of which something else is made than was noted. @return whether there is none"""
    cli, recorded = Cli(options.cli), recorded_results()
    documents = sorted(documents, key=lambda path: (options.folder / path).stat().st_size)
    is_same = True
    with ThreadPoolExecutor(options.jobs) as pool:
        results = pool.map(lambda path: digests(reports(cli, options.folder / path)), documents)
        for path, result in zip(documents, results):
            if result == recorded.get(path):
                continue
            print(f"{path}: not as recorded", flush=True)
            is_same = False
            if options.fail_fast:
                pool.shutdown(cancel_futures=True)
                break
    return is_same


def record(options: argparse.Namespace, documents: list[str]) -> None:
    cli = Cli(options.cli)

    def result(path: str) -> str:
        file = options.folder / path
        found = reports(cli, file)
        return f"{path} {digests(found)} {noted_figures(cli, file, found)}\n"

    with ThreadPoolExecutor(options.jobs) as pool:
        lines = list(pool.map(result, documents))
    RESULTS.write_text(RESULTS_HEAD + "".join(lines), encoding="utf-8")


def mean(values: Iterable[float]) -> float:
    listed = list(values)
    return sum(listed) / len(listed)


def tables(measured: list[Measured], names: list[str]) -> str:
    """The means of all generators, then F1 of each document."""
    text = "| generator | precision | recall | F1 | F1 with level | seconds |\n|---|" + "---:|" * 5 + "\n"
    for name in names:
        scores = [document.scores[name] for document in measured]
        cells = [f"{mean(column):.3f}" for column in zip(*scores)]
        seconds = [document.seconds[name] for document in measured if name in document.seconds]
        text += f"| {name} | {' | '.join(cells)} | {f'{sum(seconds):.0f}' if seconds else ''} |\n"
    detailed = [generator.name for generator in reversed(CONTENTS) if generator.name in names]
    heads = names + [
        f"{name}: {what}" for name in detailed for what in ("with level", "precision", "recall")
    ]
    text += f"\n| F1 of the document | author's | {' | '.join(heads)} |\n|---|" + "---:|" * (len(heads) + 1) + "\n"
    for document in measured:
        values = [document.scores[name].f1 for name in names]
        for own in (document.scores[name] for name in detailed):
            values += [own.f1_with_level, own.precision, own.recall]
        cells = [f"{value:.2f}" for value in values]
        text += f"| {short_name(document.document)} | {document.wanted} | {' | '.join(cells)} |\n"
    return text


def short_name(path: str) -> str:
    """The file's name, with its folder's where the name says little."""
    file = Path(path)
    return file.stem if len(file.stem) > 8 else f"{file.parent.name}/{file.stem}"


def listed_documents(file: Path) -> list[str]:
    lines = file.read_text(encoding="utf-8").splitlines()
    return [line for line in lines if line and not line.startswith("#")]


def parsed_arguments() -> argparse.Namespace:
    parser = argparse.ArgumentParser(
        description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter
    )
    parser.add_argument("folder", metavar="FOLDER", type=Path, help="where the documents are")
    parser.add_argument("--cli", default="leafwright-cli", metavar="PATH", help="the program to measure")
    parser.add_argument(
        "--list", type=Path, metavar="FILE", default=Path(__file__).with_suffix(".txt"),
        help="their paths below the folder, one a line (contents.txt beside this script)",
    )
    parser.add_argument("--only", metavar="TEXT", help="only documents whose path contains this")
    parser.add_argument("--quick", action="store_true", help="Find Contents alone, with all evidence")
    parser.add_argument("--jobs", type=int, default=1, metavar="N", help="documents at a time (1)")
    parser.add_argument(
        "--compare", action="append", default=[], metavar="NAME=FILE",
        help="another program's outlines as JSON: {PATH: [[LEVEL, TITLE, PAGE FROM 1], ...], ...}",
    )
    parser.add_argument("--into", type=Path, metavar="FILE", help="a Markdown file that has the tables")
    doing = parser.add_mutually_exclusive_group()
    doing.add_argument("--check", action="store_true", help="compare with the results that were noted")
    doing.add_argument("--record", action="store_true", help="note the results of all documents")
    parser.add_argument("--fail-fast", action="store_true", help="with --check, stop at the first that differs")
    parser.add_argument("--json", type=Path, metavar="FILE", help="where all figures go as JSON")
    return parser.parse_args()


def run(options: argparse.Namespace) -> bool:
    """@return whether all is as it was noted, as far as that was asked"""
    documents = listed_documents(options.list)
    if options.record:
        record(options, documents)
        return True
    documents = [path for path in documents if not options.only or options.only in path]
    if not documents:
        raise CannotRun("no document is listed")
    if options.check:
        return check(options, documents)
    measure_all(options, documents)
    return True


def measure_all(options: argparse.Namespace, documents: list[str]) -> None:
    cli = Cli(options.cli)
    generators = [CONTENTS[-1]] if options.quick else AUTOTOC + [MINITOC] + CONTENTS
    with ThreadPoolExecutor(options.jobs) as pool:
        measured = list(pool.map(lambda path: measure(cli, options.folder, path, generators), documents))
    names = [generator.name for generator in generators]
    for comparison in options.compare:
        name, _, results = comparison.partition("=")
        compared(cli, options.folder, measured, name, Path(results))
        names.insert(-1, name)
    text = tables(measured, names)
    if options.into:
        replace_table(options.into, MARKERS, text)
    else:
        print(text, end="")
    if options.json:
        figures = [
            document._asdict() | {"scores": {n: s._asdict() for n, s in document.scores.items()}}
            for document in measured
        ]
        options.json.write_text(json.dumps(figures, indent=1), encoding="utf-8")


def main() -> int:
    try:
        return 0 if run(parsed_arguments()) else 1
    except (CannotRun, OSError) as reason:
        print(f"contents.py: {reason}", file=sys.stderr)
        return 2


if __name__ == "__main__":
    sys.exit(main())
