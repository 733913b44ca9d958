"""Writes and reads icon files: images with 16 colours and a transparency mask.

Layout: a 6-byte directory header, a 16-byte entry per image, then the images. An image has a 40-byte information header
whose height includes both planes, 16 palette entries, the colours (4 bits per pixel) and the mask (1 bit per pixel, set
for the background). Both planes begin with the bottom row; rows are padded to 4 bytes.
"""

import struct

from palette import VGA

CLEAR = 16

_DIRECTORY = struct.Struct("<HHH")
_ENTRY = struct.Struct("<BBBBHHII")
_INFO_HEADER = struct.Struct("<IiiHHIIiiII")


def encode(images):
    """The bytes of an icon file. Each image is a list of rows of colour numbers 0..15 or CLEAR, top row first."""
    bodies = [_encode_image(rows) for rows in images]
    out = _DIRECTORY.pack(0, 1, len(images))
    at = _DIRECTORY.size + _ENTRY.size * len(images)
    for rows, body in zip(images, bodies):
        out += _ENTRY.pack(len(rows[0]), len(rows), 16, 0, 1, 4, len(body), at)
        at += len(body)
    return out + b"".join(bodies)


def _encode_image(rows):
    width, height = len(rows[0]), len(rows)
    colours, mask = bytearray(), bytearray()
    for row in reversed(rows):
        # Transparent pixels must be black, because drawing combines them with the background by exclusive or.
        solid = [0 if pixel == CLEAR else pixel for pixel in row]
        colours += bytes(a << 4 | b for a, b in zip(solid[::2], solid[1::2])).ljust(_stride(width, 4), b"\0")
        bits = "".join("1" if pixel == CLEAR else "0" for pixel in row).ljust(_stride(width, 1) * 8, "0")
        mask += int(bits, 2).to_bytes(_stride(width, 1), "big")
    header = _INFO_HEADER.pack(_INFO_HEADER.size, width, height * 2, 1, 4, 0, len(colours) + len(mask), 0, 0, 0, 0)
    table = b"".join(struct.pack("4B", blue, green, red, 0) for red, green, blue in VGA)
    return header + table + bytes(colours) + bytes(mask)


def _stride(width, bits):
    return (width * bits + 31) // 32 * 4


def decode(data):
    """Decodes the images of a file that `encode` wrote."""
    _, kind, count = _DIRECTORY.unpack_from(data, 0)
    if kind != 1:
        raise ValueError("not an icon file")
    images = []
    for i in range(count):
        width, height, _, _, _, bits, size, at = _ENTRY.unpack_from(data, _DIRECTORY.size + i * _ENTRY.size)
        if bits != 4 or at + size > len(data):
            raise ValueError("image %d is not one of 16 colours" % i)
        images.append(_decode_image(data[at:at + size], width, height))
    return images


def _decode_image(body, width, height):
    start = _INFO_HEADER.size + 16 * 4
    mask_start = start + height * _stride(width, 4)
    rows = []
    for y in range(height - 1, -1, -1):
        row = []
        for x in range(width):
            pair = body[start + y * _stride(width, 4) + x // 2]
            clear = body[mask_start + y * _stride(width, 1) + x // 8] >> (7 - x % 8) & 1
            colour = pair & 15 if x % 2 else pair >> 4
            if clear and colour:
                raise ValueError("a transparent pixel has a colour")
            row.append(CLEAR if clear else colour)
        rows.append(row)
    return rows
