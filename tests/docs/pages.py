"""What the pages tell to type: whole lines of indented blocks, and what is in backticks and begins with a program."""

import os
import pathlib
import re
from typing import Iterator, NamedTuple

import markdown

PROGRAMS = {"padscope", "tendro-host", "apt-cache", "apt-get", "capinfos", "cat", "cd", "cmake", "cp", "ctest", "dpkg",
            "dpkg-deb", "editcap", "export", "git", "grep", "kill", "ld.so", "less", "lintian", "ls", "man", "mergecap", "mkdir",
            "nice", "ninja", "python3", "sh", "sudo", "tail", "tcpdump", "tshark", "wireshark", "xvfb-run"}
NO_COMMANDS = {"text", "mermaid", "json", "jsonc"}
ASSIGNMENTS = re.compile(r"^([A-Z_]+=\S* +)*")
OPTION = re.compile(r"(?<!\S)--?[A-Za-z]")


class Command(NamedTuple):
    place: str
    text: str
    in_block: bool


class Options(NamedTuple):
    """Options alone, or behind a verb of padscope's."""

    place: str
    text: str


def program(root: pathlib.Path, text: str) -> str:
    """The word that is run, or nothing where there is none."""
    word = ASSIGNMENTS.sub("", text).split(" ")[0]
    path = root / word
    in_project = "/" in word and path.is_file() and os.access(path, os.X_OK)
    known = word in PROGRAMS or word.startswith("build/") or in_project
    return word if known or word != text.split(" ")[0] else ""


def in_block(place: str, line: markdown.Line) -> Iterator[Command]:
    if line.block not in ("", *NO_COMMANDS):
        raise SystemExit(f"{place}: a block of {line.block}: commands are indented, anything else is {NO_COMMANDS}")
    if not line.block:
        for text in re.sub(r" +# .*", "", line.text.strip()).split(" && "):
            yield Command(place, text, True)


def is_script(root: pathlib.Path, word: str) -> bool:
    """Is there to be typed by its name alone."""
    path = root / word
    return "/" in word and path.is_file() and os.access(path, os.X_OK) and path.suffix == ""


def in_backticks(root: pathlib.Path, place: str, text: str, verbs: "set[str]") -> "Iterator[Command | Options]":
    words = text.split(" ")
    if len(words) == 1 and not text.startswith("-") and not is_script(root, text):
        # The name of a program or a file.
        return
    if program(root, text):
        yield Command(place, text, False)
    elif text.startswith("-") and OPTION.match(text) or words[0] in verbs and OPTION.search(text):
        yield Options(place, text)
    elif OPTION.search(text):
        # Of a program that is not known here.
        yield Command(place, text, False)


def told(root: pathlib.Path, page: pathlib.Path, verbs: "set[str]") -> "Iterator[Command | Options]":
    """In the order of the page."""
    text = page.read_text()
    spans = list(markdown.spans(text))
    for line in markdown.lines(text):
        place = f"{page.relative_to(root)}:{line.number}"
        if line.block is not None:
            yield from in_block(place, line)
        for span in spans:
            if span.number == line.number:
                yield from in_backticks(root, place, span.text, verbs)
