"""Whether there is what a command names that is not run: options, presets, targets, tests, sections."""

import functools
import json
import pathlib
import re
import subprocess
from typing import Callable, NamedTuple


class Project(NamedTuple):
    root: pathlib.Path
    build: pathlib.Path
    padscope: str
    host: str


# Returns what there is not.
Check = Callable[[Project, str], "list[str]"]
LONG_OR_SHORT = re.compile(r"(?<![^\s|\[])(--?[A-Za-z][\w-]*)")


@functools.lru_cache(maxsize=None)
def printed(*command: str) -> str:
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False)
    return done.stdout


def missing(text: str, known: str) -> "list[str]":
    """The options in a text that are not in a help."""
    names = {re.sub(r"^(-D\w*)$", "-D", option) for option in LONG_OR_SHORT.findall(text)}
    return [name for name in sorted(names) if not re.search(rf"(?<![\w-]){name}(?![\w-])", known)]


def verbs(project: Project) -> "set[str]":
    return set(re.findall(r"^  ([a-z]+) ", printed(project.padscope, "--help").split("Subcommands:")[1], re.M))


def help_of(project: Project, verb: str) -> str:
    return printed(project.padscope, verb, "--help")


def no_options(_: Project, text: str) -> "list[str]":
    return missing(text, "")


def no_check(_: Project, __: str) -> "list[str]":
    return []


def padscope(project: Project, text: str) -> "list[str]":
    """The verb comes first, or behind the program."""
    verb = next((word for word in text.split(" ") if word != "padscope"), "")
    return missing(text, help_of(project, verb)) if verb in verbs(project) else [verb]


def host(project: Project, text: str) -> "list[str]":
    return missing(text, printed(project.host, "--help"))


def sections(project: Project, text: str) -> "list[str]":
    known = re.findall(r"^\[(.*)\]$", (project.root / "packaging/packages.txt").read_text(), re.M)
    return [word for word in text.split(" ")[1:] if word not in known]


def preset(project: Project, kind: str, text: str) -> "list[str]":
    presets = json.loads((project.root / "CMakePresets.json").read_text()).get(kind, [])
    names = {each["name"] for each in presets if not each.get("hidden") and each["name"] != "base"}
    return [name for name in re.findall(r"--preset (\S+)", text) if name not in names]


def variables(project: Project, text: str) -> "list[str]":
    cache = (project.build / "CMakeCache.txt").read_text()
    return [name for name in re.findall(r"-D(\w+)=", text) if not re.search(rf"^{name}:", cache, re.M)]


def components(project: Project, text: str) -> "list[str]":
    scripts = [path.read_text() for path in project.build.rglob("cmake_install.cmake")]
    return [name for name in re.findall(r"--component (\S+)", text)
            if not any(f'COMPONENT STREQUAL "{name}"' in script for script in scripts)]


def targets(project: Project, text: str) -> "list[str]":
    rules = (project.build / "build.ninja").read_text()
    return [name for name in re.findall(r"--target (\S+)", text) if f"\nbuild {name}: " not in rules]


def cmake(project: Project, text: str) -> "list[str]":
    kind = next((word for word in ("build", "workflow", "install") if f"--{word}" in text), "configure")
    usage = printed("cmake", "--help") if kind == "configure" else f"--{kind}" + printed("cmake", f"--{kind}")
    return (missing(text, usage) + preset(project, kind + "Presets", text) + variables(project, text)
            + components(project, text) + targets(project, text))


def ctest(project: Project, text: str) -> "list[str]":
    absent = missing(text, printed("ctest", "--help")) + preset(project, "testPresets", text)
    for pattern in re.findall(r"-R (\S+)", text):
        listed = printed("ctest", "--test-dir", str(project.build), "-N", "-R", pattern.strip("'"))
        absent += [] if re.search(r"Total Tests: [1-9]", listed) else [pattern]
    return absent


def script(project: Project, text: str) -> "list[str]":
    """Options and words of a script stand in it outside of comments, files are there; capitals and numbers are the
    reader's.
    """
    path, *words = text.split(" ")
    if not (project.root / path).is_file():
        return [path]
    code = re.sub(r"^\s*#.*", "", (project.root / path).read_text(), flags=re.M)
    files = [re.sub(r"^build/\w+", str(project.build), word) for word in words if "/" in word]
    return [file for file in files if not (project.root / file).exists()] + [
        word for word in words if "/" not in word and not re.fullmatch(r"\[?[A-Z0-9.]+\]?", word)
        and not re.search(rf"(?<![\w-]){re.escape(word)}(?![\w-])", code)]


def torture(project: Project, text: str) -> "list[str]":
    code = (project.root / "tests/torture/torture.cpp").read_text()
    return [word for word in re.findall(r"--(\S+)", text) if f'"{word}"' not in code]


def anywhere(project: Project, text: str) -> "list[str]":
    """Options alone, which some program of the project has, or one of those that build and install it."""
    if text.split(" ")[0] in verbs(project):
        return padscope(project, text)
    known = [help_of(project, verb) for verb in sorted(verbs(project))] + [printed(project.host, "--help")]
    known += [printed("cmake", "--help"), printed("cmake", "--install"), printed("cmake", "--build")]
    return missing(text, "\n".join(known)) + variables(project, text) + components(project, text)
