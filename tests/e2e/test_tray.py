"""What the notification area tells of a job: on a screen with a tray, by the desktop's notifications,
on a terminal, and to nobody."""

import json
import os
import pathlib
import pty
import subprocess
import time

from desk import document
from screen import PATIENCE, Screen, wait_for
from test_desktop import LOOKS, ScreenTest

BAR = 30            # pixels at the lower edge, see screen.py
RING = (0x2F, 0x80, 0xED)
CHECK = (0x2F, 0x9E, 0x44)
SLOW = '[ "$1" = --version ] || sleep 1.5; exec "$real" "$@"'


class TrayTest(ScreenTest):
    def setUp(self):
        super().setUp()
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = "unix:path=/nonexistent"
        self.source = self.file("job.ps", document("one", "two", head=b"%!\n(%%[Page: 2]%%) =\n"))

    def job(self, **settings):
        self.settings(output=self.output, **settings)
        return self.start("gui", "sessionid=job", f"ps={self.source}")

    def bar_shows(self, colour):
        _, _, rows = self.screen.pixels()
        return any(all(abs(got - wanted) < 24 for got, wanted in zip(row[x:x + 3], colour))
                   for row in rows[-BAR:] for x in range(0, len(row), 3))

    def balloon(self):
        """The window of the balloon, which is wider than an icon."""
        windows = (self.screen.xdotool("search", "--onlyvisible", "--class", "tessary-desktop") or "").split()
        return next((window for window in windows if self.screen.pixels(window)[0] > 100), None)

    def end(self, process, seconds=PATIENCE):
        """The job is done and says nothing; the process ends within that time."""
        wait_for(lambda: self.output.exists(), "the document")
        start = time.monotonic()
        self.assertEqual(self.ended(process), (0, ""))
        self.assertLess(time.monotonic() - start, seconds)
        self.assertText(self.output, "one", "two")


class Tray(TrayTest):
    def test_the_icon_turns_while_a_job_runs(self):
        self.ghostscript(SLOW)
        process = self.job(showprogressfinished="no")
        wait_for(lambda: self.bar_shows(RING), "the icon")
        before = self.screen.picture("tray-working", moving=True)
        wait_for(lambda: self.screen.pixels() != before, "another frame")
        self.assertIsNone(process.poll())
        self.end(process)
        wait_for(lambda: not self.bar_shows(RING), "the end of the icon")

    def test_a_short_job_shows_no_icon(self):
        process = self.job(showprogressfinished="no")
        seen = False
        while process.poll() is None:
            seen = seen or self.bar_shows(RING)
        self.assertFalse(seen)
        self.end(process)

    def test_a_balloon_beside_the_icon_goes_by_a_click(self):
        for look in LOOKS:
            with self.subTest(look):
                self.look(look)
                process = self.job(showprogress="no", showprogressfinished="yes")
                wait_for(lambda: self.bar_shows(CHECK), "the check mark")
                balloon = wait_for(self.balloon, "the balloon")
                self.screen.picture(f"tray-balloon-{look}")
                self.screen.xdotool("mousemove", "--window", balloon, 40, 40, "click", 1)
                self.end(process, 4.8)
                self.output.unlink()

    def test_a_job_outlives_its_screen(self):
        self.ghostscript(SLOW)
        other = Screen()
        self.environment["DISPLAY"] = other.display
        process = self.job(showprogressfinished="yes")
        time.sleep(0.8)
        other.close()
        self.end(process, 4)


class Notifications(TrayTest):
    def setUp(self):
        super().setUp()
        bus = self.enterContext(subprocess.Popen(
            ["dbus-daemon", "--session", "--nofork", "--print-address"], stdout=subprocess.PIPE, text=True,
            stderr=subprocess.DEVNULL))
        self.addCleanup(bus.terminate)
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = bus.stdout.readline().strip()

    def notifier(self, reaction):
        process = self.enterContext(subprocess.Popen(
            [pathlib.Path(__file__).with_name("notifier.py"), reaction], env=self.environment, stdout=subprocess.PIPE,
            text=True))
        self.addCleanup(process.terminate)
        self.assertEqual(process.stdout.readline(), "{}\n")
        return process

    def test_the_balloon_is_a_notification_of_the_desktop(self):
        for reaction in ("expire", "dismiss", "click"):
            with self.subTest(reaction):
                notifier = self.notifier(reaction)
                self.output = self.root / f"{reaction} <b>&.pdf"
                process = self.job(showprogressfinished="yes")
                shown = json.loads(notifier.stdout.readline())
                self.end(process, 3)
                notifier.terminate()
                notifier.wait()
                escaped = str(self.output).replace("&", "&amp;").replace("<", "&lt;").replace(">", "&gt;")
                self.assertEqual(shown, {
                    "app": "Tessary PDF Printer", "summary": "PDF Document Created (2 pages)",
                    "body": f"{escaped} was created", "actions": ["default", shown["summary"]], "timeout": -1,
                    "image": [48, 48, True, 8, 4, 48 * 48 * 4]})

    def test_the_run_waits_five_seconds_for_it_at_most(self):
        notifier = self.notifier("keep")
        process = self.job(showprogressfinished="yes")
        notifier.stdout.readline()
        start = time.monotonic()
        self.end(process, 8)
        self.assertGreater(time.monotonic() - start, 3)

    def test_where_nothing_can_show_it_nothing_is_waited_for(self):
        bare = Screen(window_manager=False)
        self.addCleanup(bare.close)
        self.environment["DISPLAY"] = bare.display
        self.end(self.job(showprogressfinished="yes"), 4)


class Terminal(TrayTest):
    def run_on_terminal(self, **settings):
        """Everything that standard error got, where that is a terminal."""
        self.environment.pop("DISPLAY")
        self.settings(output=self.output, **settings)
        terminal, line = pty.openpty()
        process = subprocess.Popen([self.programs / "gui", "sessionid=job", f"ps={self.source}"], env=self.environment,
                                   stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=line)
        os.close(line)
        said = b""
        try:
            while chunk := os.read(terminal, 1000):
                said += chunk
        except OSError:  # the other end has been closed
            pass
        os.close(terminal)
        return process.wait(), said

    def test_the_tip_is_a_line_that_goes_again(self):
        self.ghostscript('[ "$1" = --version ] && exec "$real" "$@"; "$real" "$@" && sleep 1.5')
        erased = lambda text: text + b"\r" + b" " * len(text) + b"\r"
        self.assertEqual(self.run_on_terminal(showprogressfinished="yes"),
                         (0, erased(b"Creating PDF Document...") + erased(b"2 pages created...")))

    def test_an_error_stands_on_a_line_of_its_own(self):
        self.ghostscript('[ "$1" = --version ] && exec "$real" "$@"; sleep 0.5; exit 1')
        code, said = self.run_on_terminal()
        self.assertEqual(code, 1)
        self.assertIn(b"Creating PDF Document...\r" + b" " * 24 + b"\rTessary PDF Printer: An error", said)
