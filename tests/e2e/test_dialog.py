"""The dialogs of a job on a screen, worked from the keyboard."""

import pathlib
import shutil
import signal
import subprocess
import unittest

import desk
from screen import Screen, wait_for
from test_desktop import LOOKS, TITLE, ScreenTest

DIALOG = "Create PDF - Office"
PICKER = "Save PDF Document As"
TABS = ["general", "document", "watermark", "merge", "security", "other", "about"]


class DialogTest(ScreenTest):
    def setUp(self):
        super().setUp()
        self.settings(showsettings="always", showprogress="no", showprogressfinished="no", output=self.output,
                      usedefaultauthor="no", usedefaulttitle="no")

    def start_job(self):
        document = desk.document("Text").replace(b"\n", b"\r\n")
        return self.start("gui", "sessionid=job", "printer=Office", f"ps={self.file('a.ps', document)}")

    def open(self, title=DIALOG):
        """Starts a job; gives its process and the window that comes up."""
        process = self.start_job()
        return process, self.screen.await_window(title)

    def type_another_name(self, process, other):
        """Ends the job with a name in the place of the one that would be overwritten."""
        self.screen.key("ctrl+a")
        self.screen.type(other)
        self.screen.key("Return")
        self.assertEqual(self.ended(process), (0, ""))
        self.assertText(other, "Text")
        self.assertEqual(self.output.read_bytes(), b"old")

    def assertCancelled(self, process):
        self.assertEqual(self.ended(process), (3, ""))
        self.assertFalse(self.output.exists())
        self.assertEqual(self.leftovers(), [])


class CreatePdf(DialogTest):
    def test_what_is_typed_is_in_the_pdf(self):
        process, _ = self.open()
        other = self.root / "typed.pdf"
        self.screen.type(str(other)[:-4])  # over the suggestion, which is selected
        self.screen.key("ctrl+Next")
        self.screen.type("Ann Author")
        self.screen.key("Tab")
        self.screen.type("A title & more")
        self.screen.key("ctrl+Tab", "ctrl+shift+Tab", "Prior", "Return")
        self.assertEqual(self.ended(process), (0, ""))
        self.assertText(other, "Text")
        information = subprocess.run(["pdfinfo", other], check=True, capture_output=True, text=True).stdout
        self.assertIn("Ann Author", information)
        self.assertIn("A title & more", information)
        self.assertFalse(self.output.exists())

    def test_cancelling_makes_nothing(self):
        for keys in (["Escape"], ["ctrl+Prior", "ctrl+Tab", "Escape"], ["alt+F4"]):
            with self.subTest(keys=keys):
                process, _ = self.open()
                self.screen.key(*keys)
                self.assertCancelled(process)

    def test_no_to_overwriting_goes_back_to_the_field(self):
        self.output.write_bytes(b"old")
        process, window = self.open()
        self.screen.key("ctrl+Next", "ctrl+Next", "Return")
        box = self.screen.await_window(TITLE)
        self.screen.picture("overwrite", box)
        self.screen.key("alt+n")
        self.screen.await_window(DIALOG)
        self.type_another_name(process, self.root / "other.pdf")

    def test_yes_overwrites(self):
        self.output.write_bytes(b"old")
        process, _ = self.open()
        self.screen.key("Return")
        self.screen.await_window(TITLE)
        self.screen.key("alt+y")
        self.assertEqual(self.ended(process), (0, ""))
        self.assertText(self.output, "Text")

    def test_a_display_that_goes_is_a_cancel(self):
        alone = Screen(window_manager=False)
        self.addCleanup(alone.close)
        self.environment["DISPLAY"] = alone.display
        process = self.start_job()
        wait_for(lambda: alone.windows(DIALOG), "the dialog")
        alone.picture("without-manager")
        alone.server.send_signal(signal.SIGKILL)
        self.assertCancelled(process)

    def test_every_tab_in_every_look(self):
        for look in LOOKS:
            self.look(look)
            process, window = self.open()
            for tab in TABS:
                self.screen.picture(f"dialog-{tab}-{look}", window)
                self.screen.key("ctrl+Next")
            self.screen.key("Escape")
            self.assertCancelled(process)

    def test_other_languages_and_long_texts_fit(self):
        languages = pathlib.Path(__file__).resolve().parents[2] / "languages"
        german = (languages / "german" / "labels.txt").read_text()
        lines = [line.partition("=") for line in german.splitlines()]
        long = "\n".join(key + equals + " ".join([text] * 10) for key, equals, text in lines)
        japanese = "\n".join(key + equals + ("PDFを作成するための設定" if equals else "") for key, equals, _ in lines)
        self.programs = self.root / "programs"
        shutil.copytree(desk.PROGRAMS, self.programs, symlinks=True)
        for name, labels in (("german", german), ("japanese", japanese), ("long", long)):
            with self.subTest(name):
                (self.programs / "labels.txt").write_text(labels)
                process = self.start_job()
                wait_for(lambda: "Office" in (self.screen.active() or ""), "the dialog")
                window = self.screen.xdotool("getactivewindow")
                for tab in TABS:
                    width, height, _ = self.screen.picture(f"dialog-{tab}-{name}", window)
                    self.assertLessEqual((width, height), (1280, 770))
                    self.screen.key("ctrl+Next")
                self.screen.key("Escape")
                self.assertCancelled(process)


class SaveAs(DialogTest):
    def setUp(self):
        super().setUp()
        self.settings(showsaveas="always", showprogress="no", showprogressfinished="no", output=self.output)

    def test_the_name_that_is_picked_gets_the_pdf(self):
        self.output.write_bytes(b"old")
        process, window = self.open(PICKER)
        self.screen.picture("picker", window)
        self.screen.key("Return")
        self.screen.await_window(TITLE)
        self.screen.key("alt+n")
        self.screen.await_window(PICKER)
        self.type_another_name(process, self.root / "picked.pdf")

    def test_cancelling_makes_nothing(self):
        process, _ = self.open(PICKER)
        self.screen.key("Escape")
        self.assertCancelled(process)


if __name__ == "__main__":
    unittest.main()
