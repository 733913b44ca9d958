"""The colours: the paints that shapes are drawn with, the 256 palette entries of all bitmaps, and the 16 of the icons.

A paint is an index into PAINTS. Paints 0..19 are the system colours; the others are ramps from dark to light. The final
palette contains every paint exactly; the remaining entries are for the mixed colours of soft edges.
"""

SYSTEM = [
    (0, 0, 0), (128, 0, 0), (0, 128, 0), (128, 128, 0), (0, 0, 128), (128, 0, 128), (0, 128, 128), (192, 192, 192),
    (192, 220, 192), (166, 202, 240),
    (255, 251, 240), (160, 160, 164), (128, 128, 128), (255, 0, 0), (0, 255, 0), (255, 255, 0), (0, 0, 255),
    (255, 0, 255), (0, 255, 255), (255, 255, 255),
]
BLACK, TEXT_TEAL, WHITE = 0, 6, 19

# The standard 16 colours of an icon, in their order in the file.
VGA = [
    (0, 0, 0), (128, 0, 0), (0, 128, 0), (128, 128, 0), (0, 0, 128), (128, 0, 128), (0, 128, 128), (192, 192, 192),
    (128, 128, 128), (255, 0, 0), (0, 255, 0), (255, 255, 0), (0, 0, 255), (255, 0, 255), (0, 255, 255),
    (255, 255, 255),
]

# Ramp name: number of steps, and the colours that the ramp passes through, from dark to light.
RAMPS = {
    "beige": (12, [(62, 46, 48), (122, 100, 86), (188, 168, 138), (226, 212, 182), (252, 246, 228)]),
    "steel": (14, [(16, 20, 34), (50, 62, 84), (112, 130, 152), (184, 200, 212), (240, 246, 250)]),
    "wall": (10, [(20, 14, 44), (44, 36, 88), (74, 66, 130), (118, 110, 172), (160, 156, 206)]),
    "floor": (10, [(12, 20, 44), (24, 48, 76), (44, 82, 108), (84, 130, 148), (136, 182, 190)]),
    "wood": (10, [(48, 20, 22), (104, 50, 34), (170, 98, 52), (222, 160, 92), (246, 206, 146)]),
    "teal": (10, [(0, 28, 40), (0, 84, 92), (0, 140, 138), (86, 204, 190), (206, 250, 238)]),
    "gold": (12, [(70, 28, 12), (160, 86, 14), (238, 176, 40), (255, 230, 130), (255, 252, 226)]),
    "dusk": (14, [(36, 26, 84), (92, 44, 116), (196, 74, 104), (248, 140, 88), (255, 222, 150)]),
    "green": (7, [(0, 40, 20), (0, 140, 56), (72, 236, 104), (216, 255, 208)]),
    "red": (7, [(64, 8, 20), (176, 24, 36), (248, 76, 60), (255, 196, 170)]),
    "blue": (9, [(10, 18, 72), (24, 62, 168), (76, 140, 240), (190, 226, 255)]),
    "leaf": (6, [(10, 42, 34), (28, 104, 60), (104, 176, 76), (196, 226, 128)]),
}


def _blend(a, b, part, whole):
    return tuple((x * (whole - part) + y * part + whole // 2) // whole for x, y in zip(a, b))


def _ramp(steps, keys):
    spans = len(keys) - 1
    colours = []
    for i in range(steps):
        at = i * spans
        key = min(at // (steps - 1), spans - 1)
        colours.append(_blend(keys[key], keys[key + 1], at - key * (steps - 1), steps - 1))
    return colours


PAINTS = list(SYSTEM)
_ramps = {}
for _name, (_steps, _keys) in RAMPS.items():
    _ramps[_name] = list(range(len(PAINTS), len(PAINTS) + _steps))
    PAINTS.extend(_ramp(_steps, _keys))


def tone(name, lightness):
    """The paint of a ramp at a lightness from 0.0 (darkest) to 1.0 (lightest)."""
    ramp = _ramps[name]
    return ramp[max(0, min(len(ramp) - 1, int(lightness * (len(ramp) - 1) + 0.5)))]


def nearest(colour, colours):
    """The index of the entry in `colours` that is most similar to `colour`."""
    red, green, blue = colour
    best = None
    found = 0
    for i, (r, g, b) in enumerate(colours):
        gap = 3 * (r - red) * (r - red) + 6 * (g - green) * (g - green) + 2 * (b - blue) * (b - blue)
        if best is None or gap < best:
            best, found = gap, i
    return found


def shade(steps):
    """A table that maps every paint to the one `steps` higher in its ramp (lower if negative)."""
    table = bytearray(range(256))
    for ramp in _ramps.values():
        for i, paint in enumerate(ramp):
            table[paint] = ramp[max(0, min(len(ramp) - 1, i + steps))]
    return bytes(table)


def tint(colour, part):
    """A table that mixes `part` percent of `colour` into every paint and maps it to the nearest paint."""
    table = bytearray(range(256))
    for paint, old in enumerate(PAINTS):
        table[paint] = nearest(_blend(old, colour, part, 100), PAINTS)
    return bytes(table)


def _split(box):
    """Splits a box of (colour, count) pairs at the median of its widest channel."""
    spread = [max(c[i] for c, _ in box) - min(c[i] for c, _ in box) for i in range(3)]
    channel = max(range(3), key=lambda i: (spread[i] * (3, 4, 2)[i], -i))
    box.sort(key=lambda pair: (pair[0][channel], pair[0]))
    half = sum(count for _, count in box) / 2
    seen = 0
    for i, (_, count) in enumerate(box[:-1]):
        seen += count
        if seen >= half:
            return box[:i + 1], box[i + 1:]
    return box[:-1], box[-1:]


def _weight(box):
    if len(box) < 2:
        return 0
    total = sum(count for _, count in box)
    spread = max(max(c[i] for c, _ in box) - min(c[i] for c, _ in box) for i in range(3))
    return total * spread * spread


def share_palette(mixed):
    """Returns the 256 shared entries and, for each paint, the index of its entry. `mixed` is a Counter of the colours
    that are not paints.

    Entries 0..9 and 246..255 are the system colours, in the order in which 8-bit screens reserve them.
    """
    free = 256 - len(PAINTS)
    boxes = [sorted(mixed.items())] if mixed else []
    while boxes and len(boxes) < free:
        widest = max(range(len(boxes)), key=lambda i: (_weight(boxes[i]), -i))
        if _weight(boxes[widest]) == 0:
            break
        boxes.extend(_split(boxes.pop(widest)))
    extra = []
    for box in boxes:
        total = sum(count for _, count in box)
        extra.append(tuple(sum(c[i] * count for c, count in box) // total for i in range(3)))
    extra.sort()
    extra.extend([(0, 0, 0)] * (free - len(extra)))
    entries = SYSTEM[:10] + PAINTS[20:] + extra + SYSTEM[10:]
    places = list(range(10)) + list(range(246, 256)) + list(range(10, 10 + len(PAINTS) - 20))
    return entries, places
