#!/usr/bin/env python3
"""check_links.py FOLDER: every link of a Markdown page in FOLDER leads to a file or a heading there. Prints each that does
not as page: link; exits 1 when there is one. Links to other sites are not followed."""
import pathlib
import re
import sys

LINK = re.compile(r"!?\[[^\]]*\]\(([^)\s]+)\)")


def headings(page):
    """The anchors that a page offers: its headings in lower case, words joined by hyphens."""
    lines = re.findall(r"^#+ (.*)$", page.read_text(encoding="utf-8"), re.M)
    return {re.sub(r"[^\w\- ]", "", line.lower()).replace(" ", "-") for line in lines}


def dead_links(folder):
    for page in sorted(folder.rglob("*.md")):
        text = re.sub(r"^```.*?^```", "", page.read_text(encoding="utf-8"), flags=re.M | re.S)
        for link in LINK.findall(text):
            if re.match(r"\w+:", link):
                continue
            path, _, anchor = link.partition("#")
            target = (page.parent / path).resolve() if path else page.resolve()
            inside = target.is_relative_to(folder.resolve())
            if not inside or not target.exists() or (anchor and anchor not in headings(target)):
                yield f"{page.relative_to(folder)}: {link}"


dead = list(dead_links(pathlib.Path(sys.argv[1])))
print("\n".join(dead) if dead else "links: each leads somewhere")
sys.exit(1 if dead else 0)
