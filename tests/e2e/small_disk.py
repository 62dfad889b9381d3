"""Disks that are small or can't be written to, in a name space of this process's own."""

import os
import subprocess
import sys

MARK = "ORV_OWN_MOUNTS"


def enter_own_mounts():
    """Starts this script over where it may mount; False where the system lets nobody do so."""
    if os.environ.get(MARK):
        return True
    enter = ["unshare", "--user", "--map-root-user", "--mount"]
    may = subprocess.run([*enter, "sh", "-c", "mount -t tmpfs -o size=64k tmpfs /mnt"], check=False,
                         stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    if may.returncode != 0:
        return False
    os.environ[MARK] = "1"
    os.execvp(enter[0], [*enter, sys.executable, *sys.argv])


class SmallDisk:
    """A disk of some kilobytes, mounted on a new folder while it lives."""

    def __init__(self, folder, kilobytes):
        self.folder = folder
        os.makedirs(folder)
        self.mount(f"size={kilobytes}k", "-t", "tmpfs", "tmpfs")

    def mount(self, options, *what):
        subprocess.run(["mount", "-o", options, *what, self.folder], check=True)

    def lend(self, path):
        """Shows a file of another disk in the folder too."""
        here = os.path.join(self.folder, os.path.basename(path))
        with open(here, "wb"):
            pass
        subprocess.run(["mount", "--bind", path, here], check=True)

    def make_read_only(self):
        self.mount("remount,ro")

    def make_writable(self):
        self.mount("remount,rw")

    def fill(self):
        """Takes all the room that is left; the file that does."""
        path = os.path.join(self.folder, "ballast")
        with open(path, "wb", buffering=0) as file:
            try:
                while True:
                    file.write(bytes(4096))
            except OSError:
                pass
        return path

    def __enter__(self):
        return self

    def __exit__(self, *unused):
        subprocess.run(["umount", "--lazy", self.folder], check=False)
