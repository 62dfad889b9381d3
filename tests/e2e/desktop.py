"""A display of its own for one program, and a user at its keyboard and mouse."""

import configparser
import contextlib
import copy
import os
import shutil
import sqlite3
import subprocess
import sys
import tempfile
import time

LIMIT = 20  # seconds that anything may take on a busy machine
TWIPS = 15  # to a pixel


class Failure(Exception):
    pass


def check(true, what):
    if not true:
        raise Failure(what)


def wait_for(what, condition, limit=LIMIT):
    """Waits until the condition gives something, and hands that back."""
    end = time.monotonic() + limit
    while True:
        found = condition()
        if found:
            return found
        if time.monotonic() > end:
            raise Failure(f"waited {limit} seconds for {what}")
        time.sleep(0.03)


def run_tests(tests, scene):
    """Runs each test on a scene of its own in a new folder, up to the first that fails; the exit status."""
    for test in tests:
        with tempfile.TemporaryDirectory() as folder:
            try:
                test(scene(folder))
            except Failure as failure:
                print(f"{test.__name__}: {failure}", file=sys.stderr)
                return 1
    return 0


def run_on_displays(tests, *arguments):
    """Runs each test on a display of its own, with the arguments and a new folder, up to the first that fails, of
    which it leaves a picture; the exit status."""
    for test in tests:
        with tempfile.TemporaryDirectory() as folder, contextlib.closing(Display(1280, 1024)) as display:
            try:
                test(display, *arguments, folder)
            except Failure as failure:
                display.screenshot(os.path.abspath(f"{test.__name__}.png"))
                print(f"{test.__name__}: {failure}", file=sys.stderr)
                return 1
            finally:
                Program.kill_all()
    return 0


class Display:
    """An X server on a free number, without a window manager."""

    def __init__(self, width, height):
        read_end, write_end = os.pipe()
        screen = f"{width}x{height}x24"
        self.server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(write_end), "-screen", "0", screen, "-nolisten", "tcp", "-noreset"],
            pass_fds=[write_end], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(write_end)
        with os.fdopen(read_end) as numbers:
            number = numbers.readline().strip()
        if not number:
            raise Failure("the X server did not start")
        self.name = ":" + number

    def close(self):
        self.server.terminate()
        self.server.wait()

    def environment(self):
        return {**os.environ, "DISPLAY": self.name}

    def xdotool(self, *arguments, check=True):
        done = subprocess.run(["xdotool", *map(str, arguments)], env=self.environment(), text=True,
                              capture_output=True, check=False, timeout=LIMIT)
        if check and done.returncode != 0:
            raise Failure(f"xdotool {arguments}: {done.stderr.strip()}")
        return done.stdout.strip()

    def screenshot(self, path):
        subprocess.run(["import", "-window", "root", path], env=self.environment(), check=False,
                       timeout=LIMIT)

    def windows(self, title):
        """The visible windows with this very title."""
        found = self.xdotool("search", "--onlyvisible", "--name", f"^{title}$", check=False).split()
        # The search takes no heed of case.
        return [w for w in found if self.xdotool("getwindowname", w, check=False) == title]

    def window(self, title):
        """The last of them, None without one."""
        named = self.windows(title)
        return named[-1] if named else None

    def count(self, title):
        return len(self.windows(title))

    def focus(self, title):
        """Waits for a window and gives it the keyboard, as a window manager would."""
        window = wait_for(f'the window "{title}"', lambda: self.window(title))

        def focused():
            self.xdotool("windowfocus", window, check=False)
            return self.xdotool("getwindowfocus", check=False) == window

        wait_for(f'the focus on "{title}"', focused)
        return window

    def gone(self, title):
        wait_for(f'the end of "{title}"', lambda: self.window(title) is None)

    def key(self, *keys):
        self.xdotool("key", "--clearmodifiers", *keys)

    def type(self, text):
        self.xdotool("type", "--delay", "4", text)

    def click(self, window, x, y, twice=False):
        """A click on a place of a window, in pixels."""
        clicks = ["click", "--repeat", "2", "--delay", "60", "1"] if twice else ["click", "1"]
        self.xdotool("mousemove", "--window", window, x, y, *clicks)

    def drag(self, window, start, end):
        """With the left button from one place of a window to another, in pixels."""
        self.xdotool("mousemove", "--window", window, *start, "mousedown", "1")
        self.xdotool("mousemove", "--window", window, *end)
        self.xdotool("mouseup", "1")

    def picture(self, left, top, width, height):
        """What a part of the display shows, as bytes."""
        area = f"{width}x{height}+{left}+{top}"
        done = subprocess.run(["import", "-window", "root", "-crop", area, "rgb:-"], capture_output=True,
                              env=self.environment(), check=True, timeout=LIMIT)
        return done.stdout

    def click_twips(self, window, left, top):
        self.click(window, left // TWIPS, top // TWIPS)


class Program:
    """The program in a folder of its own, with its database and settings. One that is installed where the user may not write is
    started there, and makes its database at the first start."""

    started = []  # every process

    def __init__(self, display, executable, database, folder):
        self.display = display
        self.folder = folder
        self.process = None
        self.log_path = os.path.join(folder, "log")
        if os.access(os.path.dirname(executable), os.W_OK):
            self.executable = shutil.copy(executable, os.path.join(folder, "orv"))
            self.database = os.path.join(folder, "orv.mdb")
            shutil.copyfile(database, self.database)
        else:
            self.executable = executable
            self.database = os.path.join(folder, "data", "varnholt-card-set-creator", "orv.mdb")
        os.makedirs(os.path.join(folder, "settings", "ORV2"))
        os.makedirs(os.path.join(folder, "home"))
        self.runtime = os.path.join(folder, "run")
        os.makedirs(self.runtime, mode=0o700)
        self.write_settings()

    def write_settings(self, starts=0):
        """The window's place, and how often the program was started."""
        places = {"LeftPos": 0, "TopPos": 0, "WidthPos": 1280 * TWIPS, "HeightPos": 1000 * TWIPS}
        self.set("Database", "Loaded", starts)
        for key, value in places.items():
            self.set("MainWindow", key, value)

    def set(self, section, key, value):
        """Stores one of the user's settings."""
        path = os.path.join(self.folder, "settings", "ORV2", "ORV2.ini")
        store = configparser.ConfigParser()
        store.optionxform = str
        store.read(path)
        if not store.has_section(section):
            store.add_section(section)
        store.set(section, key, str(value))
        with open(path, "w", encoding="ascii") as file:
            store.write(file, space_around_delimiters=False)

    def start(self, *arguments):
        environment = {**self.display.environment(), "QT_QPA_PLATFORM": "xcb",
                       "XDG_CONFIG_HOME": os.path.join(self.folder, "settings"),
                       "XDG_DATA_HOME": os.path.join(self.folder, "data"), "HOME": os.path.join(self.folder, "home"),
                       "XDG_RUNTIME_DIR": self.runtime}
        environment.pop("QT_SCALE_FACTOR", None)
        with open(self.log_path, "ab") as log:
            self.process = subprocess.Popen([self.executable, *arguments], cwd=self.folder, env=environment, stdout=log, stderr=log)
        Program.started.append(self.process)

    def beside(self):
        """Another one on the same files."""
        return copy.copy(self)

    def log(self):
        with open(self.log_path, encoding="utf-8", errors="replace") as log:
            return log.read()

    def kill(self):
        if self.process is not None and self.process.poll() is None:
            self.process.kill()
            self.process.wait()

    @classmethod
    def kill_all(cls):
        for process in cls.started:
            process.kill()
            process.wait()

    def rows(self, query, *values):
        uri = f"file:{self.database}?mode=ro"
        connection = sqlite3.connect(uri, uri=True, timeout=LIMIT)
        try:
            return connection.execute(query, values).fetchall()
        finally:
            connection.close()

    def value(self, query, *values):
        found = self.rows(query, *values)
        return found[0][0] if found else None

    def wait_value(self, expected, query, *values):
        try:
            wait_for("a value", lambda: self.value(query, *values) == expected)
        except Failure:
            found = repr(self.value(query, *values))[:200]
            raise Failure(f"{query} {values}: {found} in place of {expected!r:.200}") from None
