#!/usr/bin/env python3
"""Sends sets from database to database, their texts through a table, and brings an old database over, by the tools.

usage: exchange.py TOOL DATABASE        (the other tools lie beside TOOL)
"""

import contextlib
import csv
import os
import pathlib
import shutil
import sqlite3
import subprocess
import sys
import tarfile
import tempfile

from desktop import Failure, check

SETS = ["The Saltwind Coast", "The Winter Roads"]
OLD = pathlib.Path(__file__).parent.parent / "exchange/data/orv_jet4.tar.xz"
LIMIT = 200  # seconds for a run on a busy machine


class Tools:
    def __init__(self, folder):
        self.folder = pathlib.Path(folder)

    def run(self, tool, *arguments, status=0):
        done = subprocess.run([self.folder / tool, *map(str, arguments)], text=True, capture_output=True, check=False,
                              timeout=LIMIT)
        check(done.returncode == status, f"{tool} {arguments}: status {done.returncode}: {done.stderr}")
        return done

    def sets(self, *arguments, status=0):
        return self.run("orv_set", *arguments, status=status)

    def pictures(self, database, name, folder):
        """The files that a set is written out to, and their bytes."""
        os.makedirs(folder)
        self.run("create_all_cards", "--database", database, "--set", name, "--to", folder, "--format", "BMP")
        files = {path.name: path.read_bytes() for path in pathlib.Path(folder).iterdir()}
        shutil.rmtree(folder)
        return files


def change(database, *statements):
    with contextlib.closing(sqlite3.connect(database)) as connection, connection:
        for statement in statements:
            connection.execute(statement)


def value(database, query):
    with contextlib.closing(sqlite3.connect(database)) as connection:
        return connection.execute(query).fetchone()[0]


def test_round_trip(tools, delivered, folder):
    home = folder / "orv.mdb"
    shutil.copyfile(delivered, home)
    away = folder / "away.mdb"
    shutil.copyfile(delivered, away)
    # Another database: other keys, without a part of what the sets use.
    change(away, "DELETE FROM tblSet", "DELETE FROM tblCardType WHERE CardTypeID % 3 = 0",
           "DELETE FROM tblCardBack WHERE CardBackID % 2 = 0", "DELETE FROM tblArea WHERE AreaID % 2 = 0",
           "UPDATE tblLanguage SET LanguageID = LanguageID + 10", "UPDATE tblCardType SET LanguageID = LanguageID + 10")
    for name in SETS:
        file = folder / "set.orvset"
        before = tools.pictures(home, name, folder / "out")
        check(len(before) > 10, f"{len(before)} pictures")
        tools.sets("save", file, "--database", home, "--set", name)
        check(tools.sets("list", file).stdout == name + "\n", "the file's set")
        told = tools.sets("bring", file, "--database", home).stdout
        check(told == f"{name} (2)\n", f"what is told is {told!r}")
        check(tools.pictures(home, f"{name} (2)", folder / "out") == before, f"{name} (2) differs")
        tools.sets("bring", file, "--database", away)
        check(tools.pictures(away, name, folder / "out") == before, f"{name} differs elsewhere")
        check(tools.pictures(file, name, folder / "out") == before, f"the file's own {name} differs")
    check(value(home, "SELECT COUNT(*) FROM tblCardType") == value(delivered, "SELECT COUNT(*) FROM tblCardType"),
          "types were added that are there")
    tools.sets("save", folder / "none.orvset", "--database", home, "--set", "None", status=2)
    tools.sets("bring", delivered.parent / "CMakeCache.txt", "--database", home, status=1)


def test_texts(tools, delivered, folder):
    database = folder / "orv.mdb"
    shutil.copyfile(delivered, database)
    table = folder / "texts.csv"
    tools.sets("texts", table, "--database", database, "--set", SETS[0])
    with open(table, encoding="utf-8", newline="") as file:
        rows = list(csv.DictReader(file))
    titles = [row["Title"] for row in rows]
    query = "SELECT group_concat(Title, '|') FROM (SELECT Title FROM tblCard WHERE SetID = 1 ORDER BY Nr)"
    check("|".join(titles) == value(database, query), f"the titles are {titles}")
    rows[3]["New title"] = 'A "new", title'
    with open(table, "w", encoding="utf-8", newline="") as file:
        writer = csv.DictWriter(file, rows[0].keys())
        writer.writeheader()
        writer.writerows(rows)
    for expected in ("1 cards changed\n", None):
        done = tools.sets("texts", table, "--in", "--database", database, "--set", SETS[0], status=0 if expected else 1)
        check(expected is None or done.stdout == expected, f"what is told is {done.stdout!r}")
    check(value(database, "SELECT Title FROM tblCard WHERE SetID = 1 AND Nr = 4") == 'A "new", title', "the title")


def test_bring_over(tools, delivered, folder):
    with tarfile.open(OLD) as archive:
        archive.extractall(folder)
    old, new = folder / "orv_jet4.mdb", folder / "new.mdb"
    old.chmod(0o600)
    told = tools.run("bring_over", old, "--to", new).stdout
    check("30 rows in tblCard\n" in told, f"what is told is {told!r}")
    check("is there already" in tools.run("bring_over", old, "--to", new, status=1).stderr, "a second time")
    database = folder / "orv.mdb"
    shutil.copyfile(delivered, database)
    for name in SETS:
        check(tools.pictures(new, name, folder / "out").keys() == tools.pictures(database, name, folder / "out").keys(),
              f"{name} differs")
    with open(old, "r+b") as file:
        file.truncate(100000)
    check("damaged" in tools.run("bring_over", old, "--to", folder / "no.mdb", status=1).stderr, "a damaged file")
    check(not (folder / "no.mdb").exists(), "half a file")


def test_refusals(tools, delivered, folder):
    """Whatever is wrong with a file is told in words of its own, with the file's name."""
    database, set_file = folder / "orv.mdb", folder / "coast.orvset"
    shutil.copyfile(delivered, database)
    tools.sets("save", set_file, "--database", database, "--set", SETS[0])

    def refused(file, words):
        told = tools.sets("bring", set_file, "--database", database, status=1).stderr
        check(told.startswith(f"{file}: ") and words in told, f"what is told of {file.name} is {told!r}")

    for file in (database, set_file):
        with contextlib.closing(sqlite3.connect(file, isolation_level=None)) as other:
            other.execute("BEGIN EXCLUSIVE")
            refused(file, "another program is using")
        whole = file.read_bytes()
        file.write_bytes(whole[:18] + b"\3\3" + whole[20:])
        refused(file, "newer version")
        file.write_bytes(whole)
    database.chmod(0o444)
    if os.geteuid() != 0:  # who may write to everything
        refused(database, "can only be read")


def main():
    if len(sys.argv) != 3:
        print(__doc__, file=sys.stderr)
        return 2
    tools = Tools(pathlib.Path(sys.argv[1]).parent)
    failed = False
    for test in (test_round_trip, test_texts, test_bring_over, test_refusals):
        with tempfile.TemporaryDirectory() as folder:
            try:
                test(tools, pathlib.Path(sys.argv[2]), pathlib.Path(folder))
            except Failure as failure:
                print(f"{test.__name__}: {failure}", file=sys.stderr)
                failed = True
    return failed


if __name__ == "__main__":
    sys.exit(main())
