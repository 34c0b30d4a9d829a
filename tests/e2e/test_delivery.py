"""What leaves a job: the document at its place, the status file, follow-up programs, the document shown."""

import os
import random
import subprocess
import threading
import time

from desk import DeskTest, document

HOSTILE = """$(touch ruined) `touch ruined`; "x" 'y' & *.pdf"""


class DeliveryTest(DeskTest):
    def setUp(self):
        super().setUp()
        self.source = self.file("job.ps", document("one", "two"))

    def job(self, code, **options):
        """Runs the job and gives what was said."""
        ended, words = self.gui("sessionid=job", f"ps={self.source}", **options)
        self.assertEqual(ended, code, words)
        return words

    def wait_for(self, path):
        deadline = time.monotonic() + 20
        while not (path.exists() and path.stat().st_size) and time.monotonic() < deadline:
            time.sleep(0.02)
        return path.read_bytes()


class Destinations(DeliveryTest):
    def test_a_destination_that_is_forbidden_is_waited_for(self):
        folder = self.root / "out"
        folder.mkdir()
        (folder / "a.pdf").write_bytes(b"old")
        self.settings(output=folder / "a.pdf")
        self.drop_privileges()
        folder.chmod(0o555)
        timer = threading.Timer(1.5, folder.chmod, [0o755])
        timer.start()
        self.addCleanup(timer.cancel)
        self.assertEqual(self.job(0), "")
        self.assertText(folder / "a.pdf", "one", "two")
        self.assertEqual([path.name for path in folder.iterdir()], ["a.pdf"])

    def test_what_cannot_become_a_file_is_not_waited_for(self):
        for output in (self.root, self.root / "none/a.pdf", self.root / ("x" * 300)):
            with self.subTest(str(output)):
                self.settings(output=output)
                started = time.monotonic()
                self.assertIn(f"Please close the file '{output}'", self.job(2))
                self.assertLess(time.monotonic() - started, 8)

    def test_a_killed_job_leaves_the_old_document_or_the_new(self):
        self.output.write_bytes(b"old")
        started = time.monotonic()
        self.job(0)
        took = time.monotonic() - started
        before = sorted(self.root.iterdir())
        for number in range(20):
            self.output.write_bytes(b"old")
            process = self.start("gui", f"sessionid=s{number}", f"ps={self.source}")
            time.sleep(random.uniform(0, took))
            process.kill()
            process.wait()
            if self.output.read_bytes() != b"old":
                self.assertText(self.output, "one", "two")
            self.assertEqual(sorted(self.root.iterdir()), before)
        time.sleep(1)  # the last Ghostscripts end
        for path in self.scratch.iterdir():
            os.utime(path, (0, 0))
        self.job(0)
        self.assertText(self.output, "one", "two")
        self.assertEqual(self.leftovers(), [])


class StatusFile(DeliveryTest):
    def setUp(self):
        super().setUp()
        self.status = self.root / "status.txt"
        self.asked = {"output": self.output, "statusfile": self.status, "subject": "Grüße 😀",
                      "ownerpassword": "secret", "suppresserrors": "yes"}
        self.settings(**self.asked)

    def sections(self):
        """The sections of the status file, as another program reads it."""
        sections = {}
        for line in self.status.read_bytes().decode("utf-16-le").split("\r\n"):
            if line.startswith("["):
                values = sections.setdefault(line, {})
            elif line:
                self.assertEqual(line[:2], "  ")
                key, value = line[2:].split("=", 1)
                values[key] = value
        return sections

    def test_success(self):
        self.job(0)
        told = self.sections()
        self.assertEqual(list(told), ["[Status]", "[Files]", "[PDF Printer]"])
        self.assertEqual(told["[Status]"], {"Errors": "0", "PageCount": told["[Status]"]["PageCount"], "FileCount": "1"})
        self.assertEqual(told["[Files]"], {"File1": str(self.output)})
        for key, value in self.asked.items():
            self.assertEqual(told["[PDF Printer]"][key], str(value))
        self.assertEqual(self.status.stat().st_mode & 0o777, 0o600)

    def test_a_failure_in_ghostscript(self):
        self.source.write_bytes(b"nosuchoperator\n")
        self.job(1)
        told = self.sections()
        self.assertEqual(told["[Status]"], {"Errors": "1", "PageCount": "0", "FileCount": "0"})
        self.assertEqual(told["[Files]"], {})

    def test_a_failed_delivery(self):
        self.settings(**self.asked | {"output": self.root})
        self.job(2)
        told = self.sections()
        self.assertEqual((told["[Status]"]["Errors"], told["[Status]"]["FileCount"]), ("1", "0"))
        self.assertEqual(told["[Files]"], {"File1": str(self.root)})

    def test_it_appears_whole_and_nowhere_else(self):
        self.settings(**self.asked | {"statusfile": self.root / "none/status.txt", "suppresserrors": "no"})
        self.assertIn(f"Error writing status file '{self.root}/none/status.txt'. Error 76", self.job(1))
        self.assertText(self.output, "one", "two")


class FollowUps(DeliveryTest):
    def test_a_program_gets_the_name_exactly_and_outlives_the_job(self):
        output = self.root / HOSTILE
        folder = self.root / "work"
        folder.mkdir()
        command = """sleep 2; for a in %1 "%1" '%1' "`printf %s %1`" %2 %3; do printf '%s\\n' "$a"; done > part; mv part said"""
        self.settings(output=output, runonsuccess=command, runonsuccessdir=folder, runonerror="touch wrong")
        self.assertEqual(self.job(0), "")
        self.assertFalse((folder / "said").exists(), "the job has waited for it")
        lines = self.wait_for(folder / "said").decode().splitlines()
        self.assertEqual(lines[:4], [str(output)] * 4)
        self.assertEqual(lines[5:], ["1"])
        self.assertEqual(list(self.root.rglob("ruined")) + list(self.root.rglob("wrong")), [])

    def test_failures_start_their_programs_once(self):
        commands = {"runonsuccess": "touch wrong", "runonerror": f'echo "%1 %2" >> "{self.root}/errors"',
                    "afterprintprogram": f"echo done >> '{self.root}/after'"}
        for output, content in ((self.output, b"nosuchoperator\n"), (self.root, document("one"))):
            with self.subTest(str(output)):
                self.source.write_bytes(content)
                self.settings(output=output, **commands)
                self.job(1)
                self.assertTrue(self.wait_for(self.root / "after"))
                time.sleep(0.3)
                self.assertEqual((self.root / "after").read_text(), "done\n")
                self.assertRegex((self.root / "errors").read_text(), rf"^{output} \d+\n$")
                for name in ("after", "errors"):
                    (self.root / name).unlink()
        self.assertFalse((self.root / "wrong").exists())

    def test_a_program_that_cannot_be_started(self):
        self.settings(output=self.output, runonsuccess="true %1", runonsuccessdir=self.root / "none")
        self.assertIn(f"Error 1000: Error launching the command [/bin/sh -c true {self.output}]", self.job(1))


class Shown(DeliveryTest):
    """The real xdg-open, and a viewer of this desk's own."""

    def setUp(self):
        super().setUp()
        data = self.root / "data"
        viewer = self.file("viewer", f"#!/bin/sh\nprintf %s \"$1\" > '{self.root}/part'\n"
                           f"mv '{self.root}/part' '{self.root}/viewed'\nexec sleep 4\n".encode())
        viewer.chmod(0o755)
        self.file("data/applications/viewer.desktop",
                  f"[Desktop Entry]\nType=Application\nName=V\nExec={viewer} %f\nMimeType=application/pdf;\n".encode())
        self.file("config/mimeapps.list", b"[Default Applications]\napplication/pdf=viewer.desktop\n")
        self.environment |= {"XDG_DATA_HOME": str(data), "DISPLAY": ":99", "BROWSER": "false", "XDG_CURRENT_DESKTOP": "X-Generic"}

    def test_a_document_opens_in_its_viewer(self):
        output = self.root / HOSTILE
        self.settings(output=output, showpdf="yes")
        started = time.monotonic()
        self.assertEqual(self.job(0), "")
        self.assertLess(time.monotonic() - started, 4, "the viewer was waited for")
        self.assertEqual(self.wait_for(self.root / "viewed").decode(), str(output))

    def test_no_viewer(self):
        self.file("config/mimeapps.list", b"")
        (self.root / "data/applications/viewer.desktop").unlink()
        self.environment["XDG_DATA_DIRS"] = str(self.root / "nothing")
        self.settings(output=self.output, showpdf="yes", suppresserrors="yes")
        self.assertIn("The printer was unable to open the PDF document.", self.job(0))

    def test_no_desktop(self):
        del self.environment["DISPLAY"]
        self.settings(output=self.root / "a.png", showpdf="yes")
        self.assertIn(f"File name: {self.root}/a.png", self.job(0))
