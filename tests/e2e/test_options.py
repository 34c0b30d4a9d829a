"""The Options dialog on a screen, worked from the keyboard."""

import pathlib
import shutil
import unittest

import desk
from screen import wait_for
from test_desktop import LOOKS, TITLE, ScreenTest

DIALOG = f"Options - {TITLE}"
MACROS = "Macros"
TABS = ["general", "dialogs", "document", "watermark", "merge", "security", "other", "about"]
LANGUAGES = pathlib.Path(__file__).resolve().parents[2] / "languages"


class OptionsTest(ScreenTest):
    def setUp(self):
        super().setUp()
        self.stored = self.root / "config/Tessary/PDF Printer/settings.ini"

    def open(self, title=DIALOG):
        """Starts the dialog; gives its process and window."""
        process = self.start("gui")
        return process, self.screen.await_window(title)

    def print(self, *arguments):
        document = desk.document("Text").replace(b"\n", b"\r\n")
        self.assertEqual(self.gui("sessionid=job", f"ps={self.file('a.ps', document)}", *arguments), (0, ""))


class Editing(OptionsTest):
    def test_what_is_typed_is_used_by_the_next_job(self):
        self.settings(output=self.root / "first.pdf", HandMade="kept", showprogress="no")
        process, _ = self.open()
        self.screen.type(f"{self.root}/")  # over what stood there, which is selected
        self.screen.key("Tab", "Tab", "space")
        self.screen.await_window(MACROS)
        self.screen.key("Down", "Down", "Return")  # <docname>
        self.screen.await_window(DIALOG)
        self.screen.key("shift+Tab", "shift+Tab", "End")
        self.screen.type(".pdf")
        self.screen.key("Return")
        self.assertEqual(self.ended(process), (0, ""))
        text = self.stored.read_text()
        self.assertIn(f"  output={self.root}/<docname>.pdf\n", text)
        self.assertIn("  handmade=kept\n", text)
        self.print("doc=Letter")
        self.assertText(self.root / "Letter.pdf", "Text")

    def test_defaults_and_cancelling(self):
        before = self.stored.read_bytes()
        process, window = self.open()
        for answer in ("alt+n", "Escape", "alt+y"):
            # Back over the strip, Cancel and OK.
            self.screen.key("shift+Tab", "shift+Tab", "shift+Tab", "shift+Tab")
            self.screen.key("space")
            self.screen.picture("defaults", self.screen.await_window(TITLE))
            self.screen.key(answer)
            self.screen.await_window(DIALOG)
            self.screen.key("Tab", "Tab", "Tab", "Tab")
        self.screen.picture("options-defaults", window)
        self.screen.key("Escape")
        self.assertEqual(self.ended(process), (3, ""))
        self.assertEqual(self.stored.read_bytes(), before)

    def test_what_the_administrator_locks_stays(self):
        self.programs = self.root / "programs"
        shutil.copytree(desk.PROGRAMS, self.programs, symlinks=True)
        (self.programs / "global.ini").write_text(f"[PDF Printer]\nOutput={self.output}\nshowpdf=no\n")
        process, _ = self.open()
        self.screen.type("elsewhere")
        self.screen.key("Return")
        self.assertEqual(self.ended(process), (0, ""))
        self.print()
        self.assertText(self.output, "Text")

    def test_a_file_that_cannot_be_written_stays_whole(self):
        self.drop_privileges()
        before = self.stored.read_bytes()
        self.stored.parent.chmod(0o555)
        self.stored.chmod(0o444)
        process, _ = self.open()
        self.screen.type("elsewhere")
        self.screen.key("Return")
        box = self.screen.await_window(TITLE)
        self.screen.picture("options-unwritable", box)
        self.screen.key("Return")
        self.assertEqual(self.ended(process), (1, ""))
        self.assertEqual(self.stored.read_bytes(), before)
        self.assertEqual(list(self.stored.parent.iterdir()), [self.stored])

    def test_of_two_that_save_the_last_one_wins_whole(self):
        first, window = self.open()
        self.screen.type("one")
        second = self.start("gui")
        wait_for(lambda: len(self.screen.windows(DIALOG)) == 2 and self.screen.xdotool("getactivewindow") != window,
                 "the second dialog")
        self.screen.type("two")
        self.screen.key("Return")
        self.assertEqual(self.ended(second), (0, ""))
        self.assertIn("  output=two\n", self.stored.read_text())
        self.screen.await_window(DIALOG)
        self.screen.key("Return")
        self.assertEqual(self.ended(first), (0, ""))
        lines = self.stored.read_text().splitlines()
        self.assertIn("  output=one", lines)
        self.assertEqual(len(lines), len(set(lines)))

    def test_without_a_display(self):
        before = self.stored.read_bytes()
        del self.environment["DISPLAY"]
        code, words = self.gui()
        self.assertEqual(code, 3)
        self.assertIn(f"The settings are in the file '{self.stored}'.", words)
        self.assertEqual(self.stored.read_bytes(), before)


class Looks(OptionsTest):
    def test_every_tab_in_every_look(self):
        for look in LOOKS:
            self.look(look)
            process, window = self.open()
            for tab in TABS:
                width, height, _ = self.screen.picture(f"options-{tab}-{look}", window)
                self.assertLessEqual((width, height), (1280, 770))
                self.screen.key("ctrl+Next")
            self.screen.key("ctrl+Tab")
            self.screen.key("Tab", "Tab", "space")
            self.screen.picture(f"macros-{look}", self.screen.await_window(MACROS))
            self.screen.key("Escape")
            self.screen.await_window(DIALOG)
            self.screen.key("Escape")
            self.assertEqual(self.ended(process), (3, ""))

    def test_other_languages_and_long_texts_fit(self):
        german = (LANGUAGES / "german" / "labels.txt").read_text()
        lines = [line.partition("=") for line in german.splitlines()]
        long = "\n".join(key + equals + " ".join([text] * 10) for key, equals, text in lines)
        self.programs = self.root / "programs"
        shutil.copytree(desk.PROGRAMS, self.programs, symlinks=True)
        for name, labels in (("german", german), ("long", long)):
            with self.subTest(name):
                (self.programs / "labels.txt").write_text(labels)
                process = self.start("gui")
                wait_for(lambda: TITLE in (self.screen.active() or ""), "the dialog")
                window = self.screen.xdotool("getactivewindow")
                for tab in TABS:
                    width, height, _ = self.screen.picture(f"options-{tab}-{name}", window)
                    self.assertLessEqual((width, height), (1280, 770))
                    self.screen.key("ctrl+Next")
                self.screen.key("Escape")
                self.assertEqual(self.ended(process), (3, ""))


if __name__ == "__main__":
    unittest.main()
