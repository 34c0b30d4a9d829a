"""PDFs made by hand, and what a page of one looks like."""

import pathlib
import subprocess
import tempfile


def pdf(*pages, objects=(), shared=b""):
    """A PDF of pages given as (attributes, content). @0, @1 … stand for the further objects; /F is a font."""
    first = 4 + len(objects)
    body = [b"<</Type/Catalog/Pages 2 0 R>>", b"", b"<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>", *objects]
    for index, (attributes, content) in enumerate(pages):
        body.append(b"<</Type/Page/Parent 2 0 R/Contents %d 0 R" % (first + 2 * index + 1) + attributes + b">>")
        body.append(stream(b"", content))
    kids = b" ".join(b"%d 0 R" % (first + 2 * index) for index in range(len(pages)))
    body[1] = b"<</Type/Pages/Count %d/Kids[%s]/MediaBox[0 0 400 300]" % (len(pages), kids) + shared + b">>"
    for number in range(len(objects)):
        body = [part.replace(b"@%d" % number, b"%d 0 R" % (4 + number)) for part in body]
    text, offsets = b"%PDF-1.6\n", []
    for number, part in enumerate(body, 1):
        offsets.append(len(text))
        text += b"%d 0 obj\n" % number + part + b"\nendobj\n"
    table = b"".join(b"%010d 00000 n \n" % offset for offset in offsets)
    return text + (b"xref\n0 %d\n0000000000 65535 f \n" % (len(body) + 1) + table + b"trailer<</Size %d/Root 1 0 R>>\n"
                   b"startxref\n%d\n%%%%EOF\n" % (len(body) + 1, len(text)))


def stream(attributes, data):
    return b"<<" + attributes + b"/Length %d>>stream\n" % len(data) + data + b"\nendstream"


def letterhead(text, colour="1 0 0", attributes=b""):
    """A page with a square of 40 points at its lower left corner and a text at its upper one."""
    return pdf((b"/Resources<</Font<</F 3 0 R>>>>" + attributes,
                f"{colour} rg 0 0 40 40 re f 0 g BT /F 20 Tf 20 270 Td ({text}) Tj ET".encode()))


class Picture:
    """One page at 72 dpi, with points counted from its lower left corner as in the page itself."""

    def __init__(self, document, page=1):
        with tempfile.TemporaryDirectory() as folder:
            subprocess.run(["pdftoppm", "-r", "72", "-aa", "no", "-f", str(page), "-l", str(page), document, folder + "/p"],
                           check=True, stderr=subprocess.DEVNULL)
            (file,) = pathlib.Path(folder).iterdir()
            _, size, _, self.data = file.read_bytes().split(b"\n", 3)
        self.width, self.height = map(int, size.split())

    def at(self, x, y):
        start = ((self.height - 1 - y) * self.width + x) * 3
        return tuple(self.data[start:start + 3])
