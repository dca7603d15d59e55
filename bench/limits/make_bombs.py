#!/usr/bin/env python3
"""make_bombs.py FOLDER: files that claim, unpack to, or wait for more than they have, one or more
for each kind that the program meets. Small on the disk; the larger ones are sparse."""
import gzip
import os
import socket
import struct
import subprocess
import sys
import zlib

FOLDER = sys.argv[1]


def put(name, data, size=0):
    with open(os.path.join(FOLDER, name), "wb") as file:
        file.write(data)
        if size:
            file.truncate(size)


def zeros(count):
    """Zeros packed by deflate, a thousandth of their length."""
    packer = zlib.compressobj(9)
    block = bytes(1 << 20)
    parts = [packer.compress(block) for _ in range(count >> 20)]
    parts += [packer.compress(bytes(count & 0xFFFFF)), packer.flush()]
    return b"".join(parts)


def ffmpeg(out, options):
    """None where the tool is not there or cannot."""
    path = os.path.join(FOLDER, out)
    made = subprocess.run(["ffmpeg", "-nostdin", "-loglevel", "error", "-y"] + options + [path],
                          check=False, stderr=subprocess.DEVNULL)
    if made.returncode:
        return None
    with open(path, "rb") as file:
        return file.read()


# JPEG ---------------------------------------------------------------------------------------------

def segment(mark, data):
    return bytes([0xFF, mark]) + struct.pack(">H", len(data) + 2) + data


def huffman(kind, codes):
    """A table whose codes have one length, as many as there are."""
    bits = max(1, (len(codes)).bit_length())
    counts = [0] * 16
    counts[bits - 1] = len(codes)
    return bytes([kind]) + bytes(counts) + bytes(codes)


def jpeg_head(width, height, mark=0xC0, parts=3, extra=b""):
    quant = segment(0xDB, b"\0" + bytes([1] * 64))
    frame = struct.pack(">BHHB", 8, height, width, parts)
    for i in range(parts):
        frame += bytes([i + 1, 0x11, 0])
    tables = segment(0xC4, huffman(0x00, [0, 1]) + huffman(0x10, [0, 1]))
    return b"\xFF\xD8" + extra + quant + segment(mark, frame) + tables


def scan(parts=3, first=0, last=63, approx=0):
    body = bytes([parts]) + b"".join(bytes([i + 1, 0]) for i in range(parts))
    return segment(0xDA, body + bytes([first, last, approx]))


def jpegs():
    put("jpeg-claim.jpg", jpeg_head(49157, 27397) + scan() + bytes(300))
    put("jpeg-claim-largest.jpg", jpeg_head(65500, 65500) + scan() + bytes(300))
    put("jpeg-claim-grey.jpg", jpeg_head(65500, 65500, parts=1) + scan(1) + bytes(300))
    put("jpeg-claim-cmyk.jpg", jpeg_head(60000, 60000, parts=4) + scan(4) + bytes(300))
    put("jpeg-claim-progressive.jpg",
        jpeg_head(49157, 27397, 0xC2) + scan(3, 0, 0) + bytes(300))
    many = b"".join(scan(1, 1, 63) + b"\x3F" * 8 for _ in range(3000))
    put("jpeg-many-scans.jpg", jpeg_head(20000, 20000, 0xC2) + scan(3, 0, 0) + bytes(64) + many)
    put("jpeg-blank-honest.jpg", jpeg_head(16000, 16000) + scan() + bytes(4000 * 4000 * 3 // 2)
        + b"\xFF\xD9")
    icc = b"".join(segment(0xE2, b"ICC_PROFILE\0" + bytes([i, 255]) + bytes(65000))
                   for i in range(1, 256))
    put("jpeg-profile-16mb.jpg", jpeg_head(64, 64, extra=icc) + scan() + bytes(400) + b"\xFF\xD9")
    put("jpeg-many-markers.jpg",
        jpeg_head(64, 64, extra=segment(0xE1, b"Exif\0\0" + bytes(65000)) * 500) + scan()
        + bytes(400))
    put("jpeg-no-height.jpg", jpeg_head(40000, 0) + scan() + bytes(300))
    put("jpeg-restarts.jpg", jpeg_head(30000, 30000) + segment(0xDD, b"\0\1") + scan()
        + b"".join(b"\0" + bytes([0xFF, 0xD0 + i % 8]) for i in range(100000)))


# PNG ----------------------------------------------------------------------------------------------

def chunk(name, data):
    body = name + data
    return struct.pack(">I", len(data)) + body + struct.pack(">I", zlib.crc32(body))


def png(width, height, depth, color, data, before=b"", interlaced=0):
    head = struct.pack(">IIBBBBB", width, height, depth, color, 0, 0, interlaced)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", head) + before + chunk(b"IDAT", data)
            + chunk(b"IEND", b""))


def pngs():
    small = zlib.compress(bytes(64 * 65))
    put("png-claim.png", png(400000, 300000, 8, 2, b""))
    put("png-claim-largest.png", png(0x7FFFFFFF, 0x7FFFFFFF, 16, 6, small))
    put("png-blank-grey.png", png(30000, 30000, 8, 0, zeros(30000 * 30001)))
    put("png-blank-bits.png", png(60000, 60000, 1, 0, zeros(60000 * 7501)))
    put("png-blank-deep.png", png(12000, 12000, 16, 6, zeros(12000 * 96001)))
    put("png-blank-interlaced.png", png(20000, 20000, 8, 0, zeros(20000 * 20010), interlaced=1))
    put("png-profile-1gb.png",
        png(64, 64, 8, 0, small, chunk(b"iCCP", b"x\0\0" + zeros(1 << 30)[:900000])))
    put("png-profile-64mb.png",
        png(64, 64, 8, 0, small, chunk(b"iCCP", b"x\0\0" + zeros(64 << 20))))
    put("png-text-1gb.png", png(64, 64, 8, 0, small, chunk(b"zTXt", b"x\0\0" + zeros(1 << 30))))
    put("png-many-texts.png",
        png(64, 64, 8, 0, small, chunk(b"tEXt", b"x\0" + b"y" * 50) * 50000))
    put("png-long-chunk.png", png(64, 64, 8, 0, small)[:33] + struct.pack(">I", 0x7FFFFFFF)
        + b"tEXt", 3 << 30)
    put("png-transparent-sparse.png",
        png(64, 64, 16, 0, small, chunk(b"tRNS", b"\0\1")), 40 << 30)


# Others of the toolkit ----------------------------------------------------------------------------

def gif(width, height, data, frames=1):
    frame = b"," + struct.pack("<HHHHB", 0, 0, width, height, 0) + b"\2" + data + b"\0"
    return (b"GIF89a" + struct.pack("<HHBBB", width, height, 0x80, 0, 0) + b"\0\0\0\xFF\xFF\xFF"
            + frame * frames + b";")


def toolkit_kinds():
    put("gif-claim.gif", gif(65535, 65535, b"\2\x44\1"))
    put("gif-claim-25000.gif", gif(25000, 25000, b"\2\x44\1"))
    put("gif-many-frames.gif", gif(2000, 2000, b"\2\x44\1", 100000))
    head = struct.pack("<2sIHHI", b"BM", 54, 0, 0, 54)
    put("bmp-claim.bmp", head + struct.pack("<IiiHHIIiiII", 40, 0x7FFFFFFF, 0x7FFFFFFF, 1, 24, 0, 0,
                                            0, 0, 0, 0) + bytes(64))
    put("bmp-claim-40000.bmp", head + struct.pack("<IiiHHIIiiII", 40, 40000, 40000, 1, 32, 0, 0, 0, 0,
                                                  0, 0) + bytes(64))
    put("bmp-packed.bmp", head + struct.pack("<IiiHHIIiiII", 40, 30000, 30000, 1, 8, 1, 0, 0, 0, 1, 0)
        + bytes(4) + b"\xFF\0" * 40000)
    put("bmp-masks.bmp", head + struct.pack("<IiiHHIIiiII", 40, 40000, 40000, 1, 32, 3, 0, 0, 0, 0, 0)
        + struct.pack("<III", 0xFF, 0xFF00, 0xFF0000) + bytes(64))
    put("bmp-array-sparse.bmp", struct.pack("<2sIIHH", b"BA", 14, 0, 0, 0) + head + bytes(64), 40 << 30)
    icon = struct.pack("<HHH", 0, 1, 1) + struct.pack("<BBBBHHII", 0, 0, 0, 0, 1, 32, 2000, 22)
    put("ico-png-inside.ico", icon + png(400000, 300000, 8, 2, b""))
    put("ico-many.ico", struct.pack("<HHH", 0, 1, 65535)
        + struct.pack("<BBBBHHII", 0, 0, 0, 0, 1, 32, 0x7FFFFFFF, 22) * 65535)
    put("ppm-claim.ppm", b"P6\n100000 100000\n255\n" + bytes(64))
    put("ppm-claim-20000.ppm", b"P6\n20000 20000\n255\n" + bytes(64))
    put("pbm-words.pbm", b"P1\n30000 30000\n" + b"1 " * 1000)
    put("pgm-comment.pgm", b"P5\n#" + b"x" * (64 << 20) + b"\n10 10\n255\n" + bytes(100))
    put("xpm-claim.xpm", b'/* XPM */\nstatic char*x[]={"60000 60000 1 1",\n"a c #000000",\n"a"};\n')
    put("xpm-colours.xpm", b'/* XPM */\nstatic char*x[]={"1 1 2000000000 8",\n"a"};\n')
    data = b"\x2F" + struct.pack("<I", 16382 | 16382 << 14)
    webp = b"VP8L" + struct.pack("<I", len(data) + 20) + data + bytes(20)
    put("webp-claim.webp", b"RIFF" + struct.pack("<I", len(webp) + 4) + b"WEBP" + webp)
    ffmpeg("webp-blank.webp", ["-f", "lavfi", "-i", "color=black:s=16000x16000", "-frames:v", "1",
                               "-lossless", "1", "-compression_level", "0"])


# TIFF and raw -------------------------------------------------------------------------------------

def tiff(tags, data=b"", big=b"II*\0"):
    entries = b"".join(struct.pack("<HHII", tag, kind, count, value)
                       for tag, kind, count, value in sorted(tags))
    return (big + struct.pack("<I", 8) + struct.pack("<H", len(tags)) + entries + bytes(4) + data)


def tiffs():
    def plain(width, height, packing, rows, place=300, count=100, bits=8, more=()):
        return [(256, 4, 1, width), (257, 4, 1, height), (258, 3, 1, bits), (259, 3, 1, packing),
                (262, 3, 1, 1), (273, 4, 1, place), (277, 3, 1, 1), (278, 4, 1, rows),
                (279, 4, 1, count)] + list(more)

    put("tiff-claim.tif", tiff(plain(0xFFFFFFF0, 0xFFFFFFF0, 1, 0xFFFFFFF0)))
    put("tiff-claim-30000.tif", tiff(plain(30000, 30000, 1, 30000)))
    put("tiff-claim-one-row-strips.tif", tiff(plain(60000, 60000, 1, 1)))
    blank = zeros(25000 * 25000)
    body = tiff(plain(25000, 25000, 8, 25000, 200, len(blank)))
    put("tiff-blank-deflate.tif", body + bytes(200 - len(body)) + blank)
    body = tiff(plain(60000, 60000, 4, 60000, 200, 60000, 1))
    put("tiff-blank-fax.tif", body + bytes(200 - len(body)) + b"\xFF" * 60000)
    tiles = [(256, 4, 1, 100), (257, 4, 1, 100), (258, 3, 1, 8), (259, 3, 1, 1), (262, 3, 1, 1),
             (277, 3, 1, 1), (322, 4, 1, 0x7FFFFFF0), (323, 4, 1, 0x7FFFFFF0), (324, 4, 1, 8),
             (325, 4, 1, 8)]
    put("tiff-huge-tile.tif", tiff(tiles))
    put("tiff-many-strips.tif", tiff(plain(100, 100, 1, 1)[:5] + [
        (273, 4, 0x3FFFFFFF, 8), (277, 3, 1, 1), (278, 4, 1, 1), (279, 4, 0x3FFFFFFF, 8)]))
    put("tiff-profile-4gb.tif", tiff(plain(16, 16, 1, 16, 8, 256, 8, [(34675, 7, 0xFFFFFFF0, 8)])))
    loop = tiff(plain(16, 16, 1, 16))[:-4] + struct.pack("<I", 8)
    put("tiff-loop.tif", loop)
    put("tiff-many-samples.tif", tiff([(t, k, c, 65535 if t == 277 else v)
                                       for t, k, c, v in plain(5000, 5000, 1, 5000)]))
    dng = plain(60000, 60000, 1, 60000, 400, 100, 16, [(50706, 1, 4, 0x401),
                                                       (33421, 3, 2, 0x20002),
                                                       (33422, 1, 4, 0x2010100)])
    dng = [(t, k, c, 32803 if t == 262 else v) for t, k, c, v in dng]
    put("raw-claim.dng", tiff(dng) + bytes(200))
    inner = jpeg_head(49157, 27397) + scan() + bytes(300)
    shot = tiff([(254, 4, 1, 1), (256, 4, 1, 160), (257, 4, 1, 120), (259, 3, 1, 6),
                 (273, 4, 1, 400), (279, 4, 1, len(inner)), (330, 4, 1, 8),
                 (513, 4, 1, 400), (514, 4, 1, len(inner)), (50706, 1, 4, 0x401)])
    put("raw-jpeg-claim.dng", shot + bytes(400 - len(shot)) + inner)
    put("raw-cr2-sparse.cr2", b"II*\0\x10\0\0\0CR\2\0" + bytes(4) + tiff(dng)[8:], 20 << 30)


# HEIF, AVIF, JPEG XL ------------------------------------------------------------------------------

def telephones():
    avif = ffmpeg("avif-claim.avif", ["-f", "lavfi", "-i", "color=red:s=64x64", "-frames:v", "1",
                                      "-pix_fmt", "yuv420p"])
    if avif:
        at = avif.find(b"ispe") + 8
        put("avif-claim.avif", avif[:at] + struct.pack(">II", 60000, 60000) + avif[at + 8:])
        place = avif.find(b"iloc")
        put("avif-damaged-places.avif", avif[:place + 12] + b"\xFF" * 12 + avif[place + 24:])
    ffmpeg("avif-blank.avif", ["-f", "lavfi", "-i", "color=black:s=8192x4320", "-frames:v", "1",
                               "-pix_fmt", "yuv420p"])
    ftyp = struct.pack(">I4s4sI4s", 20, b"ftyp", b"heic", 0, b"heic")
    put("heif-many-boxes.heic", ftyp + struct.pack(">I4s", 8, b"free") * 2000000)
    put("heif-deep-boxes.heic",
        ftyp + b"".join(struct.pack(">I4sI", 0x7FFFFFFF, b"meta", 0) for _ in range(20000)))
    ffmpeg("jxl-blank.jxl", ["-f", "lavfi", "-i", "color=black:s=8000x8000", "-frames:v", "1",
                             "-effort", "1"])
    put("jxl-cut.jxl", b"\xFF\x0A\xFF\xFF\xFF\xFF\xFF\xFF" + bytes(64))


# Telescopes ---------------------------------------------------------------------------------------

def fits_head(*cards):
    text = b"".join(card.ljust(80).encode() for card in cards + ("END",))
    return text + b" " * (-len(text) % 2880)


def picture_cards(width, height, bits=16, axes=2, more=()):
    cards = ["SIMPLE  =                    T", f"BITPIX  = {bits:20}", f"NAXIS   = {axes:20}",
             f"NAXIS1  = {width:20}", f"NAXIS2  = {height:20}"]
    return cards + list(more)


def telescopes():
    put("fits-claim.fits", fits_head(*picture_cards(100000, 100000)))
    put("fits-claim-8000.fits", fits_head(*picture_cards(8000, 8000, -64)) + bytes(2880))
    put("fits-claim-colours.fits",
        fits_head(*picture_cards(30000, 30000, -32, 3, ["NAXIS3  =                    3"])))
    put("fits-many-axes.fits", fits_head(*picture_cards(10, 10, 8, 999)))
    put("fits-many-cards.fits", fits_head(*picture_cards(10, 10, 8, 2, ["COMMENT x"] * 400000)))
    put("fits-sparse.fits", fits_head(*picture_cards(20000, 20000)), 2880 + 800000000)
    whole = fits_head(*picture_cards(40000, 40000, 8))
    packer = zlib.compressobj(9, zlib.DEFLATED, 31)
    packed = packer.compress(whole) + b"".join(packer.compress(bytes(1 << 20)) for _ in range(1526))
    put("fits-gzip-16gb.fits.gz", packed + packer.flush())
    put("fits-gzip-nothing.fits.gz", gzip.compress(whole))
    put("xisf-long-header.xisf", b"XISF0100" + struct.pack("<II", 0xFFFFFFF0, 0) + bytes(100))
    put("xisf-sparse-header.xisf", b"XISF0100" + struct.pack("<II", 60 << 20, 0), 70 << 20)

    def xisf(geometry, attributes, data=b""):
        xml = ('<?xml version="1.0"?><xisf version="1.0"><Image geometry="%s" sampleFormat="UInt16" '
               'colorSpace="Gray" %s/></xisf>' % (geometry, attributes)).encode()
        head = b"XISF0100" + struct.pack("<II", len(xml), 0) + xml
        return head + bytes(4096 - len(head)) + data

    put("xisf-claim.xisf", xisf("100000:100000:1", 'location="attachment:4096:20000000000"'))
    blank = zeros(20000 * 20000 * 2)
    put("xisf-blank.xisf", xisf("20000:20000:1", 'location="attachment:4096:%d" compression="zlib:%d"'
                                % (len(blank), 20000 * 20000 * 2), blank))
    put("xisf-deep-words.xisf", b"XISF0100" + struct.pack("<II", 3000000, 0) + b"<a>" * 1000000)


# Clips --------------------------------------------------------------------------------------------

def ser(width, height, bits, color, frames):
    return (b"LUCAM-RECORDER" + struct.pack("<IIIIIII", 0, color, 0, width, height, bits, frames)
            + bytes(120 + 16))


def clips():
    put("ser-claim.ser", ser(65535, 65535, 16, 100, 0x7FFFFFFF))
    put("ser-frames-sparse.ser", ser(1, 1, 8, 0, 0x6FFFFFFF), 178 + 9 * 0x6FFFFFFF)
    put("ser-large-frame-sparse.ser", ser(10000, 10000, 16, 100, 2), 178 + 1200000000)
    clip = ffmpeg("avi-claim.avi", ["-f", "lavfi", "-i", "testsrc=s=64x64:d=1", "-c:v", "mjpeg"])
    if clip:
        for tag in (b"avih", b"strf"):
            at = clip.find(tag) + (40 if tag == b"avih" else 12)
            clip = clip[:at] + struct.pack("<II", 65500, 65500) + clip[at + 8:]
        put("avi-claim.avi", clip)
        put("avi-long-index.avi", clip + b"idx1" + struct.pack("<I", 0x7FFFFFF0), 3 << 30)
    clip = ffmpeg("mp4-many-samples.mp4", ["-f", "lavfi", "-i", "testsrc=s=64x64:d=1", "-c:v", "mpeg4"])
    if clip:
        at = clip.find(b"stsz") + 8
        put("mp4-many-samples.mp4", clip[:at] + struct.pack(">II", 1, 0x7FFFFFFF) + clip[at + 8:])
    put("m3u-list.avi", b"#EXTM3U\n#EXTINF:1,\n/etc/hostname\n")


# What is no picture -------------------------------------------------------------------------------

def strangers():
    laughs = "".join('<g id="a%d">%s</g>' % (i, '<use href="#a%d"/>' % (i - 1) * 10)
                     for i in range(1, 10))
    svg = ('<svg xmlns="http://www.w3.org/2000/svg" width="99999" height="99999"><defs><rect id="a0" '
           'width="1" height="1"/>%s</defs><use href="#a9"/></svg>' % laughs)
    put("svg-laughs.jpg", svg.encode())
    put("mng-claim.jpg", b"\x8AMNG\r\n\x1a\n" + chunk(b"MHDR", struct.pack(">7I", 60000, 60000, *[1] * 5)))
    put("eps-loop.jpg", b"%!PS-Adobe-3.0 EPSF-3.0\n%%BoundingBox: 0 0 9 9\n{} loop\n")
    put("pdf-claim.jpg", b"%PDF-1.4\n1 0 obj<</Type/Page/MediaBox[0 0 99999 99999]>>endobj\n")
    put("zeros-sparse.jpg", b"", 100 << 30)
    os.mkfifo(os.path.join(FOLDER, "pipe.jpg"))
    os.mkfifo(os.path.join(FOLDER, "pipe.ser"))
    os.symlink("/dev/zero", os.path.join(FOLDER, "device.jpg"))
    os.symlink(os.path.join(FOLDER, "loop.jpg"), os.path.join(FOLDER, "loop.jpg"))
    listening = socket.socket(socket.AF_UNIX)
    os.chdir(FOLDER)
    listening.bind("socket.jpg")


os.makedirs(FOLDER, exist_ok=True)
for make in (jpegs, pngs, toolkit_kinds, tiffs, telephones, telescopes, clips, strangers):
    make()
