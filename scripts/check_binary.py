#!/usr/bin/env python3
"""check_binary.py BUILD-FOLDER: checks that the shipped DLL and command run on all supported systems.

- The DLL exports exactly the names in tests/windows/exports.txt.
- The subsystem version is 4.0. There are relocations. One section is shared and writable; otherwise only data is
  writable.
- Imports come only from the six system DLLs, and only functions in scripts/windows_95_nt4_functions.txt, which both
  Windows 95 and NT 4 export.
- No instruction is newer than the i486 (conditional moves, SSE, MMX, CPUID and time-stamp reads).
- Code and data without resources have less than 48 KB, the whole file less than 400 KB.
"""
import pathlib
import re
import subprocess
import sys

TOP = pathlib.Path(__file__).resolve().parent.parent
SYSTEM = {"kernel32.dll", "user32.dll", "gdi32.dll", "advapi32.dll", "comdlg32.dll", "msvcrt.dll"}
LATER = re.compile(r"^(cmov|fcmov|fcomi|fucomi|cpuid|rdtsc|rdpmc|syscall|sysenter|ud2|pause|[lms]fence|prefetch|"
                   r"emms|fxsave|cmpxchg8b|mov[adhlnsu]*p[sd]|movs[sd]$|cvt|[a-z]*[ps][sd]$|p(add|sub|xor|and|or|cmp|"
                   r"mul|unpck|shuf|ack|sll|srl|sra)|movd|movq)")
NOT_LATER = {"movsd", "cmpsd", "lodsd", "stosd", "scasd", "lods", "cmps", "lodsl", "movsl"}
problems = []


def run(*command):
    return subprocess.run(command, check=True, text=True, capture_output=True).stdout


def listed(path):
    return {line.split("#")[0].strip() for line in path.read_text().splitlines()} - {""}


def check_exports(dll):
    found = set(re.findall(r"^\s*Name: (\S+)$", run("llvm-readobj", "--coff-exports", dll), re.M))
    wanted = listed(TOP / "tests/windows/exports.txt")
    problems.extend(f"{dll.name}: not exported: {name}" for name in sorted(wanted - found))
    problems.extend(f"{dll.name}: exported but not listed: {name}" for name in sorted(found - wanted))
    return len(found)


def check_imports(binary, own):
    allowed = listed(TOP / "scripts/windows_95_nt4_functions.txt")
    for block in run("llvm-readobj", "--coff-imports", binary).split("Import {")[1:]:
        library = re.search(r"Name: (\S+)", block)[1].lower()
        if library == own:
            continue
        if library not in SYSTEM:
            problems.append(f"{binary.name}: imports from {library}")
        for name in re.findall(r"Symbol: (\S+)", block):
            if f"{library[:-4]} {name}" not in allowed:
                problems.append(f"{binary.name}: imports {library} {name}, which Windows 95 or NT 4 may lack")


def check_headers(binary, is_dll):
    headers = run("llvm-readobj", "--file-headers", "--sections", binary)
    for field, wanted in (("MajorSubsystemVersion", "4"), ("MinorSubsystemVersion", "0")):
        if re.search(rf"{field}: (\d+)", headers)[1] != wanted:
            problems.append(f"{binary.name}: {field} is not {wanted}")
    loaded = 0
    writable = {}
    for block in headers.split("Section {")[1:]:
        name = re.search(r"Name: (\S+)", block)[1]
        size = int(re.search(r"VirtualSize: 0x([0-9A-F]+)", block)[1], 16)
        if name not in (".rsrc", ".reloc"):
            loaded += size
        if "MEM_WRITE" in block:
            writable[name] = "MEM_SHARED" in block
    if is_dll:
        if writable != {".data": False, ".shared": True}:
            problems.append(f"{binary.name}: writable sections (name: shared) are {writable}")
        if ".reloc" not in headers:
            problems.append(f"{binary.name}: no relocations")
        if loaded >= 48 * 1024:
            problems.append(f"{binary.name}: {loaded} bytes of code and data are too many")
        if binary.stat().st_size >= 400 * 1024:
            problems.append(f"{binary.name}: {binary.stat().st_size} bytes are too many")
    return loaded


def check_instructions(binary):
    listing = run("llvm-objdump", "-d", "--no-show-raw-insn", "--x86-asm-syntax=intel", binary)
    count = 0
    for line in listing.splitlines():
        found = re.match(r"\s*[0-9a-f]+:\s+(?:rep\w*\s+|lock\s+)?(\w+)", line)
        if not found:
            continue
        count += 1
        if LATER.match(found[1]) and found[1] not in NOT_LATER:
            problems.append(f"{binary.name}: instruction newer than the i486: {line.strip()}")
    return count


folder = pathlib.Path(sys.argv[1])
for name in ("Tamrix32.dll", "tamrix.exe"):
    binaries = list(folder.rglob(name))
    if not binaries:
        problems.append(f"{name}: not built")
        continue
    binary = binaries[0]
    exports = check_exports(binary) if name.endswith(".dll") else 0
    check_imports(binary, "tamrix32.dll")
    loaded = check_headers(binary, name.endswith(".dll"))
    instructions = check_instructions(binary)
    print(f"{name}: {binary.stat().st_size} bytes, {loaded} of code and data, {instructions} instructions, {exports} exports")

print("\n".join(problems) if problems else "binaries: no problem found")
sys.exit(1 if problems else 0)
