"""Writes the pictures shown in place of a file that has no preview, as SVG of one family."""

import math
import sys

INK, ACCENT, DIM = "#ccd3dc", "#86b8da", "#6d7783"
FRAME = """<svg xmlns="http://www.w3.org/2000/svg" width="640" height="427" viewBox="0 0 640 427">
<defs><radialGradient id="back" cx="0.5" cy="0.44" r="0.75">
<stop offset="0" stop-color="#505966"/><stop offset="1" stop-color="#39404a"/></radialGradient></defs>
<rect width="640" height="427" fill="url(#back)"/>
<rect x="0.5" y="0.5" width="639" height="426" fill="none" stroke="#646d79"/>
<g transform="translate(320 178)" fill="none" stroke="{ink}" stroke-width="5" stroke-linecap="round" stroke-linejoin="round">
{symbol}
</g>
<text x="320" y="356" text-anchor="middle" font-family="DejaVu Sans" font-size="25" fill="{ink}">{words}</text>
</svg>
"""


def spiral(start, width):
    """One arm of a galaxy seen from the side, thinning outwards."""
    points = []
    for i in range(61):
        turn = 4.6 * i / 60
        r = 20 * math.exp(0.36 * turn)
        points.append((r * math.cos(turn + start), r * 0.52 * math.sin(turn + start)))
    pieces = []
    for i in range(0, 60, 3):
        text = " ".join(f"{x:.1f},{y:.1f}" for x, y in points[i : i + 4])
        pieces.append(f'<polyline points="{text}" stroke-width="{width * (1 - i / 85):.2f}"/>')
    return "".join(pieces)


def star(x, y, r):
    q = r * 0.2
    return (
        f'<path d="M{x} {y - r}Q{x + q} {y - q} {x + r} {y}Q{x + q} {y + q} {x} {y + r}'
        f'Q{x - q} {y + q} {x - r} {y}Q{x - q} {y - q} {x} {y - r}z" fill="{INK}" stroke="none"/>'
    )


def galaxy():
    corner = "M-118 -66V-88H-96M96 -88H118V-66M118 66V88H96M-96 88H-118V66"
    arms = spiral(0, 10) + spiral(math.pi, 10)
    core = f'<ellipse rx="21" ry="13" fill="{INK}" stroke="none"/>'
    stars = star(-78, -50, 11) + star(86, 56, 8) + star(-48, 70, 6) + star(34, -68, 6)
    return (
        f'<path d="{corner}" stroke="{DIM}"/>'
        f'<g transform="rotate(-24)"><g stroke="{ACCENT}">{arms}</g>{core}</g>{stars}'
    )


def mosaic():
    """The colour filters on a sensor, red and green over green and blue."""
    colours = (("#b9706c", "#7ba884"), ("#7ba884", "#6b8fc4"))
    cells = []
    for row in range(4):
        for col in range(4):
            x, y = col * 42 - 82, row * 42 - 82
            cells.append(f'<rect x="{x}" y="{y}" width="38" height="38" rx="5" fill="{colours[row % 2][col % 2]}"/>')
    return f'<g stroke="none">{"".join(cells)}</g><rect x="-94" y="-94" width="188" height="188" rx="12"/>'


def film():
    holes = "".join(
        f'<rect x="{x}" y="{y}" width="16" height="20" rx="4" fill="{INK}" stroke="none"/>'
        for x in (-111, 95)
        for y in (-76, -43, -10, 23, 56)
    )
    return (
        '<rect x="-122" y="-90" width="244" height="180" rx="10"/>'
        f'<path d="M-84 -90V90M84 -90V90"/>{holes}'
        f'<path d="M-26 -40V40L42 0z" fill="{ACCENT}" stroke="{ACCENT}" stroke-width="8"/>'
    )


def torn():
    """A framed picture torn in two."""
    edge = ((1, -82), (-6, -62), (20, -30), (-10, 18), (12, 52), (5, 82))
    tear = " ".join(f"{x},{y}" for x, y in edge)
    picture = (
        '<rect x="-112" y="-82" width="224" height="164" rx="10"/>'
        f'<path d="M-109 62L-52 -6L-12 40L34 -22L109 60" stroke="{ACCENT}"/>'
        f'<circle cx="62" cy="-40" r="14" fill="{ACCENT}" stroke="none"/>'
    )
    halves = []
    for side, away, turn in ((-160, -14, -3), (160, 14, 3)):
        halves.append(
            f'<clipPath id="c{side}"><polygon points="{side},-120 1,-120 {tear} 5,120 {side},120"/></clipPath>'
            f'<g transform="translate({away} 0) rotate({turn})"><g clip-path="url(#c{side})">{picture}</g>'
            f'<polyline points="{tear}"/></g>'
        )
    return "".join(halves)


PICTURES = {
    "FITS_image": (galaxy, "FITS picture, no preview"),
    "Canon_raw": (mosaic, "Raw picture, no preview"),
    "MP4": (film, "Video clip"),
    "No_image": (torn, "This picture could not be read"),
}


def main(folder):
    for name, (symbol, words) in PICTURES.items():
        with open(f"{folder}/{name}.svg", "w", encoding="utf-8", newline="\n") as out:
            out.write(FRAME.format(ink=INK, symbol=symbol(), words=words))


if __name__ == "__main__":
    main(sys.argv[1])
