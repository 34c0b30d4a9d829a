#!/usr/bin/env python3
"""Measures the printer: from lp to the whole PDF, beside Debian's own PDF printer on the same print server.

usage: cups.py FOLDER_OF_THE_PROGRAMS

Needs root, for a print server and a user of its own. The two print the same file in turn, so that what
else the machine does falls on both. Prints medians, their ratio and the target; a slow machine fails nothing.
"""

import contextlib
import os
import pathlib
import statistics
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "tests" / "e2e"))
THEIR_DESCRIPTION = "/usr/share/ppd/cups-pdf/CUPS-PDF_opt.ppd"
PATIENCE = 60  # seconds


def has_whole_pdf(folder):
    """The name is the printer's own business."""
    return any(pdf.read_bytes()[-64:].rstrip().endswith(b"%%EOF") for pdf in folder.glob("*.pdf"))


def seconds(server, user, queue, source, folder):
    """From the start of lp to the end of the PDF."""
    start = time.perf_counter()
    job = server.submit(user, queue, "-t", "bench", source)
    while not has_whole_pdf(folder):
        if time.perf_counter() - start > PATIENCE:
            sys.exit("\n".join(["There is no PDF.", *server.job_log(job)]))
        time.sleep(0.001)
    duration = time.perf_counter() - start
    server.ended(job)
    for pdf in folder.glob("*.pdf"):
        pdf.unlink()
    return duration


def embedded(source, pdf):
    """A PDF that has its fonts in it, as applications write them."""
    subprocess.run(["gs", "-q", "-dSAFER", "-dNOPAUSE", "-dBATCH", "-sDEVICE=pdfwrite", "-dPDFSETTINGS=/prepress",
                    f"-sOutputFile={pdf}", "-f", source], check=True)
    return pdf


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    if os.geteuid():
        print("The printer is measured as root alone; left out.")
        return
    os.environ["TESSARY_BIN"] = sys.argv[1]
    from compare import document, report
    from cups_server import Place, Server, User
    with contextlib.ExitStack() as stack:
        place = stack.enter_context(contextlib.closing(Place("bench-"))).path
        user = User("a", place)
        stack.callback(user.remove)
        server = Server(place)
        stack.callback(server.control, "stop")
        for code, words in (server.printer("add", "PDF Printer"),
                            server.run("lpadmin", "-p", "theirs", "-E", "-v", "cups-pdf:/", "-P", THEIR_DESCRIPTION)):
            if code:
                sys.exit(words)
        ours, theirs = user.home, user.home / "PDF"
        for pages, kind, target in ((1, "PDF", 1.0), (50, "PDF", 1.0), (1, "PostScript", 1.3)):
            source = place / f"{pages}.ps"
            source.write_text(document(pages), newline="")
            if kind == "PDF":
                source = embedded(source, place / f"{pages}.pdf")
            pairs = [(seconds(server, user, "PDF_Printer", source, ours),
                      seconds(server, user, "theirs", source, theirs)) for _ in range(10)]
            mine, other = (statistics.median(column) for column in zip(*pairs))
            report(f"lp to the PDF, {pages} pages of {kind}: ours, theirs, ratio",
                   f"{mine * 1000:.0f} ms {other * 1000:.0f} ms {mine / other:.2f}", f"at most {target}")


if __name__ == "__main__":
    main()
