"""The equipment on the floor of the machine room: the cabinet with the tape drive, the file server, the hub."""

import math

from palette import BLACK, shade, tone
from solid import Box

_SHADOW = shade(-2)


def lamp(face, u, v, ramp, lit, size=1.5):
    """A signal lamp in a dark socket."""
    face.rect(u - 0.5, v - 0.5, size + 1, size + 1, tone("steel", 0.05))
    face.rect(u, v, size, size, tone(ramp, 0.8 if lit else 0.2))


def cabinet(canvas, view, phase):
    """The tall cabinet: two turning tape reels, a row of lamps, drawers with disks."""
    box = Box(canvas, view, 8, 14, 0, 70, 48, 82)
    box.shadow(_SHADOW, 26)
    box.paint("steel", 0.72, 0.42, 0.2)
    front = box.front
    front.raised(4, 42, 62, 36, 1.4, tone("steel", 0.12), tone("steel", 0.26), tone("steel", 0.7))
    front.fill([(6, 44), (6, 76), (24, 76), (12, 44)], tone("steel", 0.33))
    _reel(front, 20, 62, phase * 30)
    _reel(front, 50, 62, phase * 30 + 12)
    front.line([(9.5, 58), (31, 47), (39, 47), (60.5, 58)], 1.1, tone("wood", 0.35))
    front.raised(29, 45, 12, 6, 0.8, tone("steel", 0.95), tone("steel", 0.6), tone("steel", 0.1))
    front.raised(4, 31, 62, 8, 1, tone("steel", 0.1), tone("steel", 0.16), tone("steel", 0.65))
    pattern = (0b101101110010, 0b110010101101, 0b011101001110, 0b100110110101)[phase]
    for i in range(12):
        ramp = ("green", "green", "gold", "red")[i % 4]
        lamp(front, 8 + i * 4.6, 34, ramp, pattern >> i & 1, 2)
    for row in range(2):
        for column in range(3):
            _drawer(front, 4 + column * 21, 5 + row * 12.5, (row * 3 + column + phase) % 4 == 0)
    for i in range(9):
        box.side.rect(8, 14 + i * 5, 32, 2, tone("steel", 0.06))
        box.side.rect(8, 16 + i * 5, 32, 0.8, tone("steel", 0.34))


def _reel(face, u, v, turn):
    face.ellipse(u + 0.8, v - 0.8, 12.4, 12.4, BLACK)
    face.ellipse(u, v, 12, 12, tone("steel", 0.92))
    face.ellipse(u + 0.5, v - 0.5, 11, 11, tone("steel", 0.7))
    face.ellipse(u, v, 9, 9, tone("wood", 0.28))
    face.ellipse(u, v, 7.2, 7.2, tone("wood", 0.4))
    for arm in range(3):
        angle = math.radians(90 - turn - arm * 120)
        middle = [(u + r * math.cos(angle + a), v + r * math.sin(angle + a))
                  for r, a in [(2, -0.9), (11.2, -0.34), (11.2, 0.34), (2, 0.9)]]
        face.fill(middle, tone("steel", 0.78))
        face.line([middle[2], middle[3]], 0.8, tone("steel", 1.0))
    face.ellipse(u, v, 3.6, 3.6, tone("steel", 0.5))
    face.ellipse(u - 0.4, v + 0.4, 2.6, 2.6, tone("gold", 0.65))
    face.ellipse(u, v, 1, 1, BLACK)


def _drawer(face, u, v, busy):
    face.raised(u, v, 19.5, 11, 1, tone("steel", 0.75), tone("steel", 0.5), tone("steel", 0.14))
    face.rect(u + 3, v + 6, 9.5, 1.6, tone("steel", 0.12))
    face.rect(u + 3, v + 3.2, 9.5, 1, tone("steel", 0.3))
    lamp(face, u + 15, v + 3, "green", busy, 1.8)


def server(canvas, view, phase):
    """The file server: a beige tower with slots for disks and a display that counts."""
    box = Box(canvas, view, 92, 34, 0, 34, 52, 60)
    box.shadow(_SHADOW, 22)
    box.paint("beige", 0.95, 0.74, 0.42)
    front = box.front
    front.rect(2, 5, 30, 0.8, tone("beige", 0.5))
    for i in range(3):
        v = 48 - i * 8.6
        front.raised(4, v, 26, 7.4, 0.8, tone("beige", 0.95), tone("beige", 0.8), tone("beige", 0.36))
        front.rect(6, v + 3.4, 15, 1.2, tone("beige", 0.2))
        lamp(front, 25.5, v + 1.8, "green" if i < 2 else "gold", (phase + i) % 2 == 0 or (i == 1 and phase == 3), 1.8)
    front.raised(4, 20, 26, 8, 0.9, tone("beige", 0.3), tone("teal", 0.1), tone("beige", 0.95))
    for i in range(5):
        height = (2, 5, 3, 4, 1.5, 4.5, 2.5)[(i + phase * 2) % 7]
        front.rect(6.4 + i * 4.4, 21.6, 3, height, tone("teal", 0.8))
    for i in range(4):
        front.rect(5, 6.6 + i * 3, 24, 1.2, tone("beige", 0.3))
        front.rect(5, 7.8 + i * 3, 24, 0.7, tone("beige", 0.92))
    for i in range(7):
        box.side.rect(9, 12 + i * 5.5, 30, 1.8, tone("beige", 0.18))
        box.side.rect(9, 10.8 + i * 5.5, 30, 0.8, tone("beige", 0.56))


def hub(canvas, view, phase):
    """The hub on the floor where the cables meet, with a lamp above each of its eight sockets."""
    box = Box(canvas, view, 88, 152, 0, 66, 30, 15)
    box.shadow(_SHADOW, 9)
    box.paint("teal", 0.72, 0.4, 0.18)
    box.top.raised(4, 4, 40, 22, 0.8, tone("teal", 0.85), tone("teal", 0.62), tone("teal", 0.4))
    for i in range(5):
        box.top.rect(50, 5 + i * 4.2, 11, 1.8, tone("teal", 0.3))
    for i in range(8):
        u = 4 + i * 7.4
        box.front.rect(u, 2.4, 5.6, 4.8, tone("teal", 0.7))
        box.front.rect(u, 2.9, 5.2, 4.3, BLACK)
        lamp(box.front, u + 1.6, 9.6, "green" if i % 3 else "gold", (i * 5 + phase * 3) % 4 < 2, 1.9)
