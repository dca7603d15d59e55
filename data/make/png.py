"""Writes an 8-bit RGB picture as PNG, so that drawing needs no library."""

import struct
import zlib


def _chunk(kind, body):
    return struct.pack(">I", len(body)) + kind + body + struct.pack(">I", zlib.crc32(kind + body))


def _paeth(left, up, corner):
    guess = left + up - corner
    near = (abs(guess - left), abs(guess - up), abs(guess - corner))
    return (left, up, corner)[near.index(min(near))]


def _filtered(row, prior):
    """The row under the filter that leaves the smallest differences, as PNG encoders choose."""
    left = bytes(3) + row[:-3]
    corner = bytes(3) + prior[:-3]
    tries = [
        row,
        bytes((a - b) & 255 for a, b in zip(row, left)),
        bytes((a - b) & 255 for a, b in zip(row, prior)),
        bytes((a - ((b + c) >> 1)) & 255 for a, b, c in zip(row, left, prior)),
        bytes((a - _paeth(b, c, d)) & 255 for a, b, c, d in zip(row, left, prior, corner)),
    ]
    cost = [sum(min(v, 256 - v) for v in each) for each in tries]
    best = cost.index(min(cost))
    return bytes([best]) + tries[best]


def write_png(path, width, height, pixels):
    """pixels: width * height * 3 bytes, rows from the top."""
    stride = width * 3
    prior = bytes(stride)
    body = bytearray()
    for y in range(height):
        row = bytes(pixels[y * stride : (y + 1) * stride])
        body += _filtered(row, prior)
        prior = row
    with open(path, "wb") as out:
        out.write(b"\x89PNG\r\n\x1a\n")
        out.write(_chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0)))
        out.write(_chunk(b"IDAT", zlib.compress(bytes(body), 9)))
        out.write(_chunk(b"IEND", b""))
