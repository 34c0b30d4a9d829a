"""A desk of its own for each end-to-end test: home, settings, temporary files and a Ghostscript.

The programs under test are those in the folder that TESSARY_BIN names; the Ghostscript, and the
programs that judge a PDF, are the real ones.
"""

import contextlib
import os
import pathlib
import random
import resource
import shutil
import stat
import subprocess
import tempfile
import unittest

PROGRAMS = pathlib.Path(os.environ["TESSARY_BIN"]).resolve()
SAMPLES = pathlib.Path(__file__).resolve().parents[3] / "shared" / "samples"

# Names that shells, parameter files, page patterns and code pages like to stumble over.
ODD_NAMES = [
    "with a blank",
    "comma, semicolon; equals=",
    "apostrophe's \"quoted\" $(touch ruined) `id`",
    "50%done %d %s %%",
    "Žluťoučký – 日本語 ✓",
    "-dash (and parentheses] #1",
]


def document(*pages, dsc=True, title="A test", head=b"", tail=b""):
    """PostScript with one line of text on each page."""
    lines = ["%!PS-Adobe-3.0", f"%%Title: {title}", f"%%Pages: {len(pages)}", "%%EndComments"] if dsc else ["%!"]
    for number, text in enumerate(pages, 1):
        lines += [f"%%Page: {number} {number}"] if dsc else []
        lines += ["/Helvetica findfont 20 scalefont setfont", f"72 500 moveto ({text}) show showpage"]
    lines += ["%%EOF"] if dsc else []
    return head + "\n".join(lines).encode() + b"\n" + tail


def bitmap(rows, comments=False):
    """PostScript with raw image data: all byte values, in no order that could be compressed."""
    image = (b"256 %d 8 [256 0 0 %d 0 0] {currentfile row readstring pop} image\n" % (rows, rows) +
             random.Random(rows).randbytes(256 * rows) + b"\n")
    if comments:
        image = b"%%%%BeginBinary: %d\n" % len(image) + image + b"%%EndBinary\n"
    return (b"%!PS-Adobe-3.0\n%%Pages: 1\n%%EndComments\n%%Page: 1 1\n/row 256 string def gsave 72 72 translate "
            b"400 400 scale\n" + image + b"grestore showpage\n%%EOF\n")


def bare(source, pdf):
    """What Ghostscript alone makes of a file."""
    subprocess.run(["gs", "-q", "-dSAFER", "-dNOPAUSE", "-dBATCH", "-sDEVICE=pdfwrite", "-sFONTPATH=/usr/share/fonts",
                    "-dCompatibilityLevel=1.6", f"-sOutputFile={pdf}", "-f", source],
                   check=True, stdout=subprocess.DEVNULL)


def pixels(pdf):
    """The pages of a PDF as small pictures."""
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run(["pdftoppm", "-r", "24", pdf, folder + "/page"], check=True, stderr=subprocess.DEVNULL)
        return [path.read_bytes() for path in sorted(pathlib.Path(folder).iterdir())]


class DeskTest(unittest.TestCase):
    maxDiff = 2000

    def setUp(self):
        self.root = pathlib.Path(tempfile.mkdtemp(prefix="desk-"))
        # A helper on its way out may still be writing its own settings there.
        self.addCleanup(shutil.rmtree, self.root, ignore_errors=True)
        self.programs = PROGRAMS
        self.environment = {name: value for name, value in os.environ.items()
                            if name not in ("DISPLAY", "WAYLAND_DISPLAY", "TEMP", "TMP")}
        self.environment["TESSARY_MACHINE_SETTINGS"] = str(self.root / "machine.ini")
        for variable, folder in (("HOME", "home"), ("XDG_CONFIG_HOME", "config"), ("TMPDIR", "tmp")):
            (self.root / folder).mkdir()
            self.environment[variable] = str(self.root / folder)
        self.user = None  # the number of the user that programs run as
        self.output = self.root / "out.pdf"
        self.settings(output=self.output)

    @property
    def scratch(self):
        return pathlib.Path(self.environment["TMPDIR"]) / "Tessary" / "PDF Printer"

    def settings(self, **values):
        """Writes the user's settings. Nothing in them asks anything."""
        values = {"showsettings": "never", "showsaveas": "never", "showpdf": "no", "showprogressfinished": "no"} | values
        folder = pathlib.Path(self.environment["XDG_CONFIG_HOME"]) / "Tessary" / "PDF Printer"
        folder.mkdir(parents=True, exist_ok=True)
        lines = ["[PDF Printer]"] + [f"  {key}={value}" for key, value in values.items()]
        (folder / "settings.ini").write_bytes("".join(line + "\r\n" for line in lines).encode())

    def file(self, name, content):
        path = self.root / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(content)
        return path

    def drop_privileges(self):
        """Nothing is forbidden to root: from here on programs are those of a user who owns this desk."""
        if os.geteuid() == 0:
            self.user = 65534
            # The folder that they were built in may be closed to others.
            self.programs = shutil.copytree(self.programs, self.root / "programs", dirs_exist_ok=True)
            for path in [self.root, *self.root.rglob("*")]:
                os.chown(path, self.user, -1)

    def ghostscript(self, script):
        """Puts a shell script before the real gs on the PATH; $real is the real one."""
        path = self.file("fake/gs", f"#!/bin/sh\nreal={shutil.which('gs')}\n{script}\n".encode())
        path.chmod(path.stat().st_mode | stat.S_IXUSR)
        self.environment["PATH"] = f"{path.parent}:{os.environ['PATH']}"

    def spy(self):
        """Keeps copies of the files of each Ghostscript run and returns their folder."""
        kept = self.root / "kept"
        kept.mkdir()
        self.ghostscript('"$real" "$@"; code=$?\n'
                         f'[ "$1" = --version ] || cp "$(dirname "${{1#@}}")"/*_params* "{kept}"; exit $code')
        return kept

    def start(self, program, *arguments, stdin=subprocess.DEVNULL, limit=None):
        """`limit` is the size in bytes that no file may outgrow."""
        def limit_files():
            resource.setrlimit(resource.RLIMIT_FSIZE, (limit, limit))
        return self.enterContext(subprocess.Popen(
            [self.programs / program, *map(str, arguments)], env=self.environment, cwd=self.root, stdin=stdin,
            stdout=subprocess.PIPE, stderr=subprocess.PIPE, user=self.user,
            preexec_fn=limit_files if limit is not None else None))

    def run_program(self, program, *arguments, input=None, **options):
        """Runs to the end; gives exit code and everything that was said."""
        process = self.start(program, *arguments, stdin=subprocess.PIPE if input else subprocess.DEVNULL, **options)
        words, errors = process.communicate(input, timeout=120)
        return process.returncode, (words + errors).decode(errors="replace")

    def gui(self, *arguments, **options):
        return self.run_program("gui", *arguments, **options)

    def tessary_print(self, *arguments, **options):
        return self.run_program("tessary-print", *arguments, **options)

    def log(self, session="job"):
        return (self.scratch / f"{session}_printer.log").read_text()

    def leftovers(self):
        with contextlib.suppress(FileNotFoundError):
            return sorted(path.name for path in self.scratch.iterdir())
        return []

    def assertText(self, pdf, *pages):
        """A sound PDF with exactly this text on its pages."""
        subprocess.run(["qpdf", "--check", pdf], check=True, stdout=subprocess.DEVNULL)
        text = subprocess.run(["pdftotext", pdf, "-"], check=True, capture_output=True).stdout.decode()
        self.assertEqual([page.strip() for page in text.split("\f")[:-1]], list(pages))

    def assertSameAsBare(self, pdf, source):
        reference = self.root / "bare.pdf"
        bare(source, reference)
        expected, got = pixels(reference), pixels(pdf)
        self.assertEqual(len(got), len(expected), "pages")
        self.assertEqual([page for page, pair in enumerate(zip(got, expected), 1) if pair[0] != pair[1]], [])
