"""A mountain range as a height field, seen from the shore of a lake."""

import math
import random

F = 480.0  # focal length, pixels of the finished picture
CENTRE = 240.0  # picture column straight ahead
EYE = 0.05  # height of the eye above the water
HORIZON = 164.0  # picture row of eye level
SHORE = 172.0  # picture row where water meets land

# Cones that carry the range: column in the picture, distance, height, radius.
PEAKS = (
    (316, 10.0, 2.06, 3.5),
    (258, 9.4, 0.95, 1.9),
    (402, 10.6, 1.62, 3.2),
    (476, 9.6, 1.20, 2.6),
    (70, 12.5, 2.02, 4.6),
    (-10, 10.5, 1.55, 3.4),
    (148, 13.5, 0.95, 2.8),
    (208, 27.0, 3.10, 9.0),
    (160, 30.0, 2.90, 9.0),
)
_CONES = tuple(((col - CENTRE) / F * z, z, h, r) for col, z, h, r in PEAKS)


class Noise:
    """Gradient noise on a lattice of period 256; values about -0.7 to 0.7."""

    def __init__(self, seed):
        rng = random.Random(seed)
        order = list(range(256))
        for i in range(255, 0, -1):
            j = int(rng.random() * (i + 1))
            order[i], order[j] = order[j], order[i]
        self.order = order * 2
        self.gx = [math.cos(i * math.tau / 256) for i in range(256)]
        self.gy = [math.sin(i * math.tau / 256) for i in range(256)]

    def at(self, x, y):
        xi, yi = math.floor(x), math.floor(y)
        fx, fy = x - xi, y - yi
        xi &= 255
        yi &= 255
        order, gx, gy = self.order, self.gx, self.gy
        a, b = order[xi] + yi, order[xi + 1] + yi
        aa, ab, ba, bb = order[a], order[a + 1], order[b], order[b + 1]
        u = fx * fx * fx * (fx * (fx * 6 - 15) + 10)
        v = fy * fy * fy * (fy * (fy * 6 - 15) + 10)
        top = gx[aa] * fx + gy[aa] * fy
        top += u * (gx[ba] * (fx - 1) + gy[ba] * fy - top)
        low = gx[ab] * fx + gy[ab] * (fy - 1)
        low += u * (gx[bb] * (fx - 1) + gy[bb] * (fy - 1) - low)
        return top + v * (low - top)


NOISE = Noise(61)


def ridges(x, z, octaves):
    """Sharp crests with gullies between them, 0 to about 1; detail gathers on the crests."""
    total, weight, size = 0.0, 1.0, 0.5
    for _ in range(octaves):
        crest = 1.0 - abs(NOISE.at(x, z)) * 1.6
        crest *= crest * weight
        total += crest * size
        weight = min(1.0, max(0.0, crest * 1.6))
        size *= 0.5
        x, z = x * 1.97 + 11.3, z * 1.97 + 5.7
    return total


def height(x, z, octaves=6):
    """Land height at a place; at most 0 where the lake is."""
    wx = x + 0.35 * NOISE.at(x * 0.7 + 40, z * 0.7)
    wz = z + 0.35 * NOISE.at(x * 0.7, z * 0.7 + 90)
    base = 0.0
    for px, pz, h, r in _CONES:
        d = 1.0 - math.hypot(wx - px, wz - pz) / r
        if d > 0.0:
            base = max(base, h * d ** 1.25) + 0.12 * min(base, h * d)
    rough = ridges(wx * 0.62, wz * 0.62, octaves) - 0.45
    inland = min(1.0, max(0.0, (z - 3.2) / 3.5))
    return 0.02 + inland * (0.10 + base + rough * (0.10 + 0.55 * min(1.0, base * 0.75)))
