"""tessary-print: documents as programs on this system write them."""

import unittest

from desk import ODD_NAMES, SAMPLES, DeskTest, bitmap, document


class Printing(DeskTest):
    def assertPrints(self, *arguments, **options):
        code, words = self.tessary_print(*arguments, **options)
        self.assertEqual(code, 0, words)

    def test_documents(self):
        escape = b"\x1b%-12345X"
        for name, content, pages in (
                ("plain", document("one", "two"), ["one", "two"]),
                ("no comments", document("one", "two", dsc=False), ["one", "two"]),
                ("carriage returns", document("one", "two").replace(b"\n", b"\r"), ["one", "two"]),
                ("printer job", document("one", head=escape + b"@PJL JOB\r\n@PJL ENTER LANGUAGE=POSTSCRIPT\r\n",
                                         tail=b"\x04" + escape + b"@PJL EOJ\r\n" + escape), ["one"]),
                ("end of file mark", document("one", tail=b"\x04"), ["one"])):
            with self.subTest(name):
                self.assertPrints(self.file("job.ps", content))
                self.assertText(self.output, *pages)
                self.assertEqual(self.leftovers(), [])
                self.output.unlink()

    def test_page_markers(self):
        kept = self.spy()
        for dsc in (True, False):
            with self.subTest(dsc=dsc):
                self.assertPrints(self.file("job.ps", document("one", "two", "three", dsc=dsc)))
                (said,) = kept.glob("*_params.out")
                self.assertEqual(said.read_text().split("%%[Page: ")[1:], ["1]%%\n", "2]%%\n", "3]%%\n"])
                said.unlink()

    def test_binary_images(self):
        for comments in (True, False):
            with self.subTest(comments=comments):
                source = self.file("image.ps", bitmap(64, comments))
                self.assertPrints(source)
                self.assertSameAsBare(self.output, source)

    def test_odd_names(self):
        for name in ODD_NAMES:
            with self.subTest(name):
                self.environment["TMPDIR"] = str(self.root / "tmp" / name)
                target = self.root / f"{name}.pdf"
                self.assertPrints("--title", f'{name} "x"', "--printer", f"P [{name}]", "--set", f"output={target}",
                                  "--set", "showpdf=no", "--", self.file(f"{name}.ps", document("odd")))
                self.assertText(target, "odd")

    def test_standard_input(self):
        self.assertPrints("-", input=document("piped"))
        self.assertText(self.output, "piped")

    def test_settings_for_one_job(self):
        self.settings(output=self.root / "usual.pdf", target="screen")
        kept, folder = self.spy(), self.root / "config/Tessary/PDF Printer"
        before = {path.name: path.read_bytes() for path in folder.iterdir()}
        self.assertPrints("--set", f"output={self.output}", self.file("job.ps", document("once")))
        self.assertText(self.output, "once")
        (parameters,) = kept.glob("*_params.gs")
        self.assertIn("-dPDFSETTINGS#/screen", parameters.read_text())
        after = {path.name: path.read_bytes() for path in folder.iterdir() if not path.name.endswith(".lock")}
        self.assertEqual(after, before)

    def test_many_at_once_get_their_own(self):
        source = [self.file(f"{number}.ps", document(f"job {number}")) for number in range(20)]
        running = [self.start("tessary-print", "--set", f"output={self.root / f'{number}.pdf'}", path)
                   for number, path in enumerate(source)]
        for number, process in enumerate(running):
            words = process.communicate(timeout=120)
            self.assertEqual(process.returncode, 0, words)
            self.assertText(self.root / f"{number}.pdf", f"job {number}")
        self.assertEqual(self.leftovers(), [])

    @unittest.skipUnless(SAMPLES.is_dir(), "the folder of real print jobs is not there")
    def test_real_print_jobs(self):
        for source in sorted([*SAMPLES.glob("*.ps"), *SAMPLES.glob("*.prn")]):
            with self.subTest(source.name):
                self.assertPrints(source)
                self.assertSameAsBare(self.output, source)


class Failures(DeskTest):
    def test_exit_codes(self):
        good, garbage = self.file("good.ps", document("good")), self.file("garbage.ps", b"nosuchoperator\n")
        for arguments, words in (((), "usage"), (("--nonsense", good), "nonsense"), (("--set",), "--set"),
                                 (("--set", "no sign", good), "no sign"), ((self.root / "missing.ps",), "missing.ps"),
                                 ((self.root,), str(self.root)), ((garbage,), "1007")):
            with self.subTest(arguments):
                code, said = self.tessary_print(*arguments)
                self.assertGreater(code, 0, said)
                self.assertIn(words, said)
                self.assertFalse(self.output.exists())
        code, said = self.tessary_print(garbage, good)
        self.assertGreater(code, 0, said)
        self.assertText(self.output, "good")
        self.assertEqual(self.tessary_print("--help")[0], 0)

    def test_a_full_disk(self):
        self.output.write_bytes(b"an earlier document")
        source = self.file("job.ps", bitmap(200))
        for limit in (0, 600, 20000):
            with self.subTest(limit):
                code, said = self.tessary_print("--set", f"output={self.output}", source, limit=limit)
                self.assertGreater(code, 0, said)
                self.assertNotEqual(said, "")
                self.assertEqual(self.output.read_bytes(), b"an earlier document")
