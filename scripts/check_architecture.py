#!/usr/bin/env python3
"""Checks rules that a compiler cannot check. Prints each violation as file:line: what, and exits with 1 if there is one.

- A module includes only headers of modules that its CMakeLists.txt names in USES, and these have no cycle.
- The parts of the command (a header with its sources) include each other without a cycle.
- There are no platform conditionals in the library, its public headers and its suites.
- Only owner types release handles and memory.
- There are no dynamic initializers.
- Every header compiles alone, and the public ones compile without a warning as C89 and as C++98 to C++20 with both
  compilers.
"""
import graphlib
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

TOP = pathlib.Path(__file__).resolve().parent.parent
breaches = []


def breach(path, line, what):
    breaches.append(f"{path.relative_to(TOP)}:{line}: {what}")


def sources(*roots, endings=(".h", ".cpp", ".c")):
    for root in roots:
        yield from sorted(p for p in (TOP / root).rglob("*") if p.suffix in endings)


def lines(path):
    return enumerate(path.read_text(encoding="utf-8").splitlines(), 1)


def module_uses():
    uses = {}
    for cmake in sorted((TOP / "src").glob("*/CMakeLists.txt")):
        found = re.search(r"tamrix_module\(\s*(\w+)(.*?)\)", cmake.read_text(), re.S)
        if found:
            after = found[2].split("USES", 1)
            uses[found[1]] = set(after[1].split()) if len(after) == 2 else set()
    return uses


PUBLIC_HEADERS = {"strings": "strings", "registry": "registry", "module": "base", "macnames": "macnames",
                  "extmap": "extmap", "dialogs": "dialogs", "browse": "dialogs",
                  "about": "about"}


def check_includes(uses):
    order = list(re.findall(r"add_subdirectory\(src/(\w+)\)", (TOP / "CMakeLists.txt").read_text()))
    for module, used in uses.items():
        for other in used:
            if order.index(other) >= order.index(module):
                breach(TOP / "src" / module / "CMakeLists.txt", 1, f"uses {other}, which is not above it")
        for path in sources(f"src/{module}"):
            for number, line in lines(path):
                found = re.match(r'\s*#\s*include\s+"(?:tamrix32/(\w+)\.h|(\w+)/)', line)
                if not found or found[1] in ("export", "version"):
                    continue
                other = PUBLIC_HEADERS.get(found[1], found[1]) or found[2]
                if other != module and other not in used:
                    breach(path, number, f"includes a header of {other}, which {module} does not use")


def check_command():
    def part(path):
        return re.sub(r"(_native|_windows)?\.\w+$", "", str(path))

    includes = {}
    for path in sources("client"):
        used = {part(found) for found in re.findall(r'^#include "(client/[^"]+)"', path.read_text(encoding="utf-8"), re.M)}
        includes.setdefault(part(path.relative_to(TOP)), set()).update(used)
    for name in includes:
        includes[name].discard(name)
    try:
        graphlib.TopologicalSorter(includes).prepare()
    except graphlib.CycleError as error:
        breach(TOP / "client/CMakeLists.txt", 1, "includes form a cycle: " + " <- ".join(error.args[1]))


def check_conditionals():
    for path in sources("src", "include", "tests"):
        # The export header must distinguish the name decorations of client compilers.
        if path.is_relative_to(TOP / "src/runtime") or path == TOP / "include/tamrix32/export.h":
            continue
        for number, line in lines(path):
            if re.match(r"\s*#\s*(if|ifdef|ifndef|elif).*\b(_WIN32|WIN32|_MSC_VER|__MINGW32__|__linux__)\b", line):
                breach(path, number, "platform conditional")


# Functions that release a handle or a block, and the files that may call them.
OWNERS = {
    r"\bRegCloseKey\b": ["src/registry/unique_key.h"],
    r"\b(DeleteObject|DeleteDC|ReleaseDC)\b": ["src/base/gdi_handles.h", "src/about/drawing_handles.h"],
    r"\bGlobalUnlock\b": ["src/base/global_memory.h"],
    r"\bDestroyWindow\b": ["src/dialogs/browse_dialog.cpp", "src/about/about_box.cpp"],
}


def check_owners():
    for path in sources("src", "client"):
        name = str(path.relative_to(TOP))
        for number, line in lines(path):
            code = line.split("//")[0]
            for pattern, allowed in OWNERS.items():
                if re.search(pattern, code) and name not in allowed:
                    breach(path, number, f"{re.search(pattern, code)[0]} outside its owner type")


def check_initialisers():
    for cmake in [*(TOP / "src").rglob("CMakeLists.txt"), *(TOP / "cmake").glob("*.cmake")]:
        for number, line in lines(cmake):
            if "-Wno-global-constructors" in line:
                breach(cmake, number, "allows dynamic initializers")


# Headers that use windows and drawing, which the stand-in does not have.
DESKTOP = {"about/about_sprites.h", "dialogs/extension_map_dialogs.h", "base/gdi_handles.h",
           "about/drawing_handles.h"}


def generated_headers():
    """A folder with the headers that CMake generates; they contain only macros."""
    folder = tempfile.TemporaryDirectory()
    (pathlib.Path(folder.name) / "tamrix32").mkdir()
    (pathlib.Path(folder.name) / "tamrix32/version.h").write_text("")
    return folder


def compiles(language, header, *flags):
    text = f'#include "{header}"\n'
    compiler = "i686-w64-mingw32-g++-posix" if str(header) in DESKTOP else "clang"
    command = [compiler, "-x", language, "-fsyntax-only", "-Wall", "-Wextra", "-Werror", "-DTAMRIX_STATIC", *flags,
               "-I", TOP / "include", "-I", TOP / "src"]
    command += ["-"] if str(header) in DESKTOP else ["-I", TOP / "platform/include", "-"]
    return subprocess.run(command, input=text, text=True, capture_output=True)


def check_headers():
    with generated_headers() as folder:
        for path in sources("include", "src", endings=(".h",)):
            root = TOP / ("include" if path.is_relative_to(TOP / "include") else "src")
            header = path.relative_to(root)
            ran = compiles("c++", header, "-std=c++20", "-I", folder)
            if ran.returncode:
                breach(path, 1, "does not compile alone: " + ran.stderr.splitlines()[0])


GCC = "i686-w64-mingw32-g++-posix"
# clang for the Windows target with MinGW-w64's headers, as in cmake/msvc32.cmake.
CLANG = ["clang++", "--target=i686-pc-windows-msvc", "-fno-ms-compatibility", "-fms-extensions", "-D_X86_=1",
         "-D__MINGW32__", "-D__USE_MINGW_ANSI_STDIO=0", "-D__declspec=__declspec"]
STANDARDS = ["c++98", "c++11", "c++14", "c++17", "c++20", "c89"]


def check_public_headers():
    """Clients use older and newer compilers than ours. C89 lacks only the // comments, which are removed here."""
    if not shutil.which(GCC):
        print(f"architecture: {GCC} is missing: the public headers were not compiled as older C and C++", file=sys.stderr)
        return
    kernel32 = subprocess.run([GCC, "-print-file-name=libkernel32.a"], text=True, capture_output=True).stdout
    system = pathlib.Path(kernel32).resolve().parent.parent / "include"
    with generated_headers() as folder:
        include = pathlib.Path(folder) / "tamrix32"
        for header in sources("include", endings=(".h",)):
            (include / header.name).write_text(re.sub(r"//.*", "", header.read_text()))
        for standard in STANDARDS:
            for compiler in ([GCC], [*CLANG, "-isystem", str(system)]):
                language = "c" if standard == "c89" else "c++"
                command = [*compiler, "-x", language, f"-std={standard}", "-fsyntax-only", "-Wall", "-Wextra",
                           "-pedantic", "-Werror", "-I", folder, "-"]
                ran = subprocess.run(command, input="#include <tamrix32/tamrix32.h>\n", text=True, capture_output=True)
                if ran.returncode:
                    breach(TOP / "include/tamrix32/tamrix32.h", 1, f"{compiler[0]} as {standard}: {ran.stderr}")


uses = module_uses()
check_includes(uses)
check_command()
check_conditionals()
check_owners()
check_initialisers()
check_headers()
check_public_headers()
print("\n".join(breaches) if breaches else f"architecture: {len(uses)} modules, no violation")
sys.exit(1 if breaches else 0)
