#!/usr/bin/env python3
"""Holds what an installation puts in place against the standards, and against the programs.

usage: packaging.py BUILD_FOLDER VERSION PROGRAM...; the first program is the window, the others are tools
"""

import gzip
import os
import pathlib
import re
import struct
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as xml

ROOT = pathlib.Path(__file__).resolve().parents[2]
NAME = "varnholt-card-set-creator"
ID = "org.varnholt.card_set_creator"
MIME_TYPE = "application/x-varnholt-card-set"


def run(*command):
    done = subprocess.run(command, text=True, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)
    if done.returncode != 0:
        raise AssertionError(f"{' '.join(map(str, command))}: {done.stdout}")
    return done.stdout


def as_desktop(share, *command):
    """Runs what knows of the installed programs alone."""
    return run("env", f"PATH={share.parent}/bin:{os.environ['PATH']}", f"XDG_DATA_DIRS={share}", f"XDG_DATA_HOME={share}/none", *command)


def expect(true, what):
    if not true:
        raise AssertionError(what)


def options(text):
    return set(re.findall(r"(?<![\w-])--?[a-z][a-z-]*", text))


def check_desktop(share, _, programs):
    path = share / "applications" / f"{ID}.desktop"
    run("desktop-file-validate", path)
    entry = dict(line.split("=", 1) for line in path.read_text().splitlines()[1:])
    expect(entry["Exec"] == f"{programs[0]} %f", f"it starts {entry['Exec']}")
    for size in (16, 22, 24, 32, 48, 64, 128, 256, 512):
        head = (share / "icons/hicolor" / f"{size}x{size}" / "apps" / f"{entry['Icon']}.png").read_bytes()
        expect(struct.unpack(">8x4x4sII", head[:24]) == (b"IHDR", size, size), f"the icon of {size} pixels")
    expect((share / "icons/hicolor/scalable/apps" / f"{entry['Icon']}.svg").exists(), "no icon for all sizes")


def check_metainfo(share, version, programs):
    path = share / "metainfo" / f"{ID}.metainfo.xml"
    run("appstreamcli", "validate", "--no-net", "--pedantic", path)
    component = xml.parse(path).getroot()
    expect(component.findtext("id") == ID and component.findtext("launchable") == f"{ID}.desktop", "whose entry it is")
    for image in component.iter("image"):
        expect((ROOT / image.text.removeprefix(component.findtext("url"))).is_file(), f"no picture behind {image.text}")
    expect([binary.text for binary in component.iter("binary")] == programs, "the programs it names")
    changes = re.findall(r"^## \[(\d.*)\] - (\S+)$", (ROOT / "CHANGELOG.md").read_text(), re.M)
    releases = [(release.get("version"), release.get("date")) for release in component.iter("release")]
    expect(releases == changes and releases[0][0] == version, f"releases {releases}, the changelog's {changes}, built {version}")


def check_mime_type(share, *_):
    run("update-mime-database", share / "mime")
    run("update-desktop-database", share / "applications")
    expect(f"{MIME_TYPE}:*.orvset" in (share / "mime/globs2").read_text(), "no file type for *.orvset")
    expect(f"{MIME_TYPE} application/vnd.sqlite3" in (share / "mime/subclasses").read_text(), "whose file it is")
    # As a desktop asks which program opens a file.
    (share / "set.orvset").write_bytes(b"SQLite format 3\0")
    told = as_desktop(share, "gio", "info", "-a", "standard::content-type", share / "set.orvset")
    expect(MIME_TYPE in told, f"the type of a file: {told}")
    told = as_desktop(share, "gio", "mime", MIME_TYPE)
    expect(f"{ID}.desktop" in told, f"who opens it: {told}")


def check_manual(share, version, programs):
    for program in programs:
        page = share / "man/man1" / f"{program}.1.gz"
        text = gzip.open(page, "rt").read()
        warnings = subprocess.run(["groff", "-man", "-Tutf8", "-ww", "-z"], input=text, text=True, capture_output=True, check=True).stderr
        expect(not warnings, f"{page.name}: {warnings}")
        expect(f'Creator {version}"' in text, f"{page.name} is of another version")
        told = options(text.replace("\\-", "-"))
        # None of them needs a display for that.
        offered = options(run("env", "-u", "QT_QPA_PLATFORM", "-u", "DISPLAY", "-u", "WAYLAND_DISPLAY", share.parent / "bin" / program, "--help"))
        expect(told == offered, f"{program}: options in the manual or in --help alone: {sorted(told ^ offered)}")
        told_version = run("env", "-u", "QT_QPA_PLATFORM", share.parent / "bin" / program, "--version")
        expect(told_version.endswith(f"{program} (Varnholt Card Set Creator) {version}\n"), f"the version that {program} tells: {told_version}")


def check_licences(share, _, programs):
    """Each library that a program links has its line."""
    text = (share / "doc" / NAME / "copyright").read_text()
    for program in programs:
        for library in re.findall(r"\(NEEDED\).*\[(lib\w+)", run("readelf", "-d", share.parent / "bin" / program)):
            expect(re.search(rf"\b{library}\b", text) or library.endswith("san"), f"no licence of {library}, which {program} links")
    expect(gzip.open(share / "doc" / NAME / "changelog.gz").read() == (ROOT / "CHANGELOG.md").read_bytes(), "another changelog")


def main():
    build, version, *programs = sys.argv[1:]
    with tempfile.TemporaryDirectory() as prefix:
        run("cmake", "--install", build, "--prefix", prefix)
        for check in (check_desktop, check_metainfo, check_mime_type, check_manual, check_licences):
            try:
                check(pathlib.Path(prefix) / "share", version, programs)
            except (AssertionError, OSError) as problem:
                print(f"{check.__name__}: {problem}", file=sys.stderr)
                return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
