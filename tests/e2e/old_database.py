#!/usr/bin/env python3
"""Starts the program beside a database of an older version, and looks at the copy of the day.

usage: old_database.py EXECUTABLE DATABASE
"""

import contextlib
import datetime
import os
import pathlib
import shutil
import sqlite3
import subprocess
import sys
import tarfile

from desktop import Program, check, run_on_displays, wait_for

MAIN = "Varnholt Set Creator"
QUESTION = "Older database"
OLD = pathlib.Path(__file__).parent.parent / "exchange/data/orv_jet4.tar.xz"


def test_old_database(display, executable, database, folder):
    program = Program(display, executable, database, folder)
    home = os.path.dirname(program.database)
    os.makedirs(home, exist_ok=True)
    if home == folder:
        shutil.copy(os.path.join(os.path.dirname(executable), "read_old_database"), folder)
    with tarfile.open(OLD) as archive:
        old = archive.extractfile("orv_jet4.mdb").read()
    with open(program.database, "wb") as file:
        file.write(old)

    def now():
        with open(program.database, "rb") as file:
            return file.read()

    program.start()
    display.focus(QUESTION)
    display.key("alt+n")
    wait_for("the end of the program", lambda: program.process.poll() is not None)
    check(now() == old, "No has changed the file")

    program.start()
    display.focus(QUESTION)
    display.key("Return")
    display.focus(MAIN)
    with open(os.path.join(home, "orv-old.mdb"), "rb") as file:
        check(file.read() == old, "the old file is not kept")
    check(program.value("SELECT COUNT(*) FROM tblCard") == 30, "cards are missing")

    copy = os.path.join(home, "backups", f"orv-{datetime.date.today().isoformat()}.mdb")
    wait_for("the copy of the day", lambda: os.path.exists(copy))
    with contextlib.closing(sqlite3.connect(copy)) as connection:
        check(connection.execute("SELECT COUNT(*) FROM tblCard").fetchone() == (30,), "the copy lacks cards")

    def restore(*arguments):
        tool = os.path.join(os.path.dirname(executable), "orv_set")
        done = subprocess.run([tool, "restore", *arguments, "--database", program.database], text=True, capture_output=True,
                              check=False)
        return done.returncode, done.stdout, done.stderr

    check(restore() == (0, copy + "\n", ""), f"the copies are {restore()}")
    before = now()
    status, _, told = restore(copy)
    check(status == 1 and "another program is using the database" in told, f"while the program runs: {status} {told}")
    check(now() == before, "a database in use was replaced")
    program.kill()
    status, told, _ = restore(copy)
    check(status == 0 and "What was there is kept as " in told, f"restoring tells {told!r}")
    with open(told.removesuffix("\n").removeprefix("What was there is kept as "), "rb") as file:
        check(file.read() == before, "what was there is not kept")
    check(restore() == (0, copy + "\n", ""), "what was kept is told as a copy of a day")


def main():
    executable, database = map(os.path.abspath, sys.argv[1:])
    return run_on_displays([test_old_database], executable, database)


if __name__ == "__main__":
    sys.exit(main())
