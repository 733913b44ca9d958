#!/usr/bin/env python3
"""Extracts and runs the programs in the documentation, so that the tests can build and run them.

    examples.py extract PAGE FOLDER        writes each program of a page as NAME.cpp and its output as NAME.txt, and
                                           prints the NAMEs
    examples.py run NAME.txt COMMAND...    runs a program; fails unless it prints exactly the output on the page

A program is a ```cpp block with a main(), followed by a ```text block with its output. If the output's first line begins
with "$ ", that line is the command, and the words after the first one are the program's arguments. The first program of
a page is named after the page, the others are numbered from 2.
"""
import difflib
import pathlib
import re
import shlex
import subprocess
import sys
import tempfile

BLOCK = re.compile(r"^```(\w+)\n(.*?)^```$", re.M | re.S)


def programs(page):
    """(source, output) of each program of a page."""
    blocks = BLOCK.findall(page.read_text(encoding="utf-8"))
    for (language, text), (following, output) in zip(blocks, blocks[1:] + [("", "")]):
        if language != "cpp" or not re.search(r"^int main\(", text, re.M):
            continue
        if following != "text":
            sys.exit(f"{page}: a program is not followed by its output")
        yield text, output


def write_where_new(path, text):
    if not path.exists() or path.read_text(encoding="utf-8") != text:
        path.write_text(text, encoding="utf-8")


def extract(page, folder):
    folder.mkdir(parents=True, exist_ok=True)
    stem = page.stem.lower()
    names = []
    for number, (source, output) in enumerate(programs(page), 1):
        names.append(stem if number == 1 else f"{stem}_{number}")
        write_where_new(folder / f"{names[-1]}.cpp", source)
        write_where_new(folder / f"{names[-1]}.txt", output)
    if not names:
        sys.exit(f"{page}: no program")
    print(";".join(names))


def text(stream):
    stream.seek(0)
    return stream.read().decode("utf-8", "backslashreplace")


def run(expected_file, command):
    expected = expected_file.read_text(encoding="utf-8").splitlines()
    arguments = []
    if expected and expected[0].startswith("$ "):
        arguments = shlex.split(expected.pop(0)[2:])[1:]
    # Files instead of pipes, because Wine's own processes inherit pipes and keep them open after the program has
    # ended.
    with tempfile.TemporaryFile() as output, tempfile.TemporaryFile() as errors:
        ran = subprocess.run(command + arguments, stdout=output, stderr=errors, timeout=60)
        printed, complaints = (text(stream).splitlines() for stream in (output, errors))
    failed = printed != expected or ran.returncode != 0
    if failed:
        print("\n".join(difflib.unified_diff(expected, printed, "expected", "printed", lineterm="")))
        print("\n".join([f"status {ran.returncode}", *complaints]))
    sys.exit(failed)


if sys.argv[1] == "extract":
    extract(pathlib.Path(sys.argv[2]), pathlib.Path(sys.argv[3]))
else:
    run(pathlib.Path(sys.argv[2]), sys.argv[3:])
