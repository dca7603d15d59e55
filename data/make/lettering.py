"""The program's name as strokes of even width, drawn by distance; no font is needed."""

import math

X_HEIGHT = 0.64  # of the capitals
WEIGHT = 0.066  # stroke width, of the capitals
GAP = 0.17  # between letters


def _segment(ax, ay, bx, by):
    dx, dy = bx - ax, by - ay
    length2 = dx * dx + dy * dy

    def distance(x, y):
        t = min(1.0, max(0.0, ((x - ax) * dx + (y - ay) * dy) / length2))
        return math.hypot(x - ax - t * dx, y - ay - t * dy)

    return distance


def _arc(cx, cy, r, start, sweep):
    """Circle piece; angles in degrees, anticlockwise from the right, seen with y upwards."""
    middle = math.radians(start + sweep / 2)
    half = math.radians(sweep / 2)
    ends = [(cx + r * math.cos(math.radians(a)), cy + r * math.sin(math.radians(a))) for a in (start, start + sweep)]

    def distance(x, y):
        turn = (math.atan2(y - cy, x - cx) - middle + math.pi) % math.tau - math.pi
        if abs(turn) <= half:
            return abs(math.hypot(x - cx, y - cy) - r)
        return min(math.hypot(x - ex, y - ey) for ex, ey in ends)

    return distance


def _star(cx, cy, r):
    """Four-pointed star with hollow sides, filled."""

    def distance(x, y):
        u, v = abs(x - cx) / r, abs(y - cy) / r
        return ((u ** 0.6 + v ** 0.6) ** (1 / 0.6) - 1) * r * 0.6 + WEIGHT / 2

    return distance


def _letters():
    """Each letter: its width and its strokes, x from 0, y upwards from the foot line."""
    x, r = X_HEIGHT, X_HEIGHT / 2
    arch = 0.24
    return {
        "T": (0.72, [_segment(0, 1, 0.72, 1), _segment(0.36, 0, 0.36, 1)]),
        "a": (x, [_arc(r, r, r, 0, 360), _segment(x, 0, x, x)]),
        "r": (0.27, [_segment(0, 0, 0, x), _arc(arch, x - arch, arch, 80, 100)]),
        "n": (arch * 2, [_segment(0, 0, 0, x), _arc(arch, x - arch, arch, 0, 180), _segment(arch * 2, 0, arch * 2, x - arch)]),
        "V": (0.84, [_segment(0, 1, 0.42, 0), _segment(0.42, 0, 0.84, 1)]),
        "i": (0.0, [_segment(0, 0, 0, x), _star(0, 0.92, 0.15)]),
        "e": (x, [_segment(0, r, x, r), _arc(r, r, r, 0, 318)]),
        "w": (
            0.84,
            [
                _segment(0, x, 0.21, 0),
                _segment(0.21, 0, 0.42, x),
                _segment(0.42, x, 0.63, 0),
                _segment(0.63, 0, 0.84, x),
            ],
        ),
    }


# Space before a letter where the even gap looks wrong.
KERN = {"Ta": -0.14, " V": 0.30, "Vi": 0.04, "ie": 0.02, "ew": -0.05, "rn": 0.07}


class Name:
    """The words "Tarn View", placed in the picture."""

    def __init__(self, left, base, cap):
        self.left, self.base, self.cap = left, base, cap
        letters = _letters()
        self.parts = []
        pen, before = 0.0, ""
        for letter in "Tarn View":
            pen += KERN.get(before + letter, 0.0)
            before = letter
            if letter == " ":
                continue
            width, strokes = letters[letter]
            self.parts.append((pen - 0.2, pen + width + 0.2, pen, strokes))
            pen += width + GAP
        self.width = pen - GAP

    def box(self, margin):
        """Left, top, right, bottom in the picture."""
        left, base, cap = self.left, self.base, self.cap
        return left - margin, base - cap * 1.1 - margin, left + self.width * cap + margin, base + margin

    def distance(self, x, y):
        """Pixels from the ink's edge; below 0 inside."""
        u, v = (x - self.left) / self.cap, (self.base - y) / self.cap
        best = 9.0
        for first, last, pen, strokes in self.parts:
            if first <= u <= last:
                best = min(best, min(stroke(u - pen, v) for stroke in strokes))
        return (best - WEIGHT / 2) * self.cap
