#!/usr/bin/env python3
"""The rules of the house that a compiler does not see. Prints each breach as file:line: what; exits 1 when there is one.

- a module includes only headers of modules that its CMakeLists.txt names in USES, and those form no cycle;
- no platform conditionals in the library, its public headers and its suites;
- handles and memory are given back in owner types only;
- nothing is constructed at run time;
- every header compiles alone, and the public ones without a warning as C89 and as C++98 to C++20 by both compilers.
"""
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


PUBLIC_HEADERS = {"strings": "strings", "registry": "registry", "frame": "base", "macnames": "macnames",
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


def check_conditionals():
    for path in sources("src", "include", "tests"):
        # The export header has to tell which compiler's decoration a client's is.
        if path.is_relative_to(TOP / "src/runtime") or path == TOP / "include/tamrix32/export.h":
            continue
        for number, line in lines(path):
            if re.match(r"\s*#\s*(if|ifdef|ifndef|elif).*\b(_WIN32|WIN32|_MSC_VER|__MINGW32__|__linux__)\b", line):
                breach(path, number, "platform conditional")


# What gives back a handle or a block, and the files that may say so.
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
                breach(cmake, number, "allows objects that are constructed at run time")


# Headers about what the stand-in does not have: windows and drawing.
DESKTOP = {"about/about_sprites.h", "dialogs/extension_map_dialogs.h", "base/gdi_handles.h",
           "about/drawing_handles.h"}


def generated_headers():
    """A folder with the headers that CMake writes; they hold macros only."""
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
# clang for the platform's target over MinGW-w64's headers, as cmake/msvc32.cmake has it.
CLANG = ["clang++", "--target=i686-pc-windows-msvc", "-fno-ms-compatibility", "-fms-extensions", "-D_X86_=1",
         "-D__MINGW32__", "-D__USE_MINGW_ANSI_STDIO=0", "-D__declspec=__declspec"]
STANDARDS = ["c++98", "c++11", "c++14", "c++17", "c++20", "c89"]


def check_public_headers():
    """The users' compilers are older and newer than ours. Comments begin with // for C89 too, which is all it lacks."""
    if not shutil.which(GCC):
        print(f"architecture: no {GCC}: the public headers were not tried in older languages", file=sys.stderr)
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
check_conditionals()
check_owners()
check_initialisers()
check_headers()
check_public_headers()
print("\n".join(breaches) if breaches else f"architecture: {len(uses)} modules, no breach")
sys.exit(1 if breaches else 0)
