#!/usr/bin/env python3
"""Opens files of sets as a desktop does on a double click, with and without a window that runs already.

usage: opened_files.py EXECUTABLE DATABASE        (orv_set lies beside EXECUTABLE)
"""

import contextlib
import os
import pathlib
import shutil
import signal
import socket
import subprocess
import sys

from desktop import Failure, Program, check, run_on_displays, wait_for

MAIN = "Varnholt Set Creator"
QUESTION = "Bring in a set"
SET = "The Winter Roads"
SETS = "SELECT COUNT(*) FROM tblSet"
NEW_SET = (80, 80)  # the button in the window, in pixels


class Desk:
    """A user with a file of a set, which holds one more for the database."""

    def __init__(self, display, executable, database, folder):
        self.display = display
        self.program = Program(display, executable, database, folder)
        self.file = os.path.join(folder, "roads.orvset")
        source = shutil.copyfile(database, os.path.join(folder, "source.mdb"))  # an installed program makes its own at the first start
        subprocess.run([os.path.join(os.path.dirname(executable), "orv_set"), "save", self.file, "--set", SET,
                        "--database", source], check=True)
        self.before = 2

    def start(self, *arguments):
        program = self.program.beside()
        program.start(*arguments)
        return program

    def window(self):
        program = self.start()
        self.display.focus(MAIN)
        wait_for("the window to listen", self.sockets)
        return program

    def sockets(self):
        return list(pathlib.Path(self.program.runtime).rglob("*.socket"))

    def expect_end(self, program, status):
        check(program.process.wait(20) == status, f"status {program.process.returncode}: {program.log()}")

    def answer(self, key, title=QUESTION):
        self.display.focus(title)
        self.display.key(key)
        self.display.gone(title)

    def expect_sets(self, more):
        if not os.path.exists(self.program.database):
            return check(more == 0, "no window has opened yet")
        return self.program.wait_value(self.before + more, SETS)


def test_without_a_window(*scene):
    desk = Desk(*scene)
    desk.start("roads.orvset")  # as seen from the folder that it is started in
    desk.answer("Return")
    desk.expect_sets(1)
    check(desk.program.value("SELECT SetName FROM tblSet ORDER BY SetID DESC") == f"{SET} (2)", "the name")


def test_the_window_that_runs_takes_it(*scene):
    desk = Desk(*scene)
    first = desk.window()
    for key, more in (("Escape", 0), ("Return", 1)):
        desk.expect_end(desk.start(desk.file), 0)
        desk.answer(key)
        desk.expect_sets(more)
    # It waits until a dialog is closed.
    desk.display.click(desk.display.focus(MAIN), *NEW_SET)
    desk.display.focus("Set")
    desk.expect_end(desk.start(desk.file), 0)
    check(desk.display.window(QUESTION) is None, "a question over a dialog")
    desk.answer("Escape", "Set")
    desk.answer("Return")
    desk.expect_sets(2)
    # Without a file there are two windows as ever; either takes one.
    second = desk.start()
    wait_for("two windows", lambda: desk.display.count(MAIN) == 2)
    wait_for("both to listen", lambda: len(desk.sockets()) == 2)
    first.kill()
    desk.expect_end(desk.start(desk.file), 0)
    desk.answer("Return")
    desk.expect_sets(3)
    second.kill()
    third = desk.start(desk.file)
    desk.answer("Return")
    desk.expect_sets(4)
    check(third.process.poll() is None and len(desk.sockets()) == 1, f"what killed windows have left: {desk.sockets()}")


def test_a_window_that_hangs(*scene):
    desk = Desk(*scene)
    first = desk.window()
    first.process.send_signal(signal.SIGSTOP)
    second = desk.start(desk.file)
    desk.answer("Return", "Open a set")
    desk.expect_end(second, 1)
    first.process.send_signal(signal.SIGCONT)
    with contextlib.suppress(Failure):
        wait_for("nothing", lambda: desk.display.window(QUESTION), limit=2)
        raise AssertionError("a file that was given up comes up")
    desk.expect_sets(0)


def test_peers_that_send_anything(*scene):
    desk = Desk(*scene)
    first = desk.window()
    peers = []
    for content in (b"", b"T" * 100000, b"\x4f\x52\x56\x01" + b"\xff" * 70000, b"\x4f\x52\x56\x01\xff\xff\xff\xf0TT"):
        for _ in range(10):
            peer = socket.socket(socket.AF_UNIX)
            peer.settimeout(1)
            peer.connect(str(desk.sockets()[0]))
            with contextlib.suppress(OSError):
                peer.sendall(content)
            peers.append(peer)
    for peer in peers:
        peer.close()
    desk.expect_end(desk.start(desk.file), 0)
    desk.answer("Escape")
    check(first.process.poll() is None, first.log())


def test_no_way_to_a_window(*scene):
    """What is missing is told, in place of a crash."""
    desk = Desk(*scene)
    for platform in ("wayland", "xcb"):
        environment = {key: value for key, value in os.environ.items() if key not in ("DISPLAY", "WAYLAND_DISPLAY")}
        done = subprocess.run([desk.program.executable], env={**environment, "QT_QPA_PLATFORM": platform}, text=True,
                              capture_output=True, check=False, timeout=20)
        check(done.returncode == 1 and "libqt6gui6" in done.stderr, f"{platform}: {done.returncode} {done.stderr!r}")


def test_wrong_usage(*scene):
    """Told without a display, and nothing is started."""
    desk = Desk(*scene)
    for arguments, word in ((["--foo"], "Unknown option 'foo'"), ([desk.file, "b.orvset"], "Unknown argument: b.orvset")):
        environment = {key: value for key, value in os.environ.items() if key != "DISPLAY"}
        done = subprocess.run([desk.program.executable, *arguments], env=environment, text=True, capture_output=True, check=False, timeout=20)
        check(done.returncode == 2 and word in done.stderr, f"{arguments}: {done.returncode} {done.stderr!r}")
    desk.expect_sets(0)


if __name__ == "__main__":
    sys.exit(run_on_displays([test_without_a_window, test_the_window_that_runs_takes_it, test_a_window_that_hangs,
                              test_peers_that_send_anything, test_no_way_to_a_window, test_wrong_usage], *map(os.path.abspath, sys.argv[1:])))
