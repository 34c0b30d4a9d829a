"""Image devices: what the job delivers, by the heads of the files."""

import images
from desk import ODD_NAMES, DeskTest, document

DEVICES = {
    "png": {"pngmono": (1, 0), "pnggray": (8, 0), "png16": (4, 3), "png256": (8, 3), "png16m": (8, 2), "pngalpha": (8, 6)},
    "tif": {"tiffgray": ((8,), 1, 1), "tiff12nc": ((4, 4, 4), 2, 1), "tiff24nc": ((8, 8, 8), 2, 1),
            "tiff32nc": ((8, 8, 8, 8), 5, 1), "tiffsep": ((8, 8, 8, 8), 5, 5), "tiffcrle": ((1,), 0, 2),
            "tiffg3": ((1,), 0, 3), "tiffg32d": ((1,), 0, 3), "tiffg4": ((1,), 0, 4), "tifflzw": ((1,), 0, 5),
            "tiffpack": ((1,), 0, 32773)},
    "jpg": {"jpeg": (8, 3)},
}


def pages(*widths):
    """A document whose pages are told apart by their widths."""
    return "%!PS\n".encode() + b"".join(
        b"<</PageSize [%d 100]>> setpagedevice 1 0 0 setrgbcolor 9 9 50 50 rectfill showpage\n" % width
        for width in widths)


class Images(DeskTest):
    def job(self, content, **settings):
        self.settings(**settings)
        return self.gui("sessionid=job", f"ps={self.file('job.ps', content)}")

    def test_every_device(self):
        for extension, devices in DEVICES.items():
            for device, mode in devices.items():
                with self.subTest(device):
                    output = self.root / f"{device}.{extension}"
                    self.assertEqual(self.job(pages(200), device=device, output=output, resx="144", resy="72"), (0, ""))
                    self.assertEqual(images.read(output), [images.Image((400, 100), mode, (144, 72))])
                    self.assertEqual(self.leftovers(), [])

    def test_one_file_a_page(self):
        for device in ("png16m", "tiffsep"):
            with self.subTest(device):
                output = self.root / device / "scan<pageno,3>.img"
                output.parent.mkdir()
                self.assertEqual(self.job(pages(100, 200, 300), device=device, output=output, res="72"), (0, ""))
                self.assertEqual({path.name: images.read(path)[0].size for path in output.parent.iterdir()},
                                 {"scan001.img": (100, 100), "scan002.img": (200, 100), "scan003.img": (300, 100)})
                self.assertEqual(self.leftovers(), [])

    def test_all_pages_in_one_file(self):
        output = self.root / "fax.tif"
        self.assertEqual(self.job(pages(100, 200), device="TIFFG4", output=output, res="72"), (0, ""))
        self.assertEqual([image.size for image in images.read(output)], [(100, 100), (200, 100)])

    def test_background(self):
        output = self.root / "x.png"
        self.assertEqual(self.job(pages(200), device="pngalpha", output=output, backgroundcolor="FF8000"), (0, ""))
        self.assertIn((b"bKGD", bytes.fromhex("00ff00800000")), list(images.png_chunks(output.read_bytes())))

    def test_odd_folders(self):
        for name in ODD_NAMES:
            with self.subTest(name):
                self.environment["TMPDIR"] = str(self.root / name / "tmp")
                output = self.root / name / "<pageno>.png"
                output.parent.mkdir()
                self.assertEqual(self.job(pages(200, 100), device="png16m", output=output), (0, ""))
                self.assertEqual(len(list(output.parent.glob("*.png"))), 2)

    def test_what_ghostscript_refuses_is_told_and_nothing_is_delivered(self):
        output = self.file("x.png", b"an earlier image")
        for words, settings in (("Unknown device: nosuch", {"device": "NoSuch"}),
                                ("Use of the %d format is required", {"device": "tiffsep"}),
                                ("-dBackgroundColor#16##FFFFFF", {"device": "png16m", "backgroundcolor": "#FFFFFF"}),
                                ("rangecheck", {"device": "png16m", "textalphabits": "3"})):
            with self.subTest(words):
                code, said = self.job(pages(200, 100), output=output, **settings)
                self.assertEqual(code, 1)
                self.assertRegex(said, "Error 1007: ")
                self.assertIn(words, said)
                self.assertEqual(output.read_bytes(), b"an earlier image")

    def test_protected_documents(self):
        output = self.root / "<pageno>.png"
        for passwords in ({"ownerpassword": "o"}, {"ownerpassword": "o", "userpassword": "ü 1"}):
            with self.subTest(passwords):
                merged = self.root / "merged.pdf"
                self.assertEqual(self.job(document("one"), output=merged, **passwords), (0, ""))
                for mergefile in ("", merged):
                    code, said = self.job(document("two"), device="png16m", output=output, mergefile=mergefile, **passwords)
                    self.assertEqual((code, said), (0, ""))
                    self.assertEqual(len(list(self.root.glob("*.png"))), 2 if mergefile else 1)
                    for image in self.root.glob("*.png"):
                        image.unlink()
