"""Boxes in the room's oblique projection, and their flat faces for drawing details."""

from palette import tone
from raster import circle


class View:
    """Maps room coordinates to the picture: x runs right along the back wall, y towards the viewer, z up."""

    def __init__(self, left, top):
        self.left = left
        self.top = top

    def point(self, x, y, z=0.0):
        return self.left + x - 0.36 * y, self.top + 0.15 * x + 0.42 * y - 0.96 * z


class Face:
    """A plane in the room with its own coordinates: u right and v up (on a horizontal plane: away from the viewer)."""

    def __init__(self, canvas, view, origin, u, v):
        self.canvas = canvas
        self.view = view
        self.origin = origin
        self.u = u
        self.v = v

    def at(self, u, v):
        return self.view.point(*(o + u * du + v * dv for o, du, dv in zip(self.origin, self.u, self.v)))

    def fill(self, points, paint):
        self.canvas.fill([self.at(u, v) for u, v in points], paint)

    def rect(self, u, v, width, height, paint):
        self.fill([(u, v), (u + width, v), (u + width, v + height), (u, v + height)], paint)

    def ellipse(self, u, v, ru, rv, paint):
        self.fill(circle(u, v, ru, rv, steps=24), paint)

    def line(self, points, width, paint):
        self.canvas.stroke([self.at(u, v) for u, v in points], width, paint)

    def raised(self, u, v, width, height, edge, light, middle, dark):
        """A raised plate, lit from the upper left. With `light` and `dark` exchanged, it is a recess."""
        self.rect(u, v, width, height, dark)
        self.fill([(u, v), (u, v + height), (u + width, v + height), (u + width - edge, v + height - edge),
                   (u + edge, v + height - edge), (u + edge, v + edge)], light)
        self.rect(u + edge, v + edge, width - 2 * edge, height - 2 * edge, middle)


class Box:
    """A box with its near lower left corner at (x, y, z). Its top, front and right side are visible."""

    def __init__(self, canvas, view, x, y, z, width, depth, height):
        self.canvas = canvas
        self.size = (width, depth, height)
        near = y + depth
        self.front = Face(canvas, view, (x, near, z), (1, 0, 0), (0, 0, 1))
        self.side = Face(canvas, view, (x + width, near, z), (0, -1, 0), (0, 0, 1))
        self.top = Face(canvas, view, (x, near, z + height), (1, 0, 0), (0, -1, 0))

    def paint(self, ramp, top=0.85, front=0.62, side=0.36, edge=0.2):
        """Fills the three faces with tones of a ramp and draws light edges between them."""
        width, depth, height = self.size
        self.top.rect(0, 0, width, depth, tone(ramp, top))
        self.front.rect(0, 0, width, height, tone(ramp, front))
        self.side.rect(0, 0, depth, height, tone(ramp, side))
        if not edge:
            return self
        self.front.line([(0.4, 0), (0.4, height)], 0.8, tone(ramp, front + edge * 0.6))
        self.front.line([(0, height), (width, height)], 1.0, tone(ramp, min(1.0, top + edge * 0.5)))
        self.side.line([(0, height), (depth, height)], 0.7, tone(ramp, side + edge))
        self.side.line([(0, 0), (0, height)], 0.8, tone(ramp, front + edge))
        self.front.rect(0, 0, width, min(1.5, height / 8), tone(ramp, front - edge))
        self.side.rect(0, 0, depth, min(1.5, height / 8), tone(ramp, side - edge))
        return self

    def shadow(self, table, reach):
        """Darkens the ground to the right of the box, `reach` wide. Draw it before the box itself."""
        width, depth, _ = self.size
        ground = Face(self.canvas, self.front.view, self.front.origin, (1, 0, 0), (0, -1, 0))
        ground.fill([(-2, -2), (width + reach * 0.4, -2), (width + reach, 5), (width + reach, depth), (0, depth)],
                    table)
