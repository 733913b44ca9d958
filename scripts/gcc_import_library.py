#!/usr/bin/env python3
"""gcc_import_library.py DEF LIBRARY: creates GCC's import library for the flat functions from the export list.

Three functions are exported under decorated C++ names. GCC decorates names differently, so each gets an alias."""
import pathlib
import re
import subprocess
import sys
import tempfile

GCC_NAMES = {
    "?HasExtMap@@YAHPAD@Z": "_Z9HasExtMapPc",
    "?FileExtMapEditDlg@@YAHPAXPAD1@Z": "_Z17FileExtMapEditDlgPvPcS0_",
    "?AddExtMapDlg@@YAHPAXPAD1@Z": "_Z12AddExtMapDlgPvPcS0_",
}

exports, library = sys.argv[1:]
names = [line.strip() for line in pathlib.Path(exports).read_text().split("EXPORTS", 1)[1].splitlines()]
names = [name for name in names if name and not name.startswith(";")]
with tempfile.NamedTemporaryFile("w", suffix=".def") as alias:
    alias.write("LIBRARY Tamrix32.dll\nEXPORTS\n")
    for name in names:
        alias.write(f'    {GCC_NAMES[name]} == "{name}"\n' if name in GCC_NAMES else f"    {name}\n")
    alias.flush()
    subprocess.run(["i686-w64-mingw32-dlltool", "--deterministic-libraries", "-d", alias.name, "-l", library], check=True)
