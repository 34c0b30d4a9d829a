"""tessary-backend and tessaryframe, called as a print server calls them."""

import os
import pathlib
import pwd
import resource
import shutil
import signal
import stat
import struct
import subprocess
import tempfile
import time
import unittest

from desk import PROGRAMS, DeskTest, bitmap, document

OPTIONS = "finishings=3 job-originating-host-name=localhost time-at-creation=1"
OWN, COMMON = "tessary:/own", "tessary:/common"
IS_ROOT = os.geteuid() == 0
CANCEL = 5
LOOP = b"%!PS-Adobe-3.0\n%%Page: 1 1\n{ 1 pop } loop\n"


def frame(*documents, end=True):
    """The stream of documents; without `end` the last one is cut off."""
    stream = []
    for content in documents:
        parts = [content[begin:begin + 60000] for begin in range(0, len(content), 60000)]
        stream += [b"TESSARY 1 application/octet-stream 1\n", *(struct.pack(">I", len(part)) + part for part in parts), bytes(4)]
    return b"".join(stream if end else stream[:-1])


class BackendTest(DeskTest):
    """Two users of the test's own, a and b, where it runs as root. Otherwise the one who runs it is both."""

    @classmethod
    def setUpClass(cls):
        cls.place = pathlib.Path(tempfile.mkdtemp(prefix="backend-"))
        cls.addClassCleanup(shutil.rmtree, cls.place)
        cls.place.chmod(0o755)
        cls.installed = shutil.copytree(PROGRAMS, cls.place / "programs", ignore=shutil.ignore_patterns("*test*", "benchmarks"))
        for path in [cls.installed, *cls.installed.rglob("*")]:
            path.chmod(path.stat().st_mode | 0o055)
        cls.users = {}
        for key in "ab":
            name = f"tessary-backend-{key}" if IS_ROOT else pwd.getpwuid(os.geteuid()).pw_name
            if IS_ROOT:
                cls.addClassCleanup(subprocess.run, ["userdel", name], check=True)
                subprocess.run(["useradd", "-M", "-d", cls.place / key, "-G", "users", name], check=True)
            cls.users[key] = pwd.getpwnam(name)
            if IS_ROOT:
                cls.addClassCleanup(shutil.rmtree, f"/tmp/tessary-{cls.users[key].pw_uid}", ignore_errors=True)

    def setUp(self):
        super().setUp()
        self.root.chmod(0o755)
        self.machine = self.root / "machine.ini"
        self.homes = {key: self.place / key for key in "ab"}
        for key, home in self.homes.items():
            shutil.rmtree(home, ignore_errors=True)
            self.write_settings(key)
        self.before = self.leftovers()

    def give(self, folder, key):
        for path in [folder, *folder.rglob("*")]:
            os.chown(path, self.users[key].pw_uid, self.users[key].pw_gid)

    def write_settings(self, key, **values):
        self.environment["XDG_CONFIG_HOME"] = str(self.homes[key] / ".config")
        self.settings(**{"output": self.homes[key] / "<docname>.pdf"} | values)
        self.give(self.homes[key], key)

    def start_backend(self, user="a", title="Title", copies=1, options=OPTIONS, files=(), limit=None, **variables):
        """In the environment of a print server: nothing in it is the user's."""
        variables = {"PRINTER": "pdf", "DEVICE_URI": OWN, "HOME": "/nowhere", "TMPDIR": "/nowhere", "USER": "root", "PATH": "/nowhere",
                     "LANG": "en.UTF-8", "CUPS_SERVERROOT": "/nowhere", "TESSARY_PROGRAMS": str(self.installed),
                     "TESSARY_MACHINE_SETTINGS": str(self.machine)} | variables
        if not IS_ROOT:
            variables["XDG_CONFIG_HOME"] = str(self.homes["a"] / ".config")

        def limit_files():
            resource.setrlimit(resource.RLIMIT_FSIZE, (limit, limit))
        return self.enterContext(subprocess.Popen(
            [self.installed / "tessary-backend", "7", self.users[user].pw_name if user in self.users else user, title,
             str(copies), options, *files], cwd="/", env=variables, stdin=subprocess.PIPE, stdout=subprocess.PIPE,
            stderr=subprocess.PIPE, preexec_fn=limit_files if limit else None))

    def backend(self, stream, **options):
        """Exit code, and the errors that the server was told of."""
        words, said = (process := self.start_backend(**options)).communicate(stream, timeout=60)
        self.assertEqual(words, b"")
        for line in said.decode().splitlines():
            self.assertRegex(line, r"^(DEBUG|INFO|ERROR|PAGE|STATE): [^\x00-\x1f]*$")
        self.pages = [line for line in said.decode().splitlines() if line.startswith("PAGE")]
        return process.returncode, [line for line in said.decode().splitlines() if line.startswith("ERROR")]

    def assertPrints(self, stream=b"", **options):
        self.assertEqual(self.backend(stream, **options), (0, []))

    def assertFails(self, words, stream=b"", **options):
        """One clear line; the server is told to go on with the next job, and nothing is left of this one."""
        code, errors = self.backend(stream, **options)
        self.assertEqual((code, len(errors)), (CANCEL, 1), errors)
        self.assertIn(words, errors[0])
        self.assertNothingLeft()

    def documents(self, key="a"):
        return sorted(path.name for path in self.homes[key].glob("*.pdf"))

    def leftovers(self):
        folders = [pathlib.Path(f"/tmp/tessary-{user.pw_uid}/Tessary/PDF Printer") for user in self.users.values()]
        return {path for folder in folders for path in folder.glob("*") if not path.name.endswith("_printer.log")}

    def processes(self, key):
        """The names of the user's processes."""
        names = []
        for status in pathlib.Path("/proc").glob("[0-9]*/status"):
            try:
                fields = dict(line.split(":\t", 1) for line in status.read_text().splitlines())
            except (FileNotFoundError, ProcessLookupError):
                continue
            if fields["Uid"].split()[0] == str(self.users[key].pw_uid) and not fields["State"].startswith("Z"):
                names.append(fields["Name"])
        return names

    def assertNothingLeft(self):
        self.assertEqual(self.leftovers(), self.before)
        for key in self.homes if IS_ROOT else ():
            self.assertEqual(self.processes(key), [])

    def wait_for(self, condition):
        deadline = time.monotonic() + 20
        while not condition():
            self.assertLess(time.monotonic(), deadline)
            time.sleep(0.02)


class Jobs(BackendTest):
    def test_it_announces_its_device(self):
        announced = subprocess.run([self.installed / "tessary-backend"], capture_output=True, check=True)
        self.assertRegex(announced.stdout, rb'^direct tessary:/ "[^"]+" "[^"]+" "[^"]+" ""\n$')

    def test_several_documents_of_one_instance(self):
        folder = self.homes["a"] / ".config/Tessary/PDF Printer"
        (folder / "settings.ini").rename(folder / "settings-Sales.ini")
        self.assertPrints(frame(document("one"), bitmap(64), document("three")), title='../$(x) "Ü" 報告',
                          PRINTER_INFO="PDF Printer [Sales]")
        self.assertEqual(len(self.documents()), 3)
        for path in self.homes["a"].glob("*.pdf"):
            self.assertText(path, "three" if "(3)" in path.name else "" if "(2)" in path.name else "one")
            status = path.stat()
            self.assertEqual((status.st_uid, stat.S_IMODE(status.st_mode)), (self.users["a"].pw_uid, 0o600))
        self.assertNothingLeft()

    def test_a_file_of_the_server(self):
        source, link = self.file("d00007-001", document("one", "two")), self.root / "link"
        source.chmod(0o600)
        self.assertPrints(files=[source], copies=2)
        self.assertText(self.homes["a"] / "Title.pdf", "one", "two", "one", "two")
        self.assertEqual(self.pages, ["PAGE: total 4"])
        link.symlink_to(source)
        for path in (link, self.root, "/dev/null", self.root / "missing"):
            self.assertFails("", files=[path])

    def test_both_programs_together(self):
        def call(*files, **options):
            return subprocess.Popen([self.installed / "tessaryframe", "7", "a", "Title", "2", OPTIONS, *files],
                                    env={"CONTENT_TYPE": "a b\n"}, stderr=subprocess.PIPE, **options)
        stream = call(self.file("f", document("one")), stdout=subprocess.PIPE).communicate()[0]
        cut = call(stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        cut.stdin.write(document("cut"))
        cut.stdin.flush()
        stream += os.read(cut.stdout.fileno(), 1000)
        cut.terminate()
        self.assertFails("'Title (2)' was not printed: is cut off", stream + cut.communicate()[0])
        self.assertEqual(self.documents(), ["Title.pdf"])
        self.assertText(self.homes["a"] / "Title.pdf", "one", "one")
        reader, writer = os.pipe()
        os.close(reader)
        gone, missing = call("/dev/zero", stdout=writer), call(self.root / "missing", stdout=writer)
        os.close(writer)
        self.assertRegex(gone.communicate()[1], rb"^DEBUG: [^\n]+\n$")
        self.assertRegex(missing.communicate()[1], rb"^ERROR: The document cannot be read: [^\n]+\n$")
        self.assertEqual((gone.returncode, missing.returncode), (0, 1))

    def test_what_programs_of_the_user_get(self):
        user, said = self.users["a"], self.homes["a"] / "said"
        script = self.file("after", b'#!/bin/sh\nexec > "$HOME/part"\nenv; id -u; id -g; id -Gn; umask; ls -l /proc/$$/fd > fds\n'
                                    b"grep -c 'pipe:\\|socket:' fds; grep 'Cap[^B].*[1-9a-f]$' /proc/$$/status\nmv part said\n")
        script.chmod(0o755)
        self.write_settings("a", afterprintprogram=f"cd {self.homes['a']}; HOME={self.homes['a']} {script}")
        self.assertPrints(frame(document("x")))
        self.wait_for(said.exists)
        lines = said.read_text().splitlines()
        variables = {line.split("=", 1)[0] for line in lines if "=" in line}
        self.assertEqual(variables - {"PWD", "OLDPWD", "_", "SHLVL", "XDG_CONFIG_HOME", "XDG_RUNTIME_DIR"},
                         {"HOME", "USER", "LOGNAME", "SHELL", "PATH", "LANG", "TESSARY_MACHINE_SETTINGS"})
        rest = [line for line in lines if "=" not in line]
        self.assertEqual([*rest[:2], rest[3]], [str(user.pw_uid), str(user.pw_gid), "0077"])
        if IS_ROOT:
            self.assertEqual((set(rest[2].split()), rest[4:]), ({user.pw_name, "users"}, ["0"]))
            self.wait_for(lambda: not self.processes("a"))


@unittest.skipUnless(IS_ROOT, "only root can become other users")
class Users(BackendTest):
    def test_each_prints_as_oneself_or_not_at_all(self):
        for user, words in (("root", "root does not print"), ("lp", "'lp' is an account"), ("../b", "no user '../b'")):
            self.assertFails(words, frame(document("x")), user=user)
        for device in ("tessary:/", "tessary:/common/", "tessary://common", ""):
            self.assertFails("not added with tessary-printer", frame(document("x")), DEVICE_URI=device)
        self.assertFails("the printer is for all", frame(document("x")), DEVICE_URI=COMMON)
        self.homes["b"].chmod(0o700)
        self.write_settings("a", output=self.homes["b"] / "stolen.pdf")
        self.assertFails("could not be delivered", frame(document("x")))
        self.assertPrints(frame(document("x")), user="b")
        self.assertEqual(self.documents("b"), ["Title.pdf"])

    def test_jobs_of_nobody_here(self):
        common = self.root / "common"
        common.mkdir()
        self.machine.write_text(f"[Settings]\nRemoteUser={self.users['b'].pw_name}\nRemoteFolder={common}\n")
        self.assertFails("RemoteFolder cannot be used", frame(document("x")), user="stranger")
        self.give(common, "b")
        self.write_settings("b", showsettings="always", output=self.homes["b"] / "usual.pdf")
        (common / "Title.pdf").write_bytes(b"an earlier document")
        self.assertPrints(frame(document("here")))
        self.assertPrints(frame(document("here")), title="Far", options=OPTIONS.replace("localhost", "10.0.0.2"))
        for user, device, title in (("stranger", COMMON, "Title"), ("a", COMMON, "Title"), ("root", OWN, "../<title>/x"),
                                    ("a", COMMON, ".profile")):
            self.assertPrints(frame(document("x")), user=user, DEVICE_URI=device, title=title)
        self.assertEqual({path.name for path in common.iterdir()},
                         {"Title.pdf", "Title (2).pdf", "Title (3).pdf", "_.__title__x.pdf", "_profile.pdf"})
        self.assertEqual((common / "Title.pdf").read_bytes(), b"an earlier document")
        status = (common / "Title (2).pdf").stat()
        self.assertEqual((status.st_uid, stat.S_IMODE(status.st_mode)), (self.users["b"].pw_uid, 0o640))
        self.assertEqual((self.documents("a"), self.documents("b")), (["Far.pdf", "Title.pdf"], []))
        self.assertNothingLeft()

    def test_what_somebody_else_has_laid_in_the_place_of_the_spool(self):
        folder, trap = pathlib.Path(f"/tmp/tessary-{self.users['a'].pw_uid}"), self.root / "trap"
        trap.mkdir()
        trap.chmod(0o777)
        self.addCleanup(folder.rmdir)
        for lay in (lambda: folder.symlink_to(trap), lambda: (folder.unlink(), folder.mkdir())):
            shutil.rmtree(folder, ignore_errors=True)
            lay()
            self.assertPrints(frame(document("x")))
            self.assertEqual([*trap.iterdir(), *folder.iterdir()], [])
            own = self.homes["a"] / ".cache/tessary"
            self.assertEqual(([path for path in own.rglob("*") if path.is_file()], stat.S_IMODE(own.stat().st_mode)), ([], 0o700))


class BadInput(BackendTest):
    def test_documents_and_streams(self):
        self.write_settings("a", ghostscripttimeout="2")
        pdf, good = self.root / "x.pdf", document("good")
        subprocess.run(["gs", "-q", "-dBATCH", "-dNOPAUSE", "-sDEVICE=pdfwrite", f"-sOutputFile={pdf}",
                        self.file("x.ps", bitmap(2000))], check=True)
        for name, stream, words, printed in (
                ("empty", frame(b"", good), "is empty", " (2)"), ("garbage", frame(bytes(range(128, 256)), good), "", " (2)"),
                ("zeros", frame(bytes(50_000_000), good), "holds no document", " (2)"),
                ("half a PDF", frame(pdf.read_bytes()[:2000], good), "", " (2)"),
                ("an error", frame(b"%!PS\nnosuchoperator\n", good), "no PDF was made", " (2)"),
                ("a loop", frame(LOOP, good), "timed out", " (2)"), ("nothing", b"", "holds no document", None),
                ("no frame", good, "is not framed", None), ("damage", frame(good) + b"TESSARY 1 a/b 1\n\xff\xff\xff\xff", "damaged", ""),
                ("cut off", frame(good, good, end=False), "is cut off", "")):
            with self.subTest(name):
                self.assertFails(words, stream, title=name)
                self.assertEqual(self.documents(), [] if printed is None else [f"{name}{printed}.pdf"])
                for path in self.homes["a"].glob("*.pdf"):
                    path.unlink()

    def test_a_full_disk_and_a_long_title(self):
        old = self.homes["a"] / "out.pdf"
        old.write_bytes(b"an earlier document")
        self.write_settings("a", output=old)
        title = "é" * 5000 + "\nPPD: x"
        for limit in (1, 100, 20_000, 60_000):
            with self.subTest(limit):
                self.assertFails("was not printed", frame(bitmap(400)), limit=limit, title=title)
                self.assertEqual(old.read_bytes(), b"an earlier document")
        self.assertPrints(frame(bitmap(400)), title=title)

    @unittest.skipUnless(IS_ROOT, "a home that belongs to somebody else")
    def test_a_home_that_cannot_be_written(self):
        shutil.rmtree(self.homes["a"])
        self.homes["a"].mkdir(mode=0o755)
        self.assertFails("was not printed", frame(document("x")))
        self.assertEqual(list(self.homes["a"].iterdir()), [])


class Cancelling(BackendTest):
    def test_at_any_moment(self):
        old = self.homes["a"] / "Title.pdf"
        old.write_bytes(b"an earlier document")
        runs_ghostscript = lambda: "gs" in self.processes("a")
        for end, stream, reached in ((signal.SIGTERM, frame(document("x") * 1000, end=False), lambda: self.leftovers() != self.before),
                                     (signal.SIGTERM, frame(LOOP), runs_ghostscript), (signal.SIGKILL, frame(LOOP), runs_ghostscript)):
            with self.subTest(end=end, stream=stream[:60]):
                process = self.start_backend()
                process.stdin.write(stream)
                process.stdin.flush()
                self.wait_for(reached)
                began = time.monotonic()
                process.send_signal(end)
                said = process.stderr.read()
                self.assertLess(time.monotonic() - began, 5)
                self.assertNotIn(b"ERROR", said)
                self.wait_for(lambda: not runs_ghostscript())
                self.assertEqual(process.wait(20), CANCEL if end == signal.SIGTERM else -end)
                self.assertEqual(old.read_bytes(), b"an earlier document")
                if end == signal.SIGTERM:
                    self.assertNothingLeft()
        self.wait_for(lambda: not (IS_ROOT and self.processes("a")))
        for path in self.leftovers() - self.before:
            path.unlink()
