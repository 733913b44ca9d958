"""The desk with the workstation, and the printer on its stand."""

from palette import BLACK, WHITE, shade, tone
from raster import curve
from solid import Box, Face

_SHADOW = shade(-2)


def desk_frame(canvas, view):
    """The left leg and the back of the desk. Cables that come from under it are drawn after this."""
    body = Box(canvas, view, 154, 46, 0, 124, 64, 32)
    body.shadow(_SHADOW, 18)
    Box(canvas, view, 154, 46, 0, 6, 64, 32).paint("wood", 0.6, 0.5, 0.22)
    back = Face(canvas, view, (160, 62, 0), (1, 0, 0), (0, 0, 1))
    back.rect(0, 6, 80, 26, tone("wood", 0.1))


def desk_top(canvas, view):
    """The drawers and the top of the desk."""
    drawers = Box(canvas, view, 234, 46, 0, 44, 64, 32).paint("wood", 0.6, 0.52, 0.28)
    for i, height in enumerate([13, 7.5, 7.5]):
        v = (1.5, 15.2, 23.4)[i]
        drawers.front.raised(2, v, 40, height - 0.6, 0.8, tone("wood", 0.8), tone("wood", 0.6), tone("wood", 0.2))
        drawers.front.rect(17, v + height / 2 - 1, 10, 1.8, tone("gold", 0.75))
        drawers.front.rect(17, v + height / 2 - 1.6, 10, 0.7, tone("wood", 0.1))
    plate = Box(canvas, view, 150, 44, 32, 132, 70, 4).paint("wood", 0.74, 0.56, 0.34)
    for i, (u, v, span) in enumerate([(6, 8, 60), (30, 22, 90), (4, 38, 40), (70, 50, 56), (90, 12, 30)]):
        plate.top.rect(u, v, span, 0.9, tone("wood", 0.64 if i % 2 else 0.84))


def workstation(canvas, view, phase):
    plate = Face(canvas, view, (150, 114, 36), (1, 0, 0), (0, -1, 0))
    plate.fill([(26, 22), (94, 22), (108, 30), (108, 62), (26, 62)], shade(-2))
    case = Box(canvas, view, 178, 56, 36, 62, 40, 9).paint("beige", 0.9, 0.7, 0.4)
    case.front.rect(4, 4.6, 22, 1.2, tone("beige", 0.2))
    case.front.raised(38, 2, 20, 4.6, 0.6, tone("beige", 0.9), tone("beige", 0.6), tone("beige", 0.3))
    case.front.rect(40, 4, 13, 0.9, tone("beige", 0.15))
    Box(canvas, view, 192, 64, 45, 34, 24, 3).paint("beige", 0.5, 0.4, 0.25, 0)
    tube = Box(canvas, view, 188, 52, 50, 44, 20, 38).paint("beige", 0.84, 0.5, 0.3)
    for i in range(5):
        tube.side.rect(3, 8 + i * 5, 13, 1.6, tone("beige", 0.1))
    screen = Box(canvas, view, 182, 72, 48, 56, 16, 46).paint("beige", 0.97, 0.78, 0.46)
    front = screen.front
    front.raised(3.4, 7, 49, 36, 1.8, tone("beige", 0.4), tone("beige", 0.58), tone("beige", 1.0))
    _screen(front, phase)
    for u in (40, 44, 48):
        front.rect(u, 2.6, 2.4, 1.8, tone("beige", 0.4))
    front.rect(5, 2.8, 2.2, 1.6, tone("green", 0.75))
    _keyboard(plate)


def _screen(front, phase):
    """A window in which pages fly from one folder to another and the bar below fills."""
    front.rect(5.6, 9.2, 44.6, 31.6, BLACK)
    front.rect(6.4, 10, 43, 30, tone("teal", 0.44))
    front.rect(9, 13, 38, 24, tone("steel", 0.2))
    front.rect(8.4, 13.6, 38, 24, tone("steel", 0.86))
    front.rect(8.4, 33.4, 38, 4.2, tone("blue", 0.45))
    front.rect(42.6, 34.3, 2.8, 2.4, tone("steel", 0.9))
    for u in (10.4, 35.4):
        front.rect(u, 21.6, 9, 6.6, tone("gold", 0.42))
        front.rect(u, 27.8, 4, 1.8, tone("gold", 0.6))
        front.rect(u, 21.6, 8.6, 5.6, tone("gold", 0.75))
    u, v = [(19, 25), (23.5, 28), (28, 28), (32, 25)][phase]
    front.rect(u, v - 3, 4.4, 5.6, tone("steel", 0.3))
    front.rect(u - 0.4, v - 2.6, 4.4, 5.6, WHITE)
    front.rect(u + 0.4, v + 0.8, 2.6, 0.8, tone("blue", 0.5))
    front.rect(u + 0.4, v - 1, 2.6, 0.8, tone("blue", 0.5))
    front.rect(11, 15.4, 33, 4, tone("steel", 0.4))
    front.rect(11.6, 16, 31.8, 2.8, WHITE)
    front.rect(11.6, 16, 31.8 * (phase + 1) / 4, 2.8, tone("blue", 0.45))
    front.fill([(6.4, 40), (20, 40), (11, 10), (6.4, 10)], shade(1))


def _keyboard(plate):
    plate.fill([(28, 4.5), (82, 4.5), (84, 17), (28, 17)], shade(-2))
    plate.rect(28, 5, 52, 13, tone("beige", 0.42))
    plate.rect(28, 6, 52, 12.6, tone("beige", 0.84))
    for row in range(3):
        for key in range(11):
            plate.rect(30 + key * 4.4, 8 + row * 3.4, 3.4, 2.4, tone("beige", 1.0))
            plate.rect(30 + key * 4.4, 7.6 + row * 3.4, 3.4, 0.6, tone("beige", 0.4))
    plate.ellipse(93, 10, 4.6, 6, shade(-2))
    plate.ellipse(92, 11, 4.4, 6, tone("beige", 0.5))
    plate.ellipse(91.6, 12, 4.2, 5.6, tone("beige", 0.94))
    plate.rect(87.6, 13, 8, 0.8, tone("beige", 0.5))
    canvas, at = plate.canvas, plate.at
    canvas.stroke([at(u, v) for u, v in curve([(92, 17), (95, 22), (88, 26), (84, 24)])], 1.2, tone("beige", 0.4))


def printer(canvas, view, phase):
    """The printer: a page comes out over the four frames and joins the pile in the tray."""
    stand = Box(canvas, view, 294, 56, 0, 64, 54, 24)
    stand.shadow(_SHADOW, 20)
    stand.paint("steel", 0.66, 0.36, 0.16)
    for u in (3, 33.5):
        stand.front.raised(u, 3, 28, 18, 0.8, tone("steel", 0.62), tone("steel", 0.42), tone("steel", 0.1))
    stand.front.rect(27, 10, 2, 5, tone("steel", 0.8))
    stand.front.rect(36, 10, 2, 5, tone("steel", 0.8))
    Box(canvas, view, 296, 58, 24, 60, 46, 14).paint("beige", 0.9, 0.62, 0.34)
    feed = Face(canvas, view, (306, 66, 50), (1, 0, 0), (0, -0.3, 1))
    feed.rect(0, -4, 38, 24, tone("beige", 0.55))
    feed.rect(3, 0, 32, 26, WHITE)
    feed.rect(30, 0, 5, 26, tone("steel", 0.8))
    upper = Box(canvas, view, 296, 58, 38, 60, 38, 17).paint("beige", 0.96, 0.76, 0.42)
    upper.front.raised(8, 2, 44, 7, 0.9, tone("beige", 0.25), BLACK, tone("beige", 0.95))
    upper.front.raised(42, 11, 14, 4.4, 0.6, tone("beige", 0.3), tone("teal", 0.12), tone("beige", 0.9))
    upper.front.rect(43.4, 12.4, 3 + phase * 2.6, 1.6, tone("teal", 0.85))
    upper.front.rect(36, 12, 2.6, 2.4, tone("green" if phase % 2 else "gold", 0.75))
    for i in range(5):
        upper.side.rect(6, 4 + i * 2.4, 22, 1.1, tone("beige", 0.16))
        upper.top.rect(8, 5 + i * 4, 16, 1.6, tone("beige", 0.66))
    lower = Box(canvas, view, 296, 104, 24, 60, 4, 12)
    lower.front.rect(4, 2.4, 30, 1.1, tone("beige", 0.3))
    lower.front.raised(42, 3.4, 12, 4, 0.6, tone("beige", 0.85), tone("beige", 0.62), tone("beige", 0.3))
    _tray(canvas, view, phase)


def _tray(canvas, view, phase):
    tray = Box(canvas, view, 299, 102, 33, 54, 26, 2).paint("beige", 0.7, 0.5, 0.3)
    tray.top.rect(2, 2, 50, 24, tone("beige", 0.45))
    for i in range(3):
        pile = Face(canvas, view, (307 + i % 2, 126, 35 + i), (1, 0, 0), (0, -1, 0))
        pile.rect(0, 0, 38, 22, tone("steel", 0.62))
        pile.rect(0, 0.6, 38, 22, tone("steel", 0.95))
    reach = (7, 14, 21, 27)[phase]
    drop = (0, 0.5, 1.5, 4.4)[phase]
    sheet = Face(canvas, view, (306, 97 + reach, 44 - drop), (1, 0, 0), (0, -1, drop / reach))
    shadow = Face(canvas, view, (308, 97 + reach, 38), (1, 0, 0), (0, -1, 0))
    shadow.rect(0, 0, 38, reach, shade(-3))
    sheet.rect(0, 0, 38, reach, tone("steel", 0.74))
    sheet.rect(0, 0.8, 38, reach - 0.8, WHITE)
    for i in range(int(reach / 4)):
        sheet.rect(4, 2.6 + i * 4, 30 if (phase - i) % 3 else 18, 1.5, tone("blue", 0.5))
