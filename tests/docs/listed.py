"""What is not run as it is written, each with the reason; and what a reader has when a page begins."""

from typing import NamedTuple

import options


class Listed(NamedTuple):
    pattern: str
    reason: str
    check: "options.Check"


EXCEPTIONS = [
    Listed(r"sudo apt-get (install|remove|purge) .*", "installs or removes", options.no_options),
    Listed(r"packaging/install-packages .*", "installs; the test packages runs it", options.sections),
    Listed(r"sudo cmake --install .*", "installs; the test installation runs it", options.cmake),
    Listed(r"cmake --preset .*", "configures a build that takes minutes", options.cmake),
    Listed(r"cmake --build .*", "builds, for minutes", options.cmake),
    Listed(r"cmake --workflow .*", "builds and runs tests, for minutes", options.cmake),
    Listed(r"ctest .*", "runs tests", options.ctest),
    Listed(r"\./run-tests( .*)?", "runs tests", options.script),
    Listed(r"\.ci/\w+( .*)?", "runs checks, or changes files of the project", options.script),
    Listed(r"benchmarks/compare-builds", "measures two builds for minutes", options.script),
    Listed(r"docs/images/make", "builds, and changes files of the project", options.script),
    Listed(r"\./run-benchmarks( .*)?", "measures for minutes", options.script),
    Listed(r"\./run-fuzz( .*)?", "fuzzes for as long as one likes", options.script),
    Listed(r"tests/mutations/\w+( .*)?", "runs tests for hours", options.script),
    Listed(r"tests/soak/\w+( .*)?", "measures for minutes", options.script),
    Listed(r"build/asan/tests/torture/torture .*", "runs a test for minutes", options.torture),
]

# In backticks, where a verb or an option is named that needs more to be run.
NAMES = [
    Listed(r"padscope [a-z]+( --[a-z-]+( csv| json| rows)?)*", "names a verb", options.padscope),
    Listed(r"tendro-host( --[a-z-]+)*", "names an option", options.host),
    Listed(r"cmake --install", "names what installs", options.cmake),
    Listed(r"padscope 1\.1", "is in a file's header", options.no_check),
    Listed(r"padscope capture 1, session \w+", "is in a file's header", options.no_check),
    Listed(r"tshark -w", "names what writes such files", options.no_check),
    Listed(r"ld\.so --list", "names what finds libraries alike", options.no_check),
]

# Text of commands, and what stands in its place. Capitals are for the reader to fill in.
IN_OTHER_WORDS = {
    # The same reader without a window.
    r"^wireshark (-X \S+ )?(\S+)$": r"tshark \1-r \2",
    r"\bHOST\b": "tendro-host",
    r"\bSTART\b": "'2020-01-01 00:00:00'",
    r"\bSTOP\b": "'2030-01-01 00:00:00'",
}

# Captures that a page works on and leaves to its reader to have: name and how it is made.
CAPTURES = {
    "fault.pcapng": "cp docs/all-kinds.pcapng fault.pcapng",
    "before.pcapng": "cp docs/all-kinds.pcapng before.pcapng",
    "sent.pcapng": "padscope redact docs/all-kinds.pcapng -o sent.pcapng",
    "after.pcapng": "padscope redact docs/all-kinds.pcapng -o after.pcapng",
}

# How commands end that do not end with 0.
STATUS = {"padscope diff before.pcapng after.pcapng": 1}
