"""A print server of a test's own, with the installed programs, and users who print to it."""

import os
import pathlib
import pwd
import re
import shutil
import subprocess
import tempfile

import desk
from screen import wait_for

PRIVATE_CUPSD = pathlib.Path(__file__).resolve().parents[1] / "support" / "private-cupsd"
IS_ROOT = os.geteuid() == 0
QUIET = {"showsettings": "never", "showsaveas": "never", "showpdf": "no", "showprogressfinished": "no",
         "showprogress": "no"}


class User:
    """Somebody who prints. As root it is a user made for the test, otherwise the one who runs it."""

    def __init__(self, name, place):
        self.home = place / name
        self.made = IS_ROOT
        self.name = f"tessary-{name}-{os.getpid()}" if IS_ROOT else pwd.getpwuid(os.geteuid()).pw_name
        if self.made:
            subprocess.run(["useradd", "--no-create-home", "--home-dir", self.home, "--shell", "/bin/sh", self.name],
                           check=True)
        self.id = pwd.getpwnam(self.name).pw_uid
        # Where the session's sockets are. A folder of a real session is never this one.
        self.runtime = pathlib.Path(f"/run/user/{self.id}") if IS_ROOT else self.home / "run"
        self.temporary = pathlib.Path(f"/tmp/tessary-{self.id}")
        self.home.mkdir()
        self.runtime.mkdir(mode=0o700, parents=True)
        self.settings()

    def remove(self):
        if self.made:
            subprocess.run(["userdel", self.name], check=True)
            shutil.rmtree(self.temporary, ignore_errors=True)
        shutil.rmtree(self.runtime)

    def own(self):
        for path in [self.home, *self.home.rglob("*"), self.runtime]:
            os.chown(path, self.id, -1, follow_symlinks=False)

    def settings(self, instance="", **values):
        """The settings of a printer's instance, for this user. Nothing in them asks anything."""
        folder = self.home / ".config" / "Tessary" / "PDF Printer"
        folder.mkdir(parents=True, exist_ok=True)
        values = QUIET | {"output": self.home / "<docname>.pdf"} | values
        lines = ["[PDF Printer]", *(f"  {key}={value}" for key, value in values.items())]
        (folder / f"settings{instance and '-' + instance}.ini").write_text("\r\n".join(lines) + "\r\n")
        self.own()

    def clear(self):
        for pdf in self.home.glob("**/*.pdf"):
            pdf.unlink()
        self.settings()

    def pdfs(self):
        return sorted(path.name for path in self.home.glob("*.pdf"))

    def spool(self):
        """What is left of jobs."""
        folder = self.temporary / "Tessary" / "PDF Printer"
        return sorted(path.name for path in folder.glob("*")) if folder.is_dir() else []


class Server:
    """Has everything below the folder `root`, which is open to all users."""

    def __init__(self, root, machine_settings="", listen=""):
        self.root = root
        self.installed = root / "installed"
        subprocess.run(["cmake", "--install", desk.PROGRAMS.parent], check=True, stdout=subprocess.DEVNULL,
                       env=os.environ | {"DESTDIR": str(self.installed)})
        self.programs = self.installed / "usr/lib/tessary"
        machine = root / "machine.ini"
        machine.write_text(f"[Settings]\n{machine_settings}")
        variables = {"TESSARY_PROGRAMS": self.programs, "TESSARY_MACHINE_SETTINGS": machine}
        if not IS_ROOT:
            variables |= {"XDG_CONFIG_HOME": root / "a" / ".config", "XDG_RUNTIME_DIR": root / "a" / "run"}
        self.start_environment = os.environ | {
            "PRIVATE_CUPSD_ADDITIONS": str(self.installed / "usr/lib/cups"), "PRIVATE_CUPSD_LISTEN": listen,
            "PRIVATE_CUPSD_SETENV": "".join(f"{name} {value}\n" for name, value in variables.items())}
        self.environment = {name: value for name, value in os.environ.items() if name != "DISPLAY"} | {
            "CUPS_SERVER": str(root / "server/run/cups.sock"), "TESSARY_MACHINE_SETTINGS": str(machine),
            "LC_ALL": "C.UTF-8"}
        self.control("start")

    def control(self, command):
        subprocess.run([PRIVATE_CUPSD, command, self.root / "server"], check=True, env=self.start_environment,
                       stdout=subprocess.DEVNULL)

    def run(self, *command, user=None, **options):
        """Exit code and words of a command that `user` starts (default: whoever runs the test), without a terminal."""
        who = {"user": user.id, "group": pwd.getpwuid(user.id).pw_gid, "extra_groups": []} if user and user.made else {}
        home = {"HOME": str(user.home if user else self.root)}
        done = subprocess.run([*map(str, command)], env=self.environment | home, capture_output=True, text=True,
                              cwd="/", stdin=subprocess.DEVNULL, start_new_session=True, timeout=120, **who, **options)
        return done.returncode, done.stdout + done.stderr

    def printer(self, *arguments, **options):
        """tessary-printer, by the name that people call it by."""
        return self.run(self.installed / "usr/bin/tessary-printer", *arguments, **options)

    def submit(self, user, queue, *arguments):
        """The number of the new job."""
        code, words = self.run("lp", "-d", queue, *arguments, user=user)
        found = re.search(r"request id is .*-(\d+) ", words)
        if code or not found:
            raise AssertionError(f"lp: {words}")
        return int(found[1])

    def log(self):
        return (self.root / "server/log/error_log").read_text(errors="replace")

    def job_log(self, job):
        return [line for line in self.log().splitlines() if f"[Job {job}]" in line]

    def ended(self, job):
        """Waits for the end of a job; gives what the server says of it."""
        pattern = re.compile(rf"\[Job {job}\] (Job (?:completed|canceled|stopped|aborted)[^\n]*|Canceled[^\n]*)")
        try:
            return wait_for(lambda: next(iter(pattern.findall(self.log())), None), f"the end of job {job}")
        except AssertionError as error:
            raise AssertionError("\n".join([str(error), *self.job_log(job)[-25:]])) from None

    def is_idle(self, queue):
        return "is idle.  enabled" in self.run("lpstat", "-p", queue)[1]


class Place:
    """A folder that all users may walk through, and that goes with all that is in it."""

    def __init__(self, prefix):
        self.path = pathlib.Path(tempfile.mkdtemp(prefix=prefix))
        self.path.chmod(0o755)

    def close(self):
        shutil.rmtree(self.path, ignore_errors=True)
