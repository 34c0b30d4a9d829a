#!/usr/bin/env python3
"""Measures whole processes: gui and tessary-print beside a bare Ghostscript that does the same work.

usage: compare.py FOLDER_OF_THE_PROGRAMS

The two run in turn on the same file with the same switches, so that what else the machine does
falls on both. Prints medians, their ratio and the target; a slow machine fails nothing.
"""

import os
import pathlib
import random
import statistics
import subprocess
import sys
import tempfile
import time
import zlib

ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "tests" / "e2e"))
from screen import Screen, wait_for  # noqa: E402

SWITCHES = ["-q", "-dSAFER", "-dNOPAUSE", "-dBATCH", "-sDEVICE=pdfwrite", "-sFONTPATH=/usr/share/fonts",
            "-dCompatibilityLevel=1.6"]


def document(pages):
    lines = ["%!PS-Adobe-3.0", f"%%Pages: {pages}", "%%EndComments"]
    for page in range(1, pages + 1):
        lines += [f"%%Page: {page} {page}", "/Times-Roman findfont 11 scalefont setfont"]
        lines += [f"72 {720 - 14 * line} moveto (Page {page}, line {line}: the quick brown fox jumps over the lazy dog.) show"
                  for line in range(40)]
        lines += ["showpage"]
    return "\r\n".join(lines + ["%%EOF", ""])


def letterhead():
    """A PDF of one page with a picture of 2 MB that cannot be compressed, half transparent."""
    size = 820
    data = zlib.compress(random.Random(1).randbytes(3 * size * size))
    parts = [b"<</Type/Catalog/Pages 2 0 R>>", b"<</Type/Pages/Count 1/Kids[3 0 R]>>",
             b"<</Type/Page/Parent 2 0 R/MediaBox[0 0 595 842]/Group<</S/Transparency/CS/DeviceRGB>>/Contents 4 0 R"
             b"/Resources<</XObject<</I 5 0 R>>/ExtGState<</H<</ca .5>>>>>>>>",
             b"<</Length 37>>stream\n/H gs 500 0 0 500 40 200 cm /I Do    \nendstream",
             b"<</Subtype/Image/Width %d/Height %d/BitsPerComponent 8/ColorSpace/DeviceRGB/Filter/FlateDecode/Length %d>>stream\n" %
             (size, size, len(data)) + data + b"\nendstream"]
    text, offsets = b"%PDF-1.6\n", []
    for number, part in enumerate(parts, 1):
        offsets.append(len(text))
        text += b"%d 0 obj\n" % number + part + b"\nendobj\n"
    return (text + b"xref\n0 6\n0000000000 65535 f \n" + b"".join(b"%010d 00000 n \n" % offset for offset in offsets) +
            b"trailer<</Size 6/Root 1 0 R>>\nstartxref\n%d\n%%%%EOF\n" % len(text))


def seconds(command, environment, expected=0):
    start = time.perf_counter()
    code = subprocess.run(command, env=environment, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL).returncode
    duration = time.perf_counter() - start
    if code != expected:
        sys.exit(f"{command[0]} ended with exit code {code}; its speed would mean nothing")
    return duration


def peak_memory(command, environment):
    """The largest resident set of the process itself, in kB, its children left out."""
    process = subprocess.Popen(command, env=environment, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    status, peak = pathlib.Path(f"/proc/{process.pid}/status"), 0
    while process.poll() is None:
        for line in status.read_text().splitlines():
            if line.startswith("VmHWM:"):
                peak = max(peak, int(line.split()[1]))
        time.sleep(0.002)
    return peak


def in_turn(first, second, environment, repeats, second_environment=None):
    pairs = [(seconds(first, environment), seconds(second, second_environment or environment)) for _ in range(repeats)]
    return [statistics.median(column) for column in zip(*pairs)]


def seconds_to_window(screen, command, environment, title):
    """From the start of a program to its window on the screen, where the window is cancelled."""
    start = time.perf_counter()
    process = subprocess.Popen(command, env=environment | {"DISPLAY": screen.display}, stderr=subprocess.DEVNULL)
    wait_for(lambda: screen.windows(title), title)
    duration = time.perf_counter() - start
    screen.await_window(title)
    screen.key("Escape")
    process.wait()
    return duration


def measure_windows(gui, root, environment):
    (root / "Tessary" / "PDF Printer" / "settings.ini").write_text(f"[PDF Printer]\noutput={root}/out.pdf\nshowsaveas=never\n")
    job = [gui, "sessionid=bench", "printer=Office", f"ps={root}/2.ps"]
    screen = Screen()
    for what, command, title in (("a message box", [gui, "msg=Done."], "Tessary PDF Printer"),
                                 ("the dialog of a job", job, "Create PDF - Office")):
        shown = statistics.median(seconds_to_window(screen, command, environment, title) for _ in range(9))
        report(f"from the start of gui to {what}", f"{shown * 1000:.0f} ms", "below 300 ms")
    screen.close()


# The same work in the macro language and in Python.
MACRO = """Dim x, s, i
For i = 1 To 1000000 : x = x + i : Next
For i = 1 To 100000 : s = s & "x" : Next
"""
PYTHON = """x, s = 0, ""
for i in range(1, 1000001): x = x + i
for i in range(100000): s = s + "x"
"""


def report(what, value, target):
    print(f"{what:<52} {value:>30}   {target}", flush=True)


def compare_icon(run, environment):
    """The same job on a screen with a tray, where the icon turns, and without a screen."""
    screen = Screen()
    try:
        ours, theirs = in_turn(run, run, environment | {"DISPLAY": screen.display}, 15, environment)
    finally:
        screen.close()
    report("1000 pages: with the tray icon, without, ratio", f"{ours * 1000:.1f} ms {theirs * 1000:.1f} ms {ours / theirs:.3f}",
           "at most 1.02")


def compare_pdf(root, print_program, environment):
    """A PDF printed as a person would, and Ghostscript alone over it."""
    source = root / "1000.pdf"
    subprocess.run(["gs", *SWITCHES, f"-sOutputFile={source}", "-f", root / "1000.ps"], check=True)
    bare = ["gs", *SWITCHES, f"-sOutputFile={root}/bare.pdf", "-f", source]
    ours, theirs = in_turn([print_program, source], bare, environment, 9)
    report("1000 pages of a PDF: tessary-print, bare gs, ratio", f"{ours * 1000:.1f} ms {theirs * 1000:.1f} ms {ours / theirs:.3f}",
           "at most 1.1")


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    gui = pathlib.Path(sys.argv[1]).resolve() / "gui"
    with tempfile.TemporaryDirectory(prefix="tessary-bench-") as folder:
        root = pathlib.Path(folder)
        environment = os.environ | {"HOME": folder, "XDG_CONFIG_HOME": folder, "TMPDIR": folder}
        for name in ("DISPLAY", "WAYLAND_DISPLAY"):
            environment.pop(name, None)
        settings = root / "Tessary" / "PDF Printer" / "settings.ini"
        settings.parent.mkdir(parents=True)
        settings.write_text(f"[PDF Printer]\noutput={root}/out.pdf\nshowsettings=never\nshowsaveas=never\nshowpdf=no\n"
                            "showprogressfinished=no\n")
        for pages, repeats, target in ((2, 15, 1.4), (1000, 15, 1.05)):
            source = root / f"{pages}.ps"
            source.write_text(document(pages), newline="")
            run = [gui, "sessionid=bench", f"ps={source}"]
            bare = ["gs", *SWITCHES, f"-sstdout={root}/stdout", f"-sOutputFile={root}/bare.pdf", "-f", source]
            ours, theirs = in_turn(run, bare, environment, repeats)
            report(f"{pages} pages: gui, bare gs, ratio", f"{ours * 1000:.1f} ms {theirs * 1000:.1f} ms {ours / theirs:.3f}",
                   f"at most {target}")
            report(f"{pages} pages: peak memory of gui", f"{peak_memory(run, environment) / 1000:.1f} MB", "below 10 MB")
        compare_pdf(root, gui.with_name("tessary-print"), environment)
        compare_icon(run, environment)
        source, background, output = root / "500.ps", root / "letterhead.pdf", root / "out.pdf"
        source.write_text(document(500), newline="")
        background.write_bytes(letterhead())
        run = [gui, "sessionid=bench", f"ps={source}"]
        plain_seconds = statistics.median(seconds(run, environment) for _ in range(5))
        plain_bytes = output.stat().st_size
        with settings.open("a") as file:
            file.write(f"superimpose={background}\n")
        under_seconds = statistics.median(seconds(run, environment) for _ in range(5))
        report("500 pages: gui, with a letterhead of 2 MB", f"{plain_seconds * 1000:.0f} ms {under_seconds * 1000:.0f} ms",
               "at most 1 s more")
        report("500 pages: size, with a letterhead of 2 MB", f"{plain_bytes / 1000:.0f} kB {output.stat().st_size / 1000:.0f} kB",
               "at most 2 MB more")
        missing = statistics.median(seconds([gui, "sessionid=bench", f"ps={root}/none.ps"], environment, expected=1)
                                    for _ in range(15))
        report("a missing file", f"{missing * 1000:.1f} ms", "below 10 ms")
        measure_windows(gui, root, environment)
        macro, script = root / "loop.vbs", root / "loop.py"
        macro.write_text(MACRO)
        script.write_text(PYTHON)
        ours, theirs = in_turn([gui.with_name("tessary-macro"), macro], [sys.executable, script], environment, 15)
        report("a loop: tessary-macro, python3, speed", f"{ours * 1000:.1f} ms {theirs * 1000:.1f} ms {theirs / ours:.2f}",
               "at least 0.5")


if __name__ == "__main__":
    main()
