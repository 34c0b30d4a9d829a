"""What the pages and the properties of a document show: the stamp, the title, the opening view."""

import math
import pathlib
import re
import shutil
import subprocess
import tempfile

from desk import SAMPLES, DeskTest

WIDTH, HEIGHT = 400, 300
RED = (255, 0, 0)
BLUE = (0, 0, 255)


def page(content, number=1, size=None):
    """One page of a document; the text keeps Ghostscript from turning the page to suit a turned stamp."""
    setup = f"<< /PageSize [{size[0]} {size[1]}] >> setpagedevice\n" if size else ""
    return (f"%%Page: {number} {number}\n{setup}/Helvetica findfont 4 scalefont setfont 10 150 moveto\n"
            f"({'horizontal text ' * 5}) show\n{content}\nshowpage\n")


def document(*pages):
    return ("%!PS-Adobe-3.0\n%%Title: (from the job)\n%%EndComments\n<< /PageSize [400 300] >> setpagedevice\n" +
            "".join(pages) + "%%EOF\n").encode()


def any_font():
    """The path of some TrueType font of this machine."""
    fonts = subprocess.run(["fc-list", ":fontformat=TrueType:lang=en", "file"], check=True, capture_output=True,
                           text=True).stdout
    return sorted(line.rstrip(": ") for line in fonts.splitlines() if ".ttf" in line)[0]


def string_width(font, text, size):
    """Asks Ghostscript."""
    answer = subprocess.run(["gs", "-q", "-dNODISPLAY", "-dBATCH", f"-sFONTPATH={pathlib.Path(font).parent}", "-c",
                             f"({font}) findfont {size} scalefont setfont ({text}) stringwidth pop ="],
                            check=True, capture_output=True, text=True).stdout
    return float(answer.split()[-1])


def pictures(pdf):
    """Each page, one pixel for a point, as width, height and RGB bytes."""
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run(["pdftoppm", "-r", "72", pdf, folder + "/page"], check=True, stderr=subprocess.DEVNULL)
        for path in sorted(pathlib.Path(folder).iterdir()):
            _, size, _, pixels = path.read_bytes().split(b"\n", 3)
            yield (*map(int, size.split()), pixels)


def color_at(picture, x, y):
    """The colour of the point x, y, counted from the lower left corner as PostScript does."""
    width, height, pixels = picture
    at = 3 * (width * (height - 1 - int(y)) + int(x))
    return tuple(pixels[at:at + 3])


def box_of_red(picture):
    """The box around everything that is more red than anything else: left, bottom, right, top."""
    width, height, pixels = picture
    points = [(at // 3 % width, height - at // 3 // width) for at in range(0, len(pixels), 3)
              if pixels[at] > pixels[at + 1] + 60 and pixels[at] > pixels[at + 2] + 60]
    if not points:
        return None
    columns, rows = zip(*points)
    return min(columns), min(rows) - 1, max(columns) + 1, max(rows)


def expected_box(text_width, size, angle, horizontal, vertical, horizontal_margin, vertical_margin, paper):
    """Where a stamp's box belongs; the margins are percents."""
    width, height = paper
    across, along = abs(math.sin(math.radians(angle))), abs(math.cos(math.radians(angle)))
    tall = size * 0.7327
    box_width, box_height = along * text_width + across * tall, across * text_width + along * tall
    x, y = horizontal_margin * width / 100, vertical_margin * height / 100
    left = {"left": x, "center": (width - box_width) / 2 + x, "right": width - box_width - x}[horizontal]
    bottom = {"bottom": y, "center": (height - box_height) / 2 - y, "top": height - box_height - y}[vertical]
    return left, bottom, left + box_width, bottom + box_height


class StampTest(DeskTest):
    TEXT, SIZE = "HIIH", 40

    def prints(self, source, **settings):
        settings = {"output": self.output, "watermarktext": self.TEXT, "watermarkfontsize": self.SIZE,
                    "watermarkcolor": "#FF0000", "watermarkoutlinewidth": 0, "watermarkrotation": 0} | settings
        self.settings(**settings)
        path = source if isinstance(source, pathlib.Path) else self.file("job.ps", source)
        code, words = self.tessary_print(path)
        self.assertEqual(code, 0, words)
        subprocess.run(["qpdf", "--check", self.output], check=True, stdout=subprocess.DEVNULL)
        return list(pictures(self.output))

    def assertBox(self, picture, expected, tolerance=None):
        """Letters stand a little inside the box that is computed for them."""
        found = box_of_red(picture)
        self.assertIsNotNone(found, "no stamp")
        tolerance = tolerance or 0.12 * self.SIZE + 1
        for side, (is_at, belongs) in zip(("left", "bottom", "right", "top"), zip(found, expected)):
            self.assertLess(abs(is_at - belongs), tolerance, f"{side}: {found}, expected {expected}")


class Places(StampTest):
    def setUp(self):
        super().setUp()
        font = any_font()
        self.font = pathlib.Path(font).name
        self.text_width = string_width(font, self.TEXT, self.SIZE)

    def check(self, angle, horizontal, vertical, margins, paper=(WIDTH, HEIGHT), **settings):
        (picture,) = self.prints(
            document(page("", size=paper)), watermarkfontname=self.font, watermarkhorizontalposition=horizontal,
            watermarkverticalposition=vertical, watermarkhorizontaladjustment=margins[0],
            watermarkverticaladjustment=margins[1], **settings)
        self.assertEqual(picture[:2], paper)
        self.assertBox(picture, expected_box(self.text_width, self.SIZE, angle, horizontal, vertical, *margins, paper))

    def test_nine_positions_with_margins(self):
        for horizontal in ("left", "center", "right"):
            for vertical in ("top", "center", "bottom"):
                with self.subTest(f"{horizontal} {vertical}"):
                    self.check(0, horizontal, vertical, (5, 10))

    def test_rotations(self):
        diagonal = math.degrees(math.atan2(HEIGHT, WIDTH))
        for rotation, angle in (("c2c", diagonal), ("-c2c", -diagonal), ("90", 90), ("-45", -45), ("200", 200)):
            for horizontal, vertical in (("left", "bottom"), ("right", "top"), ("center", "center")):
                with self.subTest(f"{rotation} {horizontal} {vertical}"):
                    self.check(angle, horizontal, vertical, (0, 0), watermarkrotation=rotation)

    def test_other_paper_and_outlines(self):
        self.check(0, "right", "top", (0, 0), paper=(300, 500), watermarkoutlinewidth=1)


class Layers(StampTest):
    FILLED = "0 0 1 setrgbcolor 100 100 200 100 rectfill"

    def share_of(self, picture, color):
        """How much of the middle of the page has this colour."""
        points = [(x, y) for x in range(110, 290) for y in range(110, 190)]
        return sum(color_at(picture, *point) == color for point in points) / len(points)

    def test_over_and_under_the_content(self):
        for layer, filled in (("top", True), ("bottom", False)):
            with self.subTest(layer):
                blue, white = self.prints(document(page(self.FILLED), page("", 2)), watermarklayer=layer)
                self.assertEqual(self.share_of(blue, RED) > 0.02, filled)
                self.assertGreater(self.share_of(blue, BLUE), 0.8)
                self.assertGreater(self.share_of(white, RED), 0.02)

    def test_color_and_outline(self):
        (solid,) = self.prints(document(page("")), watermarkcolor="0000FF", watermarkfontsize=120)
        (outlined,) = self.prints(document(page("")), watermarkcolor="#0000FF", watermarkfontsize=120,
                                  watermarkoutlinewidth=2)
        self.assertGreater(self.share_of(solid, BLUE), 1.5 * self.share_of(outlined, BLUE))
        self.assertGreater(self.share_of(outlined, BLUE), 0)

    def test_job_and_stamp_leave_each_other_alone(self):
        names = ("/h 1 def /w 2 def /fontname (x) def /fontsize 3 def /stampstring (job) def /fontcolor {0} def "
                 "/ISOEncode {} def /relative_vertical_margin 50 def")
        jobs = {
            "names of its own": (names, "h 1 eq w 2 eq and not {0 0 400 300 rectfill} if"),
            "a closed dictionary": ("5 dict dup begin readonly pop", ""),
            "shared memory": ("true setglobal", ""),
            "pages saved and restored": ("save", "restore save"),
            "an end of page that goes on": (
                "<< /EndPage [ currentpagedevice /EndPage get /exec load ] cvx >> setpagedevice", ""),
        }
        for name, (before, after) in jobs.items():
            with self.subTest(name):
                pages = self.prints(document(page(before), page(after, 2)))
                self.assertEqual([round(self.share_of(picture, RED), 2) for picture in pages],
                                 [round(self.share_of(pages[0], RED), 2)] * 2)
                self.assertGreater(self.share_of(pages[0], RED), 0.02)
                self.assertEqual(color_at(pages[1], 5, 5), (255, 255, 255))

    def test_a_change_of_paper_leaves_one_stamp_a_page(self):
        self.prints(document(page(""), page("", 2, (500, 200)), page("", 3, (200, 500))))
        text = subprocess.run(["pdftotext", self.output, "-"], check=True, capture_output=True, text=True).stdout
        self.assertEqual([part.count(self.TEXT) for part in text.split("\f")], [1, 1, 1, 0])

    def test_text_is_data(self):
        text = "a (b) [c] {d} \\) 50%"
        self.prints(document(page("")), watermarktext=text + " é", watermarkfontsize=20)
        self.assertIn(text + " é", subprocess.run(["pdftotext", self.output, "-"], check=True, capture_output=True,
                                                  text=True).stdout)

    def test_jobs_of_real_drivers(self):
        for name in ("dvips-miktex-crlf-curry2-19p.ps", "acrobat6-pscolor-12p.ps", "scribus-cups-document-a4-4p.ps"):
            source = SAMPLES / name
            if not source.exists():
                self.skipTest(f"{source} is not here")
            for layer in ("top", "bottom"):
                with self.subTest(f"{name} {layer}"):
                    plain = self.prints(source, watermarktext="")
                    stamped = self.prints(source, watermarklayer=layer, watermarkhorizontalposition="right",
                                          watermarkverticalposition="top")
                    self.assertEqual([picture[:2] for picture in stamped], [picture[:2] for picture in plain])
                    if layer == "top":
                        for picture in stamped:
                            self.assertIsNotNone(box_of_red(picture))


class Fonts(StampTest):
    def fonts_of(self, **settings):
        self.prints(document(page("")), **settings)
        listed = subprocess.run(["pdffonts", self.output], check=True, capture_output=True, text=True).stdout
        return [line.split()[0].partition("+")[2] for line in listed.splitlines()[2:]]

    def test_a_font_of_the_user_is_found_by_its_name(self):
        font = any_font()
        folder = self.root / "home/.fonts/own ü (1)"
        folder.mkdir(parents=True)
        shutil.copy(font, folder / "My Own.ttf")
        self.environment["XDG_DATA_HOME"] = str(self.root / "data")
        kept = self.spy()
        for name in ("My Own.ttf", "../../my own.TTF", "/etc/My Own.ttf"):
            with self.subTest(name):
                fonts = self.fonts_of(watermarkfontname=name)
                self.assertTrue([name for name in fonts if "/.fonts/" in name], fonts)
        for parameters in kept.glob("*_params.gs"):
            self.assertIn(f'-sFONTPATH#"/usr/share/fonts:{folder}"', parameters.read_text())

    def test_a_font_that_is_not_there_is_substituted(self):
        for name in ("arial.ttf", "no such font.ttf", "../../etc/passwd", "..", "/"):
            with self.subTest(name):
                (picture,) = self.prints(document(page("")), watermarkfontname=name)
                self.assertIsNotNone(box_of_red(picture))

    def test_a_machine_without_fonts(self):
        empty = self.file("fonts.conf", b"<fontconfig><dir>/nonexistent</dir></fontconfig>")
        self.environment["FONTCONFIG_FILE"] = str(empty)
        (picture,) = self.prints(document(page("")))
        self.assertIsNotNone(box_of_red(picture))


class Properties(DeskTest):
    LETTERS = ["Überblick “Q3”", "報告書", "A (B) \\ [c] {d} )(", "😀 family 👩‍👩‍👧", "‘a’ – b — c… € ™ Ž • \u00a0\u00ad",
               "(%s) /x def %% <</A>>", "čeština ﬁ ł"]

    def prints(self, **settings):
        self.settings(output=self.output, **settings)
        code, words = self.tessary_print(self.file("job.ps", document(page(""))))
        self.assertEqual(code, 0, words)
        subprocess.run(["qpdf", "--check", self.output], check=True, stdout=subprocess.DEVNULL)

    def info(self):
        words = subprocess.run(["pdfinfo", "-enc", "UTF-8", self.output], check=True, capture_output=True).stdout
        return {key: value.strip(" \n") for key, value in re.findall(r"^(\w[\w ]*):(.*)$", words.decode(), re.MULTILINE)}

    def test_any_letters(self):
        for value in self.LETTERS:
            with self.subTest(value):
                self.prints(title=value, author=value, subject=value, keywords=value, creator=value)
                info = self.info()
                self.assertEqual([info[key] for key in ("Title", "Author", "Subject", "Keywords", "Creator")],
                                 [value] * 5)

    def test_no_record_contradicts_the_title(self):
        """Readers prefer the title of the XML record where there is one."""
        for value in self.LETTERS:
            with self.subTest(value):
                self.prints(title=value)
                titles = re.findall(rb"<dc:title>.*?</dc:title>", self.output.read_bytes(), re.DOTALL)
                self.assertEqual([title for title in titles if "\ufffd".encode() in title], [])

    def test_a_title_of_two_lines(self):
        self.prints(title='<vbs:"one" & vbCrLf & "two) (three" & vbLf & Chr(0) & "four">', author="Ann")
        words = subprocess.run(["pdfinfo", "-enc", "UTF-8", self.output], check=True, capture_output=True).stdout
        self.assertIn(b"one\ntwo) (three\n\0four", words)
        self.assertEqual(self.info()["Author"], "Ann")

    def test_opening_view(self):
        for settings, wanted in (({"zoom": "fitall"}, rb"/Fit\b"), ({"zoom": "75"}, rb"/XYZ null null 0?\.75"),
                                 ({"zoom": "", "usethumbs": "Yes"}, rb"/PageMode\s*/UseThumbs")):
            with self.subTest(settings):
                self.prints(**settings)
                plain = self.root / "plain.pdf"
                subprocess.run(["qpdf", "--qdf", "--object-streams=disable", self.output, plain], check=True)
                self.assertRegex(re.sub(rb"\s+", b" ", plain.read_bytes()), wanted)
