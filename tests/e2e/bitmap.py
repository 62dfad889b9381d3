"""Picture files of 24 bits, written and read without the product's code."""

import struct

from desktop import check


def write_bitmap(path, width, height, colour):
    """A BMP of one colour."""
    row = bytes(colour) * width
    row += bytes(-len(row) % 4)
    head = struct.pack("<IiiHHIIiiII", 40, width, height, 1, 24, 0, len(row) * height, 0, 0, 0, 0)
    with open(path, "wb") as file:
        file.write(struct.pack("<2sIHHI", b"BM", 54 + len(row) * height, 0, 0, 54) + head + row * height)


def read_bitmap(path):
    """Width, height and the set of all pixels of a BMP of 24 bits."""
    with open(path, "rb") as file:
        data = file.read()
    start, = struct.unpack_from("<I", data, 10)
    width, height, planes, bits = struct.unpack_from("<iiHH", data, 18)
    check(data[:2] == b"BM" and planes == 1 and bits == 24, f"{path} is no bitmap of 24 bits")
    stride = (width * 3 + 3) // 4 * 4
    check(len(data) >= start + stride * abs(height), f"{path} is cut off")
    pixels = {data[p:p + 3] for y in range(abs(height))
              for p in range(start + y * stride, start + y * stride + width * 3, 3)}
    return width, abs(height), pixels
