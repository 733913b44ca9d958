"""Writes and reads bitmap files: 8 bits per pixel, run-length encoded, with a full colour table.

Layout: 14-byte file header, 40-byte information header, 256 entries (blue, green, red, 0), then the rows, bottom
row first. A row is a sequence of (count, index) pairs and literal runs (0, count, indexes, padded to an even length).
(0, 0) ends a row, (0, 1) the picture.
"""

import struct

_FILE_HEADER = struct.Struct("<2sIHHI")
_INFO_HEADER = struct.Struct("<IiiHHIIiiII")
_RLE8 = 1
_MAX_RUN = 255
_MIN_LITERAL = 3


def encode(width, height, indexes, entries):
    """The bytes of a bitmap file. `indexes` contains the rows from top to bottom."""
    pixels = bytearray()
    for y in range(height - 1, -1, -1):
        pixels += _encode_row(indexes[y * width:(y + 1) * width])
        pixels += b"\0\0"
    pixels[-2:] = b"\0\1"
    table = b"".join(struct.pack("4B", blue, green, red, 0) for red, green, blue in entries)
    start = _FILE_HEADER.size + _INFO_HEADER.size + len(table)
    header = _FILE_HEADER.pack(b"BM", start + len(pixels), 0, 0, start)
    info = _INFO_HEADER.pack(_INFO_HEADER.size, width, height, 1, 8, _RLE8, len(pixels), 0, 0, len(entries), 0)
    return header + info + table + bytes(pixels)


def _encode_row(row):
    out = bytearray()
    literal = bytearray()
    at = 0
    while at < len(row):
        count = 1
        while at + count < len(row) and row[at + count] == row[at] and count < _MAX_RUN:
            count += 1
        # Inside a literal run, two equal pixels stay literal: a separate pair would take at least as many bytes.
        if count >= 3 or (count == 2 and not literal):
            _flush(out, literal)
            out += bytes([count, row[at]])
        else:
            literal += row[at:at + count]
        at += count
    _flush(out, literal)
    return out


def _flush(out, literal):
    while literal:
        part = literal[:254]
        del literal[:254]
        if len(part) < _MIN_LITERAL:
            for index in part:
                out += bytes([1, index])
            continue
        out += bytes([0, len(part)]) + part
        if len(part) % 2:
            out.append(0)


def decode(data):
    """Decodes a file that `encode` wrote. Returns (width, height, indexes from top to bottom, entries)."""
    magic, size, _, _, start = _FILE_HEADER.unpack_from(data, 0)
    info = _INFO_HEADER.unpack_from(data, _FILE_HEADER.size)
    header_size, width, height, planes, bits, compression, pixel_size, _, _, used, _ = info
    if (magic, size, header_size, planes, bits, compression) != (b"BM", len(data), 40, 1, 8, _RLE8):
        raise ValueError("not an RLE8 bitmap")
    if used not in (0, 256) or start + pixel_size != size:
        raise ValueError("wrong size of colour table or pixels")
    table = data[_FILE_HEADER.size + _INFO_HEADER.size:start]
    entries = [(table[i + 2], table[i + 1], table[i]) for i in range(0, len(table), 4)]
    rows = _decode_rows(data[start:], width, height)
    return width, height, b"".join(reversed(rows)), entries


def _decode_rows(data, width, height):
    rows = []
    row = bytearray()
    at = 0
    while True:
        count, value = data[at], data[at + 1]
        at += 2
        if count:
            row += bytes([value]) * count
        elif value >= _MIN_LITERAL:
            row += data[at:at + value]
            at += value + value % 2
        elif value == 2:
            raise ValueError("a jump, which the encoder never writes")
        else:
            if len(row) != width:
                raise ValueError("row %d is %d pixels wide" % (len(rows), len(row)))
            rows.append(bytes(row))
            row = bytearray()
            if value == 1:
                break
    if len(rows) != height or at != len(data):
        raise ValueError("%d rows, %d bytes left over" % (len(rows), len(data) - at))
    return rows
