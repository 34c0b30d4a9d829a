"""From any application to the PDF: lp, a print server of the test's own, filter, backend, agent and gui."""

import contextlib
import os
import pathlib
import shutil
import signal
import socket
import struct
import subprocess
import unittest
import unittest.mock
import zlib

import desk
from cups_server import IS_ROOT, PRIVATE_CUPSD, Place, Server, User
from screen import Screen, wait_for

REMOTE = "10.213.0"  # the first three numbers of the network between two machines
PORT = 6331
LOOP = b"%!PS-Adobe-3.0\n%%Pages: 1\n%%EndComments\n%%Page: 1 1\n{} loop\nshowpage\n%%EOF\n"
only_root = unittest.skipUnless(IS_ROOT, "needs root, who can make users and networks")


def picture():
    """A PNG of 16 by 16 coloured pixels."""
    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))
    rows = b"".join(b"\0" + bytes(range(row, row + 48)) for row in range(16))
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", 16, 16, 8, 2, 0, 0, 0)) +
            chunk(b"IDAT", zlib.compress(rows)) + chunk(b"IEND", b""))


def text_of(pdf):
    """The text of each page."""
    said = subprocess.run(["pdftotext", pdf, "-"], check=True, capture_output=True, text=True).stdout
    return [page.strip() for page in said.split("\f")[:-1]]


def sizes_of(pdf):
    """Width and height of each page."""
    said = subprocess.run(["pdfinfo", "-l", "99", pdf], check=True, capture_output=True, text=True).stdout
    return [" ".join(line.split()[3:6]) for line in said.splitlines() if line.startswith("Page ") and " size:" in line]


@unittest.skipUnless(shutil.which("cupsd") or os.path.exists("/usr/sbin/cupsd") or "CI" in os.environ,
                     "there is no print server on this machine")
class CupsTest(unittest.TestCase):
    maxDiff = 2000
    listen = ""

    @classmethod
    def setUpClass(cls):
        place = Place("cups-")
        cls.addClassCleanup(place.close)
        cls.place = place.path
        cls.users = {}
        for key in ("a", "b", "common") if IS_ROOT else ("a",):
            cls.users[key] = User(key, cls.place)
            cls.addClassCleanup(cls.users[key].remove)
        cls.a, cls.b = cls.users["a"], cls.users.get("b")
        common = cls.users.get("common", cls.a)
        cls.server = Server(cls.place, f"RemoteUser={common.name}\nRemoteFolder={common.home}\n", cls.listen)
        cls.addClassCleanup(cls.server.control, "stop")
        for name in ("PDF Printer", "PDF Printer [Sales]"):
            code, words = cls.server.printer("add", name)
            assert code == 0, words

    def setUp(self):
        for user in self.users.values():
            user.clear()
        self.files = pathlib.Path(self.enterContext(contextlib.closing(Place("documents-"))).path)

    def file(self, name, content):
        path = self.files / name
        path.write_bytes(content)
        return path

    def pdf(self, name, *pages):
        """A PDF with one line of text on each page."""
        path = self.files / name
        desk.bare(self.file(name + ".ps", desk.document(*pages)), path)
        return path

    def print(self, *arguments, user=None, queue="PDF_Printer"):
        """Prints, and gives the job's number when it is there as a PDF."""
        job = self.server.submit(user or self.a, queue, *arguments)
        self.assertIn("completed", self.server.ended(job), "\n".join(self.server.job_log(job)[-25:]))
        return job

    def assertPdf(self, user, name, *pages):
        path = user.home / name
        self.assertTrue(path.exists(), f"{name} among {user.pdfs()}")
        self.assertEqual((path.stat().st_uid, path.stat().st_mode & 0o077), (user.id, 0))
        self.assertEqual(text_of(path), list(pages))

    def assertNothingLeft(self):
        queues = ("PDF_Printer", "PDF_Printer_Sales")
        wait_for(lambda: all(self.server.is_idle(queue) for queue in queues), "idle printers")
        for user in self.users.values():
            self.assertEqual([name for name in user.spool() if not name.endswith("_printer.log")], [])


class Printing(CupsTest):
    def test_documents_of_all_kinds(self):
        self.print(self.pdf("a.pdf", "one", "two"))
        self.assertPdf(self.a, "a.pdf.pdf", "one", "two")
        self.print(self.file("b.ps", desk.document("three")))
        self.assertPdf(self.a, "b.ps.pdf", "three")
        for name, content in (("c.txt", b"plain text\n"), ("d.png", picture())):
            with self.subTest(name):
                self.print(self.file(name, content))
                (page,) = desk.pixels(self.a.home / f"{name}.pdf")
                self.assertGreater(len(set(page)), 20, "an empty page")
        self.assertNothingLeft()

    def test_several_documents_in_one_job(self):
        files = [self.pdf("1.pdf", "one"), self.file("2.ps", desk.document("two", "2")), self.file("3.txt", b"three\n"),
                 self.file("4.png", picture()), self.pdf("5.pdf", "five")]
        self.print("-t", "Five", *files)
        self.assertEqual(self.a.pdfs(), sorted(["Five.pdf", *(f"Five ({number}).pdf" for number in range(2, 6))]))
        self.assertPdf(self.a, "Five.pdf", "one")
        self.assertPdf(self.a, "Five (2).pdf", "two", "2")
        self.assertPdf(self.a, "Five (5).pdf", "five")

    def test_raw_documents_and_copies(self):
        self.print("-t", "raw", "-o", "raw", self.pdf("a.pdf", "one"))
        self.assertPdf(self.a, "raw.pdf", "one")
        for name, source in (("pdf", self.pdf("b.pdf", "one", "two")),
                             ("ps", self.file("b.ps", desk.document("one", "two")))):
            with self.subTest(name):
                self.print("-t", name, "-n", "3", source)
                self.assertPdf(self.a, f"{name}.pdf", *["one", "two"] * 3)

    def test_pages_keep_their_size_unless_they_are_to_be_arranged(self):
        source = self.file("sizes.ps", b"".join(
            b"<</PageSize[%d %d]>>setpagedevice /Helvetica findfont 20 scalefont setfont\n"
            b"20 40 moveto (%d) show showpage\n" %
            (width, height, width) for width, height in ((842, 1191), (300, 200), (612, 792), (595, 842))))
        pdf = self.files / "sizes.pdf"
        desk.bare(source, pdf)
        for name, options in (("all", []), ("some", ["-P", "2-3"])):
            with self.subTest(name):
                self.print("-t", name, *options, pdf)
        self.assertEqual(sizes_of(self.a.home / "all.pdf"), ["842 x 1191", "300 x 200", "612 x 792", "595 x 842"])
        self.assertPdf(self.a, "some.pdf", "300", "612")
        self.print("-t", "ps", "-P", "2", self.file("pages.ps", desk.document("one", "two", "three")))
        self.assertPdf(self.a, "ps.pdf", "two")
        self.print("-t", "two up", "-o", "number-up=2", self.pdf("up.pdf", "one", "two", "three"))
        self.assertEqual(len(text_of(self.a.home / "two up.pdf")), 2)

    def test_titles_are_titles_and_nothing_else(self):
        before = sorted(self.place.rglob("*.pdf"))
        self.print("-t", '../../"$(touch ruined)" Über 報告', self.pdf("a.pdf", "odd"))
        (name,) = self.a.pdfs()
        self.assertIn("Über 報告", name)
        self.assertPdf(self.a, name, "odd")
        self.assertEqual(sorted(self.place.rglob("*.pdf")), sorted([*before, self.a.home / name]))
        self.assertEqual([*self.place.rglob("ruined")], [])

    def test_the_description_selects_the_instance(self):
        self.a.settings("Sales", output=self.a.home / "sales.pdf")
        self.print(self.pdf("a.pdf", "sold"), queue="PDF_Printer_Sales")
        self.assertPdf(self.a, "sales.pdf", "sold")

    def test_what_is_no_document_never_stops_the_queue(self):
        whole = self.pdf("whole.pdf", "whole").read_bytes()
        for name, content in (("garbage", bytes(range(256)) * 40), ("part.pdf", whole[:100]),
                              ("error.ps", desk.document("x").replace(b"showpage", b"nonsense"))):
            with self.subTest(name):
                job = self.server.submit(self.a, "PDF_Printer", "-t", "bad", "-o", "raw", self.file(name, content))
                self.assertNotIn("completed", self.server.ended(job))
                errors = [line for line in self.server.job_log(job) if line.startswith("E ")]
                self.assertTrue(errors, self.server.job_log(job)[-20:])
        self.print("-t", "next", self.pdf("a.pdf", "next"))
        self.assertEqual(self.a.pdfs(), ["next.pdf"])

    def test_a_cancelled_job_is_gone(self):
        old = self.a.home / "old.pdf"
        old.write_bytes(b"old")
        self.a.own()
        job = self.server.submit(self.a, "PDF_Printer", "-t", "old", self.file("loop.ps", LOOP))
        wait_for(lambda: any(name.endswith("_params.gs") for name in self.a.spool()), "Ghostscript's parameters")
        code, words = self.server.run("cancel", str(job), user=self.a)
        self.assertEqual((code, words), (0, ""))
        self.assertIn("cancel", self.server.ended(job).lower())
        self.assertNothingLeft()
        self.assertEqual(old.read_bytes(), b"old")
        self.print("-t", "next", self.pdf("a.pdf", "next"))
        self.assertPdf(self.a, "next.pdf", "next")

    @only_root
    def test_each_user_has_their_own(self):
        source = self.pdf("a.pdf", "mine")
        for user in (self.a, self.b):
            self.print("-t", "mine", source, user=user)
        for user in (self.a, self.b):
            self.assertEqual(user.pdfs(), ["mine.pdf"])
            self.assertPdf(user, "mine.pdf", "mine")

    @only_root
    def test_nobody_prints_in_anothers_name(self):
        source = self.pdf("a.pdf", "theirs")
        code, words = self.server.run("lp", "-U", self.b.name, "-d", "PDF_Printer", source, user=self.a)
        self.assertNotEqual(code, 0, words)
        # Another printer may believe everything; what waits there does not come in by a move.
        self.server.run("lpadmin", "-p", "other", "-E", "-v", "file:/dev/null", "-m", "raw")
        code, words = self.server.run("lp", "-U", self.b.name, "-d", "other", "-H", "hold", source, user=self.a)
        self.assertEqual(code, 0, words)
        job = words.split()[3]
        code, words = self.server.run("env", f"CUPS_USER={self.b.name}", "lpmove", job, "PDF_Printer", user=self.a)
        self.assertNotEqual(code, 0, words)
        self.server.run("lpadmin", "-x", "other")
        self.assertEqual(self.b.pdfs(), [])
        self.assertNothingLeft()


class Administration(CupsTest):
    def test_printers_come_and_go(self):
        server = self.server
        code, words = server.printer("add", 'The "new" one #1/2 [Büro]', "--location", "2nd floor",
                                     "--paper", "Letter", "--default")
        self.assertEqual((code, words), (0, ""))
        lines = server.printer("list")[1].splitlines()
        self.assertEqual([line.split()[-4:] for line in lines],
                         [["QUEUE", "INSTANCE", "DEFAULT", "SHARED"], ["PDF_Printer", "-", "no", "no"],
                          ["PDF_Printer_Sales", "Sales", "no", "no"], ["The_new_one_1_2_Büro", "Büro", "yes", "no"]])
        ppd = self.place / "server/etc/ppd/The_new_one_1_2_Büro.ppd"
        self.assertIn("*DefaultPageSize: Letter\n", ppd.read_text())
        # Where the server's filters are at home nothing is installed.
        said = subprocess.run(["cupstestppd", "-I", "filters", ppd], capture_output=True, text=True)
        self.assertEqual(said.returncode, 0, said.stdout)
        self.assertEqual(server.printer("default", "pdf printer"), (0, ""))
        self.assertIn("PDF_Printer\n", server.run("lpstat", "-d")[1])
        self.assertEqual(server.printer("remove", "The_new_one_1_2_Büro"), (0, ""))
        self.assertNotIn("Büro", server.printer("list")[1])

    def test_the_configuration_is_written_once(self):
        file = self.place / "server/etc/cupsd.conf"
        before = file.read_text()
        self.assertEqual(before.count("<Policy tessary>"), 1)
        self.assertEqual(self.server.printer("add", "Another")[0], 0)
        self.assertEqual(file.read_text(), before)
        self.assertEqual(self.server.printer("remove", "Another")[0], 0)

    def test_refusals_change_nothing(self):
        self.server.run("lpadmin", "-p", "foreign", "-E", "-v", "file:/dev/null", "-m", "raw", "-u", "allow:nobody")
        before = self.server.run("lpstat", "-v")[1]
        for words, *call in (("already", "add", "pdf PRINTER"), ("already", "add", "foreign"),
                             ("not a printer of", "remove", "foreign"),
                             ("not a printer of", "share", "foreign", "on"), ("no printer", "default", "nobody"),
                             ("no backend", "add", "Lonely")):
            with self.subTest(words):
                backend = self.place / "server/bin/backend/tessary"
                if "backend" in words:
                    backend.rename(backend.with_suffix(".gone"))
                code, said = self.server.printer(*call)
                self.assertEqual(code, 1, said)
                self.assertIn(words, said)
                if "backend" in words:
                    backend.with_suffix(".gone").rename(backend)
        if IS_ROOT:
            code, said = self.server.printer("remove", "PDF Printer", user=self.a)
            self.assertEqual((code, "sudo" in said), (1, True), said)
        self.assertEqual(self.server.run("lpstat", "-v")[1], before)
        self.server.run("lpadmin", "-x", "foreign")
        with unittest.mock.patch.dict(self.server.environment, CUPS_SERVER=str(self.place / "nobody")):
            self.assertEqual(self.server.printer("list")[0], 1)


@only_root
class Network(CupsTest):
    """A second machine: a network namespace of its own, joined to this one by a cable."""

    listen = f"{REMOTE}.1:{PORT}"

    @classmethod
    def setUpClass(cls):
        name = f"tessary-test-{os.getpid()}"
        # Not "ip netns exec", which wants to mount things of its own.
        cls.there = f"nsenter --net=/run/netns/{name}"
        commands = [f"ip netns add {name}", f"ip link add {name[-8:]}h type veth peer name {name[-8:]}n netns {name}",
                    f"ip addr add {REMOTE}.1/24 dev {name[-8:]}h", f"ip link set {name[-8:]}h up",
                    f"{cls.there} ip addr add {REMOTE}.2/24 dev {name[-8:]}n",
                    f"{cls.there} ip link set {name[-8:]}n up"]
        for command in commands:
            done = subprocess.run(command.split(), capture_output=True, text=True)
            if command == commands[0]:
                if done.returncode and "CI" not in os.environ:
                    raise unittest.SkipTest(f"no network of its own: {done.stderr}")
                cls.addClassCleanup(subprocess.run, ["ip", "netns", "del", name])
            assert done.returncode == 0, f"{command}: {done.stderr}"
        super().setUpClass()

    def print_from_there(self, source, queue="PDF_Printer"):
        """What lp says on the other machine, where this one's users are not known by their numbers."""
        return self.server.run(*self.there.split(), "lp", "-h", f"{REMOTE}.1:{PORT}", "-U", self.a.name, "-d", queue, source)

    def test_a_printer_is_shared_with_those_who_prove_who_they_are_or_with_a_network(self):
        source, common = self.pdf("a.pdf", "from afar"), self.users["common"]
        code, words = self.print_from_there(source)
        self.assertNotEqual(code, 0, "a printer that is not shared")

        self.assertEqual(self.server.printer("share", "PDF Printer", "on")[0], 0)
        code, words = self.print_from_there(source)
        self.assertNotEqual(code, 0, "in a user's name, without a password")
        self.assertEqual(self.a.pdfs(), [])

        self.assertEqual(self.server.printer("share", "PDF Printer", "on", "--from", "10.99.0.0/16")[0], 0)
        code, words = self.print_from_there(source)
        self.assertNotEqual(code, 0, "from another network")

        self.assertEqual(self.server.printer("share", "PDF Printer", "on", "--from", f"{REMOTE}.0/24")[0], 0)
        self.assertIn("with all", self.server.printer("list")[1])
        code, words = self.print_from_there(source)
        self.assertEqual(code, 0, words)
        self.assertIn("completed", self.server.ended(int(words.split()[3].rpartition("-")[2])))
        (name,) = common.pdfs()
        self.assertEqual(((common.home / name).stat().st_uid, text_of(common.home / name)), (common.id, ["from afar"]))
        # On such a printer nobody proves who they are, here neither: nothing runs as the user that is named.
        self.server.submit(self.b, "PDF_Printer", "-U", self.a.name, source)
        wait_for(lambda: len(common.pdfs()) == 2, "the second document")
        self.assertEqual(self.a.pdfs(), [])

        waiting = self.server.submit(self.b, "PDF_Printer", "-U", self.a.name, "-H", "hold", source)
        self.assertEqual(self.server.printer("share", "PDF Printer", "off"), (0, ""))
        self.assertIn("cancel", self.server.ended(waiting).lower())
        code, words = self.print_from_there(source)
        self.assertNotEqual(code, 0, "a printer that is shared no more")
        self.print("-t", "own", source)
        self.assertPdf(self.a, "own.pdf", "from afar")


class Session(CupsTest):
    """A user at a screen."""

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.screen = Screen()
        cls.addClassCleanup(cls.screen.close)

    def setUp(self):
        super().setUp()
        for instance in ("", "Sales"):
            self.a.settings(instance, showsettings="always", output=self.a.home / "suggested.pdf")
        variables = {"DISPLAY": self.screen.display, "XDG_RUNTIME_DIR": str(self.a.runtime), "HOME": str(self.a.home),
                     "LANG": "C.UTF-8", "PATH": os.environ["PATH"], "XDG_CONFIG_HOME": str(self.a.home / ".config")}
        who = {"user": self.a.id, "group": self.a.id, "extra_groups": []} if self.a.made else {}
        self.agent = subprocess.Popen([self.server.programs / "tessary-agent"], env=variables, cwd="/",
                                      start_new_session=True, umask=0o077, **who)
        self.addCleanup(self.end_agent)
        with socket.socket(socket.AF_UNIX, socket.SOCK_SEQPACKET) as probe:
            wait_for(lambda: probe.connect_ex(str(self.a.runtime / "tessary/agent")) == 0, "the agent")

    def end_agent(self):
        self.agent.kill()
        self.agent.wait()

    def test_the_dialog_opens_and_save_delivers(self):
        job = self.server.submit(self.a, "PDF_Printer_Sales", "-t", "Seen", self.pdf("a.pdf", "seen"))
        window = self.screen.await_window("Create PDF - PDF Printer [Sales]")
        self.screen.picture("cups-dialog", window)
        self.screen.key("ctrl+a")
        self.screen.type(str(self.a.home / "typed"))
        self.screen.key("Return")
        self.assertIn("completed", self.server.ended(job))
        self.assertPdf(self.a, "typed.pdf", "seen")

    def test_a_job_survives_its_agent(self):
        job = self.server.submit(self.a, "PDF_Printer", "-t", "Survivor", self.pdf("a.pdf", "here"))
        self.screen.await_window("Create PDF - PDF_Printer")
        self.agent.send_signal(signal.SIGKILL)
        self.assertIn("completed", self.server.ended(job))
        self.assertPdf(self.a, "suggested.pdf", "here")
        self.assertNothingLeft()

    def test_a_cancelled_job_takes_its_dialog_with_it(self):
        job = self.server.submit(self.a, "PDF_Printer", self.pdf("a.pdf", "never"))
        self.screen.await_window("Create PDF - PDF_Printer")
        self.server.run("cancel", str(job), user=self.a)
        self.assertIn("cancel", self.server.ended(job).lower())
        wait_for(lambda: not self.screen.windows("Create PDF"), "the end of the dialog")
        self.assertNothingLeft()
        self.assertEqual(self.a.pdfs(), [])
