"""The animation: four pictures of the machine room at nightfall, 383 x 180, that play in a loop."""

import desktop
import machines
import office
import room
from palette import WHITE, tint, tone
from raster import Canvas, along, curve, length
from solid import View

WIDTH, HEIGHT, FRAMES = 383, 180, 4

_GLOW = tint((255, 236, 150), 45)
_HALO = tint((255, 220, 120), 22)
_SPACING = 44


def picture(phase):
    """The picture of a phase, 0 to 3."""
    canvas = Canvas(WIDTH, HEIGHT)
    view = View(33, 63)
    room.floor(canvas, view)
    room.walls(canvas, view)
    room.window(canvas, view, phase)
    room.clock(canvas, view, phase)
    room.chart(canvas, view)
    machines.cabinet(canvas, view, phase)
    machines.server(canvas, view, phase)
    office.desk(canvas, view)
    office.workstation(canvas, view, phase)
    desktop.mug(canvas, view, phase)
    desktop.lamp(canvas, view)
    desktop.cat(canvas, view, phase)
    office.printer(canvas, view, phase)
    cables = _cables(view)
    for line, ramp in cables:
        _cable(canvas, line, ramp)
    for line, _ in cables:
        _packets(canvas, line, phase)
    machines.hub(canvas, view, phase)
    return canvas


def _cables(view):
    """Each cable's course over the floor, and its colour."""
    def laid(points, ramp):
        return curve([view.point(*point) for point in points]), ramp

    return [
        laid([(40, 62, 6), (40, 78, 0), (60, 104, 0), (84, 126, 0), (100, 152, 4)], "gold"),
        laid([(110, 86, 6), (110, 98, 0), (118, 120, 0), (124, 140, 0), (120, 152, 4)], "red"),
        laid([(190, 100, 10), (190, 118, 0), (176, 138, 0), (150, 146, 0), (140, 158, 4)], "blue"),
        laid([(154, 176, 5), (180, 182, 0), (230, 158, 0), (290, 146, 0), (332, 136, 0), (343, 120, 0),
              (343, 110, 8)], "leaf"),
    ]


def _cable(canvas, line, ramp):
    canvas.stroke([(x + 1.2, y + 1.8) for x, y in line], 3, tone("floor", 0.02))
    canvas.stroke(line, 3.2, tone(ramp, 0.22))
    canvas.stroke([(x - 0.2, y - 0.3) for x, y in line], 2.0, tone(ramp, 0.56))
    canvas.stroke([(x - 0.4, y - 0.8) for x, y in line], 0.8, tone(ramp, 0.85))


def _packets(canvas, line, phase):
    """Bright beads that travel away from the line's start, a quarter of their spacing each frame."""
    distance = phase * _SPACING / FRAMES + 3
    while distance < length(line):
        x, y = along(line, distance)
        canvas.ellipse(x, y, 7.5, 6, _HALO)
        canvas.ellipse(x, y, 5, 4, _GLOW)
        canvas.ellipse(x, y - 0.4, 3, 2.6, tone("gold", 0.85))
        canvas.ellipse(x - 0.6, y - 1, 1.5, 1.2, WHITE)
        distance += _SPACING
