"""What the heads of image files say, read without an image library."""

import struct
from typing import NamedTuple


class Image(NamedTuple):
    size: tuple
    mode: tuple  # PNG: bits, colour type; TIFF: bits of the samples, photometric, compression; JPEG: bits, components
    resolution: tuple  # dots per inch


def read(path):
    """The images in a file: one, or the pages of a TIFF."""
    data = path.read_bytes()
    for magic, reader in ((b"\x89PNG\r\n\x1a\n", _png), (b"II*\0", _tiff), (b"\xff\xd8", _jpeg)):
        if data.startswith(magic):
            return reader(data)
    raise ValueError(f"{path} is no image: {data[:8]}")


def png_chunks(data):
    position = 8
    while position < len(data):
        length, name = struct.unpack_from(">I4s", data, position)
        yield name, data[position + 8:position + 8 + length]
        position += length + 12


def _png(data):
    chunks = dict(png_chunks(data))
    width, height, bits, colour = struct.unpack_from(">IIBB", chunks[b"IHDR"])
    dots = struct.unpack_from(">II", chunks[b"pHYs"])  # per metre
    return [Image((width, height), (bits, colour), tuple(round(value * 0.0254) for value in dots))]


def _tiff(data):
    images = []
    position, = struct.unpack_from("<I", data, 4)
    while position:
        count, = struct.unpack_from("<H", data, position)
        tags = {}
        for entry in range(position + 2, position + 2 + 12 * count, 12):
            tag, kind, number = struct.unpack_from("<HHI", data, entry)
            code, size = {3: ("H", 2), 4: ("I", 4), 5: ("II", 8)}.get(kind, ("B", 1))
            start = entry + 8 if number * size <= 4 else struct.unpack_from("<I", data, entry + 8)[0]
            tags[tag] = struct.unpack_from("<" + code * number, data, start)
        dots = tuple(round(above / below) for above, below in (tags[282], tags[283]))
        images.append(Image((tags[256][0], tags[257][0]), (tags[258], tags[262][0], tags[259][0]), dots))
        position, = struct.unpack_from("<I", data, position + 2 + 12 * count)
    return images


def _jpeg(data):
    unit, *dots = struct.unpack_from(">BHH", data, data.index(b"JFIF\0") + 7)
    bits, height, width, components = struct.unpack_from(">BHHB", data, data.index(b"\xff\xc0") + 4)
    return [Image((width, height), (bits, components), tuple(dots) if unit == 1 else None)]
