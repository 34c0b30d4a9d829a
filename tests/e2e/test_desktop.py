"""What a person sees: message boxes on a screen, and what becomes of a job when there is none."""

import os
import shutil
import signal
import unittest

import desk
from screen import Screen, wait_for

TITLE = "Tessary PDF Printer"
# Colours of a dark desktop, as the toolkit reads them from KDE's settings.
DARK = """[Colors:Window]
BackgroundNormal=42,46,50
ForegroundNormal=252,252,252
[Colors:View]
BackgroundNormal=27,30,32
ForegroundNormal=252,252,252
[Colors:Button]
BackgroundNormal=49,54,59
ForegroundNormal=252,252,252
[Colors:Selection]
BackgroundNormal=61,174,233
ForegroundNormal=252,252,252
[Colors:Tooltip]
BackgroundNormal=49,54,59
ForegroundNormal=252,252,252
"""
LOOKS = {"light": {}, "dark": {"XDG_CURRENT_DESKTOP": "KDE", "KDE_SESSION_VERSION": "5"},
         "150": {"QT_SCALE_FACTOR": "1.5"}}


class ScreenTest(desk.DeskTest):
    """Each test has the desk of its own and shares a screen with the others of its class."""

    @classmethod
    def setUpClass(cls):
        cls.screen = Screen()
        cls.addClassCleanup(cls.screen.close)

    def setUp(self):
        super().setUp()
        self.environment |= {"DISPLAY": self.screen.display, "LANG": "C.UTF-8"}

    def look(self, name):
        (self.root / "config" / "kdeglobals").write_text(DARK)
        for variable in set().union(*LOOKS.values()):
            self.environment.pop(variable, None)
        self.environment |= LOOKS[name]

    def ended(self, process):
        """Waits for the end; gives exit code and everything that was said."""
        words, errors = process.communicate(timeout=60)
        return process.returncode, (words + errors).decode()


class Boxes(ScreenTest):
    def test_a_message_waits_for_its_answer_in_front(self):
        for look in LOOKS:
            for icon in ("information", "exclamation", "error"):
                with self.subTest(look=look, icon=icon):
                    self.look(look)
                    process = self.start("gui", r"msg=The document could not be printed.\nIt holds no pages.",
                                         f"icon={icon}")
                    window = self.screen.await_window(TITLE)
                    self.assertIsNone(process.poll())
                    self.screen.picture(f"box-{icon}-{look}", window)
                    self.screen.key("Return")
                    self.assertEqual(self.ended(process), (0, ""))

    def test_texts_are_no_markup_and_fit_the_screen(self):
        text = r"<h1>Title</h1>\n" + "/a/folder" * 60 + r"\n" + r"line\n" * 300
        process = self.start("gui", "msg=" + text)
        window = self.screen.await_window(TITLE)
        _, height, _ = self.screen.picture("box-long", window)
        self.assertLess(height, 700)
        self.screen.key("Next", "Escape")
        self.assertEqual(self.ended(process), (0, ""))


class WithoutScreen(ScreenTest):
    def setUp(self):
        super().setUp()
        self.alone = Screen(window_manager=False)
        self.addCleanup(self.alone.close)

    def test_a_display_that_goes_leaves_the_text_on_the_terminal(self):
        self.environment["DISPLAY"] = self.alone.display
        process = self.start("gui", "msg=Nobody answers.")
        wait_for(lambda: self.alone.windows(TITLE), "the box")
        self.alone.server.send_signal(signal.SIGKILL)
        self.assertEqual(self.ended(process), (0, TITLE + ": Nobody answers.\n"))

    def test_a_display_that_cannot_be_reached_is_none(self):
        for variable, value in (("DISPLAY", ":4711"), ("WAYLAND_DISPLAY", "none"), ("QT_QPA_PLATFORM", "nothing")):
            with self.subTest(variable):
                del self.environment["DISPLAY"]
                self.environment[variable] = value
                self.assertEqual(self.gui("msg=To the terminal."), (0, TITLE + ": To the terminal.\n"))
                self.environment["DISPLAY"] = self.screen.display

    def test_a_job_that_shows_nothing_starts_no_helper(self):
        programs = self.root / "programs"
        programs.mkdir()
        shutil.copy(self.programs / "gui", programs)
        helper = programs / "tessary-desktop"
        helper.write_text(f"#!/bin/sh\ntouch {self.root}/started\n")
        helper.chmod(0o755)
        self.programs = programs
        self.settings(output=self.output, showprogress="no", showprogressfinished="no")
        self.assertEqual(self.gui("sessionid=job", f"ps={self.file('a.ps', desk.document('Text'))}"), (0, ""))
        self.assertFalse((self.root / "started").exists())
        self.assertEqual(self.gui("msg=A helper that ends at once."),
                         (0, TITLE + ": A helper that ends at once.\n"))
        self.assertTrue((self.root / "started").exists())


if __name__ == "__main__":
    unittest.main()
