#!/usr/bin/env python3
"""check_links.py FOLDER: checks that every link in the Markdown pages of FOLDER points to a file or heading in FOLDER.
Prints each broken link as page: link, and exits with 1 if there is one. Links to other sites are not checked."""
import pathlib
import re
import sys

LINK = re.compile(r"!?\[[^\]]*\]\(([^)\s]+)\)")


def headings(page):
    """The anchors of a page: its headings in lower case, words joined by hyphens."""
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
print("\n".join(dead) if dead else "links: none is broken")
sys.exit(1 if dead else 0)
