"""A canvas with 4 x 4 samples per pixel. Shapes fill whole samples; averaging a pixel's samples smooths the edges."""

import math

SCALE = 4


def vertical(paints, top, bottom):
    """A gradient of `paints` from y `top` to y `bottom`."""
    def at(y):
        part = (y - top) / (bottom - top)
        return paints[max(0, min(len(paints) - 1, int(part * len(paints))))]
    return at


def circle(x, y, rx, ry=None, start=0.0, end=360.0, steps=40):
    """Points of an ellipse, or of the arc from `start` to `end` degrees (clockwise from the right)."""
    ry = rx if ry is None else ry
    whole = end - start >= 360.0
    count = steps if whole else steps + 1
    angles = [math.radians(start + (end - start) * i / steps) for i in range(count)]
    return [(x + rx * math.cos(a), y + ry * math.sin(a)) for a in angles]


def curve(points, steps=12):
    """A smooth line through `points` (Catmull-Rom), sampled."""
    ends = [points[0]] + list(points) + [points[-1]]
    line = []
    for p0, p1, p2, p3 in zip(ends, ends[1:], ends[2:], ends[3:]):
        for i in range(steps):
            t = i / steps
            line.append(tuple(
                0.5 * (2 * b + (c - a) * t + (2 * a - 5 * b + 4 * c - d) * t * t + (3 * b - a - 3 * c + d) * t ** 3)
                for a, b, c, d in zip(p0, p1, p2, p3)))
    line.append(tuple(points[-1]))
    return line


def along(line, distance):
    """The point at `distance` along a line of points, or None after its end."""
    for a, b in zip(line, line[1:]):
        step = math.hypot(b[0] - a[0], b[1] - a[1])
        if distance <= step and step > 0:
            part = distance / step
            return a[0] + (b[0] - a[0]) * part, a[1] + (b[1] - a[1]) * part
        distance -= step
    return None


def length(line):
    return sum(math.hypot(b[0] - a[0], b[1] - a[1]) for a, b in zip(line, line[1:]))


class Canvas:
    """Samples contain paints. A shape's paint is an index, a function of y, or a 256-byte table of replacements."""

    def __init__(self, width, height, paint=0):
        self.width = width
        self.height = height
        self.rows = [bytearray([paint]) * (width * SCALE) for _ in range(height * SCALE)]

    def fill(self, points, paint):
        """Fills a polygon by the even-odd rule."""
        crossings = {}
        last = len(self.rows) - 1
        corners = [(round(x * SCALE, 3), round(y * SCALE, 3)) for x, y in points]
        for (x0, y0), (x1, y1) in zip(corners, corners[1:] + corners[:1]):
            if y0 == y1:
                continue
            if y0 > y1:
                x0, y0, x1, y1 = x1, y1, x0, y0
            slope = (x1 - x0) / (y1 - y0)
            for row in range(max(0, math.ceil(y0 - 0.5)), min(last, math.ceil(y1 - 0.5) - 1) + 1):
                crossings.setdefault(row, []).append(x0 + (row + 0.5 - y0) * slope)
        for row, places in crossings.items():
            places.sort()
            for left, right in zip(places[::2], places[1::2]):
                self._span(row, math.ceil(left - 0.5), math.ceil(right - 0.5), paint)

    def _span(self, row, left, right, paint):
        samples = self.rows[row]
        left = max(left, 0)
        right = min(right, len(samples))
        if left >= right:
            return
        if isinstance(paint, bytes):
            samples[left:right] = samples[left:right].translate(paint)
            return
        if callable(paint):
            paint = paint(row / SCALE)
        samples[left:right] = bytes([paint]) * (right - left)

    def rect(self, x, y, width, height, paint):
        self.fill([(x, y), (x + width, y), (x + width, y + height), (x, y + height)], paint)

    def ellipse(self, x, y, rx, ry, paint):
        self.fill(circle(x, y, rx, ry), paint)

    def stroke(self, line, width, paint, round_ends=True):
        """Draws a line of points with a round pen. `paint` must not be a table: where the pen's steps overlap, a table
        would be applied twice."""
        half = width / 2
        for (x0, y0), (x1, y1) in zip(line, line[1:]):
            step = math.hypot(x1 - x0, y1 - y0)
            if step == 0:
                continue
            nx, ny = (y1 - y0) / step * half, (x0 - x1) / step * half
            self.fill([(x0 + nx, y0 + ny), (x1 + nx, y1 + ny), (x1 - nx, y1 - ny), (x0 - nx, y0 - ny)], paint)
        if width > 1:
            for x, y in line if round_ends else line[1:-1]:
                self.fill(circle(x, y, half, None, steps=16), paint)

    def blocks(self):
        """Every pixel's 16 samples, row by row."""
        for y in range(0, len(self.rows), SCALE):
            rows = [bytes(row) for row in self.rows[y:y + SCALE]]
            yield [b"".join([row[x:x + SCALE] for row in rows]) for x in range(0, self.width * SCALE, SCALE)]


def average(block, colours):
    """The average colour of a pixel's samples, in steps of 4, so that similar colours become equal."""
    sums = [0, 0, 0]
    for sample in block:
        for i, value in enumerate(colours[sample]):
            sums[i] += value
    return tuple(min(255, (value // len(block) + 2) // 4 * 4) for value in sums)
