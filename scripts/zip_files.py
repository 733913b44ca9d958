#!/usr/bin/env python3
"""zip_files.py ZIP: packs the files listed on standard input, in that order, all with the same date."""
import sys
import zipfile

with zipfile.ZipFile(sys.argv[1], "w", zipfile.ZIP_DEFLATED) as packed:
    for name in sys.stdin.read().split():
        with open(name, "rb") as file:
            packed.writestr(zipfile.ZipInfo(name, (1980, 1, 1, 0, 0, 0)), file.read(), zipfile.ZIP_DEFLATED)
