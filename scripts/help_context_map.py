#!/usr/bin/env python3
"""Adds the numeric context map to a WinHelp file: help_context_map.py SOURCE.but DIALOGS.rc INPUT.hlp OUTPUT.hlp

halibut leaves the map empty. Topics are found by their names, \\cfg{winhelp-topic}{context_NUMBER} in the source: the
number in the name is the context that opens the topic. Every control of the dialogs must have a topic.

A WinHelp file is a small file system. Its header contains the offset of the directory. The directory and |CONTEXT are
B+ trees. |CONTEXT maps the hash of a topic's name to the topic's offset, and |CTXOMAP maps a number to the same offset.
"""
import re
import struct
import sys

FILE_HEADER = 9     # each inner file: allocated size, used size, flags
TREE_HEADER = 38
LEAF_HEADER = 8     # free bytes, entries, previous leaf, next leaf
HEADER_DIRECTORY = 4
HEADER_LENGTH = 12


def name_hash(name):
    """The format's hash of a topic name; the name has letters (of either case), digits, '.' and '_'."""
    value = 0
    for character in name.lower():
        if character == "0":
            digit = 10
        elif character.isdigit():
            digit = ord(character) - ord("0")
        elif character.isalpha():
            digit = ord(character) - ord("a") + 17
        else:
            digit = {".": 12, "_": 13}[character]
        value = (value * 43 + digit) & 0xFFFFFFFF
    return value


def leaves(data, tree):
    """Offsets and entry counts of a tree's leaves; `tree` is the offset of its inner file."""
    tree += FILE_HEADER
    page_size = struct.unpack_from("<H", data, tree + 4)[0]
    root, = struct.unpack_from("<h", data, tree + 26)
    levels, = struct.unpack_from("<h", data, tree + 32)
    page = root
    for _ in range(levels - 1):  # an index page begins with free bytes, entries and its first child
        page, = struct.unpack_from("<h", data, tree + TREE_HEADER + page * page_size + 4)
    while page != -1:
        start = tree + TREE_HEADER + page * page_size
        _, entries, _, following = struct.unpack_from("<hhhh", data, start)
        yield start + LEAF_HEADER, entries
        page = following


def directory(data):
    """The inner files: name -> (offset of the directory entry's offset field, offset of the file)."""
    files = {}
    for at, entries in leaves(data, struct.unpack_from("<I", data, HEADER_DIRECTORY)[0]):
        for _ in range(entries):
            end = data.index(0, at)
            files[data[at:end].decode("latin-1")] = (end + 1, struct.unpack_from("<I", data, end + 1)[0])
            at = end + 5
    return files


def topics(data, context):
    found = {}
    for at, entries in leaves(data, context):
        found.update(struct.unpack_from("<II", data, at + 8 * i) for i in range(entries))
    return found


def with_map(data, numbers):
    files = directory(data)
    places = topics(data, files["|CONTEXT"][1])
    rows = [struct.pack("<II", number, places[name_hash(f"context_{number}")]) for number in sorted(numbers)]
    body = struct.pack("<H", len(rows)) + b"".join(rows)
    struct.pack_into("<I", data, files["|CTXOMAP"][0], len(data))
    data += struct.pack("<IIB", len(body) + FILE_HEADER, len(body), 0) + body
    struct.pack_into("<I", data, HEADER_LENGTH, len(data))
    return data


def control_ids(script):
    """The ids of the controls in a resource script's dialogs."""
    ids = re.findall(r"^\s+(?:[LR]TEXT|EDITTEXT|LISTBOX|(?:DEF)?PUSHBUTTON)\s+(?:\"[^\"]*\",\s*)?(\w+),", script, re.M)
    return {{"IDOK": 1, "IDCANCEL": 2}.get(name) or int(name) for name in ids}


def read(path):
    with open(path, encoding="utf-8") as file:
        return file.read()


def main(source, dialogs, given, made):
    numbers = {int(n) for n in re.findall(r"\\cfg\{winhelp-topic\}\{context_(\d+)\}", read(source))}
    missing = control_ids(read(dialogs)) - numbers
    if missing:
        sys.exit(f"{source}: no topic for the controls {sorted(missing)}")
    with open(given, "rb") as file:
        data = bytearray(file.read())
    with open(made, "wb") as file:
        file.write(with_map(data, numbers))
    print(f"{made}: {len(numbers)} contexts")


main(*sys.argv[1:])
