"""The product's name as strokes of a round pen. The unit of all coordinates is the height of a capital letter; y is 0
at its top and increases downwards."""

from raster import circle


def _arc(x, y, rx, ry, start, end):
    return circle(x, y, rx, ry, start, end, 18)


# For each letter, its width and the lines that the pen follows.
_LETTERS = {
    "T": (0.74, [[(0.0, 0.0), (0.74, 0.0)], [(0.37, 0.0), (0.37, 1.0)]]),
    "a": (0.54, [_arc(0.27, 0.69, 0.27, 0.31, 0, 360) + [(0.54, 0.69)], [(0.54, 0.38), (0.54, 1.0)]]),
    "m": (0.82, [[(0.0, 0.38), (0.0, 1.0)], _arc(0.205, 0.6, 0.205, 0.22, 180, 360) + [(0.41, 1.0)],
                 _arc(0.615, 0.6, 0.205, 0.22, 180, 360) + [(0.82, 1.0)]]),
    "r": (0.34, [[(0.0, 0.38), (0.0, 1.0)], _arc(0.24, 0.64, 0.24, 0.26, 180, 295)]),
    "i": (0.0, [[(0.0, 0.38), (0.0, 1.0)], [(0.0, 0.06), (0.0, 0.07)]]),
    "x": (0.5, [[(0.0, 0.38), (0.5, 1.0)], [(0.5, 0.38), (0.0, 1.0)]]),
    "3": (0.54, [_arc(0.25, 0.24, 0.25, 0.24, 200, 450), _arc(0.27, 0.74, 0.27, 0.26, 270, 520)]),
    "2": (0.54, [_arc(0.27, 0.28, 0.27, 0.28, 190, 395) + [(0.0, 1.0)], [(0.0, 1.0), (0.54, 1.0)]]),
}
_GAP = 0.36
_SLANT = 0.16


def width(text, height):
    return height * (sum(_LETTERS[letter][0] + _GAP for letter in text) - _GAP)


def lines(text, left, top, height):
    """The lines of a whole word whose capitals are `height` high."""
    pen = left
    word = []
    for letter in text:
        advance, strokes = _LETTERS[letter]
        for stroke in strokes:
            word.append([(pen + height * (x + _SLANT * (0.5 - y)), top + height * y) for x, y in stroke])
        pen += height * (advance + _GAP)
    return word
