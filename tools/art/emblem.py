"""Icon 1: a workstation and a file server connected by a cable, at 32 and 16 pixels."""

from sprites import (BLACK, GRAY, GREEN, LIME, NAVY, OLIVE, RED, SILVER, TEAL, WHITE, YELLOW, blank, pixels)


def _plate(canvas, x, y, width, height, light, middle, dark):
    canvas.rect(x, y, width, height, dark)
    canvas.rect(x, y, width - 1, height - 1, light)
    canvas.rect(x + 1, y + 1, width - 2, height - 2, middle)


def _large():
    canvas = blank(32)
    canvas.fill([(28, 4), (31, 2), (31, 22), (28, 25)], GRAY)
    canvas.fill([(18, 4), (21, 2), (31, 2), (28, 4)], WHITE)
    _plate(canvas, 18, 4, 10, 21, WHITE, SILVER, GRAY)
    for y in (6, 9):
        canvas.rect(20, y, 6, 2, GRAY)
        canvas.rect(20, y, 6, 1, BLACK)
    canvas.rect(25, 13, 1, 1, LIME)
    canvas.rect(23, 13, 1, 1, RED)
    for y in (17, 19, 21):
        canvas.rect(20, y, 6, 1, GRAY)
    _plate(canvas, 1, 8, 19, 14, WHITE, SILVER, GRAY)
    canvas.rect(3, 10, 15, 10, GRAY)
    canvas.rect(4, 11, 14, 9, TEAL)
    canvas.rect(3, 10, 15, 1, BLACK)
    canvas.rect(3, 10, 1, 10, BLACK)
    canvas.fill([(7, 12), (12, 12), (14, 14), (14, 19), (7, 19)], WHITE)
    canvas.rect(12, 12, 1, 2, SILVER)
    for y in (14, 16):
        canvas.rect(8, y, 4, 1, NAVY)
    _plate(canvas, 3, 22, 16, 3, WHITE, SILVER, GRAY)
    canvas.rect(5, 23, 2, 1, GREEN)
    for x in (10, 24):
        canvas.rect(x, 25, 2, 3, OLIVE)
        canvas.rect(x - 1, 27, 4, 4, YELLOW)
        canvas.rect(x - 1, 30, 4, 1, OLIVE)
    canvas.rect(1, 28, 30, 2, OLIVE)
    canvas.rect(1, 28, 30, 1, YELLOW)
    return pixels(canvas)


def _small():
    canvas = blank(16)
    _plate(canvas, 10, 1, 5, 11, WHITE, SILVER, GRAY)
    canvas.rect(11, 3, 3, 1, BLACK)
    canvas.rect(11, 5, 3, 1, GRAY)
    canvas.rect(13, 8, 1, 1, LIME)
    _plate(canvas, 1, 3, 10, 8, WHITE, SILVER, GRAY)
    canvas.rect(2, 4, 8, 6, TEAL)
    canvas.rect(4, 5, 4, 4, WHITE)
    canvas.rect(5, 6, 2, 1, NAVY)
    canvas.rect(2, 11, 8, 1, SILVER)
    for x in (5, 12):
        canvas.rect(x, 12, 1, 1, OLIVE)
        canvas.rect(x - 1, 13, 3, 2, YELLOW)
    canvas.rect(1, 13, 14, 1, YELLOW)
    return pixels(canvas)


def emblem():
    return [_large(), _small()]
