#!/usr/bin/env python3
"""Ends the programs by force at random moments and holds what was acknowledged against what is found.

usage: kills.py FOLDER_OF_PROGRAMS DATABASE --minutes M [--seed N] [--kinds Batch|Typing|Compaction ...]
"""

import argparse
import contextlib
import os
import random
import shutil
import sqlite3
import subprocess
import sys
import tempfile
import threading
import time

from bitmap import read_bitmap
from desktop import Display, Program

MAIN = "Varnholt Set Creator"
CARDS = (48, 15)  # the toolbar's button of the card editor, in pixels
TITLE = "SELECT Title FROM tblCard WHERE SetID = 1 AND Nr = 1"
SET = "The Saltwind Coast"
COMPACT = "Compact the database"
TABLES = ("tblSet", "tblCard", "tblCharacter", "tblLargeCard", "tblCardType", "tblCardBack", "tblFont")


def connect(path):
    return contextlib.closing(sqlite3.connect(path, timeout=20))


def damage(path):
    """What is wrong with a database file, empty if nothing is."""
    try:
        with connect(path) as database:
            found = database.execute("PRAGMA integrity_check").fetchone()[0]
            return "" if found == "ok" else f"damaged: {found}"
    except sqlite3.Error as error:
        return f"damaged: {error}"


def content(path):
    with connect(path) as database:
        return {table: sorted(map(repr, database.execute(f"SELECT * FROM {table}"))) for table in TABLES}


def is_whole(path):
    try:
        if path.endswith("BMP"):
            return bool(read_bitmap(path))
        with open(path, "rb") as file:
            data = file.read()
        return data.endswith(b"\xff\xd9" if path.endswith("JPG") else b"\x3b")
    except Exception:  # pylint: disable=broad-except
        return False


class Batch:
    """Each file that was told is there and whole, and so is each under a card's name."""

    def __init__(self, options, folder):
        self.tool = os.path.join(options.programs, "create_all_cards")
        self.database = os.path.join(folder, "orv.mdb")
        self.out = os.path.join(folder, "out")
        shutil.copyfile(options.database, self.database)

    def kill(self, rand):
        shutil.rmtree(self.out, ignore_errors=True)
        os.makedirs(self.out)
        process = subprocess.Popen(
            [self.tool, "--database", self.database, "--set", SET, "--to", self.out, "--format",
             rand.choice(("BMP", "JPG", "GIF")), *rand.sample(["--number", "--underline"], rand.randint(0, 2))],
            stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        timer = threading.Timer(rand.uniform(0, 1.5), process.kill)
        timer.start()
        told = [line for line in process.stdout.read().split("\n")[:-1] if line.startswith(self.out)]
        process.wait()
        timer.cancel()
        lost = [f"{path} was told and is not there" for path in told if not os.path.exists(path)]
        lost += [f"{name} is cut short" for name in os.listdir(self.out)
                 if not name.startswith(".") and not is_whole(os.path.join(self.out, name))]
        return lost + [what for what in [damage(self.database)] if what]

    def close(self):
        pass


class Typing:
    """What was in the file while the user typed is there after the end, and nothing that was not typed."""

    def __init__(self, options, folder):
        self.display = Display(1300, 1040)
        self.program = Program(self.display, os.path.join(options.programs, "orv"), options.database, folder)
        self.count = 0

    def kill(self, rand):
        display, program = self.display, self.program
        program.write_settings()
        program.start()
        try:
            window = display.focus(MAIN)
            display.click(window, *CARDS)
            display.key("alt+t")
            time.sleep(0.3)  # the field is selected as a whole once the window has come to rest
            display.key("ctrl+a")
            self.count += 1
            start = f"n{self.count}-"
            display.type(start)
            program.wait_value(start, TITLE)
            text = start + "".join(rand.choice("abcdefghijklmnop") for _ in range(60))
            typing = subprocess.Popen(["xdotool", "type", "--delay", "8", text[len(start):]],
                                      env=display.environment(), stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
            end = time.monotonic() + rand.uniform(0, 0.6)
            seen = start
            while time.monotonic() < end:
                seen = program.value(TITLE)
            program.kill()
            typing.wait()  # ended by force it would leave a key down, and the server swallow keys from then on
        finally:
            program.kill()
            display.gone(MAIN)  # or the next start's keys go to what is left of this window
        wrong = damage(program.database)  # takes back what was half written
        found = program.value(TITLE)
        fits = found.startswith(seen) and text.startswith(found)
        lost = [] if fits else [f"of {text!r} was {seen!r} stored, and {found!r} is found"]
        return lost + [wrong] * bool(wrong)

    def close(self):
        self.program.kill()
        self.display.close()


class Compaction:
    """The database is whole and has all its rows, whatever lies beside it."""

    def __init__(self, options, folder):
        self.options = options
        self.display = Display(1300, 1040)
        self.program = Program(self.display, os.path.join(options.programs, "orv"), options.database, folder)
        with connect(self.program.database) as database, database:  # pages to be freed
            database.execute("CREATE TABLE spare (x)")
            database.execute("WITH RECURSIVE n(i) AS (SELECT 1 UNION SELECT i + 1 FROM n WHERE i < 1500) "
                             "INSERT INTO spare SELECT randomblob(4000) FROM n")
            database.execute("DROP TABLE spare")
        shutil.copyfile(self.program.database, self.program.database + ".large")
        self.before = content(self.program.database)

    def kill(self, rand):
        program = self.program
        shutil.copyfile(program.database + ".large", program.database)
        program.write_settings(starts=30)
        program.start()
        try:
            self.display.focus(COMPACT)
            self.display.key("Return")  # Yes has the keyboard
            time.sleep(rand.uniform(0, 0.35))
        finally:
            program.kill()
            self.display.gone(COMPACT)
        wrong = damage(program.database)
        if wrong:
            return [wrong]
        after = content(program.database)
        return [f"{table} differs" for table in TABLES if after[table] != self.before[table]]

    def close(self):
        self.program.kill()
        self.display.close()


KINDS = {kind.__name__: kind for kind in (Batch, Typing, Compaction)}


def main():
    parser = argparse.ArgumentParser(usage=__doc__)
    parser.add_argument("programs"), parser.add_argument("database")
    parser.add_argument("--minutes", type=float, default=1), parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--kinds", nargs="+", choices=KINDS, default=list(KINDS))
    options = parser.parse_args()
    lost_at_all = 0
    for kind in (KINDS[name] for name in options.kinds):
        rand = random.Random(options.seed)
        kills, lost = 0, []
        with tempfile.TemporaryDirectory() as folder:
            scene = kind(options, folder)
            try:
                end = time.monotonic() + options.minutes * 60 / len(options.kinds)
                while time.monotonic() < end:
                    lost += scene.kill(rand)
                    kills += 1
            finally:
                scene.close()
        print(f"{kind.__name__}: {kills} kills of seed {options.seed}, {len(lost)} losses", flush=True)
        print("\n".join(lost), file=sys.stderr, end="\n" if lost else "")
        lost_at_all += len(lost)
    return 1 if lost_at_all else 0


if __name__ == "__main__":
    sys.exit(main())
