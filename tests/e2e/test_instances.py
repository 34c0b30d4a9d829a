"""The picker of a printer instance, against a print server of the test's own."""

import pathlib
import subprocess
import unittest

from test_desktop import TITLE, ScreenTest

PICKER = "Select Instance"
SERVER = pathlib.Path(__file__).resolve().parents[1] / "support" / "private-cupsd"


class Instances(ScreenTest):
    def setUp(self):
        super().setUp()
        for backend in ("tessary", "other"):
            self.file(f"additions/backend/{backend}", b"#!/bin/sh\n").chmod(0o755)
        self.root.chmod(0o755)  # the server's programs run as another user
        self.addCleanup(self.serve, "stop")
        self.serve("start")
        self.environment["CUPS_SERVER"] = str(self.root / "cups/run/cups.sock")

    def serve(self, action):
        subprocess.run([SERVER, action, self.root / "cups"], check=action == "start", stdout=subprocess.DEVNULL,
                       stderr=subprocess.DEVNULL if action == "stop" else None,
                       env=self.environment | {"PRIVATE_CUPSD_ADDITIONS": str(self.root / "additions")})

    def add(self, queue, description, scheme="tessary"):
        subprocess.run(["lpadmin", "-p", queue, "-E", "-v", f"{scheme}:/", "-D", description], check=True,
                       env=self.environment)

    def cancel(self, process, instance):
        """Ends the dialog that came up for an instance."""
        self.screen.await_window(f"Options - {TITLE}" + (f" - [{instance}]" if instance else ""))
        self.screen.key("Escape")
        self.assertEqual(self.ended(process), (3, ""))

    def test_one_is_not_asked_for(self):
        self.cancel(self.start("gui"), "")
        self.add("sales", "PDF Printer [Sales]")
        self.add("laser", "Laser [Office]", "other")
        self.cancel(self.start("gui"), "Sales")

    def test_of_several_the_user_picks_one(self):
        for queue, description in (("pdf", "PDF Printer"), ("sales", "PDF Printer [Sales]"), ("b", "B [böse/n]")):
            self.add(queue, description)
        for keys, instance in ((["Return"], ""), (["Down", "Down", "Return"], "Sales"), (["Down", "Escape"], "")):
            with self.subTest(keys=keys):
                process = self.start("gui")
                window = self.screen.await_window(PICKER)
                self.screen.picture("picker", window)
                self.screen.key(*keys)
                self.cancel(process, instance)

    def test_what_is_saved_is_the_instances_own(self):
        self.add("sales", "PDF Printer [Sales]")
        process = self.start("gui")
        self.screen.await_window(f"Options - {TITLE} - [Sales]")
        self.screen.type("sales.pdf")
        self.screen.key("Return")
        self.assertEqual(self.ended(process), (0, ""))
        folder = self.root / "config/Tessary/PDF Printer"
        self.assertIn("  output=sales.pdf\n", (folder / "settings-Sales.ini").read_text())
        self.assertNotIn("sales.pdf", (folder / "settings.ini").read_text())


if __name__ == "__main__":
    unittest.main()
