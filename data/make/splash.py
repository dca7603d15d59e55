"""Draws the splash picture: a mountain lake at night, with the program's name."""

import math
import random
import sys

import lettering
import terrain
from png import write_png
from terrain import CENTRE, EYE, F, HORIZON, NOISE, SHORE

WIDTH, HEIGHT = 480, 300
SCALE = int(sys.argv[2]) if len(sys.argv) > 2 else 2  # samples along each side of a pixel
W, H = WIDTH * SCALE, HEIGHT * SCALE
SHORE_ROW = int(SHORE * SCALE)

# Colours are linear light times 255, mixed as such and turned to sRGB at the end.
def linear(text):
    def one(v):
        v /= 255.0
        return v / 12.92 if v <= 0.04045 else ((v + 0.055) / 1.055) ** 2.4

    return tuple(one(int(text[i : i + 2], 16)) for i in (0, 2, 4))


def mix(a, b, t):
    return (a[0] + (b[0] - a[0]) * t, a[1] + (b[1] - a[1]) * t, a[2] + (b[2] - a[2]) * t)


def smooth(low, high, v):
    t = min(1.0, max(0.0, (v - low) / (high - low)))
    return t * t * (3 - 2 * t)


SKY = ((0, linear("060d22")), (60, linear("0c1c3e")), (120, linear("22486d")), (172, linear("6596a6")))
HAZE = linear("3a6a88")
ROCK, SNOW, SHADE = linear("22304a"), linear("a9c1de"), linear("081226")
FOREST = linear("050d18")
LIGHT = (-0.66, 0.52, -0.54)  # towards the moon: left, up, and behind the eye
LETTERS = linear("eef4fa")


def sky(x, y):
    """Dusk at the horizon, night above, a faint band of the Milky Way across."""
    for (y0, c0), (y1, c1) in zip(SKY, SKY[1:]):
        if y <= y1:
            colour = mix(c0, c1, (y - y0) / (y1 - y0))
            break
    else:
        colour = SKY[-1][1]
    across = (x - 178) * 0.80 + (y - 70) * 0.60  # distance from the band's middle line
    along = (x - 178) * -0.60 + (y - 70) * 0.80
    cloud = 0.55 + 0.9 * NOISE.at(along / 38, across / 24) + 0.5 * NOISE.at(along / 15 + 7, across / 11)
    dust = smooth(0.0, 0.28, NOISE.at(along / 44 + 31, across / 15 + 3) + 0.10) * math.exp(-((across / 16) ** 2))
    glow = math.exp(-((across / 30) ** 2)) * max(0.0, cloud) * (1 - 0.75 * dust) * smooth(165, 90, y)
    # The version line stands here, so the band fades out under it.
    glow *= 1 - 0.7 * smooth(150, 175, x) * smooth(40, 24, y)
    return (colour[0] + 0.026 * glow, colour[1] + 0.037 * glow, colour[2] + 0.058 * glow)


def draw_sky(rows):
    for y in range(SHORE_ROW):
        rows[y] = [sky((x + 0.5) / SCALE, (y + 0.5) / SCALE) for x in range(W)]


def add_light(rows, x, y, radius, colour, power):
    """Adds a round soft spot, as a star leaves on a plate."""
    reach = radius * 3.2
    for row in range(max(0, int((y - reach) * SCALE)), min(SHORE_ROW, int((y + reach) * SCALE) + 1)):
        line = rows[row]
        for col in range(max(0, int((x - reach) * SCALE)), min(W, int((x + reach) * SCALE) + 1)):
            d2 = ((col + 0.5) / SCALE - x) ** 2 + ((row + 0.5) / SCALE - y) ** 2
            v = power * math.exp(-d2 / (radius * radius))
            c = line[col]
            line[col] = (c[0] + colour[0] * v, c[1] + colour[1] * v, c[2] + colour[2] * v)


TINTS = tuple(linear(t) for t in ("dbe7ff", "ffffff", "fff1dc", "ffdcb8", "cfe0ff"))
# Cassiopeia, degrees from its middle: to the right (west), up (north), brightness.
CASSIOPEIA = ((6.3, -1.1, 0.95), (2.4, -3.8, 1.0), (0.4, 0.4, 1.1), (-3.2, 0.0, 0.8), (-6.8, 3.4, 0.6))


def draw_stars(rows):
    rng = random.Random(2)
    for _ in range(900):
        x, y = rng.random() * WIDTH, rng.random() ** 1.25 * 165
        power = 0.035 + 0.5 * rng.random() ** 9
        band = math.exp(-((((x - 178) * 0.80 + (y - 70) * 0.60) / 34) ** 2))
        tint = TINTS[int(rng.random() * len(TINTS))]
        keep = rng.random() < 0.42 + 0.58 * band
        if x > 160 and y < 34:
            power = min(power, 0.05)  # under the version line
        if keep:
            add_light(rows, x, y, 0.55 + 0.25 * min(1.0, power), tint, power * smooth(172, 110, y) * 1.5)
    turn = math.radians(-28)
    for dx, dy, power in CASSIOPEIA:
        x = 96 + 4.6 * (dx * math.cos(turn) + dy * math.sin(turn))
        y = 58 - 4.6 * (dy * math.cos(turn) - dx * math.sin(turn))
        add_light(rows, x, y, 0.85, TINTS[1], power)
        add_light(rows, x, y, 2.6, TINTS[0], 0.10 * power)


def land_colour(x, z, h, east, north):
    """Colour of the ground by slope, height and moonlight. east, north: rise per unit of way."""
    size = math.sqrt(1 + east * east + north * north)
    nx, ny, nz = -east / size, 1 / size, -north / size
    lit = max(0.0, nx * LIGHT[0] + ny * LIGHT[1] + nz * LIGHT[2])
    patch = NOISE.at(x * 3.1, z * 3.1) * 0.22 + NOISE.at(x * 9, z * 9) * 0.12
    snow = smooth(0.50, 0.68, ny + patch * 0.8) * smooth(0.35, 0.85, h + patch * 1.6)
    ground = mix(ROCK, SNOW, snow)
    ground = mix(FOREST, ground, smooth(0.10, 0.42, h + patch * 0.6))
    bright = 0.10 + 0.95 * lit
    colour = mix(mix(SHADE, ground, 0.22), ground, smooth(0, 1, bright))
    colour = tuple(c * (0.30 + 0.62 * bright) for c in colour)
    low = math.exp(-h * 1.6)
    haze = 1 - math.exp(-max(0.0, z - 4.0) * (0.014 + 0.045 * low))
    return mix(colour, HAZE, haze)


def view_depths():
    """Distances to look at: dense where the steep faces stand, growing beyond."""
    z = 3.2
    while z < 38:
        yield z
        z += (0.030 if z < 6 else 0.016 if z < 14.5 else 0.05) * 2 / SCALE


def draw_land(rows):
    """Column by column from near to far: each farther point shows only above all nearer ones."""
    depths = list(view_depths())
    steps = len(depths)
    line = [[terrain.height((c / SCALE - CENTRE) / F * z, z) for z in depths] for c in range(W + 1)]
    for col in range(W):
        here, right = line[col], line[col + 1]
        top = SHORE_ROW
        for i in range(steps - 1):
            z, h = depths[i], here[i]
            y = (HORIZON + F * (EYE - h) / z) * SCALE
            if y >= top:
                continue
            x = (col / SCALE - CENTRE) / F * z
            spread = z / (F * SCALE)
            beyond = min(steps - 1, i + 2)
            dz = depths[beyond] - z
            east = (right[i] - h) / spread
            north = (here[beyond] - h - east * x / z * dz) / dz
            colour = land_colour(x, z, h, east, north)
            first = max(0, math.ceil(y - 0.5))
            for row in range(first, top):
                rows[row][col] = colour
            top = min(top, first)


def draw_trees(rows):
    """A dark fringe of spruces on the shore, taller towards the sides."""
    rng = random.Random(8)
    x = -3.0
    while x < WIDTH + 3:
        side = max(smooth(170, 0, x), smooth(330, 480, x))
        tall = (3.0 + 17.0 * side * side) * (0.45 + 0.85 * rng.random())
        draw_tree(rows, x, tall, rng.random())
        x += 0.9 + 1.5 * rng.random()


def draw_tree(rows, x, tall, phase):
    for row in range(max(0, int((SHORE - tall) * SCALE)), SHORE_ROW):
        down = (row + 0.5) / SCALE - (SHORE - tall)
        if down <= 0:
            continue
        wing = 0.24 + down * 0.20 * (0.72 + 0.28 * math.cos((down * 1.9 + phase) * math.pi))
        for col in range(max(0, round((x - wing) * SCALE)), min(W, round((x + wing) * SCALE) + 1)):
            rows[row][col] = FOREST


def mirror(rows):
    """Water: the land upside down, stretched by ripples that grow towards the viewer, and darker."""
    deep = linear("04101f")
    for row in range(SHORE_ROW, H):
        y = (row + 0.5) / SCALE - SHORE
        line = []
        for col in range(W):
            x = col / SCALE
            wave = NOISE.at(x / (16 + y * 0.9), y / (0.9 + y * 0.030) + 3.1)
            wave += 0.6 * NOISE.at(x / 7 + 50, y / 0.8 + 17)
            ripple = wave * (0.25 + y * 0.042)
            source = SHORE_ROW - 1 - int((y * 1.04 + ripple) * SCALE)
            source = min(SHORE_ROW - 1, max(0, source))
            at = min(W - 1, max(0, col + int(wave * 0.5 * SCALE)))
            fade = 0.50 - 0.32 * smooth(0, 110, y)
            line.append(mix(deep, rows[source][at], fade))
        rows[row] = line


def soften_shore(rows):
    """A thin bright line where the still water meets the land."""
    for k in range(SCALE):
        row = rows[SHORE_ROW + k]
        for col in range(W):
            row[col] = mix(row[col], HAZE, 0.22 + 0.25 * NOISE.at(col / SCALE / 21, 5.5))


def draw_name(rows):
    glow = lettering.Name(LEFT, BASE, CAP)
    x0, y0, x1, y1 = glow.box(8)
    for row in range(int(y0 * SCALE), min(H, int(y1 * SCALE))):
        for col in range(int(x0 * SCALE), min(W, int(x1 * SCALE))):
            d = glow.distance((col + 0.5) / SCALE, (row + 0.5) / SCALE)
            shade = 0.35 * math.exp(-((max(0.0, d) / 4.0) ** 2))
            cover = smooth(0.5, -0.5, d * SCALE)
            c = rows[row][col]
            rows[row][col] = mix(mix(c, (0.002, 0.006, 0.014), shade), LETTERS, cover)


LEFT, BASE, CAP = 26.0, 272.0, 36.0  # place of the name: left edge, foot line, height of capitals


def to_bytes(rows):
    rng = random.Random(5)
    out = bytearray()
    share = 1.0 / (SCALE * SCALE)
    for y in range(HEIGHT):
        block = rows[y * SCALE : (y + 1) * SCALE]
        for x in range(WIDTH):
            grain = rng.random() * 0.9 + 0.05  # hides the steps of slow gradients
            for k in range(3):
                v = share * sum(r[c][k] for r in block for c in range(x * SCALE, (x + 1) * SCALE))
                v = 12.92 * v if v <= 0.0031308 else 1.055 * v ** (1 / 2.4) - 0.055
                out.append(min(255, max(0, int(v * 255 + grain))))
    return out


def main():
    rows = [None] * H
    draw_sky(rows)
    draw_stars(rows)
    draw_land(rows)
    draw_trees(rows)
    mirror(rows)
    soften_shore(rows)
    draw_name(rows)
    write_png(sys.argv[1], WIDTH, HEIGHT, to_bytes(rows))


if __name__ == "__main__":
    main()
