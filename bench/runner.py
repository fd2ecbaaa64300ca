"""What the measuring scripts have in common: running leafwright-cli, and putting a table into a document."""

import json
import shutil
import subprocess
from pathlib import Path


class CannotRun(Exception):
    """Why there is nothing to measure, in words for people."""


class Cli:
    """leafwright-cli. What fails raises CannotRun, with its message."""

    def __init__(self, program: str) -> None:
        found = shutil.which(program)
        if not found:
            raise CannotRun(f"{program} is no program; build leafwright-cli and name it with --cli")
        self.program = found

    def run(self, *arguments: str) -> bytes:
        done = subprocess.run([self.program, *arguments], capture_output=True)
        if done.returncode != 0:
            raise CannotRun(done.stderr.decode(errors="replace").strip())
        return done.stdout

    def outline(self, pdf: Path) -> list[dict]:
        return json.loads(self.run("outline", str(pdf)))

    def without_outline(self, pdf: Path, out: Path) -> None:
        empty = out.with_suffix(".json")
        empty.write_text("[]", encoding="utf-8")
        self.run("apply", str(pdf), str(empty), "-o", str(out))

    def text(self, pdf: Path, page: int) -> str:
        lines = self.run("text", "--page", str(page), str(pdf)).splitlines()
        return "".join(json.loads(line)["text"] for line in lines)

    def autotoc(self, pdf: Path, out: Path, *options: str) -> list[dict]:
        self.run("autotoc", str(pdf), "-o", str(out), *options)
        return self.outline(out)

    def minitoc(self, pdf: Path, out: Path, page: int, sample: str) -> list[dict]:
        """What looks like a sample on a page, counted from 1."""
        self.run("minitoc", str(pdf), f"--page={page}", f"--text={sample}", "-o", str(out))
        return self.outline(out)[-1]["children"]

    def contents(self, pdf: Path, out: Path, *options: str) -> list[dict]:
        report = out.with_suffix(".json")
        self.run("contents", str(pdf), "-o", str(out), "--report", str(report), *options)
        return json.loads(report.read_text(encoding="utf-8"))


def replace_table(file: Path, markers: tuple[str, str], text: str) -> None:
    """Puts a text between two lines of a file."""
    begin, end = markers
    whole = file.read_text(encoding="utf-8")
    if begin not in whole or end not in whole:
        raise CannotRun(f"{file} has no place for the table, from {begin.strip()} to {end.strip()}")
    before, rest = whole.split(begin, 1)
    file.write_text(before + begin + text + end + rest.split(end, 1)[1], encoding="utf-8")
