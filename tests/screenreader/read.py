"""Reads and drives the tool as a screen reader does: over the accessibility bus alone.

    read.py HOST PLUGINS FOLDER LANGUAGE

Needs a session bus and a display. Fails unless the window reads as in FOLDER/LANGUAGE.txt, and unless what is done
through the interfaces has its effect.
"""

import difflib
import os
import pathlib
import re
import signal
import subprocess
import sys
import time

from gi.repository import Gio, GLib

PATIENCE = 20  # seconds

WORDS = {
    "english": {
        "code": "en",
        "command": "Command",
        "found": "1 device found.",
        "tabs": ("Bar Graph", "Monitor"),
        "slider": "Fast Computer - Slow Computer",
        "channels": [
            ("X fine", "0, 60 and 120 degrees: 1000, 0, 0. Magnitude: 1000. Angle: 0 of 8192."),
            ("Y fine", "0, 60 and 120 degrees: 0, 1000, 1000. Magnitude: 1732. Angle: 2048 of 8192."),
            ("X coarse", "0, 60 and 120 degrees: -1000, 0, 0. Magnitude: 1000. Angle: 4096 of 8192."),
            ("Y coarse", "0, 60 and 120 degrees: 9, 0, 0. Magnitude: 9. Angle: 0 of 8192."),
        ],
        "send": "Sends the command to the first board",
    },
    "german": {
        "code": "de",
        "command": "Befehl",
        "found": "1 Gerät gefunden.",
        "tabs": ("Balkenanzeige", "Monitor"),
        "slider": "Schneller Rechner - Langsamer Rechner",
        "channels": [
            ("X fein", "0, 60 und 120 Grad: 1000, 0, 0. Betrag: 1000. Winkel: 0 von 8192."),
            ("Y fein", "0, 60 und 120 Grad: 0, 1000, 1000. Betrag: 1732. Winkel: 2048 von 8192."),
            ("X grob", "0, 60 und 120 Grad: -1000, 0, 0. Betrag: 1000. Winkel: 4096 von 8192."),
            ("Y grob", "0, 60 und 120 Grad: 9, 0, 0. Betrag: 9. Winkel: 0 von 8192."),
        ],
        "send": "Sendet den Befehl an das erste Board",
    },
}


def until(condition, what):
    """Waits for a condition, handling what the bus tells meanwhile. Returns the condition's value."""
    end = time.monotonic() + PATIENCE
    while time.monotonic() < end:
        while GLib.MainContext.default().iteration(False):
            pass
        try:
            value = condition()
            if value:
                return value
        except GLib.Error:
            pass  # what was asked for is going or not yet there
        time.sleep(0.02)
    sys.exit(f"read.py: waited in vain: {what}")


def enable_accessibility():
    """Tells the session that a screen reader runs, which applications look at."""
    status = ("org.a11y.Status", "IsEnabled", GLib.Variant("b", True))
    Gio.bus_get_sync(Gio.BusType.SESSION).call_sync(
        "org.a11y.Bus", "/org/a11y/bus", "org.freedesktop.DBus.Properties", "Set",
        GLib.Variant("(ssv)", status), None, 0, PATIENCE * 1000, None)


def running_host():
    for application in pyatspi.Registry.getDesktop(0):
        if application:
            application.clear_cache()  # an answer that came too early is kept
            if application.name == "tendro-host" and application.childCount:
                return application
    return None


def below(root):
    """All accessible objects below one, parents first."""
    for child in root:
        if child:
            yield child
            yield from below(child)


def find(root, role, name):
    """The only object of this role and name, once it is there."""

    def only():
        found = [each for each in below(root) if (each.getRoleName(), each.name) == (role, name)]
        return found[0] if len(found) == 1 else None

    return until(only, f"one {role} {name!r}")


def interfaces(object_):
    return pyatspi.utils.listInterfaces(object_)


def line_of(object_):
    """Role, name, description, text and value of an object, in one line."""
    texts = [object_.getRoleName(), object_.name, object_.description]
    if "Text" in interfaces(object_):
        texts.append(object_.queryText().getText(0, -1))
    if "Value" in interfaces(object_):
        texts.append(f"{object_.queryValue().currentValue:g}")
    return " | ".join(texts).rstrip(" |")


def listing(root, depth=0):
    """The tree in lines. Of lists and menus only that they are there: fonts and scenarios vary."""
    for child in root:
        if not child:
            continue
        yield "  " * depth + line_of(child)
        if child.getRoleName() not in ("combo box", "popup menu"):
            yield from listing(child, depth + 1)


def nameless(root):
    """What takes the focus or is read, and has neither name nor description."""
    read = {"label", "menu bar", "popup menu", "tool bar", "status bar", "chart", "tree", "slider", "check box"}
    for each in below(root):
        focusable = each.getState().contains(pyatspi.STATE_FOCUSABLE)
        if (focusable or each.getRoleName() in read) and not each.name and not each.description:
            yield line_of(each)


def check_listing(window, expected):
    # The other box has a number.
    actual = [re.sub(r"^( *combo box) \| \D.*", r"\1 | FONT", line) for line in listing(window)]
    difference = list(difflib.unified_diff(expected.read_text("utf-8").splitlines(), actual,
                                           str(expected), "the window", lineterm=""))
    if difference:
        sys.exit("\n".join(difference))
    unnamed = list(nameless(window))
    if unnamed:
        sys.exit("read.py: without a name: " + "; ".join(unnamed))


def check_slider(page, words):
    """A value that is set is used, and saved at once."""
    slider = find(page, "slider", words["slider"])
    slider.queryValue().currentValue = 750
    settings = pathlib.Path(os.environ["XDG_CONFIG_HOME"], "Corvane", "qorvexgraph.conf")
    until(lambda: slider.queryValue().currentValue == 750, "the slider's value")
    until(lambda: settings.exists() and "bargraph.displayThreshold=750" in settings.read_text("utf-8"),
          "the setting that the slider saves")


def send(tool, words, command):
    line = find(tool, "text", words["command"])
    line.queryEditableText().setTextContents(command)
    actions = line.queryAction()
    does = [actions.getDescription(i) for i in range(actions.nActions)]
    actions.doAction(does.index(words["send"]))
    return line


def check_announcements(announced):
    """Positions come ten times a second; at most one row a second is announced."""
    announced.clear()
    until(lambda: len(announced) >= 1, "an announcement")
    begin = time.monotonic()
    until(lambda: len(announced) >= 4, "three more announcements")
    # The bus may have delayed the first.
    seconds = time.monotonic() - begin
    if seconds < 2.5:
        sys.exit(f"read.py: three more announcements in {seconds:.1f} s")


def drive(application, words, folder, language):
    window = application[0]
    tool = find(window, "filler", "Padscope")
    until(lambda: tool.getState().contains(pyatspi.STATE_SHOWING), "the tool shown")
    check_listing(window, folder / f"{language}.txt")
    bars = find(tool, "filler", words["tabs"][0])
    check_slider(bars, words)

    line = send(tool, words, "?")
    until(lambda: words["found"] in [each.name for each in tool], "the board in the status line")
    until(lambda: line.queryText().getNSelections() == 1, "the command selected")
    for name, text in words["channels"]:
        part = find(bars, "label", name)
        until(lambda: part.queryText().getText(0, -1) == text, f"{name}: {text}")

    row = list(find(tool, "filler", words["tabs"][1]))[-1]
    announced = []
    pyatspi.Registry.registerEventListener(
        lambda event: event.source == row and announced.append(row.name),
        "object:property-change:accessible-name")
    find(tool, "page tab", words["tabs"][1]).queryAction().doAction(0)
    until(lambda: row.name.startswith("Q:"), "a row with a position")
    check_announcements(announced)
    send(tool, words, ".")
    answer = "[.] streaming stopped!"
    until(lambda: row.name == answer, f"the row {answer}")
    until(lambda: announced[-1:] == [answer], f"the announcement of {answer}")


def main(host, plugins, folder, language):
    words = WORDS[language]
    folder = pathlib.Path(folder)
    enable_accessibility()
    # Imported only now: it looks for the bus of accessibility at once.
    global pyatspi
    import pyatspi

    arguments = ["--plugins", plugins, "--simulate", str(folder / "quiet.json"), "--open", "TendroPadscope"]
    environment = dict(os.environ, LC_ALL="en_US.UTF-8", LANGUAGE=words["code"])
    with subprocess.Popen([host, *arguments], env=environment) as process:
        try:
            application = until(running_host, "the host on the bus")
            drive(application, words, folder, language)
            process.send_signal(signal.SIGTERM)
            if process.wait(PATIENCE) != 0:
                sys.exit(f"read.py: the host ended with {process.returncode}")
        finally:
            process.kill()


main(*sys.argv[1:])
