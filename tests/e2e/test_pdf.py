"""PDF documents as print jobs, held against what Ghostscript alone makes of them."""

import re
import subprocess

from desk import ODD_NAMES, DeskTest, bare, document
from pdfs import Picture, letterhead, pdf, stream

FONT = b"/Resources<</Font<</F 3 0 R>>/ExtGState<</H<</ca .5>>>>>>"
RED, BLUE, WHITE = (255, 0, 0), (0, 0, 255), (255, 255, 255)


def text(words, at=(60, 100)):
    return f"BT /F 20 Tf {at[0]} {at[1]} Td ({words}) Tj ET\n".encode()


# Boxes, rotations and units of all kinds, transparency, a link and a bookmark.
PAGES = pdf(
    (FONT + b"/Annots[<</Type/Annot/Subtype/Link/Rect[60 90 200 120]/A<</S/URI/URI(http://example.org/)>>>>]",
     b"1 0 0 rg 20 20 90 90 re f /H gs 0 0 1 rg 60 60 90 90 re f " + text("plain")),
    (FONT + b"/MediaBox[-100 50 300 250]", text("moved", (-20, 100))),
    (FONT + b"/MediaBox[0 0 500 500]/CropBox[50 60 400 300]", text("cropped") + b"1 0 0 rg 0 0 70 70 re f"),
    (FONT + b"/MediaBox[10 20 310 420]/Rotate 90", text("quarter")),
    (FONT + b"/MediaBox[400 300 0 0]/Rotate 180/CropBox[50 60 400 300]", text("half")),
    (FONT + b"/Rotate -90/UserUnit 1.5", text("three")),
    (FONT + b"/MediaBox[0 0 1000 60]", text("wide", (20, 20))))


class PdfTest(DeskTest):
    def printed(self, source, expected=0, **settings):
        options = [part for key, value in settings.items() for part in ("--set", f"{key}={value}")]
        code, words = self.tessary_print(*options, source)
        self.assertEqual(code, expected, words)
        return words

    def told(self, *command):
        return subprocess.run([*command], check=True, capture_output=True).stdout.decode()


class Documents(PdfTest):
    def test_a_page_is_what_ghostscript_alone_makes_of_it(self):
        source, reference = self.file("a.pdf", PAGES), self.root / "bare.pdf"
        bookmarks = self.root / "bookmarks.ps"
        bookmarks.write_text("[/Title (Chapter) /Page 2 /OUT pdfmark\n[/Title (Own) /DOCINFO pdfmark\n")
        marked = self.root / "marked.pdf"
        subprocess.run(["gs", "-q", "-o", marked, "-sDEVICE=pdfwrite", "-dAutoRotatePages=/None", bookmarks, source], check=True)
        for name in (source, marked):
            with self.subTest(name.name):
                bare(name, reference)
                self.printed(name)
                self.assertSameAsBare(self.output, name)
                for question in (("pdfinfo", "-box", "-l", "99"), ("pdffonts",), ("pdftotext", "-layout")):
                    ours, theirs = (self.told(*question, made, *(["-"] if question[0] == "pdftotext" else []))
                                    for made in (self.output, reference))
                    drop = ("Title", "Author", "CreationDate", "ModDate", "File size")
                    self.assertEqual(*([line for line in said.splitlines() if not line.startswith(drop)] for said in (ours, theirs)))
                self.assertIn(b"http://example.org/", self.output.read_bytes())
                self.assertEqual(b"/Outlines" in self.output.read_bytes(), name is marked)
                self.assertEqual(self.leftovers(), [])

    def test_documents_as_others_write_and_send_them(self):
        plain, other = self.file("plain.pdf", pdf((FONT, text("one")), (FONT, text("two")))), self.root / "other.pdf"
        for options in (["--object-streams=generate"], ["--linearize"], ["--encrypt", "", "owner", "256", "--"]):
            with self.subTest(options):
                subprocess.run(["qpdf", *options, plain, other], check=True)
                self.printed(other)
                self.assertText(self.output, "one", "two")
        content, escape = plain.read_bytes(), b"\x1b%-12345X"
        for sent in (content, b"garbage\n" * 100 + content, content.replace(b"startxref", b"startxxxx"), content[:content.rfind(b"%%EOF")],
                     escape + b"@PJL JOB\r\n@PJL ENTER LANGUAGE=PDF\r\n" + content + b"\x04" + escape + b"@PJL EOJ\r\n" + escape):
            with self.subTest(sent[:40]):
                code, words = self.tessary_print("-", input=sent)
                self.assertEqual(code, 0, words)
                self.assertText(self.output, "one", "two")
                self.assertEqual(self.leftovers(), [])

    def test_odd_names(self):
        for name in ODD_NAMES:
            with self.subTest(name):
                self.environment["TMPDIR"] = str(self.root / "tmp" / name)
                self.printed(self.file(f"{name}.pdf", pdf((FONT, text("odd")))))
                self.assertText(self.output, "odd")

    def test_a_title_of_the_settings_wins(self):
        source = self.file("a.pdf", pdf((FONT, text("one"))))
        own = self.root / "own.pdf"
        subprocess.run(["gs", "-q", "-o", own, "-sDEVICE=pdfwrite", "-c", "[/Title (Its own) /Subject (Its subject) /DOCINFO pdfmark",
                        "-f", source], check=True)
        for title, expected in (("", "Its own"), ("Plain (x", "Plain (x"), ("Über 報告", "Über 報告"), ("<title>", "own.pdf")):
            with self.subTest(title):
                self.printed(own, title=title)
                lines = dict(line.split(":", 1) for line in self.told("pdfinfo", self.output).splitlines())
                self.assertEqual((lines["Title"].strip(), lines["Subject"].strip()), (expected, "Its subject"))


class Work(PdfTest):
    """All that is done to a job."""

    def test_stamps_and_letterheads_lie_on_the_paper_as_it_is(self):
        source = self.file("a.pdf", PAGES)
        first, follow = self.file("first.pdf", letterhead("FIRST")), self.file("follow.pdf", letterhead("FOLLOW", "0 0 1"))
        sizes = [(400, 300), (400, 200), (500, 500), (400, 300), (400, 300), (450, 600), (1000, 60)]
        for layer in ("top", "bottom"):
            with self.subTest(layer):
                self.printed(source, superimpose=f"{first}<1>{follow}<3->", watermarktext="DRAFT", watermarklayer=layer,
                             watermarkfontsize=20, watermarkrotation=0, watermarkoutlinewidth=0)
                for page, (size, words) in enumerate(zip(sizes, "plain moved cropped quarter half three wide".split()), 1):
                    picture = Picture(self.output, page)
                    colour = RED if page == 1 else WHITE if page == 2 else BLUE
                    self.assertEqual(sorted((picture.width, picture.height)), sorted(size), page)
                    said = self.told("pdftotext", "-bbox", "-f", str(page), "-l", str(page), self.output, "-")
                    self.assertIn(f">{words}</word>", said)
                    left, top, right, bottom = map(float, re.search('xMin="(.*)" yMin="(.*)" xMax="(.*)" yMax="(.*)">DRAFT', said).groups())
                    self.assertAlmostEqual((left + right) / 2, picture.width / 2, delta=10, msg=page)
                    self.assertAlmostEqual((top + bottom) / 2, picture.height / 2, delta=10, msg=page)
                    # Ghostscript turns pages by what stands on them.
                    if (picture.width, picture.height) == size:
                        self.assertEqual(picture.at(3, 3), colour, page)

    def test_merged_protected_and_as_pictures(self):
        source, book = self.file("a.pdf", pdf((FONT, text("one")), (FONT, text("two")))), self.file("b.pdf", pdf((FONT, text("book"))))
        self.printed(source, mergefile=book, mergeposition="bottom")
        self.assertText(self.output, "book", "one", "two")
        self.printed(source, ownerpassword="o", userpassword="u")
        self.assertEqual(self.told("pdftotext", "-upw", "u", self.output, "-").split(), ["one", "two"])
        self.printed(source, device="png16m", output=self.root / "page<pageno>.png")
        self.assertEqual(len(list(self.root.glob("page*.png"))), 2)
        self.assertEqual(self.leftovers(), [])


class Failures(PdfTest):
    def test_documents_that_cannot_be_read(self):
        plain = self.file("plain.pdf", pdf((FONT, text("one")), (FONT, text("two"))))
        locked = self.root / "locked.pdf"
        subprocess.run(["qpdf", "--encrypt", "user", "owner", "256", "--", plain, locked], check=True)
        content = plain.read_bytes()
        self.output.write_bytes(b"an earlier document")
        for name, sent, words in (("locked", locked.read_bytes(), "needs a password"), ("empty", pdf(), "no page that can be read"),
                                  ("cut", content[:content.index(b"two")], "is cut off"),
                                  ("garbage", b"%PDF-1.7\n" + bytes(range(256)) * 40 + b"%%EOF", "no page that can be read")):
            with self.subTest(name):
                source = self.file(f"{name}.pdf", sent)
                self.assertIn(f"{name}.pdf: ", self.printed(source, expected=1))
                self.assertIn(words, self.printed(source, expected=1))
                self.assertEqual(self.leftovers(), [])
        self.assertEqual(self.output.read_bytes(), b"an earlier document")

    def test_a_failed_job_is_kept_with_its_document(self):
        self.ghostscript('case "$1" in *_params*) exit 1;; esac\nexec "$real" "$@"')
        words = self.printed(self.file("a.pdf", pdf((FONT, text("one")))), expected=1)
        kept = [name for name in self.leftovers() if name.startswith("print-")]
        self.assertEqual([name.split(".", 1)[1] for name in kept], ["ps", "ps.pdf"])
        for name in kept:
            self.assertIn(str(self.scratch / name), words)

    def test_a_full_disk(self):
        self.output.write_bytes(b"an earlier document")
        source = self.file("large.pdf", pdf((FONT, text("one") + b"% " + b"x" * 100_000)))
        for limit in (0, 600, 50_000):
            with self.subTest(limit):
                code, said = self.tessary_print(source, limit=limit)
                self.assertGreater(code, 0, said)
                self.assertNotEqual(said, "")
                self.assertEqual(self.output.read_bytes(), b"an earlier document")


class Limits(PdfTest):
    """What a job may read."""

    def test_a_job_reads_the_pdf_of_its_own_name_and_nothing_else(self):
        self.file("job.ps.pdf", b"beside the job")
        self.file("job.pdf", b"secret")
        self.file("other.ps.pdf", b"secret")
        for name, expected in (("job.ps.pdf", 0), ("job.pdf", 1), ("other.ps.pdf", 1), ("config/Tessary/PDF Printer/settings.ini", 1)):
            with self.subTest(name):
                content = document("one", tail=f"({self.root / name}) (r) file 20 string readstring pop =\n".encode())
                code, words = self.gui("sessionid=job", f"ps={self.file('job.ps', content)}", "doc=x")
                self.assertEqual(code, expected, words)
                self.assertEqual("invalidfileaccess" in words, expected == 1, words)
                self.assertNotIn("secret", words)

    def test_a_pdf_is_no_program_and_opens_no_file(self):
        secret = self.file("secret.txt", b"BT /F 20 Tf 60 60 Td (LEAK) Tj ET")
        program = b"/Helvetica findfont 20 scalefont setfont 60 60 moveto (LEAK) show\n"
        form = b"/Type/XObject/Subtype/Form/BBox[0 0 400 300]" + FONT
        hostile = pdf((b"/Resources<</Font<</F 3 0 R>>/XObject<</P @0/Q @1/O @2>>>>", b"/P Do /Q Do /O Do " + program + text("one")),
                      objects=(stream(b"/Type/XObject/Subtype/PS", program), stream(form + b"/Subtype2/PS/PS @0", b""),
                               stream(form + b"/F(%s)" % str(secret).encode(), b"")))
        self.printed(self.file("hostile.pdf", hostile))
        said = self.told("pdftotext", self.output, "-")
        self.assertIn("one", said)
        self.assertNotIn("LEAK", said)
