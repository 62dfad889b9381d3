#!/usr/bin/env python3
"""The disk and other programs fail the running program; no edit made before may be lost.

usage: failures.py EXECUTABLE DATABASE
"""

import datetime
import os
import shutil
import sqlite3
import sys

from desktop import Program, check, run_on_displays, wait_for
from small_disk import SmallDisk, enter_own_mounts

MAIN = "Varnholt Set Creator"
ERROR = "Varnholt Card Set Creator"
IN_USE = "Database in use"
CARDS = (48, 15)  # the toolbar's button of the card editor, in pixels
TITLE = "SELECT Title FROM tblCard WHERE SetID = 1 AND Nr = ?"


class Window:
    """One running program with its card editor in view, on the first card of the first set."""

    def __init__(self, display, program):
        self.display = display
        self.program = program
        others = self.windows()
        program.start()
        self.window = wait_for("the window", lambda: next(iter(self.windows() - others), None))
        self.focus()
        display.click(self.window, *CARDS)
        display.key("alt+t")

    def windows(self):
        return set(self.display.xdotool("search", "--onlyvisible", "--name", f"^{MAIN}$", check=False).split())

    def focus(self):
        self.display.xdotool("windowfocus", "--sync", self.window)

    def type(self, text, number=1):
        """Replaces the title and waits until it is stored."""
        self.focus()
        self.display.key("ctrl+a")
        self.display.type(text)
        self.program.wait_value(text, TITLE, number)

    def expect_error(self, number, words):
        """A box tells the error; behind it the program ends."""
        self.display.focus(ERROR)
        told = self.program.log()
        check(f"Run-time error '{number}':" in told and words in told, f"the error told is {told!r}")
        self.display.key("Return")
        wait_for("the end of the program", lambda: self.program.process.poll() is not None)
        check(self.program.process.returncode == 1, f"status {self.program.process.returncode}")

    def end(self):
        self.program.kill()


def fail(window, number, words, provoke, restore, meanwhile=lambda: None):
    """An edit, a failure at the next key, and the edit found again by the next start."""
    window.type("Before the failure")
    undo = provoke()
    window.focus()
    window.display.key("x")
    meanwhile()
    window.expect_error(number, words)
    restore(undo)
    check(window.program.value("PRAGMA integrity_check") == "ok", "the database is damaged")
    found = window.program.value(TITLE, 1)
    check(found == "Before the failure", f"after the failure the title reads {found!r}")
    again = Window(window.display, window.program)
    again.type("Behind the failure")
    again.end()


def nearly_full_disk(executable, database, folder):
    """A disk with room for the program and little more."""
    kilobytes = (os.path.getsize(executable) + os.path.getsize(database)) // 1024 + 256
    return SmallDisk(os.path.join(folder, "disk"), kilobytes)


def test_no_room_for_copy(display, executable, database, folder):
    """It is told once, and the program goes on without."""
    with nearly_full_disk(executable, database, folder) as disk:
        program = Program(display, executable, database, disk.folder)
        program.start()
        display.focus("Copy of the database")
        display.key("Return")
        display.gone("Copy of the database")
        program.kill()
        window = Window(display, program)
        window.type("Typed")
        check(not os.path.exists(os.path.join(disk.folder, "backups")), "a copy was begun")
        window.end()
        # With today's copy there nothing is missing, and nothing is told.
        program.set("Database", "NoRoomForCopy", "")
        copies = os.path.join(disk.folder, "backups")
        os.mkdir(copies)
        open(os.path.join(copies, f"orv-{datetime.date.today()}.mdb"), "w").close()
        window = Window(display, program)
        display.gone("Copy of the database")
        window.end()


def test_full_disk(display, executable, database, folder):
    with nearly_full_disk(executable, database, folder) as disk:
        program = Program(display, executable, database, disk.folder)
        program.set("Database", "NoRoomForCopy", "told")
        program.log_path = os.path.join(folder, "log")  # what it tells needs room, too
        window = Window(display, program)
        fail(window, 61, "Disk full", disk.fill, os.remove)


def test_no_journal(display, executable, database, folder):
    window = Window(display, Program(display, executable, database, folder))
    journal = window.program.database + "-journal"

    def block():
        os.mkdir(journal)
        return journal

    fail(window, 75, "Path/File access error: disk I/O error (Is a directory)", block, os.rmdir)


def test_read_only_folder(display, executable, database, folder):
    """The file alone can be written to, and so no edit can be made safe."""
    with SmallDisk(os.path.join(folder, "disk"), 400000) as disk:
        program = Program(display, executable, database, disk.folder)
        shutil.move(program.database, folder)
        disk.lend(os.path.join(folder, "orv.mdb"))
        program.log_path = os.path.join(folder, "log")
        window = Window(display, program)
        fail(window, 75, "unable to open database file (Read-only file system)", disk.make_read_only,
             lambda _: disk.make_writable())


def lock(program, kind="IMMEDIATE"):
    other = sqlite3.connect(program.database, isolation_level=None)
    other.execute("BEGIN " + kind)
    return other


def test_locked(display, executable, database, folder):
    """Another program that writes for long: what was typed is stored once it is done, if the user waits for that."""
    window = Window(display, Program(display, executable, database, folder))
    window.type("Typed")
    other = lock(window.program)
    window.focus()
    display.key("x")
    display.focus(IN_USE)
    other.close()
    display.key("Return")
    window.program.wait_value("Typedx", TITLE, 1)

    def refuse():
        display.focus(IN_USE)
        display.key("Escape")

    fail(window, 70, "another program is using the database", lambda: lock(window.program), sqlite3.Connection.close,
         refuse)


def test_locked_start(display, executable, database, folder):
    """A database that is in use isn't missing."""
    program = Program(display, executable, database, folder)
    other = lock(program, "EXCLUSIVE")
    program.start()
    display.focus(IN_USE)
    display.key("Escape")
    display.focus(ERROR)
    check("another program is using the database" in program.log(), program.log())
    program.kill()
    program.start()
    display.focus(IN_USE)
    other.close()
    display.key("Return")
    display.focus(MAIN)
    program.kill()


def test_read_only_settings(display, executable, database, folder):
    """The starts can't be counted, and the window's place can't be kept."""
    program = Program(display, executable, database, folder)
    settings = os.path.join(folder, "settings")
    shutil.rmtree(settings)
    with open(settings, "wb"):
        pass
    program.start()
    display.focus(MAIN)
    display.key("F6", "space")  # the exit button
    wait_for("the end of the program", lambda: program.process.poll() is not None)
    check(program.process.returncode == 0, f"status {program.process.returncode}: {program.log()}")


def test_read_only_disk(display, executable, database, folder):
    with SmallDisk(os.path.join(folder, "disk"), 400000) as disk:
        program = Program(display, executable, database, disk.folder)
        with open(program.database, "rb") as file:
            before = file.read()
        disk.make_read_only()
        program.log_path = os.path.join(folder, "log")
        program.start()
        display.focus("Missing database")
        display.key("Return")
        wait_for("the end of the program", lambda: program.process.poll() is not None)
        with open(program.database, "rb") as file:
            check(file.read() == before, "a file on a read-only disk has changed")


def test_two_programs(display, executable, database, folder):
    """Both write to one file, and each edit is kept."""
    program = Program(display, executable, database, folder)
    first = Window(display, program)
    second = Window(display, program.beside())
    number = program.value("SELECT MAX(Nr) FROM tblCard WHERE SetID = 1") + 1
    display.key("ctrl+n")
    program.wait_value(f"CARD {number}", TITLE, number)
    for text in ("One", "Two", "Three"):
        first.type(text + " of the first")
        second.type(text + " of the second", number)
    check(program.value(TITLE, 1) == "Three of the first", "the first program's edit is lost")
    first.end()
    second.end()


def main():
    executable, database = map(os.path.abspath, sys.argv[1:])
    tests = [test_no_journal, test_locked, test_locked_start, test_read_only_settings, test_two_programs]
    if enter_own_mounts():
        tests += [test_no_room_for_copy, test_full_disk, test_read_only_folder, test_read_only_disk]
    else:
        print("not tried, for nothing can be mounted here: full and read-only disks")
    return run_on_displays(tests, executable, database)


if __name__ == "__main__":
    sys.exit(main())
