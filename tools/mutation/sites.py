"""Where C++ sources can be falsified, and how. Goes by the layout that clang-format gives them: blanks around
binary operators, none around the brackets of templates."""

import hashlib
import re
from collections import Counter
from pathlib import Path
from typing import Iterator, NamedTuple

SWITCH = "leafwright::mutant({number})"
TURNED = {
    "==": ["!="],
    "!=": ["=="],
    "<": ["<=", ">="],
    "<=": ["<", ">"],
    ">": [">=", "<="],
    ">=": [">", "<"],
    "&&": ["||"],
    "||": ["&&"],
    "+": ["-"],
    "-": ["+"],
    "*": ["/"],
    "/": ["*"],
}
OPERATOR = re.compile(r"(?<= )(==|!=|<=|>=|<|>|&&|\|\||\+|-|\*|/)(?=\s)")
CONSTANT = re.compile(r"(?<![\w.'])(?:0[xX][0-9a-fA-F]+|\d[\d']*(?:\.\d+)?(?:[eE][+-]?\d+)?)[uUlLzZfF]*(?![\w.'])")
BOOLEAN = re.compile(r"\b(?:true|false)\b")
CONDITION = re.compile(r"\b(?:if|while)(?: constexpr)? \(")
RETURN = re.compile(r"\breturn ([^;]+);")
STATEMENT = re.compile(r"(?:(?<=[;{}])|(?<=\belse)|(?<=\)))\s+([*+\-(]*[A-Za-z_])")
NO_STATEMENT = re.compile(
    r"(?:return|if|for|while|do|else|switch|case|default|using|typedef|template|throw|delete|goto|break|continue|"
    r"static_assert|public|private|protected|namespace|class|struct|enum|friend|explicit|virtual|static|const|"
    r"constexpr|inline|extern|Q_(?!EMIT)[A-Z]+|[A-Z_]+\()\b"
)
TABLE = re.compile(r"^constexpr [^;{}()]+ = \{\n.*?^\};\n", re.S | re.M)
LITERAL = re.compile(
    r"""(?P<comment>//[^\n]*|/\*.*?\*/)|(?P<preprocessor>^[ \t]*\#(?:[^\n\\]|\\.)*)|"""
    r"""(?P<raw>R"(?P<mark>[^(\s]*)\(.*?\)(?P=mark)")|(?P<string>"(?:[^"\\\n]|\\.)*")|"""
    r"""(?P<char>(?<![0-9a-fA-F])'(?:[^'\\\n]|\\.)+')""",
    re.S | re.M | re.X,
)


class Site(NamedTuple):
    """One way to falsify a file: text[start:end] behaves as `mutated` while its switch is on."""

    path: str  # from the top of the tree
    line: int
    start: int
    end: int
    original: str
    mutated: str
    guarded: str  # what takes the place of text[start:end]; {number} is the switch
    name: str  # hexadecimal digits that stay while the line stays


def blank(text: str) -> str:
    return re.sub(r"[^\n]", " ", text)


def is_fraction(digits: str) -> bool:
    return re.search(r"[.eE]", digits) is not None and not digits.lower().startswith("0x")


def integer(digits: str) -> int:
    return int(digits, 8 if re.fullmatch(r"0\d+", digits) else 0)


class Source:
    def __init__(self, top: Path, path: str):
        self.path = path
        self.same: Counter[str] = Counter()  # of sites that look alike
        self.text = (top / path).read_text(encoding="utf-8")
        # Without comments and preprocessor, and the same with strings emptied: places are the same in all three.
        self.code = LITERAL.sub(
            lambda m: blank(m[0]) if m["comment"] or m["preprocessor"] else m[0], self.text
        )
        self.mask = LITERAL.sub(
            lambda m: blank(m[0]) if m["comment"] or m["preprocessor"] else '"' + "_" * (len(m[0]) - 2) + '"',
            self.text,
        )

    def line(self, position: int) -> int:
        return self.text.count("\n", 0, position) + 1

    def one_line(self, start: int, end: int) -> str:
        return re.sub(r"\s*\n\s*", " ", self.code[start:end])

    def matching(self, opening: int) -> int:
        """Where the bracket that opens at a place closes."""
        depth = 0
        for i in range(opening, len(self.mask)):
            if self.mask[i] in "([{":
                depth += 1
            elif self.mask[i] in ")]}":
                depth -= 1
                if depth == 0:
                    return i
        return len(self.mask) - 1

    def opening(self, closing: int) -> int:
        """Where the brace that closes at a place opens."""
        depth = 0
        for i in range(closing, -1, -1):
            depth += (self.mask[i] == "}") - (self.mask[i] == "{")
            if depth == 0:
                return i
        return 0

    def returns_reference(self, position: int) -> bool:
        """Whether the function around a place returns a reference, as far as its head tells."""
        depth = 0
        for i in range(position - 1, -1, -1):
            depth += (self.mask[i] == "}") - (self.mask[i] == "{")
            if depth >= 0:
                continue
            depth = 0
            boundary = max(self.mask.rfind(char, 0, i) for char in ";{}")
            head = self.mask[boundary + 1 : i].strip()
            if "(" not in head or re.match(r"(?:if|for|while|else|switch|do|try|case)\b", head):
                continue
            return re.search(r"&(?:[\w:]+|operator\S*)$", head.partition("(")[0]) is not None
        return False

    def expression_around(self, start: int, end: int) -> tuple[int, int]:
        """The smallest whole expression that an operator belongs to, between brackets, commas and the like."""
        left, depth = start, 0
        while left > 0:
            char = self.mask[left - 1]
            if char in ")]":
                depth += 1
            elif char in "([":
                if depth == 0:
                    break
                depth -= 1
            elif depth == 0:
                if char == "}":
                    opening = self.opening(left - 1)
                    if not re.match(r"[\w>]", self.mask[opening - 1]):
                        break  # a statement's end; else what stands in the braces belongs to a type
                    left = opening
                    continue
                if char in "{,;?" or (char == ":" and ":" not in (self.mask[left - 2], self.mask[left])):
                    break
                if char == "=" and self.mask[left - 2] not in "=!<>" and self.mask[left] != "=":
                    break
                if re.search(r"\b(?:return|throw|case|else)\s$", self.mask[max(0, left - 8) : left]):
                    break
            left -= 1
        right, depth = end, 0
        while right < len(self.mask):
            char = self.mask[right]
            if char in "([{":
                depth += 1
            elif char in ")]}":
                if depth == 0:
                    break
                depth -= 1
            elif depth == 0:
                if char in ",;?" or (char == ":" and ":" not in (self.mask[right - 1], self.mask[right + 1])):
                    break
            right += 1
        while left < start and self.mask[left].isspace():
            left += 1
        while right > end and self.mask[right - 1].isspace():
            right -= 1
        return left, right

    def site(
        self,
        kind: str,
        start: int,
        end: int,
        mutated: str,
        guarded: str,
        shown: tuple[int, int] | None = None,
    ) -> Site:
        shown_start, shown_end = shown or (start, end)
        line_start = self.text.rfind("\n", 0, start) + 1
        line_end = self.text.find("\n", start)
        key = "\0".join((self.path, kind, self.text[line_start:line_end], str(start - line_start), mutated))
        self.same[key] += 1
        name = hashlib.sha256(f"{key}\0{self.same[key]}".encode()).hexdigest()[:8]
        original = self.one_line(shown_start, shown_end)
        return Site(self.path, self.line(shown_start), start, end, original, mutated, guarded, name)

    def operators(self) -> Iterator[Site]:
        for match in OPERATOR.finditer(self.mask):
            start, end = self.expression_around(match.start(), match.end())
            before, after = self.one_line(start, match.start()), self.one_line(match.end(), end)
            for turned in TURNED[match[0]]:
                mutated = f"{before.rstrip()} {turned} {after.lstrip()}"
                guarded = f"({SWITCH} ? ({mutated}) : ({self.code[start:end]}))"
                yield self.site("operator", start, end, mutated, guarded)

    def constants(self) -> Iterator[Site]:
        for match, digits, suffix in self.numbers():
            for step in (1, -1):
                if is_fraction(digits):
                    yield self.in_place("constant", match, repr(float(digits) + step) + suffix)
                elif integer(digits) + step >= 0:
                    yield self.in_place("constant", match, str(integer(digits) + step) + suffix)

    def thirds(self, up: bool) -> Iterator[Site]:
        """Thresholds moved by a third, or by one where that is more; flags and the like are none."""
        for match, digits, suffix in self.numbers():
            if is_fraction(digits) and float(digits) != 0:
                moved = repr(round(float(digits) * (4 if up else 2) / 3, 6))
            elif not is_fraction(digits) and integer(digits) > 2:
                step = max(1, round(integer(digits) / 3))
                moved = str(integer(digits) + (step if up else -step))
            else:
                continue
            yield self.in_place("third up" if up else "third down", match, moved + suffix)

    def numbers(self) -> Iterator[tuple[re.Match, str, str]]:
        """Constants, with their digits and the letters behind these."""
        for match in CONSTANT.finditer(self.mask):
            if re.search(r"(?:\)|const|override) =\s*$", self.mask[: match.start()][-20:]):
                continue  # a pure virtual function
            digits, suffix = re.fullmatch(r"(0[xX][0-9a-fA-F']+|[\d'.eE+-]+?)([uUlLzZfF]*)", match[0]).groups()
            yield match, digits.replace("'", ""), suffix

    def booleans(self) -> Iterator[Site]:
        for match in BOOLEAN.finditer(self.mask):
            yield self.in_place("boolean", match, "false" if match[0] == "true" else "true")

    def in_place(self, kind: str, match: re.Match, other: str) -> Site:
        """A constant turned into another. A declaration that is constexpr becomes const for it."""
        start, end = match.span()
        guarded = f"({SWITCH} ? {other} : {match[0]})"
        statement = max(self.mask.rfind(char, 0, start) for char in ";{}")
        declared = re.compile(r"\b(static |inline )?constexpr ").search(self.mask, statement + 1, start)
        if declared and "(" not in self.mask[declared.end() : start].split("=")[0]:
            qualifier = (declared[1] or "") + "const "
            if declared[1] == "static " and self.path.endswith(".h"):
                qualifier = "static inline const "
            guarded = qualifier + self.code[declared.end() : start] + guarded
            return self.site(kind, declared.start(), end, other, guarded, shown=(start, end))
        return self.site(kind, start, end, other, guarded)

    def conditions(self) -> Iterator[Site]:
        for match in CONDITION.finditer(self.mask):
            if "constexpr" in match[0]:
                continue
            start, end = match.end(), self.matching(match.end() - 1)
            separator = self.mask.rfind(";", start, end)
            start = separator + 2 if separator >= 0 else start
            if re.search(r"[^=!<>]=[^=]", self.mask[start:end]):
                continue  # a declaration
            condition = self.one_line(start, end)
            guarded = f"{SWITCH} ? !({condition}) : !!({self.code[start:end]})"
            yield self.site("condition", start, end, f"!({condition})", guarded)

    def returns(self) -> Iterator[Site]:
        for match in RETURN.finditer(self.mask):
            end = match.end()
            if match[1].count("{") != match[1].count("}"):  # a lambda's statements end before the return does
                continue
            if match[1] in ("true", "false", "{}", "nullptr", "std::nullopt"):
                continue
            if self.returns_reference(match.start()):
                continue  # nothing that lasts could take its place
            guarded = f"{{ if ({SWITCH}) return {{}}; {self.code[match.start():end]} }}"
            yield self.site("return", match.start(), end, "return {};", guarded)

    def statements(self) -> Iterator[Site]:
        for match in STATEMENT.finditer(self.mask):
            start = match.start(1)
            if NO_STATEMENT.match(self.mask, start):
                continue
            end, depth = start, 0
            while end < len(self.mask) and not (depth == 0 and self.mask[end] in ";{}"):
                depth += (self.mask[end] in "([{") - (self.mask[end] in ")]}")
                if depth < 0:
                    break
                end += 1
            if end >= len(self.mask) or self.mask[end] != ";":
                continue
            if not self.is_removable(self.mask[start:end]):
                continue
            guarded = f"{{ if (!{SWITCH}) {self.code[start : end + 1]} }}"
            yield self.site("statement", start, end + 1, "", guarded)

    @staticmethod
    def is_removable(statement: str) -> bool:
        """A call, an assignment or a step; no declaration, which would have two words before anything else."""
        statement = statement.removeprefix("Q_EMIT ")
        target = r"[*+\-(]*[\w:.\->)\[\]]+(?:\([^;]*?\)(?:\.|->)[\w:]+)*"
        if re.fullmatch(target + r"(?:<[\w:, ]+>)?\(.*\)", statement, re.S):
            return True
        if re.match(target + r" (?:[+\-*/|&]?=) ", statement):
            return True
        return bool(re.fullmatch(r"(?:\+\+|--)[\w.\->]+", statement))

    def sites(self, thirds: str | None = None) -> Iterator[Site]:
        """All of them; with "up" or "down" only thresholds, by a third in that direction."""
        if thirds:
            yield from self.thirds(thirds == "up")
            return
        yield from self.operators()
        yield from self.constants()
        yield from self.booleans()
        yield from self.conditions()
        yield from self.returns()
        yield from self.statements()

    def falsified(self, chosen: list[tuple[int, Site]]) -> str:
        """The text with all of these sites guarded. To the compiler it is a system header, which it has no warnings
        for; it is told of lines by their names and numbers in the source."""
        text = self.text
        for number, site in sorted(chosen, key=lambda each: each[1].start, reverse=True):
            guarded = site.guarded.replace("{number}", str(number))
            text = text[: site.start] + guarded + text[site.end :]
        text = TABLE.sub(lambda m: m[0].replace("constexpr", "const", 1) if "mutant(" in m[0] else m[0], text)
        once = "#pragma once\n" if self.path.endswith(".h") else ""
        return f'{once}#pragma GCC system_header\n#include "Mutant.h"\n#line 1 "{self.path}"\n{text}'
