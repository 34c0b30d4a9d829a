"""Backgrounds under the pages of a job, looked at."""

import random
import subprocess
import unittest
import zlib

from desk import ODD_NAMES, SAMPLES, DeskTest, bare
from pdfs import Picture, letterhead, pdf, stream

RED, GREEN, BLUE, WHITE = (255, 0, 0), (0, 255, 0), (0, 0, 255), (255, 255, 255)


def job(*pages, setup="<</PageSize [400 300]>> setpagedevice", page_setup=""):
    lines = ["%!PS-Adobe-3.0", f"%%Pages: {len(pages)}", "%%EndComments", setup]
    for number, text in enumerate(pages, 1):
        lines += [f"%%Page: {number} {number}", page_setup, "/Helvetica findfont 20 scalefont setfont",
                  f"100 150 moveto ({text}) show", "showpage"]
    return "\r\n".join(lines + ["%%EOF", ""]).encode()


class SuperimposeTest(DeskTest):
    def printed(self, value, content, expected=0, **options):
        code, words = self.tessary_print("--set", f"superimpose={value}", self.file("job.ps", content), **options)
        self.assertEqual(code, expected, words)
        return words

    def assertSquare(self, picture, colour=RED):
        """The square of letterhead() lies in the corner, and nothing else beside it."""
        self.assertEqual([picture.at(1, 1), picture.at(38, 38), picture.at(43, 20), picture.at(20, 43)],
                         [colour, colour, WHITE, WHITE])

    def words_of(self, page):
        return subprocess.run(["pdftotext", "-f", str(page), "-l", str(page), self.output, "-"], check=True,
                              capture_output=True).stdout.decode().split()


class Pages(SuperimposeTest):
    def test_each_page_gets_its_background_and_text_stays_text(self):
        first = self.file("first.pdf", letterhead("LETTER"))
        follow = self.file("follow.pdf", letterhead("FOLLOW", "0 0 1"))
        self.printed(f"{first}<1>{follow}<2->", job("one", "two", "three"))
        for page, colour, words in ((1, RED, ["LETTER", "one"]), (2, BLUE, ["FOLLOW", "two"]), (3, BLUE, ["FOLLOW", "three"])):
            self.assertSquare(Picture(self.output, page), colour)
            self.assertEqual(self.words_of(page), words)
        self.assertEqual(self.leftovers(), [])
        self.printed(f"{first}<2>", job("one"))
        self.assertNotIn(b"LETTER", self.output.read_bytes())
        self.assertEqual(self.words_of(1), ["one"])

    def test_the_first_page_stands_as_a_reader_shows_it(self):
        text = b"1 0 0 rg %d %d 40 40 re f"
        for name, attributes, corner in (
                ("box", b"/MediaBox[100 200 500 500]", (100, 200)),
                ("crop", b"/MediaBox[0 0 500 500]/CropBox[50 60 400 300]", (50, 60)),
                ("backwards", b"/MediaBox[400 300 0 0]", (0, 0)),
                ("90", b"/MediaBox[10 20 310 420]/Rotate 90", (270, 20)),
                ("180", b"/MediaBox[10 20 410 320]/Rotate 180", (370, 280)),
                ("270", b"/MediaBox[10 20 310 420]/Rotate -90", (10, 380)),
                ("larger", b"/MediaBox[0 0 2000 1500]", (0, 0)),
                ("smaller", b"/MediaBox[0 0 60 60]", (0, 0)),
                ("inherited", b"", (0, 0))):
            with self.subTest(name):
                content = b"/P gs " + text % corner
                background = self.file("a.pdf", pdf((attributes + b"/Resources<</ExtGState<</P<</ca 1>>>>>>", content),
                                                    (b"", b"0 1 0 rg 0 0 400 300 re f")))
                self.printed(background, job("one"))
                picture = Picture(self.output)
                self.assertEqual((picture.width, picture.height), (400, 300))
                self.assertSquare(picture)
        background = self.file("a.pdf", pdf((b"/MediaBox[0 0 200 150]/UserUnit 2", b"1 0 0 rg 0 0 20 20 re f")))
        self.printed(background, job("one"))
        self.assertSquare(Picture(self.output))

    def test_files_as_others_write_them(self):
        plain = self.file("plain.pdf", letterhead("LETTER"))
        for options in (["--object-streams=generate"], ["--linearize"], ["--encrypt", "", "owner", "256", "--"]):
            with self.subTest(options):
                other = self.root / "other.pdf"
                subprocess.run(["qpdf", *options, plain, other], check=True)
                self.printed(other, job("one"))
                self.assertSquare(Picture(self.output))
        for damage in ((b"startxref", b"startxxxx"), (b"BT /F 20", b"BT /G )>")):
            with self.subTest(damage):
                self.printed(self.file("damaged.pdf", plain.read_bytes().replace(*damage)), job("one"))
                self.assertSquare(Picture(self.output))

    def test_transparency_stays_and_a_picture_is_held_once(self):
        size, noise = 200, random.Random(1)
        picture = stream(b"/Subtype/Image/Width %d/Height %d/BitsPerComponent 8/ColorSpace/DeviceRGB/SMask @0/Filter/FlateDecode" %
                         (size, size), zlib.compress(noise.randbytes(3 * size * size)))
        mask = stream(b"/Subtype/Image/Width %d/Height %d/BitsPerComponent 8/ColorSpace/DeviceGray" % (size, size),
                      b"\x80" * (size * size))
        for group in (b"", b"/Group<</S/Transparency/CS/DeviceRGB>>"):
            with self.subTest(group):
                background = self.file("a.pdf", pdf(
                    (group + b"/Resources<</XObject<</I @1>>/ExtGState<</H<</ca .5>>>>>>",
                     b"q 100 0 0 100 200 0 cm /I Do Q 0 1 0 rg 0 0 40 40 re f /H gs 1 0 0 rg 0 0 40 40 re f"),
                    objects=(mask, picture)))
                self.printed(background, job(*["page"] * 30))
                for page in (1, 30):
                    red, green, blue = Picture(self.output, page).at(20, 20)
                    self.assertTrue(120 < red < 136 and 120 < green < 136 and blue == 0, (red, green, blue))
                listed = subprocess.run(["pdfimages", "-list", self.output], check=True, capture_output=True).stdout
                lines = [line.split() for line in listed.decode().splitlines()[2:]]
                self.assertEqual((len(lines), len({line[10] for line in lines if line[2] == "image"})), (60, 1))
                self.assertLess(self.output.stat().st_size, 2 * background.stat().st_size)

    def test_odd_names(self):
        for name in [*ODD_NAMES, "colon:in;it*"]:
            with self.subTest(name):
                folder = self.root / name
                self.settings(output=self.output)
                (self.root / "machine.ini").write_text(f"[Settings]\nUSERTEMP={folder / 'tmp'}\n")
                background = self.file(f"{name}/{name}.pdf", letterhead("LETTER"))
                self.printed(background, job("one"))
                self.assertSquare(Picture(self.output))


    def test_a_ghostscript_that_cannot_draw_a_pdf_under_a_page(self):
        self.ghostscript('[ "$1" = --version ] && { echo 9.27; exit 0; }\nexec "$real" "$@"')
        self.printed(self.file("a.pdf", letterhead("LETTER")), job("one", "two"))
        for page in (1, 2):
            self.assertSquare(Picture(self.output, page))
            self.assertEqual(self.words_of(page)[-1], ["one", "two"][page - 1])


class Jobs(SuperimposeTest):
    """What a job does around its pages neither loses the background nor is disturbed by it."""

    def setUp(self):
        super().setUp()
        self.background = self.file("a.pdf", letterhead("LETTER"))

    def test_a_page_that_sets_its_paper_after_its_comment(self):
        self.printed(self.background, job("one", "two", setup="", page_setup="<</PageSize [300 400]>> setpagedevice"))
        for page in (1, 2):
            picture = Picture(self.output, page)
            self.assertEqual((picture.width, picture.height), (300, 400))
            self.assertSquare(picture)

    def test_a_job_with_names_memory_and_state_of_its_own(self):
        hostile = ("<</PageSize [300 200] /BeginPage {pop 0 0 1 setrgbcolor 280 180 20 20 rectfill 0 setgray}>> setpagedevice "
                   "save true setpacking true setglobal /own 20 dict def own begin /Page 0 def /Draw /quit load def "
                   "/gsave /quit load def /initgraphics /quit load def /pdfmark /cleartomark load def "
                   "{dup mul} settransfer 2 2 scale 50 0 translate")
        self.printed(self.file("a.pdf", letterhead("LETTER", "1 .6 0")), job("one", "two", setup=hostile))
        first, second = Picture(self.output, 1), Picture(self.output, 2)
        for picture in (first, second):
            self.assertSquare(picture, (255, 153, 0))
        self.assertEqual(second.at(290, 190), BLUE)
        self.assertEqual(self.words_of(2), ["two"])

    def test_a_comment_within_a_page_changes_nothing(self):
        content = job("one", "two").replace(b"(two) show", b"(two) show\r\n%%Page: 1 1\r\n0 1 0 setrgbcolor 0 0 20 20 rectfill")
        self.printed(self.background, content)
        self.assertEqual(Picture(self.output, 2).at(10, 10), GREEN)

    @unittest.skipUnless(SAMPLES.is_dir(), "the folder of real print jobs is not there")
    def test_real_print_jobs(self):
        tone = self.file("tone.pdf", pdf((b"/MediaBox[0 0 1000 1000]", b"1 .9 .8 rg 0 0 1000 1000 re f")))
        for source in sorted([*SAMPLES.glob("*.ps"), *SAMPLES.glob("*.prn")]):
            with self.subTest(source.name):
                self.printed(tone, source.read_bytes())
                reference = self.root / "bare.pdf"
                bare(source, reference)
                pages = [subprocess.run(["pdfinfo", file], check=True, capture_output=True).stdout.split(b"Pages:")[1].split()[0]
                         for file in (self.output, reference)]
                self.assertEqual(*pages)
                if not source.name.startswith("framemaker"):  # its pages paint themselves white first
                    picture = Picture(self.output)
                    self.assertIn((255, 230, 204), {picture.at(step, step) for step in range(0, 500, 5)})


class Failures(SuperimposeTest):
    def test_backgrounds_that_cannot_be_used(self):
        good = self.file("good.pdf", letterhead("LETTER"))
        locked = self.root / "locked.pdf"
        subprocess.run(["qpdf", "--encrypt", "user", "owner", "256", "--", good, locked], check=True)
        self.output.write_bytes(b"an earlier document")
        for name, content, number, words in (
                ("missing.pdf", None, 1011, "missing.pdf' does not exist."),
                ("text.pdf", b"%!PS\n", 1011, "It is no PDF."),
                ("locked.pdf", None, 1007, "password"),
                ("cut.pdf", good.read_bytes()[:200], 1007, "There is no page that can be read."),
                ("garbage.pdf", b"%PDF-1.4\n" + bytes(range(256)), 1007, "There is no page that can be read."),
                ("empty.pdf", pdf(), 1007, "There is no page that can be read.")):
            with self.subTest(name):
                path = self.file(name, content) if content else self.root / name
                said = self.printed(f"{good}<1>{path}<2->", job("one"), expected=1)
                self.assertIn(f"Error {number}: Background PDF '{path}'", said)
                self.assertIn(words, said)
                self.assertEqual(self.output.read_bytes(), b"an earlier document")
        self.assertIn("Error 6: ", self.printed(f"{good}<32768>", job("one"), expected=1))
