#!/usr/bin/env python3
"""Draws the pictures of a night for the manual's screenshots: make-pictures.py FOLDER.

Scenes are drawn as SVG and rendered by rsvg-convert; ImageMagick makes them JPEG, and the camera
data is written here. The same every time.
"""

import datetime
import os
import pathlib
import random
import struct
import subprocess
import sys

WIDTH, HEIGHT = 1800, 1200
NIGHT = datetime.datetime(2026, 11, 14, 18, 5, 0)


def gradient(name, stops, kind="linear"):
    way = 'x1="0" y1="0" x2="0" y2="1"' if kind == "linear" else ""
    rows = "".join(
        f'<stop offset="{at}" stop-color="{colour}" stop-opacity="{opacity}"/>' for at, colour, opacity in stops
    )
    return f'<{kind}Gradient id="{name}" {way}>{rows}</{kind}Gradient>'


def stars(seed, count, trail=(0, 0), shift=(0, 0), height=HEIGHT):
    """The same seed gives the same sky; a trail is what a shaken mount makes of it."""
    chance = random.Random(seed)
    rows = []
    for _ in range(count):
        x = chance.uniform(-60, WIDTH + 60) + shift[0]
        y = chance.uniform(-60, height + 60) + shift[1]
        size = 0.8 + 4.2 * chance.random() ** 7
        colour = chance.choice(["#fff", "#fff", "#dfe8ff", "#ffe9cf", "#ffd9b0"])
        rows.append(
            f'<path d="M{x:.1f} {y:.1f}l{trail[0] + 0.01} {trail[1]}" stroke="{colour}" '
            f'stroke-width="{2 * size:.1f}" stroke-linecap="round"/>'
        )
    return "".join(rows)


def ridge(seed, base, rise, colour):
    chance = random.Random(seed)
    points = [(0, base), (WIDTH, base + chance.uniform(-rise, rise) / 2)]
    for _ in range(8):
        halves = []
        for (x1, y1), (x2, y2) in zip(points, points[1:]):
            halves += [(x1, y1), ((x1 + x2) / 2, (y1 + y2) / 2 + chance.uniform(-rise, rise))]
        points = halves + [points[-1]]
        rise *= 0.5
    outline = " ".join(f"{x:.0f},{y:.0f}" for x, y in points)
    return f'<polygon points="0,{HEIGHT} {outline} {WIDTH},{HEIGHT}" fill="{colour}"/>'


def landscape(sky, seed, near="#0b1018", far="#1f2a3c", more=""):
    return (
        f"<defs>{gradient('sky', sky)}</defs>"
        f'<rect width="{WIDTH}" height="{HEIGHT}" fill="url(#sky)"/>{more}'
        + ridge(seed, 850, 170, far)
        + ridge(seed + 1, 1010, 110, near)
    )


def galaxy(trail=(0, 0), shift=(0, 0), light=1.0):
    core = [(0, "#fff4dc", light), (0.12, "#e8cfa6", 0.75 * light), (0.45, "#6f7fa8", 0.35 * light), (1, "#30406a", 0)]
    x, y = 900 + shift[0], 600 + shift[1]
    return (
        f"<defs>{gradient('core', core, 'radial')}</defs>"
        f'<rect width="{WIDTH}" height="{HEIGHT}" fill="#070a12"/>'
        f'<g transform="translate({x} {y}) rotate(-32)"><circle r="760" transform="scale(1 0.32)" fill="url(#core)"/>'
        f'<path d="M-520 70Q0 175 540 62" stroke="#070a12" stroke-width="26" fill="none" opacity="0.35"/></g>'
        f'<circle cx="{x + 120}" cy="{y + 250}" r="42" fill="url(#core)"/>' + stars(31, 330, trail, shift)
    )


def nebula(shift=(0, 0)):
    x, y = 860 + shift[0], 620 + shift[1]
    cloud = [(0, "#ffe6ee", 0.95), (0.2, "#e58aa6", 0.7), (0.55, "#8a3f66", 0.4), (1, "#301a40", 0)]
    blue = [(0, "#bcd4ff", 0.6), (1, "#20305a", 0)]
    return (
        f"<defs>{gradient('cloud', cloud, 'radial')}{gradient('blue', blue, 'radial')}</defs>"
        f'<rect width="{WIDTH}" height="{HEIGHT}" fill="#080810"/>'
        f'<ellipse cx="{x - 60}" cy="{y + 60}" rx="620" ry="430" fill="url(#cloud)" opacity="0.8"/>'
        f'<ellipse cx="{x}" cy="{y}" rx="330" ry="250" fill="url(#cloud)"/>'
        f'<circle cx="{x - 130}" cy="{y - 360}" r="170" fill="url(#blue)"/>' + stars(42, 260, shift=shift)
    )


def trails():
    chance = random.Random(9)
    arcs = []
    for _ in range(210):
        radius = 40 + 1500 * chance.random() ** 0.8
        begin = chance.uniform(0, 360)
        colour = chance.choice(["#fff", "#dfe8ff", "#ffe3c0"])
        length = 6.283 * radius
        arcs.append(
            f'<circle cx="1150" cy="520" r="{radius:.0f}" fill="none" stroke="{colour}" stroke-width="2.4" '
            f'opacity="{chance.uniform(0.3, 0.95):.2f}" stroke-dasharray="{length * 0.11:.0f} {length:.0f}" '
            f'transform="rotate({begin:.0f} 1150 520)"/>'
        )
    return landscape([(0, "#0c1a38", 1), (1, "#31456b", 1)], 21, more="".join(arcs))


def moon(x=900, y=600, radius=380):
    chance = random.Random(5)
    face = [(0, "#f4f1e6", 1), (0.8, "#d8d3c4", 1), (1, "#b0aa9a", 1)]
    craters = []
    for _ in range(60):
        size = 4 + 40 * chance.random() ** 3
        along, turn = radius * chance.random() ** 0.5 - size, chance.uniform(0, 360)
        craters.append(
            f'<circle cx="{along:.0f}" r="{size:.0f}" transform="rotate({turn:.0f})" fill="#b9b3a3" '
            f'stroke="#f7f5ee" stroke-width="2"/>'
        )
    seas = '<ellipse cx="-120" cy="-110" rx="150" ry="110" fill="#9d988b"/><ellipse cx="90" cy="-30" rx="110" ry="90" fill="#a5a092"/>'
    return (
        f"<defs>{gradient('face', face, 'radial')}</defs><rect width='{WIDTH}' height='{HEIGHT}' fill='#05060a'/>"
        f'<g transform="translate({x} {y})"><circle r="{radius}" fill="url(#face)"/>{seas}{"".join(craters)}'
        f'<path d="M0 {-radius - 4}A{radius + 4} {radius + 4} 0 0 0 0 {radius + 4}A{radius * 0.45:.0f} {radius + 4} 0 0 1 0 {-radius - 4}" '
        f'fill="#05060a"/></g>'
    )


DUSK = [(0, "#1d3566", 1), (0.45, "#8b6f9a", 1), (0.7, "#f0a56b", 1), (1, "#ffd9a0", 1)]
EVENING = [(0, "#0e1c3f", 1), (0.55, "#3f4f7c", 1), (0.75, "#b9825f", 1), (1, "#d99a66", 1)]
DEEP = [(0, "#0a1226", 1), (1, "#2b3d5e", 1)]
BAND = (
    "<defs>"
    + gradient("band", [(0, "#e4dccf", 0.5), (0.35, "#98a3c8", 0.35), (1, "#98a3c8", 0)], "radial")
    + '</defs><ellipse cx="1050" cy="430" rx="1250" ry="210" transform="rotate(-28 1050 430)" fill="url(#band)"/>'
    + stars(8, 500, height=900)
)

# Name, scene, minutes after dusk, exposure, f-number, ISO, focal length, orientation of the camera.
FRAMES = [
    ("Ridge_0401.jpg", lambda: landscape(DUSK, 3, "#1a1626", "#463a5c"), 0, (1, 60), 8, 200, 24, 1),
    ("Ridge_0402.jpg", lambda: landscape(EVENING, 3, more=stars(2, 40, height=500)), 28, (4, 1), 4, 800, 24, 1),
    ("Ridge_0403.jpg", lambda: landscape(DEEP, 3, more=BAND + stars(2, 420)), 95, (20, 1), 2.8, 3200, 24, 1),
    ("Trails_0410.jpg", trails, 130, (1500, 1), 4, 400, 24, 1),
    ("M31_0421.jpg", lambda: galaxy(), 170, (180, 1), 5, 1600, 400, 1),
    ("M31_0422.jpg", lambda: galaxy(shift=(6, -4)), 174, (180, 1), 5, 1600, 400, 1),
    ("M31_0423.jpg", lambda: galaxy(trail=(26, 9), shift=(9, -6)), 178, (180, 1), 5, 1600, 400, 1),
    ("M31_0424.jpg", lambda: galaxy(shift=(14, -9)), 182, (180, 1), 5, 1600, 400, 1),
    ("M31_0425.jpg", lambda: galaxy(shift=(18, -12), light=0.55), 186, (180, 1), 5, 1600, 400, 1),
    ("M42_0431.jpg", lambda: nebula(), 240, (120, 1), 5, 1600, 400, 1),
    ("M42_0432.jpg", lambda: nebula(shift=(-8, 5)), 243, (120, 1), 5, 1600, 400, 1),
    ("Moon_0440.jpg", lambda: moon(), 300, (1, 250), 8, 100, 800, 1),
]


def exif(when, exposure, aperture, iso, focal, orientation):
    """Big-endian camera data: a first directory, the Exif directory, then what fits into neither."""
    data_from = 400
    blocks = bytearray()

    def put(raw):
        at = data_from + len(blocks)
        blocks.extend(raw + b"\0" * (len(raw) % 2))
        return struct.pack(">I", at)

    def text(tag, value):
        raw = value.encode() + b"\0"
        return struct.pack(">HHI", tag, 2, len(raw)) + put(raw)

    def short(tag, value):
        return struct.pack(">HHIHH", tag, 3, 1, value, 0)

    def ratio(tag, over, under):
        return struct.pack(">HHI", tag, 5, 1) + put(struct.pack(">II", over, under))

    date = when.strftime("%Y:%m:%d %H:%M:%S")
    first = [text(0x10F, "Example"), text(0x110, "Example Camera 24"), short(0x112, orientation), text(0x132, date)]
    inner = [
        ratio(0x829A, *exposure), ratio(0x829D, int(aperture * 10), 10), short(0x8822, 1), short(0x8827, iso),
        text(0x9003, date), text(0x9004, date), short(0x9207, 5), short(0x9209, 0), ratio(0x920A, focal, 1),
        struct.pack(">HHII", 0xA002, 4, 1, WIDTH), struct.pack(">HHII", 0xA003, 4, 1, HEIGHT),
    ]  # fmt: skip
    inner_at = 8 + 2 + 12 * (len(first) + 1) + 4
    first.append(struct.pack(">HHII", 0x8769, 4, 1, inner_at))
    raw = b"MM\0*" + struct.pack(">I", 8)
    for rows in (first, inner):
        raw += struct.pack(">H", len(rows)) + b"".join(rows) + b"\0\0\0\0"
    raw = raw.ljust(data_from, b"\0") + bytes(blocks)
    return b"\xff\xe1" + struct.pack(">H", len(raw) + 8) + b"Exif\0\0" + raw


def set_time(path, when):
    seconds = when.replace(tzinfo=datetime.timezone.utc).timestamp()
    os.utime(path, (seconds, seconds))


def write_frame(folder, name, scene, minutes, exposure, aperture, iso, focal, orientation):
    svg = f'<svg xmlns="http://www.w3.org/2000/svg" width="{WIDTH}" height="{HEIGHT}">{scene()}</svg>'
    drawn = subprocess.run(["rsvg-convert"], input=svg.encode(), stdout=subprocess.PIPE, check=True).stdout
    jpeg = subprocess.run(
        ["convert", "PNG:-", "-strip", "-quality", "92", "JPEG:-"], input=drawn, stdout=subprocess.PIPE, check=True
    ).stdout
    when = NIGHT + datetime.timedelta(minutes=minutes)
    segment = exif(when, exposure, aperture, iso, focal, orientation)
    (folder / name).write_bytes(jpeg[:2] + segment + jpeg[2:])
    set_time(folder / name, when)


def write_clip(folder):
    """The moon wanders and trembles as it does through a telescope."""
    for number in range(24):
        sway = random.Random(number)
        scene = moon(900 + number * 9, 600 + sway.uniform(-14, 14))
        svg = f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {WIDTH} {HEIGHT}">{scene}</svg>'
        subprocess.run(
            ["rsvg-convert", "-w", "720", "-h", "480", "-o", folder / f"clip{number:02}.png"], input=svg.encode(), check=True
        )
    subprocess.run(
        ["ffmpeg", "-loglevel", "error", "-y", "-framerate", "12", "-i", folder / "clip%02d.png", "-c:v", "mjpeg",
         "-q:v", "3", folder / "Moon_0441.avi"], check=True
    )  # fmt: skip
    for frame in folder.glob("clip*.png"):
        frame.unlink()
    set_time(folder / "Moon_0441.avi", NIGHT + datetime.timedelta(minutes=301))


def render(scene, width, height):
    """Red, green and blue of every pixel of a scene, drawn at another size."""
    svg = f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {WIDTH} {HEIGHT}">{scene}</svg>'
    drawn = subprocess.run(
        ["rsvg-convert", "-w", str(width), "-h", str(height)], input=svg.encode(), stdout=subprocess.PIPE, check=True
    ).stdout
    return subprocess.run(
        ["convert", "PNG:-", "-depth", "8", "RGB:-"], input=drawn, stdout=subprocess.PIPE, check=True
    ).stdout


def write_fits(folder, number):
    """What a cooled camera gives: 16 bits, a sky just above black, noise, and little light above it."""
    width, height = 900, 600
    chance = random.Random(number)
    light = render(galaxy(shift=(number * 3, -number * 2)), width, height)[1::3]
    when = NIGHT + datetime.timedelta(minutes=190 + 4 * number)
    words = {
        "SIMPLE": "T", "BITPIX": 16, "NAXIS": 2, "NAXIS1": width, "NAXIS2": height, "BZERO": 32768, "BSCALE": 1,
        "ROWORDER": "'TOP-DOWN'", "OBJECT": "'M 31'", "DATE-OBS": f"'{when.isoformat()}'", "EXPTIME": 180.0,
        "GAIN": 100, "CCD-TEMP": -10.0, "FILTER": "'L'", "TELESCOP": "'80 mm f/6'", "INSTRUME": "'Example Cam 9'",
    }  # fmt: skip
    cards = [f"{name:8}= " + (value if str(value)[0] == "'" else f"{value:>20}") for name, value in words.items()]
    header = "".join(card.ljust(80) for card in [*cards, "END"]).ljust(2880)
    samples = struct.pack(
        f">{width * height}h",
        *(min(65535, int(1180 + chance.gauss(0, 34) + max(0, each - 7) ** 2 / 9)) - 32768 for each in light),
    )
    path = folder / f"M31_L_{number + 451:04}.fits"
    path.write_bytes(header.encode() + samples + bytes(-len(samples) % 2880))
    set_time(path, when)


def jupiter(turn):
    """Bands behind a disc, a spot that wanders, and the air before it."""
    air = random.Random(int(turn * 1000))
    x, y = 900 + air.uniform(-9, 9), 600 + air.uniform(-9, 9)
    bands = "".join(
        f'<rect x="-400" y="{top}" width="800" height="{high}" fill="{colour}"/>'
        for top, high, colour in [(-400, 800, "#d9c7a6"), (-260, 70, "#b99a74"), (-120, 90, "#9c6f4c"),
                                  (-10, 60, "#e9dcc2"), (80, 95, "#a67c58"), (230, 60, "#bfa580")]
    )  # fmt: skip
    shade = [(0, "#000", 0), (0.75, "#000", 0.05), (1, "#000", 0.75)]
    moves = f"translate({x:.1f} {y:.1f})"
    return (
        f'<defs>{gradient("shade", shade, "radial")}<clipPath id="disc"><ellipse rx="370" ry="346"/></clipPath>'
        f'<filter id="air"><feGaussianBlur stdDeviation="{air.uniform(3, 8):.1f}"/></filter></defs>'
        f'<rect width="{WIDTH}" height="{HEIGHT}" fill="#050507"/><g filter="url(#air)"><g transform="{moves}">'
        f'<g clip-path="url(#disc)">{bands}<ellipse cx="{turn:.1f}" cy="175" rx="85" ry="46" fill="#c0603c"/>'
        f'<circle r="372" fill="url(#shade)"/></g></g><circle cx="{1520 - turn / 3:.1f}" cy="620" r="16" fill="#eee"/></g>'
    )


def write_ser(folder):
    """A clip as cameras for planets write it, each frame with its time behind the frames."""
    width, height, frames, depth, colour = 480, 320, 30, 8, 100
    pixels = b"".join(render(jupiter(-150 + 7 * number), width, height) for number in range(frames))
    when = NIGHT + datetime.timedelta(minutes=305)
    ticks = int((when - datetime.datetime(1, 1, 1)).total_seconds()) * 10_000_000
    names = b"".join(each.ljust(40) for each in (b"", b"Example Cam 9", b"80 mm f/6"))
    header = b"LUCAM-RECORDER" + struct.pack("<7i", 0, colour, 0, width, height, depth, frames) + names
    header += struct.pack("<2q", ticks, ticks)
    times = struct.pack(f"<{frames}q", *(ticks + number * 333_333 for number in range(frames)))
    (folder / "Jupiter_0443.ser").write_bytes(header + pixels + times)
    set_time(folder / "Jupiter_0443.ser", when)


NOTES = {
    "M31_0421.enf": "M 31, first of the series.\r\nGuiding good, seeing fair.\r\nTelescope: 80 mm f/6 apochromatic refractor",
    "M31_0423.enf": "Gust of wind, stars drawn out.",
    "M42_0431.enf": "M 42, core not burnt out.\r\n18 frames of 2 minutes.",
    "Ridge_0401.enf": "The ridge after sunset, clear to the horizon.",
}


def main():
    folder = pathlib.Path(sys.argv[1])
    pictures, notes = folder / "2026-11-14", folder / "Notes"
    for each in (pictures, notes, folder / "Best"):
        each.mkdir(parents=True, exist_ok=True)
    for frame in FRAMES:
        write_frame(pictures, *frame)
    write_clip(pictures)
    write_ser(pictures)
    for number in range(5):
        write_fits(pictures, number)
    for name, note in NOTES.items():
        (notes / name).write_bytes(note.encode())
    log = "18:05 Set up on the ridge, 4 degrees, calm\r\n20:55 M 31, 5 frames of 3 minutes\r\n21:03 Gust of wind in frame 3\r\n22:05 M 42\r\n23:05 Moon, then closed\r\n"
    (pictures / "Night.log").write_bytes(log.encode())
    set_time(pictures / "Night.log", NIGHT + datetime.timedelta(minutes=310))


main()
