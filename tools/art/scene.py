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
    office.desk_frame(canvas, view)
    _cable(canvas, view, phase, "blue", [(206, 70, 24), (206, 78, 2), (196, 104, 0), (178, 132, 0), (152, 146, 0),
                                         (140, 158, 4)])
    office.desk_top(canvas, view)
    office.workstation(canvas, view, phase)
    desktop.mug(canvas, view, phase)
    desktop.lamp(canvas, view)
    desktop.cat(canvas, view, phase)
    office.printer(canvas, view, phase)
    _cable(canvas, view, phase, "gold", [(40, 62, 6), (40, 78, 0), (60, 104, 0), (84, 126, 0), (100, 152, 4)])
    _cable(canvas, view, phase, "red", [(110, 86, 6), (110, 98, 0), (118, 120, 0), (124, 140, 0), (120, 152, 4)])
    _cable(canvas, view, phase, "leaf", [(154, 176, 5), (180, 182, 0), (230, 158, 0), (290, 146, 0), (332, 136, 0),
                                         (343, 120, 0), (343, 110, 8)])
    machines.hub(canvas, view, phase)
    return canvas


def _cable(canvas, view, phase, ramp, course):
    """A cable in the tones of a ramp along a path in the room, with moving packets."""
    line = curve([view.point(*place) for place in course])
    canvas.stroke([(x + 1.2, y + 1.8) for x, y in line], 3, tone("floor", 0.02))
    canvas.stroke(line, 3.2, tone(ramp, 0.22))
    canvas.stroke([(x - 0.2, y - 0.3) for x, y in line], 2.0, tone(ramp, 0.56))
    canvas.stroke([(x - 0.4, y - 0.8) for x, y in line], 0.8, tone(ramp, 0.85))
    _packets(canvas, line, phase)


def _packets(canvas, line, phase):
    """Bright dots that move away from the line's start by a quarter of their spacing per frame."""
    distance = phase * _SPACING / FRAMES + 3
    while distance < length(line):
        x, y = along(line, distance)
        canvas.ellipse(x, y, 7.5, 6, _HALO)
        canvas.ellipse(x, y, 5, 4, _GLOW)
        canvas.ellipse(x, y - 0.4, 3, 2.6, tone("gold", 0.85))
        canvas.ellipse(x - 0.6, y - 1, 1.5, 1.2, WHITE)
        distance += _SPACING
