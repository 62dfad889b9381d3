#!/usr/bin/env python3
"""Programs that are installed: the user's own folder, and the first start that fills it.

usage: installed.py BUILD_FOLDER
"""

import concurrent.futures
import contextlib
import os
import shutil
import sqlite3
import stat
import subprocess
import sys
import tempfile

from desktop import Display, Failure, check, wait_for
from small_disk import SmallDisk, enter_own_mounts

NAME = "varnholt-card-set-creator"
SETS = ["The Saltwind Coast", "The Winter Roads"]
LIMIT = 120  # seconds for a run on a busy machine


class Installation:
    """The programs as they are installed, and one user's folders."""

    def __init__(self, build, folder):
        self.folder = folder
        self.bin = os.path.join(folder, "usr", "bin")
        self.delivered = os.path.join(folder, "usr", "share", NAME, "delivered", "orv.mdb")
        self.data_home = os.path.join(folder, "home", "data")
        self.data = os.path.join(self.data_home, NAME)
        self.own = os.path.join(self.data, "orv.mdb")
        self.beside = os.path.join(self.bin, "orv.mdb")
        self.build = build
        os.makedirs(os.path.join(folder, "home", "ORV2"))
        os.chmod(os.path.join(folder, "home"), 0o700)
        self.install()
        self.programs = sorted(os.listdir(self.bin))

    def install(self):
        subprocess.run(["cmake", "--install", self.build, "--prefix", os.path.join(self.folder, "usr")], check=True,
                       stdout=subprocess.DEVNULL)

    def environment(self):
        home = os.path.join(self.folder, "home")
        return {**os.environ, "HOME": home, "XDG_CONFIG_HOME": home, "XDG_DATA_HOME": self.data_home,
                "XDG_RUNTIME_DIR": home, "LSAN_OPTIONS": os.environ.get("LSAN_OPTIONS", "") + ":print_suppressions=0"}

    def run(self, *options):
        command = [os.path.join(self.bin, "create_all_cards"), *options]
        return subprocess.run(command, env=self.environment(), text=True, capture_output=True, check=False, timeout=LIMIT)

    def expect_sets(self, *names, told=""):
        done = self.run("--list")
        check(done.returncode == 0 and told in done.stderr and (told or not done.stderr), f"told {done.stderr!r}")
        check(done.stdout.splitlines() == list(names), f"sets: {done.stdout!r}")

    def expect_refusal(self, *words):
        done = self.run("--list")
        check(done.returncode == 1 and done.stdout == "", f"status {done.returncode}, {done.stdout!r}")
        for word in words:
            check(word in done.stderr, f"{word!r} is not in {done.stderr!r}")


def rename_set(path, name):
    with contextlib.closing(sqlite3.connect(path)) as connection, connection:
        connection.execute("UPDATE tblSet SET SetName = ? WHERE SetID = 1", [name])


def read(path):
    with open(path, "rb") as file:
        return file.read()


def test_first_start(place, _):
    """The copy is the user's alone and stays; a run's scratch files lie there too."""
    before = read(place.delivered)
    place.expect_sets(*SETS)
    check(read(place.own) == before, "the copy is another database")
    check(stat.S_IMODE(os.stat(place.data).st_mode) == 0o700, "others may look into the folder")
    rename_set(place.own, "Mine")
    place.expect_sets("Mine", SETS[1])
    out = os.path.join(place.folder, "out")
    os.makedirs(out)
    done = place.run("--set", "Mine", "--to", out, "--format", "JPG", "--characters")
    check(done.returncode == 0, done.stderr)
    check(sorted(os.listdir(place.bin)) == place.programs, f"beside the program: {os.listdir(place.bin)}")
    check(os.listdir(place.data_home) == [NAME], "another folder was made")
    check(read(place.delivered) == before, "the delivered database has changed")


def test_many_first_starts(place, _):
    with concurrent.futures.ThreadPoolExecutor() as threads:
        for done in threads.map(lambda _: place.run("--list"), range(8)):
            check(done.returncode == 0 and done.stdout.splitlines() == SETS, f"{done.stdout!r} {done.stderr!r}")
    check(os.listdir(place.data) == ["orv.mdb"], f"in the folder: {os.listdir(place.data)}")


def test_installed_in_the_home(place, _):
    """The data folder lies where the delivered database is installed; another installation keeps the sets."""
    place.data_home = os.path.join(place.folder, "usr", "share")
    place.expect_sets(*SETS)
    rename_set(os.path.join(place.data_home, NAME, "orv.mdb"), "Mine")
    place.install()
    place.expect_sets("Mine", SETS[1])


def test_portable(place, _):
    shutil.copyfile(place.delivered, place.beside)
    rename_set(place.beside, "Beside")
    place.expect_sets("Beside", SETS[1])
    check(not os.path.exists(place.data_home), "a portable program made a folder elsewhere")
    os.remove(place.beside)
    shutil.rmtree(os.path.dirname(place.delivered))
    place.expect_refusal("The database is missing.", "in the same folder as the program")


def test_bad_places(place, _):
    """Each is told, and nothing is left behind."""
    os.rename(place.delivered, place.delivered + "x")
    os.makedirs(place.delivered)
    place.expect_refusal("The delivered database can't be copied", place.data)
    os.rmdir(place.delivered)
    os.makedirs(os.path.dirname(place.own), exist_ok=True)
    shutil.copyfile(__file__, place.own)
    os.rename(place.delivered + "x", place.delivered)
    place.expect_refusal("The database is missing.", "orv.mdb is in the folder\n" + place.data)
    check(read(place.own) == read(__file__), "a file that is no database was changed")
    shutil.rmtree(place.data_home)
    with open(place.data_home, "wb"):
        pass
    place.expect_refusal("The folder for your sets can't be made or written to.", place.data)


def test_window(place, display):
    """The window and its compaction work in the user's folder."""
    with open(os.path.join(place.folder, "home", "ORV2", "ORV2.ini"), "w", encoding="ascii") as file:
        file.write("[Database]\nLoaded=20\n")
    environment = {**place.environment(), "DISPLAY": display.name, "QT_QPA_PLATFORM": "xcb"}
    place.expect_sets(*SETS)
    before = os.stat(place.own).st_ino
    with subprocess.Popen([os.path.join(place.bin, "orv")], env=environment) as process:
        try:
            display.focus("Compact the database")
            display.key("space")
            wait_for("the window", lambda: display.window("Varnholt Set Creator"))
            check(os.stat(place.own).st_ino != before, "the database was not compacted")
            check(not os.path.exists(place.beside), "a database was made beside the program")
        finally:
            process.kill()


def test_read_only(place, display):
    """A system's own folders: their files can't be written to by anybody."""
    with SmallDisk(os.path.join(place.folder, "disk"), 2000000) as disk:
        shutil.copytree(os.path.join(place.folder, "usr"), os.path.join(disk.folder, "usr"))
        place.bin = os.path.join(disk.folder, "usr", "bin")
        delivered = os.path.join(disk.folder, "usr", "share")
        disk.make_read_only()
        place.expect_sets(*SETS)
        shutil.rmtree(place.data_home)
        disk.make_writable()
        shutil.rmtree(delivered)
        disk.make_read_only()
        with subprocess.Popen([os.path.join(place.bin, "orv")],
                              env={**place.environment(), "DISPLAY": display.name, "QT_QPA_PLATFORM": "xcb"}) as process:
            display.focus("Missing database")
            display.key("Return")
            process.wait(LIMIT)
        place.expect_refusal("The delivered database is missing.", "Install the program again.")
        disk.make_writable()
        shutil.copyfile(place.delivered, os.path.join(place.bin, "orv.mdb"))
        rename_set(os.path.join(place.bin, "orv.mdb"), "On the stick")
        disk.make_read_only()
        place.expect_sets("On the stick", SETS[1], told="a copy of its database was made for you in\n\n" + place.data)
        place.expect_sets("On the stick", SETS[1])


def test_full_disk(place, _):
    with SmallDisk(place.data_home, 300) as disk:
        place.expect_refusal("The delivered database can't be copied", "61, Disk full")
        check(os.listdir(place.data) == [], f"left behind: {os.listdir(place.data)}")
        disk.make_read_only()
        place.expect_refusal("The folder for your sets can't be made or written to.", place.data)


def main():
    build = os.path.abspath(sys.argv[1])
    tests = [test_first_start, test_many_first_starts, test_installed_in_the_home, test_portable, test_bad_places, test_window]
    if enter_own_mounts():
        tests += [test_read_only, test_full_disk]
    else:
        print("not tried, for nothing can be mounted here: full and read-only disks")
    for test in tests:
        with tempfile.TemporaryDirectory() as folder, contextlib.closing(Display(1280, 1024)) as display:
            try:
                test(Installation(build, folder), display)
            except Failure as failure:
                display.screenshot(os.path.abspath(f"{test.__name__}.png"))
                print(f"{test.__name__}: {failure}", file=sys.stderr)
                return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
