# What the command's tests share. A test file ends in harness.main(); its arguments are the program: the native one or,
# for the shipped one, "wine" and its path. Each test has an empty folder of its own, in which the program runs, and
# natively an empty registry. Expectations are written from the rules, not from output. Bytes that are no UTF-8 are
# surrogates in strings, as Python has them in file names.
import json
import os
import pathlib
import pty
import resource
import shlex
import subprocess
import sys
import tempfile
import unittest

TOP = pathlib.Path(__file__).resolve().parent.parent.parent
PROGRAM = [os.path.abspath(word) if os.path.exists(word) else word for word in sys.argv[1:]]
IS_NATIVE = len(PROGRAM) == 1
FULL_DISK = (resource.RLIMIT_FSIZE, (8, 8))
native_only = unittest.skipUnless(IS_NATIVE, "what it needs, or tells of the rules, is native")
windows_only = unittest.skipIf(IS_NATIVE, "what it needs is on Windows only")


class CommandTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        # Wine takes arguments in the locale's encoding; this locale is always there, and is Western.
        self.environment = dict(os.environ, XDG_DATA_HOME=str(self.folder / "data"), LC_ALL="C.UTF-8")

    def terminal(self):
        # Both ends of one. A container may have no /dev/pts; what is left of the test is skipped there.
        try:
            return pty.openpty()
        except OSError as reason:
            self.skipTest(str(reason))

    def tamrix(self, line, *arguments, status=0, named="", limit=None, at_call=0, then="", **options):
        # What the program prints. `line` is split as a shell would, with `<<<` and what is typed at its end, and
        # `arguments` follow as they are. It ends with `status`, and complains of what it did not do, each time with its
        # name, and at some time of each `named`. `limit` is what setrlimit takes; with the signal
        # ignored, a limit on the size of files is an error of writing. Before call number `at_call` of those that
        # change the disk, the shell runs `then`, whose status is the error of that call.
        words, typed, environment = shlex.split(line), "", dict(self.environment)
        if "<<<" in words:
            *words, _, typed = words
        if at_call:
            environment |= {"AT_CALL": str(at_call), "THEN": then, "LD_PRELOAD": os.environ["TAMRIX_AT_CALL"],
                            "ASAN_OPTIONS": "verify_asan_link_order=0:detect_leaks=0"}
        streams = {"input": os.fsencode(typed), "stdout": subprocess.PIPE, "stderr": subprocess.PIPE} | options
        ran = subprocess.run([*PROGRAM, *words, *arguments], cwd=self.folder, env=environment, restore_signals=not limit,
                             preexec_fn=limit and (lambda: resource.setrlimit(*limit)), timeout=120, **streams)
        said, printed = os.fsdecode(ran.stderr or b""), os.fsdecode(ran.stdout or b"")
        self.assertIn(ran.returncode, status if isinstance(status, tuple) else (status,), (line, arguments, printed, said))
        self.assertTrue(ran.returncode == 0 or said or printed or named is None, line)
        self.assertTrue(all(each.startswith("tamrix: ") for each in said.splitlines()), (line, said))
        self.assertTrue(status != 2 or said.count("\n") == 1, said)
        for each in named if isinstance(named, list) else [named or ""]:
            self.assertIn(each, said, line)
        return printed

    def json(self, line, *arguments, **keywords):
        return json.loads(self.tamrix(line, *arguments, "--json", **keywords))

    def rows(self, rows, **keywords):
        # Runs one line a row: (line, what it prints) or, of what fails, (line, status, what the complaint names) and
        # what it prints all the same, if anything.
        for line, *expected in rows:
            with self.subTest(line):
                status, named, printed = (0, "", *expected) if len(expected) == 1 else (*expected, "")[:3]
                self.assertEqual(self.tamrix(line, status=status, named=named, **keywords), printed)


def windows_registry(line, folder=None):
    subprocess.run([PROGRAM[0], "reg", *line.split()], cwd=folder, check=True, stdout=subprocess.DEVNULL)


def on_windows_95(tests):
    # Runs the Windows tests of a class where the program takes the system for Windows 95: without wide calls.
    key = r"HKCU\Software\Wine\AppDefaults\tamrix.exe"
    tests.setUpClass = lambda: windows_registry(f"add {key} /v Version /d win95 /f")
    tests.tearDownClass = lambda: windows_registry(f"delete {key} /f")
    return windows_only(tests)


def main():
    unittest.main(argv=sys.argv[:1])
