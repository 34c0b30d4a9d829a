"""gui, started as the print monitor starts it."""

import shutil
import time

from desk import ODD_NAMES, PROGRAMS, DeskTest, bitmap, document


class Jobs(DeskTest):
    def test_a_job_becomes_a_pdf_and_leaves_nothing_behind(self):
        source = self.file("job.ps", document("one", "two"))
        code, words = self.gui("sessionid=job", f"ps={source}", "doc=Letter", "printer=PDF Printer")
        self.assertEqual((code, words), (0, ""))
        self.assertText(self.output, "one", "two")
        self.assertEqual(self.leftovers(), [])
        self.assertTrue(source.exists())

    def test_a_job_does_not_load_what_printers_need(self):
        source = self.file("job.ps", document("one"))
        self.environment |= {"LD_DEBUG": "libs", "LD_DEBUG_OUTPUT": str(self.root / "loaded")}
        self.assertEqual(self.gui("sessionid=job", f"ps={source}", "printer=PDF Printer")[0], 0)
        logs = [path.read_text() for path in self.root.glob("loaded.*")]
        mine = [log for log in logs if f"transferring control: {PROGRAMS}/gui" in log]
        self.assertEqual(len(mine), 1)
        self.assertNotIn("libcups", mine[0])

    def test_odd_names(self):
        for name in ODD_NAMES:
            with self.subTest(name):
                folder = self.root / name
                self.environment["TMPDIR"] = str(folder / "tmp")
                source = self.file(f"{name}/{name}.ps", document("odd", title=name))
                self.settings(output=folder / f"{name}.pdf")
                before = sorted(self.root.iterdir())
                code, words = self.gui("sessionid=job", f"ps={source}", f'doc={name} "x"', f"printer={name}")
                self.assertEqual((code, words), (0, ""))
                self.assertText(folder / f"{name}.pdf", "odd")
                self.assertEqual(sorted(path.name for path in folder.iterdir()), sorted([f"{name}.pdf", f"{name}.ps", "tmp"]))
                self.assertEqual(sorted(self.root.iterdir()), before)

    def test_twenty_jobs_at_once(self):
        running = []
        for number in range(20):
            source = self.file(f"{number}.ps", document("one of them"))
            running.append(self.start("gui", f"sessionid=s{number:02}", f"ps={source}"))
        for process in running:
            words = process.communicate(timeout=120)
            self.assertEqual((process.returncode, words), (0, (b"", b"")))
        self.assertText(self.output, "one of them")
        self.assertEqual(self.leftovers(), [])

    def test_a_printer_instance_has_settings_of_its_own(self):
        plain = self.root / "config/Tessary/PDF Printer/settings.ini"
        plain.rename(plain.with_name("settings-Sales.ini"))
        source = self.file("job.ps", document("sales"))
        self.assertEqual(self.gui(f"ps={source}", "printer=PDF Printer [Sales]"), (0, ""))
        self.assertText(self.output, "sales")

    def test_folders_fall_back_to_the_next_candidate(self):
        source = self.file("job.ps", document("found"))
        (self.root / "config/Tessary").rename(self.root / "home/Tessary")
        for blocked in ("config", "tmp"):
            self.file(f"{blocked}/Tessary", b"")
        self.environment["TEMP"] = str(self.root / "elsewhere")
        self.assertEqual(self.gui("sessionid=job", f"ps={source}"), (0, ""))
        self.assertText(self.output, "found")
        self.assertTrue((self.root / "elsewhere/Tessary/PDF Printer").is_dir())


class OtherModes(DeskTest):
    def test_a_message_is_shown(self):
        code, words = self.gui(r'msg=Tab\tand "back\\slash"', "icon=ERROR")
        self.assertEqual(code, 0)
        self.assertIn('Tab\tand "back\\slash"', words)

    def test_disabled_options(self):
        self.settings(disableoptiondialog=" YES ")
        code, words = self.gui()
        self.assertEqual(code, 3)
        self.assertIn("Options dialog is disabled.", words)


class Failures(DeskTest):
    def setUp(self):
        super().setUp()
        self.source = self.file("job.ps", document("good"))
        self.output.write_bytes(b"an earlier document")

    def assertFails(self, number, *arguments, **options):
        """The run ends with this error (a pattern), says so, and the earlier document is whole."""
        arguments = arguments or ("sessionid=job", f"ps={self.source}")
        code, words = self.gui(*arguments, **options)
        self.assertEqual(code, 1, words)
        self.assertRegex(words, f"Error {number}: ")
        self.assertEqual(self.output.read_bytes(), b"an earlier document")
        return words

    def test_postscript_that_cannot_be_read(self):
        for value in ("", self.root / "missing.ps", self.root, self.root / "job.ps/below"):
            with self.subTest(str(value)):
                words = self.assertFails(1006, "sessionid=job", f"ps={value}")
                self.assertIn(f"Unable to find postscript file '{value}'.", words)
                self.assertEqual(self.leftovers(), ["job_printer.log"])
                self.assertIn("Error handler. Error 1006: ", self.log())

    def test_an_empty_document(self):
        self.source.write_bytes(b"")
        code, words = self.gui("sessionid=job", f"ps={self.source}")
        self.assertIn(code, (0, 1), words)

    def test_garbage(self):
        for garbage in (b"nosuchoperator\n", bytes(range(256)) * 40, document("good", tail=b"1 0 div\n")):
            with self.subTest(garbage[:20]):
                self.source.write_bytes(garbage)
                words = self.assertFails(1007)
                self.assertRegex(words, "Error: /(undefined|undefinedresult|syntaxerror)")
                self.assertRegex(self.log(), "Ghostscript returned exit code 1\\s+Ghostscript output:\\s+Error: /")
                self.assertEqual(self.leftovers(), ["job_printer.log"])

    def test_a_ghostscript_that_will_not_do(self):
        answers = '[ "$1" = --version ] && { echo %s; exit 0; }\n'
        for number, script, logged in (
                (1012, answers % "8.14", ""),
                (1012, answers % "none", ""),
                (1012, "exit 3", ""),
                (1007, answers % "10.00.0" + "kill -SEGV $$", "Ghostscript returned exit code 139"),
                (1007, answers % "10.00.0" + "exit 7", "Ghostscript returned exit code 7")):
            with self.subTest(script):
                self.ghostscript(script)
                self.assertFails(number)
                self.assertIn(logged, self.log())

    def test_no_ghostscript(self):
        for path in ("", str(self.root / "home"), "/nowhere:relative"):
            with self.subTest(path):
                self.environment["PATH"] = path
                self.assertIn("Unable to locate Ghostscript installation.", self.assertFails(1005))

    def test_a_ghostscript_that_hangs(self):
        self.ghostscript('[ "$1" = --version ] && { echo 10.00.0; exit 0; }\nexec sleep 8')
        self.settings(output=self.output, ghostscripttimeout=1)
        started = time.monotonic()
        self.assertFails(1008)
        self.assertLess(time.monotonic() - started, 6)

    def test_a_repeated_parameter(self):
        self.assertFails(457, f"ps={self.source}", "ps=again", "sessionid=job")
        self.assertEqual(self.leftovers(), ["_printer.log"])

    def test_settings_that_cannot_be_read_or_written(self):
        file = self.root / "config/Tessary/PDF Printer/settings.ini"
        file.unlink()
        file.mkdir()
        words = self.assertFails("100[24]")
        self.assertIn(str(file), words)

    def test_no_folder_for_temporary_files(self):
        self.programs = self.root / "bin"
        self.programs.mkdir()
        shutil.copy(PROGRAMS / "gui", self.programs)
        self.file("bin/temp", b"")
        self.environment |= dict.fromkeys(("TMPDIR", "TEMP", "TMP"), str(self.source))
        self.assertFails(r"\d+")

    def test_a_full_disk(self):
        self.source.write_bytes(bitmap(200))
        for limit in (0, 600, 30000):
            with self.subTest(limit):
                self.assertFails(r"\d+", limit=limit)
        self.assertEqual(sorted(self.output.parent.glob("*.pdf*")), [self.output])

    def test_a_document_that_cannot_be_delivered(self):
        for output in (self.root / "home", self.source / "below.pdf", "/proc/nothing/here.pdf"):
            with self.subTest(str(output)):
                self.settings(output=output)
                code, words = self.gui("sessionid=job", f"ps={self.source}")
                self.assertEqual(code, 2, words)
                self.assertIn(str(output), words)
