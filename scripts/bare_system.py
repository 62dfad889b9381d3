"""A bare Debian in a folder of its own, as somebody has it who has just installed it."""

import os
import pathlib
import shutil
import subprocess
import tempfile


class Failed(Exception):
    pass


class System:
    """Made in a folder that goes with it. `bases` is a folder that keeps what was made, to be copied the next time, or None."""

    def __init__(self, suite, bases=None):
        self.suite = suite
        self.folder = tempfile.mkdtemp(prefix=f"orv-{suite}-")
        os.chmod(self.folder, 0o755)
        self.mounted = []
        try:
            self._make(bases)
            self._mount("proc", "proc")
            self._mount("tmpfs", "dev/shm")
        except BaseException:
            self.close()
            raise

    def _make(self, bases):
        mirror = os.environ.get("ORV_MIRROR", "http://deb.debian.org/debian")
        target = self.folder if bases is None else os.path.join(bases, self.suite)
        if bases is None or not os.path.exists(target):
            unfinished = self.folder if bases is None else target + ".unfinished"
            subprocess.run(["debootstrap", "--variant=minbase", self.suite, unfinished, mirror], check=True, stdout=subprocess.DEVNULL)
            if bases is not None:
                os.rename(unfinished, target)
        if bases is not None:
            subprocess.run(["cp", "-a", "--reflink=auto", f"{target}/.", self.folder], check=True)

    def _mount(self, kind, at):
        at = os.path.join(self.folder, at)
        subprocess.run(["mount", "-t", kind, kind, at], check=True)
        self.mounted.append(at)

    def close(self):
        for at in reversed(self.mounted):
            subprocess.run(["umount", "--lazy", at], check=False)
        if not any(os.path.ismount(at) for at in self.mounted):
            shutil.rmtree(self.folder)

    def command(self, *command, user="root", display=""):
        home = f"/home/{user}" if user != "root" else "/root"
        environment = ["env", "-i", f"--chdir={home}", "PATH=/usr/sbin:/usr/bin:/sbin:/bin", f"HOME={home}", "LANG=C.UTF-8",
                       "DEBIAN_FRONTEND=noninteractive", f"DISPLAY={display}"]
        return ["chroot", f"--userspec={user}", self.folder, *environment, *command]

    def run(self, *command, user="root", status=0):
        """What the command prints; another exit status than the one that is expected (None: any) is a failure."""
        done = subprocess.run(self.command(*command, user=user), text=True, capture_output=True, check=False)
        if status is not None and done.returncode != status:
            raise Failed(f"{self.suite}: {command}: status {done.returncode}: {done.stdout[-3000:]}{done.stderr[-3000:]}")
        return done.stdout

    def run_logged(self, log, *command):
        """The same for a command of many minutes, with what it prints in a file."""
        with open(log, "ab") as file:
            status = subprocess.run(self.command(*command), stdout=file, stderr=file, check=False).returncode
        if status != 0:
            end = pathlib.Path(log).read_text(errors="replace")[-3000:]
            raise Failed(f"{self.suite}: {command}: status {status}, see {log}: {end}")

    def install(self, *packages):
        self.run("apt-get", "-qq", "-y", "--no-install-recommends", "install", *packages)

    def path(self, inside):
        return pathlib.Path(self.folder + inside)
