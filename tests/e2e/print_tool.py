#!/usr/bin/env python3
"""Runs the tool for sheets over good, bad and impossible input.

usage: print_tool.py TOOL DATABASE
"""

import contextlib
import os
import re
import shutil
import sqlite3
import subprocess
import sys
import time

from batch_tool import run
from desktop import check, run_tests
from small_disk import SmallDisk, enter_own_mounts

SET = "The Saltwind Coast"


class Print:
    """The tool, a copy of the database, and a folder to write to."""

    def __init__(self, tool, database, folder):
        self.tool = tool
        self.database = os.path.join(folder, "orv.mdb")
        self.out = os.path.join(folder, "out")
        self.pdf = os.path.join(self.out, "coast.pdf")
        shutil.copyfile(database, self.database)
        os.environ["XDG_DATA_HOME"] = os.path.join(folder, "data")

    def change(self, statement):
        with contextlib.closing(sqlite3.connect(self.database)) as connection, connection:
            connection.execute(statement)

    def command(self, *options):
        return [self.tool, "--database", self.database, "--set", SET, "--to", self.pdf, *options]

    def run(self, *options):
        os.makedirs(self.out, exist_ok=True)
        return run(self.command(*options))

    def pages(self):
        """Of the file, which another program finds whole."""
        told = subprocess.run(["pdfinfo", self.pdf], text=True, capture_output=True, check=True)
        check(told.stderr == "", f"pdfinfo: {told.stderr}")
        return int(re.search(r"Pages: +(\d+)", told.stdout).group(1))

    def files(self):
        return sorted(os.listdir(self.out))


def test_usage(tool):
    good = ["--database", tool.database, "--set", SET, "--to", tool.pdf]
    table = [
        ([], 2, "--set is needed"),
        (good[:4], 2, "--to is needed"),
        ([*good, "more"], 2, "more"),
        ([*good, "--nonsense"], 2, "nonsense"),
        ([*good, "--paper", "A5"], 2, '"A5" is no value for paper. A4, Letter, A3, or Card'),
        ([*good, "--numbers", "5-1"], 2, '"5-1" is no value for numbers'),
        ([*good, "--bleed", "9"], 2, '"9" is no value for bleed'),
        ([*good[:2], "--set", "None such", *good[4:]], 2, 'There is no set of the name "None such"'),
        (["--database", tool.database + "x", "--list"], 1, "is missing or is no database"),
        ([*good, "--numbers", "999"], 1, "There is nothing to print."),
        (good, 1, "76, Path not found"),
    ]
    for arguments, status, error in table:
        run([tool.tool, *arguments]).expect(status, error)
    check("--back-right" in "".join(run([tool.tool, "--help"]).expect(0).lines), "no help")
    check(run([tool.tool, *good[:2], "--list"]).expect(0).lines == [SET, "The Winter Roads"], "the sets")
    check(not os.path.exists(tool.out), "something was written")


def test_sheets(tool):
    told = tool.run("--numbers", "1-3", "--kinds", "cards").expect(0)
    tool.run("--scale", "400", "--kinds", "large").expect(1, "A card of 321.7 by 270.9 mm doesn't fit on the paper")
    count = int(re.fullmatch(r".*coast\.pdf: \d+ cards on (\d+) sheets", told.lines[-1]).group(1))
    check(tool.pages() == 2 * count, f"{tool.pages()} pages for {count} sheets with backs")
    tool.run("--test-sheet").expect(0)
    check(tool.pages() == 2, "a test sheet has two sides")


def test_check_alone(tool):
    tool.change("UPDATE tblCard SET Picture = NULL, UsePicture = -1, Title = 'Bare' WHERE SetID = 1 AND Nr = 2")
    told = run([tool.tool, "--database", tool.database, "--set", SET, "--check"]).expect(0)
    check("C2 2 Bare: the picture is empty" in told.lines, f"told: {told.lines}")
    check(tool.run("--check").lines == told.lines and tool.files() == [], "the check wrote something")
    tool.run("--numbers", "2").expect(0, "C2 2 Bare: the picture is empty")


def test_bad_record(tool):
    """It is named, and the others are printed."""
    tool.change("UPDATE tblCard SET Picture = x'00112233', UsePicture = -1, Title = 'Bad' WHERE SetID = 1 AND Nr = 2")
    tool.run("--numbers", "1-3", "--kinds", "cards").expect(1, "C2 2 Bad: can't be drawn: ", "481, Invalid picture")
    tool.pages()


def test_changed(tool):
    """Only what looks other than on its last sheet; and where that is nothing, no file."""
    tool.run("--kinds", "cards").expect(0)
    os.remove(tool.pdf)
    told = tool.run("--kinds", "cards", "--changed").expect(0)
    check(told.lines == ["No card has changed since its last sheet: nothing is written."] and tool.files() == [],
          f"told: {told.lines}")
    tool.change("UPDATE tblCard SET Title = 'Changed', Copies = 1 WHERE SetID = 1 AND Nr = 2")
    told = tool.run("--kinds", "cards", "--changed", "--backs", "none").expect(0)
    check(told.lines[0].endswith("1 cards on 1 sheets") and tool.pages() == 1, f"told: {told.lines}")


def test_killed(tool):
    """Wherever it is ended by force there is no file of the name, or a whole one; the next run clears up."""
    os.makedirs(tool.out)
    for seconds in (0.2, 0.5, 1, 1.5):
        process = subprocess.Popen(tool.command(), stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        time.sleep(seconds)
        process.kill()
        process.wait()
        if os.path.exists(tool.pdf):
            tool.pages()
    tool.run("--numbers", "1").expect(0)
    check(tool.files() == ["coast.pdf"], f"left behind: {tool.files()}")


def test_disks(tool):
    """What was there stays, and nothing is left behind."""
    with SmallDisk(tool.out, 300) as disk:
        tool.run("--numbers", "1", "--kinds", "cards", "--backs", "none").expect(0)
        with open(tool.pdf, "rb") as file:
            before = file.read()
        tool.run().expect(1, "Disk full")
        disk.make_read_only()
        tool.run("--numbers", "1").expect(1, "75, Path/File access error")
        with open(tool.pdf, "rb") as file:
            check(file.read() == before and tool.files() == ["coast.pdf"], f"files: {tool.files()}")


def main():
    tool, database = map(os.path.abspath, sys.argv[1:])
    tests = [test_usage, test_sheets, test_check_alone, test_bad_record, test_changed, test_killed]
    if enter_own_mounts():
        tests.append(test_disks)
    else:
        print("not tried, for nothing can be mounted here: full and read-only disks")
    return run_tests(tests, lambda folder: Print(tool, database, folder))


if __name__ == "__main__":
    sys.exit(main())
