# What the command's tests share. A test file ends in harness.main(); its arguments are the program: the native one or,
# for the shipped one, "wine" and its path. Each test has an empty folder of its own, in which the program runs, and
# natively an empty registry. Expectations are written from the rules, not from output.
import json
import os
import pathlib
import resource
import shlex
import subprocess
import sys
import tempfile
import unittest

TOP = pathlib.Path(__file__).resolve().parent.parent.parent
PROGRAM = [os.path.abspath(word) if os.path.exists(word) else word for word in sys.argv[1:]]
IS_NATIVE = len(PROGRAM) == 1
native_only = unittest.skipUnless(IS_NATIVE, "what it needs, or tells of the rules, is native")
windows_only = unittest.skipIf(IS_NATIVE, "what it needs is on Windows only")


class CommandTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        # Wine takes arguments in the locale's encoding; this locale is always there, and is Western.
        self.environment = dict(os.environ, XDG_DATA_HOME=str(self.folder / "data"), LC_ALL="C.UTF-8")

    def tamrix(self, line, *arguments, status=0, named="", typed=b"", full_disk=False, **options):
        # What the program prints, as bytes. `line` is split as a shell would, and `arguments` follow as they are. It
        # ends with `status`, and complains of what it did not do, each time with its name, and at some time of `named`.
        # A limit on the size of files stands for a full disk; with the signal ignored, it is an error of writing.
        limit = (lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (8, 8))) if full_disk else None
        ran = subprocess.run([*PROGRAM, *shlex.split(line), *arguments], input=typed, cwd=self.folder,
                             env=self.environment, stdout=options.get("stdout", subprocess.PIPE),
                             stderr=subprocess.PIPE, preexec_fn=limit, restore_signals=not full_disk, timeout=120)
        said = ran.stderr.decode(errors="surrogateescape")
        self.assertIn(ran.returncode, status if isinstance(status, tuple) else (status,), (line, arguments, ran.stdout, said))
        self.assertTrue(ran.returncode == 0 or said or ran.stdout or named is None, line)
        self.assertTrue(all(each.startswith("tamrix: ") for each in said.splitlines()), (line, said))
        for each in named if isinstance(named, list) else [named or ""]:
            self.assertIn(each, said, line)
        return ran.stdout

    def json(self, line, *arguments, **keywords):
        return json.loads(self.tamrix(line, *arguments, "--json", **keywords).decode("utf-8"))

    def rows(self, rows, **keywords):
        # Runs one line a row: (line, what it prints) or, of what fails, (line, status, what the complaint names).
        for line, *expected in rows:
            with self.subTest(line):
                if len(expected) == 1:
                    self.assertEqual(self.tamrix(line, **keywords).decode(), expected[0])
                else:
                    printed = self.tamrix(line, status=expected[0], named=expected[1], **keywords)
                    self.assertFalse(expected[0] == 2 and printed, "done by half")


def keep_wine_up():
    # One program that waits for input keeps Wine up between the others, which then start at once. Nobody reads what it
    # prints: Wine's own processes inherit its output and hold it open.
    silent = {"stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL}
    waiting = subprocess.Popen([*PROGRAM, "name", "to-mac"], stdin=subprocess.PIPE, **silent)
    unittest.addModuleCleanup(lambda: (waiting.stdin.close(), waiting.wait()))
    subprocess.run([*PROGRAM, "--version"], check=True, **silent)


def main():
    sys.modules["__main__"].setUpModule = (lambda: None) if IS_NATIVE else keep_wine_up
    unittest.main(argv=sys.argv[:1])
