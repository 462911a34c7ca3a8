"""Markdown as far as the project's pages use it."""

import collections
import pathlib
import re
from typing import Iterator, NamedTuple

FENCE = re.compile(r"^ *```(\w*)$")
# Behind a list's number or dash a block is indented by four more.
ITEM = re.compile(r"^( *)(\d+\.|-) +")


class Line(NamedTuple):
    number: int
    text: str
    # None in prose, "" in an indented block, else the word behind the fence.
    block: "str | None"


class Span(NamedTuple):
    number: int
    text: str


def documents(root: pathlib.Path) -> "list[pathlib.Path]":
    """Every page below a folder but for what is built there."""
    found = []
    for folder in [root, *(path for path in root.iterdir() if path.is_dir())]:
        if folder.name.startswith(".") or folder.name in ("build", "out"):
            continue
        found += folder.glob("*.md") if folder == root else folder.rglob("*.md")
    return sorted(found)


def lines(text: str) -> Iterator[Line]:
    """All lines but for the fences themselves."""
    fence = None
    needed = 4
    begins = True
    for number, line in enumerate(text.splitlines(), 1):
        marker = FENCE.match(line)
        if marker and fence is None:
            fence = marker[1] or "without a word"
        elif marker:
            fence = None
        elif fence is not None:
            yield Line(number, line, fence)
        elif not line.strip():
            begins = True
        else:
            indent = len(line) - len(line.lstrip())
            item = ITEM.match(line)
            indented = begins and indent >= needed
            if item and not indented:
                needed = len(item[0]) + 4
            elif indent == 0:
                needed = 4
                indented = False
            begins = indented
            yield Line(number, line, "" if indented else None)


def prose(text: str) -> str:
    """The text without its blocks."""
    return "\n".join(line.text for line in lines(text) if line.block is None)


def paragraphs(text: str) -> "Iterator[list[Line]]":
    """Lines of prose that follow each other."""
    paragraph: "list[Line]" = []
    for line in lines(text):
        if line.block is None and paragraph and line.number == paragraph[-1].number + 1:
            paragraph.append(line)
        else:
            yield paragraph
            paragraph = [line] if line.block is None else []
    yield paragraph


def spans(text: str) -> Iterator[Span]:
    """What stands in backticks in prose, with the line where it begins."""
    for paragraph in paragraphs(text):
        joined = "\n".join(line.text for line in paragraph)
        for match in re.finditer(r"(`+)(.+?)\1", joined, re.S):
            number = paragraph[0].number + joined.count("\n", 0, match.start())
            yield Span(number, re.sub(r"\s*\n\s*", " ", match[2].strip()))


def anchors(text: str) -> "set[str]":
    """The names by which a page's headings are linked."""
    names: "collections.Counter[str]" = collections.Counter()
    found: "set[str]" = set()
    for line in lines(text):
        heading = re.match(r"#+ +(.*)", line.text) if line.block is None else None
        if heading:
            name = re.sub(r"[^\w\- ]", "", heading[1].lower()).replace(" ", "-")
            found.add(f"{name}-{names[name]}" if names[name] else name)
            names[name] += 1
    return found
