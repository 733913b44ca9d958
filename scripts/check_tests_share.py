#!/usr/bin/env python3
"""Compares the lines of tests and fuzz targets with the lines of code. Fails if there are more than LIMIT lines of tests
per 100 lines of code, or if a test is outside the folders that are counted. Blank lines and comments are not counted."""
import pathlib
import re
import subprocess
import sys

LIMIT = 38
TESTS = ("tests", "fuzz")
CODE = ("include", "src", "client", "platform")
NOT_COUNTED = {".py": re.compile(r"\s*(#.*)?$")}
for ending in (".c", ".cc", ".cpp", ".h", ".hpp"):
    NOT_COUNTED[ending] = re.compile(r"\s*(//.*)?$")
# Only tests and fuzz targets contain these: GoogleTest, and libFuzzer's entry point.
TEST_MARKS = re.compile(r"#\s*include\s+[<\"]g(test|mock)/|\bLLVMFuzzerTestOneInput\s*\(")

TOP = pathlib.Path(__file__).resolve().parent.parent


def files(*folders):
    listed = subprocess.run(["git", "ls-files", "-co", "--exclude-standard", "-z", "--", *folders], cwd=TOP, check=True,
                            capture_output=True, text=True).stdout.split("\0")
    return sorted(path for path in map(TOP.joinpath, filter(None, listed))
                  if path.suffix in NOT_COUNTED and path.is_file())


def lines(path):
    return path.read_text(encoding="utf-8", errors="replace").split("\n")


def count(*folders):
    return sum(not NOT_COUNTED[path.suffix].match(line) for path in files(*folders) for line in lines(path))


def hidden():
    for path in files():
        name = path.relative_to(TOP)
        if name.parts[0] in TESTS or path.suffix == ".py":
            continue
        for number, line in enumerate(lines(path), 1):
            if TEST_MARKS.search(line):
                yield f"{name}:{number}: a test outside {' and '.join(folder + '/' for folder in TESTS)}"


tests, code = count(*TESTS), count(*CODE)
share = 100 * tests / max(code, 1)
print(f"tests: {tests:,} lines, {share:.0f} of 100 lines of code (limit {LIMIT})")
breaches = list(hidden())
if share > LIMIT:
    breaches.append(f"tests: {tests:,} lines are more than {LIMIT} of 100 of {code:,}")
for text in breaches:
    print(text, file=sys.stderr)
sys.exit(1 if breaches else 0)
