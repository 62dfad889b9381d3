#!/usr/bin/env python3
"""Runs the batch tool over good, bad and impossible input.

usage: batch_tool.py TOOL DATABASE
"""

import contextlib
import hashlib
import os
import shutil
import sqlite3
import subprocess
import sys
import time

from bitmap import read_bitmap
from desktop import check, run_tests
from small_disk import SmallDisk, enter_own_mounts

SET = "The Saltwind Coast"
LIMIT = 120  # seconds for a run on a busy machine
SUFFIXES = {"BMP": "BMP3", "JPG": "JPEG", "GIF": "GIF", "PNG": "PNG"}  # and what another program calls the format


class Batch:
    """The tool, a copy of the database, and a folder to write to."""

    def __init__(self, tool, database, folder):
        self.tool = tool
        self.folder = folder
        self.database = os.path.join(folder, "orv.mdb")
        self.out = os.path.join(folder, "out")
        os.makedirs(folder, exist_ok=True)
        shutil.copyfile(database, self.database)
        self.change("UPDATE tblSet SET FileCardNr = 0, ReplaceSpace = 0, NoBack = 0, FilenamePrefix = ''")

    def change(self, *statements):
        with contextlib.closing(sqlite3.connect(self.database)) as connection, connection:
            for statement in statements:
                connection.execute(statement)

    def value(self, query):
        with contextlib.closing(sqlite3.connect(self.database)) as connection:
            return connection.execute(query).fetchone()[0]

    def command(self, *options):
        return [self.tool, "--database", self.database, "--set", SET, "--to", self.out, *options]

    def run(self, *options, make_folder=True):
        if make_folder:
            os.makedirs(self.out, exist_ok=True)
        return run(self.command(*options))

    def files(self):
        return sorted(os.listdir(self.out))

    def check_database(self):
        check(self.value("PRAGMA integrity_check") == "ok", "the database is damaged")


class Result:
    def __init__(self, done):
        self.status = done.returncode
        self.lines = done.stdout.splitlines()
        self.errors = done.stderr

    def expect(self, status, *errors):
        check(self.status == status, f"status {self.status} in place of {status}: {self.errors}")
        for error in errors:
            check(error in self.errors, f"{error!r} is not in {self.errors!r}")
        return self


def run(command, environment=None):
    done = subprocess.run(command, env={**os.environ, **(environment or {})}, text=True, capture_output=True, check=False,
                          timeout=LIMIT)
    return Result(done)


def few_cards(batch, count):
    batch.change(f"DELETE FROM tblCard WHERE SetID = 1 AND Nr > {count}")


def test_usage(batch):
    good = ["--database", batch.database, "--set", SET, "--to", batch.out]
    table = [
        ([], 2, "--set is needed"),
        ([*good, "--number", "--no-number"], 2, "--number and --no-number exclude each other"),
        ([*good, "more"], 2, "Unknown argument: more"),
        ([*good, "--format", "TIFF"], 2, "Unknown format: TIFF"),
        ([*good, "--nonsense"], 2, "nonsense"),
        (["--database", batch.database, "--set", "None such", "--to", batch.out], 2,
         'There is no set of the name "None such". The sets are: The Saltwind Coast, The Winter Roads'),
        (["--database", batch.database + "x", "--list"], 1, "is missing or is no database"),
    ]
    for arguments, status, error in table:
        run([batch.tool, *arguments]).expect(status, error)
    listed = run([batch.tool, "--database", batch.database, "--list"]).expect(0)
    check(listed.lines == [SET, "The Winter Roads"], f"sets: {listed.lines}")
    check("--underline" in "".join(run([batch.tool, "--help"]).expect(0).lines), "no help")
    text = os.path.join(batch.folder, "text.mdb")
    shutil.copyfile(__file__, text)
    run([batch.tool, "--database", text, "--set", SET, "--to", batch.out]).expect(1, "is no database")
    with open(text, "rb") as file, open(__file__, "rb") as original:
        check(file.read() == original.read(), "a file that is no database was changed")


def test_formats(batch):
    """Another program reads every file, and finds its size."""
    few_cards(batch, 2)
    kinds = {"C2": "304x256", "CH2": "608x256", "PP2": "304x256", "LC2": "608x256"}
    for name, known_as in SUFFIXES.items():
        result = batch.run("--format", name).expect(0)
        files = [file for file in batch.files() if file.endswith(name)]
        check(result.lines[-1] == f"{len(files)} written, 0 replaced by a later one, 0 without a file", result.lines[-1])
        check(sorted(result.lines[:-1]) == [os.path.join(batch.out, file) for file in files], "the files told")
        for file in files:
            told = subprocess.run(["identify", "-format", "%m %wx%h", os.path.join(batch.out, file)], text=True,
                                  capture_output=True, check=True).stdout
            check(told == f"{known_as} {kinds[file.split()[0]]}", f"{file}: {told}")


SHEETS = {
    SET: {
        "C2_009_THE_HERON_WIFE.BMP": "6ad4043dbff58465",
        "CH2_001_TIDE_WITCH.BMP": "a6007b3cfbe1c8f4",
        "PP2_001_TIDE_WITCH.BMP": "f2486ba7e3700fae",
        "LC2_001_THE_LANTERN_FAIR_ON_THE_LAST_NIGHT_OF_SUMMER.BMP": "05052cdcc1274dfb",
    },
    "The Winter Roads": {"C3_003_The_Hoar_Queen.BMP": "c3d81a8abed9a18f"},
}

# A user who wants no smoothing, other hinting and no face of the system.
OWN_WISHES = """<?xml version="1.0"?><!DOCTYPE fontconfig SYSTEM "fonts.dtd"><fontconfig>
<match target="pattern"><edit name="antialias" mode="assign" binding="strong"><bool>false</bool></edit>
<edit name="autohint" mode="assign"><bool>true</bool></edit></match>
<match target="font"><edit name="antialias" mode="assign" binding="strong"><bool>false</bool></edit>
<edit name="autohint" mode="assign"><bool>true</bool></edit></match></fontconfig>"""


def test_same_card_everywhere(batch):
    """Neither the faces of the system nor what it does with them changes a sheet."""
    batch.change("UPDATE tblSet SET FileCardNr = 1, ReplaceSpace = 1")
    os.makedirs(batch.out)
    wishes = os.path.join(batch.folder, "fonts.conf")
    with open(wishes, "w", encoding="ascii") as file:
        file.write(OWN_WISHES)
    for environment in ({}, {"FONTCONFIG_FILE": wishes, "FREETYPE_PROPERTIES": "truetype:interpreter-version=35"}):
        for name, sheets in SHEETS.items():
            options = ["--database", batch.database, "--set", name, "--to", batch.out, "--format", "BMP"]
            run([batch.tool, *options], environment).expect(0)
            for file, digest in sheets.items():
                with open(os.path.join(batch.out, file), "rb") as sheet:
                    found = hashlib.sha256(sheet.read()).hexdigest()[:16]
                check(found == digest, f"{file}: {found} with {environment}")


def test_options(batch):
    few_cards(batch, 1)
    title = batch.value("SELECT Title FROM tblCard WHERE SetID = 1 AND Nr = 1")
    result = batch.run("--cards", "--number", "--prefix", "My set", "--underline", "--no-back", "--format", "bmp")
    result.expect(0)
    name = f"My set C2 001 {title}.BMP".replace(" ", "_")
    check(batch.files() == [name], f"files: {batch.files()}")
    width, height, _ = read_bitmap(os.path.join(batch.out, name))
    check((width, height) == (152, 256), f"a front alone is {width} by {height}")
    stored = batch.value("SELECT SaveTo || FilenamePrefix || FileCardNr || NoBack || ReplaceSpace FROM tblSet WHERE SetID = 1")
    check(stored == batch.out + "My set-1-1-1", f"stored options: {stored}")
    # Taken back, and the folder as it is stored.
    os.remove(os.path.join(batch.out, name))
    run([batch.tool, "--database", batch.database, "--set", SET, "--cards", "--no-number", "--back", "--no-underline",
         "--prefix", ""]).expect(0)
    check(batch.files() == [f"C2 {title}.BMP"], f"files: {batch.files()}")
    check(read_bitmap(os.path.join(batch.out, batch.files()[0]))[0] == 304, "the back is left out")
    batch.change("UPDATE tblSet SET SaveTo = ''")
    run([batch.tool, "--database", batch.database, "--set", SET]).expect(2, "--to is needed: the set has no folder")


def test_bad_records(batch):
    """Each is told, the others are written, and no card goes missing unseen."""
    few_cards(batch, 9)
    bad = ["Picture = x'00112233'", "CardTypeID = 9999", "CardBackID = 9999", "Title = 'a/b'", "Title = 'say \"x\"'",
           "Title = 'Twin'", "Title = 'Twin'"]
    batch.change(*(f"UPDATE tblCard SET FileName = '', {change} WHERE SetID = 1 AND Nr = {number}"
                   for number, change in enumerate(bad, 2)))
    result = batch.run("--cards", "--format", "BMP").expect(
        1, "Cannot draw picture correct: Error while drawing the card. 481, Invalid picture",
        "Cannot draw picture correct: Error while drawing the card. 3021, No current record",
        "C2 005 a/b: Saving the card 2nd.: Something went wrong.", "No file for C2 005 a/b",
        'No file for C2 006 say "x"', "C2 008 Twin has replaced the file of C2 007 Twin")
    check(result.errors.count("Cannot draw picture correct") == 3, f"boxes of drawing: {result.errors}")
    check(result.lines[-1] == "7 written, 1 replaced by a later one, 2 without a file", result.lines[-1])
    for name in batch.files():
        read_bitmap(os.path.join(batch.out, name))
    check(len(batch.files()) == 6, f"files: {batch.files()}")
    batch.check_database()


def test_no_folder(batch):
    few_cards(batch, 3)
    batch.run("--cards", make_folder=False).expect(1, "Something went wrong.")
    check(not os.path.exists(batch.out), "the folder was made")


def test_older_files(batch):
    """Only what this run wrote counts."""
    few_cards(batch, 2)
    batch.run("--cards").expect(0)
    for file in batch.files():
        os.chmod(os.path.join(batch.out, file), 0o444)
    result = batch.run("--cards").expect(1, "No file for C2 001 ", "No file for C2 002 ")
    check(result.lines == ["0 written, 0 replaced by a later one, 2 without a file"], f"told: {result.lines}")


def test_uncaught(batch):
    """A failure that ends the run names its record, and what was written before is counted."""
    few_cards(batch, 3)
    batch.change("UPDATE tblCard SET BGColour = 'red', Title = 'Wrong' WHERE SetID = 1 AND Nr = 3")
    result = batch.run("--cards").expect(1, "C2 003 Wrong: The run ends here. 13, Type mismatch")
    check(result.lines[-1] == "2 written, 0 replaced by a later one, 0 without a file", f"told: {result.lines}")


def test_hostile(batch):
    """A file with something else under one of its names is no database of the program, and told as such at once."""
    batch.change("CREATE TRIGGER more AFTER UPDATE ON tblSet_rows BEGIN DELETE FROM tblCard_rows; END")
    batch.run().expect(1, "is no database of the program. Database error: trigger more on tblSet_rows is none of the program's")
    batch.change("DROP TRIGGER more", "DROP TABLE tblLanguage", "CREATE VIEW tblLanguage AS WITH RECURSIVE n(i) AS "
                 "(SELECT 1 UNION ALL SELECT i + 1 FROM n) SELECT i AS LanguageID, i AS Language FROM n")
    batch.run().expect(1, "view tblLanguage is not the program's")
    check(batch.files() == [], f"written: {batch.files()}")


def test_check(batch):
    few_cards(batch, 2)
    batch.run("--cards", "--check").expect(0)
    batch.change("INSERT INTO tblCard_rows (CardID, SetID) VALUES (9999, 777)")
    batch.run("--cards", "--check").expect(1, "Damaged: tblCard_rows 9999 belongs to no row of tblSet_rows")
    batch.change("DELETE FROM tblCard_rows WHERE SetID = 777",
                 "UPDATE tblCardBack SET Picture = CAST(zeroblob(30000) || 'MARK' AS BLOB) WHERE CardBackID = 1")
    with open(batch.database, "r+b") as file:
        page = file.read().index(b"MARK") // 4096 * 4096
        file.seek(page)
        file.write(b"\x00\x00\x00\x05")  # the chain goes on where it should end
    for file in batch.files():
        os.remove(os.path.join(batch.out, file))
    batch.run("--cards", "--check").expect(1, "Damaged: ")
    check(batch.files() == [], f"written: {batch.files()}")


def test_killed(batch):
    """Wherever a run is ended by force, each file under a card's name is whole."""
    os.makedirs(batch.out)
    for seconds in (0, 0.03, 0.07):
        process = subprocess.Popen(batch.command("--format", "BMP"), stdout=subprocess.PIPE, text=True)
        process.stdout.readline()
        time.sleep(seconds)
        process.kill()
        process.communicate()
        for name in batch.files():
            if not name.startswith("."):
                read_bitmap(os.path.join(batch.out, name))
        batch.check_database()
    batch.run("--format", "BMP").expect(0)
    check(not any(name.startswith(".") for name in batch.files()), f"left behind: {batch.files()}")


def test_full_disk(batch):
    few_cards(batch, 12)
    for name, kilobytes in (("BMP", 700), ("JPG", 120), ("GIF", 120)):
        with SmallDisk(batch.out, kilobytes):
            result = batch.run("--cards", "--format", name).expect(1, "Something went wrong.")
            files = batch.files()
            check(0 < len(files) < 12, f"{len(files)} files on the small disk")
            check(all(file.endswith(name) for file in files), f"left behind: {files}")
            check(result.errors.count("No file for") == 12 - len(files), result.errors)
            for file in files:
                subprocess.run(["identify", os.path.join(batch.out, file)], check=True, stdout=subprocess.DEVNULL)
        os.rmdir(batch.out)
        batch.check_database()


def test_read_only_folder(batch):
    few_cards(batch, 3)
    with SmallDisk(batch.out, 2000) as disk:
        disk.make_read_only()
        result = batch.run("--cards").expect(1, "Something went wrong.")
        check(result.errors.count("No file for") == 3, result.errors)
    batch.check_database()


def test_full_disk_of_the_database(batch):
    size = os.path.getsize(batch.database) // 1024
    with SmallDisk(os.path.join(batch.folder, "home"), size + 64) as disk:
        inner = Batch(batch.tool, batch.database, disk.folder)
        inner.out = batch.out
        disk.fill()
        inner.run("--cards").expect(1, "Disk full")
        inner.check_database()
        check(inner.files() == [], "written without its options stored")


def main():
    tool, database = map(os.path.abspath, sys.argv[1:])
    tests = [test_usage, test_same_card_everywhere, test_formats, test_options, test_bad_records, test_older_files, test_uncaught, test_hostile,
             test_check, test_no_folder, test_killed]
    if enter_own_mounts():
        tests += [test_full_disk, test_read_only_folder, test_full_disk_of_the_database]
    else:
        print("not tried, for nothing can be mounted here: full and read-only disks")
    return run_tests(tests, lambda folder: Batch(tool, database, os.path.join(folder, "batch")))


if __name__ == "__main__":
    sys.exit(main())
