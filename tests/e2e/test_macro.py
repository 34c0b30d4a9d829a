"""The macro language: tessary-macro, and macros in the settings of real jobs."""

import pathlib
import re
import shutil

from desk import PROGRAMS, DeskTest, document

HERE = pathlib.Path(__file__).parent


class Shell(DeskTest):
    def macro(self, *arguments):
        return self.run_program("tessary-macro", *arguments)

    def test_language(self):
        for script in sorted((HERE.parent / "script/language").glob("*.vbs")):
            with self.subTest(script.stem):
                self.assertEqual(self.macro(HERE / "check.vbs", script, "-e", "Failures"), (0, "0\n"))

    def test_files_share_one_engine(self):
        one = self.file("one.vbs", b"Function Twice(x): Twice = 2 * x: End Function")
        two = self.file("two.vbs", 'WScript.Echo "\u00fc", Twice(21), context("DocumentTitle")'.encode())
        self.assertEqual(self.macro(one, two, "-e", "Twice(3)", "-e", '"a" & 1'), (0, "ü 42 Document\n6\na1\n"))
        self.assertEqual(self.macro(self.file("quit.vbs", b'WScript.Echo "x": WScript.Quit 7: WScript.Echo "y"')),
                         (7, "x\n"))

    def test_files_and_folders(self):
        script = self.file("files.vbs", f"""
            Set files = CreateObject("Scripting.FileSystemObject")
            folder = files.BuildPath("{self.root}", "counter")
            files.CreateFolder folder
            For i = 1 To 3
              path = files.BuildPath(folder, "n.txt") : n = 0
              If files.FileExists(path) Then n = CLng(files.OpenTextFile(path).ReadLine)
              files.CreateTextFile(path, True).WriteLine n + 1
            Next
            WScript.Echo files.OpenTextFile(path).ReadLine, files.GetFolder(folder).Files.Count
            files.MoveFolder folder, folder & "2" : files.DeleteFolder folder & "2"
            WScript.Echo files.FolderExists(folder), files.FolderExists(folder & "2")""".encode())
        self.assertEqual(self.macro(script), (0, "3 1\nFalse False\n"))

    def test_errors_name_their_place(self):
        bad = self.file("bad.vbs", b"x = 1\nDim\n")
        for arguments, said in (([bad], rf"^{bad}:2:4: .+ \(1010\)\n"), (["-e", "1/0"], r": Division by zero \(11\)\n"),
                                (["-e", "NoSuch(1)"], r"Type mismatch: 'NoSuch' \(13\)"),
                                ([self.root / "missing.vbs"], "missing.vbs")):
            with self.subTest(said):
                code, words = self.macro(*arguments)
                self.assertEqual(code, 1)
                self.assertTrue(re.search(said, words), words)
        self.assertEqual(self.macro()[0], 2)


class Jobs(DeskTest):
    def setUp(self):
        super().setUp()
        self.programs = self.root / "bin"
        (self.programs / "macros").mkdir(parents=True)
        for program in ("gui", "tessary-print"):
            shutil.copy(PROGRAMS / program, self.programs)
        self.job = self.file("job.ps", document("one"))

    def print(self, output, title="report.doc"):
        return self.tessary_print("--title", title, "--set", f"output={output}", self.job)

    def test_names_are_made(self):
        (self.programs / "macros/invoice.vbs").write_bytes(
            b"this part is for the editor\r\nREM -- Macro Region Begins\r\n"
            b'Function InvoiceName(name)\r\n  InvoiceName = "Invoice " & UCase(name)\r\nEnd Function\r\n')
        self.environment["WHERE"] = str(self.root)
        code, words = self.print("<env:WHERE>/<date> <docname> <vbs:InvoiceName(1 + 1)> <other>.pdf")
        self.assertEqual(code, 0, words)
        (made,) = self.root.glob("*Invoice 2*")
        self.assertRegex(made.name, r"^\d{4}-\d\d-\d\d report\.doc Invoice 2 <other>\.pdf$")

        code, words = self.print('<env:WHERE>/<title> <vbs:InvoiceName(context("DocumentTitle"))>.pdf')
        self.assertEqual(code, 0, words)
        self.assertTrue((self.root / "A test Invoice A TEST.pdf").exists())

    def test_titles_are_data(self):
        ruin = self.root / "ruined"
        title = f'<vbs:CreateObject("Scripting.FileSystemObject").CreateTextFile("{ruin}")> ../x'
        code, words = self.print(f"{self.root}/out <docname>.pdf", title)
        self.assertEqual(code, 0, words)
        self.assertFalse(ruin.exists())
        self.assertEqual(len(list(self.root.glob("out *"))), 1)
        self.job.write_bytes(document("one", title=title))
        code, words = self.print(f"{self.root}/own <title>.pdf")
        self.assertEqual(code, 0, words)
        self.assertFalse(ruin.exists())

    def test_bad_macro_file_loses_nothing(self):
        self.file("out.pdf", b"earlier")
        (self.programs / "macros/bad.vbs").write_bytes(b"x = 1\r\ny = = 2\r\n")
        code, words = self.print(f"{self.root}/out<vbs:1>.pdf")
        self.assertEqual(code, 1)
        self.assertIn("bad.vbs'.", words)
        self.assertIn("Line 2 position 5", words)
        self.assertEqual((self.root / "out.pdf").read_bytes(), b"earlier")
        self.assertEqual(sorted(name.split(".")[-1] for name in self.leftovers()), ["log", "ps"])

    def test_labels(self):
        shutil.copy(HERE.parents[1] / "languages/german/labels.txt", self.programs)
        code, words = self.gui("ps=/none")
        self.assertEqual(code, 1)
        self.assertIn("Es ist ein Fehler aufgetreten.", words)
